#include <tarvonix/map/framex.h>
#include <tarvonix/map/mapax.h>
#include <tarvonix/widgets/etiquetas.h>

#include "dragdriver.h"
#include "errorcatcher.h"
#include "naves.h"

#include <QSignalSpy>
#include <QTest>

using namespace tarvonix;
using namespace naves;
using namespace Qt::StringLiterals;

namespace {

// A shown 700 x 500 map holding "NA" (with keys) and "NB" (without), neither shown yet.
struct Sitio
{
    ErrorCatcher errors;
    MapaX mapa;
    std::shared_ptr<Objeto> a = nave(u"A"_s, u"N"_s, true), b = nave(u"B"_s);
    DragDriver driver; // made after the map, which it may enter

    Sitio()
    {
        mapa.resize(700, 500);
        mapa.show();
        mapa.add(a);
        mapa.add(b);
    }
    FrameX *frame(const QString &nombre) const { return qobject_cast<FrameX *>(mapa.control(nombre)); }
    QWidget *conten(const QString &nombre) const { return frame(nombre)->findChild<QWidget *>(u"conten"_s); }
    // The user selects the first vessel of \a obj and Shift-drags it 20 pixels right; answers its x then.
    int desplazar(const std::shared_ptr<Objeto> &obj)
    {
        QWidget *vista = conten(u"N"_s + obj->getCodigo());
        const QPoint desde(17, 17), hasta(37, 17);
        QTest::mouseClick(vista, Qt::LeftButton, Qt::NoModifier, desde);
        QTest::mousePress(vista, Qt::LeftButton, Qt::ShiftModifier, desde);
        arrastrar(vista, hasta, Qt::ShiftModifier);
        driver.drop(vista, hasta, Qt::ShiftModifier);
        driver.finish(Qt::MoveAction);
        QTest::mouseRelease(vista, Qt::LeftButton, Qt::ShiftModifier, hasta);
        return obj->getObjetos()->Item(1)->getX();
    }
};

} // namespace

using Accion = std::function<void(Sitio &)>;
Q_DECLARE_METATYPE(Accion)

class tst_MapaX : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void activeFrame();
    void framesAreFittedIntoTheMap();
    void legendFollowsTheActiveFrame();
    void keysRaiseEnterAndRightClick();
    void layoutRequestsRunOnTheNextTick_data();
    void layoutRequestsRunOnTheNextTick();
    void framesMoveByTheirTitle();
    void failures_data();
    void failures();
};

void tst_MapaX::activeFrame()
{
    Sitio s;
    QCOMPARE(s.mapa.controlNames(), (QStringList{u"thread"_s, u"NA"_s, u"NB"_s}));
    QVERIFY(s.frame(u"NA"_s)->isHidden() && !s.mapa.getFrame()); // added frames wait for show()
    s.mapa.show(s.b);
    s.mapa.show(s.a);
    s.mapa.hide(s.a); // hiding keeps the active frame
    QCOMPARE(s.mapa.getFrame(), ObjetoPtr(s.a));
    QVERIFY(s.mapa.getSelected() && !s.frame(u"NB"_s)->pActive());

    // Shown again, the active frame stays active for the eye and the pointer, and keeps its active object.
    s.mapa.show(s.a);
    s.mapa.show(s.a);
    QCOMPARE(s.frame(u"NA"_s)->findChild<etiquetas *>(u"titulo"_s)->BackColor(), 0x800000);
    QSignalSpy click(&s.mapa, &MapaX::Click);
    QTest::mouseClick(s.conten(u"NA"_s), Qt::LeftButton, Qt::NoModifier, QPoint(17, 17));
    QCOMPARE(click.count(), 1);
    QCOMPARE(click.at(0).at(0).value<ObjetoPtr>(), s.a->getObjetos()->Item(1));
    s.mapa.show(s.a);
    QVERIFY(s.frame(u"NA"_s)->pActive() && s.mapa.getActive() == s.a->getObjetos()->Item(1));

    // Removing a frame, even an inactive one, leaves no active frame or object.
    s.mapa.remove(s.b);
    QVERIFY(!s.mapa.getFrame() && !s.mapa.getActive() && !s.mapa.getSelected() && !s.frame(u"NB"_s));
    // A host may remove the frame from inside its own Click handler.
    connect(&s.mapa, &MapaX::Click, &s.mapa, [&] { s.mapa.remove(s.a); });
    QPointer<QWidget> vista = s.conten(u"NA"_s);
    QTest::mouseClick(vista, Qt::LeftButton, Qt::NoModifier, QPoint(17, 17));
    flushDeletes();
    QVERIFY(click.count() == 2 && !vista);

    // setObjeto with no active frame adds and shows; with another code replaces; with the same code swaps.
    const auto uno = nave(u"1"_s), dos = nave(u"2"_s), otroDos = nave(u"2"_s);
    s.mapa.setObjeto(uno);
    QCOMPARE(s.mapa.getFrame(), ObjetoPtr(uno));
    s.mapa.setObjeto(dos);
    QCOMPARE(s.mapa.controlNames(), (QStringList{u"thread"_s, u"N2"_s}));
    FrameX *frame = s.frame(u"N2"_s);
    s.mapa.setObjeto(otroDos);
    QVERIFY(s.frame(u"N2"_s) == frame && frame->getObjeto() == otroDos);
    s.mapa.removeAll();
    QCOMPARE(s.mapa.controlNames(), QStringList{u"thread"_s});
    s.mapa.setSelected(true); // only redraws: reading answers false
    QVERIFY(!s.mapa.selected());
    QCOMPARE(s.errors.messages(), QStringList());
}

void tst_MapaX::framesAreFittedIntoTheMap()
{
    Sitio s;
    QWidget *frame = s.frame(u"NB"_s);
    frame->move(500, 400);
    s.mapa.resized(); // pushed back inside, 2 pixels from the right and bottom edges
    QCOMPARE(frame->pos(), QPoint(700 - frame->width() - 2, 500 - frame->height() - 2));
    auto grande = nave(u"G"_s);
    grande->getObjetos()->Item(1)->setAncho(2000);
    s.mapa.add(grande);
    QCOMPARE(s.frame(u"NG"_s)->width(), 698); // limited by the map
    s.frame(u"NG"_s)->move(300, 0);
    s.mapa.resize(700, 501); // a real resize fits every frame too; one as wide as the map goes to 1
    QCOMPARE(s.frame(u"NG"_s)->x(), 1);
}

void tst_MapaX::legendFollowsTheActiveFrame()
{
    Sitio s;
    auto listaVacia = nave(u"E"_s);
    listaVacia->setReferencias(std::make_shared<Referencias>());
    s.mapa.add(listaVacia);
    s.mapa.show(s.a);
    QVERIFY(!s.mapa.control(u"REF"_s)); // not asked for yet
    s.mapa.ShowReferences();
    QWidget *leyenda = s.mapa.control(u"REF"_s);
    QVERIFY(leyenda && leyenda->isVisible() && leyenda->findChild<QWidget *>(u"RT"_s)); // a row per key
    QCOMPARE(leyenda->pos(), QPoint(2, 2));
    const QSize tamano = leyenda->size();
    s.mapa.show(listaVacia); // an empty list changes nothing: the keys stay
    QVERIFY(leyenda->isVisible() && leyenda->findChild<QWidget *>(u"RV"_s) && leyenda->size() == tamano);
    s.mapa.show(s.b); // no list at all: hidden
    QVERIFY(leyenda->isHidden());
    s.mapa.show(s.a);
    QVERIFY(leyenda->isVisible());
    // Closed with its own button, and not wanted any more.
    QTest::mousePress(leyenda->findChild<QWidget *>(u"cerrar"_s), Qt::LeftButton, Qt::NoModifier, QPoint(5, 5));
    flushDeletes();
    QVERIFY(!s.mapa.control(u"REF"_s));
    s.mapa.show(s.b);
    s.mapa.show(s.a);
    QVERIFY(!s.mapa.control(u"REF"_s));
}

void tst_MapaX::keysRaiseEnterAndRightClick()
{
    Sitio s;
    QSignalSpy enter(&s.mapa, &MapaX::Enter), right(&s.mapa, &MapaX::RightClick);
    QTest::keyClick(&s.mapa, Qt::Key_Return); // nothing active: nothing raised
    QTest::keyClick(&s.mapa, Qt::Key_Menu);
    s.mapa.show(s.a); // the frame is active, no object is
    QTest::keyClick(&s.mapa, Qt::Key_Enter);
    QTest::keyClick(&s.mapa, Qt::Key_Menu); // a frame is no map object: nothing is raised
    QCOMPARE(enter.count() + right.count(), 1);
    QCOMPARE(enter.at(0).at(0).value<ObjetoPtr>(), ObjetoPtr(s.a));
    // An active object inside the frame, with two selected.
    s.frame(u"NA"_s)->seleccionarTodos();
    const ObjetoPtr hijo = s.a->getObjetos()->Item(2);
    s.mapa.callbacks()->setActive(hijo, s.frame(u"NA"_s), 1);
    QTest::keyClick(&s.mapa, Qt::Key_Menu);
    QTest::keyClick(&s.mapa, Qt::Key_Return);
    QCOMPARE(right.count(), 1);
    QVERIFY(right.at(0).at(0).value<ObjetoPtr>() == hijo && right.at(0).at(1).toBool());
    QCOMPARE(enter.last().at(0).value<ObjetoPtr>(), hijo);
    s.frame(u"NA"_s)->deseleccionarTodos(); // one selected: not several
    s.frame(u"NA"_s)->seleccionar(u"AD2"_s);
    QTest::keyClick(&s.mapa, Qt::Key_Menu);
    QVERIFY(right.count() == 2 && !right.at(1).at(1).toBool());
}

void tst_MapaX::layoutRequestsRunOnTheNextTick_data()
{
    // D1 (10,10) 50x40 is the active example; D2 is at (70,70) 60x40 and D3 at (150,30) 50x20.
    QTest::addColumn<int>("movidos");
    QTest::addColumn<QString>("despues");
    QTest::newRow("alinearHorizontal") << 3 << u"10,10 50x40|70,10 60x40|150,10 50x20"_s;
    QTest::newRow("alinearVertical") << 3 << u"10,10 50x40|10,70 60x40|10,30 50x20"_s;
    QTest::newRow("igualarDimension") << 3 << u"10,10 50x40|70,70 50x40|150,30 50x40"_s;
    QTest::newRow("distribuirHorizontal") << 1 << u"10,10 50x40|74,70 60x40|150,30 50x20"_s;
    QTest::newRow("distribuirVertical") << 1 << u"10,10 50x40|70,70 60x40|150,49 50x20"_s;
}

void tst_MapaX::layoutRequestsRunOnTheNextTick()
{
    QFETCH(int, movidos);
    QFETCH(QString, despues);
    Sitio s;
    const auto hijos = s.b->getObjetos();
    s.mapa.remove(s.b);
    hijos->Item(2)->setY(70);
    hijos->Item(2)->setAncho(60);
    hijos->Item(3)->setX(150);
    hijos->Item(3)->setY(30);
    hijos->Item(3)->setAlto(20);
    s.mapa.add(s.b);
    s.mapa.show(s.b);
    s.frame(u"NB"_s)->seleccionarTodos();
    s.mapa.callbacks()->setActive(hijos->Item(1), s.frame(u"NB"_s), 1);
    QSignalSpy moved(&s.mapa, &MapaX::moved);
    // Every other request first, within one tick: only the last one runs, and not inside the call.
    for (const char *otra : {"alinearHorizontal", "alinearVertical", "igualarDimension", "distribuirHorizontal",
                             "distribuirVertical"}) {
        if (qstrcmp(otra, QTest::currentDataTag()) != 0)
            QMetaObject::invokeMethod(&s.mapa, otra);
    }
    QMetaObject::invokeMethod(&s.mapa, QTest::currentDataTag());
    QCOMPARE(moved.count(), 0);
    QTest::qWait(50); // several ticks: it runs once
    QCOMPARE(moved.count(), movidos);
    QStringList hechos;
    for (const ObjetoPtr &o : hijos->NewEnum())
        hechos << u"%1,%2 %3x%4"_s.arg(o->getX()).arg(o->getY()).arg(o->getAncho()).arg(o->getAlto());
    QCOMPARE(hechos.join(u'|'), despues);
}

void tst_MapaX::framesMoveByTheirTitle()
{
    Sitio s;
    s.mapa.show(s.b);
    s.mapa.show(s.a);
    FrameX *frame = s.frame(u"NA"_s);
    frame->move(40, 30);
    QWidget *titulo = frame->findChild<QWidget *>(u"titulo"_s);
    QTest::mousePress(titulo, Qt::LeftButton, Qt::NoModifier, QPoint(30, 8));
    arrastrar(titulo, QPoint(40, 8));
    QCOMPARE(s.driver.text(), u"NA"_s);
    QCOMPARE(s.driver.allowed(), Qt::DropActions(Qt::MoveAction));
    // While it moves: the frame hides behind one outline, every control is disabled.
    QWidget *caja = s.mapa.control(u"caja"_s);
    QVERIFY(frame->isHidden() && caja && !s.frame(u"NB"_s)->isEnabled());
    QCOMPARE(caja->geometry(), frame->geometry());
    const QPoint agarre = titulo->pos() + QPoint(40, 8);
    QCOMPARE(QPointF(frame->getDragX(), frame->getDragY()), QPointF(agarre));
    QCOMPARE(s.driver.move(&s.mapa, QPoint(400, 300)), Qt::MoveAction);
    QCOMPARE(caja->pos(), QPoint(400, 300) - agarre);
    QCOMPARE(s.driver.drop(&s.mapa, QPoint(420, 310)), Qt::MoveAction);
    s.driver.finish(Qt::MoveAction);
    QCOMPARE(frame->pos(), QPoint(420, 310) - agarre);
    QVERIFY(!frame->isHidden() && s.frame(u"NB"_s)->isEnabled());
    flushDeletes();
    QVERIFY(s.mapa.findChildren<QWidget *>(u"caja"_s).isEmpty());
    // A frame's name dropped when nothing moves is refused, and the frame stays.
    QMimeData ajeno;
    ajeno.setText(u"NB"_s);
    const QPoint antes = s.frame(u"NB"_s)->pos();
    QCOMPARE(DragDriver::moveData(&s.mapa, QPoint(10, 10), &ajeno), Qt::IgnoreAction);
    QCOMPARE(DragDriver::dropData(&s.mapa, QPoint(10, 10), &ajeno), Qt::IgnoreAction);
    QCOMPARE(s.frame(u"NB"_s)->pos(), antes);
    QCOMPARE(s.errors.messages(), QStringList());
}

void tst_MapaX::failures_data()
{
    QTest::addColumn<Accion>("accion");
    QTest::addColumn<QStringList>("etiquetas");
    const QString noHay = u"->Control not found"_s, sinObjeto = u"->Object variable or With block variable not set"_s;
    const QString sinMiembro = u"->Object doesn't support this property or method"_s;
    const QString repetido = u"->This key is already associated with an element of this collection"_s;
    QTest::newRow("add under a taken name") << Accion([](Sitio &s) { s.mapa.add(nave({}, u"NA"_s)); })
                                            << QStringList{"MapaX.add" + repetido};
    QTest::newRow("add none") << Accion([](Sitio &s) { s.mapa.add(nullptr); }) << QStringList{"MapaX.add" + sinObjeto};
    QTest::newRow("remove the legend never shown") << Accion([](Sitio &s) { s.mapa.remove(nullptr); })
                                                   << QStringList{"MapaX.remove" + noHay};
    QTest::newRow("a missing frame") << Accion([](Sitio &s) {
        const auto nunca = nave(u"Z"_s);
        s.mapa.seleccionar(nunca, u"ZD1"_s); // the selections and isMember are quiet
        s.mapa.seleccionarTodos(nunca);
        s.mapa.deseleccionarTodos(nunca);
        QVERIFY(!s.mapa.isMember(nunca) && !s.mapa.isMember(nullptr));
        s.mapa.show(nunca);
        s.mapa.hide(nunca);
        s.mapa.Refresh(nunca);
        s.mapa.setEscala(nunca, 2.0f);
        s.mapa.remove(nunca);
    }) << QStringList{"MapaX.show" + noHay, "MapaX.hide" + noHay, "MapaX.Refresh" + noHay,
                      "MapaX.setEscala" + noHay, "MapaX.remove" + noHay};
    QTest::newRow("setObjeto under another type") << Accion([](Sitio &s) {
        s.mapa.show(s.b);
        s.mapa.setObjeto(nave(u"B"_s, u"X"_s));
        QCOMPARE(s.frame(u"NB"_s)->getObjeto(), ObjetoPtr(s.b));
    }) << QStringList{"MapaX.setObjeto" + noHay};
    QTest::newRow("layout with no active frame") << Accion([](Sitio &s) { s.mapa.igualarDimension(); })
                                                 << QStringList{"MapaX.thread.Timer" + sinObjeto};
    QTest::newRow("drop from a missing frame") << Accion([](Sitio &s) {
        QSignalSpy drop(&s.mapa, &MapaX::Drop);
        s.mapa.IMapaX_Droped(u"NZ"_s, s.a, 0);
        QCOMPARE(drop.count(), 0);
    }) << QStringList();
    // The walk stops at the legend: the frames before it are locked, the ones after are not.
    QTest::newRow("lock walk stops at the legend") << Accion([](Sitio &s) {
        s.mapa.show(s.a);
        s.mapa.ShowReferences();
        const auto c = nave(u"C"_s);
        s.mapa.add(c);
        s.mapa.show(s.b);
        s.mapa.setBloqueo(true);
        QCOMPARE(s.desplazar(s.b), 10);
        s.mapa.show(c);
        QCOMPARE(s.desplazar(c), 30);
    }) << QStringList{"MapaX.setBloqueo" + sinMiembro};
    // While a frame moves, the outline answers no fitting and no second outline can be made.
    QTest::newRow("resize and move while moving") << Accion([](Sitio &s) {
        s.mapa.startMove(s.frame(u"NA"_s));
        s.mapa.resize(s.mapa.width() + 10, s.mapa.height());
        s.mapa.startMove(s.frame(u"NA"_s));
        s.driver.finish();
        s.driver.finish();
        QVERIFY(s.frame(u"NA"_s)->isVisible());
    }) << QStringList{"MapaX.UserControl_Resize" + sinMiembro, "MapaX.dibujarCaja" + repetido};
    QTest::newRow("frame removed while moving") << Accion([](Sitio &s) {
        s.mapa.startMove(s.frame(u"NA"_s));
        s.mapa.remove(s.a);
        s.driver.finish();
    }) << QStringList{"MapaX.completeMove" + noHay};
    QTest::newRow("legend closed while moving") << Accion([](Sitio &s) {
        s.mapa.show(s.a);
        s.mapa.ShowReferences();
        s.mapa.startMove(s.mapa.control(u"REF"_s));
        s.mapa.remove(nullptr);
        QCOMPARE(s.driver.drop(&s.mapa, QPoint(50, 50)), Qt::IgnoreAction); // nothing left to move
        s.driver.finish();
    }) << QStringList{"MapaX.UserControl_OLEGiveFeedback" + noHay, "MapaX.completeMove" + noHay};
    // A host deletes the whole map while one of its frames moves: the drag's end finds nothing.
    QTest::newRow("map deleted while moving") << Accion([](Sitio &s) {
        auto *efimero = new MapaX;
        efimero->add(s.a);
        efimero->startMove(efimero->control(u"NA"_s));
        delete efimero;
        QVERIFY(s.driver.dragging());
        s.driver.finish();
    }) << QStringList();
}

void tst_MapaX::failures()
{
    QFETCH(Accion, accion);
    QFETCH(QStringList, etiquetas);
    Sitio s;
    accion(s);
    QTRY_COMPARE(s.errors.messages(), etiquetas);
    // Whatever failed, no move outline and no disabled control remain.
    flushDeletes();
    QVERIFY(!s.mapa.control(u"caja"_s));
    for (const QString &nombre : s.mapa.controlNames().mid(1))
        QVERIFY(s.mapa.control(nombre)->isEnabled());
}

QTEST_MAIN(tst_MapaX)
#include "tst_mapax.moc"
