// The road of root objects through the real controls: the host adds and shows
// them, the user clicks, moves and drags with the pointer, and everything
// comes back to the host as the map's signals.

#include <tarvonix/leg/geometriaceldas.h>
#include <tarvonix/model/referencias.h>
#include <tarvonix/map/mapax.h>
#include <tarvonix/model/deposito.h>
#include <tarvonix/model/lote.h>
#include <tarvonix/model/objeto.h>
#include <tarvonix/model/objetos.h>
#include <tarvonix/model/pierna.h>
#include <tarvonix/model/ubicacion.h>

#include "dragdriver.h"
#include "errorcatcher.h"

#include <QApplication>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>

using namespace tarvonix;

namespace {

std::shared_ptr<Objeto> naveConDepositos()
{
    auto nave = std::make_shared<Objeto>();
    nave->setTipo(QStringLiteral("N"));
    nave->setCodigo(QStringLiteral("N1"));
    nave->setDescripcion(QStringLiteral("Nave de elaboración"));
    nave->setPuedeContener(true);
    auto claves = std::make_shared<Referencias>();
    claves->add(QStringLiteral("T"), QStringLiteral("Tempranillo"), 0x1F1F8C);
    claves->add(QStringLiteral("V"), QStringLiteral("Verdejo"), 0x40E0E6);
    nave->setReferencias(claves);
    const struct { const char *codigo; int x; int ancho; int alto; } depositos[] = {
        {"D1", 10, 50, 50}, {"D2", 80, 50, 50}, {"D3", 150, 60, 30}};
    for (const auto &d : depositos) {
        auto deposito = std::make_shared<Deposito>();
        deposito->setCodigo(QString::fromLatin1(d.codigo));
        deposito->setX(qint16(d.x));
        deposito->setY(20);
        deposito->setAncho(qint16(d.ancho));
        deposito->setAlto(qint16(d.alto));
        deposito->setForma(1);
        deposito->setColor(0x1F1F8C);
        deposito->setPadre(nave->getCodigo());
        nave->getObjetos()->add(deposito);
    }
    return nave;
}

std::shared_ptr<Pierna> piernaConBarricas()
{
    auto pierna = std::make_shared<Pierna>();
    pierna->setCodigo(QStringLiteral("P1"));
    pierna->setDescripcion(QStringLiteral("Pierna 1"));
    pierna->setClasica(false);
    pierna->setEscalas(2);
    pierna->setEscala(1, 4);
    pierna->setEscala(2, 4);
    for (const auto &[e, p] : {std::pair{1, 1}, std::pair{1, 2}, std::pair{2, 3}}) {
        auto barrica = std::make_shared<Lote>();
        barrica->setCodigo(QStringLiteral("B%1%2").arg(e).arg(p));
        barrica->setForma(2);
        barrica->setColor(0x1F1F8C);
        barrica->setPadre(pierna->getUbicacion(qint16(e), qint16(p))->getCodigo());
        pierna->setObjeto(qint16(e), qint16(p), barrica);
    }
    return pierna;
}

QWidget *contenidoDe(MapaX &mapa, const QString &frame)
{
    return mapa.control(frame)->findChild<QWidget *>(QStringLiteral("conten"));
}

// The centre of a child in the free-layout container, in the container's pixels (scale 1).
QPoint centro(const ObjetoPtr &hijo)
{
    return QPoint(hijo->getX() + hijo->getAncho() / 2 + 2, hijo->getY() + hijo->getAlto() / 2 + 2);
}

// The centre of the cell (tier, position) in the leg view.
QPoint centroCelda(QWidget *vista, bool clasica, int e, int p)
{
    return GeometriaCeldas(vista->height(), 1.0, clasica).celda(e, p).center().toPoint();
}

// The pointer moves to \a hasta with the left button held down.
void arrastrar(QWidget *widget, QPoint hasta, Qt::KeyboardModifiers teclas)
{
    QMouseEvent evento(QEvent::MouseMove, hasta, widget->mapToGlobal(hasta), Qt::NoButton, Qt::LeftButton, teclas);
    QCoreApplication::sendEvent(widget, &evento);
}

} // namespace

class tst_Recorrido : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void rootObjectsFromAddToClose();
};

void tst_Recorrido::rootObjectsFromAddToClose()
{
    ErrorCatcher errors;
    MapaX mapa;
    mapa.resize(1000, 700);
    mapa.show();
    QSignalSpy click(&mapa, &MapaX::Click);
    QSignalSpy moved(&mapa, &MapaX::moved);
    QSignalSpy drop(&mapa, &MapaX::Drop);

    // The host adds the roots: each gets its frame and container, hidden until shown.
    const auto nave = naveConDepositos();
    const auto pierna = piernaConBarricas();
    mapa.add(nave);
    mapa.add(pierna);
    QVERIFY(mapa.control(QStringLiteral("NN1"))->isHidden());
    mapa.control(QStringLiteral("PP1"))->move(620, 20);
    mapa.control(QStringLiteral("NN1"))->move(160, 20);

    // Shown, the frame becomes the active one; the legend follows its object.
    mapa.show(pierna);
    mapa.ShowReferences();
    QVERIFY(!mapa.control(QStringLiteral("REF"))); // a leg has no colour keys
    mapa.show(nave);
    QCOMPARE(mapa.getFrame(), ObjetoPtr(nave));
    QWidget *leyenda = mapa.control(QStringLiteral("REF"));
    QVERIFY(leyenda && leyenda->isVisible());
    QVERIFY(leyenda->findChild<QWidget *>(QStringLiteral("RV")));

    // A click on a vessel arrives as Click with that vessel.
    QWidget *vistaNave = contenidoDe(mapa, QStringLiteral("NN1"));
    const ObjetoPtr d1 = nave->getObjetos()->Item(QStringLiteral("D1"));
    const ObjetoPtr d2 = nave->getObjetos()->Item(QStringLiteral("D2"));
    const ObjetoPtr d3 = nave->getObjetos()->Item(QStringLiteral("D3"));
    QTest::mouseClick(vistaNave, Qt::LeftButton, Qt::NoModifier, centro(d2));
    QCOMPARE(click.count(), 1);
    QCOMPARE(click.last().at(0).value<ObjetoPtr>(), d2);
    QCOMPARE(click.last().at(1).toBool(), false);
    QVERIFY(d2->getSeleccionado());
    // The click gave the map the keyboard: Enter names the active object's frame.
    QSignalSpy enter(&mapa, &MapaX::Enter);
    QVERIFY(QTest::qWaitForWindowActive(&mapa));
    QLineEdit otroCampo(&mapa); // the host's own field had the keyboard before
    otroCampo.setGeometry(900, 660, 90, 20);
    otroCampo.show();
    otroCampo.setFocus();
    QCOMPARE(QApplication::focusWidget(), &otroCampo);
    QTest::mouseClick(vistaNave, Qt::LeftButton, Qt::NoModifier, centro(d2));
    QCOMPARE(QApplication::focusWidget(), &mapa);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QCOMPARE(enter.count(), 1);
    click.removeLast();

    // A click on a barrel in the leg view makes that frame active and arrives the same way.
    QWidget *vistaPierna = contenidoDe(mapa, QStringLiteral("PP1"));
    const ObjetoPtr b12 = pierna->getObjeto(1, 2);
    QTest::mouseClick(vistaPierna, Qt::LeftButton, Qt::NoModifier, centroCelda(vistaPierna, false, 1, 2));
    QCOMPARE(click.last().at(0).value<ObjetoPtr>(), b12);
    QCOMPARE(mapa.getFrame(), ObjetoPtr(pierna));
    QVERIFY(leyenda->isHidden()); // the leg's frame has no keys to show

    // Two vessels selected, then moved together with Shift held: each one is reported.
    QTest::mouseClick(vistaNave, Qt::LeftButton, Qt::NoModifier, centro(d1));
    QTest::mouseClick(vistaNave, Qt::LeftButton, Qt::ControlModifier, centro(d3));
    QCOMPARE(click.last().at(1).toBool(), true); // several selected
    QCOMPARE(mapa.getSelected()->count(), 2);
    {
        DragDriver driver;
        const QPoint desde = centro(d1);
        QTest::mousePress(vistaNave, Qt::LeftButton, Qt::ShiftModifier, desde);
        arrastrar(vistaNave, desde + QPoint(30, 10), Qt::ShiftModifier);
        QVERIFY(driver.dragging());
        QVERIFY(vistaNave->findChild<QWidget *>(QStringLiteral("D1c"))); // an outline per selected vessel
        QCOMPARE(driver.move(vistaNave, desde + QPoint(30, 10), Qt::ShiftModifier), Qt::MoveAction);
        QCOMPARE(driver.drop(vistaNave, desde + QPoint(30, 10), Qt::ShiftModifier), Qt::MoveAction);
        driver.finish(Qt::MoveAction);
    }
    QCOMPARE(moved.count(), 2);
    QCOMPARE(d1->getX(), 40);
    QCOMPARE(d1->getY(), 30);
    QCOMPARE(d3->getX(), 180);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!vistaNave->findChild<QWidget *>(QStringLiteral("D1c")));

    // A layout request runs on the next tick, with the active object as the example.
    QCOMPARE(mapa.getActive(), d1);
    moved.clear();
    mapa.igualarDimension();
    QCOMPARE(moved.count(), 0);
    QTRY_COMPARE(moved.count(), 2);
    QCOMPARE(d3->getAncho(), 50);
    QCOMPARE(d3->getAlto(), 50);

    // A barrel dragged from the leg onto a vessel arrives as Drop with the leg's selection.
    {
        DragDriver driver;
        const ObjetoPtr b11 = pierna->getObjeto(1, 1);
        const QPoint desde = centroCelda(vistaPierna, false, 1, 1);
        QTest::mousePress(vistaPierna, Qt::LeftButton, Qt::NoModifier, desde);
        arrastrar(vistaPierna, desde + QPoint(0, 8), Qt::NoModifier);
        QVERIFY(driver.dragging());
        QCOMPARE(driver.text(), QStringLiteral("PP1"));
        QCOMPARE(driver.move(vistaNave, centro(d2)), Qt::CopyAction);
        QCOMPARE(driver.drop(vistaNave, centro(d2)), Qt::CopyAction);
        driver.finish(Qt::CopyAction);
        QCOMPARE(drop.count(), 1);
        const auto origen = drop.last().at(0).value<std::shared_ptr<Objetos>>();
        QCOMPARE(origen->count(), 1);
        QCOMPARE(origen->Item(1), b11);
        QCOMPARE(drop.last().at(1).value<ObjetoPtr>(), d2);
        QCOMPARE(drop.last().at(2).toInt(), 0);
    }

    // The close button removes the frame.
    QWidget *cerrar = mapa.control(QStringLiteral("PP1"))->findChild<QWidget *>(QStringLiteral("cerrar"));
    QTest::mousePress(cerrar, Qt::LeftButton, Qt::NoModifier, QPoint(5, 5));
    QVERIFY(!mapa.isMember(pierna));
    QVERIFY(mapa.isMember(nave));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(mapa.findChildren<QWidget *>(QStringLiteral("PP1")).isEmpty());
    QCOMPARE(errors.messages(), QStringList());
}

QTEST_MAIN(tst_Recorrido)
#include "tst_recorrido.moc"
