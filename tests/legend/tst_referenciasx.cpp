#include <tarvonix/core/error.h>
#include <tarvonix/legend/referenciasx.h>
#include <tarvonix/legend/referenciax.h>
#include <tarvonix/platform/colorconversion.h>
#include <tarvonix/platform/controlregistry.h>
#include <tarvonix/platform/propertybag.h>

#include "errorcatcher.h"

#include <QFontMetrics>
#include <QSignalSpy>
#include <QTest>

using namespace tarvonix;

namespace {

using Clave = std::pair<QString, QString>; // clave, texto

std::shared_ptr<Referencias> lista(const QList<Clave> &claves)
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
    void rowsAreStackedAndAsWideAsTheWidest();
    void everyListRebuildsTheRows();
    void clicksOnRowsAreRaisedWithTheirKey();
    void propertyKeysAndDefaults_data();
    void propertyKeysAndDefaults();
    void borderSurroundsTheRows();
};

void tst_ReferenciasX::rowsAreStackedAndAsWideAsTheWidest()
{
    QVERIFY(ControlRegistry::instance().contains(QStringLiteral("tarvonix.referenciasx")));
    ReferenciasX list;
    QFont font = list.font();
    font.setPointSize(13);
    font.setBold(true);
    list.setFont(font);
    QSignalSpy resized(&list, &ReferenciasX::Resize);
    const QList<Clave> claves
        = { { QStringLiteral("1"), QStringLiteral("Tinto") },
            { QStringLiteral("Ñ酒"), QStringLiteral("Depósito Ñ 酒, rosado de la bodega") },
            { QStringLiteral("B"), QStringLiteral("Blanco") } };
    const auto referencias = lista(claves);
    list.setReferencias(referencias);

    QCOMPARE(resized.count(), 1);
    const QFontMetrics metrics(font);
    int widest = 0;
    for (const auto &[clave, texto] : claves)
        widest = qMax(widest, metrics.horizontalAdvance(texto) + 31);
    QCOMPARE(list.size(), QSize(widest, 72));
    const QList<ReferenciaX *> made = rows(list);
    QCOMPARE(made.size(), 3);
    for (int k = 0; k < 3; ++k) {
        ReferenciaX *row = list.findChild<ReferenciaX *>(QStringLiteral("R") + claves[k].first);
        QVERIFY(row);
        QCOMPARE(row->geometry(), QRect(0, 24 * k, widest, 24));
        QCOMPARE(row->font(), font);
        QCOMPARE(row->toolTip(), claves[k].second);
        QCOMPARE(row->referencia(), referencias->find(claves[k].first));
        QVERIFY(!row->isHidden());
    }
}

void tst_ReferenciasX::everyListRebuildsTheRows()
{
    ReferenciasX list;
    QSignalSpy resized(&list, &ReferenciasX::Resize);
    list.setReferencias(lista(
        { { QStringLiteral("a"), QStringLiteral("uno") }, { QStringLiteral("b"), QStringLiteral("dos") } }));
    // The same claves again: the old rows are out of the way at once.
    const auto second = lista({ { QStringLiteral("A"), QString(QStringLiteral("x")).repeated(300) } });
    list.setReferencias(second);
    QCOMPARE(rows(list).size(), 1);
    QCOMPARE(rows(list).first()->objectName(), QStringLiteral("RA"));
    QCOMPARE(list.height(), 24);
    QCOMPARE(list.width(),
             QFontMetrics(list.font()).horizontalAdvance(second->find(QStringLiteral("a"))->getTexto()) + 31);

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
    const auto referencias = lista({ { QStringLiteral("1"), QStringLiteral("Tinto") },
                                     { QStringLiteral("2"), QStringLiteral("Blanco") } });
    list.setReferencias(referencias);
    list.show();
    QSignalSpy clicks(&list, &ReferenciasX::Click);
    QSignalSpy doubles(&list, &ReferenciasX::DblClick);
    auto *second = list.findChild<ReferenciaX *>(QStringLiteral("R2"));

    QTest::mouseClick(second, Qt::LeftButton, {}, QPoint(5, 12));
    QTest::mouseClick(second, Qt::RightButton);
    QCOMPARE(clicks.count(), 1);
    QCOMPARE(clicks.first().first().value<std::shared_ptr<Referencia>>(),
             referencias->find(QStringLiteral("2")));
    QTest::mouseDClick(list.findChild<ReferenciaX *>(QStringLiteral("R1")), Qt::LeftButton);
    QCOMPARE(doubles.count(), 1);
    QCOMPARE(doubles.first().first().value<std::shared_ptr<Referencia>>(),
             referencias->find(QStringLiteral("1")));
    QCOMPARE(clicks.count(), 1);

    // A host that shows another list in answer to a click removes the clicked row under it.
    connect(&list, &ReferenciasX::Click, &list, [&] {
        list.setReferencias(lista({ { QStringLiteral("3"), QStringLiteral("Rosado") } }));
    });
    QTest::mouseClick(list.findChild<ReferenciaX *>(QStringLiteral("R1")), Qt::LeftButton);
    QCOMPARE(clicks.count(), 2);
    QCOMPARE(rows(list).size(), 1);
    QVERIFY(errors.messages().isEmpty());
}

void tst_ReferenciasX::propertyKeysAndDefaults_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QVariant>("defaultValue");
    QTest::addColumn<QVariant>("value");
    // Reading the empty name or size 0 leaves the font as it is; the list always has a font, so its
    // name and size are always written.
    QTest::addColumn<bool>("keepsFont");

    QTest::newRow("BackColor") << "BackColor" << QVariant(qint32(0xFFFFFF)) << QVariant(qint32(0x00C0FF))
                               << false;
    QTest::newRow("BorderStyle") << "BorderStyle" << QVariant(qint16(0)) << QVariant(qint16(1)) << false;
    QTest::newRow("FontName") << "FontName" << QVariant(QString()) << QVariant(QStringLiteral("DejaVu Serif"))
                              << true;
    QTest::newRow("FontBold") << "FontBold" << QVariant(false) << QVariant(true) << false;
    QTest::newRow("FontSize") << "FontSize" << QVariant(0.0f) << QVariant(14.5f) << true;
    QTest::newRow("ForeColor") << "ForeColor" << QVariant(qint32(0x80000012)) << QVariant(qint32(0x800000))
                               << false;
}

void tst_ReferenciasX::propertyKeysAndDefaults()
{
    QFETCH(QString, key);
    QFETCH(QVariant, defaultValue);
    QFETCH(QVariant, value);
    QFETCH(bool, keepsFont);
    const QByteArray property = key.toLatin1(); // the properties are named as their keys

    // At its default the property is not written.
    ReferenciasX list;
    PropertyBag bag;
    list.writeProperties(bag);
    if (keepsFont) {
        QCOMPARE(bag.readProperty(key, defaultValue), list.property(property.constData()));
    } else {
        QCOMPARE(list.property(property.constData()), defaultValue);
        QVERIFY(!bag.contains(key));
    }

    // Any other value is written under its key, and a fresh list reads it back.
    QVERIFY(list.setProperty(property.constData(), value));
    list.writeProperties(bag);
    QVERIFY2(bag.keys().contains(key), qPrintable(bag.keys().join(u',')));
    ReferenciasX read;
    read.readProperties(bag);
    QCOMPARE(read.property(property.constData()), value);

    // An empty bag brings the default back.
    read.readProperties(PropertyBag());
    QCOMPARE(read.property(property.constData()), keepsFont ? value : defaultValue);
}

void tst_ReferenciasX::borderSurroundsTheRows()
{
    ReferenciasX list;
    list.setBorderStyle(1);
    list.setForeColor(0x0000FF);
    list.setReferencias(lista({ { QStringLiteral("1"), QStringLiteral("Tinto") },
                                { QStringLiteral("2"), QStringLiteral("Blanco") } }));
    const int widest = rows(list).first()->width();
    QCOMPARE(list.size(), QSize(widest + 2, 2 * 24 + 2));
    QCOMPARE(list.findChild<ReferenciaX *>(QStringLiteral("R2"))->pos(), QPoint(1, 25));

    const QImage image = list.grab().toImage();
    const QRgb red = qRgb(255, 0, 0);
    for (const QPoint &p : { QPoint(0, 0), QPoint(widest + 1, 30), QPoint(10, 49), QPoint(0, 30) })
        QCOMPARE(image.pixel(p), red);
    QVERIFY(image.pixel(widest, 30) != red); // the row, inside the border
}

QTEST_MAIN(tst_ReferenciasX)
#include "tst_referenciasx.moc"
