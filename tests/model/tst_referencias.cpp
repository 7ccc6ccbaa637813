#include <tarvonix/model/referencias.h>

#include "../model/modeltest.h"

using namespace tarvonix;
using modeltest::failureOf;

class tst_Referencias : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void newReferenciaIsWhite() { QCOMPARE(Referencia().getColor(), 0xFFFFFF); }

    void itemTakesNumbersAsKeyTexts()
    {
        Referencias c;
        const auto dos = c.add(QStringLiteral("2"), QStringLiteral("Tinto"), qint32(0x80000012));
        const auto uno = c.add(QStringLiteral("1"), QStringLiteral("Depósito Ñ 酒"), -1);
        QCOMPARE(dos->getTexto(), QStringLiteral("Tinto"));
        QCOMPARE(dos->getColor(), qint32(0x80000012));
        QCOMPARE(c.Item(2), dos); // the first added: 2 is a key text, not a position
        QCOMPARE(c.Item(1), uno);
        QCOMPARE(c.Item(2.0), dos);
        QCOMPARE(c.Item(QStringLiteral("1")), uno);
        QCOMPARE(failureOf([&] { c.Item(3); }), int(Error::InvalidArgument));
        QCOMPARE(failureOf([&] { c.Item(QVariant()); }), int(Error::InvalidArgument));
        QVERIFY(!c.find(QStringLiteral("3")));
        QVERIFY(!c.find(QString()));
    }

    void duplicateKeysLeaveTheListUnchanged()
    {
        Referencias c;
        const auto first = c.add(QStringLiteral("Ñ酒"), QStringLiteral("uno"), 1);
        QCOMPARE(failureOf([&] { c.add(QStringLiteral("ñ酒"), QStringLiteral("dos"), 2); }),
                 int(Error::DuplicateKey));
        QCOMPARE(c.count(), 1);
        QCOMPARE(c.find(QStringLiteral("ñ酒")), first);
        QCOMPARE(first->getTexto(), QStringLiteral("uno"));
        c.add(QString(), QString(), 0); // an empty clave is a key, once
        QCOMPARE(failureOf([&] { c.add(QString(), QString(), 0); }), int(Error::DuplicateKey));
        QCOMPARE(c.count(), 2);
    }

    void clearFreesTheKeys()
    {
        Referencias c;
        c.add(QStringLiteral("b"), QString(), 0);
        c.clear();
        QCOMPARE(c.count(), 0);
        QVERIFY(!c.find(QStringLiteral("b")));
    }
};

QTEST_GUILESS_MAIN(tst_Referencias)
#include "tst_referencias.moc"
