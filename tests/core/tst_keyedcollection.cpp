#include <tarvonix/core/error.h>
#include <tarvonix/core/keyedcollection.h>

#include <QRandomGenerator>
#include <QTest>

using namespace tarvonix;

class tst_KeyedCollection : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void positionsAndKeys();
    void duplicateKeyLeavesCollectionUnchanged();
    void removeKeepsLaterKeysReachable();
    void enumeratorsKeepTheirContents();
    void clearOnlyReplacesFilledCollections();
    void lookupsOutsideFail();
    void positionsFollowRemovalsAndBulkRemoval();
};

void tst_KeyedCollection::positionsAndKeys()
{
    KeyedCollection<int> c;
    c.add(QStringLiteral("Ábaco"), 1);
    c.add(QStringLiteral("d12"), 2);
    c.add(QString(), 3); // an empty key is a key like any other
    QCOMPARE(c.count(), 3);
    QCOMPARE(c.at(1), 1);
    QCOMPARE(c.at(QStringLiteral("D12")), 2);
    QCOMPARE(c.at(QStringLiteral("ábaco")), 1); // case is ignored beyond ASCII too
    QCOMPARE(c.at(QString()), 3);
    QCOMPARE(c.positionOf(QStringLiteral("D12")), 2);
    QCOMPARE(c.keyAt(2), QStringLiteral("d12")); // the key keeps the spelling it was given
    QCOMPARE(c.value(QStringLiteral("nope")), 0);
    QCOMPARE(c.value(qsizetype(4)), 0);
}

void tst_KeyedCollection::duplicateKeyLeavesCollectionUnchanged()
{
    KeyedCollection<int> c;
    c.add(QStringLiteral("A1"), 1);
    try {
        c.add(QStringLiteral("a1"), 2);
        QFAIL("a second key that differs only in case must be refused");
    } catch (const Error &error) {
        QCOMPARE(error.code(), Error::DuplicateKey);
    }
    QCOMPARE(c.count(), 1);
    QCOMPARE(c.at(QStringLiteral("A1")), 1);
}

void tst_KeyedCollection::removeKeepsLaterKeysReachable()
{
    KeyedCollection<int> c;
    for (int i = 1; i <= 5; ++i)
        c.add(QStringLiteral("k%1").arg(i), i);
    c.remove(QStringLiteral("K2"));
    c.removeAt(1);
    QCOMPARE(c.keys(), (QStringList{QStringLiteral("k3"), QStringLiteral("k4"), QStringLiteral("k5")}));
    QCOMPARE(c.at(QStringLiteral("k5")), 5);
    QCOMPARE(c.positionOf(QStringLiteral("k4")), 2);
    c.add(QStringLiteral("k1"), 10); // a removed key is free again
    QCOMPARE(c.at(4), 10);
}

void tst_KeyedCollection::enumeratorsKeepTheirContents()
{
    KeyedCollection<int> c;
    c.add(QStringLiteral("a"), 1);
    c.add(QStringLiteral("b"), 2);
    auto before = c.enumerate();
    c.add(QStringLiteral("c"), 3);
    c.remove(QStringLiteral("a"));
    QList<int> seen;
    while (before.hasNext())
        seen.append(before.next());
    QCOMPARE(seen, (QList<int>{1, 2}));
    QVERIFY_THROWS_EXCEPTION(Error, before.next());

    QList<int> now;
    for (int value : c)
        now.append(value);
    QCOMPARE(now, (QList<int>{2, 3}));
}

void tst_KeyedCollection::clearOnlyReplacesFilledCollections()
{
    KeyedCollection<int> c;
    c.clear();
    QCOMPARE(c.count(), 0);
    c.add(QStringLiteral("a"), 1);
    auto before = c.enumerate();
    c.clear();
    QCOMPARE(c.count(), 0);
    QCOMPARE(before.count(), 1);
    QVERIFY(!c.contains(QStringLiteral("a")));
}

void tst_KeyedCollection::lookupsOutsideFail()
{
    KeyedCollection<int> c;
    c.add(QStringLiteral("a"), 1);
    for (qsizetype position : {qsizetype(0), qsizetype(-1), qsizetype(2)}) {
        try {
            c.at(position);
            QFAIL("a position outside 1..count must fail");
        } catch (const Error &error) {
            QCOMPARE(error.code(), Error::SubscriptOutOfRange);
        }
    }
    try {
        c.remove(QStringLiteral("b"));
        QFAIL("removing an unknown key must fail");
    } catch (const Error &error) {
        QCOMPARE(error.code(), Error::InvalidArgument);
    }
    QCOMPARE(c.count(), 1);
}

void tst_KeyedCollection::positionsFollowRemovalsAndBulkRemoval()
{
    // Against a plain list, through more entries than one storage chunk holds
    // and enough removals to leave gaps, count them and close them again.
    KeyedCollection<int> c;
    QList<int> model;
    QRandomGenerator random(7);
    for (int step = 0; step < 8000; ++step) {
        const int op = random.bounded(10);
        const int at = model.isEmpty() ? 0 : int(random.bounded(model.size()));
        if (op < 5 || model.isEmpty()) {
            c.add(QStringLiteral("K%1").arg(step), step);
            model.append(step);
        } else if (op < 7) {
            c.remove(QStringLiteral("k%1").arg(model.takeAt(at)));
        } else if (op < 8) {
            c.removeAt(at + 1);
            model.removeAt(at);
        } else {
            QCOMPARE(c.positionOf(QStringLiteral("k%1").arg(model.at(at))), at + 1);
            QCOMPARE(c.at(at + 1), model.at(at));
        }
    }
    QCOMPARE(c.count(), model.size());
    const qsizetype total = model.size();
    const auto before = c.enumerate();
    const auto odd = [](int value) { return value % 2 == 1; };
    QCOMPARE(c.removeIf(odd), model.removeIf(odd));
    QCOMPARE(QList<int>(c.begin(), c.end()), model);
    QCOMPARE(c.positionOf(QStringLiteral("K%1").arg(model.last())), model.size());
    QCOMPARE(before.count(), total); // the enumerator still walks what it was taken from
}

QTEST_GUILESS_MAIN(tst_KeyedCollection)
#include "tst_keyedcollection.moc"
