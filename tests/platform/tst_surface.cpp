// SPDX-License-Identifier: MIT
#include <tarvonix/platform/surface.h>

#include <QFontMetrics>
#include <QImage>
#include <QPainter>
#include <QTest>

#include <functional>

using namespace tarvonix;
using namespace Qt::StringLiterals;

namespace {

constexpr QRgb white = 0xFFFFFFFF, black = 0xFF000000, red = 0xFFFF0000, green = 0xFF00FF00;

// Paints on a white 100 x 100 image through a fresh surface.
QImage paint(Surface &surface, const std::function<void(Surface &)> &draw)
{
    QImage image(100, 100, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    Surface::Painting painting(surface, painter);
    draw(surface);
    return image;
}

} // namespace

class tst_Surface : public QObject
{
    Q_OBJECT

    QImage m_shapes;

private Q_SLOTS:
    void initTestCase()
    {
        Surface s;
        m_shapes = paint(s, [](Surface &surface) {
            surface.setForeColor(0x0000FF); // red in 0x00BBGGRR
            surface.line(2, 2, 10, 2);
            surface.line(20, 5, 20, 15, 0x00FF00);
            surface.line(50, 5, 51, 5); // one pixel long, in the fore colour again
            surface.setFillStyle(Surface::FillSolid);
            surface.setFillColor(0x00FF00);
            surface.box(15, 20, 5, 10); // corners given in any order
            surface.circle(70, 70, 10);
            surface.setFillStyle(Surface::FillUpwardDiagonal);
            surface.setFillColor(0);
            surface.box(0, 60, 31, 91);
            surface.setFillStyle(Surface::FillTransparent);
            surface.box(30, 30, 40, 40);
            surface.setForeColor(0);
            surface.setDrawStyle(Surface::DrawDot);
            surface.box(40, 80, 59, 99);
        });
    }

    void shapes_data()
    {
        QTest::addColumn<QPoint>("at");
        QTest::addColumn<QRgb>("colour");
        QTest::newRow("line stops before its end") << QPoint(9, 2) << red;
        QTest::newRow("line end point") << QPoint(10, 2) << white;
        QTest::newRow("vertical line in its colour") << QPoint(20, 14) << green;
        QTest::newRow("vertical line end point") << QPoint(20, 15) << white;
        QTest::newRow("one-pixel line") << QPoint(50, 5) << red;
        QTest::newRow("box corner") << QPoint(5, 10) << red;
        QTest::newRow("box far corner") << QPoint(15, 20) << red;
        QTest::newRow("right of the box") << QPoint(16, 20) << white;
        QTest::newRow("below the box") << QPoint(15, 21) << white;
        QTest::newRow("box fill") << QPoint(10, 15) << green;
        QTest::newRow("transparent box outline") << QPoint(30, 40) << red;
        QTest::newRow("transparent box inside") << QPoint(35, 35) << white;
        QTest::newRow("circle fill") << QPoint(70, 61) << green;
        QTest::newRow("circle rim") << QPoint(70, 60) << red;
        QTest::newRow("outside the circle") << QPoint(70, 59) << white;
        QTest::newRow("corner of the circle's square") << QPoint(62, 62) << white;
    }
    void shapes()
    {
        QFETCH(QPoint, at);
        QFETCH(QRgb, colour);
        QCOMPARE(m_shapes.pixel(at), colour);
    }

    void hatchAndDottedStyles()
    {
        // Inside the hatched box: black lines rising to the right over the white background.
        int hatched = 0, clear = 0;
        for (int y = 61; y < 91; ++y) {
            for (int x = 1; x < 31; ++x) {
                const QRgb pixel = m_shapes.pixel(x, y);
                hatched += pixel == black;
                clear += pixel == white;
                if (pixel == black && x + 1 < 31 && y > 61) // the line goes on up and to the right
                    QCOMPARE(m_shapes.pixel(x + 1, y - 1), black);
            }
        }
        QVERIFY(hatched > 30 && clear > hatched);
        int ink = 0; // a dotted outline alternates ink and gaps along its top edge
        for (int x = 40; x <= 59; ++x)
            ink += m_shapes.pixel(x, 80) == black;
        QVERIFY(ink > 3 && ink < 20);
    }

    void printMovesDownOneLine()
    {
        Surface s;
        QFont font(u"DejaVu Sans"_s);
        font.setPixelSize(12);
        s.setFont(font);
        const QFontMetrics metrics(font);
        QCOMPARE(s.textHeight(u"W"_s), double(metrics.height()));
        QCOMPARE(s.textWidth(u"WW"_s), double(metrics.horizontalAdvance(u"WW"_s)));
        const QImage image = paint(s, [](Surface &surface) {
            surface.setCurrentX(10), surface.setCurrentY(5);
            surface.print(u"█"_s);
        });
        QCOMPARE(QPointF(s.currentX(), s.currentY()), QPointF(0, 5.0 + metrics.height()));
        // The full block glyph covers its cell from the ascent line down: its ink starts at the
        // current position's row plus the gap above the glyph, and never left of x = 10.
        const QRect ink = metrics.boundingRect(u"█"_s).translated(10, 5 + metrics.ascent());
        QCOMPARE(image.pixel(ink.center()), black);
        for (int y = 0; y < 100; ++y)
            QCOMPARE(image.pixel(9, y), white);
    }

    void stateOutlivesThePaint()
    {
        Surface s;
        s.setForeColor(0x123456);
        paint(s, [](Surface &surface) { surface.setDrawStyle(Surface::DrawDot); });
        QVERIFY(s.foreColor() == 0x123456 && s.drawStyle() == Surface::DrawDot && !s.isPainting());
        s.box(0, 0, 10, 10), s.print(u"x"_s); // outside a paint: nothing happens, nothing breaks
        QCOMPARE(s.currentX(), 0.0);
    }
};

QTEST_MAIN(tst_Surface)
#include "tst_surface.moc"
