#include <tarvonix/widgets/dummy.h>

#include "propertykeys.h"

using namespace tarvonix;

class tst_Dummy : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void propertyKeysAndDefaults_data();
    void propertyKeysAndDefaults() { checkPropertyKey<Dummy>(); }
    void pixels_data();
    void pixels();
};

void tst_Dummy::propertyKeysAndDefaults_data()
{
    addPropertyKeyColumns();
    propertyKeyRow("BackColor", qint32(0xFFFFFF), qint32(0x123456));
    propertyKeyRow("BackStyle", qint16(0), qint16(1));
    propertyKeyRow("BorderStyle", qint16(1), qint16(0));
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
    dummy->setGeometry(10, 5, 30, 20);
    host.show();
    // The box floats above a drawing: what lies under it gets the mouse.
    QCOMPARE(host.childAt(20, 10), nullptr);
    dummy->setBackColor(0x0000FF);
    dummy->setBackStyle(backStyle);
    dummy->setBorderStyle(borderStyle);
    const QImage image = host.grab().toImage();
    for (const QPoint corner : { QPoint(10, 5), QPoint(39, 5), QPoint(10, 24), QPoint(39, 24), QPoint(25, 5) })
        QCOMPARE(image.pixel(corner), edge);
    QCOMPARE(image.pixel(11, 6), inside);
    QCOMPARE(image.pixel(25, 15), inside);
    QCOMPARE(image.pixel(9, 5), qRgb(0, 0, 255)); // nothing outside the box
    QCOMPARE(image.pixel(40, 25), qRgb(0, 0, 255));
}

QTEST_MAIN(tst_Dummy)
#include "tst_dummy.moc"
