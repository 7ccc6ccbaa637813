// SPDX-License-Identifier: MIT
#include <tarvonix/model/imagenes.h>
#include <tarvonix/model/objetos.h>
#include <tarvonix/model/referencias.h>

#include "modeltest.h"

#include <QFile>
#include <QImage>
#include <QTemporaryDir>

using namespace tarvonix;
using modeltest::failureOf;
using modeltest::objeto;

// Objetos, Referencias and Imagenes sit on the keyed collection, which has a test of its own:
// here only what each adds, its key and its failures.
class tst_Colecciones : public QObject
{
    Q_OBJECT

    QTemporaryDir dir;
    QString file(const char *name) const { return dir.filePath(QString::fromUtf8(name)); }

private Q_SLOTS:
    void initTestCase()
    {
        for (auto [name, size] : { std::pair { "uva.png", 4 }, { "Depósito Ñ 酒.png", 7 } }) {
            QImage picture(size, size, QImage::Format_RGB32);
            picture.fill(Qt::darkRed);
            QVERIFY(picture.save(file(name)));
        }
        QFile text(file("nota.png"));
        QVERIFY(text.open(QIODevice::WriteOnly) && text.write("not a picture at all") > 0);
    }

    void objetosAreKeyedByCodeWithoutFailures()
    {
        Objetos c;
        const ObjetoPtr d1 = objeto("D1"), n = objeto("Ñ");
        c.add(d1), c.add(n);
        QCOMPARE(c.Item(2), n);
        QCOMPARE(c.Item("d1"), d1);
        QVERIFY(!c.Item(0) && !c.Item(3) && !c.Item("D2")); // none rather than a failure
        QCOMPARE(failureOf([&] { c.add(objeto("ñ")); }), int(Error::DuplicateKey));
        QCOMPARE(failureOf([&] { c.add(nullptr); }), int(Error::ObjectNotSet));
        d1->setCodigo("D9"); // the key is the code at the time of the add
        QCOMPARE(c.Item("D1"), d1);
        c.remove(objeto("zz")), c.remove(nullptr); // remove never fails
        c.remove(d1); // filed under its old code: stays
        QCOMPARE(c.count(), 2);
        c.remove(objeto("ñ")); // the key decides, not the object
        QCOMPARE(c.count(), 1);
        auto before = c.NewEnum();
        c.clear();
        QVERIFY(!c.Item(1) && before.next() == d1);
    }

    void referenciasTakeNumbersAsKeyTexts()
    {
        QCOMPARE(Referencia().getColor(), 0xFFFFFF);
        Referencias c;
        const auto dos = c.add("2", "Tinto", qint32(0x80000012));
        const auto uno = c.add("1", "Depósito Ñ 酒", -1);
        QCOMPARE(QStringList({ dos->getClave(), dos->getTexto() }), QStringList({ "2", "Tinto" }));
        QCOMPARE(dos->getColor(), qint32(0x80000012));
        QCOMPARE(c.Item(2), dos); // the first added: 2 is a key text, not a position
        QCOMPARE(c.Item("1"), uno);
        QCOMPARE(failureOf([&] { c.Item(3); }), int(Error::InvalidArgument)); // unlike Objetos
        QCOMPARE(failureOf([&] { c.Item(QVariant()); }), int(Error::InvalidArgument));
        QVERIFY(!c.find("3"));
        QCOMPARE(failureOf([&] { c.add("1", "otra", 2); }), int(Error::DuplicateKey));
        QCOMPARE(c.find("1")->getTexto(), QStringLiteral("Depósito Ñ 酒"));
        c.clear();
        QVERIFY(!c.find("2"));
    }

    void imagenLoadsOrLetsGo()
    {
        Imagen i;
        QVERIFY(i.getHandler().isNull());
        i.setArchivo(file("Depósito Ñ 酒.png"));
        QCOMPARE(i.getHandler().size(), QSize(7, 7));
        for (const QString &bad : { file("falta.png"), file("nota.png"), dir.path(), QString() }) {
            i.setArchivo(file("uva.png"));
            i.setArchivo(bad); // no failure, and the earlier picture is gone
            QVERIFY(i.getHandler().isNull());
            QCOMPARE(i.getArchivo(), bad);
        }
    }

    void imagenesAreKeyedByNumber()
    {
        Imagenes c;
        const auto tres = c.add(3, file("uva.png"));
        QVERIFY(tres->getNumero() == 3 && tres->getHandler().size() == QSize(4, 4));
        QCOMPARE(c.Item(3), tres); // a number is a key, not a position
        QVERIFY(!c.Item(1));
        QCOMPARE(failureOf([&] { c.add(3, file("nota.png")); }), int(Error::DuplicateKey));
        const auto extremo = c.add(-32768, file("falta.png")); // a missing file still gets an entry
        QCOMPARE(c.Item(-32768), extremo);
        QCOMPARE(failureOf([&] { c.remove("99"); }), int(Error::InvalidArgument));
        for (int outside : { 0, 3 })
            QCOMPARE(failureOf([&] { c.remove(outside); }), int(Error::SubscriptOutOfRange));
        c.remove(2); // by position, up to the last one
        QCOMPARE(c.NewEnum().next(), tres);
        c.remove("3"); // by key
        QCOMPARE(c.count(), 0);
    }
};

QTEST_GUILESS_MAIN(tst_Colecciones)
#include "tst_colecciones.moc"
