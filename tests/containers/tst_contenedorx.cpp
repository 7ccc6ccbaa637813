#include <tarvonix/containers/contenedorx.h>
#include <tarvonix/widgets/dummy.h>
#include <tarvonix/model/imagen.h>
#include <tarvonix/model/objeto.h>
#include <tarvonix/model/objetos.h>
#include <tarvonix/platform/latebinding.h>

#include "dragdriver.h"
#include "errorcatcher.h"
#include "recordingmapa.h"
#include "testframe.h"

#include <QFontMetrics>
#include <QMimeData>
#include <QMouseEvent>
#include <QTemporaryDir>
#include <QTest>

#include <cmath>
#include <memory>

using namespace tarvonix;

namespace {

constexpr QRgb white = 0xFFFFFFFF;
constexpr QRgb black = 0xFF000000;
constexpr QRgb red = 0xFFFF0000;
constexpr QRgb grey = 0xFFC0C0C0;
constexpr Qt::KeyboardModifiers shift = Qt::ShiftModifier;
constexpr Qt::KeyboardModifiers ctrl = Qt::ControlModifier;

using Hijo = std::shared_ptr<Objeto>;

// A container in a recording frame, bound to the object "R" (white, may
// contain) at escala 1, with a viewport larger than anything drawn.
struct Escena
{
    Escena()
        : raiz(std::make_shared<Objeto>())
    {
        raiz->setCodigo(QStringLiteral("R"));
        raiz->setTipo(QStringLiteral("D"));
        raiz->setDescripcion(QStringLiteral("Nave de crianza"));
        raiz->setPuedeContener(true);
        cont = new ContenedorX(&frame);
        cont->setRoot(&mapa);
        cont->setObjeto(raiz);
        cont->setEscala(1);
        cont->setViewPort(0, 0, 4000, 4000);
        frame.show();
    }

    Hijo hijo(const QString &codigo, int x, int y, int ancho, int alto, int forma = 1,
              qint32 color = 0x0000FF)
    {
        auto o = std::make_shared<Objeto>();
        o->setCodigo(codigo);
        o->setX(qint16(x));
        o->setY(qint16(y));
        o->setAncho(qint16(ancho));
        o->setAlto(qint16(alto));
        o->setForma(qint16(forma));
        o->setColor(color);
        o->setPadre(raiz->getCodigo());
        raiz->getObjetos()->add(o);
        return o;
    }

    QStringList log() const { return mapa.log(); }
    QImage pintura() const { return cont->grab().toImage(); }
    Dummy *caja(const QString &name) const
    {
        return cont->findChild<Dummy *>(name, Qt::FindDirectChildrenOnly);
    }

    RecordingMapa mapa;
    Hijo raiz;
    TestFrame frame;
    ContenedorX *cont;
};

void mover(QWidget *w, QPointF p, Qt::MouseButtons buttons = Qt::LeftButton, Qt::KeyboardModifiers m = {})
{
    QMouseEvent event(QEvent::MouseMove, p, w->mapToGlobal(p), Qt::NoButton, buttons, m);
    QCoreApplication::sendEvent(w, &event);
}

int cuenta(const QImage &image, const QRect &area, QRgb colour)
{
    int n = 0;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x)
            n += image.pixel(x, y) == colour;
    }
    return n;
}

QStringList codigos(const Objetos &objetos)
{
    QStringList result;
    for (const ObjetoPtr &o : objetos)
        result.append(o->getCodigo());
    return result;
}

void borrarCajas()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace

class tst_ContenedorX : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void membersByName();
    void shapes_data();
    void shapes();
    void textColour_data();
    void textColour();
    void textThatDoesNotFit();
    void childContainersAndPictures();
    void viewport();
    void sizeFit_data();
    void sizeFit();
    void childContainersGrow();
    void clicks();
    void inactiveFrame();
    void shiftDragMoves_data();
    void shiftDragMoves();
    void lockedDrop();
    void plainDragAndForeignDrops();
    void boxesGrowScrollAndFollowShift();
    void alignAndEqualise();
    void distribute_data();
    void distribute();
    void distributeOrdersEqualPositions();
    void badInput();
    void overflowAfterMove();
    void duplicateCodesInSelection();
    void missingFrame();
};

void tst_ContenedorX::membersByName()
{
    ErrorCatcher errors;
    Escena e;
    const Hijo a = e.hijo(QStringLiteral("A"), 10, 10, 40, 30);

    // "cast" answers the contract, as frames and the map reach it.
    auto *contrato = LateBinding::call(e.cont, QStringLiteral("cast")).value<IContenedorX *>();
    QCOMPARE(contrato, static_cast<IContenedorX *>(e.cont));
    QCOMPARE(contrato->getObjeto(), ObjetoPtr(e.raiz));
    QCOMPARE(e.cont->toolTip(), QStringLiteral("Nave de crianza"));

    // The selection is the live collection.
    e.cont->getSeleccionados()->add(a);
    a->setSeleccionado(true);
    contrato->deseleccionarTodos();
    QVERIFY(!a->getSeleccionado());
    QCOMPARE(e.cont->getSeleccionados()->count(), 0);

    // The active flag: never on the bound object itself.
    contrato->setActivo(e.raiz, true);
    QVERIFY(!e.raiz->getActivo());
    contrato->setActivo(a, true);
    QVERIFY(a->getActivo());

    LateBinding::set(e.cont, QStringLiteral("BorderStyle"), 1);
    QCOMPARE(LateBinding::get(e.cont, QStringLiteral("BorderStyle")).toInt(), 1);
    QCOMPARE(e.pintura().pixel(0, 0), black);
    LateBinding::set(e.cont, QStringLiteral("Width"), 350);
    QCOMPARE(e.cont->width(), 350);

    // printX by name moves the text position even outside a paint.
    LateBinding::call(e.cont, QStringLiteral("printX"), { QStringLiteral("x"), 0.0, 0.0, 100.0, 100.0, 0 });
    LateBinding::call(e.cont, QStringLiteral("setViewPort"), { 0.0, 0.0, 0.0, 0.0 });
    QCOMPARE(e.pintura().pixel(31, 26), white); // the child is outside the new viewport
    QVERIFY(errors.messages().isEmpty());
}

void tst_ContenedorX::shapes_data()
{
    QTest::addColumn<int>("forma");
    QTest::addColumn<bool>("contiene");
    QTest::addColumn<bool>("seleccionado");
    QTest::addColumn<bool>("activo");
    QTest::addColumn<qint32>("color");
    QTest::addColumn<QRgb>("esquina"); // at the child's top-left corner (12, 12)
    QTest::addColumn<QRect>("interior");
    QTest::addColumn<QRgb>("relleno"); // all over the interior, or hatch of it over white when 0

    // The child: X 10, Y 10, 40 x 30, so drawn at (12, 12) - (51, 41).
    const QRect caja(16, 16, 30, 20);
    QTest::newRow("box") << 1 << false << false << false << qint32(0x0000FF) << black << caja << red;
    QTest::newRow("circle") << 2 << false << false << false << qint32(0x0000FF) << white
                            << QRect(26, 26, 10, 10) << red;
    QTest::newRow("square, no outline")
        << 3 << false << false << false << qint32(0x0000FF) << white << QRect(17, 17, 18, 18) << red;
    QTest::newRow("shape 0, tip only")
        << 0 << false << false << false << qint32(0x0000FF) << white << caja << white;
    QTest::newRow("shape 7, tip only")
        << 7 << false << false << false << qint32(0x0000FF) << white << caja << white;
    QTest::newRow("child container") << 1 << true << false << false << qint32(0x0000FF) << grey << caja
                                     << white;
    QTest::newRow("box selected") << 1 << false << true << false << qint32(0x0000FF) << black << caja
                                  << QRgb(0);
    QTest::newRow("square selected") << 3 << false << true << false << qint32(0x0000FF) << black
                                     << QRect(17, 17, 18, 18) << QRgb(0);
    QTest::newRow("white box selected")
        << 1 << false << true << false << qint32(0xFFFFFF) << black << caja << QRgb(0);
    QTest::newRow("active box") << 1 << false << false << true << qint32(0x0000FF) << black << caja << red;
}

void tst_ContenedorX::shapes()
{
    QFETCH(int, forma);
    QFETCH(bool, contiene);
    QFETCH(bool, seleccionado);
    QFETCH(bool, activo);
    QFETCH(qint32, color);
    QFETCH(QRgb, esquina);
    QFETCH(QRect, interior);
    QFETCH(QRgb, relleno);

    ErrorCatcher errors;
    Escena e;
    const Hijo o = e.hijo(QStringLiteral("A"), 10, 10, 40, 30, forma, color);
    o->setPuedeContener(contiene);
    if (seleccionado)
        e.cont->seleccionar(QStringLiteral("A"));
    e.cont->setActivo(o, activo);
    const QImage image = e.pintura();

    QCOMPARE(image.pixel(12, 12), esquina);
    QCOMPARE(image.pixel(53, 43), white); // nothing beyond the child
    if (relleno) {
        QCOMPARE(cuenta(image, interior, relleno), interior.width() * interior.height());
    } else {
        // Hatched: lines of the fill colour over the background, neither one alone.
        const QRgb linea = color == 0xFFFFFF ? black : red;
        const int lineas = cuenta(image, interior, linea);
        QVERIFY2(lineas > interior.width() && cuenta(image, interior, white) > interior.width(),
                 qPrintable(QString::number(lineas)));
    }
    if (forma == 1 && !contiene) {
        // The outline: dotted when active, solid otherwise.
        const int trazo = cuenta(image, QRect(12, 12, 40, 1), black);
        QVERIFY(activo ? trazo < 40 && trazo > 5 : trazo == 40);
    }
    QVERIFY(errors.messages().isEmpty());
}

void tst_ContenedorX::textColour_data()
{
    QTest::addColumn<int>("forma");
    QTest::addColumn<qint32>("color");
    QTest::addColumn<bool>("seleccionado");
    QTest::addColumn<QRgb>("texto");
    QTest::addColumn<QRgb>("ausente");

    QTest::newRow("dark: white") << 1 << qint32(0x000080) << false << white << black;
    QTest::newRow("light: black") << 1 << qint32(0x00FFFF) << false << black << white;
    QTest::newRow("pure green is dark") << 2 << qint32(0x00FF00) << false << white << black;
    QTest::newRow("selected dark: black") << 1 << qint32(0x000080) << true << black << QRgb(0);
    QTest::newRow("square: black beside it") << 3 << qint32(0x000080) << false << black << QRgb(0);
}

void tst_ContenedorX::textColour()
{
    QFETCH(int, forma);
    QFETCH(qint32, color);
    QFETCH(bool, seleccionado);
    QFETCH(QRgb, texto);
    QFETCH(QRgb, ausente);

    Escena e;
    const Hijo o = e.hijo(QStringLiteral("A"), 10, 10, 100, 30, forma, color);
    o->setTip(QStringLiteral("H"));
    if (seleccionado)
        e.cont->seleccionar(QStringLiteral("A"));

    // Where printX puts the text: centred in the child, or left-aligned right of the square of forma 3.
    const QFontMetrics metrics(e.cont->font());
    const int tw = metrics.horizontalAdvance(QStringLiteral("H"));
    const int th = metrics.height();
    const double x = 12, y = 12, w = 100, h = 30;
    double tx = x + 2 + (w - 4 - tw) / 2;
    if (forma == 3)
        tx = x + 2 + (h - 4) + 2 + 2;
    const double ty = y + 2 + (h - 4 - th) / 2;
    const QRect area(int(std::floor(tx + 0.5)), int(std::floor(ty + 0.5)), tw, th);

    const QImage image = e.pintura();
    QVERIFY(cuenta(image, area, texto) > 0);
    if (ausente)
        QCOMPARE(cuenta(image, area, ausente), 0);
}

void tst_ContenedorX::textThatDoesNotFit()
{
    Escena e;
    const QFontMetrics metrics(e.cont->font());
    const int cw = metrics.horizontalAdvance(QLatin1Char('W'));
    const int th = metrics.height();
    // Too narrow for "ABC" on one line, wide enough for a column of W: printed downwards.
    const Hijo columna = e.hijo(QStringLiteral("A"), 10, 10, cw + 5, 3 * th + 10, 0, 0xFFFFFF);
    columna->setTip(QStringLiteral("ABC"));
    // The same column in a child too low for three lines: not printed at all.
    const Hijo bajo = e.hijo(QStringLiteral("B"), 100, 10, cw + 5, 3 * th, 0, 0xFFFFFF);
    bajo->setTip(QStringLiteral("ABC"));
    e.cont->refrescar();
    QVERIFY(metrics.horizontalAdvance(QStringLiteral("ABC")) > cw + 1);

    const QImage image = e.pintura();
    const double ah = 3 * th + 10 - 4;
    const int top = int(std::floor(12 + 2 + (ah - 3 * th) / 2 + 0.5));
    const int left = int(std::floor(12 + 2 + (cw + 1 - cw) / 2.0 + 0.5));
    for (int line = 0; line < 3; ++line)
        QVERIFY2(cuenta(image, QRect(left, top + line * th, cw, th), black) > 0,
                 qPrintable(QString::number(line)));
    QCOMPARE(cuenta(image, QRect(102, 12, cw + 5, 3 * th), black), 0);
}

void tst_ContenedorX::childContainersAndPictures()
{
    ErrorCatcher errors;
    QTemporaryDir dir;
    QImage quad(2, 2, QImage::Format_RGB32);
    quad.setPixel(0, 0, qRgb(255, 0, 0));
    quad.setPixel(1, 0, qRgb(0, 255, 0));
    quad.setPixel(0, 1, qRgb(0, 0, 255));
    quad.setPixel(1, 1, qRgb(255, 255, 0));
    const QString file = dir.filePath(QStringLiteral("quad.png"));
    QVERIFY(quad.save(file));
    auto imagen = std::make_shared<Imagen>();
    imagen->setArchivo(file);

    Escena e;
    const Hijo foto = e.hijo(QStringLiteral("F"), 10, 10, 40, 30);
    foto->setImagen(imagen);
    const Hijo nave = e.hijo(QStringLiteral("C"), 100, 10, 120, 60);
    nave->setPuedeContener(true);
    nave->setTip(QStringLiteral("T"));
    e.cont->refrescar();

    // The picture is stretched into the child's box: one colour per quarter.
    QImage image = e.pintura();
    QCOMPARE(image.pixel(22, 19), qRgb(255, 0, 0));
    QCOMPARE(image.pixel(42, 19), qRgb(0, 255, 0));
    QCOMPARE(image.pixel(22, 34), qRgb(0, 0, 255));
    QCOMPARE(image.pixel(42, 34), qRgb(255, 255, 0));

    // A child container: grey frame, grey tip at its top left; the tip turns black when selected.
    const QFontMetrics metrics(e.cont->font());
    const QRect tip(102 + 2, 12 + 2, metrics.horizontalAdvance(QStringLiteral("T")), metrics.height());
    QCOMPARE(image.pixel(102, 12), grey);
    QCOMPARE(image.pixel(102 + 119, 12 + 59), grey);
    QVERIFY(cuenta(image, tip, grey) > 0);
    QCOMPARE(cuenta(image, tip, black), 0);

    e.cont->seleccionar(QStringLiteral("C"));
    e.cont->seleccionar(QStringLiteral("F"));
    image = e.pintura();
    QVERIFY(cuenta(image, tip, black) > 0);
    QCOMPARE(image.pixel(102, 12), grey);
    QVERIFY(cuenta(image, QRect(14, 14, 36, 26), black) > 20); // hatch over the picture
    QVERIFY(errors.messages().isEmpty());
}

void tst_ContenedorX::viewport()
{
    Escena e;
    e.hijo(QStringLiteral("A"), 10, 10, 40, 30);
    e.hijo(QStringLiteral("G"), 100, 0, 150, 140); // overhangs both sides of the viewport below
    e.raiz->setTip(QStringLiteral("R"));

    // A new container shows only its object's tip until it is told what is visible.
    ContenedorX nuevo(&e.frame);
    nuevo.setObjeto(e.raiz);
    QImage image = nuevo.grab().toImage();
    QCOMPARE(image.pixel(31, 26), white);
    const QFontMetrics metrics(nuevo.font());
    QVERIFY(cuenta(image, QRect(2, 2, metrics.horizontalAdvance(QLatin1Char('R')), metrics.height()), grey)
            > 0);

    nuevo.setViewPort(0, 0, 300, 200);
    image = nuevo.grab().toImage();
    QCOMPARE(image.pixel(31, 26), red);
    QCOMPARE(image.pixel(150, 70), red);

    // Edges count as inside; a child wider and taller than the viewport is skipped.
    nuevo.setViewPort(120, 20, 200, 100);
    image = nuevo.grab().toImage();
    QCOMPARE(image.pixel(150, 70), white);
    nuevo.setViewPort(52, 20, 200, 100); // A's right edge 12 + 40 touches the left bound
    image = nuevo.grab().toImage();
    QCOMPARE(image.pixel(31, 26), red);
}

void tst_ContenedorX::sizeFit_data()
{
    QTest::addColumn<QSize>("antes");
    QTest::addColumn<QSize>("despues");

    // No children at escala 1: 302 x 152 is needed; the control shrinks only when 100 too large.
    QTest::newRow("too small") << QSize(250, 100) << QSize(302, 152);
    QTest::newRow("within the slack") << QSize(402, 252) << QSize(402, 252);
    QTest::newRow("one past the slack") << QSize(403, 253) << QSize(302, 152);
    QTest::newRow("exact") << QSize(302, 152) << QSize(302, 152);
    QTest::newRow("mixed") << QSize(350, 600) << QSize(350, 152);
}

void tst_ContenedorX::sizeFit()
{
    QFETCH(QSize, antes);
    QFETCH(QSize, despues);

    Escena e;
    e.cont->resize(antes);
    e.frame.calls.clear();
    e.cont->refrescar();
    QCOMPARE(e.cont->size(), despues);
    QCOMPARE(e.frame.calls, antes == despues ? QStringList() : QStringList { QStringLiteral("Resize") });

    // A child whose right edge needs 56 less than the width keeps it; 101 less shrinks it.
    e.cont->resize(500, 152);
    const Hijo o = e.hijo(QStringLiteral("A"), 300, 0, 140, 10);
    e.cont->refrescar();
    QCOMPARE(e.cont->width(), 500);
    o->setAncho(95);
    e.cont->refrescar();
    QCOMPARE(e.cont->width(), 399);

    // The scale multiplies the needed size.
    e.cont->setEscala(2);
    QCOMPARE(e.cont->size(), QSize(395 * 2 + 4, 148 * 2 + 4));
}

void tst_ContenedorX::childContainersGrow()
{
    ErrorCatcher errors;
    Escena e;
    const Hijo nave = e.hijo(QStringLiteral("C"), 0, 0, 50, 20);
    nave->setPuedeContener(true);
    auto nieto = std::make_shared<Objeto>();
    nieto->setCodigo(QStringLiteral("N"));
    nieto->setX(120);
    nieto->setAncho(10);
    nieto->setAlto(10);
    nave->getObjetos()->add(nieto);

    // 4 / escala is added: at escala 8 that is half a unit, and 130.5 rounds to the even 130.
    e.cont->setEscala(8);
    QCOMPARE(nave->getAncho(), qint16(130));
    QCOMPARE(nave->getAlto(), qint16(40));
    QCOMPARE(e.cont->width(), 298 * 8 + 4);

    e.cont->setEscala(1);
    QCOMPARE(nave->getAncho(), qint16(134));
    QCOMPARE(nave->getAlto(), qint16(44));

    // Never shrunk.
    nave->setAncho(500);
    e.cont->refrescar();
    QCOMPARE(nave->getAncho(), qint16(500));
    QVERIFY(errors.messages().isEmpty());
}

void tst_ContenedorX::clicks()
{
    ErrorCatcher errors;
    Escena e;
    const Hijo a = e.hijo(QStringLiteral("A"), 10, 10, 40, 30);
    const Hijo b = e.hijo(QStringLiteral("B"), 30, 20, 40, 30);
    const Hijo c = e.hijo(QStringLiteral("C"), 200, 100, 30, 30);
    e.cont->refrescar();
    e.frame.calls.clear();
    const Objetos &seleccion = *e.cont->getSeleccionados();

    // In the overlap the earlier child wins.
    QTest::mouseClick(e.cont, Qt::LeftButton, {}, QPoint(40, 30));
    QCOMPARE(codigos(seleccion), QStringList { "A" });
    QCOMPARE(e.frame.calls, (QStringList { "setActive(A)", "setActive(A)" }));

    // Right and bottom edges belong to the child, one pixel further does not.
    QTest::mouseClick(e.cont, Qt::LeftButton, {}, QPoint(232, 132));
    QTest::mouseClick(e.cont, Qt::LeftButton, {}, QPoint(233, 133));
    QCOMPARE(e.log(), (QStringList { "clicked(A,false)", "clicked(C,false)", "clicked(R,false)" }));
    QCOMPARE(seleccion.count(), 0);

    // Ctrl toggles and reports several; Shift+Ctrl is a plain click.
    e.mapa.clear();
    QTest::mouseClick(e.cont, Qt::LeftButton, {}, QPoint(20, 20));
    QTest::mouseClick(e.cont, Qt::LeftButton, ctrl, QPoint(210, 110));
    QTest::mouseClick(e.cont, Qt::LeftButton, shift, QPoint(60, 45));
    QCOMPARE(codigos(seleccion), (QStringList { "A", "C", "B" }));
    QVERIFY(a->getSeleccionado() && b->getSeleccionado() && c->getSeleccionado());
    QTest::mouseClick(e.cont, Qt::LeftButton, ctrl, QPoint(20, 20));
    QCOMPARE(codigos(seleccion), (QStringList { "C", "B" }));
    QVERIFY(!a->getSeleccionado());
    QTest::mouseClick(e.cont, Qt::LeftButton, shift | ctrl, QPoint(20, 20));
    QCOMPARE(codigos(seleccion), QStringList { "A" });
    // Ctrl on empty space keeps the selection (a band drawn from there toggles into it).
    QTest::mouseClick(e.cont, Qt::LeftButton, ctrl, QPoint(300, 140));
    QCOMPARE(codigos(seleccion), QStringList { "A" });
    QCOMPARE(e.log(),
             (QStringList { "clicked(A,false)", "clicked(C,true)", "clicked(B,true)", "clicked(A,true)",
                            "clicked(A,false)", "clicked(R,true)" }));

    // A right-click selects an unselected child alone; inside a group it keeps the group.
    e.mapa.clear();
    QTest::mouseClick(e.cont, Qt::RightButton, {}, QPoint(210, 110));
    QCOMPARE(codigos(seleccion), QStringList { "C" });
    QTest::mouseClick(e.cont, Qt::LeftButton, ctrl, QPoint(20, 20));
    QTest::mouseClick(e.cont, Qt::RightButton, {}, QPoint(210, 110));
    QCOMPARE(codigos(seleccion), (QStringList { "C", "A" }));
    QCOMPARE(e.log(), (QStringList { "rightClicked(C,false)", "clicked(A,true)", "rightClicked(C,true)" }));

    // A press inside the group keeps it (so it can be dragged); the release without a drag narrows it.
    QTest::mousePress(e.cont, Qt::LeftButton, {}, QPoint(20, 20));
    QCOMPARE(seleccion.count(), 2);
    QTest::mouseRelease(e.cont, Qt::LeftButton, {}, QPoint(20, 20));
    QCOMPARE(codigos(seleccion), QStringList { "A" });
    QVERIFY(!c->getSeleccionado());

    // The frame's answer to "setActive" becomes the current object.
    e.frame.callBack = true;
    e.mapa.clear();
    QTest::mouseClick(e.cont, Qt::LeftButton, {}, QPoint(210, 110));
    QVERIFY(c->getActivo());
    e.frame.answerNone = true;
    QTest::mouseClick(e.cont, Qt::LeftButton, {}, QPoint(210, 110));
    QCOMPARE(e.log(), (QStringList { "clicked(C,false)", "clicked(none,false)" }));
    QVERIFY(errors.messages().isEmpty());
}

void tst_ContenedorX::inactiveFrame()
{
    ErrorCatcher errors;
    Escena e;
    const Hijo a = e.hijo(QStringLiteral("A"), 10, 10, 40, 30);
    e.frame.setPActive(false);
    QTest::mousePress(e.cont, Qt::LeftButton, {}, QPoint(200, 100));
    mover(e.cont, QPointF(300, 140));
    QVERIFY(e.caja(QStringLiteral("box"))->isHidden());
    QTest::mouseRelease(e.cont, Qt::LeftButton, {}, QPoint(300, 140));
    QTest::mouseClick(e.cont, Qt::LeftButton, {}, QPoint(20, 20));
    QVERIFY(e.log().isEmpty());
    QVERIFY(a->getSeleccionado()); // the press still selects
    QVERIFY(errors.messages().isEmpty());
}

void tst_ContenedorX::shiftDragMoves_data()
{
    QTest::addColumn<float>("escala");
    QTest::addColumn<int>("recorrido");
    QTest::addColumn<int>("x1");
    QTest::addColumn<int>("x2");

    // D1 at X 10 and D2 at X 11; the pointer travels right, the move rounds ties to even.
    QTest::newRow("escala 2, 30 units") << 2.0f << 30 << 25 << 26;
    QTest::newRow("escala 4, 30 units") << 4.0f << 30 << 18 << 18;
    QTest::newRow("escala 1, back 5") << 1.0f << -5 << 5 << 6;
}

void tst_ContenedorX::shiftDragMoves()
{
    QFETCH(float, escala);
    QFETCH(int, recorrido);
    QFETCH(int, x1);
    QFETCH(int, x2);

    ErrorCatcher errors;
    Escena e;
    DragDriver driver;
    const Hijo d1 = e.hijo(QStringLiteral("D1"), 10, 10, 10, 10);
    const Hijo d2 = e.hijo(QStringLiteral("D2"), 11, 30, 10, 10);
    e.cont->setEscala(escala);
    e.cont->seleccionarTodos();

    const QPoint press(int(12 * escala) + 2, int(12 * escala) + 2);
    QTest::mousePress(e.cont, Qt::LeftButton, shift, press);
    mover(e.cont, press + QPoint(3, 0), Qt::LeftButton, shift);
    QCOMPARE(driver.started(), 0);
    mover(e.cont, press + QPoint(6, 0), Qt::LeftButton, shift);
    QCOMPARE(driver.started(), 1);
    QCOMPARE(driver.text(), QStringLiteral("Dframe"));
    QCOMPARE(driver.allowed(), Qt::CopyAction | Qt::MoveAction);

    // With Shift the outline boxes show at once, at the pointer's offset from the press.
    Dummy *caja1 = e.caja(QStringLiteral("D1c"));
    Dummy *caja2 = e.caja(QStringLiteral("D2c"));
    QVERIFY(caja1 && caja2 && caja1->isVisible());
    QCOMPARE(caja1->geometry(),
             QRect(int(10 * escala) + 2 + 6, int(10 * escala) + 2, int(10 * escala), int(10 * escala)));
    const QPoint destino = press + QPoint(recorrido, 0);
    QCOMPARE(driver.move(e.cont, destino, shift), Qt::MoveAction);
    QCOMPARE(caja2->pos(), QPoint(int(std::floor(11 * escala + 0.5)) + 2 + recorrido, int(30 * escala) + 2));
    QCOMPARE(d1->getX(), qint16(10)); // nothing moves before the drop

    QCOMPARE(driver.drop(e.cont, destino, shift), Qt::MoveAction);
    QCOMPARE(d1->getX(), qint16(x1));
    QCOMPARE(d2->getX(), qint16(x2));
    QCOMPARE(d1->getY(), qint16(10));
    QCOMPARE(e.log(), (QStringList { "moved(D1)", "moved(D2)" }));

    driver.finish(Qt::MoveAction);
    borrarCajas();
    QVERIFY(!e.caja(QStringLiteral("D1c")) && !e.caja(QStringLiteral("D2c")));
    QVERIFY(e.caja(QStringLiteral("box")));
    QVERIFY(errors.messages().isEmpty());
}

void tst_ContenedorX::lockedDrop()
{
    ErrorCatcher errors;
    Escena e;
    DragDriver driver;
    const Hijo d1 = e.hijo(QStringLiteral("D1"), 10, 10, 10, 10);
    e.cont->seleccionar(QStringLiteral("D1"));
    e.cont->setBloqueo(true);
    QTest::mousePress(e.cont, Qt::LeftButton, shift, QPoint(15, 15));
    mover(e.cont, QPointF(40, 15), Qt::LeftButton, shift);
    // The boxes still move under the lock; the drop does nothing.
    QCOMPARE(driver.move(e.cont, QPoint(60, 15), shift), Qt::MoveAction);
    QCOMPARE(e.caja(QStringLiteral("D1c"))->pos(), QPoint(12 + 45, 12));
    QCOMPARE(driver.drop(e.cont, QPoint(60, 15), shift), Qt::IgnoreAction);
    QCOMPARE(d1->getX(), qint16(10));
    QVERIFY(e.log().isEmpty());
    driver.finish();
    borrarCajas();
    QVERIFY(!e.caja(QStringLiteral("D1c")));
    QVERIFY(errors.messages().isEmpty());
}

void tst_ContenedorX::plainDragAndForeignDrops()
{
    ErrorCatcher errors;
    Escena e;
    DragDriver driver;
    const Hijo d1 = e.hijo(QStringLiteral("D1"), 10, 10, 10, 10);
    const Hijo d2 = e.hijo(QStringLiteral("D2"), 100, 10, 10, 10);

    // Without Shift: no boxes; dropped on D2 it is the map's business.
    QTest::mousePress(e.cont, Qt::LeftButton, {}, QPoint(15, 15));
    mover(e.cont, QPointF(30, 15));
    QCOMPARE(driver.started(), 1);
    QVERIFY(!e.caja(QStringLiteral("D1c")));
    QCOMPARE(driver.move(e.cont, QPoint(105, 15)), Qt::CopyAction);
    QCOMPARE(driver.drop(e.cont, QPoint(105, 15), ctrl), Qt::CopyAction);
    driver.finish(Qt::CopyAction);
    QCOMPARE(e.log(), QStringList { "droped(Dframe,D2,2)" });
    QCOMPARE(d1->getX(), qint16(10));

    // A drag from elsewhere is always a copy, and a Shift-drop of it does nothing.
    e.mapa.clear();
    QMimeData texto;
    texto.setText(QStringLiteral("Lfuera"));
    QCOMPARE(DragDriver::moveData(e.cont, QPoint(50, 50), &texto, shift), Qt::CopyAction);
    QCOMPARE(DragDriver::dropData(e.cont, QPoint(50, 50), &texto, shift), Qt::IgnoreAction);
    QCOMPARE(DragDriver::dropData(e.cont, QPoint(50, 50), &texto), Qt::CopyAction);
    QCOMPARE(e.log(), QStringList { "droped(Lfuera,R,0)" });

    // Data without text is refused, and nothing is asked of the frame.
    e.mapa.clear();
    e.frame.calls.clear();
    QMimeData binario;
    binario.setData(QStringLiteral("application/octet-stream"), QByteArray("\x01\x02", 2));
    QCOMPARE(DragDriver::moveData(e.cont, QPoint(15, 15), &binario, shift), Qt::IgnoreAction);
    QCOMPARE(DragDriver::dropData(e.cont, QPoint(15, 15), &binario), Qt::IgnoreAction);
    QVERIFY(e.log().isEmpty());
    QVERIFY(e.frame.calls.isEmpty());
    QVERIFY(errors.messages().isEmpty());
}

void tst_ContenedorX::boxesGrowScrollAndFollowShift()
{
    ErrorCatcher errors;
    Escena e;
    DragDriver driver;
    e.hijo(QStringLiteral("D1"), 10, 10, 10, 10);
    e.cont->setViewPort(0, 0, 400, 300);
    QTest::mousePress(e.cont, Qt::LeftButton, {}, QPoint(15, 15));
    mover(e.cont, QPointF(100, 100));
    QVERIFY(!e.caja(QStringLiteral("D1c")));

    // Shift pressed during the drag: the boxes appear where the pointer is...
    e.frame.calls.clear();
    driver.move(e.cont, QPoint(200, 150), shift);
    Dummy *caja = e.caja(QStringLiteral("D1c"));
    QVERIFY(caja && caja->isVisible());
    QCOMPARE(caja->pos(), QPoint(12 + 185, 12 + 135));
    QVERIFY(e.frame.calls.filter(QStringLiteral("Scroll")).isEmpty());
    // ...hide when it is released, and show again with it.
    driver.move(e.cont, QPoint(210, 150));
    QVERIFY(caja->isHidden());
    driver.move(e.cont, QPoint(220, 150), shift);
    QVERIFY(caja->isVisible());
    QCOMPARE(caja->pos(), QPoint(12 + 205, 12 + 135));

    // A Shift-drag near the viewport's edges scrolls as a plain one does.
    e.frame.calls.clear();
    driver.move(e.cont, QPoint(39, 150), shift);
    QCOMPARE(e.frame.calls.filter(QStringLiteral("Scroll")), QStringList { "hScroll(-1)" });

    // Boxes dragged past the right edge grow the control to their right edge plus 100.
    e.frame.calls.clear();
    driver.move(e.cont, QPoint(600, 150), shift);
    QCOMPARE(e.cont->width(), 20 + 2 + 585 + 100);
    QCOMPARE(e.frame.calls.filter(QStringLiteral("Resize")), QStringList { "Resize" });
    driver.finish();
    borrarCajas();
    QVERIFY(!e.caja(QStringLiteral("D1c")));
    QVERIFY(errors.messages().isEmpty());
}

void tst_ContenedorX::alignAndEqualise()
{
    ErrorCatcher errors;
    Escena e;
    const Hijo a = e.hijo(QStringLiteral("A"), 10, 10, 20, 20);
    const Hijo b = e.hijo(QStringLiteral("B"), 50, 70, 30, 10);
    const Hijo ref = e.hijo(QStringLiteral("Z"), 5, 40, 400, 300);
    e.cont->refrescar();

    // Nothing selected: nothing happens, not even with no reference.
    e.cont->alinearHorizontal(nullptr);
    e.cont->distribuirHorizontal();
    QVERIFY(e.log().isEmpty());
    QVERIFY(errors.messages().isEmpty());

    e.cont->seleccionar(QStringLiteral("B"));
    e.cont->seleccionar(QStringLiteral("A"));
    e.cont->alinearHorizontal(ref);
    QCOMPARE(a->getY(), qint16(40));
    QCOMPARE(b->getY(), qint16(40));
    e.cont->alinearVertical(ref);
    QCOMPARE(a->getX(), qint16(5));
    QCOMPARE(b->getX(), qint16(5));
    QCOMPARE(e.log(), (QStringList { "moved(B)", "moved(A)", "moved(B)", "moved(A)" }));

    // Equal size, the reference itself selected too; the control grows to the new sizes.
    e.cont->seleccionar(QStringLiteral("Z"));
    e.mapa.clear();
    e.cont->igualarDimension(ref);
    QCOMPARE(e.log(), (QStringList { "moved(B)", "moved(A)", "moved(Z)" }));
    QCOMPARE(QSize(a->getAncho(), a->getAlto()), QSize(400, 300));
    QCOMPARE(e.cont->size(), QSize(405 + 4, 340 + 4));

    // A child container is grown back around its own children.
    const Hijo nave = e.hijo(QStringLiteral("C"), 0, 0, 200, 100);
    nave->setPuedeContener(true);
    auto nieto = std::make_shared<Objeto>();
    nieto->setCodigo(QStringLiteral("N"));
    nieto->setAncho(150);
    nieto->setAlto(50);
    nave->getObjetos()->add(nieto);
    e.cont->deseleccionarTodos();
    e.cont->seleccionar(QStringLiteral("C"));
    e.cont->igualarDimension(a);
    QCOMPARE(QSize(nave->getAncho(), nave->getAlto()), QSize(400, 300));
    b->setAncho(40);
    b->setAlto(30);
    e.cont->igualarDimension(b);
    QCOMPARE(QSize(nave->getAncho(), nave->getAlto()), QSize(154, 54));
    QVERIFY(errors.messages().isEmpty());
}

void tst_ContenedorX::distribute_data()
{
    QTest::addColumn<QList<int>>("posiciones");
    QTest::addColumn<int>("largo");
    QTest::addColumn<QList<int>>("resultado");
    QTest::addColumn<QStringList>("movidos");

    // The interior ones start gap units after the previous one's last unit: 99, not 100.
    QTest::newRow("three") << QList<int> { 0, 50, 200 } << 20 << QList<int> { 0, 99, 200 }
                           << QStringList { "moved(1)" };
    QTest::newRow("unsorted") << QList<int> { 200, 0, 50 } << 20 << QList<int> { 200, 0, 99 }
                              << QStringList { "moved(2)" };
    QTest::newRow("four, gap 70") << QList<int> { 20, 10, 0, 300 } << 30 << QList<int> { 198, 99, 0, 300 }
                                  << QStringList { "moved(1)", "moved(0)" };
    QTest::newRow("gap 14.5 rounds down")
        << QList<int> { 0, 10, 31 } << 1 << QList<int> { 0, 14, 31 } << QStringList { "moved(1)" };
    QTest::newRow("gap 15.5 rounds up")
        << QList<int> { 0, 10, 33 } << 1 << QList<int> { 0, 16, 33 } << QStringList { "moved(1)" };
    QTest::newRow("overlapping: negative gap")
        << QList<int> { 0, 5, 10 } << 40 << QList<int> { 0, 4, 10 } << QStringList { "moved(1)" };
    QTest::newRow("evenly spaced still moves")
        << QList<int> { 0, 29, 58 } << 10 << QList<int> { 0, 28, 58 } << QStringList { "moved(1)" };
    QTest::newRow("two do nothing") << QList<int> { 0, 70 } << 20 << QList<int> { 0, 70 } << QStringList();
}

void tst_ContenedorX::distribute()
{
    QFETCH(QList<int>, posiciones);
    QFETCH(int, largo);
    QFETCH(QList<int>, resultado);
    QFETCH(QStringList, movidos);

    for (const bool horizontal : { true, false }) {
        ErrorCatcher errors;
        Escena e;
        std::vector<Hijo> hijos;
        for (int i = 0; i < posiciones.size(); ++i) {
            const int p = posiciones.at(i);
            hijos.push_back(horizontal ? e.hijo(QString::number(i), p, 7, largo, 5)
                                       : e.hijo(QString::number(i), 7, p, 5, largo));
        }
        e.cont->refrescar();
        e.cont->seleccionarTodos();
        horizontal ? e.cont->distribuirHorizontal() : e.cont->distribuirVertical();
        for (int i = 0; i < posiciones.size(); ++i) {
            const Hijo &o = hijos[size_t(i)];
            QCOMPARE(horizontal ? o->getX() : o->getY(), qint16(resultado.at(i)));
            QCOMPARE(horizontal ? o->getY() : o->getX(), qint16(7));
        }
        QCOMPARE(e.log(), movidos);
        QVERIFY(errors.messages().isEmpty());
    }
}

void tst_ContenedorX::distributeOrdersEqualPositions()
{
    Escena e;
    const Hijo e1 = e.hijo(QStringLiteral("E1"), 0, 0, 10, 10);
    const Hijo e2 = e.hijo(QStringLiteral("E2"), 100, 0, 10, 10);
    const Hijo e3 = e.hijo(QStringLiteral("E3"), 100, 0, 10, 10);
    const Hijo e4 = e.hijo(QStringLiteral("E4"), 300, 0, 10, 10);
    for (const char *codigo : { "E1", "E2", "E3", "E4" })
        e.cont->seleccionar(QLatin1String(codigo));

    // Equal positions come in reverse order of selection: E3 before E2. Gap (309 + 1 - 40) / 3 = 90.
    e.cont->distribuirHorizontal();
    QCOMPARE(e3->getX(), qint16(99));
    QCOMPARE(e2->getX(), qint16(198));
    QCOMPARE(e.log(), (QStringList { "moved(E3)", "moved(E2)" }));

    // Many objects: the size fitted after every move equals a fit from scratch.
    Escena grande;
    for (int i = 0; i < 500; ++i)
        grande.hijo(QString::number(i), (i * 7919) % 3000, (i * 104729) % 2000, 5 + i % 40, 5 + i % 30);
    grande.cont->refrescar();
    grande.cont->seleccionarTodos();
    grande.cont->distribuirVertical();
    grande.cont->distribuirHorizontal();
    QCOMPARE(grande.mapa.calls().size(), size_t(2 * 498));
    const QSize despues = grande.cont->size();
    grande.frame.calls.clear();
    grande.cont->refrescar();
    QCOMPARE(grande.cont->size(), despues);
    QVERIFY(grande.frame.calls.isEmpty());
}

void tst_ContenedorX::badInput()
{
    ErrorCatcher errors;
    Escena e;
    DragDriver driver;
    // Negative and zero sizes are drawn, hit and distributed without harm.
    const Hijo negativo = e.hijo(QStringLiteral("N"), 50, 50, -20, -10, 2);
    const Hijo cero = e.hijo(QStringLiteral("Z"), 60, 60, 0, 0, 3);
    const Hijo normal = e.hijo(QStringLiteral("A"), 100, 50, 20, 20);
    e.cont->refrescar();
    e.pintura();
    QTest::mouseClick(e.cont, Qt::LeftButton, {}, QPoint(62, 62));
    QCOMPARE(e.log(), QStringList { "clicked(Z,false)" });
    e.cont->seleccionarTodos();
    e.cont->distribuirHorizontal();
    e.cont->distribuirVertical();
    e.pintura();
    QVERIFY2(errors.messages().isEmpty(), qPrintable(errors.messages().join(QLatin1Char('\n'))));

    // An object the host took out of the collection while it was selected.
    e.cont->deseleccionarTodos();
    e.cont->seleccionar(QStringLiteral("A"));
    e.raiz->getObjetos()->remove(normal);
    e.pintura();
    e.cont->alinearVertical(cero);
    QCOMPARE(normal->getX(), cero->getX());
    e.cont->deseleccionarTodos();
    QVERIFY(!normal->getSeleccionado());

    // A child of another object: erased and redrawn with a message each, and still aligned.
    auto ajeno = std::make_shared<Objeto>();
    ajeno->setCodigo(QStringLiteral("X"));
    ajeno->setPadre(QStringLiteral("OTRO"));
    e.cont->getSeleccionados()->add(ajeno);
    e.mapa.clear();
    e.cont->alinearHorizontal(cero);
    QCOMPARE(errors.messages(),
             (QStringList { "ContenedorX.limpiar->No se encontró padre del objeto en primer nivel",
                            "ContenedorX.dibujarNuevo->No se encontró padre del objeto en primer nivel" }));
    QCOMPARE(e.log(), QStringList { "moved(X)" });
    QCOMPARE(ajeno->getY(), cero->getY());
    e.cont->getSeleccionados()->remove(ajeno);
    errors.clear();

    // Scale 0 and negative: nothing is ever hit, nothing fails (the control shrinks to nothing,
    // so the clicks go straight to it).
    e.mapa.clear();
    for (const float escala : { 0.0f, -1.0f }) {
        e.cont->setEscala(escala);
        e.pintura();
        for (const QEvent::Type type : { QEvent::MouseButtonPress, QEvent::MouseButtonRelease }) {
            QMouseEvent event(type, QPointF(2, 2), e.cont->mapToGlobal(QPointF(2, 2)), Qt::LeftButton,
                              type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton,
                              Qt::NoModifier);
            QCoreApplication::sendEvent(e.cont, &event);
        }
    }
    QCOMPARE(e.log(), (QStringList { "clicked(R,false)", "clicked(R,false)" }));
    QVERIFY2(errors.messages().isEmpty(), qPrintable(errors.messages().join('|')));

    // A drop measured at scale 0 cannot be committed.
    e.cont->setEscala(1);
    const Hijo m = e.hijo(QStringLiteral("M"), 150, 150, 10, 10);
    e.cont->refrescar();
    e.cont->seleccionar(QStringLiteral("M"));
    QTest::mousePress(e.cont, Qt::LeftButton, shift, QPoint(155, 155));
    mover(e.cont, QPointF(190, 155), Qt::LeftButton, shift);
    QCOMPARE(driver.started(), 1);
    e.cont->setEscala(0);
    QCOMPARE(driver.drop(e.cont, QPoint(190, 155), shift), Qt::MoveAction);
    QCOMPARE(errors.messages(), QStringList { "ContenedorX.dragDrop->Overflow" });
    QCOMPARE(m->getX(), qint16(150));
    driver.finish();
}

void tst_ContenedorX::overflowAfterMove()
{
    ErrorCatcher errors;
    Escena e;
    DragDriver driver;
    const Hijo primero = e.hijo(QStringLiteral("P"), 10, 10, 10, 10);
    const Hijo lejano = e.hijo(QStringLiteral("L"), 32000, 10, 10, 10);
    const Hijo ultimo = e.hijo(QStringLiteral("U"), 40, 10, 10, 10);
    e.cont->refrescar();
    e.cont->seleccionarTodos();

    QTest::mousePress(e.cont, Qt::LeftButton, shift, QPoint(15, 15));
    mover(e.cont, QPointF(40, 15), Qt::LeftButton, shift);
    QCOMPARE(driver.drop(e.cont, QPoint(1015, 15), shift), Qt::MoveAction);
    driver.finish();

    // The first moved, the one that would leave 16 bits and everything after it stayed.
    // The boxes' right edge no longer fits 16 bits either.
    QCOMPARE(errors.messages(),
             (QStringList { "ContenedorX.dragOver->Overflow", "ContenedorX.dragDrop->Overflow" }));
    QCOMPARE(primero->getX(), qint16(1010));
    QCOMPARE(lejano->getX(), qint16(32000));
    QCOMPARE(ultimo->getX(), qint16(40));
    QCOMPARE(e.log(), QStringList { "moved(P)" });

    // Distribution stops the same way.
    errors.clear();
    e.mapa.clear();
    lejano->setX(5);
    lejano->setAncho(32766); // its last unit is 32770, and the gap comes out as -1
    primero->setX(10);
    primero->setAncho(1);
    ultimo->setAncho(1);
    e.cont->distribuirHorizontal();
    QCOMPARE(errors.messages(), QStringList { "ContenedorX.IContenedorX_distribuirHorizontal->Overflow" });
    QCOMPARE(primero->getX(), qint16(10));
    QVERIFY(e.log().isEmpty());
}

void tst_ContenedorX::duplicateCodesInSelection()
{
    ErrorCatcher errors;
    Escena e;
    DragDriver driver;
    e.hijo(QStringLiteral("A"), 10, 10, 10, 10);
    const Hijo b = e.hijo(QStringLiteral("B"), 40, 10, 10, 10);
    e.cont->seleccionarTodos();
    b->setCodigo(QStringLiteral("A")); // the host renamed it while selected

    QTest::mousePress(e.cont, Qt::LeftButton, shift, QPoint(15, 15));
    mover(e.cont, QPointF(40, 15), Qt::LeftButton, shift);
    QCOMPARE(
        errors.messages(),
        QStringList { "ContenedorX.dibujarOtraCaja->This key is already associated with an element of this "
                      "collection" });
    driver.finish();
    borrarCajas();
    QCOMPARE(e.cont->findChildren<Dummy *>().size(), 1); // only the band is left
    QCOMPARE(errors.messages().last(), QStringLiteral("ContenedorX.borrarOtraCaja->Control not found"));
}

void tst_ContenedorX::missingFrame()
{
    // A container without a frame, and one whose frame lacks the members it calls.
    ErrorCatcher errors;
    RecordingMapa mapa;
    auto raiz = std::make_shared<Objeto>();
    raiz->setPuedeContener(true);
    ContenedorX suelto;
    suelto.setRoot(&mapa);
    suelto.setObjeto(raiz);
    QCOMPARE(errors.messages(),
             QStringList { "ContenedorX.validarControl->Object variable or With block variable not set" });
    errors.clear();
    QTest::mouseClick(&suelto, Qt::LeftButton, {}, QPoint(5, 5));
    QCOMPARE(errors.messages(),
             (QStringList { "ContenedorX.MouseDown->Object variable or With block variable not set",
                            "ContenedorX.MouseUp->Object variable or With block variable not set" }));

    QWidget plain;
    auto *cont = new ContenedorX(&plain);
    cont->setObjeto(raiz);
    errors.clear();
    QTest::mouseClick(cont, Qt::LeftButton, {}, QPoint(5, 5));
    QCOMPARE(errors.messages(),
             (QStringList { "ContenedorX.MouseDown->Object doesn't support this property or method",
                            "ContenedorX.MouseUp->Object doesn't support this property or method" }));
    QVERIFY(mapa.calls().empty());

    // Unbound: the operations say what is missing.
    ContenedorX vacio;
    errors.clear();
    vacio.seleccionarTodos();
    vacio.setActivo(raiz, true);
    vacio.grab();
    QCOMPARE(errors.messages(),
             (QStringList {
                 "ContenedorX.IContenedorX_seleccionarTodos->Object variable or With block variable not set",
                 "ContenedorX.IContenedorX_setActivo->Object variable or With block variable not set" }));
}

QTEST_MAIN(tst_ContenedorX)
#include "tst_contenedorx.moc"
