#include <tarvonix/core/error.h>
#include <tarvonix/legend/referenciasx.h>
#include <tarvonix/legend/referenciax.h>
#include <tarvonix/platform/controlregistry.h>

#include "../widgets/propertykeys.h"
#include "errorcatcher.h"

#include <QSignalSpy>

using namespace tarvonix;

namespace {

// A list of keys, each with its own colour, from (clave, texto) pairs.
std::shared_ptr<Referencias> lista(const QList<std::pair<QString, QString>> &claves)
{
    auto referencias = std::make_shared<Referencias>();
    qint32 color = 0x000080;
    for (const auto &[clave, texto] : claves)
        referencias->add(clave, texto, color += 0x002000);
    return referencias;
}

// The rows the list holds now; rows removed earlier are gone once deferred deletes have run.
QList<ReferenciaX *> rows(ReferenciasX &list)
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return list.findChildren<ReferenciaX *>(QString(), Qt::FindDirectChildrenOnly);
}

} // namespace

class tst_ReferenciasX : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void rowsAreStackedAndAsWideAsTheWidest_data();
    void rowsAreStackedAndAsWideAsTheWidest();
    void everyListRebuildsTheRows();
    void clicksOnRowsAreRaisedWithTheirKey();
    void propertyKeysAndDefaults_data();
    void propertyKeysAndDefaults() { checkPropertyKey<ReferenciasX>(); }
};

void tst_ReferenciasX::rowsAreStackedAndAsWideAsTheWidest_data()
{
    QTest::addColumn<int>("borde");
    QTest::newRow("no border") << 0;
    QTest::newRow("border") << 1;
}

void tst_ReferenciasX::rowsAreStackedAndAsWideAsTheWidest()
{
    QFETCH(int, borde);
    QVERIFY(ControlRegistry::instance().contains(QStringLiteral("tarvonix.referenciasx")));
    ReferenciasX list;
    QFont font = list.font();
    font.setPointSize(13);
    font.setBold(true);
    list.setFont(font);
    list.setBorderStyle(qint16(borde));
    list.setForeColor(0x0000FF);
    QSignalSpy resized(&list, &ReferenciasX::Resize);
    const QList<std::pair<QString, QString>> claves { { "1", "Tinto" },
                                                      { "Ñ酒", "Depósito Ñ 酒, rosado de la bodega" },
                                                      { "B", "Blanco" } };
    const auto referencias = lista(claves);
    list.setReferencias(referencias);
    QCOMPARE(resized.count(), 1);
    int widest = 0;
    for (const auto &[clave, texto] : claves)
        widest = qMax(widest, QFontMetrics(font).horizontalAdvance(texto) + 31);
    QCOMPARE(list.size(), QSize(widest + 2 * borde, 72 + 2 * borde));
    QCOMPARE(rows(list).size(), 3);
    for (int k = 0; k < 3; ++k) {
        ReferenciaX *row = list.findChild<ReferenciaX *>("R" + claves[k].first);
        QVERIFY(row && !row->isHidden());
        QCOMPARE(row->geometry(), QRect(borde, borde + 24 * k, widest, 24));
        QCOMPARE(row->font(), font);
        QCOMPARE(row->toolTip(), claves[k].second);
        QCOMPARE(row->referencia(), referencias->find(claves[k].first));
    }
    // The border, in the fore colour, surrounds the rows.
    const QImage image = list.grab().toImage();
    for (const QPoint &p : { QPoint(0, 0), QPoint(widest - 1 + 2 * borde, 30), QPoint(10, 71 + 2 * borde), QPoint(0, 30) })
        QCOMPARE(image.pixel(p) == qRgb(255, 0, 0), bool(borde));
}

void tst_ReferenciasX::everyListRebuildsTheRows()
{
    ReferenciasX list;
    QSignalSpy resized(&list, &ReferenciasX::Resize);
    list.setReferencias(lista({ { "a", "uno" }, { "b", "dos" } }));
    // The same claves again: the old rows are out of the way at once.
    const auto second = lista({ { "A", QString(QStringLiteral("x")).repeated(300) } });
    list.setReferencias(second);
    QCOMPARE(rows(list).size(), 1);
    QCOMPARE(rows(list).first()->objectName(), QStringLiteral("RA"));
    QCOMPARE(list.size(), QSize(QFontMetrics(list.font()).horizontalAdvance(second->find("a")->getTexto()) + 31, 24));

    list.setReferencias(std::make_shared<Referencias>());
    QVERIFY(rows(list).isEmpty());
    QCOMPARE(list.size(), QSize(0, 0));
    QCOMPARE(resized.count(), 3); // raised for the empty list too

    list.setReferencias(second);
    QVERIFY_THROWS_EXCEPTION(Error, list.setReferencias(nullptr));
    QVERIFY(rows(list).isEmpty());
}

void tst_ReferenciasX::clicksOnRowsAreRaisedWithTheirKey()
{
    ErrorCatcher errors;
    ReferenciasX list;
    const auto referencias = lista({ { "1", "Tinto" }, { "2", "Blanco" } });
    list.setReferencias(referencias);
    list.show();
    QSignalSpy clicks(&list, &ReferenciasX::Click), doubles(&list, &ReferenciasX::DblClick);
    QTest::mouseClick(list.findChild<ReferenciaX *>("R2"), Qt::LeftButton, {}, QPoint(5, 12));
    QTest::mouseClick(list.findChild<ReferenciaX *>("R2"), Qt::RightButton);
    QTest::mouseDClick(list.findChild<ReferenciaX *>("R1"), Qt::LeftButton);
    QCOMPARE(clicks.count(), 1);
    QCOMPARE(clicks.first().first().value<std::shared_ptr<Referencia>>(), referencias->find("2"));
    QCOMPARE(doubles.count(), 1);
    QCOMPARE(doubles.first().first().value<std::shared_ptr<Referencia>>(), referencias->find("1"));

    // A host that shows another list in answer to a click removes the clicked row under it.
    connect(&list, &ReferenciasX::Click, &list, [&] { list.setReferencias(lista({ { "3", "Rosado" } })); });
    QTest::mouseClick(list.findChild<ReferenciaX *>("R1"), Qt::LeftButton);
    QCOMPARE(clicks.count(), 2);
    QCOMPARE(rows(list).size(), 1);
    QVERIFY(errors.messages().isEmpty());
}

void tst_ReferenciasX::propertyKeysAndDefaults_data()
{
    addPropertyKeyColumns(); // the properties are named as their keys
    propertyKeyRow("BackColor", qint32(0xFFFFFF), qint32(0x00C0FF));
    propertyKeyRow("BorderStyle", qint16(0), qint16(1));
    propertyKeyRow("FontName", QVariant(), QStringLiteral("DejaVu Serif"));
    propertyKeyRow("FontBold", false, true);
    propertyKeyRow("FontSize", QVariant(), 14.5f);
    propertyKeyRow("ForeColor", qint32(0x80000012), qint32(0x800000));
}

QTEST_MAIN(tst_ReferenciasX)
#include "tst_referenciasx.moc"
