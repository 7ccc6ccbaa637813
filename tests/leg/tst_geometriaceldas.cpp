#include <tarvonix/leg/geometriaceldas.h>
#include <tarvonix/core/error.h>

#include <QTest>

using namespace tarvonix;

class tst_GeometriaCeldas : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void hitTest_data();
    void hitTest();
    void everyCellHitsItself_data();
    void everyCellHitsItself();
    void controlSize_data();
    void controlSize();
    void bandTakesWholeCellsOnly();
    void degenerateScalesFail();
};

void tst_GeometriaCeldas::hitTest_data()
{
    QTest::addColumn<double>("alto");
    QTest::addColumn<bool>("clasica");
    QTest::addColumn<QPointF>("punto");
    QTest::addColumn<int>("fila");
    QTest::addColumn<int>("columna");

    // Three plain tiers of 20-pixel cells: H = 83, tier 1 spans y 42..61, tier 2 y 21..40.
    QTest::newRow("tier 1, position 1") << 83.0 << false << QPointF(25, 50) << 1 << 1;
    QTest::newRow("tier 1, position 2") << 83.0 << false << QPointF(46, 50) << 1 << 2;
    QTest::newRow("tier 2, position 1") << 83.0 << false << QPointF(25, 30) << 2 << 1;
    QTest::newRow("top edge of tier 2 is tier 3") << 83.0 << false << QPointF(25, 21) << 3 << 1;
    QTest::newRow("left of the grid") << 83.0 << false << QPointF(5, 50) << 1 << 0;
    QTest::newRow("below the grid") << 83.0 << false << QPointF(25, 70) << 0 << 1;
    // Classic: tier 2 starts 10 pixels further right.
    QTest::newRow("classic tier 2 at x 35") << 77.0 << true << QPointF(35, 30) << 2 << 1;
    QTest::newRow("classic tier 2 at x 29") << 77.0 << true << QPointF(29, 30) << 2 << 0;
    QTest::newRow("classic tier 1 at x 30") << 77.0 << true << QPointF(30, 50) << 1 << 1;
}

void tst_GeometriaCeldas::hitTest()
{
    QFETCH(double, alto);
    QFETCH(bool, clasica);
    QFETCH(QPointF, punto);
    QFETCH(int, fila);
    QFETCH(int, columna);
    const GeometriaCeldas g(alto, 1.0, clasica);
    const GeometriaCeldas::Celda celda = g.sobre(punto.x(), punto.y());
    QCOMPARE(int(celda.fila), fila);
    QCOMPARE(int(celda.columna), columna);
}

void tst_GeometriaCeldas::everyCellHitsItself_data()
{
    QTest::addColumn<double>("escala");
    QTest::addColumn<bool>("clasica");
    QTest::newRow("plain 1.0") << 1.0 << false;
    QTest::newRow("classic 1.0") << 1.0 << true;
    QTest::newRow("plain 2.0") << 2.0 << false;
    QTest::newRow("classic 2.0") << 2.0 << true;
    QTest::newRow("classic 1.5") << 1.5 << true;
}

void tst_GeometriaCeldas::everyCellHitsItself()
{
    // Whatever is drawn at (t, p) is hit as (t, p): at its centre and near its corners. The top
    // row of a cell belongs to the tier above; in the classic arrangement the lowest rows lie
    // over the tier below and belong to it.
    QFETCH(double, escala);
    QFETCH(bool, clasica);
    const int filas = 12;
    const GeometriaCeldas g0(0, escala, clasica);
    const GeometriaCeldas g(g0.altoControl(filas), escala, clasica);
    QCOMPARE(g.y(filas), 0.0); // the top tier starts at the top of the control
    for (int t = 1; t <= filas; ++t) {
        for (int p = 1; p <= 9; ++p) {
            const QRectF celda = g.celda(t, p);
            QCOMPARE(celda.width(), escala * 20);
            const double abajo = std::min(g.ladoCelda() - 1, g.pasoFila());
            for (const QPointF &punto : { celda.center(), celda.topLeft() + QPointF(0, 1),
                                          celda.topLeft() + QPointF(g.ladoCelda() - 1, abajo) }) {
                const GeometriaCeldas::Celda hit = g.sobre(punto.x(), punto.y());
                QCOMPARE(int(hit.fila), t);
                QCOMPARE(int(hit.columna), p);
            }
        }
    }
}

void tst_GeometriaCeldas::controlSize_data()
{
    QTest::addColumn<double>("escala");
    QTest::addColumn<bool>("clasica");
    QTest::addColumn<int>("filas");
    QTest::addColumn<int>("largo");
    QTest::addColumn<double>("ancho");
    QTest::addColumn<double>("alto");
    QTest::newRow("one plain tier") << 1.0 << false << 1 << 5 << 21.0 * 5 + 39 << 41.0;
    QTest::newRow("one classic tier") << 1.0 << true << 1 << 5 << 21.0 * 5 + 39 << 41.0;
    QTest::newRow("three plain tiers") << 1.0 << false << 3 << 4 << 21.0 * 4 + 39 << 83.0;
    QTest::newRow("three classic tiers") << 1.0 << true << 3 << 4 << 21.0 * 4 + 39 + 2 * 10 << 77.0;
    QTest::newRow("classic at 2.0") << 2.0 << true << 3 << 4 << 41.0 * 4 + 39 + 2 * 20 << 38.0 * 2 + 61;
    QTest::newRow("no positions") << 1.0 << false << 2 << 0 << 39.0 << 62.0;
}

void tst_GeometriaCeldas::controlSize()
{
    QFETCH(double, escala);
    QFETCH(bool, clasica);
    QFETCH(int, filas);
    QFETCH(int, largo);
    QFETCH(double, ancho);
    QFETCH(double, alto);
    const GeometriaCeldas g(0, escala, clasica);
    QCOMPARE(g.anchoControl(filas, largo), ancho);
    QCOMPARE(g.altoControl(filas), alto);
    QCOMPARE(g.desplazamiento(), clasica ? escala * 10 : 0.0);
}

void tst_GeometriaCeldas::bandTakesWholeCellsOnly()
{
    const GeometriaCeldas g(83, 1.0, false);
    // Cell (1, 2) is x 42..61, y 42..61; the band counts from the gap column at x 41.
    QVERIFY(g.enBanda(1, 2, QRectF(QPointF(41, 42), QPointF(61, 62))));
    QVERIFY(!g.enBanda(1, 2, QRectF(QPointF(42, 42), QPointF(61, 62)))); // gap column left out
    QVERIFY(!g.enBanda(1, 2, QRectF(QPointF(41, 43), QPointF(61, 62)))); // top row left out
    QVERIFY(!g.enBanda(1, 2, QRectF(QPointF(41, 42), QPointF(60, 62)))); // one pixel short at the right
    QVERIFY(!g.enBanda(2, 2, QRectF(QPointF(41, 42), QPointF(61, 62))));
}

void tst_GeometriaCeldas::degenerateScalesFail()
{
    // Tiers that no longer advance (a 2-pixel classic cell) or positions that do not (-1-pixel cells).
    try {
        GeometriaCeldas(100, 0.1, true).sobre(30, 30);
        QFAIL("no failure");
    } catch (const Error &e) {
        QCOMPARE(e.code(), Error::DivisionByZero);
    }
    try {
        GeometriaCeldas(100, -0.05, false).sobre(30, 30);
        QFAIL("no failure");
    } catch (const Error &e) {
        QCOMPARE(e.code(), Error::DivisionByZero);
    }
    // A hit beyond 16 bits.
    try {
        GeometriaCeldas(1e9, 1.0, false).sobre(30, 0);
        QFAIL("no failure");
    } catch (const Error &e) {
        QCOMPARE(e.code(), Error::Overflow);
    }
    // Cells of no size still give a hit: tier t at y 9 - (t - 1), so y 8 is the top of tier 2.
    const GeometriaCeldas::Celda celda = GeometriaCeldas(30, 0, false).sobre(21, 8);
    QCOMPARE(int(celda.fila), 3);
    QCOMPARE(int(celda.columna), 2);
}

QTEST_APPLESS_MAIN(tst_GeometriaCeldas)
#include "tst_geometriaceldas.moc"
