// SPDX-License-Identifier: MIT
#include <tarvonix/map/framex.h>

#include <tarvonix/core/error.h>
#include <tarvonix/core/int16.h>
#include <tarvonix/map/barratitulo_p.h>
#include <tarvonix/model/objetos.h>
#include <tarvonix/platform/childcontrols.h>
#include <tarvonix/platform/errortrap.h>
#include <tarvonix/views/imapax.h>
#include <tarvonix/views/vistax.h>
#include <tarvonix/widgets/dummy.h>
#include <tarvonix/widgets/etiquetas.h>

#include <QEvent>
#include <QNativeGestureEvent>
#include <QScrollBar>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace tarvonix {

namespace {

constexpr QLatin1String nombreConten("conten");

// Design sizes, in pixels: the buttons and bars are 18 and 17 wide.
constexpr int anchoBoton = 18;
constexpr int anchoBarra = 17;
constexpr int anchoMinimo = 300;
constexpr int altoMinimo = 100;
constexpr int pasoScroll = 10;
// The design layout, which holds until the frame first fits a contained control.
constexpr QSize tamanoInicial(273, 223);
constexpr QRect rectVert(248, BarraTitulo::altoTitulo, anchoBarra, 177);
constexpr QRect rectHoriz(0, 200, 249, anchoBarra);
// Around the contained control when the frame fits it: one pixel on each side
// of the control and the border on both sides.
constexpr int margenAjuste = 1 + 1 + 2 * BarraTitulo::borde;
// The largest size the frame takes until the map says otherwise.
constexpr double vistaMaximaX = 750;
constexpr double vistaMaximaY = 500;
// The scales a wheel or a pinch can reach, and the change one wheel notch makes.
constexpr float escalaMinima = 0.25f;
constexpr float escalaMaxima = 8.0f;
constexpr double pasoZoom = 1.2;
// A wheel notch scrolls three steps; a revealed object keeps this much room to the frame's edges.
constexpr int pasosPorMuesca = 3;
constexpr int holguraRevelar = 10;
// The corner between the bars: an opaque, borderless box in the button face colour.
constexpr qint32 caraDeBoton = qint32(0x8000000F);

QString codigoDe(const ObjetoPtr &obj)
{
    if (!obj)
        throw Error(Error::ObjectNotSet);
    return obj->getCodigo();
}

} // namespace

struct FrameX::Private
{
    explicit Private(FrameX *frame)
        : q(frame)
        , barra(frame, anchoBoton)
        , controles(frame)
    { }

    // The contract of "conten" and the map, failing when there is none.
    IContenedorX &contrato() const;
    IMapaX &mapa() const;
    void ensureVisible(QWidget *micontrol);
    void distribuir();
    void minimizar();
    void alCambiarHoriz(int valor);
    void alCambiarVert(int valor);
    void iniciarMovimiento(float x, float y);
    void clicDerecho();
    bool rueda(const QWheelEvent &event);
    void zoom(float nueva, QPointF punto);
    void desplazarHasta(const QRect &area);

    FrameX *const q;
    BarraTitulo barra;
    ChildControls controles;
    QScrollBar *vert = nullptr;
    QScrollBar *horiz = nullptr;
    Dummy *esquina = nullptr;
    QPointer<QWidget> conten;
    // "conten" as the container and as the view, taken once when it is made;
    // they are valid while conten is.
    IContenedorX *contenedor = nullptr;
    VistaX *vista = nullptr;

    bool pActive = false;
    ObjetoPtr objeto;
    ObjetoPtr objetoActivo;
    IMapaX *root = nullptr;
    float escala = 1.0f;
    double maxX = vistaMaximaX;
    double maxY = vistaMaximaY;
    bool horizEnUso = false;
    bool vertEnUso = false;
};

FrameX::FrameX(QWidget *parent)
    : QWidget(parent)
    , d(std::make_unique<Private>(this))
{
    setAutoFillBackground(true);
    resize(tamanoInicial);

    d->vert = new QScrollBar(Qt::Vertical, this);
    d->vert->setObjectName(QStringLiteral("vert"));
    BarraTitulo::colocar(d->vert, rectVert.x(), rectVert.y());
    d->vert->resize(rectVert.size());
    d->horiz = new QScrollBar(Qt::Horizontal, this);
    d->horiz->setObjectName(QStringLiteral("horiz"));
    BarraTitulo::colocar(d->horiz, rectHoriz.x(), rectHoriz.y());
    d->horiz->resize(rectHoriz.size());
    d->esquina = new Dummy(this);
    d->esquina->setObjectName(QStringLiteral("esquina"));
    d->esquina->setBackStyle(BackOpaque);
    d->esquina->setBackColor(caraDeBoton);
    d->esquina->setBorderStyle(BorderNone);
    d->esquina->resize(anchoBarra, anchoBarra);
    for (QScrollBar *barra : { d->vert, d->horiz }) {
        barra->setSingleStep(pasoScroll);
        barra->setMaximum(0);
        barra->hide();
        barra->setEnabled(false); // the frame starts inactive
        barra->installEventFilter(this);
    }
    d->esquina->hide();

    connect(d->horiz, &QScrollBar::valueChanged, this, [this](int valor) { d->alCambiarHoriz(valor); });
    connect(d->vert, &QScrollBar::valueChanged, this, [this](int valor) { d->alCambiarVert(valor); });

    etiquetas *titulo = d->barra.titulo();
    connect(titulo, &etiquetas::Click, this, [this] {
        trap(QStringLiteral("FrameX.titulo.Click->"), [this] {
            if (!d->pActive)
                setActive(d->objetoActivo);
        });
    });
    connect(titulo, &etiquetas::OLEStartDrag, this,
            [this](float x, float y, int) { d->iniciarMovimiento(x, y); });
    for (etiquetas *etiqueta : { titulo, d->barra.mini(), d->barra.cerrar() })
        connect(etiqueta, &etiquetas::RightClick, this, [this] { d->clicDerecho(); });
    connect(d->barra.cerrar(), &etiquetas::Click, this, [this] {
        trap(QStringLiteral("FrameX.cerrar.Click->"), [this] { d->mapa().remove(d->objeto); });
    });
    connect(d->barra.mini(), &etiquetas::Click, this, [this] { d->minimizar(); });

    d->distribuir();
    d->barra.alFrente();
}

FrameX::~FrameX()
{
    d->root = nullptr;
}

bool FrameX::pActive() const
{
    return d->pActive;
}

void FrameX::setPActive(bool active)
{
    d->pActive = active;
}

IContenedorX *FrameX::cast()
{
    return this;
}

IContenedorX &FrameX::Private::contrato() const
{
    if (!conten)
        throw Error(Error::ObjectNotSet);
    // A contained control without the contract fails as a call of its "cast" would.
    if (!contenedor)
        throw Error(Error::MemberNotSupported);
    return *contenedor;
}

IMapaX &FrameX::Private::mapa() const
{
    if (!root)
        throw Error(Error::ObjectNotSet);
    return *root;
}

void FrameX::setMaxViewPort(double x, double y)
{
    trap(QStringLiteral("FrameX.setMaxViewPort->"), [&] {
        d->maxX = x;
        d->maxY = y;
        if (d->conten)
            d->ensureVisible(d->conten);
    });
}

float FrameX::getDragX() const
{
    return d->barra.dragX();
}

float FrameX::getDragY() const
{
    return d->barra.dragY();
}

ObjetoPtr FrameX::setActive(const ObjetoPtr &obj)
{
    trap(QStringLiteral("FrameX.setActive->"), [&] {
        if (d->pActive) {
            d->mapa().setActive(obj, this, IMapaX::ObjetoActivo);
            if (codigoDe(obj) != codigoDe(d->objetoActivo)) {
                d->contrato().setActivo(d->objetoActivo, false);
                d->objetoActivo = obj;
            }
            d->contrato().setActivo(obj, true);
        } else {
            d->objetoActivo = obj;
            setActivo(nullptr, true);
        }
    });
    return d->objetoActivo;
}

void FrameX::Resize(QWidget *micontrol)
{
    trap(QStringLiteral("FrameX.Resize->"), [&] { d->ensureVisible(micontrol); });
}

void FrameX::Icontenedorx_refrescar()
{
    refrescar();
}

void FrameX::icontenedorx_setBloqueo(bool valor)
{
    setBloqueo(valor);
}

void FrameX::activate()
{
    trap(QStringLiteral("FrameX.activate->"), [&] {
        if (!d->pActive)
            setActivo(nullptr, true);
    });
}

bool FrameX::isActive() const
{
    return d->pActive;
}

void FrameX::setViewPort(QWidget *micontrol)
{
    trap(QStringLiteral("FrameX.setViewPort->"), [&] {
        if (!micontrol)
            throw Error(Error::ObjectNotSet);
        // The part of the control between the frame's left edge and the vertical bar,
        // and between the title and the horizontal bar, in the control's own units.
        const double x0 = -BarraTitulo::izquierda(micontrol);
        const double y0 = -BarraTitulo::arriba(micontrol);
        const double x1 = BarraTitulo::izquierda(d->vert) + x0;
        const double y1 = BarraTitulo::arriba(d->horiz) + y0;
        VistaX *vista = micontrol == d->conten ? d->vista : qobject_cast<VistaX *>(micontrol);
        if (!vista)
            throw Error(Error::MemberNotSupported);
        vista->setViewPort(float(x0), float(y0), float(x1), float(y1));
    });
}

void FrameX::hScroll(qint16 value)
{
    if (d->horizEnUso)
        d->horiz->setValue(d->horiz->value() + value * d->horiz->singleStep());
}

void FrameX::vScroll(qint16 value)
{
    if (d->vertEnUso)
        d->vert->setValue(d->vert->value() + value * d->vert->singleStep());
}

VistaX *FrameX::vista() const
{
    return d->conten ? d->vista : nullptr;
}

float FrameX::escala() const
{
    return d->escala;
}

void FrameX::revelar(const ObjetoPtr &obj)
{
    trap(QStringLiteral("FrameX.revelar->"), [&] {
        if (!vista())
            throw Error(Error::ObjectNotSet);
        // A minimised frame opens to show what is looked for.
        if (d->barra.minimizado())
            d->minimizar();
        d->vista->revelar(obj);
        d->desplazarHasta(d->vista->areaDe(obj));
    });
}

void FrameX::Private::desplazarHasta(const QRect &area)
{
    // The visible part of the view, in its own pixels, as setViewPort() tells it.
    const int x0 = -BarraTitulo::izquierda(conten);
    const int y0 = -BarraTitulo::arriba(conten);
    const int x1 = BarraTitulo::izquierda(vert) + x0;
    const int y1 = BarraTitulo::arriba(horiz) + y0;
    const auto mover = [](QScrollBar *bar, bool enUso, int desde, int hasta, int inicio, int fin) {
        if (!enUso || (inicio >= desde && fin <= hasta))
            return;
        // Larger than what shows: its start goes to the start of the view.
        const int delta = inicio < desde || fin - inicio > hasta - desde ? inicio - desde - holguraRevelar
                                                                         : fin - hasta + holguraRevelar;
        bar->setValue(bar->value() + delta);
    };
    mover(horiz, horizEnUso, x0, x1, area.left(), area.right() + 1);
    mover(vert, vertEnUso, y0, y1, area.top(), area.bottom() + 1);
}

bool FrameX::Private::rueda(const QWheelEvent &event)
{
    const QPoint angulo = event.angleDelta();
    if (event.modifiers() & Qt::ControlModifier) {
        if (angulo.y() == 0)
            return false;
        zoom(float(escala * std::pow(pasoZoom, angulo.y() / 120.0)), event.position());
        return true;
    }
    // Shift turns the wheel sideways, as a wheel tilted left or right does. A notch is 120.
    const bool lateral = (event.modifiers() & Qt::ShiftModifier) || angulo.y() == 0;
    QScrollBar *bar = lateral ? horiz : vert;
    if (!(lateral ? horizEnUso : vertEnUso))
        return false;
    const int giro = lateral && angulo.x() != 0 ? angulo.x() : angulo.y();
    bar->setValue(bar->value() - giro * pasosPorMuesca * bar->singleStep() / 120);
    return true;
}

void FrameX::Private::zoom(float nueva, QPointF punto)
{
    trap(QStringLiteral("FrameX.zoom->"), [&] {
        nueva = std::clamp(nueva, escalaMinima, escalaMaxima);
        if (!std::isfinite(nueva) || nueva == escala || !conten)
            return;
        // The point under the pointer, in the view's pixels, moves with the scale; the bars
        // take the view along by as much, from where they stood before the view grew or shrank.
        const QPointF destino = punto * (nueva / escala);
        const int h0 = horiz->value();
        const int v0 = vert->value();
        q->setEscala(nueva);
        horiz->setValue(h0 + qRound(destino.x() - punto.x()));
        vert->setValue(v0 + qRound(destino.y() - punto.y()));
        mapa().escalado(objeto, nueva);
    });
}

void FrameX::setObjeto(const ObjetoPtr &objeto)
{
    trap(QStringLiteral("FrameX.IContenedorX_setObjeto->"), [&] {
        if (!objeto)
            throw Error(Error::ObjectNotSet);
        // Whatever was shown before goes.
        if (d->objeto) {
            d->objetoActivo = nullptr;
            d->objeto = nullptr;
            d->conten = nullptr;
            d->contenedor = nullptr;
            d->vista = nullptr;
            d->controles.remove(nombreConten);
        }
        // The children start neither active nor selected.
        if (const auto hijos = objeto->getObjetos()) {
            for (const ObjetoPtr &hijo : hijos->NewEnum()) {
                hijo->setActivo(false);
                hijo->setSeleccionado(false);
            }
        }
        // A leg view for a leg, a free-layout container for anything else.
        const QString clase = objeto->getTipo() == QLatin1String("P")
            ? QStringLiteral("Tarvonix.PiernaX")
            : QStringLiteral("Tarvonix.ContenedorX");
        d->conten = d->controles.add(clase, nombreConten);
        setFocusProxy(d->conten); // the keyboard works in the view
        d->contenedor = dynamic_cast<IContenedorX *>(d->conten.data());
        d->vista = dynamic_cast<VistaX *>(d->conten.data());
        d->conten->installEventFilter(this);
        d->vert->raise();
        d->horiz->raise();
        d->esquina->raise();
        d->barra.alFrente();
        // The container gets the root, the object and the scale, in that order.
        IContenedorX &contrato = d->contrato();
        contrato.setRoot(d->root);
        contrato.setObjeto(objeto);
        contrato.setEscala(d->escala);
        // Below the title, fitted, then shown with the object's description as the title.
        d->objetoActivo = objeto;
        BarraTitulo::colocar(d->conten, 1, BarraTitulo::altoTitulo + 1);
        d->ensureVisible(d->conten);
        d->conten->show();
        d->objeto = objeto;
        d->barra.setTexto(objeto->getDescripcion());
    });
}

ObjetoPtr FrameX::getObjeto()
{
    return d->objeto;
}

void FrameX::setRoot(IMapaX *root)
{
    d->root = root;
}

void FrameX::setActivo(const ObjetoPtr &objeto, bool valor)
{
    trap(QStringLiteral("FrameX.IContenedorX_setActivo->"), [&] {
        d->pActive = valor;
        d->barra.mostrarActivo(valor);
        d->vert->setEnabled(valor);
        d->horiz->setEnabled(valor);
        if (valor && !isHidden() && isEnabled()) {
            raise();
            d->mapa().setActive(nullptr, this, IMapaX::FrameActivo);
        }
        if (d->conten)
            d->contrato().setActivo(objeto, valor);
    });
}

std::shared_ptr<Objetos> FrameX::getSeleccionados()
{
    std::shared_ptr<Objetos> seleccionados;
    trap(QStringLiteral("FrameX.IContenedorX_getSeleccionados->"),
         [&] { seleccionados = d->contrato().getSeleccionados(); });
    return seleccionados;
}

void FrameX::refrescar()
{
    trap(QStringLiteral("FrameX.IContenedorX_refrescar->"), [&] { d->contrato().refrescar(); });
}

void FrameX::setEscala(float escala)
{
    trap(QStringLiteral("FrameX.IContenedorX_setEscala->"), [&] {
        d->escala = escala;
        d->contrato().setEscala(escala);
    });
}

void FrameX::setBloqueo(bool bloqueo)
{
    trap(QStringLiteral("FrameX.IContenedorX_setBloqueo->"), [&] { d->contrato().setBloqueo(bloqueo); });
}

void FrameX::alinearHorizontal(const ObjetoPtr &referencia)
{
    trap(QStringLiteral("FrameX.IContenedorX_alinearHorizontal->"),
         [&] { d->contrato().alinearHorizontal(referencia); });
}

void FrameX::alinearVertical(const ObjetoPtr &referencia)
{
    trap(QStringLiteral("FrameX.IContenedorX_alinearVertical->"),
         [&] { d->contrato().alinearVertical(referencia); });
}

void FrameX::igualarDimension(const ObjetoPtr &referencia)
{
    trap(QStringLiteral("FrameX.IContenedorX_igualarDimension->"),
         [&] { d->contrato().igualarDimension(referencia); });
}

void FrameX::distribuirHorizontal()
{
    trap(QStringLiteral("FrameX.IContenedorX_distribuirHorizontal->"),
         [&] { d->contrato().distribuirHorizontal(); });
}

void FrameX::distribuirVertical()
{
    trap(QStringLiteral("FrameX.IContenedorX_distribuirVertical->"),
         [&] { d->contrato().distribuirVertical(); });
}

void FrameX::seleccionarTodos()
{
    trap(QStringLiteral("FrameX.IContenedorX_seleccionarTodos->"), [&] { d->contrato().seleccionarTodos(); });
}

void FrameX::deseleccionarTodos()
{
    trap(QStringLiteral("FrameX.IContenedorX_deseleccionarTodos->"),
         [&] { d->contrato().deseleccionarTodos(); });
}

void FrameX::seleccionar(const QString &codigo)
{
    trap(QStringLiteral("FrameX.IContenedorX_seleccionar->"), [&] { d->contrato().seleccionar(codigo); });
}

void FrameX::Private::ensureVisible(QWidget *micontrol)
{
    trap(QStringLiteral("FrameX.ensureVisible->"), [&] {
        if (!micontrol)
            throw Error(Error::ObjectNotSet);
        const int altoTitulo = BarraTitulo::altoTitulo;
        // What the control needs, but never less than the smallest frame.
        double W = micontrol->width() + vert->width() + margenAjuste;
        double H = micontrol->height() + altoTitulo + horiz->height() + margenAjuste;
        W = qMax(W, double(anchoMinimo));
        H = qMax(H, double(altoMinimo));
        // Wider than the map allows: the horizontal bar covers exactly what does not fit.
        horiz->hide();
        horizEnUso = W > maxX;
        if (horizEnUso) {
            W = maxX;
            horiz->setMaximum(toInt16(micontrol->width() - maxX + vert->width() + margenAjuste));
            horiz->setPageStep(qMax(1, int(maxX)));
            horiz->show();
        }
        // Likewise downwards.
        vert->hide();
        vertEnUso = H > maxY;
        if (vertEnUso) {
            H = maxY;
            vert->setMaximum(
                toInt16(micontrol->height() - maxY + altoTitulo + horiz->height() + margenAjuste));
            vert->setPageStep(qMax(1, int(maxY)));
            vert->show();
        }
        esquina->setVisible(horizEnUso && vertEnUso);
        // A minimised frame keeps its height; only the ranges change.
        if (!barra.minimizado()) {
            const bool crece = q->width() < W || q->height() < H;
            q->resize(int(W), int(H));
            distribuir(); // a hidden frame gets no resize event until it shows: lay it out now
            if (crece)
                mapa().ensureVisible(q);
        }
        // The visible part of the control changed with the frame.
        q->setViewPort(micontrol);
    });
}

void FrameX::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    d->distribuir();
    // The scroll bars moved: the visible part of the contained control changed with them.
    if (d->conten)
        setViewPort(d->conten);
}

void FrameX::Private::distribuir()
{
    trap(QStringLiteral("FrameX.UserControl_resize->"), [&] {
        const int w = q->width() - 2 * BarraTitulo::borde;
        const int h = q->height() - 2 * BarraTitulo::borde;
        // The buttons at the right end, the title before them.
        barra.distribuir(w);
        // The bars along the right and bottom edges, the corner where they meet.
        if (barra.minimizado())
            return;
        horiz->resize(qMax(0, w - vert->width()), horiz->height());
        BarraTitulo::colocar(horiz, 0, h - horiz->height());
        BarraTitulo::colocar(vert, w - vert->width(), BarraTitulo::arriba(vert));
        vert->resize(vert->width(), qMax(0, h - barra.cerrar()->height() - horiz->height()));
        BarraTitulo::colocar(esquina, BarraTitulo::izquierda(vert), BarraTitulo::arriba(horiz));
    });
}

void FrameX::Private::minimizar()
{
    trap(QStringLiteral("FrameX.Minimizar->"), [&] {
        if (!barra.minimizado()) {
            q->activate();
            barra.alternarMinimizado();
        } else {
            barra.alternarMinimizado();
            q->activate();
            mapa().ensureVisible(q);
        }
    });
}

void FrameX::Private::alCambiarHoriz(int valor)
{
    trap(QStringLiteral("FrameX.horiz.Change->"), [&] {
        if (!conten)
            return;
        BarraTitulo::colocar(conten, 1 - valor, BarraTitulo::arriba(conten));
        q->setViewPort(conten);
    });
}

void FrameX::Private::alCambiarVert(int valor)
{
    trap(QStringLiteral("FrameX.vert.Change->"), [&] {
        if (!conten)
            return;
        BarraTitulo::colocar(conten, BarraTitulo::izquierda(conten), BarraTitulo::altoTitulo + 1 - valor);
        q->setViewPort(conten);
    });
}

void FrameX::Private::iniciarMovimiento(float x, float y)
{
    trap(QStringLiteral("FrameX.titulo.OLEStartDrag->"), [&] {
        if (pActive)
            barra.iniciarMovimiento(x, y);
    });
}

void FrameX::Private::clicDerecho()
{
    trap(QStringLiteral("FrameX.titulo.RightClick->"), [&] {
        if (!pActive)
            q->setActive(objetoActivo);
        mapa().rightClicked(objeto, false);
    });
}

bool FrameX::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == d->conten && event->type() == QEvent::Wheel) {
        bool tomada = false;
        trap(QStringLiteral("FrameX.conten.Wheel->"),
             [&] { tomada = d->rueda(*static_cast<QWheelEvent *>(event)); });
        return tomada;
    }
    if (watched == d->conten && event->type() == QEvent::NativeGesture) {
        const auto *gesto = static_cast<QNativeGestureEvent *>(event);
        if (gesto->gestureType() != Qt::ZoomNativeGesture)
            return false;
        d->zoom(float(d->escala * (1.0 + gesto->value())), gesto->position());
        return true;
    }
    // A scroll bar pressed or given the focus activates an inactive frame. The filter
    // sees the press before the disabled bar would refuse it; once the frame is
    // active the bar is enabled again and takes the press itself.
    if ((event->type() == QEvent::MouseButtonPress || event->type() == QEvent::FocusIn)
        && (watched == d->vert || watched == d->horiz) && !d->pActive)
        activate();
    return QWidget::eventFilter(watched, event);
}

} // namespace tarvonix
