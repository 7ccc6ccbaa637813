// SPDX-License-Identifier: MIT
#include <tarvonix/views/vistax.h>
#include <tarvonix/views/vistax_p.h>

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

#include <tarvonix/views/vistaaccesible_p.h>

#include <QDrag>
#include <QDragEnterEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>
#include <QStyle>
#include <QStyleOptionFocusRect>

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

VistaXPrivate::VistaXPrivate(VistaX *vista, const QString &nombreVista)
    : q(vista)
    , nombre(nombreVista)
    , seleccionados(std::make_shared<Objetos>())
{ }

VistaX::VistaX(const QString &nombre, const QString &nombreBanda, QWidget *parent)
    : QWidget(parent)
    , d(std::make_unique<VistaXPrivate>(this, nombre))
{
    d->frame = dynamic_cast<IFrameX *>(parent);
    d->surface.setFont(font());
    setAcceptDrops(true);
    setFocusPolicy(Qt::StrongFocus);
    VistaAccesible::instalar();

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

QString VistaXPrivate::etiqueta(const char *operacion) const
{
    return nombre + QLatin1Char('.') + QLatin1String(operacion) + QLatin1String("->");
}

void VistaX::setRoot(IMapaX *root)
{
    d->root = root;
}

IMapaX &VistaXPrivate::raiz() const
{
    if (!root)
        throw Error(Error::ObjectNotSet);
    return *root;
}

ObjetoPtr VistaXPrivate::ligado()
{
    ObjetoPtr objeto = q->getObjeto();
    if (!objeto)
        throw Error(Error::ObjectNotSet);
    return objeto;
}

// --- Selection ---------------------------------------------------------------

std::shared_ptr<Objetos> VistaX::getSeleccionados()
{
    return d->seleccionados;
}

void VistaXPrivate::seleccionarObjeto(const ObjetoPtr &objeto)
{
    seleccionados->add(objeto);
    objeto->setSeleccionado(true);
    avisar(objeto, QAccessible::SelectionAdd);
}

void VistaXPrivate::alternar(const ObjetoPtr &objeto)
{
    if (objeto->getSeleccionado()) {
        seleccionados->remove(objeto);
        objeto->setSeleccionado(false);
        avisar(objeto, QAccessible::SelectionRemove);
    } else {
        seleccionarObjeto(objeto);
    }
}

void VistaXPrivate::unselectAll()
{
    trap(etiqueta("unselectAll"), [&] {
        for (const ObjetoPtr &objeto : seleccionados->NewEnum()) {
            objeto->setSeleccionado(false);
            q->redibujarObjeto(objeto);
            avisar(objeto, QAccessible::SelectionRemove);
        }
        seleccionados->clear();
    });
}

void VistaX::deseleccionarTodos()
{
    d->unselectAll();
}

void VistaX::revelar(const ObjetoPtr &objeto)
{
    trap(d->etiqueta("revelar"), [&] {
        if (!objeto)
            throw Error(Error::ObjectNotSet);
        d->unselectAll();
        d->seleccionarObjeto(objeto);
        redibujarObjeto(objeto);
        d->frameSetActive(objeto);
    });
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
    trap(d->etiqueta("IContenedorX_setActivo"), [&] {
        // A frame that activates or deactivates itself passes no object: nothing to mark.
        if (!objeto)
            return;
        // The bound object itself is never marked.
        if (objeto->getCodigo() == d->ligado()->getCodigo())
            return;
        objeto->setActivo(valor);
        redibujarObjeto(objeto);
    });
}

// --- The frame ---------------------------------------------------------------

bool VistaXPrivate::framePActive()
{
    return frame ? frame->pActive() : llamarPorNombre(q->parentWidget(), "pActive").toBool();
}

ObjetoPtr VistaXPrivate::frameSetActive(const ObjetoPtr &objeto)
{
    if (frame)
        return frame->setActive(objeto);
    return llamarPorNombre(q->parentWidget(), "setActive", { QVariant::fromValue(objeto) })
        .value<ObjetoPtr>();
}

void VistaXPrivate::frameResize()
{
    if (frame)
        frame->Resize(q);
    else
        llamarPorNombre(q->parentWidget(), "Resize", { QVariant::fromValue<QWidget *>(q) });
}

QString VistaXPrivate::frameName()
{
    return frame ? q->parentWidget()->objectName() : llamarPorNombre(q->parentWidget(), "Name").toString();
}

void VistaXPrivate::activarFrame()
{
    if (frame) {
        if (!frame->isActive())
            frame->activate();
    } else if (!llamarPorNombre(q->parentWidget(), "isActive").toBool()) {
        llamarPorNombre(q->parentWidget(), "activate");
    }
}

void VistaXPrivate::desplazarFrame(Qt::Orientation sentido, qint16 paso)
{
    if (!frame)
        llamarPorNombre(q->parentWidget(), sentido == Qt::Horizontal ? "hScroll" : "vScroll",
                        { QVariant::fromValue(paso) });
    else if (sentido == Qt::Horizontal)
        frame->hScroll(paso);
    else
        frame->vScroll(paso);
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

bool VistaXPrivate::tomarPulsacion(QPointF punto)
{
    const double dx = punto.x() - pulsado.x();
    const double dy = punto.y() - pulsado.y();
    if (!armado || !(dx * dx + dy * dy > umbralPulsacion2))
        return false;
    armado = false;
    return true;
}

void VistaXPrivate::seguirBanda(QPointF punto)
{
    if (!enBanda && !tomarPulsacion(punto))
        return;
    enBanda = true;
    mostrarBanda(pulsado, punto);
}

void VistaXPrivate::mostrarBanda(QPointF desde, QPointF hasta)
{
    const double ancho = desde.x() == hasta.x() ? 1 : std::abs(hasta.x() - desde.x());
    const double alto = desde.y() == hasta.y() ? 1 : std::abs(hasta.y() - desde.y());
    Dummy &caja = cajaBanda();
    caja.setGeometry(enPixeles(std::min(desde.x(), hasta.x())), enPixeles(std::min(desde.y(), hasta.y())),
                     enPixeles(ancho), enPixeles(alto));
    if (caja.isHidden()) {
        caja.raise();
        caja.show();
    }
}

Dummy &VistaXPrivate::cajaBanda() const
{
    if (!banda)
        throw Error(Error::ControlNotFound);
    return *banda;
}

void VistaXPrivate::arrastrar(const QString &texto, const QPixmap &cursorMover)
{
    auto *datos = new QMimeData;
    datos->setText(texto);
    auto *drag = new QDrag(q);
    drag->setMimeData(datos);
    if (!cursorMover.isNull())
        drag->setDragCursor(cursorMover, Qt::MoveAction);
    const QPointer<VistaX> self(q);
    DragRunner::run(drag, Qt::CopyAction | Qt::MoveAction, [self](Qt::DropAction) {
        if (self)
            self->completeDrag();
    });
}

void VistaX::completeDrag() { }

void VistaXPrivate::colocarTexto(int across, int down, const QRectF &libre, QSizeF texto)
{
    Surface &s = surface;
    switch (across) {
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
    switch (down) {
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
    // The focus mark goes over whatever the view drew, in the platform's own look.
    if (d->marcaVisible()) {
        trap(d->etiqueta("Paint"), [&] {
            QStyleOptionFocusRect opcion;
            opcion.initFrom(this);
            opcion.state |= QStyle::State_KeyboardFocusChange | QStyle::State_HasFocus;
            opcion.rect = d->zonaMarca(d->foco);
            opcion.backgroundColor = palette().color(backgroundRole());
            style()->drawPrimitive(QStyle::PE_FrameFocusRect, &opcion, &painter, this);
        });
    }
}

void VistaX::mousePressEvent(QMouseEvent *event)
{
    const int button = mouseButton(event->button());
    const int shift = shiftState(event->modifiers());
    // The pointer takes over: the mark hides, and the next arrow starts from what the press selects.
    if (d->teclado && d->foco >= 0)
        update(d->zonaMarca(d->foco));
    d->teclado = false;
    d->foco = -1;
    // The host hears of a press or a release and may close the frame, this view with it.
    const QPointer<VistaX> vivo(this);
    trap(d->etiqueta("MouseDown"), [&] {
        d->pulsado = event->position();
        MouseDown(button, shift, event->position());
        if (vivo)
            d->armado = true;
    });
}

void VistaX::mouseMoveEvent(QMouseEvent *event)
{
    const int button = mouseButton(event->buttons());
    const int shift = shiftState(event->modifiers());
    trap(d->etiqueta("MouseMove"), [&] {
        if (button != LeftButton || !d->framePActive())
            return;
        MouseMove(shift, event->position());
    });
}

void VistaX::mouseReleaseEvent(QMouseEvent *event)
{
    const int button = mouseButton(event->button());
    const int shift = shiftState(event->modifiers());
    trap(d->etiqueta("MouseUp"), [&] {
        if (!d->framePActive())
            return;
        if (d->enBanda) {
            d->enBanda = false;
            Dummy &caja = d->cajaBanda();
            caja.hide();
            soltarBanda(caja.geometry());
            return;
        }
        const QPointer<VistaX> vivo(this);
        soltarClick(button, shift, event->position());
        if (vivo)
            d->armado = true;
    });
}

void VistaX::dragEnterEvent(QDragEnterEvent *event)
{
    // Qt follows an accepted enter with a move to the same point, where the drag-over runs, once.
    const QMimeData *datos = event->mimeData();
    DragRunner::answer(event, datos && datos->hasText() ? event->proposedAction() : Qt::IgnoreAction);
}

void VistaX::dragMoveEvent(QDragMoveEvent *event)
{
    const QMimeData *datos = event->mimeData();
    const QPointF punto = event->position();
    const int shift = shiftState(event->modifiers());
    // What a failing step leaves here is what the event is answered with.
    Qt::DropAction efecto = event->proposedAction();
    trap(d->etiqueta("dragOver"), [&] {
        if (!datos || !datos->hasText()) {
            efecto = Qt::IgnoreAction;
            return;
        }
        const QPointer<VistaX> vivo(this);
        d->activarFrame();
        dragOver(shift, punto, efecto);
        if (!vivo)
            return;
        // Near the visible rectangle's edges the frame scrolls, one step per event.
        if (punto.x() < d->viewLeft + bordeDesplazamiento)
            d->desplazarFrame(Qt::Horizontal, -1);
        else if (punto.x() > d->viewRight - bordeDesplazamiento)
            d->desplazarFrame(Qt::Horizontal, 1);
        if (punto.y() < d->viewTop + bordeDesplazamiento)
            d->desplazarFrame(Qt::Vertical, -1);
        else if (punto.y() > d->viewBottom - bordeDesplazamiento)
            d->desplazarFrame(Qt::Vertical, 1);
    });
    DragRunner::answer(event, efecto);
}

void VistaX::dropEvent(QDropEvent *event)
{
    const QMimeData *datos = event->mimeData();
    const int shift = shiftState(event->modifiers());
    Qt::DropAction efecto = event->proposedAction();
    trap(d->etiqueta("dragDrop"), [&] {
        if (datos && datos->hasText())
            dragDrop(datos->text(), shift, event->position(), efecto);
        else
            efecto = Qt::IgnoreAction;
    });
    DragRunner::answer(event, efecto);
}

// --- The keyboard and screen readers -----------------------------------------

void VistaX::moverSeleccion(int, int) { }

void VistaX::pulsarElemento(int i, int shift)
{
    const ObjetoPtr objeto = elemento(i);
    if (!objeto)
        return;
    if (shift == CtrlMask) {
        d->alternar(objeto);
    } else if (shift == ShiftMask) {
        if (!objeto->getSeleccionado())
            d->seleccionarObjeto(objeto);
    } else {
        d->unselectAll();
        d->seleccionarObjeto(objeto);
    }
    redibujarObjeto(objeto);
    const ObjetoPtr activo = d->frameSetActive(objeto);
    d->raiz().clicked(activo, shift == CtrlMask || d->seleccionados->count() > 1);
}

int VistaXPrivate::focoActual()
{
    const int n = cuantos();
    if (foco >= 0 && foco < n)
        return foco;
    if (seleccionados->count() > 0) {
        const int i = q->indiceDe(seleccionados->Item(1));
        if (i >= 0)
            return i;
    }
    return n > 0 ? 0 : -1;
}

QRect VistaXPrivate::zonaMarca(int i)
{
    // Around the element, clear of the outline that marks the active object.
    return zona(i).toAlignedRect().adjusted(-2, -2, 2, 2);
}

bool VistaXPrivate::marcaVisible() const
{
    return teclado && foco >= 0 && q->hasFocus();
}

void VistaXPrivate::ponerFoco(int i)
{
    if (foco >= 0 && foco != i)
        q->update(zonaMarca(foco));
    foco = i;
    teclado = true;
    if (i < 0)
        return;
    const QRect marca = zonaMarca(i);
    q->update(marca);
    // Scrolled into the frame's visible part, one step at a time, while the frame still scrolls.
    if (viewRight > viewLeft && viewBottom > viewTop) {
        for (int paso = 0; paso < 10000; ++paso) {
            const QPointF antes(viewLeft, viewTop);
            if (marca.right() > viewRight && marca.left() > viewLeft)
                desplazarFrame(Qt::Horizontal, 1);
            else if (marca.left() < viewLeft)
                desplazarFrame(Qt::Horizontal, -1);
            if (marca.bottom() > viewBottom && marca.top() > viewTop)
                desplazarFrame(Qt::Vertical, 1);
            else if (marca.top() < viewTop)
                desplazarFrame(Qt::Vertical, -1);
            if (QPointF(viewLeft, viewTop) == antes)
                break;
        }
    }
    if (q->hasFocus())
        avisarIndice(i, QAccessible::Focus);
}

void VistaXPrivate::avisar(const ObjetoPtr &objeto, QAccessible::Event tipo)
{
    // Finding an object's element costs a lookup: only when someone listens.
    if (QAccessible::isActive())
        avisarIndice(q->indiceDe(objeto), tipo);
}

void VistaXPrivate::avisarIndice(int i, QAccessible::Event tipo)
{
    if (i < 0 || !QAccessible::isActive())
        return;
    auto *interfaz = dynamic_cast<VistaAccesible *>(QAccessible::queryAccessibleInterface(q));
    if (!interfaz)
        return;
    QAccessibleEvent evento(q, tipo);
    evento.setChild(interfaz->hijoDeParte(i));
    QAccessible::updateAccessibility(&evento);
}

void VistaX::keyPressEvent(QKeyEvent *event)
{
    const int shift = shiftState(event->modifiers());
    const int tecla = event->key();
    const int dx = tecla == Qt::Key_Right ? 1 : tecla == Qt::Key_Left ? -1 : 0;
    const int dy = tecla == Qt::Key_Down ? 1 : tecla == Qt::Key_Up ? -1 : 0;
    const bool flecha = dx || dy;
    // Enter, the context-menu key, Ctrl+Tab and the rest are the frame's and the map's.
    if (!(flecha && (shift == 0 || shift == ShiftMask || shift == CtrlMask))
        && !(tecla == Qt::Key_Space && (shift == 0 || shift == CtrlMask))
        && !(tecla == Qt::Key_A && shift == CtrlMask)) {
        QWidget::keyPressEvent(event);
        return;
    }
    event->accept();
    trap(d->etiqueta("KeyDown"), [&] {
        if (tecla == Qt::Key_A) {
            seleccionarTodos();
        } else if (tecla == Qt::Key_Space) {
            const int i = d->focoActual();
            d->ponerFoco(i);
            if (i >= 0)
                pulsarElemento(i, shift);
        } else if (shift == CtrlMask) {
            const QRect antes = d->foco >= 0 ? d->zonaMarca(d->foco) : QRect();
            const QPointer<VistaX> vivo(this); // the host hears of each move and may close the frame
            moverSeleccion(dx, dy);
            if (!vivo)
                return;
            update(antes);
            if (d->foco >= 0)
                d->ponerFoco(d->foco);
        } else {
            // The first arrow shows the mark where it stands; the next ones move it.
            const int desde = d->focoActual();
            const int i = desde == d->foco && d->teclado ? vecino(desde, dx, dy) : desde;
            d->ponerFoco(i);
            if (shift == ShiftMask && i >= 0)
                pulsarElemento(i, ShiftMask);
        }
    });
}

void VistaX::focusInEvent(QFocusEvent *event)
{
    trap(d->etiqueta("GotFocus"), [&] {
        // The pointer shows where it works; a window coming back keeps the mark as it was.
        const Qt::FocusReason razon = event->reason();
        if (razon == Qt::MouseFocusReason || razon == Qt::PopupFocusReason
            || razon == Qt::ActiveWindowFocusReason) {
            if (d->marcaVisible())
                update(d->zonaMarca(d->foco));
            return;
        }
        // From the keyboard the frame wakes and the mark shows.
        d->activarFrame();
        d->ponerFoco(d->focoActual());
    });
}

void VistaX::focusOutEvent(QFocusEvent *)
{
    if (d->teclado && d->foco >= 0)
        update(d->zonaMarca(d->foco));
}

} // namespace tarvonix
