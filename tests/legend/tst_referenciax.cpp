#include <tarvonix/core/error.h>
#include <tarvonix/legend/referenciax.h>
#include <tarvonix/platform/colorconversion.h>

#include "errorcatcher.h"

#include <QFontMetrics>
#include <QTest>

using namespace tarvonix;

namespace {

// The bounding rectangle of the pixels of colour \a ink inside \a area.
QRect inkIn(const QImage &image, QRgb ink, const QRect &area)
{
    QRect found;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            if (image.pixel(x, y) == ink)
                found |= QRect(x, y, 1, 1);
        }
    }
    return found;
}

std::shared_ptr<Referencia> key(const QString &texto, qint32 color)
{
    auto r = std::make_shared<Referencia>();
    r->setClave(QStringLiteral("k"));
    r->setTexto(texto);
    r->setColor(color);
    return r;
}

// A widget that takes the row's clicks and fails on every one.
class FailingHolder : public QWidget
{
    Q_OBJECT
public:
    Q_INVOKABLE void Click(const std::shared_ptr<tarvonix::Referencia> &)
    {
        ++calls;
        throw Error(Error::InvalidArgument);
    }
    int calls = 0;
};

} // namespace

class tst_ReferenciaX : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void rowDrawsBoxAndText_data();
    void rowDrawsBoxAndText();
    void rowWithoutKeyDrawsNothing();
    void clicksWithoutAListAreIgnored();
};

void tst_ReferenciaX::rowDrawsBoxAndText_data()
{
    QTest::addColumn<QString>("texto");
    QTest::addColumn<int>("alto");
    QTest::addColumn<int>("puntos");
    QTest::addColumn<qint32>("foreColor"); // 0: keep the row's default
    QTest::addColumn<qint32>("color");

    QTest::newRow("plain") << QStringLiteral("Tinto") << 24 << 0 << 0 << qint32(0x00FF00);
    // Accented text within the row's own font: a glyph taken from a fallback font need not ink
    // where the font's metrics say, and the fallback depends on what fonts the machine has.
    QTest::newRow("accents, big font")
        << QStringLiteral("Depósito Ñ") << 24 << 16 << qint32(0x0000C0) << qint32(0xFF0000);
    QTest::newRow("odd height") << QStringLiteral("Blanco") << 31 << 9 << qint32(0x800000)
                                << qint32(0x00FFFF);
    QTest::newRow("empty text") << QString() << 24 << 0 << 0 << qint32(0x0000FF);
}

void tst_ReferenciaX::rowDrawsBoxAndText()
{
    QFETCH(QString, texto);
    QFETCH(int, alto);
    QFETCH(int, puntos);
    QFETCH(qint32, foreColor);
    QFETCH(qint32, color);

    ErrorCatcher errors;
    ReferenciaX row;
    row.setBackColor(0xFFFFFF);
    if (foreColor != 0)
        row.setForeColor(foreColor);
    if (puntos > 0) {
        QFont font = row.font();
        font.setPointSize(puntos);
        row.setFont(font);
    }
    row.resize(5, alto);
    row.setReferencia(key(texto, color));

    const QFontMetrics metrics(row.font());
    QCOMPARE(row.width(), metrics.horizontalAdvance(texto) + 31);
    QCOMPARE(row.height(), alto);
    QCOMPARE(row.toolTip(), texto);

    const QImage image = row.grab().toImage();
    const QRgb fore = toQColor(row.ForeColor(), row.palette()).rgb();
    const QRgb fill = toQColor(color).rgb();
    const QRgb back = qRgb(255, 255, 255);

    // The box spans x 7..16 and ten pixels from (alto - 10) / 2, outline in the fore colour.
    const int y0 = Surface::pixel((alto - 10) / 2.0);
    QCOMPARE(inkIn(image, fore, QRect(0, 0, 18, alto)), QRect(7, y0, 10, 10));
    QCOMPARE(inkIn(image, fill, QRect(0, 0, 18, alto)), QRect(8, y0 + 1, 8, 8));
    QCOMPARE(image.pixel(6, y0 + 4), back);
    QCOMPARE(image.pixel(17, y0 + 4), back);

    // The text's top-left is at x 24 and (alto - height of "X") / 2.
    const QRect ink = inkIn(image, fore, QRect(18, 0, image.width() - 18, alto));
    if (texto.isEmpty()) {
        QVERIFY(ink.isNull());
    } else {
        const int top = Surface::pixel((alto - metrics.height()) / 2.0);
        // A font taller than the row is cut at its edges.
        const QRect expected = metrics.tightBoundingRect(texto)
                                   .translated(24, top + metrics.ascent())
                                   .intersected(image.rect());
        // The metrics' tight rectangle may exceed the aliased ink by a pixel, never fall short of it.
        QVERIFY2(expected.contains(ink) && ink.left() - expected.left() <= 1
                     && expected.right() - ink.right() <= 1 && ink.top() - expected.top() <= 1
                     && expected.bottom() - ink.bottom() <= 1,
                 qPrintable(QStringLiteral("ink %1,%2 %3x%4, expected %5,%6 %7x%8")
                                .arg(ink.x())
                                .arg(ink.y())
                                .arg(ink.width())
                                .arg(ink.height())
                                .arg(expected.x())
                                .arg(expected.y())
                                .arg(expected.width())
                                .arg(expected.height())));
    }
    QVERIFY(errors.messages().isEmpty());
}

void tst_ReferenciaX::rowWithoutKeyDrawsNothing()
{
    ErrorCatcher errors;
    ReferenciaX row;
    row.resize(60, 24);
    row.setForeColor(0);
    const QImage fresh = row.grab().toImage();
    QVERIFY(inkIn(fresh, qRgb(0, 0, 0), fresh.rect()).isNull());

    // A none key is kept (the row goes blank) and reported to the caller.
    row.setReferencia(key(QStringLiteral("Tinto"), 0x0000FF));
    QVERIFY_THROWS_EXCEPTION(Error, row.setReferencia(nullptr));
    QVERIFY(!row.referencia());
    const QImage blank = row.grab().toImage();
    QVERIFY(inkIn(blank, qRgb(0, 0, 0), blank.rect()).isNull());
    QVERIFY(errors.messages().isEmpty()); // nothing to draw is no failure
}

void tst_ReferenciaX::clicksWithoutAListAreIgnored()
{
    ErrorCatcher errors;
    const auto r = key(QStringLiteral("Tinto"), 0x0000FF);

    // Alone, and held by a widget that has no Click member.
    ReferenciaX alone;
    alone.resize(60, 24);
    alone.setReferencia(r);
    QTest::mouseClick(&alone, Qt::LeftButton);
    QTest::mouseDClick(&alone, Qt::LeftButton);
    QWidget plain;
    auto *held = new ReferenciaX(&plain);
    held->resize(60, 24);
    held->setReferencia(r);
    QTest::mouseClick(held, Qt::LeftButton);

    // A holder that fails on the click: the failure goes nowhere.
    FailingHolder failing;
    auto *row = new ReferenciaX(&failing);
    row->resize(60, 24);
    row->setReferencia(r);
    QTest::mouseClick(row, Qt::LeftButton);
    QTest::mouseClick(row, Qt::RightButton); // not a click of the row
    QCOMPARE(failing.calls, 1);
    QVERIFY(errors.messages().isEmpty());
}

QTEST_MAIN(tst_ReferenciaX)
#include "tst_referenciax.moc"
