// SPDX-License-Identifier: MIT
#include <tarvonix/containers/contenedorx.h>
#include <tarvonix/model/imagen.h>
#include <tarvonix/model/objeto.h>
#include <tarvonix/model/objetos.h>
#include <tarvonix/widgets/dummy.h>

#include "dragdriver.h"
#include "errorcatcher.h"
#include "naves.h"
#include "pixels.h"
#include "recordingmapa.h"
#include "testframe.h"

#include <QApplication>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using namespace tarvonix;
using naves::arrastrar;
using namespace Qt::StringLiterals;

namespace {

constexpr QRgb white = 0xFFFFFFFF, black = 0xFF000000, red = 0xFFFF0000, grey = 0xFFC0C0C0;
constexpr QRgb verde = 0xFF00FF00, amarillo = 0xFFFFFF00, marino = 0xFF000080;
constexpr Qt::KeyboardModifiers shift = Qt::ShiftModifier, ctrl = Qt::ControlModifier;
using Hijo = std::shared_ptr<Objeto>;

// A container in a recording frame, bound to "R" (white, may contain, tip "R") at escala 1 with a
// viewport larger than anything drawn: a child at (X, Y) is drawn from (X + 2, Y + 2).
struct Escena
{
    Escena()
    {
        raiz->setCodigo(u"R"_s), raiz->setTip(u"R"_s), raiz->setPuedeContener(true);
        cont->setRoot(&mapa), cont->setObjeto(raiz), cont->setViewPort(0, 0, 4000, 4000), frame.show();
    }
    Hijo hijo(const QString &codigo, QRect r, int forma = 1, qint32 color = 0xFF, const Hijo &padre = {})
    {
        auto o = std::make_shared<Objeto>();
        o->setCodigo(codigo), o->setPadre(padre ? padre->getCodigo() : u"R"_s);
        o->setX(qint16(r.x())), o->setY(qint16(r.y())), o->setAncho(qint16(r.width()));
        o->setAlto(qint16(r.height())), o->setForma(qint16(forma)), o->setColor(color);
        (padre ? padre : raiz)->getObjetos()->add(o);
        return o;
    }
    // Makes a container of the child, with a child of its own whose right edge is at 150 and bottom at 50.
    void conNieto(const Hijo &o) { o->setPuedeContener(true), hijo(u"N"_s, { 120, 0, 30, 50 }, 1, 0xFF, o); }
    QString log() const { return mapa.log().join(' '); }
    Dummy *caja(const QString &n) const { return cont->findChild<Dummy *>(n, Qt::FindDirectChildrenOnly); }
    // After a drag: the outline boxes are gone, the band is left.
    bool sinCajas() const
    {
        naves::flushDeletes();
        return cont->findChildren<Dummy *>() == QList { caja(u"box"_s) };
    }
    ErrorCatcher errors; // a message the test did not take out fails it
    RecordingMapa mapa;
    Hijo raiz = std::make_shared<Objeto>();
    TestFrame frame;
    ContenedorX *cont = new ContenedorX(&frame);
};

// Pixels of r in colour c, from min to max; or, with a text, that it is drawn at r's top left over white.
using Px = std::tuple<QRect, QRgb, int, int, QString>;
// The state (see painting_data()), colour and size of a child, and the checks from where it is drawn.
using Pintura = std::tuple<QString, qint32, QSize, QList<Px>>;
// The size before, escala, the child (none when empty, a container when 0 high), the sizes after.
using Ajuste = std::tuple<QSize, float, QRect, QSize, QSize>;
// L or R: a click, with S: Shift, C: Ctrl; band: from (11, 11); then the selection before.
using Clic = std::tuple<QString, QPoint, QString>;
// Children side by side, where they end up and the codes moved or the message.
using Reparto = std::tuple<bool, QList<int>, QList<int>, QList<int>, QString>;

} // namespace

class tst_ContenedorX : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { e.emplace(); }
    void cleanup() { QCOMPARE(e->errors.messages(), QStringList()); }
    void painting_data()
    {
        // The forma; c: may contain, s: selected, a: active, p: a picture, b: a border round the control.
        QTest::addColumn<Pintura>("pintura");
        const QFontMetrics fm(QApplication::font());
        const int tw = fm.horizontalAdvance('H'), th = fm.height(), cw = fm.horizontalAdvance('W');
        // The tip "H" is centred in the fill less a margin of 2, readable on it; nothing drawn past the box.
        const QPoint centro(qRound(2 + (96 - tw) / 2.0), qRound(2 + (26 - th) / 2.0));
        const QRect letra(centro, QSize(tw, th));
        const QRect borde(0, 0, 100, 1), caja(4, 4, 30, 20), cuadro(5, 5, 18, 18), esquina(0, 0, 1, 1);
        const QSize s(100, 30), nave(120, 60), columna(cw + 5, 3 * th + 10);
        const auto dibujo = [](const char *nombre, const char *estado, qint32 color, QSize tamano,
                               const QList<Px> &checks) {
            QTest::newRow(nombre) << Pintura { estado, color, tamano, checks };
        };
        dibujo("box", "1b", 0xFF, s,
               { todo(borde, black), todo(caja, red), tinta(letra, white), todo({ 100, 0, 1, 30 }, white) });
        dibujo("circle", "2", 0xFF00, s, { todo(esquina, white), todo({ 28, 13, 10, 10 }, verde) });
        // Forma 3: a square as wide as the box is high less 4, no outline, the tip 2 + 2 right of it.
        dibujo("square", "3", 0x800000, s,
               { todo(esquina, white), todo(cuadro, marino), texto({ 32, centro.y() }, black) });
        dibujo("selected: hatched", "1s", 0x800000, s,
               QList<Px> { todo(borde, black), tinta(letra, black) } + rayado(caja, marino));
        dibujo("selected square: outlined", "3s", 0xFF, s,
               QList { todo(esquina, black) } + rayado(cuadro, red));
        dibujo("selected white: black hatch", "1s", 0xFFFFFF, s, rayado(caja, black));
        dibujo("active: dotted", "1a", 0xFF, s, { { borde, black, 6, 99, {} }, todo(caja, red) });
        dibujo("picture", "1p", 0xFF, s, { todo({ 18, 7, 1, 1 }, red), todo({ 78, 22, 1, 1 }, amarillo) });
        dibujo("picture, selected", "1ps", 0xFF, s, { { caja, black, 21, 599, {} } });
        dibujo("negative size", "2", 0xFF, { -20, -10 }, { todo({ 0, 0, 5, 5 }, white) });
        // A child container: a grey frame, never filled, the tip grey at its top left, black when selected.
        dibujo("container", "1c", 0xFF, nave,
               { todo(esquina, grey), todo({ 119, 59, 1, 1 }, grey), texto({ 2, 2 }, grey),
                 todo({ 8, 28, 100, 20 }, white) });
        dibujo("container, selected", "1cs", 0xFF, nave, { todo(esquina, grey), texto({ 2, 2 }, black) });
        // Too narrow for the tip "ABC" on one line: a centred column of one character per line, black on
        // white; too low for that, nothing; forma 0 has no outline.
        dibujo("column", "0", 0xFFFFFF, columna,
               { texto({ 3, 5 }, black, u"A"_s), texto({ 3, 5 + th }, black, u"B"_s),
                 texto({ 3, 5 + 2 * th }, black, u"C"_s) });
        dibujo("no room", "0", 0xFFFFFF, columna - QSize(0, 10), { todo({ 0, 0, cw + 5, 3 * th }, white) });
        dibujo("unknown shape: its tip readable on the background", "7", 0, s, { tinta(letra, black) });
    }
    void painting()
    {
        QFETCH(Pintura, pintura);
        const auto &[estado, color, tamano, checks] = pintura;
        QTemporaryDir dir;
        const Hijo o = e->hijo(u"A"_s, { { 10, 10 }, tamano }, estado.at(0).digitValue(), color);
        o->setTip(tamano.width() < 50 ? u"ABC"_s : u"H"_s), o->setPuedeContener(estado.contains('c'));
        if (estado.contains('p')) {
            const QRgb puntos[] = { red, verde, verde, amarillo }; // red top left, yellow bottom right
            QVERIFY(QImage(reinterpret_cast<const uchar *>(puntos), 2, 2, QImage::Format_RGB32)
                        .save(dir.filePath(u"quad.png"_s)));
            o->setImagen(std::make_shared<Imagen>());
            o->getImagen()->setArchivo(dir.filePath(u"quad.png"_s));
        }
        if (estado.contains('s'))
            e->cont->seleccionar(u"A"_s);
        e->cont->setActivo(o, estado.contains('a'));
        e->cont->setBorderStyle(estado.contains('b') ? BorderSingle : BorderNone);
        QCOMPARE(e->cont->BorderStyle(), estado.contains('b') ? BorderSingle : BorderNone);
        e->cont->refrescar();
        const QImage image = pixels::grab(e->cont);
        for (const auto &[zona, c, min, max, texto] : checks) {
            const QRect r = zona.translated(12, 12);
            const int n = pixels::count(image, r, QColor(c));
            QVERIFY2(texto.isEmpty()
                         ? n >= min && n <= max
                         : pixels::showsText(image, r.topLeft(), texto, e->cont->font(), c, white),
                     qPrintable(u"%1 at %2,%3: %4 pixels"_s.arg(texto).arg(r.x()).arg(r.y()).arg(n)));
        }
        // The bound object: its tip grey at the top left, no outline; a border only when asked.
        QVERIFY(pixels::showsText(image, { 2, 2 }, u"R"_s, e->cont->font(), grey, white));
        QCOMPARE(QList({ image.pixel(0, 0), image.pixel(e->cont->width() - 1, e->cont->height() - 1) }),
                 QList<QRgb>(2, estado.contains('b') ? black : white));
    }
    void viewport()
    {
        // A new container shows no child until told what is visible; then those with an edge in the
        // viewport, both bounds included, not one wider and taller than it.
        e->hijo(u"A"_s, { 10, 10, 40, 30 }),
            e->hijo(u"G"_s, { 100, 0, 150, 140 }); // drawn from 12 to 52, 102 on
        for (int i = 0; i < 80; ++i) // more repaints than a whole one costs, the last off the control
            e->cont->seleccionar(e->hijo(QString::number(i), { 4 * i, 120, 2, 2 })->getCodigo());
        ContenedorX nuevo(&e->frame);
        nuevo.setObjeto(e->raiz);
        using Fila = std::tuple<QRectF, QRgb, QRgb>; // the viewport, A, G
        for (const auto &[vista, a, g] :
             { Fila { {}, white, white }, Fila { { 0, 0, 102, 200 }, red, red },
               Fila { { 120, 20, 80, 80 }, white, white }, Fila { { 52, 20, 148, 80 }, red, white },
               Fila { { 53, 20, 147, 80 }, white, white } }) {
            if (!vista.isNull())
                nuevo.setViewPort(vista.left(), vista.top(), vista.right(), vista.bottom());
            const QImage image = pixels::grab(&nuevo);
            QCOMPARE(QList({ image.pixel(31, 26), image.pixel(150, 70) }), QList({ a, g }));
        }
    }
    void sizeFit_data()
    {
        QTest::addColumn<Ajuste>("ajuste");
        // At least 298 x 148 units and 4 pixels; the control shrinks only when more than 100 too large.
        const QSize minimo(302, 152);
        QTest::newRow("within the slack") << Ajuste { { 402, 252 }, 1, {}, { 402, 252 }, {} };
        QTest::newRow("one past the slack") << Ajuste { { 403, 253 }, 1, {}, minimo, {} };
        QTest::newRow("mixed") << Ajuste { { 350, 600 }, 1, {}, { 350, 152 }, {} };
        QTest::newRow("escala 2") << Ajuste { { 500, 152 }, 2, { 300, 0, 95, 10 }, { 794, 300 }, { 95, 10 } };
        QTest::newRow("escala 0") << Ajuste { minimo, 0, { 0, 0, 10, 10 }, { 4, 4 }, { 10, 10 } };
        // A nested container grows round its children plus 4 / escala: at escala 8, 150.5 rounds to 150.
        QTest::newRow("nested at 8") << Ajuste { minimo, 8, { 0, 0, 50, 0 }, { 2388, 1188 }, { 150, 50 } };
        QTest::newRow("nested, wide") << Ajuste { minimo, 1, { 0, 0, 500, 0 }, { 504, 152 }, { 500, 54 } };
    }
    void sizeFit()
    {
        QFETCH(Ajuste, ajuste);
        const auto &[antes, escala, hijo, despues, hijoDespues] = ajuste;
        e->cont->resize(antes);
        const Hijo o = hijo.isNull() ? nullptr : e->hijo(u"A"_s, hijo);
        if (o && hijo.height() == 0)
            e->conNieto(o);
        e->frame.calls.clear(), e->cont->setEscala(escala);
        QCOMPARE(e->cont->size(), despues);
        QCOMPARE(e->frame.calls, antes == despues ? QStringList() : QStringList { u"Resize"_s });
        QCOMPARE(o ? QSize(o->getAncho(), o->getAlto()) : QSize(), hijoDespues);
        // Nothing is hit at a scale of 0, and nothing fails.
        QCOMPARE(e->cont->sobreQuien(hijo.x() * escala + 3, 3), ObjetoPtr(escala > 0 && o ? o : e->raiz));
        if (o && escala > 0) { // a host that moves a child without a word: it is hit where it now is
            o->setY(o->getY() + 400);
            QCOMPARE(e->cont->sobreQuien(hijo.x() * escala + 3, o->getY() * escala + 3), ObjetoPtr(o));
        }
        pixels::grab(e->cont);
    }
    void clicks_data()
    {
        QTest::addColumn<Clic>("clic"); // gesto, where, the selection after | what the root heard
        // A: (12, 12) - (52, 42), edges included; B overlaps it from (32, 22); C: (202, 102) - (232, 132).
        const QPoint a(20, 20), c(210, 110);
        QTest::newRow("overlap: the earlier child") << Clic { "L", { 40, 30 }, "A | clicked(A,false)" };
        QTest::newRow("right and bottom edges in") << Clic { "L", { 232, 132 }, "C | clicked(C,false)" };
        QTest::newRow("Shift toggles") << Clic { "LS A B", a, "B | clicked(A,false)" };
        QTest::newRow("Shift+Ctrl: plain") << Clic { "LSC A C", a, "A | clicked(A,false)" };
        QTest::newRow("Ctrl on nothing keeps") << Clic { "LC A", { 300, 140 }, "A | clicked(R,true)" };
        QTest::newRow("right: selects alone") << Clic { "R A", c, "C | rightClicked(C,false)" };
        QTest::newRow("right: keeps the group") << Clic { "R A C", c, "A C | rightClicked(C,true)" };
        QTest::newRow("Shift+right: no toggle") << Clic { "RS A", c, "A | rightClicked(C,false)" };
        QTest::newRow("plain click narrows a group") << Clic { "L C A", a, "A | clicked(A,false)" };
        QTest::newRow("the frame's answer is reported") << Clic { "L", c, "C | clicked(none,false)" };
        // The band takes what lies wholly inside it, edges included; a press on nothing clears first.
        QTest::newRow("band round A") << Clic { "band B", { 52, 42 }, "A | " };
        QTest::newRow("band one short") << Clic { "band", { 51, 42 }, " | " };
    }
    void clicks()
    {
        QFETCH(Clic, clic);
        auto [gesto, en, despues] = clic;
        e->hijo(u"A"_s, { 10, 10, 40, 30 }), e->hijo(u"B"_s, { 30, 20, 40, 30 });
        e->hijo(u"C"_s, { 200, 100, 30, 30 });
        QStringList antes = gesto.split(' ');
        gesto = antes.takeFirst();
        for (const QString &codigo : antes)
            e->cont->seleccionar(codigo);
        e->frame.answerNone = despues.contains("none"); // the frame answers none to setActive
        const Qt::MouseButton boton = gesto.startsWith('R') ? Qt::RightButton : Qt::LeftButton;
        const Qt::KeyboardModifiers teclas
            = (gesto.contains('S') ? shift : Qt::NoModifier) | (gesto.contains('C') ? ctrl : Qt::NoModifier);
        const QPoint desde = gesto == "band" ? QPoint(11, 11) : en;
        QTest::mousePress(e->cont, boton, teclas, desde);
        if (desde != en)
            arrastrar(e->cont, en);
        QTest::mouseRelease(e->cont, boton, teclas, en);
        QStringList seleccion;
        for (const ObjetoPtr &o : *e->cont->getSeleccionados())
            seleccion.append(o->getCodigo());
        QCOMPARE(seleccion.join(' ') + " | " + e->log(), despues);
    }
    void dragMoves()
    {
        // At escala 4, D1 at X 10, D2 at X 101: a Shift-drag 30 pixels right moves them 7.5 units, to even.
        const Hijo d1 = e->hijo(u"D1"_s, { 10, 10, 10, 10 }), d2 = e->hijo(u"D2"_s, { 101, 10, 10, 10 });
        e->cont->setEscala(4), e->cont->seleccionar(u"D2"_s); // selecting all passes over it
        e->cont->seleccionarTodos();
        DragDriver driver;
        QTest::mousePress(e->cont, Qt::LeftButton, shift, { 50, 50 });
        arrastrar(e->cont, { 56, 50 }, shift);
        // With Shift the outline boxes show at once, at the pointer's offset from the press, and follow it.
        Dummy *caja = e->caja(u"D1c"_s);
        QVERIFY(caja && caja->isVisible() && e->caja(u"D2c"_s));
        QCOMPARE(caja->geometry(), QRect(42 + 6, 42, 40, 40));
        QCOMPARE(driver.move(e->cont, { 80, 50 }, shift), Qt::MoveAction);
        QCOMPARE(caja->pos(), QPoint(42 + 30, 42));
        QCOMPARE(driver.drop(e->cont, { 80, 50 }, shift), Qt::MoveAction);
        QCOMPARE(QList({ d1->getX(), d2->getX(), d1->getY() }), QList<qint16>({ 18, 108, 10 }));
        driver.finish(Qt::MoveAction);
        QVERIFY(e->sinCajas());
        // At escala 1 (D1 drawn from (20, 12)) a plain press in the group keeps it; a plain drag shows the
        // boxes, where the pointer is, only while Shift is held.
        e->cont->setEscala(1), QTest::mousePress(e->cont, Qt::LeftButton, {}, QPoint(25, 15));
        arrastrar(e->cont, QPoint(100, 100));
        QVERIFY(driver.dragging() && !e->caja(u"D1c"_s));
        driver.move(e->cont, QPoint(200, 150), shift);
        QVERIFY((caja = e->caja(u"D1c"_s)) && caja->isVisible() && e->caja(u"D2c"_s));
        QCOMPARE(caja->pos(), QPoint(20 + 175, 12 + 135));
        driver.move(e->cont, QPoint(210, 150));
        QVERIFY(caja->isHidden());
        driver.move(e->cont, QPoint(220, 150), shift);
        QVERIFY(caja->isVisible());
        QCOMPARE(caja->pos(), QPoint(20 + 195, 12 + 135));
        // Boxes dragged past the right edge grow the control to their right edge plus 100.
        driver.move(e->cont, QPoint(600, 150), shift);
        QCOMPARE(e->cont->width(), 118 + 2 + 575 + 100);
        e->cont->setBloqueo(true); // locked, the drop moves nothing
        QCOMPARE(driver.drop(e->cont, QPoint(600, 150), shift), Qt::IgnoreAction);
        e->cont->deseleccionarTodos(), driver.finish(); // the boxes of children no longer selected go too
        QVERIFY(e->sinCajas());
        // Text from elsewhere: a copy even with Shift, a Shift-drop of it does nothing; the map hears Ctrl.
        QMimeData texto;
        texto.setText(u"Lfuera"_s);
        QCOMPARE(DragDriver::moveData(e->cont, QPoint(50, 50), &texto, shift), Qt::CopyAction);
        QCOMPARE(DragDriver::dropData(e->cont, QPoint(50, 50), &texto, shift), Qt::IgnoreAction);
        QCOMPARE(DragDriver::dropData(e->cont, QPoint(115, 15), &texto, ctrl), Qt::CopyAction);
        QCOMPARE(e->log(), u"moved(D2) moved(D1) droped(Lfuera,D2,2)"_s);
        // A box whose right edge passes 16 bits fails each drag-over once, entering included, and still
        // follows the pointer: D2 drawn from x 110, pressed at 112.
        d2->setAncho(32700), QTest::mousePress(e->cont, Qt::LeftButton, {}, QPoint(112, 15));
        arrastrar(e->cont, QPoint(122, 15));
        for (int x : { 120, 130, 140 })
            driver.move(e->cont, QPoint(x, 15), shift);
        QCOMPARE(e->caja(u"D2c"_s)->x(), 110 + 140 - 112);
        QCOMPARE(e->errors.messages(), QStringList(3, u"ContenedorX.dragOver->Overflow"_s));
        e->errors.clear(), driver.finish();
    }
    void alignAndEqualise()
    {
        const Hijo a = e->hijo(u"A"_s, { 10, 10, 20, 20 }), b = e->hijo(u"B"_s, { 50, 70, 30, 10 });
        const Hijo z = e->hijo(u"Z"_s, { 5, 40, 400, 300 });
        const auto lugares = [&] {
            return QList { a->getX(), a->getY(), b->getX(), b->getY(), a->getAncho(), b->getAlto() };
        };
        e->cont->alinearHorizontal(nullptr); // nothing selected: nothing happens, even with no reference
        e->cont->seleccionar(u"B"_s), e->cont->seleccionar(u"A"_s), e->cont->alinearHorizontal(z);
        QCOMPARE(lugares(), QList<qint16>({ 10, 40, 50, 40, 20, 10 }));
        e->cont->alinearVertical(z);
        QCOMPARE(lugares(), QList<qint16>({ 5, 40, 5, 40, 20, 10 }));
        // Equal size, the reference itself selected too; the control grows to the new sizes.
        e->cont->seleccionar(u"Z"_s), e->cont->igualarDimension(z);
        QCOMPARE(lugares(), QList<qint16>({ 5, 40, 5, 40, 400, 300 }));
        QCOMPARE(e->cont->size(), QSize(405 + 4, 340 + 4));
        QCOMPARE(e->log(), "moved(B) moved(A) moved(B) moved(A) moved(B) moved(A) moved(Z)");
        // A child container is grown back round its own children, also when fitted after another one.
        const Hijo nave = e->hijo(u"C"_s, { 0, 0, 200, 100 });
        e->conNieto(nave);
        e->cont->deseleccionarTodos(), e->cont->seleccionar(u"A"_s), e->cont->seleccionar(u"C"_s);
        b->setAncho(40), b->setAlto(30);
        e->cont->igualarDimension(b);
        QCOMPARE(QSize(nave->getAncho(), nave->getAlto()), QSize(154, 54));
    }
    void distribute_data()
    {
        QTest::addColumn<Reparto>("reparto");
        for (const bool h : { true, false }) {
            const auto fila = [h](const char *nombre, const QList<int> &posiciones, const QList<int> &largos,
                                  const QList<int> &resultado, const QString &movidos) {
                QTest::addRow("%s, %s", h ? "horizontal" : "vertical", nombre)
                    << Reparto { h, posiciones, largos, resultado, movidos };
            };
            // The interior ones start gap units after the previous one's last unit: 99, not 100.
            fila("unsorted", { 200, 0, 50 }, { 20, 20, 20 }, { 200, 0, 99 }, "2");
            fila("gap 14.5 rounds down", { 0, 10, 31 }, { 1, 1, 1 }, { 0, 14, 31 }, "1");
            fila("gap 15.5 rounds up", { 0, 10, 33 }, { 1, 1, 1 }, { 0, 16, 33 }, "1");
            // Equal positions: the one selected later comes first. Gap (309 + 1 - 40) / 3 = 90.
            fila("equal positions", { 0, 100, 100, 300 }, { 10, 10, 10, 10 }, { 0, 198, 99, 300 }, "2 1");
            // Fitted after each move (from the second on, from what changed): the long one moves back 136,
            // the control shrinks; the one that moves shared the far edge with the last, which keeps it.
            fila("it shrinks", { 0, 10, 400, 500 }, { 10, 10, 600, 10 }, { 0, 132, 264, 500 }, "1 2");
            fila("a shared far edge", { 0, 10, 300, 400 }, { 10, 10, 400, 300 }, { 0, 2, 4, 400 }, "1 2");
            fila("two do nothing", { 0, 70 }, { 20, 20 }, { 0, 70 }, "");
            // The first's last unit is 32770 and the gap -1: the second would leave 16 bits.
            fila("past 16 bits", { 5, 10, 40 }, { 32766, 1, 1 }, { 5, 10, 40 },
                 u"ContenedorX.IContenedorX_distribuir%1->Overflow"_s.arg(h ? "Horizontal" : "Vertical"));
        }
    }
    void distribute()
    {
        QFETCH(Reparto, reparto);
        auto &[h, desde, largo, hasta, movidos] = reparto;
        QList<Hijo> hijos;
        for (int i = 0; i < desde.size(); ++i)
            hijos << e->hijo(QString::number(i),
                             h ? QRect(desde[i], 7, largo[i], 5) : QRect(7, desde[i], 5, largo[i]));
        e->cont->refrescar(), e->cont->seleccionarTodos();
        h ? e->cont->distribuirHorizontal() : e->cont->distribuirVertical();
        for (int i = 0; i < hijos.size(); ++i)
            QCOMPARE(QPoint(hijos[i]->getX(), hijos[i]->getY()),
                     h ? QPoint(hasta[i], 7) : QPoint(7, hasta[i]));
        const QSize ajustado = e->cont->size();
        e->cont->refrescar();
        QCOMPARE(e->cont->size(), ajustado); // as a fit from scratch
        QCOMPARE(e->errors.messages().join("") + e->log(),
                 movidos.replace(QRegularExpression(u"(\\d)"_s), u"moved(\\1)"_s));
        e->errors.clear();
    }
    void failures()
    {
        // No frame to fit, no object: each says what is missing.
        ContenedorX suelto, vacio;
        suelto.setObjeto(e->raiz), vacio.seleccionarTodos(), vacio.seleccionar(u"R"_s), vacio.grab();
        // A child of another object in the selection: erased and redrawn with a message each, still aligned.
        auto otro = std::make_shared<Objeto>();
        otro->setCodigo(u"X"_s), otro->setPadre(u"OTRO"_s), e->cont->getSeleccionados()->add(otro);
        e->cont->alinearHorizontal(e->hijo(u"Z"_s, { 60, 60, 0, 0 }));
        QCOMPARE(otro->getY(), qint16(60));
        QCOMPARE(e->log(), u"moved(X)"_s);
        const QString noSet = u"->Object variable or With block variable not set"_s;
        const QString nivel = u"->No se encontró padre del objeto en primer nivel"_s;
        QCOMPARE(e->errors.messages(),
                 QStringList({ "ContenedorX.validarControl" + noSet,
                               "ContenedorX.IContenedorX_seleccionarTodos" + noSet,
                               "ContenedorX.IContenedorX_seleccionar" + noSet, "ContenedorX.limpiar" + nivel,
                               "ContenedorX.dibujarNuevo" + nivel }));
        e->errors.clear();
    }

private:
    static Px todo(QRect r, QRgb c) { return { r, c, r.width() * r.height(), r.width() * r.height(), {} }; }
    static Px tinta(QRect r, QRgb c) { return { r, c, 1, r.width() * r.height(), {} }; } // some pixels of it
    static Px texto(QPoint p, QRgb c, const QString &t = u"H"_s) { return { { p, p }, c, 0, 0, t }; }
    static QList<Px> rayado(QRect r, QRgb c) // lines of the colour over white, neither alone
    {
        const int n = r.width() * (r.height() - 1);
        return { { r, c, r.width() + 1, n, {} }, { r, white, r.width() + 1, n, {} } };
    }

    std::optional<Escena> e;
};

QTEST_MAIN(tst_ContenedorX)
#include "tst_contenedorx.moc"
