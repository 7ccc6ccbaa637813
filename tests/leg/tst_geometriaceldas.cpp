#include <tarvonix/core/error.h>
#include <tarvonix/leg/geometriaceldas.h>

#include <QTest>

using namespace tarvonix;

class tst_GeometriaCeldas : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void sobre_data();
    void sobre();
    void rejilla_data();
    void rejilla();
};

void tst_GeometriaCeldas::sobre_data()
{
    QTest::addColumn<double>("escala");
    QTest::addColumn<bool>("clasica");
    QTest::addColumn<double>("alto");
    QTest::addColumn<QPointF>("punto");
    QTest::addColumn<QPoint>("celda"); // (tier, position), or (failure code, 0)
    const auto fila
        = [](const char *nombre, double escala, bool clasica, double alto, QPointF punto, QPoint celda) {
              QTest::newRow(nombre) << escala << clasica << alto << punto << celda;
          };
    // Three plain tiers of 20-pixel cells: 83 high, tier 1 spans y 42..61, tier 2 y 21..40.
    fila("tier 1, position 2", 1, false, 83, QPointF(46, 50), QPoint(1, 2));
    fila("tier 2, position 1", 1, false, 83, QPointF(25, 30), QPoint(2, 1));
    fila("top edge of tier 2 is tier 3", 1, false, 83, QPointF(25, 21), QPoint(3, 1));
    fila("left of the grid", 1, false, 83, QPointF(5, 50), QPoint(1, 0));
    fila("below the grid", 1, false, 83, QPointF(25, 70), QPoint(0, 1));
    // Classic, 77 high: tier 2 starts 10 pixels further right.
    fila("classic tier 2 at x 35", 1, true, 77, QPointF(35, 30), QPoint(2, 1));
    fila("classic tier 2 at x 29", 1, true, 77, QPointF(29, 30), QPoint(2, 0));
    fila("classic tier 1 at x 30", 1, true, 77, QPointF(30, 50), QPoint(1, 1));
    // Cells of no size still hit: tier t at y 9 - (t - 1), so y 8 is the top of tier 2.
    fila("cells of no size", 0, false, 30, QPointF(21, 8), QPoint(3, 2));
    // Tiers that no longer advance (2-pixel classic cells) or positions that do not (-1-pixel cells).
    fila("tiers do not advance", 0.1, true, 100, QPointF(30, 30), QPoint(Error::DivisionByZero, 0));
    fila("positions do not advance", -0.05, false, 100, QPointF(30, 30), QPoint(Error::DivisionByZero, 0));
    fila("beyond 16 bits", 1, false, 1e9, QPointF(30, 0), QPoint(Error::Overflow, 0));
}

void tst_GeometriaCeldas::sobre()
{
    QFETCH(double, escala);
    QFETCH(bool, clasica);
    QFETCH(double, alto);
    QFETCH(QPointF, punto);
    try {
        const GeometriaCeldas::Celda celda
            = GeometriaCeldas(alto, escala, clasica).sobre(punto.x(), punto.y());
        QTEST(QPoint(celda.fila, celda.columna), "celda");
    } catch (const Error &e) {
        QTEST(QPoint(e.code(), 0), "celda");
    }
}

void tst_GeometriaCeldas::rejilla_data()
{
    QTest::addColumn<double>("escala");
    QTest::addColumn<bool>("clasica");
    QTest::addColumn<int>("filas");
    QTest::addColumn<int>("largo");
    QTest::addColumn<QSizeF>("tamano");
    QTest::addColumn<QRectF>("ultima"); // the last cell of the top tier
    const auto fila = [](const char *nombre, double escala, bool clasica, int filas, int largo, QSizeF tamano,
                         QRectF ultima) {
        QTest::newRow(nombre) << escala << clasica << filas << largo << tamano << ultima;
    };
    // Wide enough for the first tier and the shift of the tiers above; high enough for tier 1 and the band
    // below.
    fila("one plain tier", 1, false, 1, 5, QSizeF(144, 41), QRectF(105, 0, 20, 20));
    fila("one classic tier", 1, true, 1, 5, QSizeF(144, 41), QRectF(105, 0, 20, 20));
    fila("three plain tiers", 1, false, 3, 4, QSizeF(123, 83), QRectF(84, 0, 20, 20));
    fila("three classic tiers", 1, true, 3, 4, QSizeF(143, 77), QRectF(104, 0, 20, 20));
    fila("classic at 2.0", 2, true, 3, 4, QSizeF(243, 137), QRectF(184, 0, 40, 40));
    fila("no positions", 1, false, 2, 0, QSizeF(39, 62), QRectF(0, 0, 20, 20));
    fila("twelve plain at 2.0", 2, false, 12, 9, QSizeF(408, 512), QRectF(349, 0, 40, 40));
    fila("twelve classic at 1.5", 1.5, true, 12, 9, QSizeF(483, 359), QRectF(434, 0, 30, 30));
}

void tst_GeometriaCeldas::rejilla()
{
    QFETCH(double, escala);
    QFETCH(bool, clasica);
    QFETCH(int, filas);
    QFETCH(int, largo);
    QFETCH(QSizeF, tamano);
    const GeometriaCeldas g(tamano.height(), escala, clasica);
    QCOMPARE(QSizeF(g.anchoControl(filas, largo), g.altoControl(filas)), tamano);
    QTEST(g.celda(filas, largo), "ultima");
    QCOMPARE(g.celda(1, 1).bottomLeft(), QPointF(21, tamano.height() - 21));
    // Whatever is drawn at (t, p) is hit as (t, p), at its centre and near its corners: its top row
    // belongs to the tier above, and classic rows lying over the tier below belong to that one.
    const double lado = escala * 20;
    for (int t = 1; t <= filas; ++t) {
        for (int p = 1; p <= largo; ++p) {
            const QRectF c = g.celda(t, p);
            for (const QPointF &punto :
                 { c.center(), c.topLeft() + QPointF(0, 1),
                   c.topLeft() + QPointF(lado - 1, std::min(lado - 1, g.pasoFila())) }) {
                const GeometriaCeldas::Celda hit = g.sobre(punto.x(), punto.y());
                QCOMPARE(QPoint(hit.fila, hit.columna), QPoint(t, p));
            }
            // A band takes a cell whole, counted from the gap column left of it, or not at all.
            const QRectF banda = c.translated(-1, 0);
            QVERIFY(g.enBanda(t, p, banda));
            for (const QMarginsF &menos : { QMarginsF(-1, 0, 0, 0), QMarginsF(0, -1, 0, 0),
                                            QMarginsF(0, 0, -1, 0), QMarginsF(0, 0, 0, -1) })
                QVERIFY(!g.enBanda(t, p, banda + menos));
        }
    }
}

QTEST_APPLESS_MAIN(tst_GeometriaCeldas)
#include "tst_geometriaceldas.moc"
