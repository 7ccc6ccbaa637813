// SPDX-License-Identifier: MIT
#include <tarvonix/legend/referenciax.h>

#include <tarvonix/core/error.h>
#include <tarvonix/legend/referenciasx.h>
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

struct ReferenciaX::Private
{
    explicit Private(ReferenciaX *owner)
        : q(owner)
    { }

    void pintar();
    void pasarAlContenedor(const char *evento);

    ReferenciaX *const q;
    Surface surface;
    std::shared_ptr<Referencia> referencia;
    bool pulsado = false;
};

ReferenciaX::ReferenciaX(QWidget *parent)
    : QWidget(parent)
    , d(std::make_unique<Private>(this))
{
    d->surface.setBackColor(0xFFFFFF);
    d->surface.setForeColor(qint32(0x80000012)); // the system's button text
    d->surface.setFillStyle(Surface::FillSolid);
    d->surface.setDrawStyle(Surface::DrawSolid);
    d->surface.setFont(font());
}

ReferenciaX::~ReferenciaX() = default;

qint32 ReferenciaX::BackColor() const
{
    return d->surface.backColor();
}

void ReferenciaX::setBackColor(qint32 colour)
{
    d->surface.setBackColor(colour);
    update();
}

qint32 ReferenciaX::ForeColor() const
{
    return d->surface.foreColor();
}

void ReferenciaX::setForeColor(qint32 colour)
{
    d->surface.setForeColor(colour);
    update();
}

void ReferenciaX::setReferencia(const std::shared_ptr<Referencia> &referencia)
{
    // Keep the key.
    d->referencia = referencia;
    if (!d->referencia) {
        update();
        throw Error(Error::ObjectNotSet);
    }
    // Its text is the tooltip, and what a screen reader calls the row.
    setToolTip(d->referencia->getTexto());
    setAccessibleName(d->referencia->getTexto());
    // As wide as the text, the box in front of it and a margin behind.
    const double ancho = d->surface.textWidth(d->referencia->getTexto()) + xTexto + margenDerecho;
    resize(int(std::ceil(ancho)), height());
    // Refresh.
    update();
}

std::shared_ptr<Referencia> ReferenciaX::referencia() const
{
    return d->referencia;
}

void ReferenciaX::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    Surface::Painting painting(d->surface, painter);
    d->surface.clear(0, 0, width(), height());
    trap(QStringLiteral("ReferenciaX.UserControl_Paint->"), [this] { d->pintar(); });
}

void ReferenciaX::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::FontChange)
        d->surface.setFont(font());
    QWidget::changeEvent(event);
}

void ReferenciaX::mousePressEvent(QMouseEvent *event)
{
    d->pulsado = event->button() == Qt::LeftButton;
}

void ReferenciaX::mouseReleaseEvent(QMouseEvent *event)
{
    // A click is a press and a release of the left button on the row.
    const bool click
        = d->pulsado && event->button() == Qt::LeftButton && rect().contains(event->position().toPoint());
    d->pulsado = false;
    if (click)
        d->pasarAlContenedor("Click");
}

void ReferenciaX::mouseDoubleClickEvent(QMouseEvent *event)
{
    // The release that ends a double click is not a click of its own.
    d->pulsado = false;
    if (event->button() == Qt::LeftButton)
        d->pasarAlContenedor("DblClick");
}

void ReferenciaX::Private::pintar()
{
    if (!referencia)
        return;
    const double alto = q->height();
    // The text, centred on the height of an "X".
    surface.setCurrentX(xTexto);
    surface.setCurrentY((alto - surface.textHeight(QStringLiteral("X"))) / 2);
    surface.print(referencia->getTexto());
    // The colour box: outlined in the fore colour, filled solid with the key's colour.
    const double y0 = (alto - 10) / 2;
    surface.setFillColor(referencia->getColor());
    surface.box(xCaja, y0, xCaja + ladoCaja, y0 + ladoCaja);
}

void ReferenciaX::Private::pasarAlContenedor(const char *evento)
{
    // The holding list raises the event; a row held by anything else stays silent.
    if (auto *lista = qobject_cast<ReferenciasX *>(q->parentWidget())) {
        if (qstrcmp(evento, "DblClick") == 0)
            Q_EMIT lista->DblClick(referencia);
        else
            Q_EMIT lista->Click(referencia);
        return;
    }
    // A host may place a row on a form of its own that answers these events by name.
    trapSilently([&] {
        LateBinding::call(q->parentWidget(), QString::fromLatin1(evento),
                          { QVariant::fromValue(referencia) });
    });
}

} // namespace tarvonix
