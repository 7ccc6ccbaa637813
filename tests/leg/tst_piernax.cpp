#include <tarvonix/widgets/etiquetas.h>
#include <tarvonix/leg/geometriaceldas.h>
#include <tarvonix/leg/piernax.h>
#include <tarvonix/model/escala.h>
#include <tarvonix/model/imagen.h>
#include <tarvonix/model/lote.h>
#include <tarvonix/model/objetos.h>
#include <tarvonix/model/pierna.h>
#include <tarvonix/model/ubicacion.h>
#include <tarvonix/platform/latebinding.h>

#include "dragdriver.h"
#include "errorcatcher.h"
#include "pixels.h"
#include "recordingmapa.h"
#include "testframe.h"

#include <QMimeData>
#include <QPaintEvent>
#include <QTemporaryDir>
#include <QTest>

#include <cmath>

using namespace tarvonix;

namespace {

const QColor blanco(Qt::white);
const QColor negro(Qt::black);
const QColor verde(0, 255, 0);
const QColor sombra(134, 134, 134); // the strips' separators: silver * 0.7
const QString noSet = QStringLiteral("Object variable or With block variable not set");

int px(double v)
{
    return int(std::floor(v + 0.5));
}

// A leg "P01" of filas tiers, each largo positions long, with a batch in every position.
std::shared_ptr<Pierna> nuevaPierna(int filas, int largo, bool clasica, bool llena = true)
{
    auto leg = std::make_shared<Pierna>();
    leg->setCodigo(QStringLiteral("P01"));
    leg->setClasica(clasica);
    leg->setEscalas(qint16(filas));
    for (int t = 1; t <= filas; ++t) {
        leg->setEscala(qint16(t), qint16(largo));
        for (int p = 1; llena && p <= largo; ++p) {
            auto lote = std::make_shared<Lote>();
            lote->setCodigo(QStringLiteral("L%1.%2").arg(t).arg(p));
            lote->setForma(1);
            lote->setColor(0x00FF00);
            lote->setPadre(leg->getUbicacion(qint16(t), qint16(p))->getCodigo());
            leg->setObjeto(qint16(t), qint16(p), lote);
        }
    }
    return leg;
}

// The control in a recording frame with a recording root, set up as a frame does it.
struct Vista
{
    explicit Vista(const std::shared_ptr<Pierna> &leg, float escala = 1.0f)
        : pierna(leg)
    {
        vista = new PiernaX(&frame);
        vista->setRoot(&mapa);
        vista->setObjeto(leg);
        vista->setEscala(escala);
        frame.resize(qMax(vista->width(), 100), qMax(vista->height(), 100));
        frame.show();
        (void)QTest::qWaitForWindowExposed(&frame);
        frame.calls.clear();
    }

    GeometriaCeldas geometria() const { return GeometriaCeldas(vista->height(), 1.0, pierna->getClasica()); }
    QPoint centro(int t, int p) const { return geometria().celda(t, p).center().toPoint(); }
    ObjetoPtr en(int t, int p) const { return pierna->getObjeto(qint16(t), qint16(p)); }
    etiquetas *escalas() const { return vista->findChild<etiquetas *>(QStringLiteral("escalas")); }
    etiquetas *ubicaciones() const { return vista->findChild<etiquetas *>(QStringLiteral("Ubicaciones")); }
    QStringList seleccion() const
    {
        QStringList codes;
        for (const ObjetoPtr &obj : *vista->getSeleccionados())
            codes.append(obj->getCodigo());
        return codes;
    }
    void click(int t, int p, Qt::KeyboardModifiers mods = Qt::NoModifier, Qt::MouseButton b = Qt::LeftButton)
    {
        QTest::mouseClick(vista, b, mods, centro(t, p));
    }
    void mover(QPoint pos)
    {
        QMouseEvent event(QEvent::MouseMove, pos, vista->mapToGlobal(pos), Qt::NoButton, Qt::LeftButton,
                          Qt::NoModifier);
        QCoreApplication::sendEvent(vista, &event);
    }

    TestFrame frame;
    RecordingMapa mapa;
    PiernaX *vista = nullptr;
    std::shared_ptr<Pierna> pierna;
};

// Records the regions a widget is asked to paint.
class Pintadas : public QObject
{
public:
    QRegion region;
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Paint)
            region += static_cast<QPaintEvent *>(event)->region();
        return false;
    }
};

} // namespace

class tst_PiernaX : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void layoutFollowsTheLeg_data();
    void layoutFollowsTheLeg();
    void cellsAreDrawnFromTheirObjects();
    void picturesFillTheirCell();
    void groupLinesAndStrips();
    void clicksReportWhatIsHit_data();
    void clicksReportWhatIsHit();
    void ctrlAndGroupSelection();
    void shiftSelectsARectangle();
    void tierPick();
    void dragsFromTheGridAndTheTierStrip();
    void dropsReportTheirTarget();
    void containerContract();
    void badInputIsReportedNotCrashed();
    void selectionRepaintsOnlyTheCell();
};

void tst_PiernaX::layoutFollowsTheLeg_data()
{
    QTest::addColumn<int>("filas");
    QTest::addColumn<int>("largo");
    QTest::addColumn<bool>("clasica");
    QTest::addColumn<float>("escala");
    QTest::addColumn<QSize>("tamano");

    QTest::newRow("one plain tier") << 1 << 5 << false << 1.0f << QSize(21 * 5 + 39, 41);
    QTest::newRow("one classic tier") << 1 << 5 << true << 1.0f << QSize(21 * 5 + 39, 41);
    QTest::newRow("three plain tiers") << 3 << 4 << false << 1.0f << QSize(123, 83);
    QTest::newRow("three classic tiers") << 3 << 4 << true << 1.0f << QSize(143, 77);
    QTest::newRow("classic at 2.0") << 3 << 4 << true << 2.0f << QSize(41 * 4 + 39 + 40, 38 * 2 + 61);
    QTest::newRow("tiers of no length") << 2 << 0 << false << 1.0f << QSize(39, 62);
    QTest::newRow("100 tiers") << 100 << 2 << false << 1.0f << QSize(81, 21 * 99 + 41);
}

void tst_PiernaX::layoutFollowsTheLeg()
{
    QFETCH(int, filas);
    QFETCH(int, largo);
    QFETCH(bool, clasica);
    QFETCH(float, escala);
    QFETCH(QSize, tamano);
    ErrorCatcher catcher;
    TestFrame frame;
    PiernaX vista(&frame);
    vista.setObjeto(nuevaPierna(filas, largo, clasica, false));
    vista.setEscala(escala);
    QCOMPARE(vista.size(), tamano);
    QCOMPARE(frame.calls, (QStringList { QStringLiteral("Resize"), QStringLiteral("Resize") }));

    const double lado = escala * 20;
    const double solape = clasica ? 3 : 0;
    auto *escalas = vista.findChild<etiquetas *>(QStringLiteral("escalas"));
    QCOMPARE(escalas->geometry(), QRect(0, 0, 20, int((lado + 1 - solape) * filas)));
    QCOMPARE(escalas->Primero(), qint16(filas));
    QCOMPARE(escalas->Paso(), qint16(-1));
    QCOMPARE(escalas->Separacion(), float(lado - solape));
    auto *ubicaciones = vista.findChild<etiquetas *>(QStringLiteral("Ubicaciones"));
    QCOMPARE(ubicaciones->geometry(), QRect(20, tamano.height() - 21, int((lado + 1) * largo), 20));
    QCOMPARE(ubicaciones->Separacion(), float(lado));
    QVERIFY(catcher.messages().isEmpty());

    // A tier longer than the first is drawn past the right edge: the width follows tier 1.
    auto largoArriba = nuevaPierna(2, 3, false);
    largoArriba->setEscala(2, 8);
    vista.setObjeto(largoArriba);
    QCOMPARE(vista.width(), int((lado + 1) * 3 + 39));
    (void)pixels::grab(&vista);
    QVERIFY(catcher.messages().isEmpty());
}

void tst_PiernaX::cellsAreDrawnFromTheirObjects()
{
    auto leg = nuevaPierna(3, 4, false);
    const auto lote = [&](int t, int p) {
        return leg->getObjeto(qint16(t), qint16(p));
    };
    lote(1, 2)->setSeleccionado(true); // green hatch over the background
    lote(1, 3)->setColor(0xFFFFFF); // white, selected: hatched in black
    lote(1, 3)->setSeleccionado(true);
    lote(1, 4)->setActivo(true); // dotted outline
    leg->setObjeto(2, 1, nullptr); // empty: circle with a plus
    lote(2, 2)->setForma(2); // a circle
    lote(2, 3)->setColor(0x0000FF); // dark: white text
    lote(2, 3)->setTip(QStringLiteral("7"));
    lote(2, 4)->setTip(QStringLiteral("WWWWWWWW")); // too wide: dropped
    lote(3, 1)->setColor(0xFFFF00); // light (cyan): black text
    lote(3, 1)->setTip(QStringLiteral("7"));
    Vista v(leg);
    const QImage image = pixels::grab(v.vista);
    const GeometriaCeldas g = v.geometria();
    const auto celda = [&](int t, int p) {
        return g.celda(t, p).toRect();
    };
    const auto dentro = [&](int t, int p) {
        return celda(t, p).adjusted(1, 1, -1, -1);
    }; // 18 x 18

    // Tier 1 spans y 42 to 61, position 1 x 21 to 40.
    QCOMPARE(celda(1, 1), QRect(21, 42, 20, 20));
    QCOMPARE(pixels::count(image, dentro(1, 1), verde), 18 * 18);
    QCOMPARE(pixels::count(image, QRect(21, 42, 20, 1), negro), 20); // solid outline
    QCOMPARE(pixels::at(image, 41, 50), blanco); // one-pixel gap

    const int hatch = pixels::count(image, dentro(1, 2), verde);
    QVERIFY(hatch > 18 && hatch < 18 * 9);
    QCOMPARE(hatch + pixels::count(image, dentro(1, 2), blanco), 18 * 18);
    const int black = pixels::count(image, dentro(1, 3), negro);
    QVERIFY(black > 18 && black < 18 * 9);
    QCOMPARE(black + pixels::count(image, dentro(1, 3), blanco), 18 * 18);

    const int dots = pixels::count(image, QRect(celda(1, 4).topLeft(), QSize(20, 1)), negro);
    QVERIFY2(dots > 3 && dots < 15, qPrintable(QString::number(dots)));
    QCOMPARE(pixels::count(image, dentro(1, 4), verde), 18 * 18);

    // The empty mark: a plus from x + 5 to x + 15, inside a circle of radius 10.
    const QRect vacia = celda(2, 1);
    QCOMPARE(pixels::count(image, QRect(vacia.x() + 5, vacia.y() + 10, 11, 1), negro), 11);
    QCOMPARE(pixels::count(image, QRect(vacia.x() + 10, vacia.y() + 5, 1, 11), negro), 11);
    QCOMPARE(pixels::at(image, vacia.x() + 16, vacia.y() + 10), blanco);
    QCOMPARE(pixels::at(image, vacia.x() + 1, vacia.y() + 1), blanco);
    QCOMPARE(pixels::at(image, vacia.x(), vacia.y() + 10), negro);

    const QRect circulo = celda(2, 2);
    QCOMPARE(pixels::at(image, circulo.x() + 1, circulo.y() + 1), blanco);
    QCOMPARE(pixels::at(image, circulo.x() + 9, circulo.y() + 9), verde);

    // Tips centred in the room inside the border; white on dark, black on light.
    const QFontMetrics metrics(v.vista->font());
    const auto origen = [&](int t, int p, const QString &text) {
        return QPoint(px(g.x(t, p) + 1 + (18 - metrics.horizontalAdvance(text)) / 2.0),
                      px(g.y(t) + 1 + (18 - metrics.height()) / 2.0));
    };
    QVERIFY(pixels::showsText(image, origen(2, 3, QStringLiteral("7")), QStringLiteral("7"), v.vista->font(),
                              blanco, QColor(255, 0, 0)));
    QVERIFY(pixels::showsText(image, origen(3, 1, QStringLiteral("7")), QStringLiteral("7"), v.vista->font(),
                              negro, QColor(0, 255, 255)));
    QCOMPARE(pixels::count(image, dentro(2, 4), verde), 18 * 18);
}

void tst_PiernaX::picturesFillTheirCell()
{
    QTemporaryDir dir;
    QImage azul(4, 4, QImage::Format_RGB32);
    azul.fill(Qt::blue);
    QVERIFY(azul.save(dir.filePath(QStringLiteral("azul.png"))));
    auto imagen = std::make_shared<Imagen>();
    imagen->setArchivo(dir.filePath(QStringLiteral("azul.png")));

    auto leg = nuevaPierna(1, 3, false);
    leg->getObjeto(1, 1)->setImagen(imagen);
    leg->getObjeto(1, 2)->setImagen(imagen);
    leg->getObjeto(1, 2)->setForma(2); // erased as a square: the picture fills it
    leg->getObjeto(1, 3)->setImagen(imagen);
    leg->getObjeto(1, 3)->setSeleccionado(true);
    Vista v(leg);
    const QImage image = pixels::grab(v.vista);
    const GeometriaCeldas g = v.geometria();
    const QRect c1 = g.celda(1, 1).toRect();
    QCOMPARE(pixels::count(image, c1.adjusted(1, 1, -1, -1), QColor(Qt::blue)), 18 * 18);
    const QRect c2 = g.celda(1, 2).toRect();
    QCOMPARE(pixels::at(image, c2.x() + 1, c2.y() + 1), QColor(Qt::blue));
    const QRect c3 = g.celda(1, 3).toRect().adjusted(2, 2, -2, -2);
    const int hatch = pixels::count(image, c3, negro);
    QVERIFY(hatch > 16 && hatch + pixels::count(image, c3, QColor(Qt::blue)) == 16 * 16);
}

void tst_PiernaX::groupLinesAndStrips()
{
    // Group lines in front of positions 6 and 11 with linea 5 and 12 positions; none when classic.
    auto leg = nuevaPierna(2, 12, false);
    leg->setLinea(5);
    Vista v(leg);
    QImage image = pixels::grab(v.vista);
    const GeometriaCeldas g = v.geometria();
    for (int q : { 6, 11 }) {
        const int x = 20 + (q - 1) * 21;
        QCOMPARE(pixels::count(image, QRect(x, 0, 1, int(g.y(1)) + 20), negro), int(g.y(1)) + 20);
    }
    QCOMPARE(pixels::count(image, QRect(20 + 21, 0, 1, 41), negro), 0); // no line in front of position 2

    // The tier strip: a separator at the top of every tier, the highest tier on top.
    const QFont fuente = v.escalas()->font();
    const QFontMetrics metrics(fuente);
    for (int t = 1; t <= 2; ++t) {
        QCOMPARE(pixels::at(image, 10, int(g.y(t))), sombra);
        const QString label = QString::number(t);
        const QPoint origin(px((20 - metrics.horizontalAdvance(label)) / 2.0),
                            px(g.y(t) + (20 - metrics.height()) / 2.0));
        QVERIFY2(pixels::showsText(image, origin, label, fuente, negro, QColor(0xC0, 0xC0, 0xC0)),
                 qPrintable(label));
    }
    // The position strip: a separator in the gap column in front of every position.
    const int fila = v.vista->height() - 21;
    for (int p = 1; p <= 12; ++p) {
        QCOMPARE(pixels::at(image, 20 + (p - 1) * 21, fila + 10), sombra);
        const QString label = QString::number(p);
        const QPoint origin(px(20 + (p - 1) * 21 + (20 - metrics.horizontalAdvance(label)) / 2.0),
                            px(fila + (20 - metrics.height()) / 2.0));
        QVERIFY2(pixels::showsText(image, origin, label, fuente, negro, QColor(0xC0, 0xC0, 0xC0)),
                 qPrintable(label));
    }

    // Classic: the gap column in front of position 6 of tier 1 stays clear.
    leg->setClasica(true);
    v.vista->refrescar();
    image = pixels::grab(v.vista);
    const int y1 = int(v.geometria().y(1));
    QCOMPARE(pixels::count(image, QRect(20 + 5 * 21, y1 + 2, 1, 18), blanco), 18);
}

void tst_PiernaX::clicksReportWhatIsHit_data()
{
    QTest::addColumn<QPoint>("punto");
    QTest::addColumn<bool>("derecho");
    QTest::addColumn<QString>("informe");
    QTest::addColumn<QString>("activo");

    // Three plain tiers: H = 83, tier 1 spans y 42 to 61, tier 2 y 21 to 40; (2, 3) is empty.
    QTest::newRow("tier 1, position 1") << QPoint(25, 50) << false << "clicked(L1.1,false)"
                                        << "L1.1";
    QTest::newRow("tier 1, position 2") << QPoint(46, 50) << false << "clicked(L1.2,false)"
                                        << "L1.2";
    QTest::newRow("tier 2, position 1") << QPoint(25, 30) << false << "clicked(L2.1,false)"
                                        << "L2.1";
    QTest::newRow("top edge of tier 2") << QPoint(25, 21) << false << "clicked(L3.1,false)"
                                        << "L3.1";
    QTest::newRow("right button") << QPoint(25, 50) << true << "rightClicked(L1.1,false)"
                                  << "L1.1";
    QTest::newRow("empty position") << QPoint(70, 30) << false << "clicked(P012003,true)"
                                    << "P012003";
    QTest::newRow("empty, right") << QPoint(70, 30) << true << "rightClicked(P012003,true)"
                                  << "P012003";
    QTest::newRow("outside the positions") << QPoint(90, 50) << false << "clicked(P01,false)"
                                           << "P01";
}

void tst_PiernaX::clicksReportWhatIsHit()
{
    QFETCH(QPoint, punto);
    QFETCH(bool, derecho);
    QFETCH(QString, informe);
    QFETCH(QString, activo);
    auto leg = nuevaPierna(3, 3, false);
    leg->setObjeto(2, 3, nullptr);
    Vista v(leg);
    QCOMPARE(v.vista->height(), 83);
    QTest::mouseClick(v.vista, derecho ? Qt::RightButton : Qt::LeftButton, Qt::NoModifier, punto);
    QCOMPARE(v.mapa.log(), QStringList { informe });
    QCOMPARE(v.frame.calls.last(), QStringLiteral("setActive(%1)").arg(activo));
    // A plain press selects an object alone; an empty position or the leg selects nothing.
    QCOMPARE(v.seleccion(), activo.startsWith(u'L') ? QStringList { activo } : QStringList {});
}

void tst_PiernaX::ctrlAndGroupSelection()
{
    Vista v(nuevaPierna(2, 3, false));
    v.frame.callBack = true; // the frame marks the active object back on the control
    v.click(1, 1);
    QCOMPARE(v.seleccion(), QStringList { "L1.1" });
    QVERIFY(v.en(1, 1)->getActivo());

    // Ctrl+press changes nothing; the Ctrl+release toggles and reports multi.
    QTest::mousePress(v.vista, Qt::LeftButton, Qt::ControlModifier, v.centro(1, 2));
    QCOMPARE(v.seleccion(), QStringList { "L1.1" });
    QTest::mouseRelease(v.vista, Qt::LeftButton, Qt::ControlModifier, v.centro(1, 2));
    QCOMPARE(v.seleccion(), (QStringList { "L1.1", "L1.2" }));
    QVERIFY(v.en(1, 2)->getSeleccionado());
    v.click(1, 3, Qt::ControlModifier);
    v.click(1, 1, Qt::ControlModifier); // off again
    QVERIFY(!v.en(1, 1)->getSeleccionado());
    v.click(1, 1, Qt::ControlModifier);
    QCOMPARE(v.mapa.log().mid(1),
             (QStringList { "clicked(L1.2,true)", "clicked(L1.3,true)", "clicked(L1.1,true)",
                            "clicked(L1.1,true)" }));
    QCOMPARE(v.seleccion().size(), 3);

    // A press on one of the group keeps the group (to drag it); the release narrows it.
    v.mapa.clear();
    QTest::mousePress(v.vista, Qt::LeftButton, Qt::NoModifier, v.centro(1, 2));
    QCOMPARE(v.seleccion().size(), 3);
    QTest::mouseRelease(v.vista, Qt::LeftButton, Qt::NoModifier, v.centro(1, 2));
    QCOMPARE(v.seleccion(), QStringList { "L1.2" });
    QVERIFY(!v.en(1, 1)->getSeleccionado() && !v.en(1, 3)->getSeleccionado());
    QCOMPARE(v.mapa.log(), QStringList { "clicked(L1.2,false)" });

    // A right click with Ctrl changes nothing.
    v.click(2, 2, Qt::ControlModifier, Qt::RightButton);
    QCOMPARE(v.seleccion(), QStringList { "L1.2" });
    QCOMPARE(v.mapa.log().last(), QStringLiteral("rightClicked(L2.2,true)"));
}

void tst_PiernaX::shiftSelectsARectangle()
{
    auto leg = nuevaPierna(3, 3, false);
    Vista v(leg);
    // Either direction.
    v.click(1, 1);
    v.click(2, 3, Qt::ShiftModifier);
    QCOMPARE(v.seleccion(), (QStringList { "L1.1", "L1.2", "L1.3", "L2.1", "L2.2", "L2.3" }));
    QCOMPARE(v.mapa.log().last(), QStringLiteral("clicked(L2.3,true)"));
    v.click(3, 3);
    v.click(2, 1, Qt::ShiftModifier);
    QCOMPARE(v.seleccion(), (QStringList { "L3.3", "L3.2", "L3.1", "L2.3", "L2.2", "L2.1" }));
    for (int p = 1; p <= 3; ++p)
        QVERIFY(!v.en(1, p)->getSeleccionado() && v.en(2, p)->getSeleccionado());

    // An empty cell stops the rectangle there, with a message; what came before stays selected.
    ErrorCatcher catcher;
    leg->setObjeto(2, 2, nullptr);
    v.click(1, 1);
    v.click(3, 3, Qt::ShiftModifier);
    QCOMPARE(catcher.messages(), QStringList { "PiernaX.selectRectangle->" + noSet });
    QCOMPARE(v.seleccion(), (QStringList { "L1.1", "L1.2", "L1.3", "L2.1" }));

    // So does an object placed twice.
    catcher.clear();
    leg->setObjeto(1, 2, leg->getObjeto(1, 1));
    v.click(1, 1);
    v.click(1, 3, Qt::ShiftModifier);
    QCOMPARE(
        catcher.messages(),
        QStringList {
            "PiernaX.selectRectangle->This key is already associated with an element of this collection" });
    QCOMPARE(v.seleccion(), QStringList { "L1.1" });
}

void tst_PiernaX::tierPick()
{
    Vista v(nuevaPierna(3, 4, false));
    // The top slot of the tier strip is the highest tier; the tier alone is selected, its flag untouched.
    QTest::mouseClick(v.escalas(), Qt::LeftButton, Qt::NoModifier, QPoint(10, 5));
    QCOMPARE(v.mapa.log(), QStringList { "clicked(P013000,false)" });
    QCOMPARE(v.seleccion(), QStringList { "P013000" });
    QVERIFY(!v.pierna->getEscala(3)->getSeleccionado());
    QTest::mouseClick(v.escalas(), Qt::RightButton, Qt::NoModifier, QPoint(10, 50));
    QCOMPARE(v.mapa.log().last(), QStringLiteral("rightClicked(P011000,false)"));
    QCOMPARE(v.frame.calls.last(), QStringLiteral("setActive(P011000)"));
    // A cell drops the tier before it is selected.
    v.click(2, 2);
    QCOMPARE(v.seleccion(), QStringList { "L2.2" });

}

void tst_PiernaX::dragsFromTheGridAndTheTierStrip()
{
    Vista v(nuevaPierna(2, 3, false));
    DragDriver driver;
    QTest::mousePress(v.vista, Qt::LeftButton, Qt::NoModifier, v.centro(1, 1));
    v.mover(v.centro(1, 1) + QPoint(8, 8));
    QVERIFY(driver.dragging());
    // Nothing moves in a grid: Shift refuses.
    QCOMPARE(driver.move(v.vista, v.centro(1, 2)), Qt::CopyAction);
    QCOMPARE(driver.move(v.vista, v.centro(1, 2), Qt::ShiftModifier), Qt::IgnoreAction);
    driver.finish();
    QTest::mouseRelease(v.vista, Qt::LeftButton, Qt::NoModifier, v.centro(1, 2));

    // A picked tier drags from the tier strip, with the frame's name too.
    QTest::mousePress(v.escalas(), Qt::LeftButton, Qt::NoModifier, QPoint(10, 5));
    QMouseEvent move(QEvent::MouseMove, QPointF(10, 15), v.escalas()->mapToGlobal(QPointF(10, 15)),
                     Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(v.escalas(), &move);
    QCOMPARE(driver.started(), 2);
    QCOMPARE(driver.text(), QStringLiteral("Dframe"));
    driver.finish();
    QTest::mouseRelease(v.escalas(), Qt::LeftButton, Qt::NoModifier, QPoint(10, 15));
}

void tst_PiernaX::dropsReportTheirTarget()
{
    auto leg = nuevaPierna(2, 3, false);
    leg->setObjeto(2, 2, nullptr);
    Vista v(leg);
    QMimeData texto;
    texto.setText(QStringLiteral("D7"));
    QCOMPARE(DragDriver::dropData(v.vista, v.centro(1, 3), &texto), Qt::CopyAction);
    QCOMPARE(DragDriver::dropData(v.vista, v.centro(2, 2), &texto, Qt::ControlModifier), Qt::CopyAction);
    QCOMPARE(DragDriver::dropData(v.vista, QPoint(90, 50), &texto), Qt::CopyAction);
    QCOMPARE(DragDriver::dropData(v.escalas(), QPoint(10, 5), &texto), Qt::CopyAction);
    // Refused: Shift held, or no text.
    QCOMPARE(DragDriver::dropData(v.vista, v.centro(1, 3), &texto, Qt::ShiftModifier), Qt::IgnoreAction);
    QCOMPARE(DragDriver::dropData(v.escalas(), QPoint(10, 5), &texto, Qt::ShiftModifier), Qt::IgnoreAction);
    QMimeData imagen;
    imagen.setImageData(QImage(2, 2, QImage::Format_RGB32));
    QCOMPARE(DragDriver::moveData(v.vista, v.centro(1, 3), &imagen), Qt::IgnoreAction);
    QCOMPARE(DragDriver::dropData(v.vista, v.centro(1, 3), &imagen), Qt::IgnoreAction);
    QCOMPARE(DragDriver::dropData(v.escalas(), QPoint(10, 5), &imagen), Qt::IgnoreAction);
    // Nothing is dropped on the position strip.
    QCOMPARE(DragDriver::dropData(v.ubicaciones(), QPoint(10, 5), &texto), Qt::IgnoreAction);
    QCOMPARE(v.mapa.log(),
             (QStringList { "droped(D7,L1.3,0)", "droped(D7,P012002,2)", "droped(D7,P01,0)",
                            "droped(D7,P012000,0)" }));
    // Entering asks nothing of the frame, and no text asks nothing either.
    QVERIFY(v.frame.calls.isEmpty());
}

void tst_PiernaX::containerContract()
{
    auto leg = nuevaPierna(2, 2, false);
    Vista v(leg);
    auto *contrato = LateBinding::call(v.vista, QStringLiteral("cast")).value<IContenedorX *>();
    QCOMPARE(contrato, static_cast<IContenedorX *>(v.vista));
    QCOMPARE(contrato->getObjeto(), ObjetoPtr(leg));

    contrato->seleccionarTodos();
    QCOMPARE(v.seleccion().size(), 4);
    contrato->deseleccionarTodos();
    QCOMPARE(v.seleccion().size(), 0);
    QVERIFY(!v.en(1, 1)->getSeleccionado());
    // The live collection: what a caller takes out, the control no longer clears.
    contrato->seleccionarTodos();
    contrato->getSeleccionados()->remove(v.en(1, 1));
    contrato->deseleccionarTodos();
    QVERIFY(v.en(1, 1)->getSeleccionado() && !v.en(1, 2)->getSeleccionado());
    v.en(1, 1)->setSeleccionado(false);
    contrato->seleccionar(QStringLiteral("P012001"));
    contrato->seleccionar(QStringLiteral("P012001"));
    QCOMPARE(v.seleccion(), QStringList { "L2.1" });

    contrato->setActivo(leg, true); // the leg itself is left alone
    QVERIFY(!leg->getActivo());
    contrato->setActivo(v.en(2, 2), true);
    QVERIFY(v.en(2, 2)->getActivo());

    // Nothing in a grid moves.
    const QSize size = v.vista->size();
    contrato->setBloqueo(true);
    contrato->alinearHorizontal(v.en(1, 1));
    contrato->alinearVertical(v.en(1, 1));
    contrato->igualarDimension(v.en(1, 1));
    contrato->distribuirHorizontal();
    contrato->distribuirVertical();
    QCOMPARE(v.vista->size(), size);
    QCOMPARE(v.seleccion(), QStringList { "L2.1" });

    LateBinding::set(v.vista, QStringLiteral("FontSize"), 14);
    LateBinding::set(v.vista, QStringLiteral("FontName"), QStringLiteral("DejaVu Serif"));
    QCOMPARE(v.vista->font().pointSize(), 14);
    QCOMPARE(LateBinding::get(v.vista, QStringLiteral("FontName")).toString(),
             QStringLiteral("DejaVu Serif"));
}

void tst_PiernaX::badInputIsReportedNotCrashed()
{
    ErrorCatcher catcher;
    {
        // No leg yet.
        TestFrame frame;
        PiernaX vista(&frame);
        vista.resize(100, 100);
        (void)pixels::grab(&vista);
        QCOMPARE(catcher.messages(), QStringList { "PiernaX.dibujarTodo->" + noSet });
        catcher.clear();
        QTest::mouseClick(&vista, Qt::LeftButton, Qt::NoModifier, QPoint(50, 50));
        QCOMPARE(catcher.messages(),
                 (QStringList { "PiernaX.sobreQuien->" + noSet, "PiernaX.MouseDown->" + noSet,
                                "PiernaX.sobreQuien->" + noSet, "PiernaX.MouseUp->" + noSet }));
        catcher.clear();
        vista.seleccionar(QStringLiteral("P011001"));
        QCOMPARE(catcher.messages(), QStringList { "PiernaX.IContenedorX_seleccionar->" + noSet });

        // A leg whose grid was never built.
        catcher.clear();
        auto vacia = std::make_shared<Pierna>();
        vista.setObjeto(vacia);
        (void)pixels::grab(&vista);
        QCOMPARE(catcher.messages(),
                 (QStringList { "PiernaX.validarControl->Subscript out of range",
                                "PiernaX.dibujarTodo->Subscript out of range" }));
    }
    {
        // Cell sizes that make no grid.
        catcher.clear();
        auto leg = nuevaPierna(20, 3, true);
        TestFrame frame;
        PiernaX vista(&frame);
        vista.setRoot(nullptr);
        vista.setObjeto(leg);
        QVERIFY(catcher.messages().isEmpty());
        vista.setEscala(-1);
        QCOMPARE(catcher.messages(),
                 QStringList { "PiernaX.validarControl->Invalid procedure call or argument" });
        vista.setEscala(0); // tiers closer than they are high: a negative height
        QCOMPARE(catcher.messages().size(), 2);
        vista.setEscala(std::nanf(""));
        vista.setEscala(1e30f);
        QCOMPARE(catcher.messages().mid(2),
                 (QStringList { "PiernaX.validarControl->Overflow", "PiernaX.validarControl->Overflow" }));
        (void)pixels::grab(&vista);
        // Cells 2 pixels high that overlap by 3: no tier pitch, no tier strip.
        catcher.clear();
        vista.setEscala(0.1f);
        QVERIFY(catcher.messages().isEmpty());
        QCOMPARE(vista.findChild<etiquetas *>(QStringLiteral("escalas"))->height(), 0);
        (void)pixels::grab(&vista);
        QTest::mouseClick(&vista, Qt::LeftButton, Qt::NoModifier, QPoint(30, 10));
        QVERIFY(catcher.messages().contains(QStringLiteral("PiernaX.sobreQuien->Overflow")));
        // No root to report to.
        catcher.clear();
        vista.setEscala(1);
        QTest::mouseClick(&vista, Qt::LeftButton, Qt::NoModifier, QPoint(25, vista.height() - 30));
        QCOMPARE(catcher.messages(), QStringList { "PiernaX.MouseUp->" + noSet });
    }
    {
        // No frame around the control.
        catcher.clear();
        PiernaX vista;
        vista.setObjeto(nuevaPierna(2, 2, false));
        QCOMPARE(catcher.messages(), QStringList { "PiernaX.validarControl->" + noSet });
        catcher.clear();
        vista.resize(200, 200);
        QTest::mouseClick(&vista, Qt::LeftButton, Qt::NoModifier, QPoint(25, 150));
        QCOMPARE(catcher.messages(),
                 (QStringList { "PiernaX.MouseDown->" + noSet, "PiernaX.MouseUp->" + noSet }));
    }
    {
        // 100 tiers: from tier 33 on the codes wrap, and codes no longer name their cell.
        catcher.clear();
        Vista v(nuevaPierna(100, 2, false));
        v.click(50, 2);
        QCOMPARE(v.mapa.log(), QStringList { "clicked(L50.2,false)" });
        QCOMPARE(v.seleccion(), QStringList { "L50.2" });
        v.vista->seleccionar(v.pierna->getUbicacion(35, 1)->getCodigo()); // "P01-30535" names tier 0
        QCOMPARE(v.seleccion(), QStringList { "L50.2" });
        (void)pixels::grab(v.vista);
        // Codes without a number, or too short to hold a cell.
        v.vista->seleccionar(QStringLiteral("P1"));
        v.vista->seleccionar(QString());
        v.vista->seleccionar(QStringLiteral("12")); // tier 0: nothing there
        QCOMPARE(catcher.messages(),
                 (QStringList { "PiernaX.IContenedorX_seleccionar->Type mismatch",
                                "PiernaX.IContenedorX_seleccionar->Type mismatch" }));
        QCOMPARE(v.seleccion(), QStringList { "L50.2" });
        // Every position filled with one object.
        catcher.clear();
        auto uno = v.en(1, 1);
        for (int t = 1; t <= 100; ++t)
            for (int p = 1; p <= 2; ++p)
                v.pierna->setObjeto(qint16(t), qint16(p), uno);
        v.vista->deseleccionarTodos();
        v.vista->seleccionarTodos();
        QCOMPARE(v.seleccion(), QStringList { "L1.1" });
        (void)pixels::grab(v.vista);
        QVERIFY(catcher.messages().isEmpty());
    }
}

void tst_PiernaX::selectionRepaintsOnlyTheCell()
{
    auto leg = nuevaPierna(12, 3, false);
    Vista v(leg);
    Pintadas pintadas;
    v.vista->installEventFilter(&pintadas);
    QTest::qWait(20);
    pintadas.region = QRegion();

    // A cell found by its position code: only that cell is repainted.
    v.vista->seleccionar(QStringLiteral("P012003"));
    QTRY_VERIFY(!pintadas.region.isEmpty());
    const QRect celda = v.geometria().celda(2, 3).toRect();
    QVERIFY(pintadas.region.boundingRect().contains(celda));
    QVERIFY(pintadas.region.boundingRect().width() <= celda.width() + 4);
    // ... and a paint of just that rectangle draws the cell as a full paint does.
    QImage parcial(v.vista->size(), QImage::Format_RGB32);
    parcial.fill(Qt::red);
    const QRect expuesto = pintadas.region.boundingRect();
    v.vista->render(&parcial, expuesto.topLeft(), QRegion(expuesto), QWidget::DrawWindowBackground);
    const QImage completa = pixels::grab(v.vista);
    QCOMPARE(parcial.copy(celda), completa.copy(celda));
    QVERIFY(pixels::count(parcial, celda, verde) > 0); // hatched now
    // Any exposed rectangle, even one that cuts through cells.
    const QRect corte(celda.center(), QSize(25, 25));
    v.vista->render(&parcial, corte.topLeft(), QRegion(corte), QWidget::DrawWindowBackground);
    QCOMPARE(parcial.copy(corte), completa.copy(corte));

    // Tier 12's codes end in "2001": the code does not lead to the cell, so the whole grid is repainted.
    pintadas.region = QRegion();
    v.vista->setActivo(v.en(12, 1), true);
    QTRY_VERIFY(!pintadas.region.isEmpty());
    QCOMPARE(pintadas.region.boundingRect(), v.vista->rect());
}

QTEST_MAIN(tst_PiernaX)
#include "tst_piernax.moc"
