// SPDX-License-Identifier: MIT
#include <tarvonix/widgets/etiquetasaccesible_p.h>

#include <tarvonix/widgets/etiquetas.h>

#include <cmath>

namespace tarvonix {

namespace {

// Slot \a i + 1 of a numbered strip: its number as the name, a press as the click on it.
class RanuraAccesible : public ParteAccesible
{
public:
    using ParteAccesible::ParteAccesible;

    QAccessible::Role role() const override { return QAccessible::ListItem; }

    QString text(QAccessible::Text t) const override
    {
        if (t != QAccessible::Name || !isValid())
            return {};
        return QString::number(qint64(tira()->Primero()) + qint64(m_indice) * tira()->Paso());
    }

    QAccessible::State state() const override
    {
        QAccessible::State estado;
        estado.invisible = !isValid() || !tira()->isVisible();
        estado.disabled = isValid() && !tira()->isEnabled();
        return estado;
    }

    QStringList actionNames() const override { return { pressAction() }; }
    void doAction(const QString &accion) override
    {
        if (isValid() && accion == pressAction())
            Q_EMIT tira()->Click(m_indice + 1);
    }

protected:
    QRect zona() const override
    {
        const int paso = int(std::lround(double(tira()->Separacion()) + 1));
        return tira()->Sentido() == etiquetas::SentidoAcross
            ? QRect(m_indice * paso, 0, paso, tira()->height())
            : QRect(0, m_indice * paso, tira()->width(), paso);
    }

private:
    etiquetas *tira() const { return static_cast<etiquetas *>(m_control.data()); }
};

QAccessibleInterface *fabrica(const QString &, QObject *objeto)
{
    if (auto *tira = qobject_cast<etiquetas *>(objeto))
        return new EtiquetasAccesible(tira);
    return nullptr;
}

} // namespace

EtiquetasAccesible::EtiquetasAccesible(etiquetas *tira)
    : AccesibleCompuesto(tira, QAccessible::Client)
{ }

void EtiquetasAccesible::instalar()
{
    AccesibleCompuesto::instalar(fabrica);
}

etiquetas *EtiquetasAccesible::tira() const
{
    return static_cast<etiquetas *>(widget());
}

int EtiquetasAccesible::partes() const
{
    // The slots that begin inside the strip; a text strip reads as one whole.
    const double paso = double(tira()->Separacion()) + 1;
    const double largo = tira()->Sentido() == etiquetas::SentidoAcross ? tira()->width() : tira()->height();
    if (!tira()->Numerar() || !(paso >= 1))
        return 0;
    return int(std::min(std::ceil(largo / paso), 10000.0));
}

QAccessibleInterface *EtiquetasAccesible::nuevaParte(int i) const
{
    return new RanuraAccesible(tira(), i);
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
