// SPDX-License-Identifier: MIT
#include <tarvonix/platform/surface.h>

#include <tarvonix/platform/colorconversion.h>

#include <QFontMetrics>
#include <QHash>
#include <QPaintEngine>
#include <QPainter>
#include <QStaticText>
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

// The part of \a widget that its parents let show, in its own coordinates, up to the window
// or the widget being rendered.
QRect areaVisible(const QWidget *widget)
{
    QRect area = widget->rect();
    QPoint desplazamiento;
    for (const QWidget *w = widget; !w->isWindow() && !w->property(Surface::raizDeDibujo).toBool();) {
        desplazamiento += w->pos();
        w = w->parentWidget();
        if (!w)
            break;
        area &= w->rect().translated(-desplazamiento);
    }
    return area;
}

int sign(int value)
{
    return (value > 0) - (value < 0);
}

} // namespace

struct Surface::Private
{
    Private()
        : medidas(font)
    {
    }

    QColor colour(qint32 value) const;
    //! \a text laid out once for the printing font, or nullptr for text a static text lays out otherwise.
    const QStaticText *dispuesto(const QString &text);
    int ancho(const QString &text);
    void drawLine(int x1, int y1, int x2, int y2, const QColor &lineColour, int style);
    void applyShapeStyle();

    QPainter *painter = nullptr;
    QPalette palette;
    QFont font;
    // Measuring and printing happen for every label of every paint: kept ready per font.
    QFont fuenteImpresa;
    QFontMetrics medidas;
    // Labels come back paint after paint: their layout and width are kept per font.
    QHash<QString, QStaticText> textos;
    QHash<QString, int> anchos;
    bool fuenteLista = false;
    qint32 backColor = 0xFFFFFF;
    qint32 foreColor = 0;
    qint32 fillColor = 0;
    int fillStyle = FillTransparent;
    int drawStyle = DrawSolid;
    double currentX = 0;
    double currentY = 0;
};

QColor Surface::Private::colour(qint32 value) const
{
    return toQColor(value, palette);
}

namespace {
// Beyond this many different labels the caches start over rather than grow.
constexpr qsizetype maxTextos = 4096;

// A static text breaks lines and expands tabs, which drawing a text at a point does not.
bool unaLinea(const QString &text)
{
    for (const QChar c : text) {
        if (c.unicode() < 0x20 || c == QChar::LineSeparator || c == QChar::ParagraphSeparator)
            return false;
    }
    return true;
}
} // namespace

const QStaticText *Surface::Private::dispuesto(const QString &text)
{
    auto it = textos.find(text);
    if (it == textos.end()) {
        if (!unaLinea(text))
            return nullptr;
        if (textos.size() >= maxTextos)
            textos.clear();
        QStaticText estatico(text);
        estatico.setTextFormat(Qt::PlainText);
        estatico.setPerformanceHint(QStaticText::AggressiveCaching);
        estatico.prepare(QTransform(), fuenteImpresa);
        it = textos.insert(text, estatico);
    }
    return &it.value();
}

int Surface::Private::ancho(const QString &text)
{
    auto it = anchos.find(text);
    if (it == anchos.end()) {
        if (anchos.size() >= maxTextos)
            anchos.clear();
        it = anchos.insert(text, medidas.horizontalAdvance(text));
    }
    return it.value();
}

void Surface::Private::drawLine(int x1, int y1, int x2, int y2, const QColor &lineColour, int style)
{
    if (!painter || (x1 == x2 && y1 == y2) || style == DrawInvisible)
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
    painter->setPen(pen);
    painter->drawLine(x1, y1, x2, y2);
}

void Surface::Private::applyShapeStyle()
{
    painter->setPen(QPen(colour(foreColor), 0, penStyle(drawStyle)));
    const Qt::BrushStyle style = brushStyle(fillStyle);
    painter->setBrush(style == Qt::NoBrush ? QBrush() : QBrush(colour(fillColor), style));
    painter->setBrushOrigin(0, 0);
}

Surface::Surface()
    : d(std::make_unique<Private>())
{
    setFont(d->font);
}

Surface::~Surface() = default;

void Surface::setFont(const QFont &font)
{
    // Set again before every paint: the same font keeps what was laid out with it.
    if (d->fuenteLista && d->font == font && d->font.resolveMask() == font.resolveMask())
        return;
    d->fuenteLista = true;
    d->textos.clear();
    d->anchos.clear();
    d->font = font;
    d->fuenteImpresa = font;
    d->fuenteImpresa.setStyleStrategy(QFont::NoAntialias);
    d->medidas = QFontMetrics(font);
}

Surface::Painting::Painting(Surface &surface, QPainter &painter)
    : m_surface(surface)
    , m_previous(surface.d->painter)
{
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setRenderHint(QPainter::TextAntialiasing, false);
    painter.setRenderHint(QPainter::SmoothPixmapTransform, false);
    if (const auto *widget = dynamic_cast<const QWidget *>(painter.device())) {
        surface.setPalette(widget->palette());
        // The raster engine clips each widget to where it shows; PDF, SVG and printers do not,
        // so the part of a widget its parents hide would show on paper.
        if (painter.paintEngine() && painter.paintEngine()->type() != QPaintEngine::Raster)
            painter.setClipRect(areaVisible(widget), Qt::IntersectClip);
    }
    surface.d->painter = &painter;
}

Surface::Painting::~Painting()
{
    m_surface.d->painter = m_previous;
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

void Surface::clear(double x, double y, double width, double height)
{
    if (!d->painter)
        return;
    d->painter->fillRect(QRect(pixel(x), pixel(y), pixel(width), pixel(height)), d->colour(d->backColor));
}

void Surface::line(double x1, double y1, double x2, double y2)
{
    d->drawLine(pixel(x1), pixel(y1), pixel(x2), pixel(y2), d->colour(d->foreColor), d->drawStyle);
}

void Surface::line(double x1, double y1, double x2, double y2, qint32 lineColour)
{
    d->drawLine(pixel(x1), pixel(y1), pixel(x2), pixel(y2), d->colour(lineColour), DrawSolid);
}

void Surface::box(double x1, double y1, double x2, double y2)
{
    if (!d->painter)
        return;
    const int left = std::min(pixel(x1), pixel(x2));
    const int top = std::min(pixel(y1), pixel(y2));
    const QRect corners(QPoint(left, top), QPoint(std::max(pixel(x1), pixel(x2)), std::max(pixel(y1), pixel(y2))));
    d->applyShapeStyle();
    // The fill covers every pixel between the corners; the outline goes over its border.
    const QBrush brush = d->painter->brush();
    if (brush.style() != Qt::NoBrush)
        d->painter->fillRect(corners, brush);
    // A solid outline in the colour of a solid fill would paint its pixels again.
    const QPen pen = d->painter->pen();
    if (brush.style() == Qt::SolidPattern && pen.style() == Qt::SolidLine && pen.color() == brush.color())
        return;
    d->painter->setBrush(Qt::NoBrush);
    d->painter->drawRect(corners.x(), corners.y(), corners.width() - 1, corners.height() - 1);
}

void Surface::circle(double centreX, double centreY, double radius)
{
    if (!d->painter || !(radius >= 0))
        return;
    d->applyShapeStyle();
    const double r = std::min(radius, 1.0e7);
    d->painter->drawEllipse(QPointF(pixel(centreX), pixel(centreY)), r, r);
}

void Surface::paintPicture(const QImage &picture, double x, double y, double width, double height)
{
    if (!d->painter || picture.isNull())
        return;
    d->painter->drawImage(QRect(pixel(x), pixel(y), pixel(width), pixel(height)), picture);
}

void Surface::print(const QString &text)
{
    if (d->painter) {
        // On paper and in files the text stays text a reader can find, with the characters behind
        // its glyphs: neither a static text nor an aliased font keeps them once the page is scaled.
        const QPaintEngine *motor = d->painter->paintEngine();
        const bool raster = motor && motor->type() == QPaintEngine::Raster;
        d->painter->setFont(raster ? d->fuenteImpresa : d->font);
        d->painter->setPen(d->colour(d->foreColor));
        const QPoint esquina(pixel(d->currentX), pixel(d->currentY));
        if (const QStaticText *estatico = raster ? d->dispuesto(text) : nullptr)
            d->painter->drawStaticText(esquina, *estatico);
        else
            d->painter->drawText(esquina + QPoint(0, d->medidas.ascent()), text);
    }
    d->currentY += textHeight(text);
    d->currentX = 0;
}

double Surface::textWidth(const QString &text) const
{
    return d->ancho(text);
}

double Surface::textHeight(const QString &) const
{
    return d->medidas.height();
}

qint32 Surface::backColor() const
{
    return d->backColor;
}

void Surface::setBackColor(qint32 colour)
{
    d->backColor = colour;
}

qint32 Surface::foreColor() const
{
    return d->foreColor;
}

void Surface::setForeColor(qint32 colour)
{
    d->foreColor = colour;
}

qint32 Surface::fillColor() const
{
    return d->fillColor;
}

void Surface::setFillColor(qint32 colour)
{
    d->fillColor = colour;
}

int Surface::fillStyle() const
{
    return d->fillStyle;
}

void Surface::setFillStyle(int style)
{
    d->fillStyle = style;
}

int Surface::drawStyle() const
{
    return d->drawStyle;
}

void Surface::setDrawStyle(int style)
{
    d->drawStyle = style;
}

double Surface::currentX() const
{
    return d->currentX;
}

void Surface::setCurrentX(double x)
{
    d->currentX = x;
}

double Surface::currentY() const
{
    return d->currentY;
}

void Surface::setCurrentY(double y)
{
    d->currentY = y;
}

QFont Surface::font() const
{
    return d->font;
}

void Surface::setPalette(const QPalette &palette)
{
    d->palette = palette;
}

bool Surface::isPainting() const
{
    return d->painter != nullptr;
}

} // namespace tarvonix
