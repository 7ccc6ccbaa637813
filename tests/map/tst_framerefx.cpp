// SPDX-License-Identifier: MIT
#include <tarvonix/legend/referenciasx.h>
#include <tarvonix/map/framerefx.h>
#include <tarvonix/model/referencias.h>
#include <tarvonix/widgets/etiquetas.h>

#include "errorcatcher.h"
#include "recordingmapa.h"

#include <QTest>

using namespace tarvonix;
using namespace Qt::StringLiterals;

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

class tst_FrameRefX : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void legend()
    {
        ErrorCatcher errors;
        Anfitrion host;
        RecordingMapa mapa;
        auto *leyenda = new FrameRefX(&host);
        leyenda->setRoot(&mapa), leyenda->resize(100, 50), host.show();
        const auto pulsar = [&](const QString &nombre) {
            QTest::mousePress(leyenda->findChild<QWidget *>(nombre), Qt::LeftButton, {}, QPoint(5, 5));
        };
        // A narrow list makes the narrowest legend, which asks to be seen; the height follows the list.
        auto *lista = leyenda->findChild<ReferenciasX *>(u"refx"_s);
        auto claves = std::make_shared<Referencias>();
        claves->add(u"A"_s, u"a"_s, 0x0000FF), leyenda->setReferencias(claves);
        QVERIFY(lista->width() + 6 < 150 && mapa.log() == QStringList{u"ensureVisible"_s});
        QCOMPARE(leyenda->size(), QSize(150, lista->y() + lista->height() + 3));
        claves->add(u"B"_s, u"una clave con un texto bastante largo"_s, 0x00FF00); // the width follows a wide one
        leyenda->setReferencias(claves);
        QVERIFY(leyenda->width() > 150 && leyenda->width() == lista->x() + lista->width() + 3);
        QCOMPARE(leyenda->findChild<QWidget *>(u"cerrar"_s)->geometry().right(), leyenda->width() - 3 - 1);
        // A move starts only from an active legend; a press on the title activates it.
        auto *titulo = leyenda->findChild<etiquetas *>(u"titulo"_s);
        Q_EMIT titulo->OLEStartDrag(10, 5, 1);
        pulsar(u"titulo"_s);
        QVERIFY(leyenda->isActive() && titulo->BackColor() == 0x800000);
        Q_EMIT titulo->OLEStartDrag(16, 5, 1);
        QVERIFY(host.movidos == QList<QWidget *>{leyenda} && leyenda->getDragX() == float(titulo->x() + 16));
        // Minimised and restored, it asks to be brought into view.
        const int alto = leyenda->height();
        pulsar(u"mini"_s), mapa.clear();
        pulsar(u"mini"_s);
        QVERIFY(leyenda->height() == alto && mapa.log() == QStringList{u"ensureVisible"_s});
        pulsar(u"cerrar"_s); // the parent is asked to remove the legend, which has no object
        QCOMPARE(host.quitados, QList<ObjetoPtr>{nullptr});
        // Under a parent that offers neither the move nor the removal, both fail.
        QWidget plano;
        leyenda->setParent(&plano);
        Q_EMIT titulo->OLEStartDrag(16, 5, 1);
        pulsar(u"cerrar"_s);
        const QString sinMiembro = u"->Object doesn't support this property or method"_s;
        QCOMPARE(errors.messages(), (QStringList{"FrameRefX.titulo.OLEStartDrag" + sinMiembro,
                                                 "FrameRefX.cerrar.Click" + sinMiembro}));
    }
};

QTEST_MAIN(tst_FrameRefX)
#include "tst_framerefx.moc"
