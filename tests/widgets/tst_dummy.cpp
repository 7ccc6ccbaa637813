#include <tarvonix/platform/controlregistry.h>
#include <tarvonix/platform/latebinding.h>
#include <tarvonix/platform/propertybag.h>
#include <tarvonix/widgets/dummy.h>

#include <QBuffer>
#include <QTest>

#include <memory>

using namespace tarvonix;

class tst_Dummy : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void defaultsWithAnEmptyBag();
    void propertiesRoundTrip_data();
    void propertiesRoundTrip();
    void borderStyleIsReadUnderItsOtherSpelling();
    void pixels_data();
    void pixels();
};

void tst_Dummy::defaultsWithAnEmptyBag()
{
    // Created by name, as the containers create their outline boxes.
    std::unique_ptr<QWidget> created(ControlRegistry::instance().create(QStringLiteral("tarvonix.dummy")));
    auto *dummy = qobject_cast<Dummy *>(created.get());
    QVERIFY(dummy);
    dummy->readProperties(PropertyBag());
    QCOMPARE(dummy->BackStyle(), qint16(0));
    QCOMPARE(dummy->BackColor(), qint32(0xFFFFFF));
    QCOMPARE(dummy->BorderStyle(), qint16(1));
    QVERIFY(dummy->testAttribute(Qt::WA_TransparentForMouseEvents));

    // Defaults are not written.
    PropertyBag bag;
    dummy->writeProperties(bag);
    QVERIFY(bag.isEmpty());

    // Hosts reach the three by name.
    LateBinding::set(dummy, QStringLiteral("backstyle"), 1);
    QCOMPARE(LateBinding::get(dummy, QStringLiteral("BackStyle")).toInt(), 1);
}

void tst_Dummy::propertiesRoundTrip_data()
{
    QTest::addColumn<qint16>("backStyle");
    QTest::addColumn<qint32>("backColor");
    QTest::addColumn<qint16>("borderStyle");
    QTest::addColumn<QStringList>("keys");

    QTest::newRow("border only") << qint16(0) << qint32(0xFFFFFF) << qint16(0)
                                 << QStringList { "BorderStyle" };
    QTest::newRow("opaque red") << qint16(1) << qint32(0x0000FF) << qint16(1)
                                << QStringList { "BackColor", "BackStyle" };
    QTest::newRow("all three") << qint16(1) << qint32(0x123456) << qint16(0)
                               << QStringList { "BackColor", "BackStyle", "BorderStyle" };
}

void tst_Dummy::propertiesRoundTrip()
{
    QFETCH(qint16, backStyle);
    QFETCH(qint32, backColor);
    QFETCH(qint16, borderStyle);
    QFETCH(QStringList, keys);

    Dummy saved;
    saved.setBackStyle(backStyle);
    saved.setBackColor(backColor);
    saved.setBorderStyle(borderStyle);
    PropertyBag bag;
    saved.writeProperties(bag);
    QCOMPARE(bag.keys(), keys); // written under these spellings, defaults left out

    // Through a saved form and back.
    QBuffer buffer;
    buffer.open(QIODevice::ReadWrite);
    QVERIFY(bag.save(&buffer));
    buffer.seek(0);
    PropertyBag loaded;
    QVERIFY(loaded.load(&buffer));

    Dummy read;
    read.readProperties(loaded);
    QCOMPARE(read.BackStyle(), backStyle);
    QCOMPARE(read.BackColor(), backColor);
    QCOMPARE(read.BorderStyle(), borderStyle);
}

void tst_Dummy::borderStyleIsReadUnderItsOtherSpelling()
{
    // A bag written by another host under the read spelling only.
    PropertyBag bag;
    bag.writeProperty(QStringLiteral("Borderstyle"), qint16(0), qint16(1));
    Dummy dummy;
    dummy.readProperties(bag);
    QCOMPARE(dummy.BorderStyle(), qint16(0));

    // Saving again writes the other spelling over the same key.
    dummy.writeProperties(bag);
    QCOMPARE(bag.keys(), QStringList { "BorderStyle" });
}

void tst_Dummy::pixels_data()
{
    QTest::addColumn<qint16>("backStyle");
    QTest::addColumn<qint16>("borderStyle");
    QTest::addColumn<QRgb>("edge");
    QTest::addColumn<QRgb>("inside");

    const QRgb below = qRgb(0, 0, 255); // what lies under the box
    const QRgb fill = qRgb(255, 0, 0); // BackColor 0x0000FF
    const QRgb line = QPalette().color(QPalette::WindowText).rgb();
    QTest::newRow("outline") << qint16(0) << qint16(1) << line << below;
    QTest::newRow("nothing") << qint16(0) << qint16(0) << below << below;
    QTest::newRow("opaque with border") << qint16(1) << qint16(1) << line << fill;
    QTest::newRow("opaque without border") << qint16(1) << qint16(0) << fill << fill;
}

void tst_Dummy::pixels()
{
    QFETCH(qint16, backStyle);
    QFETCH(qint16, borderStyle);
    QFETCH(QRgb, edge);
    QFETCH(QRgb, inside);

    QWidget host;
    host.resize(60, 40);
    host.setAutoFillBackground(true);
    QPalette blue = host.palette();
    blue.setColor(QPalette::Window, Qt::blue);
    host.setPalette(blue);
    auto *dummy = new Dummy(&host);
    dummy->setBackColor(0x0000FF);
    dummy->setBackStyle(backStyle);
    dummy->setBorderStyle(borderStyle);
    dummy->setGeometry(10, 5, 30, 20);
    dummy->show();

    const QImage image = host.grab().toImage();
    for (const QPoint corner :
         { QPoint(10, 5), QPoint(39, 5), QPoint(10, 24), QPoint(39, 24), QPoint(25, 5) })
        QCOMPARE(image.pixel(corner), edge);
    QCOMPARE(image.pixel(11, 6), inside);
    QCOMPARE(image.pixel(25, 15), inside);
    QCOMPARE(image.pixel(9, 5), qRgb(0, 0, 255)); // nothing outside the box
    QCOMPARE(image.pixel(40, 25), qRgb(0, 0, 255));
}

QTEST_MAIN(tst_Dummy)
#include "tst_dummy.moc"
