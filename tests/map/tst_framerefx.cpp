#include <tarvonix/widgets/etiquetas.h>
#include <tarvonix/model/referencias.h>
#include <tarvonix/legend/referenciasx.h>
#include <tarvonix/map/framerefx.h>
#include <tarvonix/model/iobjeto.h>

#include "recordingmapa.h"

#include <QTest>

using namespace tarvonix;

namespace {

// Stands in for the map as the legend's parent.
class Anfitrion : public QWidget
{
    Q_OBJECT
public:
    Q_INVOKABLE void startMove(QWidget *frame) { movidos.append(frame); }
    Q_INVOKABLE void remove(const tarvonix::ObjetoPtr &obj) { quitados.append(obj); }
    QList<QWidget *> movidos;
    QList<ObjetoPtr> quitados;
};

} // namespace

class tst_FrameRefX : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void fitsItselfToTheList();
    void buttonsAndMoves();
};

void tst_FrameRefX::fitsItselfToTheList()
{
    Anfitrion anfitrion;
    RecordingMapa mapa;
    auto *leyenda = new FrameRefX(&anfitrion);
    leyenda->setRoot(&mapa);
    leyenda->resize(100, 50);
    anfitrion.show();
    leyenda->show();
    auto *lista = leyenda->findChild<ReferenciasX *>(QStringLiteral("refx"));
    QVERIFY(lista);

    auto claves = std::make_shared<Referencias>();
    claves->add(QStringLiteral("A"), QStringLiteral("a"), 0x0000FF);
    leyenda->setReferencias(claves);
    // A narrow list still makes the narrowest legend; the height follows the list.
    QVERIFY(lista->width() + 6 < 150);
    QCOMPARE(leyenda->width(), 150);
    QCOMPARE(leyenda->height(), lista->y() + lista->height() + 3);
    QCOMPARE(mapa.log(), QStringList{QStringLiteral("ensureVisible")});

    claves->add(QStringLiteral("B"), QStringLiteral("una clave con un texto bastante largo"), 0x00FF00);
    leyenda->setReferencias(claves);
    QCOMPARE(leyenda->width(), lista->x() + lista->width() + 3);
    QVERIFY(leyenda->width() > 150);
    // The buttons follow the right edge.
    QWidget *cerrar = leyenda->findChild<QWidget *>(QStringLiteral("cerrar"));
    QCOMPARE(cerrar->geometry().right(), leyenda->width() - 3 - 1);
}

void tst_FrameRefX::buttonsAndMoves()
{
    Anfitrion anfitrion;
    RecordingMapa mapa;
    auto *leyenda = new FrameRefX(&anfitrion);
    leyenda->setRoot(&mapa);
    anfitrion.show();
    leyenda->show();
    auto *titulo = leyenda->findChild<etiquetas *>(QStringLiteral("titulo"));

    Q_EMIT titulo->OLEStartDrag(10, 5, 1); // inactive: no move
    QVERIFY(anfitrion.movidos.isEmpty());
    QTest::mousePress(titulo, Qt::LeftButton, Qt::NoModifier, QPoint(10, 5));
    QVERIFY(leyenda->isActive());
    QCOMPARE(titulo->BackColor(), 0x800000);
    Q_EMIT titulo->OLEStartDrag(16, 5, 1);
    QCOMPARE(anfitrion.movidos, QList<QWidget *>{leyenda});
    QCOMPARE(leyenda->getDragX(), float(titulo->x() + 16));

    const int alto = leyenda->height();
    QWidget *mini = leyenda->findChild<QWidget *>(QStringLiteral("mini"));
    QTest::mousePress(mini, Qt::LeftButton, Qt::NoModifier, QPoint(5, 5));
    QCOMPARE(leyenda->height(), 18 + 6);
    QCOMPARE(mini->toolTip(), QStringLiteral("Restaurar"));
    QTest::mousePress(mini, Qt::LeftButton, Qt::NoModifier, QPoint(5, 5));
    QCOMPARE(leyenda->height(), alto);

    // Closing asks the map to remove the legend (no object).
    QTest::mousePress(leyenda->findChild<QWidget *>(QStringLiteral("cerrar")), Qt::LeftButton, Qt::NoModifier,
                      QPoint(5, 5));
    QCOMPARE(anfitrion.quitados.size(), 1);
    QVERIFY(!anfitrion.quitados.first());
}

QTEST_MAIN(tst_FrameRefX)
#include "tst_framerefx.moc"
