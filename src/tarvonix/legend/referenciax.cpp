#include <tarvonix/legend/referenciax.h>

#include <tarvonix/core/error.h>
#include <tarvonix/platform/errortrap.h>
#include <tarvonix/platform/latebinding.h>

#include <QMouseEvent>
#include <QPainter>

#include <cmath>

namespace tarvonix {

namespace {

constexpr double xCaja = 7; // left edge of the colour box
constexpr double ladoCaja = 9; // the box spans ladoCaja + 1 pixels
constexpr double xTexto = 24;
constexpr double margenDerecho = 7;

} // namespace

ReferenciaX::ReferenciaX(QWidget *parent)
    : QWidget(parent)
{
    m_surface.setBackColor(0xFFFFFF);
    m_surface.setForeColor(qint32(0x80000012)); // the system's button text
    m_surface.setFillStyle(Surface::FillSolid);
    m_surface.setDrawStyle(Surface::DrawSolid);
    m_surface.setFont(font());
}

ReferenciaX::~ReferenciaX() = default;

qint32 ReferenciaX::BackColor() const
{
    return m_surface.backColor();
}

void ReferenciaX::setBackColor(qint32 colour)
{
    m_surface.setBackColor(colour);
    update();
}

qint32 ReferenciaX::ForeColor() const
{
    return m_surface.foreColor();
}

void ReferenciaX::setForeColor(qint32 colour)
{
    m_surface.setForeColor(colour);
    update();
}

void ReferenciaX::setReferencia(const std::shared_ptr<Referencia> &referencia)
{
    // 1. Keep the key.
    m_referencia = referencia;
    if (!m_referencia) {
        update();
        throw Error(Error::ObjectNotSet);
    }
    // 2. Its text is the tooltip.
    setToolTip(m_referencia->getTexto());
    // 3. As wide as the text, the box in front of it and a margin behind.
    const double ancho = m_surface.textWidth(m_referencia->getTexto()) + xTexto + margenDerecho;
    resize(int(std::ceil(ancho)), height());
    // 4. Refresh.
    update();
}

std::shared_ptr<Referencia> ReferenciaX::referencia() const
{
    return m_referencia;
}

void ReferenciaX::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    Surface::Painting painting(m_surface, painter);
    m_surface.clear(0, 0, width(), height());
    trap(QStringLiteral("ReferenciaX.UserControl_Paint->"), [this] { pintar(); });
}

void ReferenciaX::pintar()
{
    if (!m_referencia)
        return;
    const double alto = height();
    // 1. The text, centred on the height of an "X".
    m_surface.setCurrentX(xTexto);
    m_surface.setCurrentY((alto - m_surface.textHeight(QStringLiteral("X"))) / 2);
    m_surface.print(m_referencia->getTexto());
    // 2. The colour box: outlined in the fore colour, filled solid with the key's colour.
    const double y0 = (alto - 10) / 2;
    m_surface.setFillColor(m_referencia->getColor());
    m_surface.box(xCaja, y0, xCaja + ladoCaja, y0 + ladoCaja);
}

void ReferenciaX::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::FontChange)
        m_surface.setFont(font());
    QWidget::changeEvent(event);
}

void ReferenciaX::mousePressEvent(QMouseEvent *event)
{
    m_pulsado = event->button() == Qt::LeftButton;
}

void ReferenciaX::mouseReleaseEvent(QMouseEvent *event)
{
    // A click is a press and a release of the left button on the row.
    const bool click
        = m_pulsado && event->button() == Qt::LeftButton && rect().contains(event->position().toPoint());
    m_pulsado = false;
    if (click)
        pasarAlContenedor("Click");
}

void ReferenciaX::mouseDoubleClickEvent(QMouseEvent *event)
{
    // The release that ends a double click is not a click of its own.
    m_pulsado = false;
    if (event->button() == Qt::LeftButton)
        pasarAlContenedor("DblClick");
}

void ReferenciaX::pasarAlContenedor(const char *evento)
{
    // The holding list raises the event; a row held by anything else stays silent.
    trapSilently([&] {
        LateBinding::call(parentWidget(), QString::fromLatin1(evento), { QVariant::fromValue(m_referencia) });
    });
}

} // namespace tarvonix
