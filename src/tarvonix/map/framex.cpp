#include <tarvonix/map/framex.h>

#include <tarvonix/widgets/dummy.h>
#include <tarvonix/widgets/etiquetas.h>
#include <tarvonix/map/barratitulo_p.h>
#include <tarvonix/views/imapax.h>
#include <tarvonix/views/vistax.h>
#include <tarvonix/model/objetos.h>
#include <tarvonix/platform/childcontrols.h>
#include <tarvonix/core/error.h>
#include <tarvonix/platform/errortrap.h>
#include <tarvonix/core/int16.h>

#include <QEvent>
#include <QScrollBar>

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
        : barra(frame, anchoBoton)
        , controles(frame)
    {
    }

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
    for (QScrollBar *barra : {d->vert, d->horiz}) {
        barra->setSingleStep(pasoScroll);
        barra->setMaximum(0);
        barra->hide();
        barra->setEnabled(false); // the frame starts inactive
        barra->installEventFilter(this);
    }
    d->esquina->hide();

    connect(d->horiz, &QScrollBar::valueChanged, this, &FrameX::alCambiarHoriz);
    connect(d->vert, &QScrollBar::valueChanged, this, &FrameX::alCambiarVert);

    etiquetas *titulo = d->barra.titulo();
    connect(titulo, &etiquetas::Click, this, [this] {
        trap(QStringLiteral("FrameX.titulo.Click->"), [this] {
            if (!d->pActive)
                setActive(d->objetoActivo);
        });
    });
    connect(titulo, &etiquetas::OLEStartDrag, this, [this](float x, float y, int) { iniciarMovimiento(x, y); });
    for (etiquetas *etiqueta : {titulo, d->barra.mini(), d->barra.cerrar()})
        connect(etiqueta, &etiquetas::RightClick, this, &FrameX::clicDerecho);
    connect(d->barra.cerrar(), &etiquetas::Click, this, [this] {
        trap(QStringLiteral("FrameX.cerrar.Click->"), [this] { root().remove(d->objeto); });
    });
    connect(d->barra.mini(), &etiquetas::Click, this, &FrameX::minimizar);

    distribuir();
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

IContenedorX &FrameX::contenedor() const
{
    if (!d->conten)
        throw Error(Error::ObjectNotSet);
    // A contained control without the contract fails as a call of its "cast" would.
    if (!d->contenedor)
        throw Error(Error::MemberNotSupported);
    return *d->contenedor;
}

IMapaX &FrameX::root() const
{
    if (!d->root)
        throw Error(Error::ObjectNotSet);
    return *d->root;
}

void FrameX::setMaxViewPort(double x, double y)
{
    trap(QStringLiteral("FrameX.setMaxViewPort->"), [&] {
        d->maxX = x;
        d->maxY = y;
        if (d->conten)
            ensureVisible(d->conten);
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
            root().setActive(obj, this, IMapaX::ObjetoActivo);
            if (codigoDe(obj) != codigoDe(d->objetoActivo)) {
                contenedor().setActivo(d->objetoActivo, false);
                d->objetoActivo = obj;
            }
            contenedor().setActivo(obj, true);
        } else {
            d->objetoActivo = obj;
            setActivo(nullptr, true);
        }
    });
    return d->objetoActivo;
}

void FrameX::Resize(QWidget *micontrol)
{
    trap(QStringLiteral("FrameX.Resize->"), [&] { ensureVisible(micontrol); });
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
        const QString clase = objeto->getTipo() == QLatin1String("P") ? QStringLiteral("Tarvonix.PiernaX")
                                                                      : QStringLiteral("Tarvonix.ContenedorX");
        d->conten = d->controles.add(clase, nombreConten);
        d->contenedor = dynamic_cast<IContenedorX *>(d->conten.data());
        d->vista = dynamic_cast<VistaX *>(d->conten.data());
        d->vert->raise();
        d->horiz->raise();
        d->esquina->raise();
        d->barra.alFrente();
        // The container gets the root, the object and the scale, in that order.
        IContenedorX &contrato = contenedor();
        contrato.setRoot(d->root);
        contrato.setObjeto(objeto);
        contrato.setEscala(d->escala);
        // Below the title, fitted, then shown with the object's description as the title.
        d->objetoActivo = objeto;
        BarraTitulo::colocar(d->conten, 1, BarraTitulo::altoTitulo + 1);
        ensureVisible(d->conten);
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
            root().setActive(nullptr, this, IMapaX::FrameActivo);
        }
        if (d->conten)
            contenedor().setActivo(objeto, valor);
    });
}

std::shared_ptr<Objetos> FrameX::getSeleccionados()
{
    std::shared_ptr<Objetos> seleccionados;
    trap(QStringLiteral("FrameX.IContenedorX_getSeleccionados->"),
         [&] { seleccionados = contenedor().getSeleccionados(); });
    return seleccionados;
}

void FrameX::refrescar()
{
    trap(QStringLiteral("FrameX.IContenedorX_refrescar->"), [&] { contenedor().refrescar(); });
}

void FrameX::setEscala(float escala)
{
    trap(QStringLiteral("FrameX.IContenedorX_setEscala->"), [&] {
        d->escala = escala;
        contenedor().setEscala(escala);
    });
}

void FrameX::setBloqueo(bool bloqueo)
{
    trap(QStringLiteral("FrameX.IContenedorX_setBloqueo->"), [&] { contenedor().setBloqueo(bloqueo); });
}

void FrameX::alinearHorizontal(const ObjetoPtr &referencia)
{
    trap(QStringLiteral("FrameX.IContenedorX_alinearHorizontal->"),
         [&] { contenedor().alinearHorizontal(referencia); });
}

void FrameX::alinearVertical(const ObjetoPtr &referencia)
{
    trap(QStringLiteral("FrameX.IContenedorX_alinearVertical->"), [&] { contenedor().alinearVertical(referencia); });
}

void FrameX::igualarDimension(const ObjetoPtr &referencia)
{
    trap(QStringLiteral("FrameX.IContenedorX_igualarDimension->"),
         [&] { contenedor().igualarDimension(referencia); });
}

void FrameX::distribuirHorizontal()
{
    trap(QStringLiteral("FrameX.IContenedorX_distribuirHorizontal->"), [&] { contenedor().distribuirHorizontal(); });
}

void FrameX::distribuirVertical()
{
    trap(QStringLiteral("FrameX.IContenedorX_distribuirVertical->"), [&] { contenedor().distribuirVertical(); });
}

void FrameX::seleccionarTodos()
{
    trap(QStringLiteral("FrameX.IContenedorX_seleccionarTodos->"), [&] { contenedor().seleccionarTodos(); });
}

void FrameX::deseleccionarTodos()
{
    trap(QStringLiteral("FrameX.IContenedorX_deseleccionarTodos->"), [&] { contenedor().deseleccionarTodos(); });
}

void FrameX::seleccionar(const QString &codigo)
{
    trap(QStringLiteral("FrameX.IContenedorX_seleccionar->"), [&] { contenedor().seleccionar(codigo); });
}

void FrameX::ensureVisible(QWidget *micontrol)
{
    trap(QStringLiteral("FrameX.ensureVisible->"), [&] {
        if (!micontrol)
            throw Error(Error::ObjectNotSet);
        const int altoTitulo = BarraTitulo::altoTitulo;
        // What the control needs, but never less than the smallest frame.
        double W = micontrol->width() + d->vert->width() + margenAjuste;
        double H = micontrol->height() + altoTitulo + d->horiz->height() + margenAjuste;
        W = qMax(W, double(anchoMinimo));
        H = qMax(H, double(altoMinimo));
        // Wider than the map allows: the horizontal bar covers exactly what does not fit.
        d->horiz->hide();
        d->horizEnUso = W > d->maxX;
        if (d->horizEnUso) {
            W = d->maxX;
            d->horiz->setMaximum(toInt16(micontrol->width() - d->maxX + d->vert->width() + margenAjuste));
            d->horiz->setPageStep(qMax(1, int(d->maxX)));
            d->horiz->show();
        }
        // Likewise downwards.
        d->vert->hide();
        d->vertEnUso = H > d->maxY;
        if (d->vertEnUso) {
            H = d->maxY;
            d->vert->setMaximum(
                toInt16(micontrol->height() - d->maxY + altoTitulo + d->horiz->height() + margenAjuste));
            d->vert->setPageStep(qMax(1, int(d->maxY)));
            d->vert->show();
        }
        d->esquina->setVisible(d->horizEnUso && d->vertEnUso);
        // A minimised frame keeps its height; only the ranges change.
        if (!d->barra.minimizado()) {
            const bool crece = width() < W || height() < H;
            resize(int(W), int(H));
            distribuir(); // a hidden frame gets no resize event until it shows: lay it out now
            if (crece)
                root().ensureVisible(this);
        }
        // The visible part of the control changed with the frame.
        setViewPort(micontrol);
    });
}

void FrameX::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    distribuir();
    // The scroll bars moved: the visible part of the contained control changed with them.
    if (d->conten)
        setViewPort(d->conten);
}

void FrameX::distribuir()
{
    trap(QStringLiteral("FrameX.UserControl_resize->"), [&] {
        const int w = width() - 2 * BarraTitulo::borde;
        const int h = height() - 2 * BarraTitulo::borde;
        // The buttons at the right end, the title before them.
        d->barra.distribuir(w);
        // The bars along the right and bottom edges, the corner where they meet.
        if (d->barra.minimizado())
            return;
        d->horiz->resize(qMax(0, w - d->vert->width()), d->horiz->height());
        BarraTitulo::colocar(d->horiz, 0, h - d->horiz->height());
        BarraTitulo::colocar(d->vert, w - d->vert->width(), BarraTitulo::arriba(d->vert));
        d->vert->resize(d->vert->width(), qMax(0, h - d->barra.cerrar()->height() - d->horiz->height()));
        BarraTitulo::colocar(d->esquina, BarraTitulo::izquierda(d->vert), BarraTitulo::arriba(d->horiz));
    });
}

void FrameX::minimizar()
{
    trap(QStringLiteral("FrameX.Minimizar->"), [&] {
        if (!d->barra.minimizado()) {
            activate();
            d->barra.alternarMinimizado();
        } else {
            d->barra.alternarMinimizado();
            activate();
            root().ensureVisible(this);
        }
    });
}

void FrameX::alCambiarHoriz(int valor)
{
    trap(QStringLiteral("FrameX.horiz.Change->"), [&] {
        if (!d->conten)
            return;
        BarraTitulo::colocar(d->conten, 1 - valor, BarraTitulo::arriba(d->conten));
        setViewPort(d->conten);
    });
}

void FrameX::alCambiarVert(int valor)
{
    trap(QStringLiteral("FrameX.vert.Change->"), [&] {
        if (!d->conten)
            return;
        BarraTitulo::colocar(d->conten, BarraTitulo::izquierda(d->conten), BarraTitulo::altoTitulo + 1 - valor);
        setViewPort(d->conten);
    });
}

void FrameX::iniciarMovimiento(float x, float y)
{
    trap(QStringLiteral("FrameX.titulo.OLEStartDrag->"), [&] {
        if (d->pActive)
            d->barra.iniciarMovimiento(x, y);
    });
}

void FrameX::clicDerecho()
{
    trap(QStringLiteral("FrameX.titulo.RightClick->"), [&] {
        if (!d->pActive)
            setActive(d->objetoActivo);
        root().rightClicked(d->objeto, false);
    });
}

bool FrameX::eventFilter(QObject *watched, QEvent *event)
{
    // A scroll bar pressed or given the focus activates an inactive frame. The filter
    // sees the press before the disabled bar would refuse it; once the frame is
    // active the bar is enabled again and takes the press itself.
    if ((event->type() == QEvent::MouseButtonPress || event->type() == QEvent::FocusIn)
        && (watched == d->vert || watched == d->horiz) && !d->pActive)
        activate();
    return QWidget::eventFilter(watched, event);
}

} // namespace tarvonix
