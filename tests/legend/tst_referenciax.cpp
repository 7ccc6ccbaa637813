#include <tarvonix/core/error.h>
#include <tarvonix/legend/referenciax.h>
#include <tarvonix/platform/colorconversion.h>

#include "errorcatcher.h"
#include "pixels.h"

#include <QTest>

using namespace tarvonix;

namespace {

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
    Q_INVOKABLE void Click(const std::shared_ptr<tarvonix::Referencia> &) { ++calls, throw Error(Error::InvalidArgument); }
    int calls = 0;
};

} // namespace

class tst_ReferenciaX : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void rowDrawsBoxAndText_data();
    void rowDrawsBoxAndText();
    void clicksWithoutAListAreIgnored();
};

void tst_ReferenciaX::rowDrawsBoxAndText_data()
{
    QTest::addColumn<QString>("texto");
    QTest::addColumn<int>("alto");
    QTest::addColumn<int>("puntos"); // 0: keep the row's font
    QTest::addColumn<qint32>("foreColor"); // 0: keep the row's default
    QTest::addColumn<qint32>("color"); // -1: a key that is then taken away
    QTest::newRow("plain") << QStringLiteral("Tinto") << 24 << 0 << 0 << qint32(0x00FF00);
    QTest::newRow("accents, bigger font") << QStringLiteral("Depósito Ñ") << 24 << 13 << qint32(0x0000C0)
                                          << qint32(0xFF0000);
    QTest::newRow("odd height") << QStringLiteral("Blanco") << 31 << 9 << qint32(0x800000) << qint32(0x00FFFF);
    QTest::newRow("empty text") << QString() << 24 << 0 << 0 << qint32(0x0000FF);
    QTest::newRow("key taken away") << QStringLiteral("Tinto") << 24 << 0 << 0 << qint32(-1);
}

void tst_ReferenciaX::rowDrawsBoxAndText()
{
    QFETCH(QString, texto);
    QFETCH(int, alto);
    QFETCH(int, puntos);
    QFETCH(qint32, foreColor);
    QFETCH(qint32, color);
    ErrorCatcher errors; // nothing to draw is no failure either
    ReferenciaX row;
    const QColor back(255, 255, 128);
    row.setBackColor(0x80FFFF);
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
    QCOMPARE(row.size(), QSize(metrics.horizontalAdvance(texto) + 31, alto));
    QCOMPARE(row.toolTip(), texto);
    if (color == -1) {
        // A none key is kept (the row goes blank) and reported to the caller.
        QVERIFY_THROWS_EXCEPTION(Error, row.setReferencia(nullptr));
        QVERIFY(!row.referencia());
        QCOMPARE(pixels::ink(pixels::grab(&row), row.rect(), back), 0);
        QVERIFY(errors.messages().isEmpty());
        return;
    }
    const QImage image = pixels::grab(&row);
    const QColor fore = toQColor(row.ForeColor(), row.palette());
    // The box spans x 7..16 and ten pixels from (alto - 10) / 2: outlined in the fore colour, filled with the key's.
    const int y0 = Surface::pixel((alto - 10) / 2.0);
    QCOMPARE(pixels::count(image, QRect(6, y0 - 1, 12, 12), fore), 36);
    QCOMPARE(pixels::count(image, QRect(8, y0 + 1, 8, 8), toQColor(color)), 64);
    // The text at x 24, centred on the height of an "X".
    const QPoint origin(24, Surface::pixel((alto - metrics.height()) / 2.0));
    QVERIFY(texto.isEmpty() ? pixels::ink(image, QRect(18, 0, image.width(), alto), back) == 0
                            : pixels::showsText(image, origin, texto, row.font(), fore, back));
    QCOMPARE(pixels::ink(image, QRect(18, 0, 6, alto), back), 0);
    QVERIFY(errors.messages().isEmpty());
}

void tst_ReferenciaX::clicksWithoutAListAreIgnored()
{
    ErrorCatcher errors;
    // Alone, held by a widget that has no Click member, and by one that fails on the click.
    QWidget plain;
    FailingHolder failing;
    for (QWidget *holder : { static_cast<QWidget *>(nullptr), &plain, static_cast<QWidget *>(&failing) }) {
        auto *row = new ReferenciaX(holder);
        const std::unique_ptr<ReferenciaX> alone(holder ? nullptr : row);
        row->resize(60, 24);
        row->setReferencia(key(QStringLiteral("Tinto"), 0x0000FF));
        QTest::mouseClick(row, Qt::LeftButton);
        QTest::mouseDClick(row, Qt::LeftButton);
        QTest::mouseClick(row, Qt::RightButton); // not a click of the row
    }
    QCOMPARE(failing.calls, 1);
    QVERIFY(errors.messages().isEmpty());
}

QTEST_MAIN(tst_ReferenciaX)
#include "tst_referenciax.moc"
