#include <tarvonix/widgets/etiquetas.h>

#include "dragdriver.h"
#include "errorcatcher.h"
#include "pixels.h"
#include "propertykeys.h"

#include <QMimeData>
#include <QSignalSpy>
#include <QTest>

#include <cmath>

using namespace tarvonix;

namespace {

const QColor plata(0xC0, 0xC0, 0xC0);
const QColor sombra(134, 134, 134); // 0xC0 * 0.7, cut to its whole part
const QColor blanco(Qt::white);
const QColor negro(Qt::black);

int px(double v)
{
    return int(std::floor(v + 0.5));
}

void mover(QWidget *widget, QPoint pos, Qt::MouseButtons buttons = Qt::LeftButton)
{
    QMouseEvent event(QEvent::MouseMove, pos, widget->mapToGlobal(pos), Qt::NoButton, buttons,
                      Qt::NoModifier);
    QCoreApplication::sendEvent(widget, &event);
}

// A parent that takes every drop, to see whether any falls through a strip.
class Receptor : public QWidget
{
public:
    Receptor() { setAcceptDrops(true); }
    int recibidos = 0;

protected:
    void dragEnterEvent(QDragEnterEvent *event) override { ++recibidos, event->acceptProposedAction(); }
    void dragMoveEvent(QDragMoveEvent *event) override { ++recibidos, event->acceptProposedAction(); }
    void dropEvent(QDropEvent *event) override { ++recibidos, event->acceptProposedAction(); }
};

} // namespace

class tst_Etiquetas : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void paintsSlotsDown();
    void paintsSlotsAcross();
    void labelsThatDoNotFitAreLeftOut();
    void pressedSlotSinks();
    void eventsCarryTheSlotIndex_data();
    void eventsCarryTheSlotIndex();
    void dragStartsBeyondFivePixels();
    void dropsOnlyWhenAccepted();
    void propertyKeysAndDefaults_data();
    void propertyKeysAndDefaults();
    void badSpacingIsReportedNotHung();
};

void tst_Etiquetas::paintsSlotsDown()
{
    // Tiers counted down: slots show 4, 3, 2, 1 from the top, separators at 0, 21, 42, 63.
    etiquetas strip;
    strip.setSentido(1);
    strip.setPrimero(4);
    strip.setPaso(-1);
    strip.resize(20, 84);
    const QImage image = pixels::grab(&strip);

    QCOMPARE(pixels::at(image, 1, 10), blanco); // left highlight
    QCOMPARE(pixels::at(image, 19, 10), sombra); // outline
    QCOMPARE(pixels::at(image, 10, 83), sombra);
    const QFontMetrics metrics(strip.font());
    for (int i = 1; i <= 4; ++i) {
        const int pos = (i - 1) * 21;
        QCOMPARE(pixels::at(image, 10, pos), sombra);
        QCOMPARE(pixels::at(image, 10, pos + 1), blanco);
        const QString label = QString::number(5 - i);
        const QPoint origin(px((20 - metrics.horizontalAdvance(label)) / 2.0),
                            px(pos + (20 - metrics.height()) / 2.0));
        QVERIFY2(pixels::showsText(image, origin, label, strip.font(), negro, plata), qPrintable(label));
    }
}

void tst_Etiquetas::paintsSlotsAcross()
{
    etiquetas strip;
    strip.resize(63, 20);
    strip.setForeColor(0x0000FF); // red
    const QImage image = pixels::grab(&strip);
    QCOMPARE(pixels::at(image, 10, 1), blanco); // top highlight
    const QFontMetrics metrics(strip.font());
    const int row = px((20 - metrics.height()) / 2.0);
    for (int i = 1; i <= 3; ++i) {
        const int pos = (i - 1) * 21;
        QCOMPARE(pixels::at(image, pos, 10), sombra);
        QCOMPARE(pixels::at(image, pos + 1, 10), blanco);
        const QString label = QString::number(i);
        const QPoint origin(px(pos + (20 - metrics.horizontalAdvance(label)) / 2.0), row);
        QVERIFY2(pixels::showsText(image, origin, label, strip.font(), Qt::red, plata), qPrintable(label));
    }
}

void tst_Etiquetas::labelsThatDoNotFitAreLeftOut()
{
    etiquetas strip;
    strip.resize(100, 20);
    strip.setPrimero(8);
    strip.setPaso(0);
    const int ancho = QFontMetrics(strip.font()).horizontalAdvance(QStringLiteral("8"));
    const auto interior = [&](int slot) {
        return QRect((slot - 1) * (ancho + 1) + 2, 2, ancho - 1, 16);
    };

    // As wide as the slot: not printed (the test is strictly less).
    strip.setSeparacion(float(ancho));
    QImage image = pixels::grab(&strip);
    QCOMPARE(pixels::ink(image, interior(1), plata), 0);
    QCOMPARE(pixels::ink(image, interior(2), plata), 0);

    // One pixel more and it shows.
    strip.setSeparacion(float(ancho + 1));
    image = pixels::grab(&strip);
    QVERIFY(pixels::count(image, QRect(2, 2, ancho, 16), negro) > 0);

    // A fixed text in every slot.
    strip.setSeparacion(20);
    strip.setNumerar(false);
    strip.setTexto(QStringLiteral("A"));
    image = pixels::grab(&strip);
    const QFontMetrics metrics(strip.font());
    for (int i = 1; i <= 4; ++i) {
        const QPoint origin(px((i - 1) * 21 + (20 - metrics.horizontalAdvance(QStringLiteral("A"))) / 2.0),
                            px((20 - metrics.height()) / 2.0));
        QVERIFY(pixels::showsText(image, origin, QStringLiteral("A"), strip.font(), negro, plata));
    }
}

void tst_Etiquetas::pressedSlotSinks()
{
    etiquetas strip;
    strip.setSentido(1);
    strip.resize(20, 84);
    QSignalSpy clicks(&strip, &etiquetas::Click);

    // Slot 2 starts at 21; its sunken edges are at x 1 and y 22, from 22 to 22 + 20.
    QTest::mousePress(&strip, Qt::LeftButton, Qt::NoModifier, QPoint(10, 30));
    QImage image = pixels::grab(&strip);
    QCOMPARE(pixels::count(image, QRect(1, 22, 1, 20), negro), 20);
    QCOMPARE(pixels::count(image, QRect(1, 22, 18, 1), negro), 18);
    QCOMPARE(pixels::at(image, 1, 42), sombra); // the next separator is left alone
    QTest::mouseRelease(&strip, Qt::LeftButton, Qt::NoModifier, QPoint(10, 30));
    image = pixels::grab(&strip);
    QCOMPARE(pixels::count(image, QRect(1, 22, 18, 1), blanco), 18);
    QCOMPARE(strip.presionada(), 0);

    // Without the effect nothing sinks, but the events come as usual.
    strip.setEfecto(false);
    QTest::mousePress(&strip, Qt::LeftButton, Qt::NoModifier, QPoint(10, 30));
    image = pixels::grab(&strip);
    QCOMPARE(pixels::count(image, QRect(1, 22, 18, 1), negro), 0);
    QTest::mouseRelease(&strip, Qt::LeftButton, Qt::NoModifier, QPoint(10, 30));
    QCOMPARE(clicks.count(), 2);
}

void tst_Etiquetas::eventsCarryTheSlotIndex_data()
{
    QTest::addColumn<int>("sentido");
    QTest::addColumn<float>("separacion");
    QTest::addColumn<QPoint>("punto");
    QTest::addColumn<bool>("derecho");
    QTest::addColumn<int>("etiqueta");
    QTest::newRow("down, y 21 is slot 2") << 1 << 20.0f << QPoint(5, 21) << false << 2;
    QTest::newRow("down, y 20 is slot 1") << 1 << 20.0f << QPoint(5, 20) << false << 1;
    QTest::newRow("down, right button") << 1 << 20.0f << QPoint(5, 70) << true << 4;
    QTest::newRow("across, x 42 is slot 3") << 0 << 20.0f << QPoint(42, 5) << false << 3;
    QTest::newRow("across, one wide slot") << 0 << 228.0f << QPoint(200, 5) << true << 1;
}

void tst_Etiquetas::eventsCarryTheSlotIndex()
{
    // The index, not the number shown: a strip counting 10, 8, 6 still reports 1, 2, 3.
    QFETCH(int, sentido);
    QFETCH(float, separacion);
    QFETCH(QPoint, punto);
    QFETCH(bool, derecho);
    QFETCH(int, etiqueta);
    etiquetas strip;
    strip.setSentido(qint16(sentido));
    strip.setSeparacion(separacion);
    strip.setPrimero(10);
    strip.setPaso(-2);
    strip.resize(250, 90);
    QSignalSpy clicks(&strip, &etiquetas::Click);
    QSignalSpy rightClicks(&strip, &etiquetas::RightClick);
    QTest::mousePress(&strip, derecho ? Qt::RightButton : Qt::LeftButton, Qt::NoModifier, punto);
    QSignalSpy &spy = derecho ? rightClicks : clicks;
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0).at(0).toInt(), etiqueta);
    QCOMPARE((derecho ? clicks : rightClicks).count(), 0);
    // A middle button reports nothing.
    QTest::mousePress(&strip, Qt::MiddleButton, Qt::NoModifier, punto);
    QCOMPARE(clicks.count() + rightClicks.count(), 1);
}

void tst_Etiquetas::dragStartsBeyondFivePixels()
{
    etiquetas strip;
    strip.setSentido(1);
    strip.resize(20, 84);
    QSignalSpy drags(&strip, &etiquetas::OLEStartDrag);
    QTest::mousePress(&strip, Qt::LeftButton, Qt::NoModifier, QPoint(10, 30));
    QCOMPARE(strip.presionada(), 2);
    mover(&strip, QPoint(15, 30)); // exactly 5 away
    QCOMPARE(drags.count(), 0);
    QCOMPARE(strip.presionada(), 0); // any move raises the slot again
    mover(&strip, QPoint(13, 35)); // (3, 5) away
    QCOMPARE(drags.count(), 1);
    QCOMPARE(drags.at(0).at(0).toFloat(), 13.0f);
    QCOMPARE(drags.at(0).at(1).toFloat(), 35.0f);
    QCOMPARE(drags.at(0).at(2).toInt(), 2);
    mover(&strip, QPoint(13, 50)); // raised again on every further move, with the slot now under it
    QCOMPARE(drags.count(), 2);
    QCOMPARE(drags.at(1).at(2).toInt(), 3);
    mover(&strip, QPoint(13, 60), Qt::RightButton); // not with another button
    QCOMPARE(drags.count(), 2);
}

void tst_Etiquetas::dropsOnlyWhenAccepted()
{
    Receptor parent;
    etiquetas *strip = new etiquetas(&parent);
    strip->setSentido(1);
    strip->setGeometry(0, 0, 20, 84);
    QMimeData data;
    data.setText(QStringLiteral("D1"));
    struct Drop
    {
        QString text;
        qint32 effect;
        int button, shift, etiqueta;
    };
    std::vector<Drop> drops;
    qint32 respuesta = -1;
    connect(strip, &etiquetas::OLEDragDrop,
            [&](const QMimeData *d, qint32 *effect, int button, int shift, float, float, int etiqueta) {
                drops.push_back({ d->text(), *effect, button, shift, etiqueta });
                if (respuesta >= 0)
                    *effect = respuesta;
            });

    // Refused: no event, no drop effect, and nothing falls through to the parent.
    QCOMPARE(DragDriver::moveData(strip, QPoint(5, 30), &data), Qt::IgnoreAction);
    QCOMPARE(DragDriver::dropData(strip, QPoint(5, 30), &data), Qt::IgnoreAction);
    QVERIFY(drops.empty());
    QCOMPARE(parent.recibidos, 0);

    // Accepted: copy over the strip, and the drop reports the slot, buttons and shift.
    strip->setOLEDropMode(1);
    QCOMPARE(DragDriver::moveData(strip, QPoint(5, 30), &data), Qt::CopyAction);
    QCOMPARE(DragDriver::dropData(strip, QPoint(5, 50), &data, Qt::ShiftModifier), Qt::MoveAction);
    QCOMPARE(drops.size(), size_t(1));
    QCOMPARE(drops[0].text, QStringLiteral("D1"));
    QCOMPARE(drops[0].effect, qint32(Qt::MoveAction)); // what the drag proposes with Shift held
    QCOMPARE(drops[0].button, 1);
    QCOMPARE(drops[0].shift, 1);
    QCOMPARE(drops[0].etiqueta, 3);

    // The receiver's effect decides the outcome.
    respuesta = 0;
    QCOMPARE(DragDriver::dropData(strip, QPoint(5, 10), &data), Qt::IgnoreAction);
    respuesta = 2;
    QCOMPARE(DragDriver::dropData(strip, QPoint(5, 10), &data), Qt::MoveAction);
    QCOMPARE(parent.recibidos, 0);
}

void tst_Etiquetas::propertyKeysAndDefaults_data()
{
    addPropertyKeyColumns(); // saved forms hold the keys in lower case
    QFont bold = QApplication::font();
    bold.setBold(true);
    const auto row = [](const char *key, const char *property, QVariant defaultValue, QVariant value) {
        QTest::newRow(key) << QString::fromLatin1(key) << QByteArray(property) << defaultValue << value;
    };
    // The extent, through the widget's size.
    row("_extentx", "size", QSize(100, 20), QSize(228, 20));
    row("_extenty", "size", QSize(100, 20), QSize(100, 18));
    row("sentido", "Sentido", qint16(0), qint16(1));
    row("separacion", "Separacion", 20.0f, 27.5f);
    row("numerar", "Numerar", true, false);
    row("paso", "Paso", qint16(1), qint16(-1));
    row("primero", "Primero", qint16(1), qint16(40));
    row("backcolor", "BackColor", qint32(0xC0C0C0), qint32(0x800000));
    row("forecolor", "ForeColor", qint32(0), qint32(0xFFFFFF));
    row("texto", "texto", QString(), QStringLiteral("Depósito 1"));
    row("efecto", "Efecto", true, false);
    row("font", "font", QApplication::font(), bold);
    row("oledropmode", "OLEDropMode", qint16(0), qint16(1));
}

void tst_Etiquetas::propertyKeysAndDefaults()
{
    checkPropertyKey<etiquetas>();
}

void tst_Etiquetas::badSpacingIsReportedNotHung()
{
    // Slots that never advance would never reach the end of the strip.
    ErrorCatcher catcher;
    etiquetas strip;
    strip.resize(60, 20);
    strip.setSeparacion(-1);
    const QImage image = pixels::grab(&strip);
    QCOMPARE(
        catcher.messages(),
        QStringList { QStringLiteral("Etiquetas.UserControl_Paint->Invalid procedure call or argument") });
    QCOMPARE(pixels::at(image, 30, 19), sombra); // partly drawn: the outline stands

    QSignalSpy clicks(&strip, &etiquetas::Click);
    QTest::mousePress(&strip, Qt::LeftButton, Qt::NoModifier, QPoint(5, 5));
    QCOMPARE(clicks.count(), 0);
    QCOMPARE(catcher.messages().last(), QStringLiteral("Etiquetas.UserControl_MouseDown->Division by zero"));
}

QTEST_MAIN(tst_Etiquetas)
#include "tst_etiquetas.moc"
