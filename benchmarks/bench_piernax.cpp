// SPDX-License-Identifier: MIT
// Times the leg view on a large leg: a full paint, and bursts of clicks with
// the repaint that each one causes. Runs on the offscreen platform unless
// another one is asked for; build it in the release preset for meaningful
// numbers:
//
//   cmake --preset release && cmake --build --preset release --target bench_piernax
//   build/release/bin/bench_piernax [tiers] [positions]

#include <tarvonix/tarvonix.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QMouseEvent>
#include <QRandomGenerator>
#include <QWindow>

#include <algorithm>
#include <cstdio>
#include <vector>

using namespace tarvonix;

namespace {

// What a frame does for the control it holds: answers by name, and marks
// the active object back on the control, unmarking the one before.
class Marco : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(bool pActive READ pActive)

public:
    bool pActive() const { return true; }
    Q_INVOKABLE tarvonix::ObjetoPtr setActive(const tarvonix::ObjetoPtr &obj)
    {
        if (contenido && activo && obj && activo->getCodigo() != obj->getCodigo())
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

    IContenedorX *contenido = nullptr;
    ObjetoPtr activo;
};

class Mapa : public IMapaX
{
public:
    void clicked(const ObjetoPtr &, bool) override { ++llamadas; }
    void rightClicked(const ObjetoPtr &, bool) override { ++llamadas; }
    void droped(const QString &, const ObjetoPtr &, qint32) override { ++llamadas; }
    void moved(const ObjetoPtr &) override { }
    void setActive(const ObjetoPtr &, IContenedorX *, qint16) override { }
    void ensureVisible(QWidget *) override { }
    void remove(const ObjetoPtr &) override { }
    int llamadas = 0;
};

std::shared_ptr<Pierna> piernaLlena(int filas, int largo)
{
    auto leg = std::make_shared<Pierna>();
    leg->setCodigo(QStringLiteral("P01"));
    leg->setClasica(false);
    leg->setLinea(10);
    leg->setEscalas(qint16(filas));
    const qint32 colores[] = { 0x00FF00, 0x0000FF, 0xFF0000, 0x00FFFF, 0xFFFFFF, 0x808080 };
    for (int t = 1; t <= filas; ++t) {
        leg->setEscala(qint16(t), qint16(largo));
        for (int p = 1; p <= largo; ++p) {
            if ((t * 7 + p) % 11 == 0)
                continue; // some empty positions
            auto lote = std::make_shared<Lote>();
            lote->setCodigo(QStringLiteral("L%1.%2").arg(t).arg(p));
            lote->setForma(qint16((t + p) % 5 == 0 ? 2 : 1));
            lote->setColor(colores[(t + p) % 6]);
            lote->setTip(QString::number(p % 100));
            lote->setPadre(leg->getUbicacion(qint16(t), qint16(p))->getCodigo());
            lote->setSeleccionado((t + p) % 13 == 0);
            leg->setObjeto(qint16(t), qint16(p), lote);
        }
    }
    return leg;
}

// Counts the paints of a widget, so that a timing can wait for the repaint it caused.
class Pintura : public QObject
{
public:
    int pinturas = 0;
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Paint)
            ++pinturas;
        return false;
    }
};

Pintura *pintura = nullptr;

// Runs the event loop until the leg view has been painted since \a antes; false after 200 ms without.
bool esperarPintura(int antes)
{
    QElapsedTimer limite;
    limite.start();
    while (pintura->pinturas == antes && limite.elapsed() < 200)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 1);
    return pintura->pinturas != antes;
}

struct Medida
{
    double minimo, mediana, maximo;
};

Medida resumir(std::vector<double> ms)
{
    std::sort(ms.begin(), ms.end());
    return { ms.front(), ms[ms.size() / 2], ms.back() };
}

void informar(const char *que, const Medida &m)
{
    std::printf("  %-64s min %8.2f  median %8.2f  max %8.2f ms\n", que, m.minimo, m.mediana, m.maximo);
}

void pulsar(QWidget *w, QPoint pos, Qt::MouseButton boton, Qt::KeyboardModifiers mods)
{
    const QPointF global = w->mapToGlobal(QPointF(pos));
    QMouseEvent press(QEvent::MouseButtonPress, QPointF(pos), global, boton, boton, mods);
    QCoreApplication::sendEvent(w, &press);
    QMouseEvent release(QEvent::MouseButtonRelease, QPointF(pos), global, boton, Qt::NoButton, mods);
    QCoreApplication::sendEvent(w, &release);
}

// Clicks on random cells, each followed by the repaint it causes, as a person sees it.
// Clicks that caused no repaint (a click on an empty position after one, say) are counted, not timed.
Medida rafaga(PiernaX *vista, const std::shared_ptr<Pierna> &leg, int clicks, Qt::KeyboardModifiers mods,
              int primeraFila, int ultimaFila, int ultimaColumna, int &sinPintura)
{
    QRandomGenerator azar(42);
    const int filas = std::min<int>(ultimaFila, leg->getFilas());
    const int largo = std::min<int>(ultimaColumna, leg->getLargo(1));
    std::vector<double> tiempos;
    sinPintura = 0;
    QElapsedTimer reloj;
    for (int i = 0; i < clicks; ++i) {
        const int t = primeraFila + int(azar.bounded(filas - primeraFila + 1));
        const int p = 1 + int(azar.bounded(largo));
        const GeometriaCeldas g(vista->height(), 1.0, leg->getClasica());
        const QPoint centro = g.celda(t, p).center().toPoint();
        const int antes = pintura->pinturas;
        reloj.start();
        pulsar(vista, centro, Qt::LeftButton, mods);
        if (esperarPintura(antes)) // the repaint of what the click changed
            tiempos.push_back(reloj.nsecsElapsed() / 1e6);
        else
            ++sinPintura;
    }
    if (tiempos.empty())
        tiempos.push_back(0);
    return resumir(tiempos);
}

template<typename F> Medida medir(int veces, F &&f)
{
    std::vector<double> tiempos;
    QElapsedTimer reloj;
    for (int i = 0; i < veces; ++i) {
        reloj.start();
        f();
        tiempos.push_back(reloj.nsecsElapsed() / 1e6);
    }
    return resumir(tiempos);
}

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const int filas = argc > 1 ? std::max(1, std::atoi(argv[1])) : 40;
    const int largo = argc > 2 ? std::max(1, std::atoi(argv[2])) : 250;
    int errores = 0;
    setErrorHandler([&](const QString &mensaje) {
        if (++errores <= 5)
            std::fprintf(stderr, "error: %s\n", qPrintable(mensaje));
    });

    Mapa mapa;
    Marco marco;
    marco.setObjectName(QStringLiteral("P01"));
    auto *vista = new PiernaX(&marco);
    marco.contenido = vista;
    QElapsedTimer reloj;
    reloj.start();
    const auto leg = piernaLlena(filas, largo);
    const double construir = reloj.nsecsElapsed() / 1e6;
    reloj.start();
    vista->setRoot(&mapa);
    vista->setObjeto(leg);
    vista->setEscala(1.0f);
    const double colocar = reloj.nsecsElapsed() / 1e6;
    std::printf("Leg of %d tiers x %d positions; control %d x %d pixels (%s, Qt %s, platform %s)\n", filas,
                largo, vista->width(), vista->height(),
#ifdef NDEBUG
                "release",
#else
                "debug",
#endif
                qVersion(), qPrintable(QGuiApplication::platformName()));
    std::printf("  %-64s %8.2f ms\n", "build the leg (host side)", construir);
    std::printf("  %-64s %8.2f ms\n", "setRoot + setObjeto + setEscala (layout)", colocar);

    // Full paint of the whole control, strips included.
    informar("full paint via grab(), 20 runs", medir(20, [&] { (void)vista->grab(); }));
    vista->setEscala(2.0f);
    informar("full paint via grab() at scale 2.0, 10 runs", medir(10, [&] { (void)vista->grab(); }));
    vista->setEscala(1.0f);
    {
        const auto sinTexto = piernaLlena(filas, largo);
        for (const ObjetoPtr &obj : *sinTexto->getObjetos())
            obj->setTip(QString());
        PiernaX otra(&marco);
        otra.setObjeto(sinTexto);
        informar("full paint via grab(), no tip texts, 10 runs", medir(10, [&] { (void)otra.grab(); }));
    }

    // Clicks in a frame-sized window that shows the bottom-left corner of the grid
    // (tiers 1 to 27, positions 1 to 37), each with the repaint it causes.
    marco.resize(800, 600);
    vista->move(0, std::min(0, 600 - vista->height()));
    marco.show();
    Pintura contador;
    pintura = &contador;
    vista->installEventFilter(&contador);
    QElapsedTimer expuesto;
    expuesto.start();
    while (!(marco.windowHandle() && marco.windowHandle()->isExposed()) && expuesto.elapsed() < 5000)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    esperarPintura(0);
    int sin = 0;
    const auto rafagaInforme
        = [&](const char *que, int clicks, Qt::KeyboardModifiers mods, int f0, int f1, int c1) {
              const Medida m = rafaga(vista, leg, clicks, mods, f0, f1, c1, sin);
              char texto[120];
              std::snprintf(texto, sizeof texto, "%s, %d clicks (%d without repaint)", que, clicks, sin);
              informar(texto, m);
          };
    rafagaInforme("click + repaint, 800x600 view, tiers 1-9", 200, {}, 1, 9, 37);
    rafagaInforme("Ctrl-click + repaint, 800x600 view, tiers 1-9", 200, Qt::ControlModifier, 1, 9, 37);
    rafagaInforme("click + repaint, 800x600 view, tiers 10-27", 100, {}, 10, 27, 37);

    // The whole control on screen: the worst case for every repaint.
    vista->move(0, 0);
    marco.resize(vista->size());
    esperarPintura(contador.pinturas);
    rafagaInforme("click + repaint, whole control, tiers 1-9", 200, {}, 1, 9, 9999);
    rafagaInforme("click + repaint, whole control, tiers 10-40", 100, {}, 10, 9999, 9999);

    // Selection of everything and back, with their repaints.
    std::vector<double> todos, ninguno;
    for (int i = 0; i < 5; ++i) {
        int antes = contador.pinturas;
        reloj.start();
        vista->seleccionarTodos();
        esperarPintura(antes);
        todos.push_back(reloj.nsecsElapsed() / 1e6);
        antes = contador.pinturas;
        reloj.start();
        vista->deseleccionarTodos();
        esperarPintura(antes);
        ninguno.push_back(reloj.nsecsElapsed() / 1e6);
    }
    informar("seleccionarTodos + repaint, whole control shown, 5 runs", resumir(todos));
    informar("deseleccionarTodos + repaint, whole control shown, 5 runs", resumir(ninguno));
    std::printf("  paints counted %d\n", contador.pinturas);

    std::printf("  root calls %d, reported errors %d\n", mapa.llamadas, errores);
    return errores == 0 ? 0 : 1;
}

#include "bench_piernax.moc"
