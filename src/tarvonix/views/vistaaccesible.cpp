// SPDX-License-Identifier: MIT
#include <tarvonix/views/vistaaccesible_p.h>

#include <tarvonix/model/referencias.h>
#include <tarvonix/platform/errortrap.h>
#include <tarvonix/platform/shiftstate.h>
#include <tarvonix/views/vistax.h>
#include <tarvonix/views/vistax_p.h>

#include <QPointer>

namespace tarvonix {

namespace {

// Adds the element to the selection, where press makes it the selection alone.
const QString &accionSeleccionar()
{
    static const QString nombre = QStringLiteral("select");
    return nombre;
}

/*
    One element of a view: its object's code and tip as the name, its
    description and colour key as the description, its flags as the state.
*/
class ElementoAccesible : public QAccessibleInterface, public QAccessibleActionInterface
{
public:
    ElementoAccesible(VistaX *vista, int indice)
        : m_vista(vista)
        , m_indice(indice)
    { }

    bool isValid() const override { return m_vista && m_indice < privado()->cuantos(); }
    QObject *object() const override { return nullptr; }
    QWindow *window() const override { return m_vista ? m_vista->window()->windowHandle() : nullptr; }
    QAccessibleInterface *parent() const override { return QAccessible::queryAccessibleInterface(m_vista); }
    QAccessibleInterface *child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface *) const override { return -1; }
    QAccessibleInterface *childAt(int, int) const override { return nullptr; }
    void setText(QAccessible::Text, const QString &) override { }
    QAccessible::Role role() const override { return QAccessible::ListItem; }

    QString text(QAccessible::Text t) const override
    {
        const ObjetoPtr objeto = isValid() ? privado()->elemento(m_indice) : nullptr;
        if (!objeto)
            return {};
        if (t == QAccessible::Name) {
            const QString tip = objeto->getTip();
            return tip.isEmpty() || tip == objeto->getCodigo() ? objeto->getCodigo()
                                                               : objeto->getCodigo() + QLatin1Char(' ') + tip;
        }
        if (t != QAccessible::Description)
            return {};
        // The colour key is the bound object's entry of the object's colour.
        QStringList partes { objeto->getDescripcion() };
        const ObjetoPtr ligado = m_vista->getObjeto();
        if (const auto claves = ligado ? ligado->getReferencias() : nullptr) {
            for (const auto &clave : *claves) {
                if (clave->getColor() == objeto->getColor()) {
                    partes.append(clave->getTexto());
                    break;
                }
            }
        }
        partes.removeAll(QString());
        return partes.join(QStringLiteral(", "));
    }

    QRect rect() const override
    {
        if (!isValid())
            return {};
        const QRect zona = privado()->zona(m_indice).toAlignedRect();
        return QRect(m_vista->mapToGlobal(zona.topLeft()), zona.size());
    }

    QAccessible::State state() const override
    {
        QAccessible::State estado;
        const ObjetoPtr objeto = isValid() ? privado()->elemento(m_indice) : nullptr;
        if (!objeto) {
            estado.invalid = true;
            return estado;
        }
        VistaXPrivate *d = privado();
        // An empty leg position stands for its place and cannot be selected.
        estado.selectable = d->elementoDe(objeto) == m_indice;
        estado.selected = objeto->getSeleccionado();
        estado.active = objeto->getActivo();
        estado.focusable = true;
        estado.focused = m_vista->hasFocus() && d->foco == m_indice;
        estado.movable = d->movible;
        estado.disabled = !m_vista->isEnabled();
        estado.invisible = !m_vista->isVisible();
        return estado;
    }

    void *interface_cast(QAccessible::InterfaceType tipo) override
    {
        return tipo == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface *>(this)
                                                    : nullptr;
    }

    QStringList actionNames() const override
    {
        return { pressAction(), accionSeleccionar(), setFocusAction() };
    }

    void doAction(const QString &accion) override
    {
        if (!isValid())
            return;
        VistaXPrivate *d = privado();
        trap(d->etiqueta("doAction"), [&] {
            if (accion == setFocusAction()) {
                m_vista->setFocus(Qt::OtherFocusReason);
                d->ponerFoco(m_indice);
            } else if (accion == pressAction() || accion == accionSeleccionar()) {
                d->pulsar(m_indice, accion == pressAction() ? 0 : ShiftMask);
            }
        });
    }

    QStringList keyBindingsForAction(const QString &accion) const override
    {
        if (accion == pressAction())
            return { QStringLiteral("Space") };
        if (accion == accionSeleccionar())
            return { QStringLiteral("Shift+Arrow") };
        return {};
    }

private:
    VistaXPrivate *privado() const { return VistaXPrivate::get(m_vista); }

    QPointer<VistaX> m_vista;
    const int m_indice;
};

QAccessibleInterface *fabrica(const QString &, QObject *objeto)
{
    if (auto *vista = qobject_cast<VistaX *>(objeto))
        return new VistaAccesible(vista);
    return nullptr;
}

} // namespace

VistaAccesible::VistaAccesible(VistaX *vista)
    : QAccessibleWidget(vista, QAccessible::List)
{ }

VistaAccesible::~VistaAccesible()
{
    for (const QAccessible::Id id : std::as_const(m_elementos))
        QAccessible::deleteAccessibleInterface(id);
}

void VistaAccesible::instalar()
{
    static const bool instalada = [] {
        QAccessible::installFactory(fabrica);
        return true;
    }();
    Q_UNUSED(instalada);
}

VistaX *VistaAccesible::vista() const
{
    return static_cast<VistaX *>(widget());
}

int VistaAccesible::hijoDeElemento(int i) const
{
    return QAccessibleWidget::childCount() + i;
}

QAccessibleInterface *VistaAccesible::elemento(int i) const
{
    if (i < 0 || i >= VistaXPrivate::get(vista())->cuantos())
        return nullptr;
    const auto it = m_elementos.constFind(i);
    if (it != m_elementos.constEnd())
        return QAccessible::accessibleInterface(*it);
    auto *interfaz = new ElementoAccesible(vista(), i);
    m_elementos.insert(i, QAccessible::registerAccessibleInterface(interfaz));
    return interfaz;
}

int VistaAccesible::childCount() const
{
    return QAccessibleWidget::childCount() + VistaXPrivate::get(vista())->cuantos();
}

QAccessibleInterface *VistaAccesible::child(int index) const
{
    const int widgets = QAccessibleWidget::childCount();
    return index < widgets ? QAccessibleWidget::child(index) : elemento(index - widgets);
}

int VistaAccesible::indexOfChild(const QAccessibleInterface *child) const
{
    if (child && !child->object()) {
        const QAccessible::Id id = QAccessible::uniqueId(const_cast<QAccessibleInterface *>(child));
        const int i = m_elementos.key(id, -1);
        return i < 0 ? -1 : hijoDeElemento(i);
    }
    return QAccessibleWidget::indexOfChild(child);
}

QAccessibleInterface *VistaAccesible::childAt(int x, int y) const
{
    const QPoint punto = vista()->mapFromGlobal(QPoint(x, y));
    const int widgets = QAccessibleWidget::childCount();
    for (int k = 0; k < widgets; ++k) {
        QAccessibleInterface *hijo = QAccessibleWidget::child(k);
        if (hijo && !hijo->state().invisible && hijo->rect().contains(x, y))
            return hijo;
    }
    VistaXPrivate *vistaPrivada = VistaXPrivate::get(vista());
    for (int i = 0, n = vistaPrivada->cuantos(); i < n; ++i) {
        if (vistaPrivada->zona(i).contains(punto))
            return elemento(i);
    }
    return nullptr;
}

QAccessibleInterface *VistaAccesible::focusChild() const
{
    VistaXPrivate *vistaPrivada = VistaXPrivate::get(vista());
    if (vista()->hasFocus() && vistaPrivada->foco >= 0)
        return elemento(vistaPrivada->foco);
    return QAccessibleWidget::focusChild();
}

QString VistaAccesible::text(QAccessible::Text t) const
{
    QString texto = QAccessibleWidget::text(t);
    // Without a name of its own the view is called after the object it shows.
    if (t == QAccessible::Name && texto.isEmpty()) {
        if (const ObjetoPtr ligado = vista()->getObjeto())
            texto = ligado->getDescripcion().isEmpty() ? ligado->getCodigo() : ligado->getDescripcion();
    }
    return texto;
}

} // namespace tarvonix
