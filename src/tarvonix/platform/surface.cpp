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
#include <optional>

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
    void drawLine(int x1, int y1, int x2, int y2, qint32 lineColour, int style);
    void applyShapeStyle();
    void ponerLapiz(qint32 colour, int style);
    void ponerBrocha(qint32 colour, int style);
    void olvidarPintor();
    bool pixelesExactos(const QRectF &caja);
    const QImage &circuloDibujado(double radius);

    QPainter *painter = nullptr;
    QPalette palette;
    QFont font;
    // Measuring and printing happen for every label of every paint: kept ready per font.
    QFont fuenteImpresa;
    QFontMetrics medidas;
    int alto = 0;
    // Labels come back paint after paint: their layout and width are kept per font.
    QHash<QString, QStaticText> textos;
    QHash<QString, int> anchos;
    bool fuenteLista = false;
    // What this surface last gave the painter: shapes and labels come by the
    // thousand in a few styles, and building pens and brushes for each costs
    // more than drawing it. A new painting starts knowing nothing.
    struct Puesto
    {
        qint32 colour = 0;
        int style = 0;
        bool valido = false;
    };
    Puesto lapiz;
    Puesto brocha;
    bool fuentePuesta = false;
    // Circles come back by the thousand in a few sizes and colours: each one is
    // drawn once into a picture and copied after that.
    struct Circulo
    {
        double radius;
        qint32 foreColor, drawStyle, fillColor, fillStyle;
        bool operator==(const Circulo &) const = default;
        friend size_t qHash(const Circulo &c, size_t seed = 0)
        {
            return qHashMulti(seed, c.radius, c.foreColor, c.drawStyle, c.fillColor, c.fillStyle);
        }
    };
    QHash<Circulo, QImage> circulos;
    // Where in this painting's logical coordinates a copy gives the same pixels, found once per painting.
    std::optional<QRectF> zonaCopiable;
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

void Surface::Private::drawLine(int x1, int y1, int x2, int y2, qint32 lineColour, int style)
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
    ponerLapiz(lineColour, style);
    painter->drawLine(x1, y1, x2, y2);
}

void Surface::Private::applyShapeStyle()
{
    ponerLapiz(foreColor, drawStyle);
    ponerBrocha(fillColor, fillStyle);
}

void Surface::Private::ponerLapiz(qint32 colour, int style)
{
    const Qt::PenStyle estilo = penStyle(style);
    if (lapiz.valido && lapiz.colour == colour && lapiz.style == estilo)
        return;
    painter->setPen(QPen(this->colour(colour), 0, estilo));
    lapiz = {colour, estilo, true};
}

void Surface::Private::ponerBrocha(qint32 colour, int style)
{
    const Qt::BrushStyle estilo = brushStyle(style);
    // Without a brush the colour means nothing.
    if (estilo == Qt::NoBrush)
        colour = 0;
    if (brocha.valido && brocha.colour == colour && brocha.style == estilo)
        return;
    painter->setBrush(estilo == Qt::NoBrush ? QBrush() : QBrush(this->colour(colour), estilo));
    painter->setBrushOrigin(0, 0);
    brocha = {colour, estilo, true};
}

/*!
    Whether \a caja falls on whole device pixels, one per unit, of a raster
    device and away from its edges (the rasterizer clips shapes that cross
    them), with nothing blended otherwise than by painting over: there a
    picture copied or a strip filled gives the same pixels as drawing the
    shape. (Hatching is never copied: its pattern is anchored to the device.)
*/
bool Surface::Private::pixelesExactos(const QRectF &caja)
{
    if (!zonaCopiable) {
        zonaCopiable = QRectF();
        const QPaintEngine *engine = painter->paintEngine();
        const QTransform t = painter->deviceTransform();
        if (engine && engine->type() == QPaintEngine::Raster && engine->paintDevice()
            && painter->compositionMode() == QPainter::CompositionMode_SourceOver && painter->opacity() == 1.0
            && t.type() <= QTransform::TxTranslate && t.dx() == std::floor(t.dx()) && t.dy() == std::floor(t.dy())) {
            const QPaintDevice *destino = engine->paintDevice();
            const QRectF logico(0, 0, painter->device()->width(), painter->device()->height());
            zonaCopiable = t.inverted().mapRect(QRectF(0, 0, destino->width(), destino->height())) & logico;
        }
    }
    return zonaCopiable->contains(caja);
}

const QImage &Surface::Private::circuloDibujado(double radius)
{
    const Circulo clave{radius, foreColor, drawStyle, fillStyle == FillSolid ? fillColor : 0, fillStyle};
    auto it = circulos.find(clave);
    if (it == circulos.end()) {
        // Up to some megabytes of pictures, then they start over.
        constexpr qsizetype maxCirculos = 256;
        if (circulos.size() >= maxCirculos)
            circulos.clear();
        const int centro = int(std::ceil(radius)) + 2;
        QImage dibujo(2 * centro + 1, 2 * centro + 1, QImage::Format_ARGB32_Premultiplied);
        dibujo.fill(Qt::transparent);
        QPainter pintor(&dibujo);
        pintor.setPen(QPen(colour(foreColor), 0, penStyle(drawStyle)));
        pintor.setBrush(fillStyle == FillSolid ? QBrush(colour(fillColor)) : QBrush());
        pintor.drawEllipse(QPointF(centro, centro), radius, radius);
        pintor.end();
        it = circulos.insert(clave, dibujo);
    }
    return it.value();
}

void Surface::Private::olvidarPintor()
{
    lapiz.valido = brocha.valido = fuentePuesta = false;
    zonaCopiable.reset();
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
    d->alto = d->medidas.height();
    d->fuentePuesta = false;
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
    surface.d->olvidarPintor();
}

Surface::Painting::~Painting()
{
    m_surface.d->painter = m_previous;
    m_surface.d->olvidarPintor();
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
    d->drawLine(pixel(x1), pixel(y1), pixel(x2), pixel(y2), d->foreColor, d->drawStyle);
}

void Surface::line(double x1, double y1, double x2, double y2, qint32 lineColour)
{
    d->drawLine(pixel(x1), pixel(y1), pixel(x2), pixel(y2), lineColour, DrawSolid);
}

void Surface::box(double x1, double y1, double x2, double y2)
{
    if (!d->painter)
        return;
    const int left = std::min(pixel(x1), pixel(x2));
    const int top = std::min(pixel(y1), pixel(y2));
    const QRect corners(QPoint(left, top), QPoint(std::max(pixel(x1), pixel(x2)), std::max(pixel(y1), pixel(y2))));
    // The fill covers every pixel between the corners; the outline goes over its border.
    const Qt::BrushStyle relleno = brushStyle(d->fillStyle);
    if (relleno == Qt::SolidPattern) {
        d->painter->fillRect(corners, d->colour(d->fillColor));
    } else if (relleno != Qt::NoBrush) {
        d->ponerBrocha(d->fillColor, d->fillStyle);
        d->painter->fillRect(corners, d->painter->brush());
    }
    // A solid outline in the colour of a solid fill would paint its pixels again.
    const Qt::PenStyle trazo = penStyle(d->drawStyle);
    if (relleno == Qt::SolidPattern && trazo == Qt::SolidLine && d->colour(d->foreColor) == d->colour(d->fillColor))
        return;
    if (trazo == Qt::SolidLine && corners.width() * corners.height() > 1 && d->pixelesExactos(corners)) {
        // The same pixels as the outline, filled as four strips: several times faster.
        const QColor colour = d->colour(d->foreColor);
        d->painter->fillRect(QRect(corners.left(), corners.top(), corners.width(), 1), colour);
        d->painter->fillRect(QRect(corners.left(), corners.bottom(), corners.width(), 1), colour);
        if (corners.height() > 2) {
            d->painter->fillRect(QRect(corners.left(), corners.top() + 1, 1, corners.height() - 2), colour);
            d->painter->fillRect(QRect(corners.right(), corners.top() + 1, 1, corners.height() - 2), colour);
        }
        return;
    }
    d->ponerLapiz(d->foreColor, d->drawStyle);
    d->ponerBrocha(0, FillTransparent);
    d->painter->drawRect(corners.x(), corners.y(), corners.width() - 1, corners.height() - 1);
}

void Surface::circle(double centreX, double centreY, double radius)
{
    if (!d->painter || !(radius >= 0))
        return;
    const double r = std::min(radius, 1.0e7);
    const QPoint centro(pixel(centreX), pixel(centreY));
    constexpr double maxCopiado = 64;
    const bool rayado = d->fillStyle != FillSolid && d->fillStyle != FillTransparent;
    if (r <= maxCopiado && !rayado && d->pixelesExactos(QRectF(centro.x() - r - 2, centro.y() - r - 2, 2 * r + 5, 2 * r + 5))) {
        const QImage &dibujo = d->circuloDibujado(r);
        const int desde = dibujo.width() / 2;
        d->painter->drawImage(centro - QPoint(desde, desde), dibujo);
        return;
    }
    d->applyShapeStyle();
    d->painter->drawEllipse(QPointF(centro), r, r);
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
        if (!raster) {
            d->painter->setFont(d->font);
            d->fuentePuesta = false;
        } else if (!d->fuentePuesta) {
            d->painter->setFont(d->fuenteImpresa);
            d->fuentePuesta = true;
        }
        d->ponerLapiz(d->foreColor, DrawSolid);
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
    return d->alto;
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
