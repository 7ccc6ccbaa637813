// SPDX-License-Identifier: MIT
// A random host and a random user on a real map. From a seed it builds a site with every kind of
// root, then runs steps: host calls with good and bad arguments, gestures through real events, and
// host handlers that call back into the map while the event is delivered. After every step it
// checks what must always hold; on a failure it prints the seed and the shortest list of steps it
// can cut the run down to. By hand: tst_driver --steps N --seed S [--replay i,j,...].

#include <tarvonix/map/framex.h>
#include <tarvonix/map/mapax.h>
#include <tarvonix/model/deposito.h>
#include <tarvonix/model/imagenes.h>
#include <tarvonix/model/lote.h>
#include <tarvonix/model/pierna.h>
#include <tarvonix/model/ubicacion.h>
#include <tarvonix/views/vistax.h>
#include <tarvonix/widgets/dummy.h>

#include "dragdriver.h"
#include "errorcatcher.h"
#include "naves.h"

#include <QApplication>
#include <QEventLoop>
#include <QImage>
#include <QPointer>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <csignal>
#include <cstdio>
#include <functional>
#include <random>

using namespace tarvonix;
using namespace Qt::StringLiterals;

namespace {

QString g_imagen; // a picture file for the objects that show one
quint64 g_semilla = 0;
int g_paso = -1; // the step running, for the report of a crash
bool g_contar = false; // say each step, when replaying

struct Driver
{
    std::mt19937 rng;
    ErrorCatcher errors;
    QWidget ventana;
    MapaX *mapa = new MapaX(&ventana);
    DragDriver drag;
    std::vector<ObjetoPtr> raices;
    int nuevas = 0;
    bool gesto = false; // a user's gesture: nothing in it may fail

    int n(int hasta) { return hasta > 0 ? int(rng() % unsigned(hasta)) : 0; }
    bool moneda(int en = 2) { return n(en) == 0; }
    template<typename T> T de(const std::vector<T> &v) { return v.at(size_t(n(int(v.size())))); }

    ObjetoPtr hijo(const QString &codigo, const QString &padre)
    {
        ObjetoPtr o
            = moneda(3) ? ObjetoPtr(std::make_shared<Deposito>()) : ObjetoPtr(std::make_shared<Lote>());
        o->setCodigo(codigo);
        o->setPadre(padre);
        o->setX(qint16(n(400)));
        o->setY(qint16(n(250)));
        o->setAncho(qint16(4 + n(90)));
        o->setAlto(qint16(4 + n(60)));
        o->setForma(qint16(n(6) - 1)); // the four shapes and two no shape knows
        o->setColor(de<qint32>({ 0xFFFFFF, 0x000000, 0x1F1F8C, qint32(rng() & 0xFFFFFF) }));
        if (moneda(4)) {
            auto imagenes = std::make_shared<Imagenes>(); // the object keeps its picture alive
            o->setImagen(imagenes->add(1, g_imagen));
        }
        return o;
    }
    ObjetoPtr raiz(bool pierna)
    {
        const QString codigo = QString::number(++nuevas);
        ObjetoPtr r;
        if (pierna) {
            auto p = std::make_shared<Pierna>();
            p->setCodigo(codigo);
            p->setClasica(moneda());
            p->setEscalas(qint16(1 + n(4))); // the view reads tier 1 of every leg
            for (qint16 e = 1; e <= p->getFilas(); ++e) {
                p->setEscala(e, qint16(n(14)));
                for (qint16 q = 1; q <= p->getLargo(e); ++q) {
                    if (moneda(3))
                        p->setObjeto(e, q,
                                     hijo(u"%1-%2-%3"_s.arg(codigo).arg(e).arg(q),
                                          p->getUbicacion(e, q)->getCodigo()));
                }
            }
            r = p;
        } else {
            r = naves::nave(codigo, u"N"_s, false, {});
            for (int i = n(9); i > 0; --i)
                r->getObjetos()->add(hijo(u"%1.%2"_s.arg(codigo).arg(i), codigo));
            if (moneda(3)) { // a child that holds others
                ObjetoPtr caja = naves::nave(codigo + u"C"_s, u"C"_s);
                caja->setPadre(codigo);
                r->getObjetos()->add(caja);
            }
        }
        if (moneda()) {
            r->setReferencias(std::make_shared<Referencias>());
            for (int i = n(4); i > 0; --i)
                r->getReferencias()->add(u"K%1"_s.arg(i), u"Clave %1"_s.arg(i), qint32(rng() & 0xFFFFFF));
        }
        raices.push_back(r);
        return r;
    }

    explicit Driver(quint64 semilla)
        : rng(unsigned(semilla))
    {
        for (int i = 0; i < 5; ++i)
            mapa->add(raiz(i >= 3));
        for (const ObjetoPtr &r : raices)
            mapa->show(r);
        ventana.resize(720, 520);
        mapa->resize(720, 520);
        ventana.show();
        // The host answers what the user does by calling back into the map, now and then, with any
        // host call of the table: what fails then is the host's doing.
        const auto responder = [this] {
            if (moneda(3))
                hacer(true);
        };
        QObject::connect(mapa, &MapaX::Click, mapa, responder);
        QObject::connect(mapa, &MapaX::RightClick, mapa, responder);
        QObject::connect(mapa, &MapaX::Enter, mapa, responder);
        QObject::connect(mapa, &MapaX::moved, mapa, responder);
        QObject::connect(mapa, &MapaX::Drop, mapa, responder);
    }

    // Something the host might pass: mostly the roots, sometimes none, a stranger or a namesake.
    ObjetoPtr cualquiera()
    {
        switch (n(8)) {
        case 0:
            return nullptr;
        case 1:
            return raiz(moneda());
        case 2: { // a namesake of the same kind (a leg's frame shows legs only), with no children
            const ObjetoPtr r = de(raices);
            if (r->getTipo() != u"P"_s)
                return naves::nave(r->getCodigo(), de<QString>({ u"N"_s, u"X"_s }), false, {});
            auto otra = std::make_shared<Pierna>();
            otra->setCodigo(r->getCodigo());
            otra->setEscalas(1);
            return otra;
        }
        default:
            return de(raices);
        }
    }
    // A visible widget of the map to point at: mostly a view, unless any will do.
    QWidget *blanco(bool soloVistas = false)
    {
        soloVistas = soloVistas && !moneda(5);
        std::vector<QWidget *> todos { mapa };
        for (QWidget *w : mapa->findChildren<QWidget *>())
            if (w->isVisible() && (!soloVistas || qobject_cast<VistaX *>(w)))
                todos.push_back(w);
        return todos.size() > 1 ? todos.at(size_t(1 + n(int(todos.size()) - 1))) : mapa;
    }
    QPoint punto(QWidget *w)
    {
        if (auto *vista = qobject_cast<VistaX *>(w); vista && moneda()) {
            if (auto objetos = vista->getObjeto() ? vista->getObjeto()->getObjetos() : nullptr;
                objetos && objetos->count())
                if (ObjetoPtr o = objetos->Item(1 + n(objetos->count())))
                    return QPoint(o->getX() + 2 + o->getAncho() / 2, o->getY() + 2 + o->getAlto() / 2);
        }
        return QPoint(n(w->width()), n(w->height())); // a press lands on the widget under the pointer
    }
    QString nombre()
    {
        const QStringList nombres = mapa->controlNames();
        return nombres.at(n(int(nombres.size())));
    }
    Qt::KeyboardModifiers teclas()
    {
        return Qt::KeyboardModifiers(de<int>({ 0, 0, Qt::ShiftModifier, Qt::ControlModifier, Qt::AltModifier,
                                               Qt::ShiftModifier | Qt::ControlModifier }));
    }

    // Press, drag past the threshold and, if a drag started, wander over the map and drop or give up.
    void arrastre(QWidget *desde, bool titulo)
    {
        QPointer<QWidget> w = desde;
        const QPoint p = titulo ? QPoint(10 + n(30), 8) : punto(desde);
        const Qt::KeyboardModifiers mods = teclas();
        QTest::mousePress(w, Qt::LeftButton, mods, p);
        if (w)
            naves::arrastrar(w, p + QPoint(12 + n(20), 12 + n(20)), mods);
        if (w && !drag.dragging())
            QTest::mouseRelease(w, Qt::LeftButton, mods, p + QPoint(20, 20)); // a rubber band ends
        if (!drag.dragging())
            return;
        for (int i = n(4); i > 0; --i)
            if (QPointer<QWidget> sobre = titulo ? mapa : blanco(true))
                drag.move(sobre, punto(sobre), moneda() ? Qt::ShiftModifier : teclas());
        Qt::DropAction hecho = Qt::IgnoreAction;
        if (QPointer<QWidget> sobre = titulo ? mapa : blanco(true); sobre && !moneda(5))
            hecho = drag.drop(sobre, punto(sobre), moneda() ? Qt::ShiftModifier : teclas());
        drag.finish(hecho);
    }

    void hacer(bool soloHost);
    void comprobar(bool gestoTerminado);
};

// Lets the map's timer tick, as a host's own wait would. Not QTest::qWait: it deletes what the map let go
// of with deleteLater() even inside a handler, which no event loop does while the event is delivered.
void esperar(int ms)
{
    QEventLoop bucle;
    QTimer::singleShot(ms, &bucle, &QEventLoop::quit);
    bucle.exec();
}

enum Clase { Host, HostOutsideHandlers, Gesture };
struct Paso
{
    const char *nombre;
    int peso;
    Clase clase;
    std::function<void(Driver &)> hacer;
};

// The step table: host calls first, then the user's gestures. A handler does not start a drag of its own
// inside the user's.
// A row per step reads better than clang-format's layout of lambdas.
// clang-format off
const std::vector<Paso> &pasos()
{
    static const std::vector<Paso> tabla{
        {"add", 3, Host, [](Driver &d) { d.mapa->add(d.cualquiera()); }},
        {"remove", 2, Host, [](Driver &d) { d.mapa->remove(d.cualquiera()); }},
        {"remove the active frame", 2, Host, [](Driver &d) { if (d.mapa->getFrame()) d.mapa->remove(d.mapa->getFrame()); }},
        {"removeAll", 1, Host, [](Driver &d) { if (d.moneda(8)) d.mapa->removeAll(); }},
        {"show", 4, Host, [](Driver &d) { d.mapa->show(d.cualquiera()); }},
        {"hide", 1, Host, [](Driver &d) { d.mapa->hide(d.cualquiera()); }},
        {"setObjeto", 2, Host, [](Driver &d) { d.mapa->setObjeto(d.cualquiera()); }},
        {"Refresh", 1, Host, [](Driver &d) { d.mapa->Refresh(d.cualquiera()); }},
        {"legend", 2, Host, [](Driver &d) {
             d.moneda() ? d.mapa->ShowReferences() : d.moneda() ? d.mapa->references() : d.mapa->remove(nullptr); }},
        // Scales and fonts no one could use are tried, then taken back: what they break is the host's doing.
        {"setEscala", 2, Host, [](Driver &d) {
             const ObjetoPtr r = d.cualquiera();
             d.mapa->setEscala(r, d.de<float>({0.f, -2.f, 1e6f, float(qQNaN())}));
             d.mapa->setEscala(r, d.de<float>({0.25f, 0.5f, 1.f, 1.5f, 3.f})); }},
        {"layout", 2, Host, [](Driver &d) {
             QMetaObject::invokeMethod(d.mapa, d.de<const char *>({"alinearHorizontal", "alinearVertical",
                 "igualarDimension", "distribuirHorizontal", "distribuirVertical"}));
             esperar(15); }},
        {"select", 4, Host, [](Driver &d) {
             const ObjetoPtr r = d.cualquiera();
             const auto hijos = r && !d.moneda(4) ? r->getObjetos() : nullptr;
             if (d.moneda(3))
                 d.moneda() ? d.mapa->seleccionarTodos(r) : d.mapa->deseleccionarTodos(r);
             else
                 d.mapa->seleccionar(r, hijos && hijos->count() ? hijos->Item(1 + d.n(hijos->count()))->getCodigo() : u"?"_s); }},
        {"setBloqueo", 1, Host, [](Driver &d) { d.mapa->setBloqueo(d.moneda(3)); }},
        {"host move", 1, HostOutsideHandlers, [](Driver &d) {
             QPointer<QWidget> w = d.moneda(4) ? nullptr : d.mapa->control(d.nombre());
             d.mapa->startMove(w);
             if (d.drag.dragging() && !d.moneda(3))
                 d.drag.drop(d.mapa, d.punto(d.mapa));
             d.drag.finish(Qt::MoveAction);
             if (d.moneda(3))
                 d.mapa->completeMove(w); }},
        {"look", 1, Host, [](Driver &d) {
             d.mapa->setFontName(d.de<QString>({u""_s, u"Sans"_s, u"???"_s}));
             d.mapa->setFontSize(qint16(-d.n(10)));
             d.mapa->setFontSize(qint16(6 + d.n(30)));
             d.mapa->setBackColor(d.de<qint32>({0xF4F0EC, 0, qint32(0x80000005), -1})); }},
        {"callbacks", 1, Host, [](Driver &d) {
             d.mapa->IMapaX_clicked(d.cualquiera(), d.moneda());
             d.mapa->IMapaX_Droped(d.nombre(), d.cualquiera(), d.n(8));
             d.mapa->IMapaX_Moved(d.cualquiera()); }},
        {"host moves a child", 2, Host, [](Driver &d) {
             const ObjetoPtr r = d.de(d.raices);
             if (const auto hijos = r->getObjetos(); hijos->count()) {
                 const ObjetoPtr o = hijos->Item(1 + d.n(hijos->count()));
                 o->setX(qint16(d.n(500)));
                 o->setAncho(qint16(d.n(120)));
                 o->setForma(qint16(d.n(6) - 1));
             }
             d.mapa->Refresh(d.moneda() ? r : nullptr); }},
        {"resize", 1, Gesture, [](Driver &d) {
             const QSize s = d.moneda(4) ? QSize(d.n(40), d.n(40)) : QSize(200 + d.n(900), 150 + d.n(600));
             d.ventana.resize(s);
             d.mapa->resize(s); }},
        {"click", 8, Gesture, [](Driver &d) {
             QPointer<QWidget> w = d.blanco(true);
             const QPoint p = d.punto(w);
             const auto boton = d.de<Qt::MouseButton>({Qt::LeftButton, Qt::LeftButton, Qt::RightButton, Qt::MiddleButton});
             const Qt::KeyboardModifiers mods = d.teclas();
             if (d.moneda(6))
                 QTest::mouseDClick(w, boton, mods, p);
             QTest::mousePress(w, boton, mods, p);
             if (w)
                 QTest::mouseRelease(w, boton, mods, p); }},
        {"drag", 6, Gesture, [](Driver &d) { d.arrastre(d.blanco(true), false); }},
        {"frame by its title", 3, Gesture, [](Driver &d) {
             const QList<QWidget *> titulos = d.mapa->findChildren<QWidget *>(u"titulo"_s);
             if (!titulos.isEmpty())
                 d.arrastre(titulos.at(d.n(int(titulos.size()))), true); }},
        {"button", 2, Gesture, [](Driver &d) {
             QList<QWidget *> botones = d.mapa->findChildren<QWidget *>(d.moneda() ? u"mini"_s : u"cerrar"_s);
             if (botones.isEmpty())
                 return;
             QPointer<QWidget> boton = botones.at(d.n(int(botones.size())));
             QTest::mousePress(boton, Qt::LeftButton, {}, QPoint(5, 5));
             if (boton)
                 QTest::mouseRelease(boton, Qt::LeftButton, {}, QPoint(5, 5)); }},
        {"key", 3, Gesture, [](Driver &d) {
             QWidget *w = QApplication::focusWidget() && d.moneda() ? QApplication::focusWidget() : d.mapa;
             QTest::keyClick(w, d.de<Qt::Key>({Qt::Key_Return, Qt::Key_Enter, Qt::Key_Menu, Qt::Key_Escape,
                                               Qt::Key_Delete, Qt::Key_Left, Qt::Key_Tab, Qt::Key_A}), d.teclas()); }},
        {"wait", 1, Gesture, [](Driver &) { esperar(12); }},
    };
    return tabla;
}
// clang-format on

// Runs one step of the table, drawn by weight; for a host handler, one of the host's calls.
void Driver::hacer(bool soloHost)
{
    int total = 0;
    for (const Paso &p : pasos())
        total += p.clase != Host && soloHost ? 0 : p.peso;
    int elegido = n(total);
    for (const Paso &p : pasos()) {
        if (!(p.clase != Host && soloHost) && (elegido -= p.peso) < 0) {
            gesto = p.clase == Gesture;
            if (g_contar)
                fprintf(stderr, "step %d: %s\n", g_paso, p.nombre);
            p.hacer(*this);
            return;
        }
    }
}

// What must hold between steps.
void Driver::comprobar(bool gestoTerminado)
{
    const auto fallar = [](const QString &que) {
        throw que;
    };
    static const QRegularExpression etiqueta(u"^[A-Za-z]\\w*(\\.\\w+)+->\\S"_s);
    for (const QString &m : errors.messages()) {
        if (!etiqueta.match(m).hasMatch())
            fallar(u"a failure without its label: "_s + m);
        // Layouts run on the map's timer, whatever step is on: their failures are the request's. A
        // Shift-click rectangle over an empty cell of a leg fails by design.
        if (gesto && !m.startsWith(u"MapaX.thread.Timer->"_s) && !m.contains(u".IContenedorX_"_s)
            && !m.startsWith(u"PiernaX.selectRectangle->"_s))
            fallar(u"a gesture failed: "_s + m);
    }
    errors.clear();
    QStringList nombres;
    for (const QString &nombre : mapa->controlNames().mid(1)) {
        if (nombres.contains(nombre, Qt::CaseInsensitive))
            fallar(u"two frames named "_s + nombre);
        nombres << nombre;
        QWidget *control = mapa->control(nombre);
        if (!control->isEnabled())
            fallar(nombre + u" left disabled"_s);
        auto *frame = qobject_cast<FrameX *>(control);
        auto *vista = frame ? frame->findChild<VistaX *>(u"conten"_s) : nullptr;
        const ObjetoPtr raiz = frame ? frame->getObjeto() : nullptr;
        if (!vista || !raiz)
            continue;
        const auto elegidos = vista->getSeleccionados();
        for (const ObjetoPtr &o : raiz->getObjetos()->NewEnum())
            if (o->getSeleccionado()
                != (elegidos->contains(o->getCodigo()) && elegidos->Item(o->getCodigo()) == o))
                fallar(u"%1: %2 is %3selected, its frame says otherwise"_s.arg(
                    nombre, o->getCodigo(), o->getSeleccionado() ? u""_s : u"not "_s));
    }
    if (const ObjetoPtr activo = mapa->getFrame()) {
        auto *frame = qobject_cast<FrameX *>(mapa->control(activo->getTipo() + activo->getCodigo()));
        if (!frame || frame->getObjeto() != activo)
            fallar(u"the active frame "_s + activo->getCodigo() + u" is not on the map"_s);
    }
    if (gestoTerminado) {
        if (mapa->control(u"caja"_s))
            fallar(u"a frame's outline left behind"_s);
        for (Dummy *caja : mapa->findChildren<Dummy *>())
            if (caja->isVisible()
                && qobject_cast<VistaX *>(caja->parentWidget())) // the scroll bars' corner is one too
                fallar(u"an outline box left behind in "_s + caja->parentWidget()->objectName());
    }
}

// Runs \a lista of steps of the run \a semilla on a new site; answers the failure, or nothing. The steps
// run inside an event loop, as a host's code does: what the map deletes later is not deleted by a wait
// that a step or a handler makes, only when the step is over.
QString correr(quint64 semilla, const std::vector<int> &lista, int *fallido = nullptr)
{
    Driver d(semilla);
    QString fallo;
    QEventLoop bucle;
    QTimer::singleShot(0, &bucle, [&] {
        try {
            d.comprobar(true);
            for (int paso : lista) {
                g_paso = paso;
                d.rng.seed(unsigned(semilla * 2654435761u)
                           ^ unsigned(paso) * 40503u); // each step its own seed
                d.hacer(false);
                QCoreApplication::processEvents();
                naves::flushDeletes();
                d.comprobar(true);
            }
        } catch (const QString &texto) {
            fallo = texto;
        } catch (const Error &e) {
            fallo = u"a failure reached the host: "_s + e.description();
        }
        if (fallido && !fallo.isEmpty())
            *fallido = g_paso;
        bucle.quit();
    });
    bucle.exec();
    return fallo;
}

void alMorir(int senal)
{
    fprintf(stderr, "tst_driver: signal %d at step %d of seed %llu\n", senal, g_paso,
            (unsigned long long)g_semilla);
    std::signal(senal, SIG_DFL);
    std::raise(senal);
}

} // namespace

int main(int argc, char *argv[])
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const QStringList args = app.arguments();
    const auto opcion = [&args](const QString &nombre, const QString &porDefecto) {
        const qsizetype i = args.indexOf(nombre);
        return i >= 0 && i + 1 < args.size() ? args.at(i + 1) : porDefecto;
    };
    const int total = opcion(u"--steps"_s, u"2000"_s).toInt();
    g_semilla = opcion(u"--seed"_s, u"12"_s).toULongLong();
    std::vector<int> lista;
    for (const QString &i : opcion(u"--replay"_s, {}).split(u',', Qt::SkipEmptyParts))
        lista.push_back(i.toInt());
    g_contar = args.contains(u"--replay"_s);
    for (int i = 0; !g_contar && i < total; ++i)
        lista.push_back(i);
    for (int senal : { SIGSEGV, SIGABRT, SIGFPE, SIGILL })
        std::signal(senal, alMorir);
    QTemporaryDir carpeta;
    g_imagen = carpeta.filePath(u"dibujo.png"_s);
    QImage dibujo(24, 24, QImage::Format_RGB32);
    dibujo.fill(Qt::darkCyan), dibujo.save(g_imagen);

    int fallido = -1;
    const QString fallo = correr(g_semilla, lista, &fallido);
    g_contar = false;
    if (fallo.isEmpty()) {
        printf("tst_driver: %zu steps of seed %llu, nothing wrong\n", lista.size(),
               (unsigned long long)g_semilla);
        return 0;
    }
    // Cut the run down: drop ever smaller runs of steps while the same kind of failure remains.
    lista.resize(size_t(std::find(lista.begin(), lista.end(), fallido) - lista.begin()) + 1);
    const QString clase = fallo.section(u':', 0, 0);
    int intentos = 0;
    for (size_t trozo = lista.size() / 2; trozo >= 1 && intentos < 400; trozo /= 2) {
        for (size_t i = 0; i + 1 < lista.size() && intentos < 400;) {
            std::vector<int> menos(lista.begin(), lista.begin() + qsizetype(i));
            menos.insert(menos.end(), lista.begin() + qsizetype(std::min(i + trozo, lista.size() - 1)),
                         lista.end());
            ++intentos;
            if (menos.size() < lista.size() && correr(g_semilla, menos).section(u':', 0, 0) == clase)
                lista = menos;
            else
                i += trozo;
        }
    }
    QStringList indices;
    for (int i : lista)
        indices << QString::number(i);
    fprintf(stderr, "tst_driver: seed %llu, step %d: %s\n  replay: tst_driver --seed %llu --replay %s\n",
            (unsigned long long)g_semilla, fallido, qPrintable(fallo), (unsigned long long)g_semilla,
            qPrintable(indices.join(u',')));
    return 1;
}
