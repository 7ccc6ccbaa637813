// The road of root objects through the real controls, as a host uses them: each control's own test checks
// its steps against stand-ins; this walk checks that the map, the frames, the container and the leg view
// pass them on to each other.

#include <tarvonix/leg/geometriaceldas.h>
#include <tarvonix/map/mapax.h>
#include <tarvonix/model/lote.h>
#include <tarvonix/model/pierna.h>
#include <tarvonix/model/ubicacion.h>

#include "dragdriver.h"
#include "errorcatcher.h"
#include "naves.h"

#include <QApplication>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>

using namespace tarvonix;
using namespace Qt::StringLiterals;

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
    QVERIFY(QTest::qWaitForWindowActive(&mapa));
    QSignalSpy click(&mapa, &MapaX::Click), drop(&mapa, &MapaX::Drop), enter(&mapa, &MapaX::Enter);
    const auto nave = naves::nave(u"N1"_s);
    auto pierna = std::make_shared<Pierna>();
    pierna->setCodigo(u"P1"_s);
    pierna->setEscalas(1);
    pierna->setEscala(1, 4);
    for (qint16 p : {1, 2}) {
        auto barrica = std::make_shared<Lote>();
        barrica->setCodigo(u"B1%1"_s.arg(p));
        barrica->setPadre(pierna->getUbicacion(1, p)->getCodigo());
        pierna->setObjeto(1, p, barrica);
    }
    mapa.add(nave);
    mapa.add(pierna);
    mapa.control(u"PP1"_s)->move(620, 20);
    mapa.show(pierna);
    mapa.show(nave);
    QWidget *vistaNave = mapa.control(u"NN1"_s)->findChild<QWidget *>(u"conten"_s);
    QWidget *vistaPierna = mapa.control(u"PP1"_s)->findChild<QWidget *>(u"conten"_s);
    const auto celda = [&](int p) {
        return GeometriaCeldas(vistaPierna->height(), 1.0, pierna->getClasica()).celda(1, p).center().toPoint();
    };

    // A click on a vessel arrives as Click, and takes the keyboard from the host's field: Enter names it.
    QLineEdit campo(&mapa);
    campo.show();
    campo.setFocus();
    const ObjetoPtr d2 = nave->getObjetos()->Item(2);
    QTest::mouseClick(vistaNave, Qt::LeftButton, Qt::NoModifier, QPoint(95, 30));
    QCOMPARE(click.last().at(0).value<ObjetoPtr>(), d2);
    QCOMPARE(QApplication::focusWidget(), &mapa);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QCOMPARE(enter.last().at(0).value<ObjetoPtr>(), d2);

    // A click on a barrel makes the leg's frame the active one.
    QTest::mouseClick(vistaPierna, Qt::LeftButton, Qt::NoModifier, celda(2));
    QCOMPARE(click.last().at(0).value<ObjetoPtr>(), pierna->getObjeto(1, 2));
    QCOMPARE(mapa.getFrame(), ObjetoPtr(pierna));

    // A barrel dragged from the leg onto a vessel arrives as Drop, with the leg's selection.
    {
        DragDriver driver;
        QTest::mousePress(vistaPierna, Qt::LeftButton, Qt::NoModifier, celda(1));
        naves::arrastrar(vistaPierna, celda(1) + QPoint(0, 8));
        QCOMPARE(driver.text(), u"PP1"_s);
        QCOMPARE(driver.drop(vistaNave, QPoint(95, 30)), Qt::CopyAction);
        driver.finish(Qt::CopyAction);
    }
    QCOMPARE(drop.count(), 1);
    const auto origen = drop.last().at(0).value<std::shared_ptr<Objetos>>();
    QVERIFY(origen->count() == 1 && origen->Item(1) == pierna->getObjeto(1, 1));
    QCOMPARE(drop.last().at(1).value<ObjetoPtr>(), d2);

    // The leg frame's close button takes it off the map.
    QTest::mousePress(mapa.control(u"PP1"_s)->findChild<QWidget *>(u"cerrar"_s), Qt::LeftButton, {}, QPoint(5, 5));
    QVERIFY(!mapa.isMember(pierna) && mapa.isMember(nave));
    QCOMPARE(errors.messages(), QStringList());
}

QTEST_MAIN(tst_Recorrido)
#include "tst_recorrido.moc"
