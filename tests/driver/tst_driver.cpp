// SPDX-License-Identifier: MIT
// A random host and user on a real map with every kind of root, from a seed: host calls with good and bad
// arguments, real gestures, handlers calling back into the map. After each step it checks what must hold;
// a failure is cut down to the shortest step list still failing. By hand: --steps N --seed S [--replay i,j]

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

// Lets the map's timer tick. Not QTest::qWait: that runs deferred deletes even inside a handler, as no
// event loop does while an event is delivered.
void esperar(int ms)
{
    QEventLoop bucle;
    QTimer::singleShot(ms, &bucle, &QEventLoop::quit);
    bucle.exec();
}

struct Driver
{
    // clang-format off
    enum Clase { Host, HostOutsideHandlers, Gesture };
    struct Paso { const char *nombre; int peso; Clase clase; std::function<void(Driver &)> hacer; };
    // clang-format on
    static const std::vector<Paso> &pasos();
    std::mt19937 rng { unsigned(g_semilla) };
    ErrorCatcher errors;
    QWidget ventana;
    MapaX *mapa = new MapaX(&ventana);
    DragDriver drag;
    std::vector<ObjetoPtr> raices;
    bool gesto = false; // a user's gesture: nothing in it may fail
    int n(int hasta) { return hasta > 0 ? int(rng() % unsigned(hasta)) : 0; }
    bool moneda(int en = 2) { return n(en) == 0; }
    template<typename T> T de(const std::vector<T> &v) { return v.at(size_t(n(int(v.size())))); }
    ObjetoPtr hijo(const QString &codigo, const QString &padre)
    {
        ObjetoPtr o = moneda(3) ? ObjetoPtr(std::make_shared<Deposito>()) : std::make_shared<Lote>();
        o->setCodigo(codigo), o->setPadre(padre);
        o->setX(qint16(n(400))), o->setY(qint16(n(250)));
        o->setAncho(qint16(4 + n(90))), o->setAlto(qint16(4 + n(60)));
        o->setForma(qint16(n(6) - 1)); // the four shapes and two no shape knows
        o->setColor(de<qint32>({ 0xFFFFFF, 0x000000, 0x1F1F8C, qint32(rng() & 0xFFFFFF) }));
        if (moneda(4)) // the object keeps its picture alive
            o->setImagen(std::make_shared<Imagenes>()->add(1, g_imagen));
        return o;
    }
    ObjetoPtr raiz(bool pierna)
    {
        const QString id = QString::number(raices.size() + 1);
        ObjetoPtr r;
        if (pierna) {
            auto p = std::make_shared<Pierna>();
            p->setCodigo(id), p->setClasica(moneda());
            p->setEscalas(qint16(1 + n(4))); // the view reads tier 1 of every leg
            for (qint16 e = 1; e <= p->getFilas(); ++e) {
                p->setEscala(e, qint16(n(14)));
                for (qint16 q = 1; q <= p->getLargo(e); ++q)
                    if (moneda(3))
                        p->setObjeto(
                            e, q, hijo(id + u"-%1-%2"_s.arg(e).arg(q), p->getUbicacion(e, q)->getCodigo()));
            }
            r = p;
        } else {
            r = naves::nave(id, u"N"_s, false, {});
            for (int i = n(9); i > 0; --i)
                r->getObjetos()->add(hijo(u"%1.%2"_s.arg(id).arg(i), id));
            if (ObjetoPtr caja = moneda(3) ? naves::nave(id + u"C"_s, u"C"_s) : nullptr) // holds others
                caja->setPadre(id), r->getObjetos()->add(caja);
        }
        if (moneda()) {
            r->setReferencias(std::make_shared<Referencias>());
            for (int i = n(4); i > 0; --i)
                r->getReferencias()->add(u"K%1"_s.arg(i), u"Clave %1"_s.arg(i), qint32(rng() & 0xFFFFFF));
        }
        raices.push_back(r);
        return r;
    }
    Driver()
    {
        for (int i = 0; i < 5; ++i)
            mapa->add(raiz(i >= 3));
        for (const ObjetoPtr &r : raices)
            mapa->show(r);
        ventana.resize(720, 520), mapa->resize(720, 520), ventana.show();
        // The host answers the user by calling back into the map: what fails then is the host's doing.
        [this](auto... senales) {
            (QObject::connect(mapa, senales, mapa, [this] { hacer(true); }), ...);
        }(&MapaX::Click, &MapaX::RightClick, &MapaX::Enter, &MapaX::moved, &MapaX::Drop);
    }
    // Something the host might pass: mostly the roots, sometimes none, a stranger or a namesake.
    ObjetoPtr cualquiera()
    {
        if (const int k = n(8); k != 2)
            return k == 0 ? nullptr : k == 1 ? raiz(moneda()) : de(raices);
        // A namesake of the same kind (a leg's frame shows legs only), with no children.
        const ObjetoPtr r = de(raices);
        if (r->getTipo() != u"P"_s)
            return naves::nave(r->getCodigo(), de<QString>({ u"N"_s, u"X"_s }), false, {});
        auto otra = std::make_shared<Pierna>();
        otra->setCodigo(r->getCodigo()), otra->setEscalas(1);
        return otra;
    }
    // A visible widget of the map to point at: mostly a view, now and then any.
    QWidget *blanco()
    {
        const bool soloVistas = !moneda(5);
        std::vector<QWidget *> todos { mapa };
        for (QWidget *w : mapa->findChildren<QWidget *>())
            if (w->isVisible() && (!soloVistas || qobject_cast<VistaX *>(w)))
                todos.push_back(w);
        return todos.size() > 1 ? todos.at(size_t(1 + n(int(todos.size()) - 1))) : mapa;
    }
    QPoint punto(QWidget *w)
    {
        auto *vista = qobject_cast<VistaX *>(w);
        if (auto objetos
            = vista && moneda() && vista->getObjeto() ? vista->getObjeto()->getObjetos() : nullptr;
            objetos && objetos->count())
            if (ObjetoPtr o = objetos->Item(1 + n(objetos->count())))
                return QPoint(o->getX() + 2 + o->getAncho() / 2, o->getY() + 2 + o->getAlto() / 2);
        return QPoint(n(w->width()), n(w->height())); // a press lands on the widget under the pointer
    }
    QString nombre() { return mapa->controlNames().at(n(int(mapa->controlNames().size()))); }
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
            if (QPointer<QWidget> sobre = titulo ? mapa : blanco())
                drag.move(sobre, punto(sobre), moneda() ? Qt::ShiftModifier : teclas());
        Qt::DropAction hecho = Qt::IgnoreAction;
        if (QPointer<QWidget> sobre = titulo ? mapa : blanco(); sobre && !moneda(5))
            hecho = drag.drop(sobre, punto(sobre), moneda() ? Qt::ShiftModifier : teclas());
        drag.finish(hecho);
    }
    // Runs one step of the table, drawn by weight; in a host's handler, now and then one of the host's calls.
    void hacer(bool soloHost)
    {
        if (soloHost && !moneda(3))
            return;
        int total = 0;
        for (const Paso &p : pasos())
            total += soloHost && p.clase != Host ? 0 : p.peso;
        int elegido = n(total);
        for (const Paso &p : pasos()) {
            if ((elegido -= soloHost && p.clase != Host ? 0 : p.peso) < 0) {
                gesto = p.clase == Gesture;
                if (g_contar)
                    fprintf(stderr, "step %d: %s\n", g_paso, p.nombre);
                return p.hacer(*this);
            }
        }
    }
    void comprobar()
    {
        static const QRegularExpression etiqueta(u"^[A-Za-z]\\w*(\\.\\w+)+->\\S"_s);
        for (const QString &m : errors.messages()) {
            if (!etiqueta.match(m).hasMatch())
                throw QString(u"a failure without its label: "_s + m);
            // Layouts run on the map's timer, whatever step is on: their failures are the request's. A
            // Shift-click rectangle over an empty cell of a leg fails by design.
            if (gesto && !m.startsWith(u"MapaX.thread.Timer->"_s) && !m.contains(u".IContenedorX_"_s)
                && !m.startsWith(u"PiernaX.selectRectangle->"_s))
                throw QString(u"a gesture failed: "_s + m);
        }
        errors.clear();
        QStringList nombres;
        for (const QString &nombre : mapa->controlNames().mid(1)) {
            if (nombres.contains(nombre, Qt::CaseInsensitive))
                throw QString(u"two frames named "_s + nombre);
            nombres << nombre;
            if (!mapa->control(nombre)->isEnabled())
                throw QString(nombre + u" left disabled"_s);
            auto *frame = qobject_cast<FrameX *>(mapa->control(nombre));
            auto *vista = frame ? frame->findChild<VistaX *>(u"conten"_s) : nullptr;
            if (!vista || !frame->getObjeto())
                continue;
            const auto elegidos = vista->getSeleccionados();
            for (const ObjetoPtr &o : frame->getObjeto()->getObjetos()->NewEnum())
                if (o->getSeleccionado()
                    != (elegidos->contains(o->getCodigo()) && elegidos->Item(o->getCodigo()) == o))
                    throw u"%1: %2 is %3selected, its frame says otherwise"_s.arg(
                        nombre, o->getCodigo(), o->getSeleccionado() ? u""_s : u"not "_s);
        }
        if (const ObjetoPtr activo = mapa->getFrame()) {
            auto *frame = qobject_cast<FrameX *>(mapa->control(activo->getTipo() + activo->getCodigo()));
            if (!frame || frame->getObjeto() != activo)
                throw QString(u"the active frame "_s + activo->getCodigo() + u" is not on the map"_s);
        }
        if (mapa->control(u"caja"_s))
            throw u"a frame's outline left behind"_s;
        for (Dummy *caja : mapa->findChildren<Dummy *>()) // the scroll bars' corner is one too
            if (caja->isVisible() && qobject_cast<VistaX *>(caja->parentWidget()))
                throw QString(u"an outline box left behind in "_s + caja->parentWidget()->objectName());
    }
};

// The steps, host calls first, a row each. A handler does not start a drag of its own inside the user's.
// Scales and fonts no one could use are tried, then taken back: what they break is the host's doing.
// clang-format off
const std::vector<Driver::Paso> &Driver::pasos()
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
        {"legend", 2, Host, [](Driver &d) { d.moneda() ? d.mapa->ShowReferences() : d.moneda() ? d.mapa->references() : d.mapa->remove(nullptr); }},
        {"setEscala", 2, Host, [](Driver &d) { const ObjetoPtr r = d.cualquiera(); d.mapa->setEscala(r, d.de<float>({0.f, -2.f, 1e6f, float(qQNaN())}));
             d.mapa->setEscala(r, d.de<float>({0.25f, 0.5f, 1.f, 1.5f, 3.f})); }},
        {"layout", 2, Host, [](Driver &d) { QMetaObject::invokeMethod(d.mapa, d.de<const char *>({"alinearHorizontal",
             "alinearVertical", "igualarDimension", "distribuirHorizontal", "distribuirVertical"})); esperar(15); }},
        {"select", 4, Host, [](Driver &d) { const ObjetoPtr r = d.cualquiera(); const auto hijos = r && !d.moneda(4) ? r->getObjetos() : nullptr;
             if (d.moneda(3)) d.moneda() ? d.mapa->seleccionarTodos(r) : d.mapa->deseleccionarTodos(r);
             else d.mapa->seleccionar(r, hijos && hijos->count() ? hijos->Item(1 + d.n(hijos->count()))->getCodigo() : u"?"_s); }},
        {"setBloqueo", 1, Host, [](Driver &d) { d.mapa->setBloqueo(d.moneda(3)); }},
        {"host move", 1, HostOutsideHandlers, [](Driver &d) { QPointer<QWidget> w = d.moneda(4) ? nullptr : d.mapa->control(d.nombre());
             d.mapa->startMove(w); if (d.drag.dragging() && !d.moneda(3)) d.drag.drop(d.mapa, d.punto(d.mapa));
             d.drag.finish(Qt::MoveAction); if (d.moneda(3)) d.mapa->completeMove(w); }},
        {"look", 1, Host, [](Driver &d) { d.mapa->setFontName(d.de<QString>({u""_s, u"Sans"_s, u"???"_s})); d.mapa->setFontSize(qint16(-d.n(10)));
             d.mapa->setFontSize(qint16(6 + d.n(30))); d.mapa->setBackColor(d.de<qint32>({0xF4F0EC, 0, qint32(0x80000005), -1})); }},
        {"callbacks", 1, Host, [](Driver &d) { d.mapa->IMapaX_clicked(d.cualquiera(), d.moneda());
             d.mapa->IMapaX_Droped(d.nombre(), d.cualquiera(), d.n(8)); d.mapa->IMapaX_Moved(d.cualquiera()); }},
        {"host moves a child", 2, Host, [](Driver &d) { const ObjetoPtr r = d.de(d.raices); const auto hijos = r->getObjetos();
             if (const ObjetoPtr o = hijos->count() ? hijos->Item(1 + d.n(hijos->count())) : nullptr) {
                 o->setX(qint16(d.n(500))); o->setAncho(qint16(d.n(120))); o->setForma(qint16(d.n(6) - 1)); }
             d.mapa->Refresh(d.moneda() ? r : nullptr); }},
        {"resize", 1, Gesture, [](Driver &d) { const QSize s = d.moneda(4) ? QSize(d.n(40), d.n(40)) : QSize(200 + d.n(900), 150 + d.n(600));
             d.ventana.resize(s); d.mapa->resize(s); }},
        {"click", 8, Gesture, [](Driver &d) { QPointer<QWidget> w = d.blanco(); const QPoint p = d.punto(w);
             const auto boton = d.de<Qt::MouseButton>({Qt::LeftButton, Qt::LeftButton, Qt::RightButton, Qt::MiddleButton}); const auto mods = d.teclas();
             if (d.moneda(6)) QTest::mouseDClick(w, boton, mods, p);
             QTest::mousePress(w, boton, mods, p); if (w) QTest::mouseRelease(w, boton, mods, p); }},
        {"drag", 6, Gesture, [](Driver &d) { d.arrastre(d.blanco(), false); }},
        {"frame by its title", 3, Gesture, [](Driver &d) { const QList<QWidget *> titulos = d.mapa->findChildren<QWidget *>(u"titulo"_s);
             if (!titulos.isEmpty()) d.arrastre(titulos.at(d.n(int(titulos.size()))), true); }},
        {"button", 2, Gesture, [](Driver &d) { QList<QWidget *> botones = d.mapa->findChildren<QWidget *>(d.moneda() ? u"mini"_s : u"cerrar"_s);
             QPointer<QWidget> boton = botones.isEmpty() ? nullptr : botones.at(d.n(int(botones.size())));
             if (boton) QTest::mousePress(boton, Qt::LeftButton, {}, QPoint(5, 5));
             if (boton) QTest::mouseRelease(boton, Qt::LeftButton, {}, QPoint(5, 5)); }},
        {"key", 3, Gesture, [](Driver &d) { QWidget *w = QApplication::focusWidget() && d.moneda() ? QApplication::focusWidget() : d.mapa;
             QTest::keyClick(w, d.de<Qt::Key>({Qt::Key_Return, Qt::Key_Enter, Qt::Key_Menu, Qt::Key_Escape, Qt::Key_Delete, Qt::Key_Left, Qt::Key_Tab, Qt::Key_A}), d.teclas()); }},
        {"wait", 1, Gesture, [](Driver &) { esperar(12); }},
    };
    return tabla;
}
// clang-format on

// Runs \a lista on a new site; answers the failure, or nothing. The steps run inside an event loop, as a
// host's code does: what the map deletes later goes when the step is over, not in a wait inside it.
QString correr(const QList<int> &lista)
{
    Driver d;
    QString fallo;
    QEventLoop bucle;
    QTimer::singleShot(0, &bucle, [&] {
        try {
            d.comprobar();
            for (int paso : lista) {
                g_paso = paso;
                d.rng.seed(unsigned(g_semilla * 2654435761u) ^ unsigned(paso) * 40503u); // a seed per step
                d.hacer(false);
                QCoreApplication::processEvents();
                naves::flushDeletes();
                d.comprobar();
            }
        } catch (const QString &texto) {
            fallo = texto;
        } catch (const Error &e) {
            fallo = u"a failure reached the host: "_s + e.description();
        }
        bucle.quit();
    });
    bucle.exec();
    return fallo;
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
    g_semilla = opcion(u"--seed"_s, u"12"_s).toULongLong();
    QList<int> lista;
    for (const QString &i : opcion(u"--replay"_s, {}).split(u',', Qt::SkipEmptyParts))
        lista << i.toInt();
    g_contar = args.contains(u"--replay"_s);
    for (int i = 0, total = opcion(u"--steps"_s, u"2000"_s).toInt(); !g_contar && i < total; ++i)
        lista << i;
    for (int senal : { SIGSEGV, SIGABRT, SIGFPE, SIGILL })
        std::signal(senal, [](int s) {
            fprintf(stderr, "tst_driver: signal %d at step %d of seed %llu\n", s, g_paso, g_semilla);
            std::signal(s, SIG_DFL), std::raise(s);
        });
    QTemporaryDir carpeta;
    QImage dibujo(24, 24, QImage::Format_RGB32);
    dibujo.fill(Qt::darkCyan), dibujo.save(g_imagen = carpeta.filePath(u"dibujo.png"_s));
    const QString fallo = correr(lista);
    const int fallido = g_paso;
    g_contar = false;
    if (fallo.isEmpty())
        return printf("tst_driver: %d steps of seed %llu, nothing wrong\n", int(lista.size()), g_semilla) < 0;
    // Cut the run down: drop ever smaller runs of steps while the same kind of failure remains.
    lista.resize(lista.indexOf(fallido) + 1);
    const QString clase = fallo.section(u':', 0, 0);
    for (qsizetype trozo = lista.size() / 2, intentos = 0; trozo >= 1 && intentos < 400; trozo /= 2) {
        for (qsizetype i = 0; i + 1 < lista.size() && intentos++ < 400;) {
            QList<int> menos = lista;
            menos.remove(i, std::min(trozo, lista.size() - 1 - i)); // never the failing step, the last one
            if (correr(menos).section(u':', 0, 0) == clase)
                lista = menos;
            else
                i += trozo;
        }
    }
    QStringList indices;
    for (int i : lista)
        indices << QString::number(i);
    fprintf(stderr, "tst_driver: seed %llu, step %d: %s\n  replay: tst_driver --seed %llu --replay %s\n",
            g_semilla, fallido, qPrintable(fallo), g_semilla, qPrintable(indices.join(u',')));
    return 1;
}
