// SPDX-License-Identifier: MIT
#include <tarvonix/core/error.h>
#include <tarvonix/leg/geometriaceldas.h>

#include <QTest>

using namespace tarvonix;

class tst_GeometriaCeldas : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void rejilla_data();
    void rejilla();
    void tiersThatDoNotAdvance();
};

void tst_GeometriaCeldas::rejilla_data()
{
    QTest::addColumn<double>("escala");
    QTest::addColumn<bool>("clasica");
    QTest::addColumn<QSizeF>("tamano"); // of the control
    QTest::addColumn<QRectF>("ultima"); // the last cell of the top tier
    // Twelve tiers of nine, sized for tier 1, the shifted tiers and the bands; scale 1 is the view's tests'.
    QTest::newRow("plain at 2.0") << 2.0 << false << QSizeF(408, 512) << QRectF(349, 0, 40, 40);
    QTest::newRow("classic at 1.5") << 1.5 << true << QSizeF(483, 359) << QRectF(434, 0, 30, 30);
}

void tst_GeometriaCeldas::rejilla()
{
    QFETCH(double, escala);
    QFETCH(bool, clasica);
    const int filas = 12, largo = 9;
    QFETCH(QSizeF, tamano);
    const GeometriaCeldas g(tamano.height(), escala, clasica);
    QCOMPARE(QSizeF(g.anchoControl(filas, largo), g.altoControl(filas)), tamano);
    QTEST(g.celda(filas, largo), "ultima");
    // Whatever is drawn at (t, p) is hit as (t, p), at its centre and near its corners: its top row
    // belongs to the tier above, and classic rows lying over the tier below belong to that one.
    for (int t = 1; t <= filas; ++t) {
        for (int p = 1; p <= largo; ++p) {
            const QRectF c = g.celda(t, p);
            const QPointF abajo = c.bottomRight() - QPointF(1, qMax(1.0, c.height() - g.pasoFila()));
            for (const QPointF &punto : { c.center(), c.topLeft() + QPointF(0, 1), abajo }) {
                const auto hit = g.sobre(punto.x(), punto.y());
                QCOMPARE(QPoint(hit.fila, hit.columna), QPoint(t, p));
            }
            const auto encima = g.sobre(c.x(), c.y()); // the top edge
            QCOMPARE(QPoint(encima.fila, encima.columna), QPoint(t + 1, p - (clasica ? 1 : 0)));
            // A band takes a cell whole, counted from the gap column left of it, or not at all.
            const QRectF banda = c.translated(-1, 0);
            QVERIFY(g.enBanda(t, p, banda));
            for (const QMarginsF &menos : { QMarginsF(-1, 0, 0, 0), QMarginsF(0, -1, 0, 0),
                                            QMarginsF(0, 0, -1, 0), QMarginsF(0, 0, 0, -1) })
                QVERIFY(!g.enBanda(t, p, banda + menos));
        }
    }
}

void tst_GeometriaCeldas::tiersThatDoNotAdvance()
{
    // Classic cells of 2 pixels lie wholly over the tier below: no point can be told to a tier.
    QVERIFY_THROWS_EXCEPTION(Error, GeometriaCeldas(100, 0.1, true).sobre(30, 30));
}

QTEST_APPLESS_MAIN(tst_GeometriaCeldas)
#include "tst_geometriaceldas.moc"
