// SPDX-License-Identifier: MIT
#include <tarvonix/leg/geometriaceldas.h>
#include <tarvonix/map/framex.h>
#include <tarvonix/map/mapax.h>
#include <tarvonix/model/lote.h>
#include <tarvonix/model/pierna.h>
#include <tarvonix/model/ubicacion.h>
#include <tarvonix/views/vistax.h>

#include "dragdriver.h"
#include "errorcatcher.h"
#include "naves.h"

#include <QAccessible>
#include <QApplication>
#include <QLineEdit>
#include <QNativeGestureEvent>
#include <QScrollBar>
#include <QMetaEnum>
#include <QSignalSpy>
#include <QTest>

using namespace tarvonix;
using namespace naves;
using namespace Qt::StringLiterals;

namespace {
// A shown 700 x 500 map holding "NA" (with keys) and "NB" (without, its vessels out of line), neither shown.
struct Sitio
{
    ErrorCatcher errors;
    MapaX mapa;
    ObjetoPtr a = nave(u"A"_s, u"N"_s, true);
    ObjetoPtr b = nave(u"B"_s, u"N"_s, false, {{10, 10, 50, 40}, {70, 70, 60, 40}, {150, 30, 50, 20}});
    DragDriver driver; // made after the map, which it may enter
    QSignalSpy click{&mapa, &MapaX::Click}, enter{&mapa, &MapaX::Enter}, right{&mapa, &MapaX::RightClick};
    QSignalSpy drop{&mapa, &MapaX::Drop}, moved{&mapa, &MapaX::moved};
    Sitio() { mapa.resize(700, 500), mapa.show(), mapa.add(a), mapa.add(b); }
    FrameX *frame(const QString &nombre) const { return qobject_cast<FrameX *>(mapa.control(nombre)); }
    QWidget *conten(const ObjetoPtr &obj) const
    {
        return frame(obj->getTipo() + obj->getCodigo())->findChild<QWidget *>(u"conten"_s);
    }
};
} // namespace

using Accion = std::function<void(Sitio &)>;
Q_DECLARE_METATYPE(Accion)

class tst_MapaX : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void activeFrameAndKeys()
    {
        Sitio s;
        QCOMPARE(s.mapa.controlNames(), (QStringList{u"thread"_s, u"NA"_s, u"NB"_s}));
        QVERIFY(s.frame(u"NA"_s)->isHidden() && !s.mapa.getFrame()); // added frames wait for show()
        QTest::keyClick(&s.mapa, Qt::Key_Return), QTest::keyClick(&s.mapa, Qt::Key_Menu); // nothing active: nothing
        s.mapa.show(s.b), s.mapa.show(s.a);
        s.mapa.hide(s.a); // hiding keeps the active frame
        QCOMPARE(s.mapa.getFrame(), ObjetoPtr(s.a));
        QVERIFY(s.mapa.getSelected() && !s.frame(u"NB"_s)->pActive());
        // No active object: Enter names the active frame's; the menu key raises nothing, a frame is no map object.
        QTest::keyClick(&s.mapa, Qt::Key_Enter), QTest::keyClick(&s.mapa, Qt::Key_Menu);
        QVERIFY(s.right.isEmpty() && s.enter.count() == 1 && s.enter.at(0).at(0).value<ObjetoPtr>() == s.a);
        // Shown again, the active frame stays active for the pointer, and keeps its active object.
        s.mapa.show(s.a), s.mapa.show(s.a);
        const ObjetoPtr d1 = s.a->getObjetos()->Item(1);
        QTest::mouseClick(s.conten(s.a), Qt::LeftButton, Qt::NoModifier, QPoint(17, 17));
        QVERIFY(s.click.count() == 1 && s.click.at(0).at(0).value<ObjetoPtr>() == d1);
        s.mapa.show(s.a);
        QVERIFY(s.frame(u"NA"_s)->pActive() && s.mapa.getActive() == d1);
        // The menu key reports the active object, and whether more than it is selected.
        s.mapa.seleccionarTodos(s.a), QTest::keyClick(&s.mapa, Qt::Key_Menu);
        s.mapa.deseleccionarTodos(s.a), s.mapa.seleccionar(s.a, u"AD1"_s), QTest::keyClick(&s.mapa, Qt::Key_Menu);
        QVERIFY(s.right.count() == 2 && s.right.at(0).at(0).value<ObjetoPtr>() == d1);
        QVERIFY(s.right.at(0).at(1).toBool() && !s.right.at(1).at(1).toBool());
        s.mapa.remove(s.b); // even an inactive frame's removal leaves nothing active
        QVERIFY(!s.mapa.getFrame() && !s.mapa.getActive() && !s.mapa.getSelected() && !s.frame(u"NB"_s));
        // setObjeto with no active frame adds and shows; with another code replaces; with the same code swaps.
        s.mapa.setObjeto(nave(u"1"_s)), s.mapa.setObjeto(nave(u"2"_s));
        QCOMPARE(s.mapa.controlNames(), (QStringList{u"thread"_s, u"NA"_s, u"N2"_s}));
        const auto otroDos = nave(u"2"_s);
        s.mapa.setObjeto(otroDos);
        QCOMPARE(s.frame(u"N2"_s)->getObjeto(), ObjetoPtr(otroDos));
        s.mapa.removeAll();
        QCOMPARE(s.mapa.controlNames(), QStringList{u"thread"_s});
        s.mapa.setSelected(true); // only redraws: reading answers false
        QVERIFY(!s.mapa.selected() && s.errors.messages().isEmpty());
    }

    void legendFollowsTheActiveFrame()
    {
        Sitio s;
        s.mapa.show(s.a);
        QVERIFY(!s.mapa.control(u"REF"_s)); // not asked for yet
        s.mapa.ShowReferences();
        QWidget *leyenda = s.mapa.control(u"REF"_s);
        QVERIFY(leyenda && leyenda->isVisible() && leyenda->findChild<QWidget *>(u"RT"_s)); // a row per key
        QCOMPARE(leyenda->pos(), QPoint(2, 2));
        s.mapa.show(s.b); // no list at all: hidden
        QVERIFY(leyenda->isHidden());
        s.mapa.show(s.a);
        const QSize tamano = leyenda->size();
        s.b->setReferencias(std::make_shared<Referencias>()), s.mapa.show(s.b); // an empty list: the keys stay
        QVERIFY(leyenda->isVisible() && leyenda->findChild<QWidget *>(u"RV"_s) && leyenda->size() == tamano);
        QTest::mousePress(leyenda->findChild<QWidget *>(u"cerrar"_s), Qt::LeftButton, {}, QPoint(5, 5));
        s.mapa.show(s.a); // closed by its own button, the legend is not wanted any more
        QVERIFY(!s.mapa.control(u"REF"_s));
    }

    void layoutRequestsRunOnTheNextTick_data()
    {
        QTest::addColumn<int>("movidos");
        QTest::addColumn<QString>("despues");
        QTest::newRow("alinearHorizontal") << 3 << u"10,10 50x40|70,10 60x40|150,10 50x20"_s;
        QTest::newRow("alinearVertical") << 3 << u"10,10 50x40|10,70 60x40|10,30 50x20"_s;
        QTest::newRow("igualarDimension") << 3 << u"10,10 50x40|70,70 50x40|150,30 50x40"_s;
        QTest::newRow("distribuirHorizontal") << 1 << u"10,10 50x40|74,70 60x40|150,30 50x20"_s;
        QTest::newRow("distribuirVertical") << 1 << u"10,10 50x40|70,70 60x40|150,49 50x20"_s;
    }
    void layoutRequestsRunOnTheNextTick()
    {
        QFETCH(int, movidos);
        QFETCH(QString, despues);
        Sitio s;
        s.mapa.show(s.b), s.frame(u"NB"_s)->seleccionarTodos();
        s.mapa.callbacks()->setActive(s.b->getObjetos()->Item(1), s.frame(u"NB"_s), 1);
        // Another request first, within the same tick: only the last one runs, and not inside the call.
        const QByteArray tag = QTest::currentDataTag();
        QMetaObject::invokeMethod(&s.mapa, tag == "alinearVertical" ? "igualarDimension" : "alinearVertical");
        QMetaObject::invokeMethod(&s.mapa, tag.constData());
        QCOMPARE(s.moved.count(), 0);
        QTest::qWait(50); // several ticks: it runs once
        QCOMPARE(s.moved.count(), movidos);
        QStringList hechos;
        for (const ObjetoPtr &o : s.b->getObjetos()->NewEnum())
            hechos << u"%1,%2 %3x%4"_s.arg(o->getX()).arg(o->getY()).arg(o->getAncho()).arg(o->getAlto());
        QCOMPARE(hechos.join(u'|'), despues);
    }

    void framesAreFittedAndMovedByTheirTitle()
    {
        Sitio s;
        FrameX *frame = s.frame(u"NA"_s), *otro = s.frame(u"NB"_s);
        otro->move(500, 400), s.mapa.resized(); // pushed back inside, 2 pixels from the right and bottom edges
        QCOMPARE(otro->pos(), QPoint(700 - otro->width() - 2, 500 - otro->height() - 2));
        s.mapa.add(nave(u"G"_s, u"N"_s, false, {{10, 10, 2000, 40}}));
        QCOMPARE(s.frame(u"NG"_s)->width(), 698); // limited by the map
        // A real resize fits every frame too; one as wide as the map goes to 1.
        s.frame(u"NG"_s)->move(300, 0), s.mapa.resize(700, 501);
        QCOMPARE(s.frame(u"NG"_s)->x(), 1);
        // A frame moves by its title, as a drag of its name.
        s.mapa.show(s.a);
        QWidget *titulo = frame->findChild<QWidget *>(u"titulo"_s);
        QTest::mousePress(titulo, Qt::LeftButton, {}, QPoint(30, 8)), arrastrar(titulo, QPoint(40, 8));
        QVERIFY(s.driver.text() == u"NA"_s && s.driver.allowed() == Qt::MoveAction);
        // While it moves: the frame hides behind one outline, every control is disabled.
        QWidget *caja = s.mapa.control(u"caja"_s);
        QVERIFY(frame->isHidden() && caja && !otro->isEnabled());
        QCOMPARE(caja->geometry(), frame->geometry());
        const QPoint agarre = titulo->pos() + QPoint(40, 8);
        QCOMPARE(s.driver.move(&s.mapa, QPoint(400, 300)), Qt::MoveAction);
        QCOMPARE(caja->pos(), QPoint(400, 300) - agarre);
        QCOMPARE(s.driver.drop(&s.mapa, QPoint(420, 310)), Qt::MoveAction);
        s.driver.finish(Qt::MoveAction);
        QCOMPARE(frame->pos(), QPoint(420, 310) - agarre);
        QVERIFY(!frame->isHidden() && otro->isEnabled() && !s.mapa.control(u"caja"_s));
        QMimeData ajeno;
        ajeno.setText(u"NB"_s); // a frame's name dropped when nothing moves is refused
        QCOMPARE(DragDriver::dropData(&s.mapa, QPoint(10, 10), &ajeno), Qt::IgnoreAction);
    }

    void failures_data()
    {
        QTest::addColumn<Accion>("accion");
        QTest::addColumn<QStringList>("etiquetas");
        const QString noHay = u"->Control not found"_s;
        const QString sinMiembro = u"->Object doesn't support this property or method"_s;
        const QString sinObjeto = u"->Object variable or With block variable not set"_s;
        const QString repetido = u"->This key is already associated with an element of this collection"_s;
        QTest::newRow("add") << Accion([](Sitio &s) { s.mapa.add(nave({}, u"NA"_s)); s.mapa.add(nullptr); })
                             << QStringList{"MapaX.add" + repetido, "MapaX.add" + sinObjeto};
        QTest::newRow("a missing frame") << Accion([](Sitio &s) {
            const auto nunca = nave(u"Z"_s);
            s.mapa.seleccionar(nunca, u"ZD1"_s); // the selections and isMember are quiet
            QVERIFY(!s.mapa.isMember(nunca) && !s.mapa.isMember(nullptr));
            for (auto paso : {&MapaX::seleccionarTodos, &MapaX::deseleccionarTodos, &MapaX::show, &MapaX::hide,
                              &MapaX::Refresh, &MapaX::remove})
                (s.mapa.*paso)(nunca);
            s.mapa.setEscala(nunca, 2.0f);
            s.mapa.remove(nullptr); // the legend, never shown
        }) << QStringList{"MapaX.show" + noHay, "MapaX.hide" + noHay, "MapaX.Refresh" + noHay,
                          "MapaX.remove" + noHay, "MapaX.setEscala" + noHay, "MapaX.remove" + noHay};
        QTest::newRow("setObjeto under another type")
            << Accion([](Sitio &s) { s.mapa.show(s.b); s.mapa.setObjeto(nave(u"B"_s, u"X"_s)); })
            << QStringList{"MapaX.setObjeto" + noHay};
        QTest::newRow("layout with no active frame") << Accion([](Sitio &s) { s.mapa.igualarDimension(); })
                                                     << QStringList{"MapaX.thread.Timer" + sinObjeto};
        // The walk stops at the legend, after locking the frames before it: a Shift-drag moves nothing there.
        QTest::newRow("lock walk stops at the legend") << Accion([](Sitio &s) {
            s.mapa.show(s.a), s.mapa.ShowReferences(), s.mapa.show(s.b), s.mapa.setBloqueo(true);
            QTest::mousePress(s.conten(s.b), Qt::LeftButton, Qt::NoModifier, QPoint(17, 17));
            arrastrar(s.conten(s.b), QPoint(37, 17));
            QVERIFY(s.driver.dragging());
            QCOMPARE(s.driver.drop(s.conten(s.b), QPoint(37, 17), Qt::ShiftModifier), Qt::IgnoreAction);
            s.driver.finish();
        }) << QStringList{"MapaX.setBloqueo" + sinMiembro};
        // While a frame moves, the outline answers no fitting and no second outline can be made.
        QTest::newRow("resize and move while moving") << Accion([](Sitio &s) {
            s.mapa.startMove(s.frame(u"NA"_s)), s.mapa.resize(s.mapa.width() + 10, s.mapa.height());
            s.mapa.startMove(s.frame(u"NA"_s)), s.driver.finish(), s.driver.finish();
        }) << QStringList{"MapaX.UserControl_Resize" + sinMiembro, "MapaX.dibujarCaja" + repetido};
        QTest::newRow("legend closed while moving") << Accion([](Sitio &s) {
            s.mapa.show(s.a), s.mapa.ShowReferences(), s.mapa.startMove(s.mapa.control(u"REF"_s));
            s.mapa.remove(nullptr);
            QCOMPARE(s.driver.drop(&s.mapa, QPoint(50, 50)), Qt::IgnoreAction); // nothing left to move
            s.driver.finish();
        }) << QStringList{"MapaX.UserControl_OLEGiveFeedback" + noHay, "MapaX.completeMove" + noHay};
        // A host deletes the whole map while one of its frames moves: the drag's end finds nothing.
        QTest::newRow("map deleted while moving") << Accion([](Sitio &s) {
            auto *efimero = new MapaX;
            efimero->add(s.a), efimero->startMove(efimero->control(u"NA"_s)), delete efimero;
            QVERIFY(s.driver.dragging());
            s.driver.finish();
        }) << QStringList();
        // A host closes the frame from the moved handler of a Ctrl+arrow, deletes run as a loop of its own
        // would: the view stops where it stands.
        QTest::newRow("frame closed by a handler") << Accion([](Sitio &s) {
            s.mapa.show(s.a), s.mapa.seleccionar(s.a, u"AD1"_s);
            QObject::connect(&s.mapa, &MapaX::moved, &s.mapa, [&s] { s.mapa.remove(s.a), flushDeletes(); });
            const QPointer<QWidget> vista = s.conten(s.a);
            QTest::keyClick(vista, Qt::Key_Right, Qt::ControlModifier), flushDeletes();
            QVERIFY(!vista && !s.mapa.isMember(s.a));
        }) << QStringList();
    }
    void failures()
    {
        QFETCH(Accion, accion);
        QFETCH(QStringList, etiquetas);
        Sitio s;
        accion(s);
        QTRY_COMPARE(s.errors.messages(), etiquetas);
        // Whatever failed, no move outline and no disabled control remain.
        QVERIFY(!s.mapa.control(u"caja"_s));
        for (const QString &nombre : s.mapa.controlNames().mid(1))
            QVERIFY(s.mapa.control(nombre)->isEnabled());
    }

    void wheelAndPinch_data()
    {
        QTest::addColumn<int>("teclas"); // -1: a pinch of the wheel's y / 240 instead
        QTest::addColumn<QPoint>("rueda");
        QTest::addColumn<QPoint>("desplazado"); // how far a scroll moves the bars
        QTest::addColumn<double>("escala");
        QTest::newRow("wheel") << 0 << QPoint(0, -120) << QPoint(0, 30) << 1.0;
        QTest::newRow("Shift+wheel") << int(Qt::ShiftModifier) << QPoint(0, -120) << QPoint(30, 0) << 1.0;
        QTest::newRow("tilted wheel") << 0 << QPoint(-240, 0) << QPoint(60, 0) << 1.0;
        QTest::newRow("Ctrl+wheel") << int(Qt::ControlModifier) << QPoint(0, 120) << QPoint() << 1.2;
        QTest::newRow("Ctrl+wheel, floor") << int(Qt::ControlModifier) << QPoint(0, -2400) << QPoint() << 0.25;
        QTest::newRow("pinch") << -1 << QPoint(0, 120) << QPoint() << 1.5;
    }
    void wheelAndPinch()
    {
        QFETCH(int, teclas);
        QFETCH(QPoint, rueda);
        QFETCH(QPoint, desplazado);
        QFETCH(double, escala);
        Sitio s;
        const auto z = nave(u"Z"_s, u"N"_s, false, {{10, 10, 50, 40}, {900, 700, 50, 40}}); // both bars
        s.mapa.add(z), s.mapa.show(z);
        QSignalSpy escalado(&s.mapa, &MapaX::escalado);
        FrameX *frame = s.frame(u"NZ"_s);
        QWidget *vista = s.conten(z);
        const auto barras = frame->findChildren<QScrollBar *>(); // vertical, horizontal
        const QPoint p(300, 200), enFrame = vista->mapTo(frame, p), global = vista->mapToGlobal(p);
        QNativeGestureEvent gesto(Qt::ZoomNativeGesture, QPointingDevice::primaryPointingDevice(), 2, p, p, global,
                                  rueda.y() / 240.0, {});
        QWheelEvent giro(p, global, {}, rueda, {}, Qt::KeyboardModifiers(teclas), Qt::NoScrollPhase, false);
        QApplication::sendEvent(vista, teclas < 0 ? static_cast<QEvent *>(&gesto) : &giro);
        QCOMPARE(frame->escala(), float(escala));
        if (escala == 1)
            QVERIFY(QPoint(barras.at(1)->value(), barras.at(0)->value()) == desplazado && escalado.isEmpty());
        else // reported; zooming in, the point under the pointer stays there
            QVERIFY(escalado.count() == 1 && escalado.at(0).at(0).value<ObjetoPtr>() == z
                    && escalado.at(0).at(1).toFloat() == float(escala)
                    && (escala < 1 || (vista->mapTo(frame, p * escala) - enFrame).manhattanLength() <= 2));
    }

    // At a device pixel ratio, lines, hatching and text take device pixels; a press hits in logical ones.
    void crispAtEveryRatio_data()
    {
        QTest::addColumn<double>("ratio");
        for (const double ratio : {1.25, 1.5, 2.0})
            QTest::addRow("%g", ratio) << ratio;
    }
    void crispAtEveryRatio()
    {
        QFETCH(double, ratio);
        Sitio s;
        s.mapa.show(s.a), s.mapa.seleccionar(s.a, u"AD2"_s); // AD2 hatched
        const ObjetoPtr d1 = s.a->getObjetos()->Item(1);
        d1->setColor(0x000080), d1->setTip(u"AD1"_s);
        QWidget *vista = s.conten(s.a);
        QImage imagen(vista->size() * ratio, QImage::Format_RGB32), llana(vista->size(), QImage::Format_RGB32);
        imagen.setDevicePixelRatio(ratio), vista->render(&imagen), vista->render(&llana);
        // AD1 at (12, 12) 50 x 40 in the view: one device pixel of black outline, then its fill. AD2 is
        // hatched in lines one device pixel wide: ink, but no two-by-two block of it.
        int negros = 0, tinta = 0, gruesos = 0;
        for (int x = int(12 * ratio) - 2; x <= int(12 * ratio) + 3; ++x)
            negros += imagen.pixelColor(x, int(30 * ratio)) == Qt::black;
        for (int y = int(16 * ratio); y < int(48 * ratio); ++y) {
            for (int x = int(76 * ratio); x < int(118 * ratio); ++x) {
                const QColor c = imagen.pixelColor(x, y);
                tinta += c != Qt::white;
                gruesos += c != Qt::white && imagen.pixelColor(x + 1, y) == c && imagen.pixelColor(x, y + 1) == c
                    && imagen.pixelColor(x + 1, y + 1) == c;
            }
        }
        QVERIFY(negros == 1 && tinta > 0 && gruesos == 0);
        // AD1's fill, and its tip drawn at the device's resolution, not the plain drawing enlarged.
        const QRect tip(QPointF(16 * ratio, 16 * ratio).toPoint(), QSize(40, 30) * ratio);
        QCOMPARE(imagen.pixelColor(tip.topLeft()), QColor(0x80, 0, 0));
        QVERIFY(imagen.copy(tip) != llana.scaled(imagen.size()).copy(tip));
        QTest::mouseClick(vista, Qt::LeftButton, {}, QPoint(11, 30)); // the room
        QTest::mouseClick(vista, Qt::LeftButton, {}, QPoint(12, 30)); // AD1's first column
        QVERIFY(s.click.count() == 2 && s.click.at(0).at(0).value<ObjetoPtr>() != d1
                && s.click.at(1).at(0).value<ObjetoPtr>() == d1);
    }

    void revealFindsAndShows_data()
    {
        QTest::addColumn<QString>("codigo");
        QTest::addColumn<QString>("hallado"); // the frame, and what was found there
        QTest::newRow("the last of 4000 barrels") << u"b40-100"_s << u"P1 B40-100"_s;
        QTest::newRow("a position's code") << u"13007"_s << u"P1 B3-7"_s;
        QTest::newRow("a vessel") << u"ad2"_s << u"NA AD2"_s;
        QTest::newRow("a root") << u"b"_s << u"NB B"_s;
        QTest::newRow("nothing") << u"Z9"_s << u"NA"_s;
    }
    void revealFindsAndShows()
    {
        QFETCH(QString, codigo);
        QFETCH(QString, hallado);
        Sitio s;
        auto pierna = std::make_shared<Pierna>();
        pierna->setCodigo(u"1"_s), pierna->setEscalas(40);
        for (qint16 t = 1; t <= 40; ++t) {
            pierna->setEscala(t, 100);
            for (qint16 p = 1; p <= 100; ++p) {
                pierna->setObjeto(t, p, std::make_shared<Lote>());
                pierna->getObjeto(t, p)->setCodigo(u"B%1-%2"_s.arg(t).arg(p));
            }
        }
        s.mapa.add(pierna), s.mapa.show(s.a), s.mapa.seleccionar(s.a, u"AD1"_s);
        FrameX *na = s.frame(u"NA"_s);
        const int alto = na->height();
        QTest::mouseClick(na->findChild<QWidget *>(u"mini"_s), Qt::LeftButton); // opened by what is found in it
        const ObjetoPtr objeto = s.mapa.revelar(codigo);
        QCOMPARE(na->height() == alto, hallado.startsWith(u"NA "_s));
        FrameX *donde = s.frame(hallado.section(u' ', 0, 0));
        QCOMPARE(objeto ? objeto->getCodigo() : QString(), hallado.section(u' ', 1));
        QVERIFY(s.mapa.getFrame() == donde->getObjeto() && donde->isVisible() && s.errors.messages().isEmpty());
        if (objeto == donde->getObjeto()) // a root is shown and activated; nothing in it changes
            return;
        // Selected alone (nothing found: the selection as it was), active and where its frame shows it.
        const auto seleccion = s.mapa.getSelected();
        QVERIFY(seleccion->count() == 1 && seleccion->Item(1) == (objeto ? objeto : s.a->getObjetos()->Item(1)));
        QVERIFY(!objeto || (s.mapa.getActive() == objeto
                && donde->vista()->visibleRegion().boundingRect().contains(donde->vista()->areaDe(objeto))));
    }

    // Root objects pass through the real map, frames, container and leg view, as a host uses them: Ctrl+Tab goes
    // round the frames with the keyboard's focus, a screen reader finds the frames' parts, the pointer works them.
    void roadThroughTheControls()
    {
        Sitio s;
        QVERIFY(QTest::qWaitForWindowActive(&s.mapa));
        auto pierna = std::make_shared<Pierna>();
        pierna->setCodigo(u"1"_s), pierna->setDescripcion(u"Pierna uno"_s);
        pierna->setEscalas(1), pierna->setEscala(1, 3);
        auto barrica = std::make_shared<Lote>();
        barrica->setCodigo(u"B1"_s), barrica->setPadre(pierna->getUbicacion(1, 2)->getCodigo());
        pierna->setObjeto(1, 2, barrica), s.mapa.add(pierna), s.frame(u"P1"_s)->move(380, 20);
        for (const ObjetoPtr &o : { ObjetoPtr(pierna), s.b, s.a })
            s.mapa.show(o);
        s.mapa.clearFocus(), s.mapa.setFocus(Qt::TabFocusReason);
        QString recorrido = s.frame(u"NA"_s)->objectName();
        const Qt::KeyboardModifiers ctrl = Qt::ControlModifier;
        for (const Qt::KeyboardModifiers modificadores : { ctrl, ctrl, ctrl, ctrl | Qt::ShiftModifier }) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab, modificadores);
            QCOMPARE(QApplication::focusWidget(), s.conten(s.mapa.getFrame()));
            recorrido += u' ' + s.mapa.getFrame()->getTipo() + s.mapa.getFrame()->getCodigo();
        }
        QCOMPARE(recorrido, u"NA NB P1 NA P1"_s);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return); // from the view, on to the map
        QCOMPARE(s.enter.last().at(0).value<ObjetoPtr>(), ObjetoPtr(pierna));
        // The leg's frame: its title, its buttons, the view with its strips and positions.
        QAccessibleInterface *frame = QAccessible::queryAccessibleInterface(s.frame(u"P1"_s));
        QCOMPARE(frame->text(QAccessible::Name), u"Pierna uno"_s);
        const auto hijo = [](QAccessibleInterface *padre, const QString &nombre) {
            for (int i = 0; i < padre->childCount(); ++i)
                if (padre->child(i)->object() && padre->child(i)->object()->objectName() == nombre)
                    return padre->child(i);
            return static_cast<QAccessibleInterface *>(nullptr);
        };
        QStringList arbol;
        std::function<void(QAccessibleInterface *, const QString &)> bajar = [&](auto *i, const QString &sangria) {
            const char *rol = QMetaEnum::fromType<QAccessible::Role>().valueToKey(i->role());
            arbol.append(sangria + QLatin1StringView(rol) + u' ' + i->text(QAccessible::Name));
            for (int k = 0; i->role() == QAccessible::List && k < i->childCount(); ++k)
                bajar(i->child(k), sangria + u"  "_s);
        };
        for (const QString &parte : { u"titulo"_s, u"mini"_s, u"cerrar"_s, u"conten"_s })
            bajar(hijo(frame, parte), QString());
        QCOMPARE(arbol, (QStringList { "StaticText Pierna uno", "Button Minimizar", "Button Cerrar", "List Pierna uno",
                                       "  Client ", "  List Ubicaciones", "    ListItem 1", "    ListItem 2",
                                       "    ListItem 3", "  List Escalas", "    ListItem 1", "  ListItem 11001",
                                       "  ListItem B1", "  ListItem 11003" }));
        QAccessibleInterface *vista = hijo(frame, u"conten"_s), *escalas = hijo(vista, u"escalas"_s);
        QVERIFY(!vista->child(3)->state().selectable && vista->child(4)->state().selectable); // 11001 is empty
        QVERIFY(vista->indexOfChild(escalas) == 2 && vista->child(4)->window() == s.mapa.windowHandle());
        QAccessibleInterface *tier = escalas->child(0); // the whole strip, and the first action is press
        QVERIFY(tier->rect() == escalas->rect() && !tier->state().invisible);
        tier->actionInterface()->doAction(tier->actionInterface()->actionNames().constFirst());
        QCOMPARE(s.click.last().at(0).value<ObjetoPtr>()->getCodigo(), u"11000"_s); // the tier
        // A click on a vessel arrives as Click, and its view takes the keyboard from the host's field: Enter names it.
        QWidget *vistaPierna = s.conten(pierna);
        const QPoint celda =
            GeometriaCeldas(vistaPierna->height(), 1.0, pierna->getClasica()).celda(1, 2).center().toPoint();
        QLineEdit campo(&s.mapa);
        campo.show(), campo.setFocus();
        const ObjetoPtr d2 = s.a->getObjetos()->Item(2);
        QTest::mouseClick(s.conten(s.a), Qt::LeftButton, Qt::NoModifier, QPoint(95, 30));
        QVERIFY(s.click.last().at(0).value<ObjetoPtr>() == d2 && QApplication::focusWidget() == s.conten(s.a));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QCOMPARE(s.enter.last().at(0).value<ObjetoPtr>(), d2);
        QTest::mouseClick(vistaPierna, Qt::LeftButton, Qt::NoModifier, celda);
        QVERIFY(s.click.last().at(0).value<ObjetoPtr>() == barrica && s.mapa.getFrame() == pierna);
        // The barrel dragged from the leg onto a vessel arrives as Drop, with the leg's selection.
        QTest::mousePress(vistaPierna, Qt::LeftButton, Qt::NoModifier, celda);
        arrastrar(vistaPierna, celda + QPoint(0, 8));
        QCOMPARE(s.driver.drop(s.conten(s.a), QPoint(95, 30)), Qt::CopyAction);
        s.driver.finish(Qt::CopyAction);
        s.mapa.IMapaX_Droped(u"NZ"_s, s.a, 0); // from a frame that is gone: nothing
        const auto origen = s.drop.value(0).value(0).value<std::shared_ptr<Objetos>>();
        QVERIFY(s.drop.count() == 1 && origen->count() == 1 && origen->Item(1) == barrica);
        QCOMPARE(s.drop.at(0).at(1).value<ObjetoPtr>(), d2);
        QAccessibleActionInterface *mini = hijo(frame, u"mini"_s)->actionInterface();
        mini->doAction(mini->actionNames().constFirst());
        QCOMPARE(s.frame(u"P1"_s)->height(), 24); // the title and the border
        hijo(frame, u"cerrar"_s)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        QVERIFY(!s.mapa.isMember(pierna) && s.mapa.isMember(s.a) && s.errors.messages().isEmpty());
    }
};

QTEST_MAIN(tst_MapaX)
#include "tst_mapax.moc"
