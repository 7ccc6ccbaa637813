#include <tarvonix/containers/contenedorx.h>
#include <tarvonix/model/imagen.h>
#include <tarvonix/model/objeto.h>
#include <tarvonix/model/objetos.h>
#include <tarvonix/widgets/dummy.h>

#include "dragdriver.h"
#include "errorcatcher.h"
#include "pixels.h"
#include "recordingmapa.h"
#include "testframe.h"

#include <QApplication>
#include <QMimeData>
#include <QMouseEvent>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using namespace tarvonix;

namespace {

constexpr QRgb white = 0xFFFFFFFF, black = 0xFF000000, red = 0xFFFF0000, grey = 0xFFC0C0C0;
constexpr Qt::KeyboardModifiers shift = Qt::ShiftModifier, ctrl = Qt::ControlModifier;
using Hijo = std::shared_ptr<Objeto>;

// A container in a recording frame, bound to "R" (white, may contain, tip "R") at escala 1 with a
// viewport larger than anything drawn: a child at (X, Y) is drawn from (X + 2, Y + 2).
struct Escena
{
    Escena()
    {
        raiz->setCodigo(QStringLiteral("R"));
        raiz->setTip(QStringLiteral("R"));
        raiz->setPuedeContener(true);
        cont->setRoot(&mapa);
        cont->setObjeto(raiz);
        cont->setViewPort(0, 0, 4000, 4000);
        frame.show();
    }
    Hijo hijo(const QString &codigo, QRect r, int forma = 1, qint32 color = 0xFF)
    {
        auto o = std::make_shared<Objeto>();
        o->setCodigo(codigo);
        o->setPadre(QStringLiteral("R"));
        o->setX(qint16(r.x()));
        o->setY(qint16(r.y()));
        o->setAncho(qint16(r.width()));
        o->setAlto(qint16(r.height()));
        o->setForma(qint16(forma));
        o->setColor(color);
        raiz->getObjetos()->add(o);
        return o;
    }
    QString log() const { return mapa.log().join(QLatin1Char(' ')); }
    Dummy *caja(const QString &n) const { return cont->findChild<Dummy *>(n, Qt::FindDirectChildrenOnly); }
    void mover(QPoint p, Qt::KeyboardModifiers m = {}) const
    {
        QMouseEvent event(QEvent::MouseMove, p, cont->mapToGlobal(p), Qt::NoButton, Qt::LeftButton, m);
        QCoreApplication::sendEvent(cont, &event);
    }
    // After a drag: the outline boxes are gone, the band is left.
    bool sinCajas() const
    {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return cont->findChildren<Dummy *>() == QList { caja(QStringLiteral("box")) };
    }

    RecordingMapa mapa;
    Hijo raiz = std::make_shared<Objeto>();
    TestFrame frame;
    ContenedorX *cont = new ContenedorX(&frame);
};

// Makes a container of the child, with a child of its own whose right edge is at 150 and bottom at 50.
void conNieto(const Hijo &o)
{
    o->setPuedeContener(true);
    o->getObjetos()->add(std::make_shared<Objeto>());
    o->getObjetos()->Item(1)->setX(120);
    o->getObjetos()->Item(1)->setAncho(30);
    o->getObjetos()->Item(1)->setAlto(50);
}

struct Clic
{
    Qt::MouseButton boton;
    Qt::KeyboardModifiers teclas;
    QPoint en, hasta = {}; // with hasta: a press at en, a move to hasta and a release there
};

} // namespace

class tst_ContenedorX : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void painting();
    void viewport();
    void sizeFit_data();
    void sizeFit();
    void clicks_data();
    void clicks();
    void shiftDragMoves_data();
    void shiftDragMoves();
    void boxesFollowShiftAndForeignDrops();
    void alignAndEqualise();
    void distribute_data();
    void distribute();
    void distributeFitsAsFromScratch();
    void failures();
};

void tst_ContenedorX::painting()
{
    ErrorCatcher errors;
    QTemporaryDir dir;
    QImage quad(2, 2, QImage::Format_RGB32); // one colour per quarter
    const QRgb verde = 0xFF00FF00, azul = 0xFF0000FF, amarillo = 0xFFFFFF00, marino = 0xFF000080;
    quad.setPixel(0, 0, red);
    quad.setPixel(1, 0, verde);
    quad.setPixel(0, 1, azul);
    quad.setPixel(1, 1, amarillo);
    QVERIFY(quad.save(dir.filePath(QStringLiteral("quad.png"))));

    // Each child in a band of its own, 100 x 30 unless said; the checks are from where it is drawn.
    // A check counts the pixels of a rectangle that have a colour (from min to max), or finds a text
    // drawn from its top left, over a background.
    const QFontMetrics fm(QApplication::font());
    const int tw = fm.horizontalAdvance(QLatin1Char('H')), th = fm.height(), cw = fm.horizontalAdvance('W');
    // The tip is centred in the fill less a margin of 2, and readable on it.
    const QPoint centro(int(std::floor(2 + (96 - tw) / 2.0 + 0.5)),
                        int(std::floor(2 + (26 - th) / 2.0 + 0.5)));
    struct Px
    {
        QRect r;
        QRgb c;
        int min = 0, max = 0;
        QString texto = {};
        QRgb fondo = white;
    };
    const auto todo = [](QRect r, QRgb c) {
        return Px { r, c, r.width() * r.height(), r.width() * r.height() };
    };
    const auto texto = [](QPoint p, const QString &t, QRgb c, QRgb fondo = white) {
        return Px { { p, QSize(1, 1) }, c, 0, 0, t, fondo };
    };
    const auto rayado = [](QRect r, QRgb c) { // lines of the colour over white, neither alone
        return QList<Px> { { r, c, r.width() + 1, r.width() * (r.height() - 1) },
                           { r, white, r.width() + 1, r.width() * (r.height() - 1) } };
    };
    const QRect borde(0, 0, 100, 1), caja(4, 4, 30, 20), cuadro(5, 5, 18, 18), esquina(0, 0, 1, 1);
    const QString h = QStringLiteral("H");
    struct Dibujo
    {
        int forma;
        QByteArray estado; // c: may contain, s: selected, a: active, p: a picture
        qint32 color;
        QString tip;
        QList<Px> checks;
        QSize tamano;
    };
    QList<Dibujo> dibujos;
    const auto dibujo = [&](int forma, const char *estado, qint32 color, const QString &tip,
                            const QList<Px> &checks, QSize tamano = { 100, 30 }) {
        dibujos.append({ forma, estado, color, tip, checks, tamano });
    };
    dibujo(1, "", 0xFF, h,
           { todo(borde, black), todo(caja, red), texto(centro, h, white, red),
             todo({ 101, 31, 5, 5 }, white) });
    dibujo(2, "", 0xFF00, h,
           { todo(esquina, white), todo({ 28, 13, 10, 10 }, verde),
             texto(centro, h, white, verde) }); // pure green is dark
    // Forma 3: a square as wide as the box is high less 4, no outline, the tip 2 + 2 right of it.
    dibujo(3, "", 0x800000, h,
           { todo(esquina, white), todo(cuadro, marino), texto({ 32, centro.y() }, h, black) });
    dibujo(0, "", 0xFFFFFF, h, { todo(esquina, white), todo(caja, white), texto(centro, h, black) });
    dibujo(1, "s", 0x800000, h,
           QList<Px> { todo(borde, black), { { centro, QSize(tw, th) }, black, 1, tw * th } }
               + rayado(caja, marino));
    dibujo(3, "s", 0xFF, {}, QList { todo(esquina, black) } + rayado(cuadro, red)); // outlined when selected
    dibujo(1, "s", 0xFFFFFF, {}, rayado(caja, black));
    dibujo(1, "a", 0xFF, {}, { { borde, black, 6, 99 }, todo(caja, red) }); // dotted
    dibujo(1, "p", 0xFF, {},
           { todo({ 18, 7, 1, 1 }, red), todo({ 78, 7, 1, 1 }, verde), todo({ 18, 22, 1, 1 }, azul),
             todo({ 78, 22, 1, 1 }, amarillo) });
    dibujo(2, "", 0xFF, {}, { todo({ 0, 0, 5, 5 }, white) }, { -20, -10 }); // a negative size draws nothing
    dibujo(1, "ps", 0xFF, {}, { { caja, black, 21, 599 } });
    // A child container: a grey frame, the tip grey at its top left, black when selected.
    dibujo(1, "c", 0xFF, h,
           { todo(esquina, grey), todo({ 119, 59, 1, 1 }, grey), texto({ 2, 2 }, h, grey),
             todo({ 8, 28, 100, 20 }, white) },
           { 120, 60 });
    dibujo(1, "cs", 0xFF, h, { todo(esquina, grey), texto({ 2, 2 }, h, black) }, { 120, 60 });
    // Too narrow for one line: a centred column of one character per line; too low for that, nothing.
    dibujo(0, "", 0xFFFFFF, "ABC",
           { texto({ 3, 5 }, "A", black), texto({ 3, 5 + th }, "B", black),
             texto({ 3, 5 + 2 * th }, "C", black) },
           { cw + 5, 3 * th + 10 });
    dibujo(0, "", 0xFFFFFF, "ABC", { todo({ 0, 0, cw + 5, 3 * th }, white) }, { cw + 5, 3 * th });
    Escena e;
    QCOMPARE(e.cont->font(), QApplication::font());
    int y = 10;
    for (const Dibujo &d : dibujos) {
        const auto o = e.hijo(QString::number(y), { { 10, y }, d.tamano }, d.forma, d.color);
        o->setTip(d.tip);
        o->setPuedeContener(d.estado.contains('c'));
        if (d.estado.contains('p')) {
            o->setImagen(std::make_shared<Imagen>());
            o->getImagen()->setArchivo(dir.filePath(QStringLiteral("quad.png")));
        }
        if (d.estado.contains('s'))
            e.cont->seleccionar(o->getCodigo());
        e.cont->setActivo(o, d.estado.contains('a'));
        y += 110; // room for a circle as wide as the box
    }
    e.cont->refrescar();
    e.cont->setActivo(e.raiz, true); // never the bound object
    QVERIFY(!e.raiz->getActivo());
    QImage image = pixels::grab(e.cont);
    y = 12;
    for (const Dibujo &d : dibujos) {
        for (const Px &px : d.checks) {
            const QRect r = px.r.translated(12, y);
            const int n = pixels::count(image, r, QColor(px.c));
            QVERIFY2(
                px.texto.isEmpty()
                    ? n >= px.min && n <= px.max
                    : pixels::showsText(image, r.topLeft(), px.texto, e.cont->font(), px.c, px.fondo),
                qPrintable(
                    QStringLiteral("%1 at %2,%3: %4 pixels").arg(px.texto).arg(r.x()).arg(r.y()).arg(n)));
        }
        y += 110;
    }
    // The bound object: its tip grey at the top left, no outline; a border when asked.
    QVERIFY(pixels::showsText(image, { 2, 2 }, QStringLiteral("R"), e.cont->font(), grey, white));
    QCOMPARE(image.pixel(0, 0), white);
    e.cont->setBorderStyle(BorderSingle);
    QCOMPARE(e.cont->BorderStyle(), BorderSingle);
    image = pixels::grab(e.cont);
    QCOMPARE(image.pixel(0, 0), black);
    QCOMPARE(image.pixel(e.cont->width() - 1, e.cont->height() - 1), black);
    QVERIFY(errors.messages().isEmpty());
}

void tst_ContenedorX::viewport()
{
    Escena e;
    e.hijo(QStringLiteral("A"), { 10, 10, 40, 30 });
    e.hijo(QStringLiteral("G"), { 100, 0, 150, 140 }); // overhangs both sides of the viewports below
    ContenedorX nuevo(&e.frame);
    nuevo.setObjeto(e.raiz);
    const struct
    {
        float left, top, right, bottom;
        QRgb a, g;
    } filas[] = {
        { 0, 0, 0, 0, white, white }, // a new container shows no child until told what is visible
        { 0, 0, 300, 200, red, red },
        { 120, 20, 200, 100, white, white }, // wider and taller than the viewport: skipped
        { 52, 20, 200, 100, red, white }, // A's right edge 12 + 40 on the left bound counts
        { 53, 20, 200, 100, white, white },
    };
    for (const auto &fila : filas) {
        if (fila.right > 0)
            nuevo.setViewPort(fila.left, fila.top, fila.right, fila.bottom);
        const QImage image = pixels::grab(&nuevo);
        QCOMPARE(image.pixel(31, 26), fila.a);
        QCOMPARE(image.pixel(150, 70), fila.g);
    }
}

void tst_ContenedorX::sizeFit_data()
{
    QTest::addColumn<QSize>("antes");
    QTest::addColumn<float>("escala");
    QTest::addColumn<QRect>("hijo"); // none when empty; a container when 0 high
    QTest::addColumn<QSize>("despues");
    QTest::addColumn<QSize>("hijoDespues");
    // At least 298 x 148 units and 4 pixels; the control shrinks only when more than 100 too large.
    const QSize minimo(302, 152);
    QTest::newRow("too small") << QSize(250, 100) << 1.f << QRect() << minimo << QSize();
    QTest::newRow("within the slack") << QSize(402, 252) << 1.f << QRect() << QSize(402, 252) << QSize();
    QTest::newRow("one past the slack") << QSize(403, 253) << 1.f << QRect() << minimo << QSize();
    QTest::newRow("mixed") << QSize(350, 600) << 1.f << QRect() << QSize(350, 152) << QSize();
    QTest::newRow("a child past the slack")
        << QSize(500, 152) << 1.f << QRect(300, 0, 95, 10) << QSize(399, 152) << QSize(95, 10);
    QTest::newRow("escala 2") << QSize(500, 152) << 2.f << QRect(300, 0, 95, 10) << QSize(794, 300)
                              << QSize(95, 10);
    QTest::newRow("escala 0") << minimo << 0.f << QRect(0, 0, 10, 10) << QSize(4, 4) << QSize(10, 10);
    // A child container grows round its children plus 4 / escala: 150.5 at escala 8 rounds to the even 150.
    QTest::newRow("container, escala 8")
        << minimo << 8.f << QRect(0, 0, 50, 0) << QSize(2388, 1188) << QSize(150, 50);
    QTest::newRow("container never shrunk")
        << minimo << 1.f << QRect(0, 0, 500, 0) << QSize(504, 152) << QSize(500, 54);
}

void tst_ContenedorX::sizeFit()
{
    QFETCH(QSize, antes);
    QFETCH(float, escala);
    QFETCH(QRect, hijo);
    QFETCH(QSize, despues);
    QFETCH(QSize, hijoDespues);
    ErrorCatcher errors;
    Escena e;
    e.cont->resize(antes);
    const Hijo o = hijo.isNull() ? nullptr : e.hijo(QStringLiteral("A"), hijo);
    if (o && hijo.height() == 0)
        conNieto(o);
    e.frame.calls.clear();
    e.cont->setEscala(escala);
    QCOMPARE(e.cont->size(), despues);
    QCOMPARE(e.frame.calls, antes == despues ? QStringList() : QStringList { QStringLiteral("Resize") });
    if (o)
        QCOMPARE(QSize(o->getAncho(), o->getAlto()), hijoDespues);
    // Nothing is hit at a scale of 0, and nothing fails.
    QCOMPARE(e.cont->sobreQuien(hijo.x() * escala + 3, 3),
             escala > 0 && o ? ObjetoPtr(o) : ObjetoPtr(e.raiz));
    pixels::grab(e.cont);
    QVERIFY(errors.messages().isEmpty());
}

void tst_ContenedorX::clicks_data()
{
    QTest::addColumn<QString>("antes"); // the selection before
    QTest::addColumn<int>("marco"); // 1: the frame answers none to setActive, 2: it is inactive
    QTest::addColumn<QList<Clic>>("clics");
    QTest::addColumn<QString>("despues"); // the selection after | what the root heard
    // A at (12, 12) - (52, 42) edges included, B overlapping it from (32, 22), C at (202, 102) - (232, 132).
    const QPoint a(20, 20), c(210, 110);
    const auto l = [](QPoint p, Qt::KeyboardModifiers m = {}) {
        return QList { Clic { Qt::LeftButton, m, p } };
    };
    const auto r = QList { Clic { Qt::RightButton, {}, c } };
    const auto banda = [](QPoint hasta) {
        return QList { Clic { Qt::LeftButton, {}, { 11, 11 }, hasta } };
    };
    QTest::newRow("overlap: the earlier child") << "" << 0 << l({ 40, 30 }) << "A | clicked(A,false)";
    QTest::newRow("right and bottom edges inside") << "" << 0 << l({ 232, 132 }) << "C | clicked(C,false)";
    QTest::newRow("one pixel past them") << "A" << 0 << l({ 233, 133 }) << " | clicked(R,false)";
    QTest::newRow("Shift toggles") << "A B" << 0 << l(a, shift) << "B | clicked(A,false)";
    QTest::newRow("Shift+Ctrl: a plain click") << "A C" << 0 << l(a, shift | ctrl) << "A | clicked(A,false)";
    QTest::newRow("Ctrl on nothing keeps") << "A" << 0 << l({ 300, 140 }, ctrl) << "A | clicked(R,true)";
    QTest::newRow("right: selects alone") << "A" << 0 << r << "C | rightClicked(C,false)";
    QTest::newRow("right: keeps the group") << "A C" << 0 << r << "A C | rightClicked(C,true)";
    QTest::newRow("plain click narrows a group") << "C A" << 0 << l(a) << "A | clicked(A,false)";
    QTest::newRow("the frame's answer is reported") << "" << 1 << l(c) << "C | clicked(none,false)";
    QTest::newRow("inactive frame: no band, no report") << "" << 2 << banda({ 300, 140 }) + l(a) << "A | ";
    // The band takes what lies wholly inside it, edges included; a press on nothing clears first.
    QTest::newRow("band round A") << "B" << 0 << banda({ 52, 42 }) << "A | ";
    QTest::newRow("band one short") << "" << 0 << banda({ 51, 42 }) << " | ";
}

void tst_ContenedorX::clicks()
{
    QFETCH(QString, antes);
    QFETCH(int, marco);
    QFETCH(QList<Clic>, clics);
    QFETCH(QString, despues);
    ErrorCatcher errors;
    Escena e;
    const Hijo hijos[] = { e.hijo("A", { 10, 10, 40, 30 }), e.hijo("B", { 30, 20, 40, 30 }),
                           e.hijo("C", { 200, 100, 30, 30 }) };
    for (const QString &codigo : antes.split(' ', Qt::SkipEmptyParts))
        e.cont->seleccionar(codigo);
    e.frame.answerNone = marco == 1;
    e.frame.setPActive(marco != 2);
    for (const Clic &clic : clics) {
        QTest::mousePress(e.cont, clic.boton, clic.teclas, clic.en);
        if (!clic.hasta.isNull())
            e.mover(clic.hasta);
        QTest::mouseRelease(e.cont, clic.boton, clic.teclas, clic.hasta.isNull() ? clic.en : clic.hasta);
    }
    QStringList seleccion;
    for (const ObjetoPtr &o : *e.cont->getSeleccionados())
        seleccion.append(o->getCodigo());
    for (const Hijo &o : hijos)
        QCOMPARE(o->getSeleccionado(), seleccion.contains(o->getCodigo()));
    QCOMPARE(seleccion.join(' ') + " | " + e.log(), despues);
    QVERIFY(e.caja(QStringLiteral("box"))->isHidden());
    QVERIFY(errors.messages().isEmpty());
}

void tst_ContenedorX::shiftDragMoves_data()
{
    QTest::addColumn<float>("escala");
    QTest::addColumn<int>("recorrido");
    QTest::addColumn<QString>("caso"); // locked; escala 0 at the drop; far: L at X 32000 between D1 and D2
    QTest::addColumn<QList<int>>("xs");
    QTest::addColumn<QStringList>("mensajes");
    // D1 at X 10 and D2 at X 11; the pointer travels right, the move rounds ties to even.
    QTest::newRow("escala 2, 30 pixels") << 2.f << 30 << "" << QList { 25, 26 } << QStringList();
    QTest::newRow("escala 4, 30 pixels") << 4.f << 30 << "" << QList { 18, 18 } << QStringList();
    QTest::newRow("escala 1, back 5") << 1.f << -5 << "" << QList { 5, 6 } << QStringList();
    QTest::newRow("locked: the boxes move, not the children")
        << 1.f << 45 << "locked" << QList { 10, 11 } << QStringList();
    QTest::newRow("escala 0 at the drop")
        << 1.f << 30 << "escala 0" << QList { 10, 11 } << QStringList { "ContenedorX.dragDrop->Overflow" };
    // The move stops at L; the boxes' right edge no longer fits 16 bits (drag-enter and drag-move).
    QTest::newRow("past 16 bits") << 1.f << 1000 << "far" << QList { 1010, 11 }
                                  << QStringList { "ContenedorX.dragOver->Overflow",
                                                   "ContenedorX.dragOver->Overflow",
                                                   "ContenedorX.dragDrop->Overflow" };
}

void tst_ContenedorX::shiftDragMoves()
{
    QFETCH(float, escala);
    QFETCH(int, recorrido);
    QFETCH(QString, caso);
    QFETCH(QList<int>, xs);
    QFETCH(QStringList, mensajes);
    ErrorCatcher errors;
    Escena e;
    DragDriver driver;
    const Hijo d1 = e.hijo(QStringLiteral("D1"), { 10, 10, 10, 10 });
    if (caso == "far")
        e.hijo(QStringLiteral("L"), { 32000, 10, 10, 10 });
    const Hijo d2 = e.hijo(QStringLiteral("D2"), { 11, 30, 10, 10 });
    e.cont->setEscala(escala);
    e.cont->setBloqueo(caso == "locked");
    e.cont->seleccionarTodos();

    const QPoint press(int(12 * escala) + 2, int(12 * escala) + 2);
    QTest::mousePress(e.cont, Qt::LeftButton, shift, press);
    e.mover(press + QPoint(6, 0), shift);
    QCOMPARE(driver.started(), 1);
    // With Shift the outline boxes show at once, at the pointer's offset from the press, and follow it.
    Dummy *caja1 = e.caja(QStringLiteral("D1c"));
    QVERIFY(caja1 && caja1->isVisible() && e.caja(QStringLiteral("D2c")));
    const int lado = int(10 * escala);
    QCOMPARE(caja1->geometry(), QRect(lado + 2 + 6, lado + 2, lado, lado));
    const QPoint destino = press + QPoint(recorrido, 0);
    QCOMPARE(driver.move(e.cont, destino, shift), Qt::MoveAction);
    if (mensajes.isEmpty()) // after an overflow, the next drag-over moves the boxes on again
        QCOMPARE(caja1->pos(), QPoint(lado + 2 + recorrido, lado + 2));
    QCOMPARE(d1->getX(), qint16(10)); // nothing moves before the drop
    if (caso == "escala 0")
        e.cont->setEscala(0);
    QCOMPARE(driver.drop(e.cont, destino, shift), caso == "locked" ? Qt::IgnoreAction : Qt::MoveAction);
    QCOMPARE(QList<int>({ d1->getX(), d2->getX(), d1->getY() }), xs + QList { 10 });
    QCOMPARE(e.log(), QString(xs[0] == 10 ? "" : xs[1] == 11 ? "moved(D1)" : "moved(D1) moved(D2)"));
    QCOMPARE(errors.messages(), mensajes);
    driver.finish(Qt::MoveAction);
    QVERIFY(e.sinCajas());
}

void tst_ContenedorX::boxesFollowShiftAndForeignDrops()
{
    ErrorCatcher errors;
    Escena e;
    e.hijo(QStringLiteral("D1"), { 10, 10, 10, 10 });
    e.hijo(QStringLiteral("D2"), { 100, 10, 10, 10 });
    e.cont->seleccionar(QStringLiteral("D2")); // selecting all passes over it
    e.cont->seleccionarTodos();
    {
        // A plain press inside the group keeps it; a plain drag has no boxes until Shift is pressed:
        // then they appear where the pointer is, hide when it is released and show again with it.
        DragDriver driver;
        QTest::mousePress(e.cont, Qt::LeftButton, {}, QPoint(15, 15));
        e.mover(QPoint(100, 100));
        QVERIFY(driver.dragging() && !e.caja(QStringLiteral("D1c")));
        driver.move(e.cont, QPoint(200, 150), shift);
        Dummy *caja = e.caja(QStringLiteral("D1c"));
        QVERIFY(caja && caja->isVisible() && e.caja(QStringLiteral("D2c")));
        QCOMPARE(caja->pos(), QPoint(12 + 185, 12 + 135));
        driver.move(e.cont, QPoint(210, 150));
        QVERIFY(caja->isHidden());
        driver.move(e.cont, QPoint(220, 150), shift);
        QVERIFY(caja->isVisible());
        QCOMPARE(caja->pos(), QPoint(12 + 205, 12 + 135));
        // Boxes dragged past the right edge grow the control to their right edge plus 100.
        e.frame.calls.clear();
        driver.move(e.cont, QPoint(600, 150), shift);
        QCOMPARE(e.cont->width(), 110 + 2 + 585 + 100);
        QCOMPARE(e.frame.calls.filter(QStringLiteral("Resize")), QStringList { "Resize" });
        e.cont->deseleccionarTodos(); // the boxes of children no longer selected go too
        driver.finish();
        QVERIFY(e.sinCajas());
    }
    // Data without text is refused, and nothing is asked of the frame.
    QMimeData binario;
    binario.setData(QStringLiteral("application/octet-stream"), QByteArray("\x01\x02", 2));
    e.frame.calls.clear();
    QCOMPARE(DragDriver::moveData(e.cont, QPoint(15, 15), &binario, shift), Qt::IgnoreAction);
    QCOMPARE(DragDriver::dropData(e.cont, QPoint(15, 15), &binario), Qt::IgnoreAction);
    QVERIFY(e.frame.calls.isEmpty());
    // Text from elsewhere is a copy even with Shift, and a Shift-drop of it does nothing; the map
    // hears the other modifiers.
    QMimeData texto;
    texto.setText(QStringLiteral("Lfuera"));
    QCOMPARE(DragDriver::moveData(e.cont, QPoint(50, 50), &texto, shift), Qt::CopyAction);
    QCOMPARE(DragDriver::dropData(e.cont, QPoint(50, 50), &texto, shift), Qt::IgnoreAction);
    QCOMPARE(DragDriver::dropData(e.cont, QPoint(105, 15), &texto, ctrl), Qt::CopyAction);
    QCOMPARE(e.log(), QStringLiteral("droped(Lfuera,D2,2)"));
    QVERIFY(errors.messages().isEmpty());
}

void tst_ContenedorX::alignAndEqualise()
{
    ErrorCatcher errors;
    Escena e;
    const Hijo a = e.hijo(QStringLiteral("A"), { 10, 10, 20, 20 });
    const Hijo b = e.hijo(QStringLiteral("B"), { 50, 70, 30, 10 });
    const Hijo z = e.hijo(QStringLiteral("Z"), { 5, 40, 400, 300 });
    const auto lugares = [&] {
        return QList { a->getX(), a->getY(), b->getX(), b->getY(), a->getAncho(), b->getAlto() };
    };
    e.cont->alinearHorizontal(nullptr); // nothing selected: nothing happens, not even without a reference
    e.cont->seleccionar(QStringLiteral("B"));
    e.cont->seleccionar(QStringLiteral("A"));
    e.cont->alinearHorizontal(z);
    QCOMPARE(lugares(), QList<qint16>({ 10, 40, 50, 40, 20, 10 }));
    e.cont->alinearVertical(z);
    QCOMPARE(lugares(), QList<qint16>({ 5, 40, 5, 40, 20, 10 }));
    // Equal size, the reference itself selected too; the control grows to the new sizes.
    e.cont->seleccionar(QStringLiteral("Z"));
    e.cont->igualarDimension(z);
    QCOMPARE(lugares(), QList<qint16>({ 5, 40, 5, 40, 400, 300 }));
    QCOMPARE(e.cont->size(), QSize(405 + 4, 340 + 4));
    QCOMPARE(e.log(), "moved(B) moved(A) moved(B) moved(A) moved(B) moved(A) moved(Z)");
    // A child container is grown back round its own children.
    const Hijo nave = e.hijo(QStringLiteral("C"), { 0, 0, 200, 100 });
    conNieto(nave);
    e.cont->deseleccionarTodos();
    e.cont->seleccionar(QStringLiteral("C"));
    b->setAncho(40);
    b->setAlto(30);
    e.cont->igualarDimension(b);
    QCOMPARE(QSize(nave->getAncho(), nave->getAlto()), QSize(154, 54));
    QVERIFY(errors.messages().isEmpty());
}

void tst_ContenedorX::distribute_data()
{
    QTest::addColumn<QList<int>>("posiciones");
    QTest::addColumn<QList<int>>("largos");
    QTest::addColumn<QList<int>>("resultado");
    QTest::addColumn<QString>("movidos"); // the codes moved, or the message (%1: Horizontal or Vertical)
    const QList<int> veinte { 20, 20, 20 }, uno { 1, 1, 1 }, diez { 10, 10, 10, 10 };
    // The interior ones start gap units after the previous one's last unit: 99, not 100.
    QTest::newRow("three") << QList { 0, 50, 200 } << veinte << QList { 0, 99, 200 } << "1";
    QTest::newRow("unsorted") << QList { 200, 0, 50 } << veinte << QList { 200, 0, 99 } << "2";
    QTest::newRow("four, gap 70") << QList { 20, 10, 0, 300 } << QList { 30, 30, 30, 30 }
                                  << QList { 198, 99, 0, 300 } << "1 0";
    QTest::newRow("gap 14.5 rounds down") << QList { 0, 10, 31 } << uno << QList { 0, 14, 31 } << "1";
    QTest::newRow("gap 15.5 rounds up") << QList { 0, 10, 33 } << uno << QList { 0, 16, 33 } << "1";
    QTest::newRow("overlapping: negative gap")
        << QList { 0, 5, 10 } << QList { 40, 40, 40 } << QList { 0, 4, 10 } << "1";
    QTest::newRow("evenly spaced still moves")
        << QList { 0, 29, 58 } << diez.mid(1) << QList { 0, 28, 58 } << "1";
    // Equal positions: the one selected later comes first. Gap (309 + 1 - 40) / 3 = 90.
    QTest::newRow("equal positions") << QList { 0, 100, 100, 300 } << diez << QList { 0, 198, 99, 300 }
                                     << "2 1";
    QTest::newRow("negative and zero lengths")
        << QList { 50, 60, 100 } << QList { -20, 0, 20 } << QList { 50, 64, 100 } << "1";
    // The long one moves back 136 units after another one moved: the control, fitted after each move,
    // shrinks.
    QTest::newRow("the control shrinks")
        << QList { 0, 10, 400, 500 } << QList { 10, 10, 600, 10 } << QList { 0, 132, 264, 500 } << "1 2";
    QTest::newRow("two do nothing") << QList { 0, 70 } << veinte.mid(1) << QList { 0, 70 } << "";
    // The first's last unit is 32770 and the gap -1: the second would leave 16 bits.
    QTest::newRow("past 16 bits") << QList { 5, 10, 40 } << QList { 32766, 1, 1 } << QList { 5, 10, 40 }
                                  << "ContenedorX.IContenedorX_distribuir%1->Overflow";
}

void tst_ContenedorX::distribute()
{
    QFETCH(QList<int>, posiciones);
    QFETCH(QList<int>, largos);
    QFETCH(QList<int>, resultado);
    QFETCH(QString, movidos);
    for (const bool horizontal : { true, false }) {
        ErrorCatcher errors;
        Escena e;
        QList<Hijo> hijos;
        for (int i = 0; i < posiciones.size(); ++i) {
            const int p = posiciones.at(i), l = largos.at(i);
            hijos << e.hijo(QString::number(i), horizontal ? QRect(p, 7, l, 5) : QRect(7, p, 5, l));
        }
        e.cont->refrescar();
        e.cont->seleccionarTodos();
        horizontal ? e.cont->distribuirHorizontal() : e.cont->distribuirVertical();
        for (int i = 0; i < hijos.size(); ++i) {
            const QPoint lugar(hijos[i]->getX(), hijos[i]->getY());
            QCOMPARE(lugar, horizontal ? QPoint(resultado.at(i), 7) : QPoint(7, resultado.at(i)));
        }
        const QSize ajustado = e.cont->size();
        e.cont->refrescar();
        QCOMPARE(e.cont->size(), ajustado); // as a fit from scratch
        const QString oido = errors.messages().join("") + e.log();
        QCOMPARE(oido,
                 QString(movidos)
                     .replace("%1", horizontal ? "Horizontal" : "Vertical")
                     .replace(QRegularExpression("(\\d)"), "moved(\\1)"));
    }
}

void tst_ContenedorX::distributeFitsAsFromScratch()
{
    // The size fitted after every move of a long distribution equals a fit from scratch.
    Escena e;
    for (int i = 0; i < 500; ++i)
        e.hijo(QString::number(i), { (i * 7919) % 3000, (i * 104729) % 2000, 5 + i % 40, 5 + i % 30 });
    e.cont->seleccionarTodos();
    e.cont->distribuirVertical();
    e.cont->distribuirHorizontal();
    QCOMPARE(e.mapa.calls().size(), size_t(2 * 498));
    const QSize despues = e.cont->size();
    e.frame.calls.clear();
    e.cont->refrescar();
    QCOMPARE(e.cont->size(), despues);
    QVERIFY(e.frame.calls.isEmpty());
}

void tst_ContenedorX::failures()
{
    const QString noSet = QStringLiteral("->Object variable or With block variable not set");
    const QString noMember = QStringLiteral("->Object doesn't support this property or method");
    ErrorCatcher errors;
    Escena e;
    {
        // No frame, a frame without the members it calls, no object: each says what is missing.
        ContenedorX suelto, vacio;
        QWidget plain;
        for (ContenedorX *cont : { &suelto, new ContenedorX(&plain) }) {
            cont->setRoot(&e.mapa);
            cont->setObjeto(e.raiz);
            QTest::mouseClick(cont, Qt::LeftButton, {}, QPoint(5, 5));
        }
        vacio.seleccionarTodos();
        vacio.seleccionar(QStringLiteral("R"));
        vacio.setActivo(e.raiz, true);
        vacio.grab();
        QCOMPARE(errors.messages(),
                 (QStringList { "ContenedorX.validarControl" + noSet, "ContenedorX.MouseDown" + noSet,
                                "ContenedorX.MouseUp" + noSet, "ContenedorX.validarControl" + noMember,
                                "ContenedorX.MouseDown" + noMember, "ContenedorX.MouseUp" + noMember,
                                "ContenedorX.IContenedorX_seleccionarTodos" + noSet,
                                "ContenedorX.IContenedorX_seleccionar" + noSet,
                                "ContenedorX.IContenedorX_setActivo" + noSet }));
        QCOMPARE(e.log(), QString());
    }
    // A child of another object in the selection: erased and redrawn with a message each, still aligned.
    errors.clear();
    auto otro = std::make_shared<Objeto>();
    otro->setCodigo(QStringLiteral("X"));
    otro->setPadre(QStringLiteral("OTRO"));
    e.cont->getSeleccionados()->add(otro);
    e.cont->alinearHorizontal(e.hijo(QStringLiteral("Z"), { 60, 60, 0, 0 }));
    QCOMPARE(otro->getY(), qint16(60));
    QCOMPARE(e.log(), QStringLiteral("moved(X)"));
    // Two selected children the host gave the same code: one box, and nothing left behind.
    e.cont->getSeleccionados()->clear();
    e.hijo(QStringLiteral("B"), { 40, 10, 10, 10 });
    e.cont->seleccionarTodos();
    e.raiz->getObjetos()->Item(QStringLiteral("B"))->setCodigo(QStringLiteral("Z"));
    DragDriver driver;
    QTest::mousePress(e.cont, Qt::LeftButton, shift, QPoint(62, 62));
    e.mover(QPoint(90, 62), shift);
    driver.finish();
    QVERIFY(e.sinCajas());
    const QString nivel = QStringLiteral("->No se encontró padre del objeto en primer nivel");
    QCOMPARE(
        errors.messages(),
        (QStringList {
            "ContenedorX.limpiar" + nivel, "ContenedorX.dibujarNuevo" + nivel,
            "ContenedorX.dibujarOtraCaja->This key is already associated with an element of this collection",
            "ContenedorX.borrarOtraCaja->Control not found" }));
}

QTEST_MAIN(tst_ContenedorX)
#include "tst_contenedorx.moc"
