#include <tarvonix/platform/propertybag.h>

#include <QFont>
#include <QTemporaryDir>
#include <QTest>

using namespace tarvonix;

class tst_PropertyBag : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void keysIgnoreCase();
    void defaultsAreNotStored();
    void readConvertsToTheDefaultsType();
    void roundTripThroughAFile();
    void unreadableFilesLeaveTheBagAlone();
};

void tst_PropertyBag::keysIgnoreCase()
{
    PropertyBag bag;
    bag.writeProperty(QStringLiteral("BorderStyle"), 0, 1);
    QCOMPARE(bag.readProperty(QStringLiteral("Borderstyle"), 1).toInt(), 0);
    bag.writeProperty(QStringLiteral("borderstyle"), 2, 1);
    QCOMPARE(bag.keys(), QStringList{QStringLiteral("borderstyle")}); // one key, last spelling
    QCOMPARE(bag.readProperty(QStringLiteral("BORDERSTYLE"), 1).toInt(), 2);
}

void tst_PropertyBag::defaultsAreNotStored()
{
    PropertyBag bag;
    bag.writeProperty(QStringLiteral("Sentido"), 0, 0);
    QVERIFY(bag.isEmpty());
    bag.writeProperty(QStringLiteral("Sentido"), 1, 0);
    QVERIFY(bag.contains(QStringLiteral("sentido")));
    bag.writeProperty(QStringLiteral("Sentido"), 0, 0); // back to the default clears the key
    QVERIFY(!bag.contains(QStringLiteral("Sentido")));
    QCOMPARE(bag.readProperty(QStringLiteral("Sentido"), 0).toInt(), 0);
    QCOMPARE(bag.readProperty(QStringLiteral("Missing"), QStringLiteral("x")).toString(), QStringLiteral("x"));
}

void tst_PropertyBag::readConvertsToTheDefaultsType()
{
    PropertyBag bag;
    bag.writeProperty(QStringLiteral("Separacion"), QStringLiteral("20.5"), 20.0f);
    const QVariant separacion = bag.readProperty(QStringLiteral("Separacion"), 20.0f);
    QCOMPARE(separacion.metaType(), QMetaType::fromType<float>());
    QCOMPARE(separacion.toFloat(), 20.5f);
    bag.writeProperty(QStringLiteral("Paso"), QStringLiteral("not a number"), 1);
    QCOMPARE(bag.readProperty(QStringLiteral("Paso"), 1).toInt(), 1); // unconvertible: the default
}

void tst_PropertyBag::roundTripThroughAFile()
{
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    QFont font(QStringLiteral("DejaVu Sans"), 9);
    font.setBold(true);
    PropertyBag bag;
    bag.writeProperty(QStringLiteral("BackColor"), qint32(0x800000), qint32(0xC0C0C0));
    bag.writeProperty(QStringLiteral("ForeColor"), qint32(0x80000012), qint32(0));
    bag.writeProperty(QStringLiteral("Texto"), QStringLiteral("Depósito Ñ 酒"), QString());
    bag.writeProperty(QStringLiteral("Font"), font, QFont());
    const QString file = dir.filePath(QStringLiteral("form.bag"));
    QVERIFY(bag.save(file));

    PropertyBag loaded;
    QVERIFY(loaded.load(file));
    QCOMPARE(loaded.keys(), bag.keys());
    QCOMPARE(loaded.readProperty(QStringLiteral("backcolor"), qint32(0xC0C0C0)).value<qint32>(), 0x800000);
    QCOMPARE(loaded.readProperty(QStringLiteral("ForeColor"), qint32(0)).value<qint32>(), qint32(0x80000012));
    QCOMPARE(loaded.readProperty(QStringLiteral("Texto"), QString()).toString(), QStringLiteral("Depósito Ñ 酒"));
    QCOMPARE(loaded.readProperty(QStringLiteral("Font"), QFont()).value<QFont>(), font);
}

void tst_PropertyBag::unreadableFilesLeaveTheBagAlone()
{
    QTemporaryDir dir;
    PropertyBag bag;
    bag.writeProperty(QStringLiteral("Primero"), 4, 1);
    QVERIFY(!bag.load(dir.filePath(QStringLiteral("missing.bag"))));
    QFile garbage(dir.filePath(QStringLiteral("garbage.bag")));
    QVERIFY(garbage.open(QIODevice::WriteOnly));
    garbage.write("this is not a property bag");
    garbage.close();
    QVERIFY(!bag.load(garbage.fileName()));
    QCOMPARE(bag.readProperty(QStringLiteral("Primero"), 1).toInt(), 4);
    QVERIFY(!bag.save(dir.filePath(QStringLiteral("no/such/folder/x.bag"))));
}

QTEST_MAIN(tst_PropertyBag)
#include "tst_propertybag.moc"
