// SPDX-License-Identifier: MIT
#include <tarvonix/platform/colorconversion.h>
#include <tarvonix/platform/surface.h>
#include <tarvonix/widgets/dummy.h>
#include <tarvonix/widgets/etiquetas.h>

#include "dragdriver.h"
#include "errorcatcher.h"
#include "pixels.h"
#include "propertykeys.h"

#include <QMimeData>

using namespace tarvonix;
using namespace Qt::StringLiterals;

namespace {

const QColor plata(0xC0, 0xC0, 0xC0), sombra(134, 134, 134); // 0xC0 * 0.7, cut to its whole part

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
struct Receptor : QWidget
{
    Receptor() { setAcceptDrops(true); }
    void dragEnterEvent(QDragEnterEvent *event) override { ++recibidos, event->acceptProposedAction(); }
    int recibidos = 0;
};

} // namespace

Q_DECLARE_METATYPE(Tira)

// The strip of numbered slots (etiquetas) and the plain box (Dummy).
class tst_Widgets : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void paints_data()
    {
        QTest::addColumn<Tira>("tira");
        const QFontMetrics metrics(QApplication::font());
        const int ocho = metrics.horizontalAdvance(u"8"_s), dieciocho = metrics.horizontalAdvance(u"18"_s);
        const QStringList no { "", "" };
        QTest::newRow("down, counting down, 2 held") << Tira { true, { 20, 84 }, 4, -1, 20, { "4", "3", "2", "1" }, {}, 0, 2 };
        QTest::newRow("across, red, 3 held") << Tira { false, { 63, 20 }, 1, 1, 20, { "1", "2", "3" }, {}, 0x0000FF, 3 };
        QTest::newRow("across, as wide as the label") << Tira { false, { 100, 20 }, 8, 0, ocho, no };
        QTest::newRow("down, as narrow as the label") << Tira { true, { dieciocho, 84 }, 18, 0, 20, no };
        QTest::newRow("across, fixed text") << Tira { false, { 100, 20 }, 1, 1, 20, { "A", "A", "A", "A" }, "A" };
        QTest::newRow("across, held without effect") << Tira { false, { 100, 20 }, 1, 1, 20, { "1", "2", "3", "4" }, {}, 0, 3, false };
    }
    void paints()
    {
        QFETCH(Tira, tira);
        etiquetas strip;
        strip.setSentido(tira.down ? etiquetas::SentidoDown : etiquetas::SentidoAcross), strip.resize(tira.size);
        strip.setPrimero(qint16(tira.primero)), strip.setPaso(qint16(tira.paso)), strip.setSeparacion(float(tira.separacion));
        strip.setForeColor(tira.foreColor), strip.setEfecto(tira.efecto);
        strip.setNumerar(tira.texto.isEmpty()), strip.setTexto(tira.texto);
        const int sep = tira.separacion, grosor = tira.down ? tira.size.width() : tira.size.height();
        // From (along the strip, across it) to pixels.
        const auto r = [&](int a, int b, int la = 1, int lb = 1) { return tira.down ? QRect(b, a, lb, la) : QRect(a, b, la, lb); };
        const auto at = [&](const QImage &image, int a, int b) { return pixels::at(image, r(a, b).x(), r(a, b).y()); };
        const int held = (sep + 1) * (tira.pulsada - 1) + 1; // where the held slot's inside begins
        if (tira.pulsada)
            QTest::mousePress(&strip, Qt::LeftButton, {}, r(held + 5, 5).topLeft());
        QImage image = pixels::grab(&strip);
        QCOMPARE(at(image, 2, grosor - 1), sombra); // the outline
        QCOMPARE(at(image, 2, 1), QColor(Qt::white)); // the highlight along the strip
        const QFontMetrics metrics(strip.font());
        for (int i = 0; i < tira.rotulos.size(); ++i) {
            const int pos = i * (sep + 1);
            const QString &rotulo = tira.rotulos.at(i);
            const QSize text(metrics.horizontalAdvance(rotulo), metrics.height());
            QCOMPARE(at(image, pos, grosor / 2), sombra);
            QCOMPARE(at(image, pos + 1, grosor / 2), QColor(tira.efecto && i + 1 == tira.pulsada ? Qt::black : Qt::white));
            const QPoint origin = r(Surface::pixel(pos + (sep - (tira.down ? text.height() : text.width())) / 2.0),
                                    Surface::pixel((grosor - (tira.down ? text.width() : text.height())) / 2.0))
                                      .topLeft();
            QVERIFY2(rotulo.isEmpty() ? pixels::ink(image, r(pos + 2, 2, sep - 1, grosor - 4), plata) == 0
                                      : pixels::showsText(image, origin, rotulo, strip.font(), toQColor(tira.foreColor), plata),
                     qPrintable(QString::number(i)));
        }
        if (!tira.pulsada)
            return;
        // Held, the slot sinks: dark along its near edges; released, it is raised again.
        const QRect edge = r(held, 1, 1, grosor - 2), top = r(held, 1, sep, 1);
        QCOMPARE(pixels::count(image, edge, Qt::black), tira.efecto ? grosor - 2 : 0);
        QCOMPARE(pixels::count(image, top, Qt::black), tira.efecto ? sep : 0);
        QTest::mouseRelease(&strip, Qt::LeftButton, {}, r(held + 5, 5).topLeft());
        QCOMPARE(pixels::count(pixels::grab(&strip), edge, Qt::white), grosor - 2);
    }

    void dropsOnlyWhenAccepted()
    {
        Receptor parent;
        auto *strip = new etiquetas(&parent);
        strip->setSentido(etiquetas::SentidoDown), strip->setGeometry(0, 0, 20, 84);
        QMimeData data;
        data.setText(u"D1"_s);
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
        // Accepted: copy over the strip, and the drop reports the slot, buttons and shift (which proposes a move).
        strip->setOLEDropMode(1);
        QCOMPARE(DragDriver::moveData(strip, QPoint(5, 30), &data), Qt::CopyAction);
        QCOMPARE(DragDriver::dropData(strip, QPoint(5, 50), &data, Qt::ShiftModifier), Qt::MoveAction);
        QCOMPARE(drop, (QVariantList { "D1", qint32(Qt::MoveAction), 1, 1, 3 }));
        // The receiver's effect decides the outcome.
        respuesta = 0;
        QCOMPARE(DragDriver::dropData(strip, QPoint(5, 10), &data), Qt::IgnoreAction);
        QCOMPARE(parent.recibidos, 0);
    }

    void propertyKeysAndDefaults_data()
    {
        propertyKeyRows({ // saved forms hold the keys in lower case
                          { "_extentx", QSize(100, 20), QSize(228, 20), "size" },
                          { "_extenty", QSize(100, 20), QSize(100, 18), "size" },
                          { "sentido", qint16(0), qint16(1), "Sentido" },
                          { "separacion", 20.0f, 27.5f, "Separacion" },
                          { "numerar", true, false, "Numerar" },
                          { "paso", qint16(1), qint16(-1), "Paso" },
                          { "primero", qint16(1), qint16(40), "Primero" },
                          { "backcolor", qint32(0xC0C0C0), qint32(0x800000), "BackColor" },
                          { "forecolor", qint32(0), qint32(0xFFFFFF), "ForeColor" },
                          { "texto", QString(), u"Depósito 1"_s },
                          { "efecto", true, false, "Efecto" },
                          { "font", QApplication::font(), QFont(u"DejaVu Serif"_s, 14) },
                          { "oledropmode", qint16(0), qint16(1), "OLEDropMode" } });
    }
    void propertyKeysAndDefaults() { checkPropertyKey<etiquetas>(); }

    void gesturesReportTheSlotOrFail_data()
    {
        // Slots of no width: a slot number divides by zero, a paint would never reach the end of the strip;
        // slots thinner than a pixel give slot numbers past int.
        QTest::addColumn<QString>("gesto");
        QTest::addColumn<Qt::MouseButton>("boton");
        QTest::addColumn<int>("sentido");
        QTest::addColumn<float>("separacion");
        QTest::addColumn<QPoint>("punto");
        QTest::addColumn<QStringList>("informe");
        const float fina = -0.99999994f;
        const auto fallo = [](const char *gesto, const char *mensaje = "Division by zero") { return u"Etiquetas.UserControl_%1->%2"_s.arg(gesto, mensaje); };
        const auto row = [](const char *name, const char *gesto, Qt::MouseButton boton, int sentido, float sep, QPoint punto) {
            return std::ref(QTest::newRow(name) << QString::fromLatin1(gesto) << boton << sentido << sep << punto);
        };
        row("down, y 21 is slot 2", "MouseDown", Qt::LeftButton, 1, 20, { 5, 21 }) << QStringList { "Click(2)" };
        row("down, y 20 is slot 1", "MouseDown", Qt::LeftButton, 1, 20, { 5, 20 }) << QStringList { "Click(1)" };
        row("across, x 42 is slot 3", "MouseDown", Qt::LeftButton, 0, 20, { 42, 5 }) << QStringList { "Click(3)" };
        row("one wide slot, right", "MouseDown", Qt::RightButton, 0, 228, { 200, 5 }) << QStringList { "RightClick(1)" };
        row("middle button", "MouseDown", Qt::MiddleButton, 0, 20, { 42, 5 }) << QStringList();
        // A move after a press at (10, 30) down the strip, then 15 further on: a drag once more than 5 away,
        // on every move, with the slot under the pointer; not with another button.
        row("drag, exactly 5 away", "MouseMove", Qt::LeftButton, 1, 20, { 15, 30 }) << QStringList { "Click(2)", "Drag(15,45,3)" };
        row("drag, (3, 5) away", "MouseMove", Qt::LeftButton, 1, 20, { 13, 35 }) << QStringList { "Click(2)", "Drag(13,35,2)", "Drag(13,50,3)" };
        row("drag, right button", "MouseMove", Qt::RightButton, 1, 20, { 13, 35 }) << QStringList { "Click(2)" };
        row("paint", "Paint", Qt::NoButton, 0, fina, {}) << QStringList { fallo("Paint", "Invalid procedure call or argument") };
        row("press", "MouseDown", Qt::LeftButton, 0, -1, { 200, 5 }) << QStringList { fallo("MouseDown") };
        row("move", "MouseMove", Qt::LeftButton, 0, -1, { 200, 5 }) << QStringList { fallo("MouseDown"), fallo("MouseMove"), fallo("MouseMove") };
        row("release", "MouseUp", Qt::LeftButton, 0, -1, { 200, 5 }) << QStringList { fallo("MouseUp") };
        row("drop", "OLEDragDrop", Qt::LeftButton, 0, -1, { 200, 5 }) << QStringList { fallo("OLEDragDrop") };
        row("slot past int", "MouseDown", Qt::LeftButton, 0, fina, { 200, 5 }) << QStringList { fallo("MouseDown", "Overflow") };
    }
    void gesturesReportTheSlotOrFail()
    {
        QFETCH(QString, gesto);
        QFETCH(Qt::MouseButton, boton);
        QFETCH(int, sentido);
        QFETCH(float, separacion);
        QFETCH(QPoint, punto);
        QFETCH(QStringList, informe);
        ErrorCatcher catcher;
        etiquetas strip;
        strip.resize(250, 90);
        strip.setSentido(qint16(sentido)), strip.setSeparacion(separacion), strip.setOLEDropMode(1);
        strip.setPrimero(10), strip.setPaso(-2); // the index, not the number shown: counting 10, 8, 6 reports 1, 2, 3
        QStringList log;
        connect(&strip, &etiquetas::Click, [&](int n) { log << u"Click(%1)"_s.arg(n); });
        connect(&strip, &etiquetas::RightClick, [&](int n) { log << u"RightClick(%1)"_s.arg(n); });
        connect(&strip, &etiquetas::OLEStartDrag, [&](float x, float y, int n) { log << u"Drag(%1,%2,%3)"_s.arg(x).arg(y).arg(n); });
        const auto mover = [&](QPoint pos) {
            QMouseEvent event(QEvent::MouseMove, pos, strip.mapToGlobal(pos), Qt::NoButton, boton, {});
            QCoreApplication::sendEvent(&strip, &event);
        };
        QMimeData data;
        if (gesto == "Paint"_L1) {
            QCOMPARE(pixels::at(pixels::grab(&strip), 125, 89), sombra); // the outline stands
        } else if (gesto == "MouseDown"_L1) {
            QTest::mousePress(&strip, boton, {}, punto);
        } else if (gesto == "MouseMove"_L1) {
            QTest::mousePress(&strip, Qt::LeftButton, {}, QPoint(10, 30));
            mover(punto), mover(punto + QPoint(0, 15));
            QCOMPARE(strip.presionada(), 0); // any move raises the slot again
        } else if (gesto == "MouseUp"_L1) {
            QTest::mouseRelease(&strip, boton, {}, punto);
        } else {
            DragDriver::dropData(&strip, punto, &data);
        }
        QCOMPARE(log + catcher.messages(), informe);
    }

    void dummyPropertyKeys_data()
    {
        propertyKeyRows({ { "BackColor", qint32(0xFFFFFF), qint32(0x123456) },
                          { "BackStyle", qint16(0), qint16(1) },
                          { "BorderStyle", qint16(1), qint16(0) } });
    }
    void dummyPropertyKeys() { checkPropertyKey<Dummy>(); }

    void dummyPixels_data()
    {
        QTest::addColumn<qint16>("backStyle");
        QTest::addColumn<qint16>("borderStyle");
        QTest::addColumn<QRgb>("edge");
        QTest::addColumn<QRgb>("inside");
        // Below the box lies blue, the border is the black window text, BackColor 0x0000FF fills it red.
        const QRgb below = qRgb(0, 0, 255), fill = qRgb(255, 0, 0), line = qRgb(0, 0, 0);
        QTest::newRow("outline") << qint16(0) << qint16(1) << line << below;
        QTest::newRow("opaque with border") << qint16(1) << qint16(1) << line << fill;
        QTest::newRow("opaque without border") << qint16(1) << qint16(0) << fill << fill;
    }
    void dummyPixels()
    {
        QFETCH(qint16, backStyle);
        QFETCH(qint16, borderStyle);
        QFETCH(QRgb, edge);
        QFETCH(QRgb, inside);
        QWidget host;
        host.resize(60, 40), host.setAutoFillBackground(true), host.setPalette(QPalette(Qt::black, Qt::blue));
        auto *dummy = new Dummy(&host);
        dummy->setGeometry(10, 5, 30, 20);
        host.show();
        QCOMPARE(host.childAt(20, 10), nullptr); // the box floats above a drawing: what lies under it gets the mouse
        dummy->setBackColor(0x0000FF), dummy->setBackStyle(backStyle), dummy->setBorderStyle(borderStyle);
        const QImage image = host.grab().toImage();
        QCOMPARE((QList { image.pixel(10, 5), image.pixel(39, 24), image.pixel(11, 6) }), (QList { edge, edge, inside }));
    }
};

QTEST_MAIN(tst_Widgets)
#include "tst_widgets.moc"
