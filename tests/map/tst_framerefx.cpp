#include <tarvonix/legend/referenciasx.h>
#include <tarvonix/map/framerefx.h>
#include <tarvonix/model/referencias.h>
#include <tarvonix/widgets/etiquetas.h>

#include "errorcatcher.h"
#include "recordingmapa.h"

#include <QTest>

using namespace tarvonix;
using namespace Qt::StringLiterals;

namespace {

// Stands in for the map as the legend's parent: it offers the move and the removal by name.
class Anfitrion : public QWidget
{
    Q_OBJECT
public:
    Q_INVOKABLE void startMove(QWidget *frame) { movidos.append(frame); }
    Q_INVOKABLE void remove(const tarvonix::ObjetoPtr &obj) { quitados.append(obj); }
    QList<QWidget *> movidos;
    QList<ObjetoPtr> quitados;
};

void pulsar(FrameRefX *leyenda, const QString &nombre)
{
    QTest::mousePress(leyenda->findChild<QWidget *>(nombre), Qt::LeftButton, Qt::NoModifier, QPoint(5, 5));
}

} // namespace

class tst_FrameRefX : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void fitsItselfToTheList();
    void buttonsAndMoves_data();
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
    auto *lista = leyenda->findChild<ReferenciasX *>(u"refx"_s);
    auto claves = std::make_shared<Referencias>();
    claves->add(u"A"_s, u"a"_s, 0x0000FF);
    leyenda->setReferencias(claves);
    // A narrow list still makes the narrowest legend; the height follows the list.
    QVERIFY(lista->width() + 6 < 150);
    QCOMPARE(leyenda->size(), QSize(150, lista->y() + lista->height() + 3));
    QCOMPARE(mapa.log(), QStringList{u"ensureVisible"_s});
    claves->add(u"B"_s, u"una clave con un texto bastante largo"_s, 0x00FF00);
    leyenda->setReferencias(claves);
    QVERIFY(leyenda->width() > 150);
    QCOMPARE(leyenda->width(), lista->x() + lista->width() + 3);
    QCOMPARE(leyenda->findChild<QWidget *>(u"cerrar"_s)->geometry().right(), leyenda->width() - 3 - 1);
}

void tst_FrameRefX::buttonsAndMoves_data()
{
    // Under a parent that offers neither the move nor the removal, both failures are shown.
    QTest::addColumn<bool>("anfitrion");
    QTest::addColumn<QStringList>("fallos");
    const QString sinMiembro = u"->Object doesn't support this property or method"_s;
    QTest::newRow("host") << true << QStringList();
    QTest::newRow("plain parent") << false << QStringList{"FrameRefX.titulo.OLEStartDrag" + sinMiembro,
                                                          "FrameRefX.cerrar.Click" + sinMiembro};
}

void tst_FrameRefX::buttonsAndMoves()
{
    QFETCH(bool, anfitrion);
    QFETCH(QStringList, fallos);
    ErrorCatcher errors;
    Anfitrion host;
    QWidget plano;
    RecordingMapa mapa;
    auto *leyenda = new FrameRefX(anfitrion ? &host : &plano);
    leyenda->setRoot(&mapa);
    (anfitrion ? static_cast<QWidget &>(host) : plano).show();
    auto *titulo = leyenda->findChild<etiquetas *>(u"titulo"_s);

    Q_EMIT titulo->OLEStartDrag(10, 5, 1); // inactive: no move
    QVERIFY(host.movidos.isEmpty());
    pulsar(leyenda, u"titulo"_s);
    QVERIFY(leyenda->isActive());
    QCOMPARE(titulo->BackColor(), 0x800000);
    Q_EMIT titulo->OLEStartDrag(16, 5, 1);
    QCOMPARE(host.movidos, anfitrion ? QList<QWidget *>{leyenda} : QList<QWidget *>());
    QCOMPARE(leyenda->getDragX(), float(titulo->x() + 16));

    const int alto = leyenda->height();
    pulsar(leyenda, u"mini"_s);
    QCOMPARE(leyenda->height(), 18 + 6);
    QCOMPARE(leyenda->findChild<QWidget *>(u"mini"_s)->toolTip(), u"Restaurar"_s);
    mapa.clear();
    pulsar(leyenda, u"mini"_s);
    QCOMPARE(leyenda->height(), alto);
    QCOMPARE(mapa.log(), QStringList{u"ensureVisible"_s}); // restored, it asks to be brought into view
    // Closing asks the parent to remove the legend (no object).
    pulsar(leyenda, u"cerrar"_s);
    QCOMPARE(host.quitados, anfitrion ? QList<ObjetoPtr>{nullptr} : QList<ObjetoPtr>());
    QCOMPARE(errors.messages(), fallos);
}

QTEST_MAIN(tst_FrameRefX)
#include "tst_framerefx.moc"
