#include <tarvonix/model/objetos.h>

#include "modeltest.h"

using namespace tarvonix;
using modeltest::failureOf;
using modeltest::objeto;

class tst_Objetos : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void lookupsByPositionAndKey()
    {
        Objetos c;
        const ObjetoPtr d1 = objeto("D1"), n = objeto("Depósito Ñ 酒");
        c.add(d1);
        c.add(n);
        QCOMPARE(c.Item(2), n);
        QCOMPARE(c.Item("d1"), d1);
        QCOMPARE(c.Item("DEPÓSITO ñ 酒"), n);
        for (int bad : { 0, -1, 3, -32768, 32767 })
            QVERIFY(!c.Item(bad));
        QVERIFY(!c.Item("D2"));
        QVERIFY(!Objetos().Item(1));
        d1->setCodigo("D9"); // the key is the code at the time of the add
        QCOMPARE(c.Item("D1"), d1);
        QVERIFY(!c.Item("D9"));
    }

    void duplicateAndNoneAreRefused()
    {
        Objetos c;
        const ObjetoPtr first = objeto("a1");
        c.add(first);
        QCOMPARE(failureOf([&] { c.add(objeto("A1")); }), int(Error::DuplicateKey));
        QCOMPARE(failureOf([&] { c.add(nullptr); }), int(Error::ObjectNotSet));
        c.add(objeto(QString())); // an empty code is a key, once
        QCOMPARE(failureOf([&] { c.add(objeto("")); }), int(Error::DuplicateKey));
        QCOMPARE(c.count(), 2);
        QCOMPARE(c.Item(1), first);
    }

    void removeNeverFails()
    {
        Objetos c;
        const ObjetoPtr a = objeto("a");
        c.add(a);
        c.add(objeto("b"));
        c.remove(objeto("zz"));
        c.remove(nullptr);
        a->setCodigo("cambiado");
        c.remove(a); // filed under its old code: stays
        QCOMPARE(c.count(), 2);
        c.remove(objeto("B")); // the key decides, not the object
        QCOMPARE(c.count(), 1);
        QCOMPARE(c.Item(1), a);
    }

    void clearFreesTheKeys()
    {
        Objetos c;
        c.add(objeto("z"));
        auto before = c.NewEnum();
        c.clear();
        QCOMPARE(c.count(), 0);
        c.add(objeto("Z"));
        QCOMPARE(before.next()->getCodigo(), QStringLiteral("z")); // an enumerator keeps what it saw
    }
};

QTEST_GUILESS_MAIN(tst_Objetos)
#include "tst_objetos.moc"
