// SPDX-License-Identifier: MIT
#include <tarvonix/widgets/etiquetasaccesible_p.h>

#include <tarvonix/widgets/etiquetas.h>

#include <QPointer>

#include <cmath>

namespace tarvonix {

namespace {

// Slot \a ranura (from 1) of a numbered strip: its number as the name, a press as the click on it.
class RanuraAccesible : public QAccessibleInterface, public QAccessibleActionInterface
{
public:
    RanuraAccesible(etiquetas *tira, int ranura)
        : m_tira(tira)
        , m_ranura(ranura)
    { }

    bool isValid() const override { return m_tira; }
    QObject *object() const override { return nullptr; }
    QWindow *window() const override { return m_tira ? m_tira->window()->windowHandle() : nullptr; }
    QAccessibleInterface *parent() const override { return QAccessible::queryAccessibleInterface(m_tira); }
    QAccessibleInterface *child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface *) const override { return -1; }
    QAccessibleInterface *childAt(int, int) const override { return nullptr; }
    void setText(QAccessible::Text, const QString &) override { }
    QAccessible::Role role() const override { return QAccessible::ListItem; }

    QString text(QAccessible::Text t) const override
    {
        if (t != QAccessible::Name || !m_tira)
            return {};
        return QString::number(qint64(m_tira->Primero()) + qint64(m_ranura - 1) * m_tira->Paso());
    }

    QRect rect() const override
    {
        if (!m_tira)
            return {};
        const int paso = int(std::lround(double(m_tira->Separacion()) + 1));
        const QRect ranura = m_tira->Sentido() == etiquetas::SentidoAcross
            ? QRect((m_ranura - 1) * paso, 0, paso, m_tira->height())
            : QRect(0, (m_ranura - 1) * paso, m_tira->width(), paso);
        return QRect(m_tira->mapToGlobal(ranura.topLeft()), ranura.size());
    }

    QAccessible::State state() const override
    {
        QAccessible::State estado;
        estado.invisible = !m_tira || !m_tira->isVisible();
        estado.disabled = m_tira && !m_tira->isEnabled();
        return estado;
    }

    void *interface_cast(QAccessible::InterfaceType tipo) override
    {
        return tipo == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface *>(this)
                                                    : nullptr;
    }
    QStringList actionNames() const override { return { pressAction() }; }
    void doAction(const QString &accion) override
    {
        if (m_tira && accion == pressAction())
            Q_EMIT m_tira->Click(m_ranura);
    }
    QStringList keyBindingsForAction(const QString &) const override { return {}; }

private:
    QPointer<etiquetas> m_tira;
    const int m_ranura;
};

QAccessibleInterface *fabrica(const QString &, QObject *objeto)
{
    if (auto *tira = qobject_cast<etiquetas *>(objeto))
        return new EtiquetasAccesible(tira);
    return nullptr;
}

} // namespace

EtiquetasAccesible::EtiquetasAccesible(etiquetas *tira)
    : QAccessibleWidget(tira)
{ }

EtiquetasAccesible::~EtiquetasAccesible()
{
    for (const QAccessible::Id id : std::as_const(m_ranuras))
        QAccessible::deleteAccessibleInterface(id);
}

void EtiquetasAccesible::instalar()
{
    static const bool instalada = [] {
        QAccessible::installFactory(fabrica);
        return true;
    }();
    Q_UNUSED(instalada);
}

etiquetas *EtiquetasAccesible::tira() const
{
    return static_cast<etiquetas *>(widget());
}

int EtiquetasAccesible::ranuras() const
{
    // The slots that begin inside the strip; a text strip reads as one whole.
    const double paso = double(tira()->Separacion()) + 1;
    const double largo = tira()->Sentido() == etiquetas::SentidoAcross ? tira()->width() : tira()->height();
    if (!tira()->Numerar() || !(paso >= 1))
        return 0;
    return int(std::min(std::ceil(largo / paso), 10000.0));
}

QAccessible::Role EtiquetasAccesible::role() const
{
    if (tira()->Numerar())
        return QAccessible::List;
    return tira()->Efecto() ? QAccessible::Button : QAccessible::StaticText;
}

QString EtiquetasAccesible::text(QAccessible::Text t) const
{
    QString texto = QAccessibleWidget::text(t);
    if (t == QAccessible::Name && texto.isEmpty()) {
        // A button's own text is a glyph ("_", "x"): its tool tip says what it does.
        texto = tira()->Efecto() && !tira()->toolTip().isEmpty() ? tira()->toolTip() : tira()->texto();
    }
    return texto;
}

int EtiquetasAccesible::childCount() const
{
    return QAccessibleWidget::childCount() + ranuras();
}

QAccessibleInterface *EtiquetasAccesible::child(int index) const
{
    const int widgets = QAccessibleWidget::childCount();
    if (index < widgets)
        return QAccessibleWidget::child(index);
    const int ranura = index - widgets + 1;
    if (ranura > ranuras())
        return nullptr;
    const auto it = m_ranuras.constFind(ranura);
    if (it != m_ranuras.constEnd())
        return QAccessible::accessibleInterface(*it);
    auto *interfaz = new RanuraAccesible(tira(), ranura);
    m_ranuras.insert(ranura, QAccessible::registerAccessibleInterface(interfaz));
    return interfaz;
}

int EtiquetasAccesible::indexOfChild(const QAccessibleInterface *child) const
{
    if (child && !child->object()) {
        const int ranura = m_ranuras.key(QAccessible::uniqueId(const_cast<QAccessibleInterface *>(child)), 0);
        return ranura > 0 ? QAccessibleWidget::childCount() + ranura - 1 : -1;
    }
    return QAccessibleWidget::indexOfChild(child);
}

QStringList EtiquetasAccesible::actionNames() const
{
    QStringList acciones = QAccessibleWidget::actionNames();
    if (role() == QAccessible::Button)
        acciones.prepend(pressAction());
    return acciones;
}

void EtiquetasAccesible::doAction(const QString &accion)
{
    if (accion == pressAction() && role() == QAccessible::Button)
        Q_EMIT tira()->Click(1);
    else
        QAccessibleWidget::doAction(accion);
}

} // namespace tarvonix
