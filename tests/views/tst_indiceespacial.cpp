// SPDX-License-Identifier: MIT
#include <tarvonix/model/objeto.h>
#include <tarvonix/views/indiceespacial.h>

#include <QTest>

using namespace tarvonix;

class tst_IndiceEspacial : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void consultas_data();
    void consultas();
};

void tst_IndiceEspacial::consultas_data()
{
    QTest::addColumn<QString>("quien"); // the object changed before the queries, if any
    QTest::addColumn<QRectF>("caja");   // its new box; a null box removes it
    QTest::addColumn<QPointF>("punto");
    QTest::addColumn<QString>("enPunto");
    QTest::addColumn<QRectF>("zona");
    QTest::addColumn<QString>("enZona");

    // A and B overlap, C stands apart, D covers everything and is kept aside from the cells.
    QTest::newRow("added") << "" << QRectF() << QPointF(7, 7) << "ABD" << QRectF(0, 0, 200, 20) << "ABCD";
    QTest::newRow("edges") << "" << QRectF() << QPointF(10, 10) << "ABD" << QRectF(110, 10, 5, 5) << "CD";
    QTest::newRow("moved") << "C" << QRectF(6, 6, 4, 4) << QPointF(7, 7) << "ABCD" << QRectF(90, 0, 20, 20) << "D";
    QTest::newRow("grown") << "A" << QRectF(0, 0, 40, 40) << QPointF(35, 35) << "AD" << QRectF(30, 30, 1, 1) << "AD";
    QTest::newRow("shrunk") << "B" << QRectF(-30, -30, 2, 2) << QPointF(7, 7) << "AD" << QRectF(-40, -40, 15, 15) << "BD";
    QTest::newRow("removed") << "B" << QRectF() << QPointF(7, 7) << "AD" << QRectF(0, 0, 200, 20) << "ACD";
    QTest::newRow("removed large") << "D" << QRectF() << QPointF(7, 7) << "AB" << QRectF(0, 0, 200, 20) << "ABC";
}

void tst_IndiceEspacial::consultas()
{
    QFETCH(QString, quien);
    QFETCH(QRectF, caja);
    QFETCH(QPointF, punto);
    QFETCH(QRectF, zona);
    IndiceEspacial indice;
    indice.clear(16);
    const QRectF cajas[] = { { 0, 0, 10, 10 }, { 5, 5, 10, 10 }, { 100, 0, 10, 10 }, { -500, -500, 5000, 5000 } };
    std::map<QString, ObjetoPtr> objetos;
    for (int i = 0; i < 4; ++i) {
        auto o = std::make_shared<Objeto>();
        o->setCodigo(QString(QChar('A' + i)));
        objetos[o->getCodigo()] = o;
        indice.agregar(o, cajas[i]);
    }
    const quint64 antes = indice.generacion();
    if (caja.isNull() && !quien.isEmpty())
        indice.quitar(objetos[quien].get());
    else if (!quien.isEmpty())
        QVERIFY(indice.mover(objetos[quien].get(), caja));
    QCOMPARE(indice.generacion() != antes, !quien.isEmpty());
    const auto codigos = [](const std::vector<ObjetoPtr> &hallados) {
        QString s;
        for (const ObjetoPtr &o : hallados)
            s += o->getCodigo();
        return s;
    };
    QTEST(codigos(indice.en(punto)), "enPunto");
    QTEST(codigos(indice.en(zona)), "enZona");
}

QTEST_MAIN(tst_IndiceEspacial)
#include "tst_indiceespacial.moc"
