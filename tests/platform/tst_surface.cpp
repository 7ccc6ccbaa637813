#include <tarvonix/platform/surface.h>

#include <QFontMetrics>
#include <QImage>
#include <QPainter>
#include <QTest>

#include <functional>

using namespace tarvonix;

namespace {

constexpr QRgb white = 0xFFFFFFFF;
constexpr QRgb black = 0xFF000000;
constexpr QRgb red = 0xFFFF0000;
constexpr QRgb green = 0xFF00FF00;

// Paints on a white 60 x 60 image through a fresh surface.
QImage paint(Surface &surface, const std::function<void(Surface &)> &draw)
{
    QImage image(60, 60, QImage::Format_RGB32);
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

private Q_SLOTS:
    void linesStopBeforeTheirEndPoint();
    void boxesCoverBothCorners();
    void hatchAndDottedStyles();
    void circlesAreFilledAroundTheirCentre();
    void printMovesDownOneLine();
    void stateOutlivesThePaint();
};

void tst_Surface::linesStopBeforeTheirEndPoint()
{
    Surface s;
    const QImage image = paint(s, [](Surface &surface) {
        surface.setForeColor(0x0000FF); // red in 0x00BBGGRR
        surface.line(2, 2, 10, 2);
        surface.line(20, 5, 20, 15, 0x00FF00);
        surface.line(30, 30, 31, 30); // one pixel long, in the fore colour again
    });
    QCOMPARE(image.pixel(2, 2), red);
    QCOMPARE(image.pixel(9, 2), red);
    QCOMPARE(image.pixel(10, 2), white);
    QCOMPARE(image.pixel(20, 14), green);
    QCOMPARE(image.pixel(20, 15), white);
    QCOMPARE(image.pixel(30, 30), red);
    QCOMPARE(image.pixel(31, 30), white);
}

void tst_Surface::boxesCoverBothCorners()
{
    Surface s;
    const QImage image = paint(s, [](Surface &surface) {
        surface.setFillStyle(Surface::FillSolid);
        surface.setFillColor(0x00FF00);
        surface.setForeColor(0x0000FF);
        surface.box(15, 20, 5, 10); // corners given in any order
        surface.setFillStyle(Surface::FillTransparent);
        surface.box(30, 30, 40, 40);
    });
    QCOMPARE(image.pixel(5, 10), red);
    QCOMPARE(image.pixel(15, 20), red);
    QCOMPARE(image.pixel(16, 20), white);
    QCOMPARE(image.pixel(15, 21), white);
    QCOMPARE(image.pixel(10, 15), green);
    QCOMPARE(image.pixel(30, 40), red);
    QCOMPARE(image.pixel(35, 35), white); // transparent inside
}

void tst_Surface::hatchAndDottedStyles()
{
    Surface s;
    const QImage image = paint(s, [](Surface &surface) {
        surface.setFillStyle(Surface::FillUpwardDiagonal);
        surface.setFillColor(0);
        surface.setForeColor(0x0000FF);
        surface.box(0, 0, 31, 31);
        surface.setFillStyle(Surface::FillTransparent);
        surface.setForeColor(0);
        surface.setDrawStyle(Surface::DrawDot);
        surface.box(40, 40, 59, 59);
    });
    // Inside the hatched box: black lines rising to the right over the white background.
    int hatched = 0;
    int clear = 0;
    for (int y = 1; y < 31; ++y) {
        for (int x = 1; x < 31; ++x) {
            const QRgb pixel = image.pixel(x, y);
            hatched += pixel == black;
            clear += pixel == white;
            if (pixel == black && x + 1 < 31 && y > 1) // the line goes on up and to the right
                QCOMPARE(image.pixel(x + 1, y - 1), black);
        }
    }
    QVERIFY(hatched > 30);
    QVERIFY(clear > hatched);
    // A dotted outline alternates ink and gaps along its top edge.
    int ink = 0;
    for (int x = 40; x <= 59; ++x)
        ink += image.pixel(x, 40) == black;
    QVERIFY(ink > 3);
    QVERIFY(ink < 20);
}

void tst_Surface::circlesAreFilledAroundTheirCentre()
{
    Surface s;
    const QImage image = paint(s, [](Surface &surface) {
        surface.setFillStyle(Surface::FillSolid);
        surface.setFillColor(0x00FF00);
        surface.setForeColor(0x0000FF);
        surface.circle(30, 30, 10);
    });
    QCOMPARE(image.pixel(30, 30), green);
    QCOMPARE(image.pixel(30, 21), green);
    QCOMPARE(image.pixel(30, 19), white);
    QCOMPARE(image.pixel(22, 22), white); // the corner of the enclosing square stays clear
    QCOMPARE(image.pixel(30, 20), red);   // the rim is in the fore colour
}

void tst_Surface::printMovesDownOneLine()
{
    Surface s;
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(12);
    s.setFont(font);
    const QFontMetrics metrics(font);
    QCOMPARE(s.textHeight(QStringLiteral("W")), double(metrics.height()));
    QCOMPARE(s.textWidth(QStringLiteral("WW")), double(metrics.horizontalAdvance(QStringLiteral("WW"))));

    const QImage image = paint(s, [](Surface &surface) {
        surface.setForeColor(0);
        surface.setCurrentX(10);
        surface.setCurrentY(5);
        surface.print(QStringLiteral("█"));
    });
    QCOMPARE(s.currentX(), 0.0);
    QCOMPARE(s.currentY(), 5.0 + metrics.height());
    // The full block glyph covers its cell from the ascent line down: its ink starts at the
    // current position's row plus the gap above the glyph, and never left of x = 10.
    const QRect ink = metrics.boundingRect(QStringLiteral("█")).translated(10, 5 + metrics.ascent());
    QCOMPARE(image.pixel(ink.center()), black);
    for (int y = 0; y < 60; ++y)
        QCOMPARE(image.pixel(9, y), white);
}

void tst_Surface::stateOutlivesThePaint()
{
    Surface s;
    s.setForeColor(0x123456);
    s.setFillStyle(Surface::FillSolid);
    paint(s, [](Surface &surface) { surface.setDrawStyle(Surface::DrawDot); });
    QCOMPARE(s.foreColor(), 0x123456);
    QCOMPARE(s.drawStyle(), int(Surface::DrawDot));
    QVERIFY(!s.isPainting());
    s.box(0, 0, 10, 10); // outside a paint: nothing happens, nothing breaks
    s.print(QStringLiteral("x"));
    QCOMPARE(s.currentX(), 0.0);
}

QTEST_MAIN(tst_Surface)
#include "tst_surface.moc"
