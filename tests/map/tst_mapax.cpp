#include <tarvonix/model/icontenedorx.h>
#include <tarvonix/model/referencias.h>
#include <tarvonix/map/framex.h>
#include <tarvonix/widgets/etiquetas.h>
#include <tarvonix/map/mapax.h>
#include <tarvonix/model/deposito.h>
#include <tarvonix/model/objeto.h>
#include <tarvonix/model/objetos.h>

#include "dragdriver.h"
#include "errorcatcher.h"

#include <QSignalSpy>
#include <QTest>

using namespace tarvonix;

namespace {

std::shared_ptr<Objeto> nave(const QString &tipo, const QString &codigo, int hijos = 3)
{
    auto objeto = std::make_shared<Objeto>();
    objeto->setTipo(tipo);
    objeto->setCodigo(codigo);
    objeto->setDescripcion(QStringLiteral("Nave ") + codigo);
    objeto->setPuedeContener(true);
    for (int i = 1; i <= hijos; ++i) {
        auto deposito = std::make_shared<Deposito>();
        deposito->setCodigo(codigo + QStringLiteral("D%1").arg(i));
        deposito->setX(qint16(10 + 60 * (i - 1)));
        deposito->setY(10);
        deposito->setAncho(50);
        deposito->setAlto(40);
        deposito->setForma(1);
        deposito->setPadre(codigo);
        objeto->getObjetos()->add(deposito);
    }
    return objeto;
}

FrameX *frameDe(MapaX &mapa, const QString &nombre)
{
    return qobject_cast<FrameX *>(mapa.control(nombre));
}

void flushDeletes()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace

class tst_MapaX : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void framesAreNamedByTypeAndCode();
    void removingClearsTheActiveFrame();
    void showingTheActiveFrameKeepsItActive();
    void setObjetoAddsReplacesOrSwaps();
    void framesAreFittedIntoTheMap();
    void legendFollowsTheActiveObject();
    void keysRaiseEnterAndRightClick();
    void layoutRequestsRunOnTheNextTick();
    void lockWalkStopsAtTheLegend();
    void framesMoveByTheirTitle();
    void movesSurviveRemovalsAndResizes();
    void callbacksBecomeSignals();
    void operationsOnMissingFramesAreQuiet();
};

void tst_MapaX::framesAreNamedByTypeAndCode()
{
    ErrorCatcher errors;
    MapaX mapa;
    QCOMPARE(mapa.controlNames(), QStringList{QStringLiteral("thread")});
    QVERIFY(!mapa.getActive());
    QVERIFY(!mapa.getFrame());

    mapa.add(nave(QStringLiteral("A"), QStringLiteral("1")));
    QVERIFY(qobject_cast<FrameX *>(mapa.control(QStringLiteral("A1"))));
    // "A1" + "" names the same frame: the second add fails and leaves no frame behind.
    mapa.add(nave(QStringLiteral("A1"), QString()));
    QCOMPARE(errors.messages(),
             QStringList{QStringLiteral("MapaX.add->This key is already associated with an element of this collection")});
    QCOMPARE(mapa.controlNames(), (QStringList{QStringLiteral("thread"), QStringLiteral("A1")}));
    QVERIFY(mapa.isMember(nave(QStringLiteral("A"), QStringLiteral("1"), 0)));
    QVERIFY(!mapa.isMember(nave(QStringLiteral("B"), QStringLiteral("1"), 0)));
    QVERIFY(!mapa.isMember(nullptr));
    QCOMPARE(errors.messages().size(), 1); // isMember says nothing

    mapa.add(nave(QStringLiteral("B"), QStringLiteral("2")));
    mapa.ShowReferences();
    mapa.removeAll();
    QCOMPARE(mapa.controlNames(), QStringList{QStringLiteral("thread")});
    mapa.add(nullptr);
    QCOMPARE(errors.messages().last(), QStringLiteral("MapaX.add->Object variable or With block variable not set"));

    mapa.setSelected(true);
    QVERIFY(!mapa.selected());
}

void tst_MapaX::removingClearsTheActiveFrame()
{
    ErrorCatcher errors;
    MapaX mapa;
    mapa.show();
    const auto a = nave(QStringLiteral("N"), QStringLiteral("A"));
    const auto b = nave(QStringLiteral("N"), QStringLiteral("B"));
    mapa.add(a);
    mapa.add(b);
    QVERIFY(mapa.control(QStringLiteral("NA"))->isHidden()); // added frames wait for show()
    mapa.show(a);
    QCOMPARE(mapa.getFrame(), ObjetoPtr(a));
    QVERIFY(mapa.getSelected());
    mapa.show(b);
    QCOMPARE(mapa.getFrame(), ObjetoPtr(b));
    QVERIFY(!qobject_cast<FrameX *>(mapa.control(QStringLiteral("NA")))->pActive());

    mapa.hide(b); // hiding keeps the active frame
    QCOMPARE(mapa.getFrame(), ObjetoPtr(b));

    // Removing the inactive frame still leaves the map with no active frame or object.
    mapa.remove(a);
    QVERIFY(!mapa.getFrame());
    QVERIFY(!mapa.getActive());
    QVERIFY(!mapa.getSelected());
    QVERIFY(!mapa.control(QStringLiteral("NA")));

    // No legend to remove: the failure comes after the wish for a legend was dropped.
    mapa.remove(nullptr);
    QCOMPARE(errors.messages(), QStringList{QStringLiteral("MapaX.remove->Control not found")});
    mapa.remove(a);
    QCOMPARE(errors.messages().last(), QStringLiteral("MapaX.remove->Control not found"));
}

void tst_MapaX::showingTheActiveFrameKeepsItActive()
{
    MapaX mapa;
    mapa.show();
    const auto a = nave(QStringLiteral("N"), QStringLiteral("A"));
    mapa.add(a);
    mapa.show(a);
    mapa.show(a); // the host shows the frame that is already the active one
    auto *frame = qobject_cast<FrameX *>(mapa.control(QStringLiteral("NA")));
    auto *titulo = frame->findChild<etiquetas *>(QStringLiteral("titulo"));
    QVERIFY(frame->pActive());
    QCOMPARE(titulo->BackColor(), 0x800000);
    QCOMPARE(mapa.getFrame(), ObjetoPtr(a));

    // Still active for the pointer: a click on a vessel reaches the host.
    QSignalSpy click(&mapa, &MapaX::Click);
    QWidget *contenido = frame->findChild<QWidget *>(QStringLiteral("conten"));
    const ObjetoPtr hijo = a->getObjetos()->Item(1);
    QTest::mouseClick(contenido, Qt::LeftButton, Qt::NoModifier, QPoint(hijo->getX() + 7, hijo->getY() + 7));
    QCOMPARE(click.count(), 1);
    QCOMPARE(click.at(0).at(0).value<ObjetoPtr>(), hijo);
    // Shown once more, the frame keeps its active object as well.
    mapa.show(a);
    QVERIFY(frame->pActive());
    QCOMPARE(mapa.getActive(), hijo);
}

void tst_MapaX::setObjetoAddsReplacesOrSwaps()
{
    ErrorCatcher errors;
    MapaX mapa;
    mapa.show();
    const auto primero = nave(QStringLiteral("N"), QStringLiteral("1"));
    mapa.setObjeto(primero); // no active frame: added and shown
    QCOMPARE(mapa.getFrame(), ObjetoPtr(primero));

    const auto otro = nave(QStringLiteral("N"), QStringLiteral("2"));
    mapa.setObjeto(otro); // another code: the frame is replaced
    QCOMPARE(mapa.controlNames(), (QStringList{QStringLiteral("thread"), QStringLiteral("N2")}));
    QCOMPARE(mapa.getFrame(), ObjetoPtr(otro));

    const auto mismoCodigo = nave(QStringLiteral("N"), QStringLiteral("2"), 1);
    QWidget *frame = mapa.control(QStringLiteral("N2"));
    mapa.setObjeto(mismoCodigo); // same code: same frame, new object
    QCOMPARE(mapa.control(QStringLiteral("N2")), frame);
    QCOMPARE(frameDe(mapa, QStringLiteral("N2"))->getObjeto(), ObjetoPtr(mismoCodigo));
    QVERIFY(errors.messages().isEmpty());

    // Same code, another type: looked up under a name that does not exist.
    mapa.setObjeto(nave(QStringLiteral("X"), QStringLiteral("2")));
    QCOMPARE(errors.messages(), QStringList{QStringLiteral("MapaX.setObjeto->Control not found")});
    QCOMPARE(frameDe(mapa, QStringLiteral("N2"))->getObjeto(), ObjetoPtr(mismoCodigo));
}

void tst_MapaX::framesAreFittedIntoTheMap()
{
    MapaX mapa;
    mapa.resize(700, 500);
    mapa.show();
    const auto pequena = nave(QStringLiteral("N"), QStringLiteral("P"), 1);
    mapa.add(pequena);
    QWidget *frame = mapa.control(QStringLiteral("NP"));
    frame->move(500, 400);
    mapa.resized();
    // Pushed back inside, 2 pixels from the right and bottom edges.
    QCOMPARE(frame->x(), 700 - frame->width() - 2);
    QCOMPARE(frame->y(), 500 - frame->height() - 2);

    // A frame that fills the whole width ends at position 1.
    auto grande = nave(QStringLiteral("N"), QStringLiteral("G"), 1);
    grande->getObjetos()->Item(1)->setAncho(2000);
    mapa.add(grande);
    QWidget *ancho = mapa.control(QStringLiteral("NG"));
    QCOMPARE(ancho->width(), 698); // limited by the map
    ancho->move(300, 0);
    mapa.resize(700, 501); // a real resize fits every frame too
    QCOMPARE(ancho->x(), 1);
}

void tst_MapaX::legendFollowsTheActiveObject()
{
    MapaX mapa;
    mapa.show();
    auto conClaves = nave(QStringLiteral("N"), QStringLiteral("K"));
    auto claves = std::make_shared<Referencias>();
    claves->add(QStringLiteral("T"), QStringLiteral("Tempranillo"), 0x000080);
    claves->add(QStringLiteral("V"), QStringLiteral("Verdejo"), 0x00FFFF);
    conClaves->setReferencias(claves);
    auto listaVacia = nave(QStringLiteral("N"), QStringLiteral("E"));
    listaVacia->setReferencias(std::make_shared<Referencias>());
    auto sinLista = nave(QStringLiteral("N"), QStringLiteral("S"));
    for (const auto &obj : {conClaves, listaVacia, sinLista})
        mapa.add(obj);

    mapa.show(conClaves);
    QVERIFY(!mapa.control(QStringLiteral("REF"))); // not asked for yet
    mapa.ShowReferences();
    QWidget *leyenda = mapa.control(QStringLiteral("REF"));
    QVERIFY(leyenda);
    QVERIFY(leyenda->isVisible());
    QCOMPARE(leyenda->pos(), QPoint(2, 2));
    QVERIFY(leyenda->findChild<QWidget *>(QStringLiteral("RT"))); // a row per key, named R + clave

    mapa.show(listaVacia); // an empty list changes nothing: the two keys stay
    QVERIFY(leyenda->isVisible());
    QVERIFY(leyenda->findChild<QWidget *>(QStringLiteral("RV")));
    mapa.show(sinLista); // no list at all: hidden
    QVERIFY(leyenda->isHidden());
    mapa.show(conClaves);
    QVERIFY(leyenda->isVisible());

    // Closed with its own button, and not wanted any more.
    QTest::mousePress(leyenda->findChild<QWidget *>(QStringLiteral("cerrar")), Qt::LeftButton, Qt::NoModifier,
                      QPoint(5, 5));
    flushDeletes();
    QVERIFY(!mapa.control(QStringLiteral("REF")));
    mapa.show(listaVacia);
    mapa.show(conClaves);
    QVERIFY(!mapa.control(QStringLiteral("REF")));
}

void tst_MapaX::keysRaiseEnterAndRightClick()
{
    MapaX mapa;
    mapa.show();
    QSignalSpy enter(&mapa, &MapaX::Enter);
    QSignalSpy right(&mapa, &MapaX::RightClick);
    QTest::keyClick(&mapa, Qt::Key_Return);
    QTest::keyClick(&mapa, Qt::Key_Menu);
    QCOMPARE(enter.count(), 0);
    QCOMPARE(right.count(), 0);

    const auto a = nave(QStringLiteral("N"), QStringLiteral("A"));
    mapa.add(a);
    mapa.show(a); // the frame is active, no object is
    QTest::keyClick(&mapa, Qt::Key_Enter);
    QCOMPARE(enter.count(), 1);
    QCOMPARE(enter.at(0).at(0).value<ObjetoPtr>(), ObjetoPtr(a));
    QTest::keyClick(&mapa, Qt::Key_Menu); // a frame is no map object: nothing is raised
    QCOMPARE(right.count(), 0);

    // An active object inside the frame, with two selected.
    IContenedorX *frame = frameDe(mapa, QStringLiteral("NA"));
    frame->seleccionarTodos();
    const ObjetoPtr hijo = a->getObjetos()->Item(2);
    mapa.callbacks()->setActive(hijo, frame, 1);
    QTest::keyClick(&mapa, Qt::Key_Menu);
    QCOMPARE(right.count(), 1);
    QCOMPARE(right.at(0).at(0).value<ObjetoPtr>(), hijo);
    QCOMPARE(right.at(0).at(1).toBool(), true);
    QTest::keyClick(&mapa, Qt::Key_Return);
    QCOMPARE(enter.last().at(0).value<ObjetoPtr>(), hijo);
}

void tst_MapaX::layoutRequestsRunOnTheNextTick()
{
    ErrorCatcher errors;
    MapaX mapa;
    mapa.show();
    mapa.igualarDimension(); // no active frame when the timer fires
    QTRY_COMPARE(errors.messages(),
                 QStringList{QStringLiteral("MapaX.thread.Timer->Object variable or With block variable not set")});

    const auto a = nave(QStringLiteral("N"), QStringLiteral("A"));
    a->getObjetos()->Item(2)->setY(70);
    a->getObjetos()->Item(3)->setY(30);
    mapa.add(a);
    mapa.show(a);
    frameDe(mapa, QStringLiteral("NA"))->seleccionarTodos();
    QSignalSpy moved(&mapa, &MapaX::moved);
    // Two requests within one tick: only the last one runs.
    mapa.alinearVertical();
    mapa.distribuirVertical();
    QCOMPARE(moved.count(), 0); // nothing happens inside the call
    QTRY_VERIFY(moved.count() > 0);
    QTest::qWait(30);
    QCOMPARE(moved.count(), 1); // the middle one of three, once
    QCOMPARE(a->getObjetos()->Item(1)->getX(), 10); // no vertical alignment happened
    QCOMPARE(a->getObjetos()->Item(3)->getY(), 10 + 40 - 1 + (70 + 40 - 1 - 10 + 1 - 120) / 2);
}

void tst_MapaX::lockWalkStopsAtTheLegend()
{
    ErrorCatcher errors;
    MapaX mapa;
    mapa.show();
    auto a = nave(QStringLiteral("N"), QStringLiteral("A"));
    auto claves = std::make_shared<Referencias>();
    claves->add(QStringLiteral("T"), QStringLiteral("Tinto"), 0x000080);
    a->setReferencias(claves);
    const auto b = nave(QStringLiteral("N"), QStringLiteral("B"));
    mapa.add(a);
    mapa.show(a);
    mapa.ShowReferences(); // "REF" now stands after "NA"
    mapa.add(b);
    mapa.show(b);
    mapa.setBloqueo(true);
    QCOMPARE(errors.messages(), QStringList{QStringLiteral("MapaX.setBloqueo->Object doesn't support this property or method")});

    // "NB" comes after "REF": still unlocked, so a Shift-drag moves its children.
    DragDriver driver;
    QWidget *contenido = mapa.control(QStringLiteral("NB"))->findChild<QWidget *>(QStringLiteral("conten"));
    QVERIFY(contenido);
    const ObjetoPtr hijo = b->getObjetos()->Item(1);
    const QPoint desde(hijo->getX() + 2 + 5, hijo->getY() + 2 + 5);
    QTest::mouseClick(contenido, Qt::LeftButton, Qt::NoModifier, desde); // selects it
    QTest::mousePress(contenido, Qt::LeftButton, Qt::ShiftModifier, desde);
    QMouseEvent arrastre(QEvent::MouseMove, desde + QPoint(20, 0), contenido->mapToGlobal(desde + QPoint(20, 0)),
                         Qt::NoButton, Qt::LeftButton, Qt::ShiftModifier);
    QCoreApplication::sendEvent(contenido, &arrastre);
    QVERIFY(driver.dragging());
    driver.move(contenido, desde + QPoint(20, 0), Qt::ShiftModifier);
    driver.drop(contenido, desde + QPoint(20, 0), Qt::ShiftModifier);
    driver.finish(Qt::MoveAction);
    QCOMPARE(hijo->getX(), 30);
}

void tst_MapaX::framesMoveByTheirTitle()
{
    ErrorCatcher errors;
    MapaX mapa;
    mapa.resize(800, 600);
    mapa.show();
    const auto a = nave(QStringLiteral("N"), QStringLiteral("A"));
    const auto b = nave(QStringLiteral("N"), QStringLiteral("B"));
    mapa.add(a);
    mapa.add(b);
    mapa.show(b);
    mapa.show(a);
    FrameX *frame = frameDe(mapa, QStringLiteral("NA"));
    frame->move(40, 30);
    QWidget *titulo = frame->findChild<QWidget *>(QStringLiteral("titulo"));

    DragDriver driver;
    const QPoint agarre(30, 8);
    QTest::mousePress(titulo, Qt::LeftButton, Qt::NoModifier, agarre);
    QMouseEvent arrastre(QEvent::MouseMove, agarre + QPoint(10, 0), titulo->mapToGlobal(agarre + QPoint(10, 0)),
                         Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(titulo, &arrastre);
    QVERIFY(driver.dragging());
    QCOMPARE(driver.text(), QStringLiteral("NA"));
    QCOMPARE(driver.allowed(), Qt::DropActions(Qt::MoveAction));

    // While it moves: the frame hides behind one outline, every control is disabled.
    QVERIFY(frame->isHidden());
    QWidget *caja = mapa.control(QStringLiteral("caja"));
    QVERIFY(caja);
    QCOMPARE(caja->geometry(), frame->geometry());
    QVERIFY(!mapa.control(QStringLiteral("NB"))->isEnabled());

    const QPointF offset(frame->getDragX(), frame->getDragY());
    QCOMPARE(offset, QPointF(titulo->x() + agarre.x() + 10, titulo->y() + agarre.y()));
    QCOMPARE(driver.move(&mapa, QPoint(400, 300)), Qt::MoveAction);
    QCOMPARE(caja->pos(), QPoint(400, 300) - offset.toPoint());
    QCOMPARE(driver.drop(&mapa, QPoint(420, 310)), Qt::MoveAction);
    driver.finish(Qt::MoveAction);

    QCOMPARE(frame->pos(), QPoint(420, 310) - offset.toPoint());
    QVERIFY(!frame->isHidden());
    QVERIFY(mapa.control(QStringLiteral("NB"))->isEnabled());
    flushDeletes();
    QVERIFY(!mapa.control(QStringLiteral("caja")));
    QVERIFY(mapa.findChildren<QWidget *>(QStringLiteral("caja")).isEmpty());
    QVERIFY(errors.messages().isEmpty());

    // A frame's name dropped when nothing moves is refused, and the frame stays.
    QMimeData ajeno;
    ajeno.setText(QStringLiteral("NB"));
    const QPoint antes = mapa.control(QStringLiteral("NB"))->pos();
    QCOMPARE(DragDriver::moveData(&mapa, QPoint(10, 10), &ajeno), Qt::IgnoreAction);
    QCOMPARE(DragDriver::dropData(&mapa, QPoint(10, 10), &ajeno), Qt::IgnoreAction);
    QCOMPARE(mapa.control(QStringLiteral("NB"))->pos(), antes);
}

void tst_MapaX::movesSurviveRemovalsAndResizes()
{
    ErrorCatcher errors;
    MapaX mapa;
    mapa.show();
    const auto a = nave(QStringLiteral("N"), QStringLiteral("A"));
    mapa.add(a);
    mapa.show(a);
    QWidget *frame = mapa.control(QStringLiteral("NA"));

    DragDriver driver;
    mapa.startMove(frame);
    QVERIFY(driver.dragging());
    // The map is resized while the outline is up: the outline answers no fitting.
    mapa.resize(mapa.width() + 10, mapa.height());
    QCOMPARE(errors.messages(),
             QStringList{QStringLiteral("MapaX.UserControl_Resize->Object doesn't support this property or method")});
    // A second move while moving cannot make a second outline.
    mapa.startMove(frame);
    QVERIFY(errors.messages().contains(
        QStringLiteral("MapaX.dibujarCaja->This key is already associated with an element of this collection")));
    driver.finish();
    driver.finish();
    flushDeletes();
    QVERIFY(!mapa.control(QStringLiteral("caja")));
    QVERIFY(frame->isEnabled());
    QVERIFY(!frame->isHidden());

    // The frame goes away in the middle of its move: no outline, no disabled control remains.
    errors.clear();
    mapa.startMove(frame);
    mapa.remove(a);
    driver.finish();
    flushDeletes();
    QVERIFY(!mapa.control(QStringLiteral("caja")));
    QCOMPARE(mapa.controlNames(), QStringList{QStringLiteral("thread")});
    QCOMPARE(errors.messages(), QStringList{QStringLiteral("MapaX.completeMove->Control not found")});

    // The legend closed by the host while it is being dragged: the same.
    errors.clear();
    auto b = nave(QStringLiteral("N"), QStringLiteral("B"));
    auto claves = std::make_shared<Referencias>();
    claves->add(QStringLiteral("T"), QStringLiteral("Tinto"), 0x000080);
    b->setReferencias(claves);
    mapa.add(b);
    mapa.show(b);
    mapa.ShowReferences();
    QWidget *leyenda = mapa.control(QStringLiteral("REF"));
    QVERIFY(leyenda);
    mapa.startMove(leyenda);
    QVERIFY(mapa.control(QStringLiteral("caja")));
    mapa.remove(nullptr);
    QCOMPARE(driver.drop(&mapa, QPoint(50, 50)), Qt::IgnoreAction); // nothing left to move
    driver.finish();
    flushDeletes();
    QCOMPARE(mapa.controlNames(), (QStringList{QStringLiteral("thread"), QStringLiteral("NB")}));
    QVERIFY(mapa.control(QStringLiteral("NB"))->isEnabled());
    // The outline had no frame to go back onto, and the move none to complete.
    QCOMPARE(errors.messages(), (QStringList{QStringLiteral("MapaX.UserControl_OLEGiveFeedback->Control not found"),
                                             QStringLiteral("MapaX.completeMove->Control not found")}));

    // A host deletes the whole map while one of its frames is moving: the drag's end finds nothing.
    auto *efimero = new MapaX;
    efimero->add(a);
    efimero->show(a);
    efimero->startMove(efimero->control(QStringLiteral("NA")));
    QVERIFY(driver.dragging());
    delete efimero;
    driver.finish();
}

void tst_MapaX::callbacksBecomeSignals()
{
    MapaX mapa;
    mapa.show();
    const auto a = nave(QStringLiteral("N"), QStringLiteral("A"));
    mapa.add(a);
    mapa.show(a);
    frameDe(mapa, QStringLiteral("NA"))->seleccionar(QStringLiteral("AD2"));

    QSignalSpy drop(&mapa, &MapaX::Drop);
    QSignalSpy click(&mapa, &MapaX::Click);
    const ObjetoPtr destino = a->getObjetos()->Item(3);
    mapa.callbacks()->droped(QStringLiteral("NA"), destino, 2);
    QCOMPARE(drop.count(), 1);
    const auto seleccion = drop.at(0).at(0).value<std::shared_ptr<Objetos>>();
    QCOMPARE(seleccion->count(), 1);
    QCOMPARE(seleccion->Item(1)->getCodigo(), QStringLiteral("AD2"));
    QCOMPARE(drop.at(0).at(1).value<ObjetoPtr>(), destino);
    QCOMPARE(drop.at(0).at(2).toInt(), 2);
    mapa.IMapaX_Droped(QStringLiteral("NZ"), destino, 0); // no such source frame: nothing
    QCOMPARE(drop.count(), 1);

    // A host that removes the frame from inside its own Click handler.
    connect(&mapa, &MapaX::Click, &mapa, [&](const ObjetoPtr &) { mapa.remove(a); });
    QWidget *contenido = mapa.control(QStringLiteral("NA"))->findChild<QWidget *>(QStringLiteral("conten"));
    QPointer<QWidget> vigilado = contenido;
    QTest::mouseClick(contenido, Qt::LeftButton, Qt::NoModifier, QPoint(15, 15));
    QCOMPARE(click.count(), 1);
    QVERIFY(!mapa.control(QStringLiteral("NA")));
    flushDeletes();
    QVERIFY(!vigilado);
}

void tst_MapaX::operationsOnMissingFramesAreQuiet()
{
    ErrorCatcher errors;
    MapaX mapa;
    const auto nunca = nave(QStringLiteral("N"), QStringLiteral("Z"));
    mapa.seleccionar(nunca, QStringLiteral("ZD1"));
    mapa.seleccionarTodos(nunca);
    mapa.deseleccionarTodos(nunca);
    QVERIFY(errors.messages().isEmpty());
    mapa.show(nunca);
    mapa.hide(nunca);
    mapa.Refresh(nunca);
    mapa.setEscala(nunca, 2.0f);
    QCOMPARE(errors.messages(), (QStringList{QStringLiteral("MapaX.show->Control not found"),
                                             QStringLiteral("MapaX.hide->Control not found"),
                                             QStringLiteral("MapaX.Refresh->Control not found"),
                                             QStringLiteral("MapaX.setEscala->Control not found")}));
}

QTEST_MAIN(tst_MapaX)
#include "tst_mapax.moc"
