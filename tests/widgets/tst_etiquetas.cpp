#include <tarvonix/platform/colorconversion.h>
#include <tarvonix/platform/surface.h>
#include <tarvonix/widgets/etiquetas.h>

#include "dragdriver.h"
#include "errorcatcher.h"
#include "pixels.h"
#include "propertykeys.h"

#include <QMimeData>
#include <QSignalSpy>

using namespace tarvonix;

namespace {

const QColor plata(0xC0, 0xC0, 0xC0), sombra(134, 134, 134); // 0xC0 * 0.7, cut to its whole part

void mover(QWidget *widget, QPoint pos, Qt::MouseButtons buttons = Qt::LeftButton)
{
    QMouseEvent event(QEvent::MouseMove, pos, widget->mapToGlobal(pos), Qt::NoButton, buttons, {});
    QCoreApplication::sendEvent(widget, &event);
}

// A strip and what it should show: a label per slot, empty where it does not fit; the texto, if any, in
// every slot; pulsada is the slot held down while grabbing.
struct Tira
{
    bool down;
    QSize size;
    int primero, paso, separacion;
    QStringList rotulos = {};
    QString texto = {};
    qint32 foreColor = 0;
    int pulsada = 0;
    bool efecto = true;
};

// A parent that takes every drag, to see whether one falls through a strip.
class Receptor : public QWidget
{
public:
    Receptor() { setAcceptDrops(true); }
    int recibidos = 0;

protected:
    void dragEnterEvent(QDragEnterEvent *event) override { ++recibidos, event->acceptProposedAction(); }
};

} // namespace

Q_DECLARE_METATYPE(Tira)

class tst_Etiquetas : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void paints_data();
    void paints();
    void eventsCarryTheSlotIndex_data();
    void eventsCarryTheSlotIndex();
    void dragStartsBeyondFivePixels();
    void dropsOnlyWhenAccepted();
    void propertyKeysAndDefaults_data();
    void propertyKeysAndDefaults() { checkPropertyKey<etiquetas>(); }
    void failuresAreReported_data();
    void failuresAreReported();
};

void tst_Etiquetas::paints_data()
{
    QTest::addColumn<Tira>("tira");
    const int ocho = QFontMetrics(QApplication::font()).horizontalAdvance(QStringLiteral("8"));
    const QStringList uno { "1", "2", "3", "4" }, no { "", "" };
    QTest::newRow("down, counting down") << Tira { true, { 20, 84 }, 4, -1, 20, { "4", "3", "2", "1" } };
    QTest::newRow("across, red") << Tira { false, { 63, 20 }, 1, 1, 20, { "1", "2", "3" }, {}, 0x0000FF };
    QTest::newRow("across, as wide as the label") << Tira { false, { 100, 20 }, 8, 0, ocho, no };
    QTest::newRow("across, a pixel wider") << Tira { false, { 100, 20 }, 8, 0, ocho + 1, { "8", "8" } };
    const int dieciocho = QFontMetrics(QApplication::font()).horizontalAdvance(QStringLiteral("18"));
    QTest::newRow("down, as narrow as the label") << Tira { true, { dieciocho, 84 }, 18, 0, 20, no };
    QTest::newRow("across, fixed text") << Tira { false, { 100, 20 }, 1, 1, 20, { "A", "A", "A", "A" }, "A" };
    QTest::newRow("down, slot 2 held") << Tira { true, { 20, 84 }, 1, 1, 20, uno, {}, 0, 2 };
    QTest::newRow("across, slot 3 held") << Tira { false, { 100, 20 }, 1, 1, 20, uno, {}, 0, 3 };
    QTest::newRow("across, held without effect") << Tira { false, { 100, 20 }, 1, 1, 20, uno, {}, 0, 3, false };
}

void tst_Etiquetas::paints()
{
    QFETCH(Tira, tira);
    etiquetas strip;
    strip.setSentido(tira.down ? etiquetas::SentidoDown : etiquetas::SentidoAcross);
    strip.setPrimero(qint16(tira.primero));
    strip.setPaso(qint16(tira.paso));
    strip.setSeparacion(float(tira.separacion));
    strip.setForeColor(tira.foreColor);
    strip.setEfecto(tira.efecto);
    strip.setNumerar(tira.texto.isEmpty());
    strip.setTexto(tira.texto);
    strip.resize(tira.size);
    const int sep = tira.separacion, grosor = tira.down ? tira.size.width() : tira.size.height();
    // From (along the strip, across it) to pixels.
    const auto r = [&](int a, int b, int la = 1, int lb = 1) {
        return tira.down ? QRect(b, a, lb, la) : QRect(a, b, la, lb);
    };
    const auto at = [&](const QImage &image, int a, int b) { return pixels::at(image, r(a, b).x(), r(a, b).y()); };
    const int held = (sep + 1) * (tira.pulsada - 1) + 1; // where the held slot's inside begins
    QSignalSpy clicks(&strip, &etiquetas::Click);
    if (tira.pulsada)
        QTest::mousePress(&strip, Qt::LeftButton, {}, r(held + 5, 5).topLeft());
    QImage image = pixels::grab(&strip);

    QCOMPARE(at(image, 2, grosor - 1), sombra); // the outline
    QCOMPARE(at(image, 2, 1), QColor(Qt::white)); // the highlight along the strip
    const QFontMetrics metrics(strip.font());
    for (int i = 0; i < tira.rotulos.size(); ++i) {
        const int pos = i * (sep + 1);
        QCOMPARE(at(image, pos, grosor / 2), sombra);
        QCOMPARE(at(image, pos + 1, grosor / 2), QColor(tira.efecto && i + 1 == tira.pulsada ? Qt::black : Qt::white));
        const QString &rotulo = tira.rotulos.at(i);
        if (rotulo.isEmpty()) {
            QCOMPARE(pixels::ink(image, r(pos + 2, 2, sep - 1, grosor - 4), plata), 0);
            continue;
        }
        const QSize text(metrics.horizontalAdvance(rotulo), metrics.height());
        if (sep - text.width() < 4) { // the text's box overlaps the slot's edges: only its ink can be told
            QVERIFY(pixels::count(image, r(pos + 2, 2, sep - 1, grosor - 4), toQColor(tira.foreColor)) > 0);
            continue;
        }
        const QPoint origin = r(Surface::pixel(pos + (sep - (tira.down ? text.height() : text.width())) / 2.0),
                                Surface::pixel((grosor - (tira.down ? text.width() : text.height())) / 2.0))
                                  .topLeft();
        QVERIFY2(pixels::showsText(image, origin, rotulo, strip.font(), toQColor(tira.foreColor), plata),
                 qPrintable(rotulo));
    }
    if (!tira.pulsada)
        return;
    // Held, the slot sinks: dark along its near edges; released, it is raised again.
    const QRect edge = r(held, 1, 1, grosor - 2), top = r(held, 1, sep, 1);
    QCOMPARE(pixels::count(image, edge, Qt::black), tira.efecto ? grosor - 2 : 0);
    QCOMPARE(pixels::count(image, top, Qt::black), tira.efecto ? sep : 0);
    QTest::mouseRelease(&strip, Qt::LeftButton, {}, r(held + 5, 5).topLeft());
    QCOMPARE(strip.presionada(), 0);
    QCOMPARE(pixels::count(pixels::grab(&strip), edge, Qt::white), grosor - 2);
    QCOMPARE(clicks.count(), 1);
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
    QSignalSpy clicks(&strip, &etiquetas::Click), rightClicks(&strip, &etiquetas::RightClick);
    QTest::mousePress(&strip, derecho ? Qt::RightButton : Qt::LeftButton, {}, punto);
    QTest::mousePress(&strip, Qt::MiddleButton, {}, punto); // reports nothing
    QCOMPARE((derecho ? clicks : rightClicks).count(), 0);
    QCOMPARE((derecho ? rightClicks : clicks), QList<QVariantList> { { etiqueta } });
}

void tst_Etiquetas::dragStartsBeyondFivePixels()
{
    etiquetas strip;
    strip.setSentido(etiquetas::SentidoDown);
    strip.resize(20, 84);
    QSignalSpy drags(&strip, &etiquetas::OLEStartDrag);
    QTest::mousePress(&strip, Qt::LeftButton, {}, QPoint(10, 30));
    QCOMPARE(strip.presionada(), 2);
    mover(&strip, QPoint(15, 30)); // exactly 5 away
    QCOMPARE(drags.count(), 0);
    QCOMPARE(strip.presionada(), 0); // any move raises the slot again
    mover(&strip, QPoint(13, 35)); // (3, 5) away
    mover(&strip, QPoint(13, 50)); // one on every further move, with the slot now under it
    mover(&strip, QPoint(13, 60), Qt::RightButton); // not with another button
    QCOMPARE(drags, (QList<QVariantList> { { 13.0f, 35.0f, 2 }, { 13.0f, 50.0f, 3 } }));
}

void tst_Etiquetas::dropsOnlyWhenAccepted()
{
    Receptor parent;
    auto *strip = new etiquetas(&parent);
    strip->setSentido(etiquetas::SentidoDown);
    strip->setGeometry(0, 0, 20, 84);
    QMimeData data;
    data.setText(QStringLiteral("D1"));
    QVariantList drop;
    qint32 respuesta = -1;
    connect(strip, &etiquetas::OLEDragDrop, [&](const QMimeData *d, qint32 *effect, int button, int shift, float, float, int etiqueta) {
        drop = { d->text(), *effect, button, shift, etiqueta };
        *effect = respuesta < 0 ? *effect : respuesta;
    });
    // Refused: no event, no drop effect, and nothing falls through to the parent.
    QCOMPARE(DragDriver::moveData(strip, QPoint(5, 30), &data), Qt::IgnoreAction);
    QCOMPARE(DragDriver::dropData(strip, QPoint(5, 30), &data), Qt::IgnoreAction);
    QVERIFY(drop.isEmpty());
    // Accepted: copy over the strip, and the drop reports the slot, buttons and shift.
    strip->setOLEDropMode(1);
    QCOMPARE(DragDriver::moveData(strip, QPoint(5, 30), &data), Qt::CopyAction);
    QCOMPARE(DragDriver::dropData(strip, QPoint(5, 50), &data, Qt::ShiftModifier), Qt::MoveAction);
    QCOMPARE(drop, (QVariantList { "D1", qint32(Qt::MoveAction), 1, 1, 3 })); // Shift proposes a move
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
    propertyKeyRow("_extentx", QSize(100, 20), QSize(228, 20), "size");
    propertyKeyRow("_extenty", QSize(100, 20), QSize(100, 18), "size");
    propertyKeyRow("sentido", qint16(0), qint16(1), "Sentido");
    propertyKeyRow("separacion", 20.0f, 27.5f, "Separacion");
    propertyKeyRow("numerar", true, false, "Numerar");
    propertyKeyRow("paso", qint16(1), qint16(-1), "Paso");
    propertyKeyRow("primero", qint16(1), qint16(40), "Primero");
    propertyKeyRow("backcolor", qint32(0xC0C0C0), qint32(0x800000), "BackColor");
    propertyKeyRow("forecolor", qint32(0), qint32(0xFFFFFF), "ForeColor");
    propertyKeyRow("texto", QString(), QStringLiteral("Depósito 1"));
    propertyKeyRow("efecto", true, false, "Efecto");
    propertyKeyRow("font", QApplication::font(), bold);
    propertyKeyRow("oledropmode", qint16(0), qint16(1), "OLEDropMode");
}

void tst_Etiquetas::failuresAreReported_data()
{
    // Slots of no width: a paint would never reach the end of the strip, a slot number divides by zero.
    QTest::addColumn<QString>("gesto");
    QTest::addColumn<float>("separacion");
    QTest::addColumn<QString>("mensaje");
    const QString invalid = QStringLiteral("Invalid procedure call or argument"), zero = QStringLiteral("Division by zero");
    QTest::newRow("paint") << "Paint" << -1.0f << invalid;
    QTest::newRow("press") << "MouseDown" << -1.0f << zero;
    QTest::newRow("move") << "MouseMove" << -1.0f << zero;
    QTest::newRow("release") << "MouseUp" << -1.0f << zero;
    QTest::newRow("drop") << "OLEDragDrop" << -1.0f << zero;
    QTest::newRow("paint, thin slots") << "Paint" << -0.99999994f << invalid;
    QTest::newRow("slot past int") << "MouseDown" << -0.99999994f << "Overflow";
}

void tst_Etiquetas::failuresAreReported()
{
    QFETCH(QString, gesto);
    QFETCH(float, separacion);
    QFETCH(QString, mensaje);
    ErrorCatcher catcher;
    qRegisterMetaType<const QMimeData *>();
    etiquetas strip;
    strip.resize(250, 20);
    strip.setSeparacion(separacion);
    strip.setOLEDropMode(1);
    QSignalSpy clicks(&strip, &etiquetas::Click), drags(&strip, &etiquetas::OLEStartDrag), drops(&strip, &etiquetas::OLEDragDrop);
    const QPoint at(200, 5);
    QMimeData data;
    data.setText(QStringLiteral("D1"));
    if (gesto == QLatin1String("Paint"))
        QCOMPARE(pixels::at(pixels::grab(&strip), 125, 19), sombra); // the outline stands
    else if (gesto == QLatin1String("MouseDown"))
        QTest::mousePress(&strip, Qt::LeftButton, {}, at);
    else if (gesto == QLatin1String("MouseMove"))
        mover(&strip, at);
    else if (gesto == QLatin1String("MouseUp"))
        QTest::mouseRelease(&strip, Qt::LeftButton, {}, at);
    else
        DragDriver::dropData(&strip, at, &data);
    QCOMPARE(catcher.messages(), QStringList { "Etiquetas.UserControl_" + gesto + "->" + mensaje });
    QCOMPARE(clicks.count() + drags.count() + drops.count(), 0);
}

QTEST_MAIN(tst_Etiquetas)
#include "tst_etiquetas.moc"
