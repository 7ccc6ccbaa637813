// SPDX-License-Identifier: MIT
#include <tarvonix/views/vistaaccesible_p.h>

#include <tarvonix/model/referencias.h>
#include <tarvonix/platform/errortrap.h>
#include <tarvonix/platform/shiftstate.h>
#include <tarvonix/views/vistax.h>
#include <tarvonix/views/vistax_p.h>

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
class ElementoAccesible : public ParteAccesible
{
public:
    using ParteAccesible::ParteAccesible;

    bool isValid() const override { return m_control && m_indice < privado()->cuantos(); }
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
        const ObjetoPtr ligado = vista()->getObjeto();
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
        estado.focused = m_control->hasFocus() && d->foco == m_indice;
        estado.movable = d->movible;
        estado.disabled = !m_control->isEnabled();
        estado.invisible = !m_control->isVisible();
        return estado;
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
                // Without the focus the view takes it, and its focus-in puts the mark here.
                d->foco = m_indice;
                if (m_control->hasFocus())
                    d->ponerFoco(m_indice);
                else
                    m_control->setFocus(Qt::OtherFocusReason);
            } else if (accion == pressAction() || accion == accionSeleccionar()) {
                d->pulsar(m_indice, accion == pressAction() ? 0 : ShiftMask);
            }
        });
    }

protected:
    QRect zona() const override { return privado()->zona(m_indice).toAlignedRect(); }

private:
    VistaX *vista() const { return static_cast<VistaX *>(m_control.data()); }
    VistaXPrivate *privado() const { return VistaXPrivate::get(vista()); }
};

QAccessibleInterface *fabrica(const QString &, QObject *objeto)
{
    if (auto *vista = qobject_cast<VistaX *>(objeto))
        return new VistaAccesible(vista);
    return nullptr;
}

} // namespace

VistaAccesible::VistaAccesible(VistaX *vista)
    : AccesibleCompuesto(vista, QAccessible::List)
{ }

void VistaAccesible::instalar()
{
    AccesibleCompuesto::instalar(fabrica);
}

VistaX *VistaAccesible::vista() const
{
    return static_cast<VistaX *>(widget());
}

int VistaAccesible::partes() const
{
    return VistaXPrivate::get(vista())->cuantos();
}

QAccessibleInterface *VistaAccesible::nuevaParte(int i) const
{
    return new ElementoAccesible(vista(), i);
}

QAccessibleInterface *VistaAccesible::childAt(int x, int y) const
{
    const int widgets = QAccessibleWidget::childCount();
    for (int k = 0; k < widgets; ++k) {
        QAccessibleInterface *hijo = QAccessibleWidget::child(k);
        if (hijo && !hijo->state().invisible && hijo->rect().contains(x, y))
            return hijo;
    }
    VistaXPrivate *vistaPrivada = VistaXPrivate::get(vista());
    const QPoint punto = vista()->mapFromGlobal(QPoint(x, y));
    for (int i = 0, n = vistaPrivada->cuantos(); i < n; ++i) {
        if (vistaPrivada->zona(i).contains(punto))
            return parte(i);
    }
    return nullptr;
}

QAccessibleInterface *VistaAccesible::focusChild() const
{
    VistaXPrivate *vistaPrivada = VistaXPrivate::get(vista());
    if (vista()->hasFocus() && vistaPrivada->foco >= 0)
        return parte(vistaPrivada->foco);
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
