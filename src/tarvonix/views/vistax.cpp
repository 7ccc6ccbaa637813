#include <tarvonix/views/vistax.h>

#include <tarvonix/core/error.h>
#include <tarvonix/model/objetos.h>
#include <tarvonix/platform/dragrunner.h>
#include <tarvonix/platform/errortrap.h>
#include <tarvonix/platform/latebinding.h>
#include <tarvonix/platform/shiftstate.h>
#include <tarvonix/platform/surface.h>
#include <tarvonix/views/iframex.h>
#include <tarvonix/views/imapax.h>
#include <tarvonix/widgets/dummy.h>

#include <QDrag>
#include <QDragEnterEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>

#include <cmath>

namespace tarvonix {

namespace {

// A press turns into a band or a drag once the pointer is more than this far (squared) from it.
constexpr double umbralPulsacion2 = 25;
// A drag this close to the visible rectangle's edges scrolls the frame.
constexpr float bordeDesplazamiento = 40;

//! A band's length in whole pixels; a length no widget can take is an overflow.
int enPixeles(double valor)
{
    if (!(std::abs(valor) <= QWIDGETSIZE_MAX))
        throw Error(Error::Overflow);
    return Surface::pixel(valor);
}

// A host's own widget holding a view answers the frame's members only by name.
QVariant llamarPorNombre(QWidget *padre, const char *miembro, const QVariantList &argumentos = {})
{
    return LateBinding::call(padre, QLatin1String(miembro), argumentos);
}

} // namespace

struct VistaX::Private
{
    QString nombre;
    float viewLeft = 0;
    float viewTop = 0;
    float viewRight = 0;
    float viewBottom = 0;

    // The frame that holds the view when it fulfils IFrameX; otherwise it is called by name.
    IFrameX *frame = nullptr;
    IMapaX *root = nullptr;
    std::shared_ptr<Objetos> seleccionados = std::make_shared<Objetos>();
    mutable Surface surface;

    QPointF pulsado;
    bool armado = false; // a press happened that no band or drag has used yet
    bool enBanda = false;
    QPointer<Dummy> banda;
};

VistaX::VistaX(const QString &nombre, const QString &nombreBanda, QWidget *parent)
    : QWidget(parent)
    , d(std::make_unique<Private>())
{
    d->nombre = nombre;
    d->frame = dynamic_cast<IFrameX *>(parent);
    d->surface.setFont(font());
    setAcceptDrops(true);

    d->banda = new Dummy(this);
    d->banda->setObjectName(nombreBanda);
    d->banda->hide();
}

VistaX::~VistaX() = default;

IContenedorX *VistaX::cast()
{
    return this;
}

void VistaX::setViewPort(float left, float top, float right, float bottom)
{
    d->viewLeft = left;
    d->viewTop = top;
    d->viewRight = right;
    d->viewBottom = bottom;
}

float VistaX::viewLeft() const
{
    return d->viewLeft;
}

float VistaX::viewTop() const
{
    return d->viewTop;
}

float VistaX::viewRight() const
{
    return d->viewRight;
}

float VistaX::viewBottom() const
{
    return d->viewBottom;
}

QString VistaX::etiqueta(const char *operacion) const
{
    return d->nombre + QLatin1Char('.') + QLatin1String(operacion) + QLatin1String("->");
}

void VistaX::setRoot(IMapaX *root)
{
    d->root = root;
}

IMapaX &VistaX::root() const
{
    if (!d->root)
        throw Error(Error::ObjectNotSet);
    return *d->root;
}

ObjetoPtr VistaX::ligado()
{
    ObjetoPtr objeto = getObjeto();
    if (!objeto)
        throw Error(Error::ObjectNotSet);
    return objeto;
}

Surface &VistaX::superficie() const
{
    return d->surface;
}

// --- Selection ---------------------------------------------------------------

std::shared_ptr<Objetos> VistaX::getSeleccionados()
{
    return d->seleccionados;
}

void VistaX::seleccionarObjeto(const ObjetoPtr &objeto)
{
    d->seleccionados->add(objeto);
    objeto->setSeleccionado(true);
}

void VistaX::alternar(const ObjetoPtr &objeto)
{
    if (objeto->getSeleccionado()) {
        d->seleccionados->remove(objeto);
        objeto->setSeleccionado(false);
    } else {
        seleccionarObjeto(objeto);
    }
}

void VistaX::unselectAll()
{
    trap(etiqueta("unselectAll"), [&] {
        for (const ObjetoPtr &objeto : d->seleccionados->NewEnum()) {
            objeto->setSeleccionado(false);
            redibujarObjeto(objeto);
        }
        d->seleccionados->clear();
    });
}

void VistaX::deseleccionarTodos()
{
    unselectAll();
}

// A view whose objects have fixed places, like the leg's grid, has nothing to lock, align or distribute.
void VistaX::setBloqueo(bool) { }

void VistaX::alinearHorizontal(const ObjetoPtr &) { }

void VistaX::alinearVertical(const ObjetoPtr &) { }

void VistaX::igualarDimension(const ObjetoPtr &) { }

void VistaX::distribuirHorizontal() { }

void VistaX::distribuirVertical() { }

void VistaX::setActivo(const ObjetoPtr &objeto, bool valor)
{
    trap(etiqueta("IContenedorX_setActivo"), [&] {
        // A frame that activates or deactivates itself passes no object: nothing to mark.
        if (!objeto)
            return;
        // The bound object itself is never marked.
        if (objeto->getCodigo() == ligado()->getCodigo())
            return;
        objeto->setActivo(valor);
        redibujarObjeto(objeto);
    });
}

// --- The frame ---------------------------------------------------------------

bool VistaX::framePActive()
{
    return d->frame ? d->frame->pActive() : llamarPorNombre(parentWidget(), "pActive").toBool();
}

ObjetoPtr VistaX::frameSetActive(const ObjetoPtr &objeto)
{
    if (d->frame)
        return d->frame->setActive(objeto);
    return llamarPorNombre(parentWidget(), "setActive", { QVariant::fromValue(objeto) }).value<ObjetoPtr>();
}

void VistaX::frameResize()
{
    if (d->frame)
        d->frame->Resize(this);
    else
        llamarPorNombre(parentWidget(), "Resize", { QVariant::fromValue<QWidget *>(this) });
}

QString VistaX::frameName()
{
    return d->frame ? parentWidget()->objectName() : llamarPorNombre(parentWidget(), "Name").toString();
}

void VistaX::activarFrame()
{
    if (d->frame) {
        if (!d->frame->isActive())
            d->frame->activate();
    } else if (!llamarPorNombre(parentWidget(), "isActive").toBool()) {
        llamarPorNombre(parentWidget(), "activate");
    }
}

void VistaX::desplazarFrame(Qt::Orientation sentido, qint16 paso)
{
    if (!d->frame)
        llamarPorNombre(parentWidget(), sentido == Qt::Horizontal ? "hScroll" : "vScroll",
                        { QVariant::fromValue(paso) });
    else if (sentido == Qt::Horizontal)
        d->frame->hScroll(paso);
    else
        d->frame->vScroll(paso);
}

void VistaX::changeEvent(QEvent *event)
{
    // The text is measured with the surface's font at any time, not only while painting.
    if (event->type() == QEvent::FontChange)
        d->surface.setFont(font());
    else if (event->type() == QEvent::ParentChange)
        d->frame = dynamic_cast<IFrameX *>(parentWidget());
    QWidget::changeEvent(event);
}

// --- Gestures ----------------------------------------------------------------

QPointF VistaX::puntoPulsado() const
{
    return d->pulsado;
}

bool VistaX::tomarPulsacion(QPointF punto)
{
    const double dx = punto.x() - d->pulsado.x();
    const double dy = punto.y() - d->pulsado.y();
    if (!d->armado || !(dx * dx + dy * dy > umbralPulsacion2))
        return false;
    d->armado = false;
    return true;
}

void VistaX::seguirBanda(QPointF punto)
{
    if (!d->enBanda && !tomarPulsacion(punto))
        return;
    d->enBanda = true;
    mostrarBanda(d->pulsado, punto);
}

void VistaX::mostrarBanda(QPointF desde, QPointF hasta)
{
    const double ancho = desde.x() == hasta.x() ? 1 : std::abs(hasta.x() - desde.x());
    const double alto = desde.y() == hasta.y() ? 1 : std::abs(hasta.y() - desde.y());
    Dummy &caja = banda();
    caja.setGeometry(enPixeles(std::min(desde.x(), hasta.x())), enPixeles(std::min(desde.y(), hasta.y())),
                     enPixeles(ancho), enPixeles(alto));
    if (caja.isHidden()) {
        caja.raise();
        caja.show();
    }
}

Dummy &VistaX::banda() const
{
    if (!d->banda)
        throw Error(Error::ControlNotFound);
    return *d->banda;
}

void VistaX::arrastrar(const QString &texto, const QPixmap &cursorMover)
{
    auto *datos = new QMimeData;
    datos->setText(texto);
    auto *drag = new QDrag(this);
    drag->setMimeData(datos);
    if (!cursorMover.isNull())
        drag->setDragCursor(cursorMover, Qt::MoveAction);
    const QPointer<VistaX> self(this);
    DragRunner::run(drag, Qt::CopyAction | Qt::MoveAction, [self](Qt::DropAction) {
        if (self)
            self->completeDrag();
    });
}

void VistaX::completeDrag() { }

void VistaX::colocarTexto(qint16 posicion, const QRectF &libre, QSizeF texto)
{
    Surface &s = d->surface;
    switch (posicion & 3) {
    case 0:
        s.setCurrentX(libre.x() + (libre.width() - texto.width()) / 2);
        break;
    case 1:
        s.setCurrentX(libre.x() + libre.width() - texto.width());
        break;
    case 2:
        s.setCurrentX(libre.x());
        break;
    default:
        break;
    }
    switch (int(std::floor(posicion / 4.0))) {
    case 0:
        s.setCurrentY(libre.y() + (libre.height() - texto.height()) / 2);
        break;
    case 1:
        s.setCurrentY(libre.y());
        break;
    case 2:
        s.setCurrentY(libre.y() + libre.height() - texto.height());
        break;
    default:
        break;
    }
}

// --- From Qt's events to the view's steps -------------------------------------

void VistaX::paintEvent(QPaintEvent *event)
{
    QPainter painter(this);
    Surface::Painting painting(d->surface, painter);
    d->surface.setFont(font());
    pintar(painter, event->rect());
}

void VistaX::mousePressEvent(QMouseEvent *event)
{
    const int button = mouseButton(event->button());
    const int shift = shiftState(event->modifiers());
    trap(etiqueta("MouseDown"), [&] {
        d->pulsado = event->position();
        MouseDown(button, shift, event->position());
        d->armado = true;
    });
}

void VistaX::mouseMoveEvent(QMouseEvent *event)
{
    const int button = mouseButton(event->buttons());
    const int shift = shiftState(event->modifiers());
    trap(etiqueta("MouseMove"), [&] {
        if (button != LeftButton || !framePActive())
            return;
        MouseMove(shift, event->position());
    });
}

void VistaX::mouseReleaseEvent(QMouseEvent *event)
{
    const int button = mouseButton(event->button());
    const int shift = shiftState(event->modifiers());
    trap(etiqueta("MouseUp"), [&] {
        if (!framePActive())
            return;
        if (d->enBanda) {
            d->enBanda = false;
            Dummy &caja = banda();
            caja.hide();
            soltarBanda(caja.geometry());
            return;
        }
        soltarClick(button, shift, event->position());
        d->armado = true;
    });
}

void VistaX::dragEnterEvent(QDragEnterEvent *event)
{
    dragMoveEvent(event);
}

void VistaX::dragMoveEvent(QDragMoveEvent *event)
{
    const QMimeData *datos = event->mimeData();
    const QPointF punto = event->position();
    const int shift = shiftState(event->modifiers());
    // What a failing step leaves here is what the event is answered with.
    Qt::DropAction efecto = event->proposedAction();
    trap(etiqueta("dragOver"), [&] {
        if (!datos || !datos->hasText()) {
            efecto = Qt::IgnoreAction;
            return;
        }
        activarFrame();
        dragOver(shift, punto, efecto);
        // Near the visible rectangle's edges the frame scrolls, one step per event.
        if (punto.x() < d->viewLeft + bordeDesplazamiento)
            desplazarFrame(Qt::Horizontal, -1);
        else if (punto.x() > d->viewRight - bordeDesplazamiento)
            desplazarFrame(Qt::Horizontal, 1);
        if (punto.y() < d->viewTop + bordeDesplazamiento)
            desplazarFrame(Qt::Vertical, -1);
        else if (punto.y() > d->viewBottom - bordeDesplazamiento)
            desplazarFrame(Qt::Vertical, 1);
    });
    DragRunner::answer(event, efecto);
}

void VistaX::dropEvent(QDropEvent *event)
{
    const QMimeData *datos = event->mimeData();
    const int shift = shiftState(event->modifiers());
    Qt::DropAction efecto = event->proposedAction();
    trap(etiqueta("dragDrop"), [&] {
        if (datos && datos->hasText())
            dragDrop(datos->text(), shift, event->position(), efecto);
        else
            efecto = Qt::IgnoreAction;
    });
    DragRunner::answer(event, efecto);
}

} // namespace tarvonix
