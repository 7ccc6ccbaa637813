// SPDX-License-Identifier: MIT
// Times the same work in Tarvonix and in a QGraphicsView showing the same
// items (rectangle and ellipse items of the same sizes and colours, a simple
// text item where the view would print a tip), side by side.
//
// Every row is measured at its size N and at N / 10; the exponent is the
// slope from one to the other on a log-log scale (1 is linear, 2 quadratic).
// Times are the median of 5 runs, each on a freshly built scene. Build it in
// the release preset; it is run by hand, never as a test:
//
//   cmake --preset release && cmake --build --preset release --target bench_comparado
//   build/release/bin/bench_comparado [row filter [N]]
//
// Under callgrind with --instr-atstart=no only the timed work is counted.

#include <tarvonix/tarvonix.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QGraphicsEllipseItem>
#include <QGraphicsRectItem>
#include <QGraphicsScene>
#include <QGraphicsSimpleTextItem>
#include <QGraphicsView>
#include <QImage>
#include <QMouseEvent>
#include <QPainterPath>
#include <QPainter>
#include <QRandomGenerator>
#include <QWindow>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <functional>
#include <ctime>
#include <malloc.h>
#include <optional>
#include <vector>

#if __has_include(<valgrind/callgrind.h>)
#include <valgrind/callgrind.h>
#else
#define CALLGRIND_START_INSTRUMENTATION
#define CALLGRIND_STOP_INSTRUMENTATION
#endif

using namespace tarvonix;

namespace {

// The frame members the views call by name; it marks the active object back on its view.
class Marco : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(bool pActive READ pActive)

public:
    bool pActive() const { return true; }
    Q_INVOKABLE tarvonix::ObjetoPtr setActive(const tarvonix::ObjetoPtr &obj)
    {
        if (contenido && activo && obj && activo != obj)
            contenido->setActivo(activo, false);
        activo = obj;
        if (contenido && obj)
            contenido->setActivo(obj, true);
        return obj;
    }
    Q_INVOKABLE bool isActive() { return true; }
    Q_INVOKABLE void activate() { }
    Q_INVOKABLE void Resize(QWidget *) { }
    Q_INVOKABLE void hScroll(qint16) { }
    Q_INVOKABLE void vScroll(qint16) { }
    Q_INVOKABLE QString Name() { return QStringLiteral("F1"); }

    IContenedorX *contenido = nullptr;
    ObjetoPtr activo;
};

class Raiz : public IMapaX
{
public:
    void clicked(const ObjetoPtr &, bool) override { ++oidos; }
    void rightClicked(const ObjetoPtr &, bool) override { ++oidos; }
    void droped(const QString &, const ObjetoPtr &, qint32) override { }
    void moved(const ObjetoPtr &) override { }
    void setActive(const ObjetoPtr &, IContenedorX *, qint16) override { }
    void ensureVisible(QWidget *) override { }
    void remove(const ObjetoPtr &) override { }
    void escalado(const ObjetoPtr &, float) override { }
    int oidos = 0;
};

// Counts the paints a widget receives, so that a click can wait for the repaint it causes.
class Pinturas : public QObject
{
public:
    int n = 0;
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Paint)
            ++n;
        return false;
    }
};

constexpr int repeticiones = 5;
// A row whose runs take longer than this in all stops early and says so.
constexpr double presupuestoMs = 20000;

struct Resultado
{
    double ms = 0;
    int corridas = 0;
};

//! The median of up to five runs of \a corrida, which builds its scene and answers the time of the work alone.
Resultado mediana(const std::function<double()> &corrida)
{
    std::vector<double> tiempos;
    double total = 0;
    for (int i = 0; i < repeticiones && total < presupuestoMs; ++i) {
        tiempos.push_back(corrida());
        total += tiempos.back();
    }
    std::sort(tiempos.begin(), tiempos.end());
    return { tiempos[tiempos.size() / 2], int(tiempos.size()) };
}

/*!
    The processor time of the calling thread, which does all the work of both
    libraries: on a machine shared with others the time on the wall measures
    them as much as the work.
*/
class Reloj
{
public:
    void start()
    {
        CALLGRIND_START_INSTRUMENTATION;
        m_desde = ahora();
    }
    double ms() const
    {
        const double t = (ahora() - m_desde) / 1.0e6;
        CALLGRIND_STOP_INSTRUMENTATION;
        return t;
    }

private:
    static double ahora()
    {
        timespec t {};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t);
        return double(t.tv_sec) * 1.0e9 + double(t.tv_nsec);
    }
    double m_desde = 0;
};

void raton(QWidget *w, QEvent::Type tipo, QPoint pos, Qt::MouseButton boton, Qt::MouseButtons botones,
           Qt::KeyboardModifiers mods = {})
{
    QMouseEvent evento(tipo, QPointF(pos), w->mapToGlobal(QPointF(pos)), boton, botones, mods);
    QCoreApplication::sendEvent(w, &evento);
}

void click(QWidget *w, QPoint pos, Qt::KeyboardModifiers mods = {})
{
    raton(w, QEvent::MouseButtonPress, pos, Qt::LeftButton, Qt::LeftButton, mods);
    raton(w, QEvent::MouseButtonRelease, pos, Qt::LeftButton, Qt::NoButton, mods);
}

void banda(QWidget *w, QPoint desde, QPoint hasta, Qt::KeyboardModifiers mods)
{
    raton(w, QEvent::MouseButtonPress, desde, Qt::LeftButton, Qt::LeftButton, mods);
    raton(w, QEvent::MouseMove, (desde + hasta) / 2, Qt::NoButton, Qt::LeftButton, mods);
    raton(w, QEvent::MouseMove, hasta, Qt::NoButton, Qt::LeftButton, mods);
    raton(w, QEvent::MouseButtonRelease, hasta, Qt::LeftButton, Qt::NoButton, mods);
}

const qint32 colores[] = { 0x00FF00, 0x0000FF, 0xFF0000, 0x00FFFF, 0xFFFFFF, 0x808080, 0x404080 };

// One child of a scene: the same in both libraries.
struct Hijo
{
    int x, y, w, h;
    int forma; // 1 box, 2 circle
    qint32 color;
    QString tip;
};

//! \a n children \a w x \a h at random places in \a area (object units), or on a grid of pitch \a paso.
std::vector<Hijo> hijosAlAzar(int n, QSize area, int w, int h)
{
    QRandomGenerator azar(20240611);
    std::vector<Hijo> hijos(static_cast<size_t>(n));
    for (int i = 0; i < n; ++i)
        hijos[size_t(i)] = { int(azar.bounded(area.width() - w)), int(azar.bounded(area.height() - h)), w, h,
                             1 + i % 2, colores[i % 7], QString::number(i % 100) };
    return hijos;
}

std::vector<Hijo> hijosEnRejilla(int n, int columnas, int paso, int lado)
{
    std::vector<Hijo> hijos(static_cast<size_t>(n));
    for (int i = 0; i < n; ++i)
        hijos[size_t(i)] = { (i % columnas) * paso, (i / columnas) * paso, lado, lado, 1, colores[i % 7],
                             QString::number(i % 100) };
    return hijos;
}

// --- The two scenes -----------------------------------------------------------

struct EscenaTarvonix
{
    explicit EscenaTarvonix(const std::vector<Hijo> &hijos)
    {
        padre = std::make_shared<Objeto>();
        padre->setCodigo(QStringLiteral("NAVE"));
        padre->setPuedeContener(true);
        padre->setColor(0xFFFFFF);
        const auto coleccion = padre->getObjetos();
        int i = 0;
        for (const Hijo &h : hijos) {
            auto o = std::make_shared<Objeto>();
            o->setCodigo(QStringLiteral("D%1").arg(i++));
            o->setPadre(padre->getCodigo());
            o->setX(qint16(h.x));
            o->setY(qint16(h.y));
            o->setAncho(qint16(h.w));
            o->setAlto(qint16(h.h));
            o->setForma(qint16(h.forma));
            o->setColor(h.color);
            o->setTip(h.tip);
            coleccion->add(o);
        }
        vista = new ContenedorX(&marco);
        marco.contenido = vista;
        vista->setRoot(&raiz);
        vista->setObjeto(padre);
        vista->setEscala(1);
        vista->setViewPort(0, 0, 32767, 32767);
    }

    //! Renders the part (\a x, \a y, \a w, \a h) of the view, as its frame would show it.
    double pintar(QRect parte)
    {
        QImage imagen(parte.size(), QImage::Format_RGB32);
        vista->setViewPort(float(parte.left()), float(parte.top()), float(parte.right() + 1),
                           float(parte.bottom() + 1));
        // A view is painted again and again: the first paint is not the one timed.
        vista->render(&imagen, QPoint(), QRegion(parte));
        Reloj reloj;
        reloj.start();
        vista->render(&imagen, QPoint(), QRegion(parte));
        return reloj.ms();
    }

    Marco marco;
    Raiz raiz;
    ObjetoPtr padre;
    ContenedorX *vista = nullptr;
};

struct EscenaGV
{
    explicit EscenaGV(const std::vector<Hijo> &hijos, QRectF vistaDe = QRectF())
    {
        const QFontMetrics medidas(vista.font());
        for (const Hijo &h : hijos) {
            const QRectF caja(h.x + 2, h.y + 2, h.w, h.h);
            QAbstractGraphicsShapeItem *item = nullptr;
            if (h.forma == 2)
                item = escena.addEllipse(caja.adjusted(0, 0, -2, caja.width() - caja.height() - 2));
            else
                item = escena.addRect(caja.adjusted(0, 0, -1, -1));
            item->setPen(QPen(Qt::black, 0));
            const QColor color = toQColor(h.color);
            item->setBrush(color);
            item->setFlag(QGraphicsItem::ItemIsSelectable);
            // A tip only where the container prints one: on one line inside a margin of 2.
            if (medidas.horizontalAdvance(h.tip) <= h.w - 4 && medidas.height() <= h.h - 4) {
                auto *texto = new QGraphicsSimpleTextItem(h.tip, item);
                texto->setBrush(Color::esColorClaro(h.color) ? Qt::black : Qt::white);
                texto->setPos(caja.center() - QPointF(medidas.horizontalAdvance(h.tip), medidas.height()) / 2);
            }
            items.push_back(item);
        }
        vista.setScene(&escena);
        vista.setFrameShape(QFrame::NoFrame);
        vista.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        vista.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        vista.setAlignment(Qt::AlignLeft | Qt::AlignTop);
        vista.setRenderHints({});
        vista.setBackgroundBrush(Qt::white);
        if (!vistaDe.isNull())
            vista.setSceneRect(vistaDe);
        // The scene builds its index at the first query; a scene in use has one.
        escena.items(QPointF());
    }

    double pintar(QSize tamano)
    {
        vista.resize(tamano);
        QImage imagen(tamano, QImage::Format_RGB32);
        // The widget's render(), the same path as the container's; QGraphicsView::render() is the scene's.
        static_cast<QWidget &>(vista).render(&imagen);
        Reloj reloj;
        reloj.start();
        static_cast<QWidget &>(vista).render(&imagen);
        return reloj.ms();
    }

    QGraphicsScene escena;
    QGraphicsView vista;
    std::vector<QAbstractGraphicsShapeItem *> items;
};

// --- The rows -----------------------------------------------------------------

const QSize pantalla(1280, 800);

double pintarTodoTarvonix(int n)
{
    EscenaTarvonix e(hijosAlAzar(n, pantalla - QSize(4, 4), 30, 20));
    return e.pintar(QRect(QPoint(), pantalla));
}

double pintarTodoGV(int n)
{
    EscenaGV e(hijosAlAzar(n, pantalla - QSize(4, 4), 30, 20), QRectF(QPointF(), pantalla));
    return e.pintar(pantalla);
}

// About 100 children per screen, however many there are.
QSize areaDispersa(int n)
{
    const int lado = int(std::sqrt(double(n) * pantalla.width() * pantalla.height() / 100));
    return QSize(lado, lado);
}

QRect parteDispersa(int n)
{
    const QSize area = areaDispersa(n);
    return QRect(QPoint(area.width() / 2, area.height() / 2), pantalla);
}

double pintarParteTarvonix(int n)
{
    EscenaTarvonix e(hijosAlAzar(n, areaDispersa(n), 30, 20));
    return e.pintar(parteDispersa(n));
}

double pintarParteGV(int n)
{
    EscenaGV e(hijosAlAzar(n, areaDispersa(n), 30, 20), parteDispersa(n));
    return e.pintar(pantalla);
}

// 100 clicks on children anywhere, each until the host hears of it; the time of one.
constexpr int clicks = 100;

double clickTarvonix(int n)
{
    const auto hijos = hijosAlAzar(n, areaDispersa(n), 30, 20);
    EscenaTarvonix e(hijos);
    QRandomGenerator azar(7);
    Reloj reloj;
    reloj.start();
    for (int i = 0; i < clicks; ++i) {
        const Hijo &h = hijos[azar.bounded(quint32(n))];
        click(e.vista, QPoint(h.x + 2 + h.w / 2, h.y + 2 + h.h / 2));
    }
    const double t = reloj.ms() / clicks;
    if (e.raiz.oidos != clicks)
        std::fprintf(stderr, "Tarvonix heard %d of %d clicks\n", e.raiz.oidos, clicks);
    return t;
}

double clickGV(int n)
{
    const auto hijos = hijosAlAzar(n, areaDispersa(n), 30, 20);
    EscenaGV e(hijos, QRectF(QPointF(), areaDispersa(n)));
    e.vista.resize(areaDispersa(n));
    int oidos = 0;
    QObject::connect(&e.escena, &QGraphicsScene::selectionChanged, [&] { ++oidos; });
    QRandomGenerator azar(7);
    Reloj reloj;
    reloj.start();
    for (int i = 0; i < clicks; ++i) {
        const Hijo &h = hijos[azar.bounded(quint32(n))];
        click(e.vista.viewport(), QPoint(h.x + 2 + h.w / 2, h.y + 2 + h.h / 2));
    }
    return oidos > 0 ? reloj.ms() / clicks : NAN;
}

// Children 4 x 4 on a grid of 500 columns; a band from the top-left corner takes the left half.
std::vector<Hijo> rejillaBanda(int n)
{
    return hijosEnRejilla(n, 500, 6, 4);
}
const QPoint esquinaBanda(1, 1);
QPoint finBanda(int n)
{
    return QPoint(1503, (n / 500 + 1) * 6 + 10);
}

double bandaTarvonix(int n, bool ctrl)
{
    EscenaTarvonix e(rejillaBanda(n));
    if (ctrl)
        e.vista->seleccionarTodos();
    Reloj reloj;
    reloj.start();
    banda(e.vista, esquinaBanda, finBanda(n), ctrl ? Qt::ControlModifier : Qt::NoModifier);
    const double t = reloj.ms();
    const int esperados = ctrl ? n - n / 2 : n / 2;
    if (e.vista->getSeleccionados()->count() != esperados)
        std::fprintf(stderr, "Tarvonix band left %d selected, not %d\n", e.vista->getSeleccionados()->count(),
                     esperados);
    return t;
}

double bandaGV(int n, bool ctrl)
{
    EscenaGV e(rejillaBanda(n));
    if (!ctrl) {
        // What the view's rubber band does once the pointer stops: select what the band touches.
        Reloj reloj;
        reloj.start();
        QPainterPath zona;
        zona.addRect(QRectF(esquinaBanda, finBanda(n)));
        e.escena.setSelectionArea(zona, Qt::ReplaceSelection, Qt::ContainsItemBoundingRect);
        const double t = reloj.ms();
        if (e.escena.selectedItems().size() != n / 2)
            std::fprintf(stderr, "Graphics View band selected %d, not %d\n", int(e.escena.selectedItems().size()),
                         n / 2);
        return t;
    }
    // Graphics View's band only adds with Ctrl: the toggle is its item query and a flag per item.
    for (QAbstractGraphicsShapeItem *item : e.items)
        item->setSelected(true);
    Reloj reloj;
    reloj.start();
    const auto dentro = e.escena.items(QRectF(esquinaBanda, finBanda(n)), Qt::ContainsItemBoundingRect);
    for (QGraphicsItem *item : dentro)
        item->setSelected(!item->isSelected());
    return reloj.ms();
}

// A leg of tiers x positions, and a grid of the same cells in Graphics View.
std::shared_ptr<Pierna> pierna(int filas, int largo)
{
    auto leg = std::make_shared<Pierna>();
    leg->setCodigo(QStringLiteral("P01"));
    leg->setClasica(false);
    leg->setLinea(10);
    leg->setEscalas(qint16(filas));
    for (int t = 1; t <= filas; ++t) {
        leg->setEscala(qint16(t), qint16(largo));
        for (int p = 1; p <= largo; ++p) {
            if ((t * 7 + p) % 11 == 0)
                continue; // some empty positions
            auto lote = std::make_shared<Lote>();
            lote->setCodigo(QStringLiteral("L%1.%2").arg(t).arg(p));
            lote->setForma(qint16((t + p) % 5 == 0 ? 2 : 1));
            lote->setColor(colores[(t + p) % 7]);
            lote->setTip(QString::number(p % 100));
            lote->setPadre(leg->getUbicacion(qint16(t), qint16(p))->getCodigo());
            leg->setObjeto(qint16(t), qint16(p), lote);
        }
    }
    return leg;
}

std::vector<Hijo> celdasGV(int filas, int largo)
{
    std::vector<Hijo> hijos;
    hijos.reserve(size_t(filas) * size_t(largo));
    for (int t = 1; t <= filas; ++t)
        for (int p = 1; p <= largo; ++p)
            hijos.push_back({ 19 + (p - 1) * 21, (filas - t) * 21, 20, 20, (t + p) % 5 == 0 ? 2 : 1,
                              colores[(t + p) % 7], QString::number(p % 100) });
    return hijos;
}

const QSize pantallaPierna(1920, 1080);

// Waits until \a pinturas has counted a paint since \a antes; false after a second without.
bool esperarPintura(const Pinturas &pinturas, int antes)
{
    QElapsedTimer limite;
    limite.start();
    while (pinturas.n == antes && limite.elapsed() < 1000)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 1);
    return pinturas.n != antes;
}

void mostrar(QWidget &ventana)
{
    ventana.show();
    QElapsedTimer limite;
    limite.start();
    while (!(ventana.windowHandle() && ventana.windowHandle()->isExposed()) && limite.elapsed() < 5000)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    QCoreApplication::processEvents();
}

//! 40 clicks on cells of tiers 10 and up that \a punto finds (tier, position), each until \a w
//! repaints; the median time of one.
template<typename Punto> double clicksEnPierna(QWidget *w, Pinturas &pinturas, int filas, int largo, Punto &&punto)
{
    const int visibles = std::min(filas, pantallaPierna.height() / 21 - 1);
    QRandomGenerator azar(11);
    std::vector<double> tiempos;
    Reloj reloj;
    for (int i = 0; i < 40; ++i) {
        const int t = 10 + int(azar.bounded(visibles - 9));
        const int p = 1 + int(azar.bounded(std::min(largo, pantallaPierna.width() / 21 - 2)));
        const std::optional<QPoint> en = punto(t, p);
        if (!en)
            continue;
        const int antes = pinturas.n;
        reloj.start();
        click(w, *en);
        if (esperarPintura(pinturas, antes))
            tiempos.push_back(reloj.ms());
    }
    std::sort(tiempos.begin(), tiempos.end());
    return tiempos.empty() ? NAN : tiempos[tiempos.size() / 2];
}

// 40 clicks on cells of tiers 10 and up that the frame shows, each with its repaint; the time of one.
double clickPiernaTarvonix(int filas, int largo)
{
    Marco marco;
    Raiz raiz;
    auto *vista = new PiernaX(&marco);
    marco.contenido = vista;
    vista->setRoot(&raiz);
    const auto leg = pierna(filas, largo);
    vista->setObjeto(leg);
    vista->setEscala(1);
    marco.resize(pantallaPierna);
    vista->move(0, std::min(0, pantallaPierna.height() - vista->height()));
    mostrar(marco);
    Pinturas pinturas;
    vista->installEventFilter(&pinturas);
    const GeometriaCeldas g(vista->height(), 1.0, false);
    return clicksEnPierna(vista, pinturas, filas, largo, [&](int t, int p) -> std::optional<QPoint> {
        if (!leg->getObjeto(qint16(t), qint16(p)))
            return std::nullopt;
        return g.celda(t, p).center().toPoint();
    });
}

double clickPiernaGV(int filas, int largo)
{
    const auto celdas = celdasGV(filas, largo);
    EscenaGV e(celdas);
    e.vista.setSceneRect(QRectF(0, filas * 21 - pantallaPierna.height(), pantallaPierna.width(),
                                pantallaPierna.height()));
    e.vista.resize(pantallaPierna);
    mostrar(e.vista);
    Pinturas pinturas;
    e.vista.viewport()->installEventFilter(&pinturas);
    return clicksEnPierna(e.vista.viewport(), pinturas, filas, largo, [&](int t, int p) -> std::optional<QPoint> {
        const Hijo &c = celdas[size_t(t - 1) * size_t(largo) + size_t(p - 1)];
        return e.vista.mapFromScene(QPointF(c.x + 12, c.y + 12));
    });
}

double pintarPiernaTarvonix(int filas, int largo)
{
    Marco marco;
    auto *vista = new PiernaX(&marco);
    vista->setObjeto(pierna(filas, largo));
    vista->setEscala(1);
    QImage imagen(pantallaPierna, QImage::Format_RGB32);
    const QRect parte(QPoint(0, vista->height() - pantallaPierna.height()), pantallaPierna);
    vista->render(&imagen, QPoint(), QRegion(parte));
    Reloj reloj;
    reloj.start();
    vista->render(&imagen, QPoint(), QRegion(parte));
    return reloj.ms();
}

double pintarPiernaGV(int filas, int largo)
{
    EscenaGV e(celdasGV(filas, largo), QRectF(0, filas * 21 - pantallaPierna.height(), pantallaPierna.width(),
                                             pantallaPierna.height()));
    return e.pintar(pantallaPierna);
}

// Distribution and alignment of every child, all selected.
double distribuirTarvonix(int n, bool alinear)
{
    EscenaTarvonix e(hijosAlAzar(n, QSize(30000, 20000), 5, 5));
    e.vista->seleccionarTodos();
    const ObjetoPtr referencia = e.padre->getObjetos()->Item(1);
    Reloj reloj;
    reloj.start();
    if (alinear)
        e.vista->alinearHorizontal(referencia);
    else
        e.vista->distribuirHorizontal();
    return reloj.ms();
}

double distribuirGV(int n, bool alinear)
{
    EscenaGV e(hijosAlAzar(n, QSize(30000, 20000), 5, 5));
    for (QAbstractGraphicsShapeItem *item : e.items)
        item->setSelected(true);
    Reloj reloj;
    reloj.start();
    QList<QGraphicsItem *> seleccion = e.escena.selectedItems();
    if (alinear) {
        const qreal y = e.items.front()->sceneBoundingRect().top();
        for (QGraphicsItem *item : seleccion)
            item->setY(item->y() + y - item->sceneBoundingRect().top());
        return reloj.ms();
    }
    // Sort, then place each one the same gap after the one before.
    std::sort(seleccion.begin(), seleccion.end(), [](QGraphicsItem *a, QGraphicsItem *b) {
        return a->sceneBoundingRect().left() < b->sceneBoundingRect().left();
    });
    qreal izquierda = 1e9, derecha = -1e9, total = 0;
    for (QGraphicsItem *item : seleccion) {
        const QRectF r = item->sceneBoundingRect();
        izquierda = std::min(izquierda, r.left());
        derecha = std::max(derecha, r.right());
        total += r.width();
    }
    const qreal hueco = (derecha - izquierda - total) / qreal(seleccion.size() - 1);
    qreal x = seleccion.front()->sceneBoundingRect().right();
    for (qsizetype i = 1; i + 1 < seleccion.size(); ++i) {
        QGraphicsItem *item = seleccion[i];
        const QRectF r = item->sceneBoundingRect();
        item->setX(item->x() + x + hueco - r.left());
        x = item->sceneBoundingRect().right();
    }
    return reloj.ms();
}

// Bytes the heap grows by per object of \a n built by \a construir.
template<typename F> double bytesPor(int n, F &&construir)
{
    malloc_trim(0);
    const size_t antes = mallinfo2().uordblks;
    auto guardado = construir(n);
    const size_t despues = mallinfo2().uordblks;
    return double(despues - antes) / n;
}

double memoriaTarvonix(int n)
{
    return bytesPor(n, [](int cuantos) {
        auto objetos = std::make_shared<Objetos>();
        for (int i = 0; i < cuantos; ++i) {
            auto o = std::make_shared<Objeto>();
            o->setCodigo(QStringLiteral("D%1").arg(i));
            o->setX(qint16(i % 300 * 10));
            o->setY(qint16(i / 300 * 10));
            o->setAncho(5);
            o->setAlto(5);
            objetos->add(o);
        }
        return objetos;
    });
}

double memoriaGV(int n)
{
    return bytesPor(n, [](int cuantos) {
        auto escena = std::make_unique<QGraphicsScene>();
        // Spread as the objects are: a scene of items all on one spot degenerates its index.
        for (int i = 0; i < cuantos; ++i)
            escena->addItem(new QGraphicsRectItem(i % 300 * 10, i / 300 * 10, 5, 5));
        escena->items(QPointF()); // the index takes them in
        return escena;
    });
}

struct Fila
{
    const char *nombre;
    int n; // the size the row is reported at; its exponent is measured from n / 10
    std::function<double(int)> tarvonix;
    std::function<double(int)> graphicsView;
    const char *unidad = "ms";
};

double exponente(double pequeno, double grande)
{
    return pequeno > 0 && grande > 0 ? std::log10(grande / pequeno) : NAN;
}

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const QString filtro = argc > 1 ? QString::fromLocal8Bit(argv[1]) : QString();
    // With a size, the rows are measured at that size only (for a profiler's instruction counts).
    const int tamano = argc > 2 ? QString::fromLocal8Bit(argv[2]).toInt() : 0;
    int errores = 0;
    setErrorHandler([&](const QString &mensaje) {
        if (++errores <= 5)
            std::fprintf(stderr, "error: %s\n", qPrintable(mensaje));
    });

    // The leg rows count cells: their tiers stay, their positions grow with N.
    const std::vector<Fila> filas = {
        { "paint 1280x800, all children in view", 10000,
          [](int n) { return mediana([n] { return pintarTodoTarvonix(n); }).ms; },
          [](int n) { return mediana([n] { return pintarTodoGV(n); }).ms; } },
        { "paint 1280x800, ~100 children in view", 10000,
          [](int n) { return mediana([n] { return pintarParteTarvonix(n); }).ms; },
          [](int n) { return mediana([n] { return pintarParteGV(n); }).ms; } },
        { "click until the host hears it", 100000,
          [](int n) { return mediana([n] { return clickTarvonix(n); }).ms; },
          [](int n) { return mediana([n] { return clickGV(n); }).ms; } },
        { "rubber band selecting half", 100000,
          [](int n) { return mediana([n] { return bandaTarvonix(n, false); }).ms; },
          [](int n) { return mediana([n] { return bandaGV(n, false); }).ms; } },
        { "Ctrl + rubber band deselecting half", 100000,
          [](int n) { return mediana([n] { return bandaTarvonix(n, true); }).ms; },
          [](int n) { return mediana([n] { return bandaGV(n, true); }).ms; } },
        { "leg 40x250: click + repaint, tiers 10 and up", 10000,
          [](int n) { return mediana([n] { return clickPiernaTarvonix(40, n / 40); }).ms; },
          [](int n) { return mediana([n] { return clickPiernaGV(40, n / 40); }).ms; } },
        { "leg 50x400: paint of a 1920x1080 view", 20000,
          [](int n) { return mediana([n] { return pintarPiernaTarvonix(50, n / 50); }).ms; },
          [](int n) { return mediana([n] { return pintarPiernaGV(50, n / 50); }).ms; } },
        { "distribuirHorizontal, all selected", 100000,
          [](int n) { return mediana([n] { return distribuirTarvonix(n, false); }).ms; },
          [](int n) { return mediana([n] { return distribuirGV(n, false); }).ms; } },
        { "alinearHorizontal, all selected", 100000,
          [](int n) { return mediana([n] { return distribuirTarvonix(n, true); }).ms; },
          [](int n) { return mediana([n] { return distribuirGV(n, true); }).ms; } },
        { "memory per plain object in its collection", 100000, memoriaTarvonix, memoriaGV, "B" },
    };

    std::printf("Tarvonix against QGraphicsView (%s build, Qt %s, platform %s); median of %d runs\n\n",
#ifdef NDEBUG
                "release",
#else
                "debug",
#endif
                qVersion(), qPrintable(QGuiApplication::platformName()), repeticiones);
    std::printf("| work | N | Tarvonix | Graphics View | ratio | exponent Tarvonix | exponent Graphics View |\n");
    std::printf("|---|---:|---:|---:|---:|---:|---:|\n");
    for (const Fila &fila : filas) {
        if (!filtro.isEmpty() && !QString::fromUtf8(fila.nombre).contains(filtro, Qt::CaseInsensitive))
            continue;
        const bool memoria = std::string(fila.unidad) == "B";
        const int n = tamano > 0 ? tamano : fila.n;
        const double t = fila.tarvonix(n);
        const double g = fila.graphicsView(n);
        char expT[16] = "-", expG[16] = "-";
        if (!memoria && tamano == 0) {
            std::snprintf(expT, sizeof expT, "%.2f", exponente(fila.tarvonix(fila.n / 10), t));
            std::snprintf(expG, sizeof expG, "%.2f", exponente(fila.graphicsView(fila.n / 10), g));
        }
        const char *formato = memoria ? "| %s | %d | %.0f %s | %.0f %s | %.2fx | %s | %s |\n"
                                      : "| %s | %d | %.3f %s | %.3f %s | %.2fx | %s | %s |\n";
        std::printf(formato, fila.nombre, n, t, fila.unidad, g, fila.unidad, t / g, expT, expG);
        std::fflush(stdout);
    }
    if (errores)
        std::printf("\n%d errors reported\n", errores);
    return errores == 0 ? 0 : 1;
}

#include "bench_comparado.moc"
