// SPDX-License-Identifier: MIT
#include <tarvonix/platform/propertybag.h>

#include <QFont>
#include <QTemporaryDir>
#include <QTest>

using namespace tarvonix;
using namespace Qt::StringLiterals;

class tst_PropertyBag : public QObject
{
    Q_OBJECT

    QTemporaryDir dir;
    PropertyBag bag;

private Q_SLOTS:
    void init() { bag = PropertyBag(); }

    void keysIgnoreCaseAndDefaultsAreNotStored()
    {
        bag.writeProperty(u"BorderStyle"_s, 0, 1);
        QCOMPARE(bag.readProperty(u"Borderstyle"_s, 1).toInt(), 0);
        bag.writeProperty(u"borderstyle"_s, 2, 1);
        QCOMPARE(bag.keys(), QStringList { u"borderstyle"_s }); // one key, last spelling
        QCOMPARE(bag.readProperty(u"BORDERSTYLE"_s, 1).toInt(), 2);
        bag.writeProperty(u"BorderStyle"_s, 1, 1); // back to the default clears the key
        QVERIFY(bag.isEmpty() && !bag.contains(u"borderstyle"_s));
        QCOMPARE(bag.readProperty(u"BorderStyle"_s, 1).toInt(), 1);
        QCOMPARE(bag.readProperty(u"Missing"_s, u"x"_s).toString(), u"x"_s);
    }

    void readConvertsToTheDefaultsType()
    {
        bag.writeProperty(u"Separacion"_s, u"20.5"_s, 20.0f);
        const QVariant separacion = bag.readProperty(u"Separacion"_s, 20.0f);
        QCOMPARE(separacion.metaType(), QMetaType::fromType<float>());
        QCOMPARE(separacion.toFloat(), 20.5f);
        bag.writeProperty(u"Paso"_s, u"not a number"_s, 1);
        QCOMPARE(bag.readProperty(u"Paso"_s, 1).toInt(), 1); // unconvertible: the default
    }

    void roundTripThroughAFile()
    {
        QFont font(u"DejaVu Sans"_s, 9);
        font.setBold(true);
        bag.writeProperty(u"BackColor"_s, qint32(0x800000), qint32(0xC0C0C0));
        bag.writeProperty(u"Texto"_s, u"Depósito Ñ 酒"_s, QString());
        bag.writeProperty(u"Font"_s, font, QFont());
        const QString file = dir.filePath(u"form.bag"_s);
        QVERIFY(bag.save(file));
        PropertyBag loaded;
        QVERIFY(loaded.load(file));
        QCOMPARE(loaded.keys(), bag.keys());
        QCOMPARE(loaded.readProperty(u"backcolor"_s, qint32(0xC0C0C0)).value<qint32>(), 0x800000);
        QCOMPARE(loaded.readProperty(u"Texto"_s, QString()).toString(), u"Depósito Ñ 酒"_s);
        QCOMPARE(loaded.readProperty(u"Font"_s, QFont()).value<QFont>(), font);
    }

    void unreadableFilesLeaveTheBagAlone()
    {
        bag.writeProperty(u"Primero"_s, 4, 1);
        QVERIFY(!bag.load(dir.filePath(u"missing.bag"_s)));
        QFile garbage(dir.filePath(u"garbage.bag"_s));
        QVERIFY(garbage.open(QIODevice::WriteOnly) && garbage.write("this is not a property bag") > 0);
        garbage.close();
        QVERIFY(!bag.load(garbage.fileName()));
        QCOMPARE(bag.readProperty(u"Primero"_s, 1).toInt(), 4);
        QVERIFY(!bag.save(dir.filePath(u"no/such/folder/x.bag"_s)));
    }
};

QTEST_MAIN(tst_PropertyBag)
#include "tst_propertybag.moc"
