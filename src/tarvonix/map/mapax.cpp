// SPDX-License-Identifier: MIT
#include <tarvonix/map/mapax.h>

#include <tarvonix/core/error.h>
#include <tarvonix/map/framerefx.h>
#include <tarvonix/map/framex.h>
#include <tarvonix/model/icontenedorx.h>
#include <tarvonix/model/referencias.h>
#include <tarvonix/platform/childcontrols.h>
#include <tarvonix/platform/colorconversion.h>
#include <tarvonix/platform/dragrunner.h>
#include <tarvonix/platform/errortrap.h>
#include <tarvonix/views/vistax.h>

#include <QDrag>
#include <QDragEnterEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QPointer>
#include <QTimer>

#include <cmath>

namespace tarvonix {

namespace {

constexpr QLatin1String nombreLeyenda("REF");
constexpr QLatin1String nombreCaja("caja");

// The deferred action runs on the tick after the request.
constexpr int intervaloThread = 10;
// Frames keep this far from the map's right and bottom edges; one that cannot goes to posicionMinima.
constexpr int margenMapa = 2;
constexpr int posicionMinima = 1;
// Where the legend frame first appears.
constexpr int posicionLeyenda = 2;
constexpr QSize tamanoInicial(750, 500);

// The deferred layout actions, in the order of their codes.
enum Accion : qint16 {
    AlinearHorizontal = 0,
    AlinearVertical = 1,
    IgualarDimension = 2,
    DistribuirHorizontal = 3,
    DistribuirVertical = 4,
};

// The key codes the map answers; every other key is ninguna.
constexpr int ninguna = 0;
constexpr int teclaEnter = 13;
constexpr int teclaMenu = 93;

QString nombreDe(const ObjetoPtr &obj)
{
    if (!obj)
        throw Error(Error::ObjectNotSet);
    return obj->getTipo() + obj->getCodigo();
}

// The map's child controls are frames, the legend frame and the move outline.
// A control asked for a member it does not have fails as a call by name would,
// so the walks over the children stop at the same control with the same text.
QWidget *comprobado(QWidget *control)
{
    if (!control)
        throw Error(Error::ObjectNotSet);
    return control;
}

FrameX *frameDe(QWidget *control)
{
    auto *frame = qobject_cast<FrameX *>(comprobado(control));
    if (!frame)
        throw Error(Error::MemberNotSupported);
    return frame;
}

FrameRefX *leyendaDe(QWidget *control)
{
    auto *leyenda = qobject_cast<FrameRefX *>(comprobado(control));
    if (!leyenda)
        throw Error(Error::MemberNotSupported);
    return leyenda;
}

// What both frame controls answer while they are fitted and moved.
void ponerVistaMaxima(QWidget *control, double x, double y)
{
    if (auto *frame = qobject_cast<FrameX *>(comprobado(control)))
        frame->setMaxViewPort(x, y);
    else
        leyendaDe(control)->setMaxViewPort(x, y);
}

QPointF agarreDe(QWidget *control)
{
    if (auto *frame = qobject_cast<FrameX *>(comprobado(control)))
        return QPointF(frame->getDragX(), frame->getDragY());
    const FrameRefX *leyenda = leyendaDe(control);
    return QPointF(leyenda->getDragX(), leyenda->getDragY());
}

void activar(QWidget *control)
{
    if (auto *frame = qobject_cast<FrameX *>(comprobado(control)))
        frame->activate();
    else
        leyendaDe(control)->activate();
}

// The point of the title bar that was grabbed stays under the pointer.
QPointF esquinaEn(QWidget *frame, QPointF puntero)
{
    return puntero - agarreDe(frame);
}

int codigoDeTecla(const QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return teclaEnter;
    case Qt::Key_Menu:
        return teclaMenu;
    default:
        return ninguna;
    }
}

} // namespace

struct MapaX::Private
{
    // The map as the frames and containers see it. It forwards to the map's own
    // operations, so that the map's signal "moved" and the callback of the same
    // name do not collide.
    class Callbacks : public IMapaX
    {
    public:
        explicit Callbacks(Private *owner)
            : d(owner)
        { }
        void clicked(const ObjetoPtr &obj, bool multi) override { d->q->IMapaX_clicked(obj, multi); }
        void rightClicked(const ObjetoPtr &obj, bool multi) override
        {
            d->q->IMapaX_rightClicked(obj, multi);
        }
        void droped(const QString &origen, const ObjetoPtr &destino, qint32 shift) override
        {
            d->q->IMapaX_Droped(origen, destino, shift);
        }
        void moved(const ObjetoPtr &obj) override { d->q->IMapaX_Moved(obj); }
        void setActive(const ObjetoPtr &obj, IContenedorX *frame, qint16 op) override
        {
            d->IMapaX_setActive(obj, frame, op);
        }
        void ensureVisible(QWidget *) override { }
        void remove(const ObjetoPtr &frame) override { d->q->remove(frame); }
        void escalado(const ObjetoPtr &frame, float factor) override { d->q->IMapaX_escalado(frame, factor); }

    private:
        Private *const d;
    };

    explicit Private(MapaX *mapa)
        : q(mapa)
        , callbacks(this)
        , controles(mapa)
    { }

    void IMapaX_setActive(const ObjetoPtr &obj, IContenedorX *frame, qint16 op);
    //! Activates the next (\a sentido 1) or previous (-1) frame shown, in the order they were added, and
    //! gives it the focus.
    void activarSiguiente(int sentido);
    FrameX *buscarFrame(const ObjetoPtr &obj) const;
    void threadAction(qint16 accion);
    void ejecutarAccion();
    void ajustarFrame(QWidget *frame);
    void ajustarTodo();
    void dibujarCaja(QWidget *frame);
    void moverCaja(double x, double y);
    void borrarCaja();
    // The steps of a frame move, as the drag events drive them.
    void iniciarArrastre();
    Qt::DropAction moveOver(const QMimeData *datos, QPointF position);
    Qt::DropAction dropMove(const QMimeData *datos, QPointF position);
    void completeDrag();
    void ponerCajaEnFrame();
    QWidget *frameArrastrado(const QMimeData *datos) const;

    MapaX *const q;
    Callbacks callbacks;
    ChildControls controles;
    QTimer *thread = nullptr;
    ObjetoPtr objetoActivo;
    QPointer<FrameX> frameActivo;
    bool verReferencias = false;
    bool moviendo = false;
    QString frameEnMovimiento;
    qint16 accionPendiente = 0;
};

MapaX::MapaX(QWidget *parent)
    : QWidget(parent)
    , d(std::make_unique<Private>(this))
{
    d->thread = new QTimer(this);
    d->thread->setObjectName(QStringLiteral("thread"));
    d->thread->setInterval(intervaloThread);
    connect(d->thread, &QTimer::timeout, this, [this] { d->ejecutarAccion(); });
    setAcceptDrops(true);
    setFocusPolicy(Qt::StrongFocus);
    setAutoFillBackground(true);
    resize(tamanoInicial);
}

MapaX::~MapaX()
{
    d->objetoActivo = nullptr;
    d->frameActivo = nullptr;
    // The frames go first, while the root they hold still exists.
    d->thread->stop();
    qDeleteAll(findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly));
}

IMapaX *MapaX::callbacks()
{
    return &d->callbacks;
}

QStringList MapaX::controlNames() const
{
    return QStringList { d->thread->objectName() } + d->controles.names();
}

QWidget *MapaX::control(const QString &name) const
{
    return d->controles.find(name);
}

FrameX *MapaX::Private::buscarFrame(const ObjetoPtr &obj) const
{
    return frameDe(controles.item(nombreDe(obj)));
}

void MapaX::add(const ObjetoPtr &obj)
{
    trap(QStringLiteral("MapaX.add->"), [&] {
        // The frame is named by the object's type and code; it gets its root, then its object.
        FrameX *frame = frameDe(d->controles.add(QStringLiteral("Tarvonix.FrameX"), nombreDe(obj)));
        frame->setRoot(&d->callbacks);
        frame->setObjeto(obj);
        d->ajustarFrame(frame);
    });
}

void MapaX::remove(const ObjetoPtr &obj)
{
    trap(QStringLiteral("MapaX.remove->"), [&] {
        QString nombre;
        if (!obj) {
            // No object: the legend, which is not wanted any more.
            nombre = nombreLeyenda;
            d->verReferencias = false;
        } else {
            // The frame of obj; whichever frame was active, none is afterwards.
            nombre = nombreDe(obj);
            FrameX *frame = frameDe(d->controles.item(nombre));
            frame->setActivo(frame->getObjeto(), true);
            d->frameActivo = nullptr;
            d->objetoActivo = nullptr;
            references();
        }
        d->controles.remove(nombre);
    });
}

void MapaX::removeAll()
{
    trap(QStringLiteral("MapaX.removeAll->"), [&] {
        // No active frame, no active object.
        d->IMapaX_setActive(nullptr, nullptr, IMapaX::FrameActivo);
        d->frameActivo = nullptr;
        d->objetoActivo = nullptr;
        // Over a copy of the names, so that removing does not skip any.
        const QStringList nombres = d->controles.names();
        for (const QString &nombre : nombres)
            d->controles.remove(nombre);
    });
}

ObjetoPtr MapaX::getActive() const
{
    return d->objetoActivo;
}

ObjetoPtr MapaX::getFrame() const
{
    return d->frameActivo ? d->frameActivo->getObjeto() : nullptr;
}

std::shared_ptr<Objetos> MapaX::getSelected()
{
    std::shared_ptr<Objetos> seleccionados;
    trap(QStringLiteral("MapaX.getSelected->"), [&] {
        if (d->frameActivo)
            seleccionados = d->buscarFrame(d->frameActivo->getObjeto())->getSeleccionados();
    });
    return seleccionados;
}

void MapaX::setObjeto(const ObjetoPtr &nuevo)
{
    trap(QStringLiteral("MapaX.setObjeto->"), [&] {
        // No active frame: a new one.
        if (!d->frameActivo) {
            add(nuevo);
            show(nuevo);
            return;
        }
        if (!nuevo)
            throw Error(Error::ObjectNotSet);
        // The codes compared as they are, letter case included.
        const ObjetoPtr actual = d->frameActivo->getObjeto();
        if (!actual)
            throw Error(Error::ObjectNotSet);
        if (actual->getCodigo() != nuevo->getCodigo()) {
            remove(actual);
            add(nuevo);
            show(nuevo);
        } else {
            // The same code under another type names a frame that does not exist: a failure.
            d->buscarFrame(nuevo)->setObjeto(nuevo);
            references();
        }
    });
}

void MapaX::Refresh(const ObjetoPtr &obj)
{
    trap(QStringLiteral("MapaX.Refresh->"), [&] {
        if (!obj)
            update();
        else
            d->buscarFrame(obj)->refrescar();
    });
}

void MapaX::show(const ObjetoPtr &obj)
{
    trap(QStringLiteral("MapaX.show->"), [&] {
        QWidget *control = d->controles.item(nombreDe(obj));
        control->setVisible(true);
        // The frame answers by reporting itself active, which makes it the active frame.
        FrameX *frame = frameDe(control);
        frame->setActivo(frame->getObjeto(), true);
    });
}

void MapaX::hide(const ObjetoPtr &obj)
{
    trap(QStringLiteral("MapaX.hide->"), [&] { d->controles.item(nombreDe(obj))->setVisible(false); });
}

bool MapaX::isMember(const ObjetoPtr &esta)
{
    bool encontrado = false;
    trapSilently([&] { encontrado = d->controles.item(nombreDe(esta)) != nullptr; });
    return encontrado;
}

void MapaX::ShowReferences()
{
    d->verReferencias = true;
    references();
}

void MapaX::setEscala(const ObjetoPtr &obj, float factor)
{
    trap(QStringLiteral("MapaX.setEscala->"), [&] { d->buscarFrame(obj)->setEscala(factor); });
}

ObjetoPtr MapaX::revelar(const QString &codigo)
{
    ObjetoPtr encontrado;
    trap(QStringLiteral("MapaX.revelar->"), [&] {
        // Looked up everywhere first: a code that is nowhere changes nothing.
        FrameX *donde = nullptr;
        for (const QString &nombre : d->controles.names()) {
            auto *frame = qobject_cast<FrameX *>(d->controles.item(nombre));
            const ObjetoPtr raiz = frame ? frame->getObjeto() : nullptr;
            if (!raiz)
                continue;
            if (raiz->getCodigo().compare(codigo, Qt::CaseInsensitive) == 0)
                encontrado = raiz;
            else if (frame->vista())
                encontrado = frame->vista()->localizar(codigo);
            if (encontrado) {
                donde = frame;
                break;
            }
        }
        if (!donde)
            return;
        show(donde->getObjeto());
        if (encontrado != donde->getObjeto())
            donde->revelar(encontrado);
    });
    return encontrado;
}

void MapaX::alinearHorizontal()
{
    d->threadAction(AlinearHorizontal);
}

void MapaX::alinearVertical()
{
    d->threadAction(AlinearVertical);
}

void MapaX::igualarDimension()
{
    d->threadAction(IgualarDimension);
}

void MapaX::distribuirHorizontal()
{
    d->threadAction(DistribuirHorizontal);
}

void MapaX::distribuirVertical()
{
    d->threadAction(DistribuirVertical);
}

void MapaX::Private::threadAction(qint16 accion)
{
    trap(QStringLiteral("MapaX.threadAction->"), [&] {
        accionPendiente = accion;
        thread->start();
    });
}

void MapaX::Private::ejecutarAccion()
{
    // Disabled first: an action that queues another one gets one more tick, not recursion.
    thread->stop();
    trap(QStringLiteral("MapaX.thread.Timer->"), [&] {
        if (accionPendiente < AlinearHorizontal || accionPendiente > DistribuirVertical)
            return;
        if (!frameActivo)
            throw Error(Error::ObjectNotSet);
        FrameX *frame = frameActivo;
        switch (accionPendiente) {
        case AlinearHorizontal:
            frame->alinearHorizontal(objetoActivo);
            break;
        case AlinearVertical:
            frame->alinearVertical(objetoActivo);
            break;
        case IgualarDimension:
            frame->igualarDimension(objetoActivo);
            break;
        case DistribuirHorizontal:
            frame->distribuirHorizontal();
            break;
        case DistribuirVertical:
            frame->distribuirVertical();
            break;
        }
    });
}

void MapaX::seleccionar(const ObjetoPtr &obj, const QString &codigo)
{
    trap(QStringLiteral("MapaX.seleccionar->"), [&] {
        FrameX *frame = nullptr;
        trapSilently([&] { frame = d->buscarFrame(obj); });
        if (frame)
            frame->seleccionar(codigo);
    });
}

void MapaX::seleccionarTodos(const ObjetoPtr &obj)
{
    trap(QStringLiteral("MapaX.seleccionarTodos->"), [&] {
        FrameX *frame = nullptr;
        trapSilently([&] { frame = d->buscarFrame(obj); });
        if (frame)
            frame->seleccionarTodos();
    });
}

void MapaX::deseleccionarTodos(const ObjetoPtr &obj)
{
    trap(QStringLiteral("MapaX.deseleccionarTodos->"), [&] {
        FrameX *frame = nullptr;
        trapSilently([&] { frame = d->buscarFrame(obj); });
        if (frame)
            frame->deseleccionarTodos();
    });
}

void MapaX::setBloqueo(bool valor)
{
    // The walk stops at the first control without a contract (the legend, a move
    // outline): the frames after it keep their lock as it was.
    trap(QStringLiteral("MapaX.setBloqueo->"), [&] {
        for (const QString &nombre : d->controles.names())
            frameDe(d->controles.item(nombre))->setBloqueo(valor);
    });
}

bool MapaX::selected() const
{
    return false;
}

void MapaX::setSelected(bool)
{
    Refresh(nullptr);
}

QString MapaX::FontName() const
{
    return font().family();
}

void MapaX::setFontName(const QString &name)
{
    QFont f = font();
    f.setFamily(name);
    setFont(f);
}

qint16 MapaX::FontSize() const
{
    return qint16(std::lround(font().pointSizeF()));
}

void MapaX::setFontSize(qint16 size)
{
    QFont f = font();
    if (size > 0)
        f.setPointSize(size);
    setFont(f);
}

qint32 MapaX::BackColor() const
{
    return fromQColor(palette().color(backgroundRole()));
}

void MapaX::setBackColor(qint32 colour)
{
    QPalette p = palette();
    p.setColor(backgroundRole(), toQColor(colour, p));
    setPalette(p);
}

void MapaX::Private::ajustarFrame(QWidget *frame)
{
    const int W = q->width();
    const int H = q->height();
    // The largest size the frame may take; a frame larger than that relies on its scroll bars.
    ponerVistaMaxima(frame, double(W - margenMapa), double(H - margenMapa));
    // Back inside the area, or at the first position when it is larger than the area.
    if (frame->x() + frame->width() > W - margenMapa) {
        const int nueva = W - frame->width() - margenMapa;
        frame->move(nueva <= 0 ? posicionMinima : nueva, frame->y());
    }
    if (frame->y() + frame->height() > H - margenMapa) {
        const int nueva = H - frame->height() - margenMapa;
        frame->move(frame->x(), nueva <= 0 ? posicionMinima : nueva);
    }
}

void MapaX::Private::ajustarTodo()
{
    // The legend frame too; a move outline has no "setMaxViewPort" and stops the walk.
    for (const QString &nombre : controles.names())
        ajustarFrame(controles.item(nombre));
}

void MapaX::resized()
{
    d->ajustarTodo();
}

void MapaX::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    trap(QStringLiteral("MapaX.UserControl_Resize->"), [&] { d->ajustarTodo(); });
}

void MapaX::keyPressEvent(QKeyEvent *event)
{
    // Ctrl+Tab and Ctrl+Shift+Tab go round the frames; the key reaches here from the view that has the focus.
    const Qt::KeyboardModifiers modificadores = event->modifiers() & ~Qt::KeypadModifier;
    if ((event->key() == Qt::Key_Tab || event->key() == Qt::Key_Backtab)
        && (modificadores & ~Qt::ShiftModifier) == Qt::ControlModifier) {
        event->accept();
        const bool atras = event->key() == Qt::Key_Backtab || modificadores & Qt::ShiftModifier;
        trapSilently([&] { d->activarSiguiente(atras ? -1 : 1); });
        return;
    }
    const int tecla = codigoDeTecla(event);
    if (tecla == ninguna) {
        QWidget::keyPressEvent(event);
        return;
    }
    event->accept();
    trapSilently([&] {
        if (tecla == teclaEnter) {
            if (d->objetoActivo)
                Q_EMIT Enter(d->objetoActivo);
            else if (d->frameActivo)
                Q_EMIT Enter(d->frameActivo->getObjeto());
        } else if (d->objetoActivo) {
            if (!d->frameActivo)
                throw Error(Error::ObjectNotSet);
            const qint32 cuantos = d->frameActivo->getSeleccionados()->count();
            Q_EMIT RightClick(d->objetoActivo, cuantos > 1);
        } else if (d->frameActivo) {
            // A frame is not a map object: the conversion fails and nothing is raised.
            if (!dynamic_cast<IObjeto *>(d->frameActivo.data()))
                throw Error(Error::TypeMismatch);
        }
    });
}

void MapaX::Private::activarSiguiente(int sentido)
{
    QList<FrameX *> frames;
    for (const QString &nombre : controles.names()) {
        auto *frame = qobject_cast<FrameX *>(controles.item(nombre));
        if (frame && frame->isVisible() && frame->isEnabled())
            frames.append(frame);
    }
    if (frames.isEmpty())
        return;
    const qsizetype actual = frames.indexOf(frameActivo.data());
    const qsizetype n = frames.size();
    FrameX *siguiente = frames[actual < 0 ? (sentido > 0 ? 0 : n - 1) : (actual + sentido + n) % n];
    siguiente->activate();
    siguiente->setFocus(sentido > 0 ? Qt::TabFocusReason : Qt::BacktabFocusReason);
}

void MapaX::focusInEvent(QFocusEvent *event)
{
    // The keyboard works in the active frame: the focus goes on to it, unless it is leaving backwards.
    QWidget::focusInEvent(event);
    if (d->frameActivo && event->reason() != Qt::BacktabFocusReason)
        d->frameActivo->setFocus(event->reason());
}

void MapaX::IMapaX_clicked(const ObjetoPtr &obj, bool multi)
{
    Q_EMIT Click(obj, multi);
}

void MapaX::IMapaX_rightClicked(const ObjetoPtr &obj, bool multi)
{
    Q_EMIT RightClick(obj, multi);
}

void MapaX::IMapaX_Droped(const QString &origen, const ObjetoPtr &destino, qint32 shift)
{
    // A source frame that no longer exists raises nothing.
    std::shared_ptr<Objetos> seleccion;
    if (trapSilently([&] { seleccion = frameDe(d->controles.item(origen))->getSeleccionados(); }))
        Q_EMIT Drop(seleccion, destino, shift);
}

void MapaX::IMapaX_Moved(const ObjetoPtr &obj)
{
    Q_EMIT moved(obj);
}

void MapaX::IMapaX_escalado(const ObjetoPtr &obj, float factor)
{
    Q_EMIT escalado(obj, factor);
}

void MapaX::Private::IMapaX_setActive(const ObjetoPtr &obj, IContenedorX *frame, qint16 op)
{
    trap(QStringLiteral("MapaX.IMapaX_setActive->"), [&] {
        // A frame became active: the one before is told, the legend follows. The active
        // frame activated again (a host showing it after a refresh) changes nothing:
        // deactivating "the one before" would leave the map's active frame inactive.
        if (op == IMapaX::FrameActivo) {
            FrameX *nuevo = dynamic_cast<FrameX *>(frame);
            if (nuevo && nuevo == frameActivo)
                return;
            if (frameActivo)
                frameActivo->setActivo(nullptr, false);
            frameActivo = nuevo;
            q->references();
        }
        objetoActivo = obj;
    });
}

void MapaX::references()
{
    trap(QStringLiteral("MapaX.references->"), [&] {
        // Whether there is anything to show.
        bool ocultar = !d->verReferencias || !d->frameActivo;
        std::shared_ptr<Referencias> referencias;
        if (!ocultar) {
            trapSilently([&] {
                const ObjetoPtr objeto = d->frameActivo->getObjeto();
                if (objeto)
                    referencias = objeto->getReferencias();
            });
            ocultar = !referencias;
        }
        // Keys to show: the legend frame, made on first need. An empty list changes nothing.
        if (!ocultar && referencias->count() > 0) {
            QWidget *control = d->controles.find(nombreLeyenda);
            if (!control) {
                control = d->controles.add(QStringLiteral("Tarvonix.FrameRefX"), nombreLeyenda);
                FrameRefX *nueva = leyendaDe(control);
                nueva->setRoot(&d->callbacks);
                nueva->move(posicionLeyenda, posicionLeyenda);
                nueva->setActive(true);
            }
            // A frame of a root object may be named "REF" too: it has no keys to show.
            leyendaDe(control)->setReferencias(referencias);
            d->callbacks.ensureVisible(control);
            control->setVisible(true);
        }
        if (ocultar) {
            if (QWidget *leyenda = d->controles.find(nombreLeyenda))
                leyenda->setVisible(false);
        }
    });
}

void MapaX::startMove(QWidget *frame)
{
    trap(QStringLiteral("MapaX.startMove->"), [&] {
        if (!frame)
            throw Error(Error::ObjectNotSet);
        // Nothing else reacts while the outline moves.
        for (const QString &nombre : d->controles.names())
            d->controles.item(nombre)->setEnabled(false);
        // The frame gives way to its outline, which the drag carries by the frame's name.
        frame->setVisible(false);
        d->dibujarCaja(frame);
        d->moviendo = true;
        d->frameEnMovimiento = frame->objectName();
        d->iniciarArrastre();
    });
}

void MapaX::Private::iniciarArrastre()
{
    trap(QStringLiteral("MapaX.UserControl_OLEStartDrag->"), [&] {
        auto *drag = new QDrag(q);
        auto *datos = new QMimeData;
        datos->setText(frameEnMovimiento);
        drag->setMimeData(datos);
        // A host may delete the map from a handler while the modal drag runs.
        const QPointer<MapaX> mapa(q);
        DragRunner::run(drag, Qt::MoveAction, [mapa](Qt::DropAction) {
            if (mapa)
                mapa->d->completeDrag();
        });
    });
}

Qt::DropAction MapaX::Private::moveOver(const QMimeData *datos, QPointF position)
{
    Qt::DropAction efecto = Qt::IgnoreAction;
    trapSilently([&] {
        QWidget *frame = frameArrastrado(datos);
        if (!frame)
            return;
        const QPointF esquina = esquinaEn(frame, position);
        moverCaja(esquina.x(), esquina.y());
        efecto = Qt::MoveAction;
    });
    if (efecto != Qt::MoveAction && moviendo)
        ponerCajaEnFrame();
    return efecto;
}

QWidget *MapaX::Private::frameArrastrado(const QMimeData *datos) const
{
    // Only a move of one of the map's own frames carries anything here.
    if (!datos || !datos->hasText() || !moviendo)
        return nullptr;
    return controles.item(datos->text());
}

void MapaX::Private::ponerCajaEnFrame()
{
    // Feedback for a place where the frame cannot go: the outline goes back onto the frame.
    trap(QStringLiteral("MapaX.UserControl_OLEGiveFeedback->"), [&] {
        const QWidget *frame = controles.item(frameEnMovimiento);
        moverCaja(frame->x(), frame->y());
    });
}

Qt::DropAction MapaX::Private::dropMove(const QMimeData *datos, QPointF position)
{
    Qt::DropAction efecto = Qt::IgnoreAction;
    trapSilently([&] {
        QWidget *frame = frameArrastrado(datos);
        if (!frame)
            return;
        frame->move(esquinaEn(frame, position).toPoint());
        efecto = Qt::MoveAction;
    });
    return efecto;
}

void MapaX::Private::completeDrag()
{
    trap(QStringLiteral("MapaX.UserControl_OLECompleteDrag->"), [&] {
        moviendo = false;
        q->unsetCursor();
        q->completeMove(controles.find(frameEnMovimiento));
    });
}

void MapaX::completeMove(QWidget *frame)
{
    trap(QStringLiteral("MapaX.completeMove->"), [&] {
        // The frame may have gone while it moved: the outline and the lock go all the same.
        if (frame)
            activar(frame);
        d->borrarCaja();
        if (frame)
            frame->setVisible(true);
        for (const QString &nombre : d->controles.names())
            d->controles.item(nombre)->setEnabled(true);
        d->moviendo = false;
        if (!frame)
            throw Error(Error::ControlNotFound);
    });
}

void MapaX::Private::dibujarCaja(QWidget *frame)
{
    trap(QStringLiteral("MapaX.dibujarCaja->"), [&] {
        QWidget *caja = controles.add(QStringLiteral("Tarvonix.Dummy"), nombreCaja);
        caja->setGeometry(comprobado(frame)->geometry());
        caja->raise();
        caja->show();
    });
}

void MapaX::Private::moverCaja(double x, double y)
{
    trap(QStringLiteral("MapaX.moverCaja->"),
         [&] { controles.item(nombreCaja)->move(QPointF(x, y).toPoint()); });
}

void MapaX::Private::borrarCaja()
{
    trap(QStringLiteral("MapaX.borrarCaja->"), [&] { controles.remove(nombreCaja); });
}

void MapaX::dragEnterEvent(QDragEnterEvent *event)
{
    dragMoveEvent(event);
}

void MapaX::dragMoveEvent(QDragMoveEvent *event)
{
    DragRunner::answer(event, d->moveOver(event->mimeData(), event->position()));
}

void MapaX::dragLeaveEvent(QDragLeaveEvent *event)
{
    if (d->moviendo)
        d->ponerCajaEnFrame();
    QWidget::dragLeaveEvent(event);
}

void MapaX::dropEvent(QDropEvent *event)
{
    DragRunner::answer(event, d->dropMove(event->mimeData(), event->position()));
}

} // namespace tarvonix
