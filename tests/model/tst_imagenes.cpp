#include <tarvonix/model/imagenes.h>

#include "modeltest.h"

#include <QFile>
#include <QImage>
#include <QTemporaryDir>

using namespace tarvonix;
using modeltest::failureOf;

class tst_Imagenes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(dir.isValid());
        for (auto [name, size] : {std::pair{"uva.png", 4}, {"Depósito Ñ 酒.png", 7}}) {
            QImage picture(size, size, QImage::Format_RGB32);
            picture.fill(Qt::darkRed);
            QVERIFY(picture.save(dir.filePath(QString::fromUtf8(name))));
        }
        QFile text(dir.filePath("nota.png"));
        QVERIFY(text.open(QIODevice::WriteOnly));
        text.write("not a picture at all");
    }
    void imagenLoadsOrLetsGo();
    void imagenesAreKeyedByNumber();

private:
    QTemporaryDir dir;
};

void tst_Imagenes::imagenLoadsOrLetsGo()
{
    Imagen i;
    QVERIFY(i.getHandler().isNull());
    i.setArchivo(dir.filePath(QStringLiteral("Depósito Ñ 酒.png")));
    QCOMPARE(i.getHandler().size(), QSize(7, 7));
    for (const QString &bad : {dir.filePath("falta.png"), dir.filePath("nota.png"), dir.path(), QString()}) {
        i.setArchivo(dir.filePath("uva.png"));
        QVERIFY(!i.getHandler().isNull());
        i.setArchivo(bad); // no failure, and the earlier picture is gone
        QVERIFY(i.getHandler().isNull());
        QCOMPARE(i.getArchivo(), bad);
    }
}

void tst_Imagenes::imagenesAreKeyedByNumber()
{
    Imagenes c;
    const auto tres = c.add(3, dir.filePath("uva.png"));
    QCOMPARE(tres->getNumero(), qint16(3));
    QCOMPARE(tres->getHandler().size(), QSize(4, 4));
    QCOMPARE(c.Item(3), tres); // a number is a key, not a position
    QCOMPARE(c.Item(QStringLiteral("3")), tres);
    QVERIFY(!c.Item(1));
    QVERIFY(!c.Item(QVariant()));
    QCOMPARE(failureOf([&] { c.add(3, dir.filePath("nota.png")); }), int(Error::DuplicateKey));
    QCOMPARE(c.count(), 1);
    QCOMPARE(c.Item(3)->getArchivo(), dir.filePath("uva.png"));

    const auto extremo = c.add(-32768, dir.filePath("falta.png")); // a missing file still gets an entry
    c.add(32767, QString());
    QCOMPARE(c.Item(-32768), extremo);
    QVERIFY(extremo->getHandler().isNull());
    QCOMPARE(failureOf([&] { c.remove(QStringLiteral("99")); }), int(Error::InvalidArgument));
    QCOMPARE(failureOf([&] { c.remove(4); }), int(Error::SubscriptOutOfRange));
    QCOMPARE(failureOf([&] { c.remove(0); }), int(Error::SubscriptOutOfRange));
    c.remove(1); // by position
    c.remove(QStringLiteral("32767")); // by key
    QCOMPARE(c.count(), 1);
    auto rest = c.NewEnum();
    QCOMPARE(rest.next(), extremo);
}

QTEST_GUILESS_MAIN(tst_Imagenes)
#include "tst_imagenes.moc"
