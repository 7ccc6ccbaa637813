#include <tarvonix/platform/surface.h>

#include <tarvonix/platform/colorconversion.h>

#include <QFontMetrics>
#include <QPainter>
#include <QWidget>

#include <cmath>
#include <cstdlib>

namespace tarvonix {

namespace {

Qt::PenStyle penStyle(int drawStyle)
{
    switch (drawStyle) {
    case Surface::DrawDash:
        return Qt::DashLine;
    case Surface::DrawDot:
        return Qt::DotLine;
    case Surface::DrawDashDot:
        return Qt::DashDotLine;
    case Surface::DrawDashDotDot:
        return Qt::DashDotDotLine;
    case Surface::DrawInvisible:
        return Qt::NoPen;
    default:
        return Qt::SolidLine;
    }
}

Qt::BrushStyle brushStyle(int fillStyle)
{
    switch (fillStyle) {
    case Surface::FillSolid:
        return Qt::SolidPattern;
    case Surface::FillHorizontalLine:
        return Qt::HorPattern;
    case Surface::FillVerticalLine:
        return Qt::VerPattern;
    case Surface::FillUpwardDiagonal:
        return Qt::BDiagPattern;
    case Surface::FillDownwardDiagonal:
        return Qt::FDiagPattern;
    case Surface::FillCross:
        return Qt::CrossPattern;
    case Surface::FillDiagonalCross:
        return Qt::DiagCrossPattern;
    default:
        return Qt::NoBrush;
    }
}

int sign(int value)
{
    return (value > 0) - (value < 0);
}

} // namespace

Surface::Surface()
    : m_medidas(m_font)
{
    setFont(m_font);
}

void Surface::setFont(const QFont &font)
{
    m_font = font;
    m_fuenteImpresa = font;
    m_fuenteImpresa.setStyleStrategy(QFont::NoAntialias);
    m_medidas = QFontMetrics(font);
}

Surface::Painting::Painting(Surface &surface, QPainter &painter)
    : m_surface(surface)
    , m_previous(surface.m_painter)
{
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setRenderHint(QPainter::TextAntialiasing, false);
    painter.setRenderHint(QPainter::SmoothPixmapTransform, false);
    if (const auto *widget = dynamic_cast<const QWidget *>(painter.device()))
        surface.setPalette(widget->palette());
    surface.m_painter = &painter;
}

Surface::Painting::~Painting()
{
    m_surface.m_painter = m_previous;
}

int Surface::pixel(double coordinate)
{
    // Far outside any widget: keep the arithmetic below in range.
    if (!(coordinate > -1.0e8))
        return -100000000;
    if (coordinate > 1.0e8)
        return 100000000;
    return int(std::floor(coordinate + 0.5));
}

QColor Surface::colour(qint32 value) const
{
    return toQColor(value, m_palette);
}

void Surface::clear(double x, double y, double width, double height)
{
    if (!m_painter)
        return;
    m_painter->fillRect(QRect(pixel(x), pixel(y), pixel(width), pixel(height)), colour(m_backColor));
}

void Surface::drawLine(int x1, int y1, int x2, int y2, const QColor &lineColour, int style)
{
    if (!m_painter || (x1 == x2 && y1 == y2) || style == DrawInvisible)
        return;
    // Stop one pixel short of the end point along the longer axis.
    const int dx = x2 - x1;
    const int dy = y2 - y1;
    if (std::abs(dx) >= std::abs(dy)) {
        x2 -= sign(dx);
        y2 = y1 + int(std::lround(double(x2 - x1) * dy / dx));
    } else {
        y2 -= sign(dy);
        x2 = x1 + int(std::lround(double(y2 - y1) * dx / dy));
    }
    QPen pen(lineColour, 0, penStyle(style));
    m_painter->setPen(pen);
    m_painter->drawLine(x1, y1, x2, y2);
}

void Surface::line(double x1, double y1, double x2, double y2)
{
    drawLine(pixel(x1), pixel(y1), pixel(x2), pixel(y2), colour(m_foreColor), m_drawStyle);
}

void Surface::line(double x1, double y1, double x2, double y2, qint32 lineColour)
{
    drawLine(pixel(x1), pixel(y1), pixel(x2), pixel(y2), colour(lineColour), DrawSolid);
}

void Surface::applyShapeStyle()
{
    m_painter->setPen(QPen(colour(m_foreColor), 0, penStyle(m_drawStyle)));
    const Qt::BrushStyle style = brushStyle(m_fillStyle);
    m_painter->setBrush(style == Qt::NoBrush ? QBrush() : QBrush(colour(m_fillColor), style));
    m_painter->setBrushOrigin(0, 0);
}

void Surface::box(double x1, double y1, double x2, double y2)
{
    if (!m_painter)
        return;
    const int left = std::min(pixel(x1), pixel(x2));
    const int top = std::min(pixel(y1), pixel(y2));
    const QRect corners(QPoint(left, top), QPoint(std::max(pixel(x1), pixel(x2)), std::max(pixel(y1), pixel(y2))));
    applyShapeStyle();
    // The fill covers every pixel between the corners; the outline goes over its border.
    if (m_painter->brush().style() != Qt::NoBrush)
        m_painter->fillRect(corners, m_painter->brush());
    m_painter->setBrush(Qt::NoBrush);
    m_painter->drawRect(corners.x(), corners.y(), corners.width() - 1, corners.height() - 1);
}

void Surface::circle(double centreX, double centreY, double radius)
{
    if (!m_painter || !(radius >= 0))
        return;
    applyShapeStyle();
    const double r = std::min(radius, 1.0e7);
    m_painter->drawEllipse(QPointF(pixel(centreX), pixel(centreY)), r, r);
}

void Surface::paintPicture(const QImage &picture, double x, double y, double width, double height)
{
    if (!m_painter || picture.isNull())
        return;
    m_painter->drawImage(QRect(pixel(x), pixel(y), pixel(width), pixel(height)), picture);
}

void Surface::print(const QString &text)
{
    if (m_painter) {
        m_painter->setFont(m_fuenteImpresa);
        m_painter->setPen(colour(m_foreColor));
        m_painter->drawText(QPoint(pixel(m_currentX), pixel(m_currentY) + m_medidas.ascent()), text);
    }
    m_currentY += textHeight(text);
    m_currentX = 0;
}

double Surface::textWidth(const QString &text) const
{
    return m_medidas.horizontalAdvance(text);
}

double Surface::textHeight(const QString &) const
{
    return m_medidas.height();
}

} // namespace tarvonix
