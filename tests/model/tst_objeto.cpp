#include <tarvonix/model/objeto.h>
#include <tarvonix/model/objetos.h>

#include "modeltest.h"

using namespace tarvonix;

class tst_Objeto : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void commonField_data()
    {
        modeltest::commonField_data({{"tipo", true, QString()}, {"xy", true, 0}, {"anchoAlto", true, 0},
                                     {"forma", true, 0}, {"imagen", true, false}, {"tag", true, QVariant()},
                                     {"color", true, 0xFFFFFF}, {"tip", true, QString()},
                                     {"referencias", true, false}, {"puedeContener", true, 0}});
    }
    void commonField() { modeltest::commonField(std::make_shared<Objeto>()); }

    void geometryClamping_data()
    {
        QTest::addColumn<qint16>("value");
        QTest::addColumn<qint16>("xy"); // x and y never go below 0; ancho and alto keep any value
        QTest::newRow("-5") << qint16(-5) << qint16(0);
        QTest::newRow("min") << qint16(-32768) << qint16(0);
        QTest::newRow("max") << qint16(32767) << qint16(32767);
    }
    void geometryClamping()
    {
        QFETCH(qint16, value);
        QFETCH(qint16, xy);
        ObjetoPtr o = std::make_shared<Objeto>();
        o->setX(value), o->setY(value), o->setAncho(value), o->setAlto(value);
        QCOMPARE(QList<qint16>({o->getX(), o->getY(), o->getAncho(), o->getAlto()}), QList<qint16>({xy, xy, value, value}));
    }

    void textsAreKeptOrTrimmed()
    {
        Objeto o;
        o.setDescripcion("  Depósito Ñ 酒 ");
        QCOMPARE(o.getDescripcion(), QStringLiteral("Depósito Ñ 酒"));
        o.setDescripcion("\tcon tabulador\t"); // only spaces are trimmed
        QCOMPARE(o.getDescripcion(), QStringLiteral("\tcon tabulador\t"));
        o.setDescripcion("   ");
        QCOMPARE(o.getDescripcion(), QString());
        o.setCodigo(" D 1 ");
        QCOMPARE(o.getCodigo(), QStringLiteral(" D 1 "));
        const QString longCode(100000, QChar(u'酒'));
        o.setCodigo(longCode);
        QCOMPARE(o.getCodigo(), longCode);
    }

    void puedeContenerStartsEmptyEveryTime()
    {
        Objeto o;
        o.setPuedeContener(true);
        const auto first = o.getObjetos();
        first->add(modeltest::objeto("a"));
        first->add(modeltest::objeto("b"));
        o.setSeleccionado(true); // nothing reaches the children
        QVERIFY(!first->Item(1)->getSeleccionado());
        o.setPuedeContener(true);
        QCOMPARE(o.getObjetos()->count(), 0);
        QCOMPARE(first->count(), 2); // whoever holds the old collection keeps it
        o.setPuedeContener(false);
        QVERIFY(!o.getObjetos());
    }

    void tagSharesObjects()
    {
        Objeto o;
        auto otro = modeltest::objeto("antes");
        o.setTag(QVariant::fromValue(otro));
        otro->setCodigo("después");
        QCOMPARE(o.getTag().value<ObjetoPtr>()->getCodigo(), QStringLiteral("después"));
    }
};

QTEST_GUILESS_MAIN(tst_Objeto)
#include "tst_objeto.moc"
