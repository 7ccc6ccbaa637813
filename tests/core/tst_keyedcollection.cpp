// SPDX-License-Identifier: MIT
#include <tarvonix/core/error.h>
#include <tarvonix/core/keyedcollection.h>

#include "../model/modeltest.h"

#include <QRandomGenerator>

using namespace tarvonix;
using namespace Qt::StringLiterals;

using Collection = KeyedCollection<int>;
using Operation = std::function<void(Collection &)>;
Q_DECLARE_METATYPE(Operation)

class tst_KeyedCollection : public QObject
{
    Q_OBJECT

    Collection c;
    const QStringList keys = { u"Ábaco"_s, u"d12"_s, QString(), u"k4"_s, u"k5"_s }; // values 1..5

private Q_SLOTS:
    void init()
    {
        c = Collection();
        for (int i = 0; i < keys.size(); ++i)
            c.add(keys.at(i), i + 1);
    }

    void lookups()
    {
        QCOMPARE(c.at(2), 2);
        QCOMPARE(c.at(u"D12"_s), 2);
        QCOMPARE(c.at(u"ábaco"_s), 1); // case is ignored beyond ASCII too
        QCOMPARE(c.at(QString()), 3); // an empty key is a key like any other
        QCOMPARE(c.positionOf(u"K4"_s), 4);
        QCOMPARE(c.keys(), keys); // the spelling each key was given
        QCOMPARE(c.value(u"K5"_s), 5);
        QCOMPARE(c.value(u"nope"_s), 0);
        QCOMPARE(c.value(qsizetype(5)), 5);
        QCOMPARE(c.value(qsizetype(6)), 0);
    }

    void failuresLeaveTheCollectionUnchanged_data()
    {
        QTest::addColumn<Operation>("operation");
        QTest::addColumn<int>("code");
        const int outOfRange = Error::SubscriptOutOfRange, invalid = Error::InvalidArgument;
        QTest::newRow("at 0") << Operation([](Collection &k) { k.at(0); }) << outOfRange;
        QTest::newRow("at count + 1") << Operation([](Collection &k) { k.at(6); }) << outOfRange;
        QTest::newRow("keyAt count + 1") << Operation([](Collection &k) { k.keyAt(6); }) << outOfRange;
        QTest::newRow("removeAt 0") << Operation([](Collection &k) { k.removeAt(0); }) << outOfRange;
        QTest::newRow("removeAt count + 1") << Operation([](Collection &k) { k.removeAt(6); }) << outOfRange;
        QTest::newRow("at unknown key") << Operation([](Collection &k) { k.at(u"k6"_s); }) << invalid;
        QTest::newRow("remove unknown key") << Operation([](Collection &k) { k.remove(u"k6"_s); }) << invalid;
        QTest::newRow("key taken in another case")
            << Operation([](Collection &k) { k.add(u"K4"_s, 9); }) << int(Error::DuplicateKey);
    }
    void failuresLeaveTheCollectionUnchanged()
    {
        QFETCH(Operation, operation);
        QFETCH(int, code);
        QCOMPARE(modeltest::failureOf([&] { operation(c); }), code);
        QCOMPARE(c.keys(), keys);
        QCOMPARE(c.at(u"k4"_s), 4); // positions still follow the keys
    }

    void removeKeepsLaterKeysReachable()
    {
        c.remove(u"D12"_s);
        QCOMPARE(c.at(QString()), 3); // the next entry moved up
        c.removeAt(1);
        QCOMPARE(c.keys(), (QStringList { QString(), u"k4"_s, u"k5"_s }));
        QCOMPARE(c.at(u"k5"_s), 5);
        QCOMPARE(c.positionOf(u"k4"_s), 2);
        c.add(u"ábaco"_s, 10); // a removed key is free again
        QCOMPARE(c.at(4), 10);
    }

    void enumeratorsKeepTheirContents()
    {
        auto before = c.enumerate();
        c.add(u"k6"_s, 6);
        c.remove(u"k4"_s);
        QList<int> seen;
        while (before.hasNext())
            seen.append(before.next());
        QCOMPARE(seen, (QList<int> { 1, 2, 3, 4, 5 }));
        QVERIFY_THROWS_EXCEPTION(Error, before.next());
        QList<int> now(c.begin(), c.end());
        QCOMPARE(now, (QList<int> { 1, 2, 3, 5, 6 }));

        auto cleared = c.enumerate();
        c.clear();
        QVERIFY(c.isEmpty() && !c.contains(u"k5"_s));
        QCOMPARE(cleared.count(), 5);
        c.add(u"k5"_s, 7); // cleared keys are free again
        QCOMPARE(cleared.next(), 1);
    }

    // Against a plain list, through more entries than one storage chunk holds and enough
    // removals to leave gaps, count them and close them again.
    void positionsFollowRemovalsAndBulkRemoval()
    {
        KeyedCollection<int> k;
        QList<int> model;
        QRandomGenerator random(7);
        for (int step = 0; step < 8000; ++step) {
            const int op = random.bounded(10);
            const int at = model.isEmpty() ? 0 : int(random.bounded(model.size()));
            if (op < 5 || model.isEmpty())
                k.add(u"K%1"_s.arg(step), step), model.append(step);
            else if (op < 7)
                k.remove(u"k%1"_s.arg(model.takeAt(at)));
            else if (op < 8)
                k.removeAt(at + 1), model.removeAt(at);
            else
                QVERIFY(k.positionOf(u"k%1"_s.arg(model.at(at))) == at + 1 && k.at(at + 1) == model.at(at));
        }
        const auto before = k.enumerate();
        const qsizetype total = model.size();
        const auto odd = [](int value) { return value % 2 == 1; };
        QCOMPARE(k.removeIf(odd), model.removeIf(odd));
        QCOMPARE(QList<int>(k.begin(), k.end()), model);
        QCOMPARE(k.positionOf(u"K%1"_s.arg(model.last())), model.size());
        QCOMPARE(before.count(), total); // the enumerator still walks what it was taken from
    }
};

QTEST_GUILESS_MAIN(tst_KeyedCollection)
#include "tst_keyedcollection.moc"
