// SPDX-License-Identifier: MIT
#include <tarvonix/widgets/etiquetas.h>

#include <tarvonix/core/error.h>
#include <tarvonix/model/color.h>
#include <tarvonix/platform/colorconversion.h>
#include <tarvonix/platform/dragrunner.h>
#include <tarvonix/platform/errortrap.h>
#include <tarvonix/platform/propertybag.h>
#include <tarvonix/platform/shiftstate.h>
#include <tarvonix/widgets/etiquetasaccesible_p.h>

#include <QApplication>
#include <QDragEnterEvent>
#include <QDragMoveEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>

#include <cmath>
#include <limits>

namespace tarvonix {

namespace {

constexpr QSize tamanoDiseno(100, 20);
constexpr qint16 defaultSentido = etiquetas::SentidoAcross;
constexpr float defaultSeparacion = 20;
constexpr bool defaultNumerar = true;
constexpr qint16 defaultPaso = 1;
constexpr qint16 defaultPrimero = 1;
constexpr qint32 defaultBackColor = 0xC0C0C0;
constexpr qint32 defaultForeColor = 0;
constexpr bool defaultEfecto = true;
constexpr qint16 defaultOLEDropMode = etiquetas::OLEDropNone;

constexpr qint32 blanco = 0xFFFFFF;
constexpr qint32 negro = 0;

// A moved pointer starts a drag once it is more than this far (squared) from the press.
constexpr double radioArrastre2 = 25;

} // namespace

struct etiquetas::Private
{
    explicit Private(etiquetas *owner)
        : q(owner)
    { }

    void pintar();
    void pintarAcross(qint32 sombra);
    void pintarDown(qint32 sombra);
    void dibujarRelieve(int etiqueta, qint32 colour);
    void dibujarPresionada(int etiqueta, bool hundida);
    double coordenada(const QPointF &punto) const;
    QString rotulo(qint64 numero) const;

    etiquetas *const q;
    Surface surface;
    qint16 sentido = defaultSentido;
    float separacion = defaultSeparacion;
    bool numerar = defaultNumerar;
    qint16 paso = defaultPaso;
    qint16 primero = defaultPrimero;
    qint32 backColor = defaultBackColor;
    qint32 foreColor = defaultForeColor;
    QString texto;
    bool efecto = defaultEfecto;
    qint16 oleDropMode = defaultOLEDropMode;
    double downX = 0;
    double downY = 0;
    int presionada = 0;
};

etiquetas::etiquetas(QWidget *parent)
    : QWidget(parent)
    , d(std::make_unique<Private>(this))
{
    resize(tamanoDiseno);
    // Drags are always taken, so that a strip that refuses them does not pass them to the control beneath.
    setAcceptDrops(true);
    EtiquetasAccesible::instalar();
}

etiquetas::~etiquetas() = default;

void etiquetas::Private::pintar()
{
    surface.setFont(q->font());
    surface.setBackColor(backColor);
    surface.clear(0, 0, q->width(), q->height());
    // The shade for separators and outline. A system colour is shaded as the colour it shows.
    const qint32 fondo
        = isSystemColour(backColor) ? fromQColor(toQColor(backColor, q->palette())) : backColor;
    const qint32 sombra = Color::sombrearColor(fondo, 0.7);
    // The outline.
    surface.setForeColor(sombra);
    surface.setFillStyle(Surface::FillTransparent);
    surface.setDrawStyle(Surface::DrawSolid);
    surface.box(0, 0, q->width() - 1, q->height() - 1);
    surface.setForeColor(foreColor);
    // Slots narrower than a pixel would never reach the end of the strip.
    if (!(double(separacion) + 1 >= 1))
        throw Error(Error::InvalidArgument);
    // The slots, with their separators and labels.
    if (sentido == SentidoAcross)
        pintarAcross(sombra);
    else
        pintarDown(sombra);
    // The sunken slot, while a button is held on it.
    if (efecto && presionada > 0)
        dibujarRelieve(presionada, negro);
}

void etiquetas::Private::pintarAcross(qint32 sombra)
{
    const double ranura = separacion; // the inside of a slot, in double like the other lengths
    const double w = q->width();
    const double h = q->height();
    // One text row for every slot.
    const double fila = (h - surface.textHeight(QStringLiteral("1"))) / 2;
    // The top highlight.
    surface.line(0, 1, w - 1, 1, blanco);
    // Separator, highlight and label of each slot, to the end of the control.
    qint64 numero = primero;
    for (qint64 i = 0;; ++i) {
        const double pos = double(i) * (ranura + 1);
        if (!(pos <= w))
            break;
        surface.line(pos, 0, pos, h - 1, sombra);
        surface.line(pos + 1, 1, pos + 1, h - 1, blanco);
        const QString rotulado = rotulo(numero);
        const double ancho = surface.textWidth(rotulado);
        if (ancho < ranura && surface.textHeight(rotulado) < h) {
            surface.setCurrentX(pos + (ranura - ancho) / 2);
            surface.setCurrentY(fila);
            surface.print(rotulado);
        }
        numero += paso;
    }
}

void etiquetas::Private::pintarDown(qint32 sombra)
{
    const double ranura = separacion; // the inside of a slot, in double like the other lengths
    const double w = q->width();
    const double h = q->height();
    // The left highlight.
    surface.line(1, 0, 1, h - 1, blanco);
    // Separator, highlight and label of each slot, to the end of the control.
    qint64 numero = primero;
    for (qint64 i = 0;; ++i) {
        const double pos = double(i) * (ranura + 1);
        if (!(pos <= h))
            break;
        surface.line(0, pos, w - 1, pos, sombra);
        surface.line(1, pos + 1, w - 1, pos + 1, blanco);
        const QString rotulado = rotulo(numero);
        const double ancho = surface.textWidth(rotulado);
        const double alto = surface.textHeight(rotulado);
        if (alto < ranura && ancho < w) {
            surface.setCurrentX((w - ancho) / 2);
            surface.setCurrentY(pos + (ranura - alto) / 2);
            surface.print(rotulado);
        }
        numero += paso;
    }
}

void etiquetas::Private::dibujarRelieve(int etiqueta, qint32 colour)
{
    const double ranura = separacion; // the inside of a slot, in double like the other lengths
    const double a = (ranura + 1) * (etiqueta - 1) + 1;
    if (sentido != SentidoAcross) {
        surface.line(1, a, 1, a + ranura, colour);
        surface.line(1, a, q->width() - 1, a, colour);
    } else {
        surface.line(a, 1, a, q->height() - 1, colour);
        surface.line(a, 1, a + ranura, 1, colour);
    }
}

void etiquetas::Private::dibujarPresionada(int etiqueta, bool hundida)
{
    if (!efecto)
        return;
    // Released, a slot looks as the plain paint draws it; pressed, the paint sinks it.
    presionada = hundida ? etiqueta : 0;
    q->update();
}

double etiquetas::Private::coordenada(const QPointF &punto) const
{
    return sentido == SentidoAcross ? punto.x() : punto.y();
}

QString etiquetas::Private::rotulo(qint64 numero) const
{
    return numerar ? QString::number(numero) : texto;
}

void etiquetas::setSentido(qint16 sentido)
{
    d->sentido = sentido;
}

void etiquetas::setSeparacion(float separacion)
{
    d->separacion = separacion;
}

void etiquetas::setNumerar(bool numerar)
{
    d->numerar = numerar;
}

void etiquetas::setPaso(qint16 paso)
{
    d->paso = paso;
}

void etiquetas::setPrimero(qint16 primero)
{
    d->primero = primero;
}

void etiquetas::setBackColor(qint32 colour)
{
    d->backColor = colour;
}

void etiquetas::setForeColor(qint32 colour)
{
    d->foreColor = colour;
}

void etiquetas::setTexto(const QString &texto)
{
    d->texto = texto;
}

void etiquetas::setEfecto(bool efecto)
{
    d->efecto = efecto;
}

void etiquetas::setOLEDropMode(qint16 mode)
{
    d->oleDropMode = mode;
}

QSize etiquetas::sizeHint() const
{
    return tamanoDiseno;
}

int etiquetas::etiquetaEn(double coordenada) const
{
    const double paso = double(d->separacion) + 1;
    if (paso == 0)
        throw Error(Error::DivisionByZero);
    const double etiqueta = std::floor(coordenada / paso) + 1;
    if (!(etiqueta >= std::numeric_limits<int>::min() && etiqueta <= std::numeric_limits<int>::max()))
        throw Error(Error::Overflow);
    return int(etiqueta);
}

// ---------------------------------------------------------------------------
// Paint

void etiquetas::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    Surface::Painting painting(d->surface, painter);
    trap(QStringLiteral("Etiquetas.UserControl_Paint->"), [this] { d->pintar(); });
}

// ---------------------------------------------------------------------------
// Mouse

void etiquetas::mousePressEvent(QMouseEvent *event)
{
    const QPointF punto = event->position();
    const int button = mouseButton(event->button());
    trap(QStringLiteral("Etiquetas.UserControl_MouseDown->"), [&] {
        // Sink the slot, report it, remember where.
        const int etiqueta = etiquetaEn(d->coordenada(punto));
        d->dibujarPresionada(etiqueta, true);
        // A handler may close what holds the strip, the strip with it.
        const QPointer<etiquetas> vivo(this);
        if (button == LeftButton)
            Q_EMIT Click(etiqueta);
        else if (button == RightButton)
            Q_EMIT RightClick(etiqueta);
        if (!vivo)
            return;
        d->downX = punto.x();
        d->downY = punto.y();
    });
}

void etiquetas::mouseMoveEvent(QMouseEvent *event)
{
    const QPointF punto = event->position();
    const Qt::MouseButtons buttons = event->buttons();
    if (buttons == Qt::NoButton)
        return;
    trap(QStringLiteral("Etiquetas.UserControl_MouseMove->"), [&] {
        // Raise the slot again, and start a drag once the pointer left the press point.
        if (d->presionada != 0)
            d->dibujarPresionada(d->presionada, false);
        const double dx = punto.x() - d->downX;
        const double dy = punto.y() - d->downY;
        if (buttons.testFlag(Qt::LeftButton) && dx * dx + dy * dy > radioArrastre2)
            Q_EMIT OLEStartDrag(float(punto.x()), float(punto.y()), etiquetaEn(d->coordenada(punto)));
    });
}

void etiquetas::mouseReleaseEvent(QMouseEvent *event)
{
    const QPointF punto = event->position();
    trap(QStringLiteral("Etiquetas.UserControl_MouseUp->"),
         [&] { d->dibujarPresionada(etiquetaEn(d->coordenada(punto)), false); });
}

void etiquetas::mouseDoubleClickEvent(QMouseEvent *)
{
    // The second press of a double click is no new press: one Click per double click.
}

// ---------------------------------------------------------------------------
// Drag and drop

void etiquetas::dragEnterEvent(QDragEnterEvent *event)
{
    event->setDropAction(d->oleDropMode != OLEDropNone ? Qt::CopyAction : Qt::IgnoreAction);
    event->accept();
}

void etiquetas::dragMoveEvent(QDragMoveEvent *event)
{
    DragRunner::answer(event, d->oleDropMode != OLEDropNone ? Qt::CopyAction : Qt::IgnoreAction);
}

void etiquetas::dropEvent(QDropEvent *event)
{
    if (d->oleDropMode == OLEDropNone) {
        DragRunner::answer(event, Qt::IgnoreAction);
        return;
    }
    qint32 effect = qint32(event->dropAction());
    const QPointF punto = event->position();
    trap(QStringLiteral("Etiquetas.UserControl_OLEDragDrop->"), [&] {
        Q_EMIT OLEDragDrop(event->mimeData(), &effect, mouseButton(event->buttons()),
                           shiftState(event->modifiers()), float(punto.x()), float(punto.y()),
                           etiquetaEn(d->coordenada(punto)));
    });
    DragRunner::answer(event, DragRunner::action(effect));
}

// ---------------------------------------------------------------------------
// Properties

void etiquetas::readProperties(const PropertyBag &bag)
{
    resize(bag.readProperty(QStringLiteral("_extentx"), tamanoDiseno.width()).toInt(),
           bag.readProperty(QStringLiteral("_extenty"), tamanoDiseno.height()).toInt());
    setSentido(bag.readProperty(QStringLiteral("Sentido"), defaultSentido).value<qint16>());
    setSeparacion(bag.readProperty(QStringLiteral("Separacion"), defaultSeparacion).value<float>());
    setNumerar(bag.readProperty(QStringLiteral("Numerar"), defaultNumerar).toBool());
    setPaso(bag.readProperty(QStringLiteral("Paso"), defaultPaso).value<qint16>());
    setPrimero(bag.readProperty(QStringLiteral("Primero"), defaultPrimero).value<qint16>());
    setBackColor(bag.readProperty(QStringLiteral("BackColor"), defaultBackColor).value<qint32>());
    setForeColor(bag.readProperty(QStringLiteral("ForeColor"), defaultForeColor).value<qint32>());
    setTexto(bag.readProperty(QStringLiteral("Texto"), QString()).toString());
    setEfecto(bag.readProperty(QStringLiteral("Efecto"), defaultEfecto).toBool());
    // A font equal to the ambient one is not kept, so that the strip goes on following its container.
    const QFont ambiente = parentWidget() ? parentWidget()->font() : QApplication::font();
    const QFont fuente = bag.readProperty(QStringLiteral("Font"), ambiente).value<QFont>();
    setFont(fuente == ambiente ? QFont() : fuente);
    setOLEDropMode(bag.readProperty(QStringLiteral("OLEDropMode"), defaultOLEDropMode).value<qint16>());
}

void etiquetas::writeProperties(PropertyBag &bag) const
{
    // Saved in lower case, as forms have always held them; reading ignores case.
    bag.writeProperty(QStringLiteral("_extentx"), width(), tamanoDiseno.width());
    bag.writeProperty(QStringLiteral("_extenty"), height(), tamanoDiseno.height());
    bag.writeProperty(QStringLiteral("sentido"), d->sentido, defaultSentido);
    bag.writeProperty(QStringLiteral("separacion"), d->separacion, defaultSeparacion);
    bag.writeProperty(QStringLiteral("numerar"), d->numerar, defaultNumerar);
    bag.writeProperty(QStringLiteral("paso"), d->paso, defaultPaso);
    bag.writeProperty(QStringLiteral("primero"), d->primero, defaultPrimero);
    bag.writeProperty(QStringLiteral("backcolor"), d->backColor, defaultBackColor);
    bag.writeProperty(QStringLiteral("forecolor"), d->foreColor, defaultForeColor);
    bag.writeProperty(QStringLiteral("texto"), d->texto, QString());
    bag.writeProperty(QStringLiteral("efecto"), d->efecto, defaultEfecto);
    const QFont ambiente = parentWidget() ? parentWidget()->font() : QApplication::font();
    bag.writeProperty(QStringLiteral("font"), font(), ambiente);
    bag.writeProperty(QStringLiteral("oledropmode"), d->oleDropMode, defaultOLEDropMode);
}

qint16 etiquetas::Sentido() const
{
    return d->sentido;
}

float etiquetas::Separacion() const
{
    return d->separacion;
}

bool etiquetas::Numerar() const
{
    return d->numerar;
}

qint16 etiquetas::Paso() const
{
    return d->paso;
}

qint16 etiquetas::Primero() const
{
    return d->primero;
}

qint32 etiquetas::BackColor() const
{
    return d->backColor;
}

qint32 etiquetas::ForeColor() const
{
    return d->foreColor;
}

QString etiquetas::texto() const
{
    return d->texto;
}

bool etiquetas::Efecto() const
{
    return d->efecto;
}

qint16 etiquetas::OLEDropMode() const
{
    return d->oleDropMode;
}

int etiquetas::presionada() const
{
    return d->presionada;
}

} // namespace tarvonix
