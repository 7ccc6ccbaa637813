// SPDX-License-Identifier: MIT
#include <tarvonix/model/escala.h>
#include <tarvonix/model/objetos.h>
#include <tarvonix/model/pierna.h>
#include <tarvonix/model/ubicacion.h>

#include "modeltest.h"

using namespace tarvonix;
using namespace Qt::StringLiterals;
using modeltest::failureOf;
using modeltest::objeto;

namespace {
constexpr int outOfRange = Error::SubscriptOutOfRange;
}

class tst_Pierna : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void newLegFailsBeforeSetEscalas()
    {
        Pierna p;
        QCOMPARE(p.getFilas(), qint16(1));
        QVERIFY(!p.getEscala(1) && !p.getObjeto(1, 1) && !p.getUbicacion(1, 1) && !p.esUbicacion(0, 1));
        QCOMPARE(failureOf([&] { p.esUbicacion(1, 1); }), outOfRange);
        QCOMPARE(failureOf([&] { p.getObjetos(); }), outOfRange);
    }

    void gridPlacesAndEmpties()
    {
        Pierna p;
        p.setEscalas(3);
        QCOMPARE(p.getLargo(2), qint16(0));
        const ObjetoPtr x = objeto("x");
        p.setEscala(2, 4), p.setObjeto(2, 3, x);
        QCOMPARE(p.getObjeto(2, 3), x);
        QVERIFY(p.esUbicacion(2, 4));
        for (auto [e, q] : { std::pair { 2, 0 }, { 2, 5 }, { 0, 1 }, { 4, 1 } }) {
            QVERIFY(!p.esUbicacion(e, q) && !p.getObjeto(e, q));
            QCOMPARE(failureOf([&] { p.setObjeto(e, q, x); }), outOfRange);
        }
        p.setEscala(2, 4); // empties the tier
        QVERIFY(!p.getObjeto(2, 3));
        p.setObjeto(2, 3, x);
        p.setEscalas(2); // a new grid: nothing carried over
        QCOMPARE(p.getLargo(2), qint16(0));
        QVERIFY(!p.getObjeto(2, 3));
    }

    void getObjetosWalksTheGrid()
    {
        Pierna p;
        p.setEscalas(2), p.setEscala(1, 2), p.setEscala(2, 1);
        const ObjetoPtr a = objeto("a"), b = objeto("b"), c = objeto("c");
        p.setObjeto(2, 1, a);
        p.setObjeto(1, 2, b);
        p.setObjeto(1, 1, c);
        const auto objetos = p.getObjetos(); // tier by tier, position by position
        QCOMPARE(QList<ObjetoPtr>(objetos->begin(), objetos->end()), QList<ObjetoPtr>({ c, b, a }));
        QCOMPARE(a->getPadre(), QString()); // placed objects are left as they are
        p.setObjeto(2, 1, b); // placed twice
        QCOMPARE(failureOf([&] { p.getObjetos(); }), int(Error::DuplicateKey));
    }

    void generatedCodes_data()
    {
        QTest::addColumn<QString>("pierna");
        QTest::addColumn<qint16>("e");
        QTest::addColumn<qint16>("p"); // not checked against the tier's length (4)
        QTest::addColumn<QString>("escala");
        QTest::addColumn<QString>("ubicacion");
        QTest::newRow("P01") << u"P01"_s << qint16(2) << qint16(5) << u"P012000"_s << u"P012005"_s;
        QTest::newRow("cut to six") << u"ABCDEFGH"_s << qint16(2) << qint16(5) << u"ABCDEF2000"_s
                                    << u"ABCDEF2005"_s;
        QTest::newRow("tier 33 wraps") << u"P"_s << qint16(33) << qint16(1) << u"P-32536"_s << u"P-32535"_s;
        QTest::newRow("p wraps") << u"Ñ酒"_s << qint16(1) << qint16(32767) << u"Ñ酒1000"_s << u"Ñ酒-31769"_s;
    }
    void generatedCodes()
    {
        QFETCH(QString, pierna);
        QFETCH(qint16, e);
        QFETCH(qint16, p);
        QFETCH(QString, escala);
        QFETCH(QString, ubicacion);
        Pierna leg;
        leg.setCodigo(pierna);
        leg.setEmpresa(-32768);
        leg.setEscalas(e);
        leg.setEscala(e, 4);
        leg.setCodigo("Z"); // tiers keep the code they were made with
        const auto tier = leg.getEscala(e);
        QCOMPARE(QStringList({ tier->getCodigo(), tier->getPadre(), tier->getDescripcion() }),
                 QStringList({ escala, pierna, u"Escala %1"_s.arg(e) }));
        QCOMPARE(QList<int>({ tier->getEmpresa(), tier->getEscala() }), QList<int>({ -32768, e }));

        leg.setCodigo(pierna);
        const auto u = leg.getUbicacion(e, p);
        QCOMPARE(QStringList({ u->getCodigo(), u->getPadre(), u->getDescripcion() }),
                 QStringList({ ubicacion, escala, u"Escala %1 Ubicación (Física)%2"_s.arg(e).arg(p) }));
        QCOMPARE(QList<int>({ u->getEmpresa(), u->getEscala(), u->getUbicacion() }),
                 QList<int>({ -32768, e, p }));
        QVERIFY(leg.getUbicacion(e, p) != u); // a new object every time
    }
};

QTEST_GUILESS_MAIN(tst_Pierna)
#include "tst_pierna.moc"
