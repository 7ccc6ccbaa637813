// SPDX-License-Identifier: MIT
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
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <optional>

using namespace tarvonix;
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
        raiz->setCodigo(u"R"_s);
        raiz->setTip(u"R"_s);
        raiz->setPuedeContener(true);
        cont->setRoot(&mapa);
        cont->setObjeto(raiz);
        cont->setViewPort(0, 0, 4000, 4000);
        frame.show();
    }
    Hijo hijo(const QString &codigo, QRect r, int forma = 1, qint32 color = 0xFF, const Hijo &padre = {})
    {
        auto o = std::make_shared<Objeto>();
        o->setCodigo(codigo);
        o->setPadre(padre ? padre->getCodigo() : u"R"_s);
        o->setX(qint16(r.x()));
        o->setY(qint16(r.y()));
        o->setAncho(qint16(r.width()));
        o->setAlto(qint16(r.height()));
        o->setForma(qint16(forma));
        o->setColor(color);
        (padre ? padre : raiz)->getObjetos()->add(o);
        return o;
    }
    // Makes a container of the child, with a child of its own whose right edge is at 150 and bottom at 50.
    void conNieto(const Hijo &o)
    {
        o->setPuedeContener(true);
        hijo(u"N"_s, { 120, 0, 30, 50 }, 1, 0xFF, o);
    }
    QString log() const { return mapa.log().join(' '); }
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
        return cont->findChildren<Dummy *>() == QList { caja(u"box"_s) };
    }

    ErrorCatcher errors; // a message the test did not take out fails it
    RecordingMapa mapa;
    Hijo raiz = std::make_shared<Objeto>();
    TestFrame frame;
    ContenedorX *cont = new ContenedorX(&frame);
};

// How many pixels of r have colour c (min to max), or, with a text, that it is drawn from r's top left.
struct Px
{
    QRect r;
    QRgb c;
    int min = 0, max = 0;
    QString texto = {}; // over white
};

} // namespace

class tst_ContenedorX : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { e.emplace(); }
    void cleanup() { QCOMPARE(e->errors.messages(), QStringList()); }
    void painting_data();
    void painting();
    void viewport();
    void sizeFit_data();
    void sizeFit();
    void clicks_data();
    void clicks();
    void dragMoves();
    void alignAndEqualise();
    void distribute_data();
    void distribute();
    void failures();

private:
    static Px todo(QRect r, QRgb c) { return { r, c, r.width() * r.height(), r.width() * r.height() }; }
    static Px tinta(QRect r, QRgb c) { return { r, c, 1, r.width() * r.height() }; } // some pixels of it
    static Px texto(QPoint p, QRgb c, const QString &t = u"H"_s) { return { { p, p }, c, 0, 0, t }; }
    static QList<Px> rayado(QRect r, QRgb c) // lines of the colour over white, neither alone
    {
        const int n = r.width() * (r.height() - 1);
        return { { r, c, r.width() + 1, n }, { r, white, r.width() + 1, n } };
    }

    std::optional<Escena> e;
};

void tst_ContenedorX::painting_data()
{
    // The forma; c: may contain, s: selected, a: active, p: a picture, b: a border round the control.
    QTest::addColumn<QString>("estado");
    QTest::addColumn<qint32>("color");
    QTest::addColumn<QSize>("tamano");
    QTest::addColumn<QList<Px>>("checks"); // from where the child is drawn
    const QFontMetrics fm(QApplication::font());
    const int tw = fm.horizontalAdvance('H'), th = fm.height(), cw = fm.horizontalAdvance('W');
    // The tip "H" is centred in the fill less a margin of 2, and readable on it; nothing drawn past the box.
    const QPoint centro(qRound(2 + (96 - tw) / 2.0), qRound(2 + (26 - th) / 2.0));
    const QRect letra(centro, QSize(tw, th));
    const QRect borde(0, 0, 100, 1), caja(4, 4, 30, 20), cuadro(5, 5, 18, 18), esquina(0, 0, 1, 1);
    const QSize s(100, 30), nave(120, 60), columna(cw + 5, 3 * th + 10);
    const auto dibujo
        = [](const char *nombre, const char *estado, qint32 color, QSize tamano, const QList<Px> &checks) {
              QTest::newRow(nombre) << estado << color << tamano << checks;
          };
    dibujo("box", "1b", 0xFF, s,
           { todo(borde, black), todo(caja, red), tinta(letra, white), todo({ 100, 0, 1, 30 }, white) });
    dibujo("circle", "2", 0xFF00, s, { todo(esquina, white), todo({ 28, 13, 10, 10 }, verde) });
    // Forma 3: a square as wide as the box is high less 4, no outline, the tip 2 + 2 right of it.
    dibujo("square", "3", 0x800000, s,
           { todo(esquina, white), todo(cuadro, marino), texto({ 32, centro.y() }, black) });
    dibujo("selected: hatched", "1s", 0x800000, s,
           QList<Px> { todo(borde, black), tinta(letra, black) } + rayado(caja, marino));
    dibujo("selected square: outlined", "3s", 0xFF, s, QList { todo(esquina, black) } + rayado(cuadro, red));
    dibujo("selected white: black hatch", "1s", 0xFFFFFF, s, rayado(caja, black));
    dibujo("active: dotted", "1a", 0xFF, s, { { borde, black, 6, 99 }, todo(caja, red) });
    dibujo("picture", "1p", 0xFF, s, { todo({ 18, 7, 1, 1 }, red), todo({ 78, 22, 1, 1 }, amarillo) });
    dibujo("picture, selected", "1ps", 0xFF, s, { { caja, black, 21, 599 } });
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
}

void tst_ContenedorX::painting()
{
    QFETCH(QString, estado);
    QFETCH(qint32, color);
    QFETCH(QSize, tamano);
    QFETCH(QList<Px>, checks);
    QTemporaryDir dir;
    const Hijo o = e->hijo(u"A"_s, { { 10, 10 }, tamano }, estado.at(0).digitValue(), color);
    o->setTip(tamano.width() < 50 ? u"ABC"_s : u"H"_s);
    o->setPuedeContener(estado.contains('c'));
    if (estado.contains('p')) {
        QImage quad(2, 2, QImage::Format_RGB32); // red top left, yellow bottom right: not mirrored
        quad.fill(verde);
        quad.setPixel(0, 0, red);
        quad.setPixel(1, 1, amarillo);
        QVERIFY(quad.save(dir.filePath(u"quad.png"_s)));
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
    for (const Px &px : checks) {
        const QRect r = px.r.translated(12, 12);
        const int n = pixels::count(image, r, QColor(px.c));
        QVERIFY2(px.texto.isEmpty()
                     ? n >= px.min && n <= px.max
                     : pixels::showsText(image, r.topLeft(), px.texto, e->cont->font(), px.c, white),
                 qPrintable(u"%1 at %2,%3: %4 pixels"_s.arg(px.texto).arg(r.x()).arg(r.y()).arg(n)));
    }
    // The bound object: its tip grey at the top left, no outline; a border only when asked.
    QVERIFY(pixels::showsText(image, { 2, 2 }, u"R"_s, e->cont->font(), grey, white));
    QCOMPARE(image.pixel(0, 0), estado.contains('b') ? black : white);
    QCOMPARE(image.pixel(e->cont->width() - 1, e->cont->height() - 1), estado.contains('b') ? black : white);
}

void tst_ContenedorX::viewport()
{
    // A new container shows no child until told what is visible; then those with an edge in the
    // viewport, both bounds included, not one wider and taller than it.
    e->hijo(u"A"_s, { 10, 10, 40, 30 }); // drawn from 12 to 52
    e->hijo(u"G"_s, { 100, 0, 150, 140 }); // from 102
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
        QCOMPARE(image.pixel(31, 26), a);
        QCOMPARE(image.pixel(150, 70), g);
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
    QTest::newRow("within the slack") << QSize(402, 252) << 1.f << QRect() << QSize(402, 252) << QSize();
    QTest::newRow("one past the slack") << QSize(403, 253) << 1.f << QRect() << minimo << QSize();
    QTest::newRow("mixed") << QSize(350, 600) << 1.f << QRect() << QSize(350, 152) << QSize();
    QTest::newRow("escala 2") << QSize(500, 152) << 2.f << QRect(300, 0, 95, 10) << QSize(794, 300)
                              << QSize(95, 10);
    QTest::newRow("escala 0") << minimo << 0.f << QRect(0, 0, 10, 10) << QSize(4, 4) << QSize(10, 10);
    // A nested container grows round its children plus 4 / escala: 150.5 at escala 8 rounds to the even 150.
    QTest::newRow("nested, escala 8")
        << minimo << 8.f << QRect(0, 0, 50, 0) << QSize(2388, 1188) << QSize(150, 50);
    QTest::newRow("nested, not shrunk")
        << minimo << 1.f << QRect(0, 0, 500, 0) << QSize(504, 152) << QSize(500, 54);
}

void tst_ContenedorX::sizeFit()
{
    QFETCH(QSize, antes);
    QFETCH(float, escala);
    QFETCH(QRect, hijo);
    QFETCH(QSize, despues);
    QFETCH(QSize, hijoDespues);
    e->cont->resize(antes);
    const Hijo o = hijo.isNull() ? nullptr : e->hijo(u"A"_s, hijo);
    if (o && hijo.height() == 0)
        e->conNieto(o);
    e->frame.calls.clear();
    e->cont->setEscala(escala);
    QCOMPARE(e->cont->size(), despues);
    QCOMPARE(e->frame.calls, antes == despues ? QStringList() : QStringList { u"Resize"_s });
    QCOMPARE(o ? QSize(o->getAncho(), o->getAlto()) : QSize(), hijoDespues);
    // Nothing is hit at a scale of 0, and nothing fails.
    QCOMPARE(e->cont->sobreQuien(hijo.x() * escala + 3, 3), ObjetoPtr(escala > 0 && o ? o : e->raiz));
    pixels::grab(e->cont);
}

void tst_ContenedorX::clicks_data()
{
    // L or R: a click, with S: Shift, C: Ctrl; band: from (11, 11) to en; then the selection before.
    QTest::addColumn<QString>("gesto");
    QTest::addColumn<QPoint>("en");
    QTest::addColumn<QString>("despues"); // the selection after | what the root heard
    // A at (12, 12) - (52, 42) edges included, B overlapping it from (32, 22), C at (202, 102) - (232, 132).
    const QPoint a(20, 20), c(210, 110);
    QTest::newRow("overlap: the earlier child") << "L" << QPoint(40, 30) << "A | clicked(A,false)";
    QTest::newRow("right and bottom edges in") << "L" << QPoint(232, 132) << "C | clicked(C,false)";
    QTest::newRow("Shift toggles") << "LS A B" << a << "B | clicked(A,false)";
    QTest::newRow("Shift+Ctrl: plain") << "LSC A C" << a << "A | clicked(A,false)";
    QTest::newRow("Ctrl on nothing keeps") << "LC A" << QPoint(300, 140) << "A | clicked(R,true)";
    QTest::newRow("right: selects alone") << "R A" << c << "C | rightClicked(C,false)";
    QTest::newRow("right: keeps the group") << "R A C" << c << "A C | rightClicked(C,true)";
    QTest::newRow("Shift+right: no toggle") << "RS A" << c << "A | rightClicked(C,false)";
    QTest::newRow("plain click narrows a group") << "L C A" << a << "A | clicked(A,false)";
    QTest::newRow("the frame's answer is reported") << "L" << c << "C | clicked(none,false)";
    // The band takes what lies wholly inside it, edges included; a press on nothing clears first.
    QTest::newRow("band round A") << "band B" << QPoint(52, 42) << "A | ";
    QTest::newRow("band one short") << "band" << QPoint(51, 42) << " | ";
}

void tst_ContenedorX::clicks()
{
    QFETCH(QString, gesto);
    QFETCH(QPoint, en);
    QFETCH(QString, despues);
    e->hijo(u"A"_s, { 10, 10, 40, 30 });
    e->hijo(u"B"_s, { 30, 20, 40, 30 });
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
        e->mover(en);
    QTest::mouseRelease(e->cont, boton, teclas, en);
    QStringList seleccion;
    for (const ObjetoPtr &o : *e->cont->getSeleccionados())
        seleccion.append(o->getCodigo());
    QCOMPARE(seleccion.join(' ') + " | " + e->log(), despues);
}

void tst_ContenedorX::dragMoves()
{
    // At escala 4, D1 at X 10 and D2 at X 101: a Shift-drag 30 pixels right moves them 7.5 units, to even.
    const Hijo d1 = e->hijo(u"D1"_s, { 10, 10, 10, 10 }), d2 = e->hijo(u"D2"_s, { 101, 10, 10, 10 });
    e->cont->setEscala(4);
    e->cont->seleccionar(u"D2"_s); // selecting all passes over it
    e->cont->seleccionarTodos();
    DragDriver driver;
    QTest::mousePress(e->cont, Qt::LeftButton, shift, { 50, 50 });
    e->mover({ 56, 50 }, shift);
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
    // At escala 1, D1 drawn from (20, 12): a plain press inside the group keeps it; a plain drag has no
    // boxes until Shift is pressed: then they appear where the pointer is, hide when it is released and
    // show again with it.
    e->cont->setEscala(1);
    QTest::mousePress(e->cont, Qt::LeftButton, {}, QPoint(25, 15));
    e->mover(QPoint(100, 100));
    QVERIFY(driver.dragging() && !e->caja(u"D1c"_s));
    driver.move(e->cont, QPoint(200, 150), shift);
    caja = e->caja(u"D1c"_s);
    QVERIFY(caja && caja->isVisible() && e->caja(u"D2c"_s));
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
    e->cont->deseleccionarTodos(); // the boxes of children no longer selected go too
    driver.finish();
    QVERIFY(e->sinCajas());
    // Text from elsewhere is a copy even with Shift, and a Shift-drop of it does nothing; the map hears
    // the other modifiers.
    QMimeData texto;
    texto.setText(u"Lfuera"_s);
    QCOMPARE(DragDriver::moveData(e->cont, QPoint(50, 50), &texto, shift), Qt::CopyAction);
    QCOMPARE(DragDriver::dropData(e->cont, QPoint(50, 50), &texto, shift), Qt::IgnoreAction);
    QCOMPARE(DragDriver::dropData(e->cont, QPoint(115, 15), &texto, ctrl), Qt::CopyAction);
    QCOMPARE(e->log(), u"moved(D2) moved(D1) droped(Lfuera,D2,2)"_s);
}

void tst_ContenedorX::alignAndEqualise()
{
    const Hijo a = e->hijo(u"A"_s, { 10, 10, 20, 20 }), b = e->hijo(u"B"_s, { 50, 70, 30, 10 });
    const Hijo z = e->hijo(u"Z"_s, { 5, 40, 400, 300 });
    const auto lugares = [&] {
        return QList { a->getX(), a->getY(), b->getX(), b->getY(), a->getAncho(), b->getAlto() };
    };
    e->cont->alinearHorizontal(nullptr); // nothing selected: nothing happens, not even without a reference
    e->cont->seleccionar(u"B"_s);
    e->cont->seleccionar(u"A"_s);
    e->cont->alinearHorizontal(z);
    QCOMPARE(lugares(), QList<qint16>({ 10, 40, 50, 40, 20, 10 }));
    e->cont->alinearVertical(z);
    QCOMPARE(lugares(), QList<qint16>({ 5, 40, 5, 40, 20, 10 }));
    // Equal size, the reference itself selected too; the control grows to the new sizes.
    e->cont->seleccionar(u"Z"_s);
    e->cont->igualarDimension(z);
    QCOMPARE(lugares(), QList<qint16>({ 5, 40, 5, 40, 400, 300 }));
    QCOMPARE(e->cont->size(), QSize(405 + 4, 340 + 4));
    QCOMPARE(e->log(), "moved(B) moved(A) moved(B) moved(A) moved(B) moved(A) moved(Z)");
    // A child container is grown back round its own children, also when fitted after another one.
    const Hijo nave = e->hijo(u"C"_s, { 0, 0, 200, 100 });
    e->conNieto(nave);
    e->cont->deseleccionarTodos();
    e->cont->seleccionar(u"A"_s);
    e->cont->seleccionar(u"C"_s);
    b->setAncho(40);
    b->setAlto(30);
    e->cont->igualarDimension(b);
    QCOMPARE(QSize(nave->getAncho(), nave->getAlto()), QSize(154, 54));
}

void tst_ContenedorX::distribute_data()
{
    QTest::addColumn<bool>("horizontal");
    QTest::addColumn<QList<int>>("posiciones");
    QTest::addColumn<QList<int>>("largos");
    QTest::addColumn<QList<int>>("resultado");
    QTest::addColumn<QString>("movidos"); // the codes moved, or the message
    for (const bool h : { true, false }) {
        const auto fila = [h](const char *nombre, const QList<int> &posiciones, const QList<int> &largos,
                              const QList<int> &resultado, const QString &movidos) {
            QTest::addRow("%s, %s", h ? "horizontal" : "vertical", nombre)
                << h << posiciones << largos << resultado << movidos;
        };
        // The interior ones start gap units after the previous one's last unit: 99, not 100.
        fila("unsorted", { 200, 0, 50 }, { 20, 20, 20 }, { 200, 0, 99 }, "2");
        fila("gap 14.5 rounds down", { 0, 10, 31 }, { 1, 1, 1 }, { 0, 14, 31 }, "1");
        fila("gap 15.5 rounds up", { 0, 10, 33 }, { 1, 1, 1 }, { 0, 16, 33 }, "1");
        // Equal positions: the one selected later comes first. Gap (309 + 1 - 40) / 3 = 90.
        fila("equal positions", { 0, 100, 100, 300 }, { 10, 10, 10, 10 }, { 0, 198, 99, 300 }, "2 1");
        // Fitted after each move (from the second on, from what changed): the long one moves back 136 units
        // and the control shrinks; the one that moves shared the far edge with the last, which keeps it.
        fila("the control shrinks", { 0, 10, 400, 500 }, { 10, 10, 600, 10 }, { 0, 132, 264, 500 }, "1 2");
        fila("a shared far edge", { 0, 10, 300, 400 }, { 10, 10, 400, 300 }, { 0, 2, 4, 400 }, "1 2");
        fila("two do nothing", { 0, 70 }, { 20, 20 }, { 0, 70 }, "");
        // The first's last unit is 32770 and the gap -1: the second would leave 16 bits.
        fila("past 16 bits", { 5, 10, 40 }, { 32766, 1, 1 }, { 5, 10, 40 },
             u"ContenedorX.IContenedorX_distribuir%1->Overflow"_s.arg(h ? "Horizontal" : "Vertical"));
    }
}

void tst_ContenedorX::distribute()
{
    QFETCH(bool, horizontal);
    QFETCH(QList<int>, posiciones);
    QFETCH(QList<int>, largos);
    QFETCH(QList<int>, resultado);
    QFETCH(QString, movidos);
    QList<Hijo> hijos;
    for (int i = 0; i < posiciones.size(); ++i)
        hijos << e->hijo(QString::number(i),
                         horizontal ? QRect(posiciones[i], 7, largos[i], 5)
                                    : QRect(7, posiciones[i], 5, largos[i]));
    e->cont->refrescar();
    e->cont->seleccionarTodos();
    horizontal ? e->cont->distribuirHorizontal() : e->cont->distribuirVertical();
    for (int i = 0; i < hijos.size(); ++i)
        QCOMPARE(QPoint(hijos[i]->getX(), hijos[i]->getY()),
                 horizontal ? QPoint(resultado[i], 7) : QPoint(7, resultado[i]));
    const QSize ajustado = e->cont->size();
    e->cont->refrescar();
    QCOMPARE(e->cont->size(), ajustado); // as a fit from scratch
    QCOMPARE(e->errors.messages().join("") + e->log(),
             movidos.replace(QRegularExpression(u"(\\d)"_s), u"moved(\\1)"_s));
    e->errors.clear();
}

void tst_ContenedorX::failures()
{
    // No frame to fit, no object: each says what is missing.
    ContenedorX suelto, vacio;
    suelto.setObjeto(e->raiz);
    vacio.seleccionarTodos();
    vacio.seleccionar(u"R"_s);
    vacio.grab();
    // A child of another object in the selection: erased and redrawn with a message each, still aligned.
    auto otro = std::make_shared<Objeto>();
    otro->setCodigo(u"X"_s);
    otro->setPadre(u"OTRO"_s);
    e->cont->getSeleccionados()->add(otro);
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

QTEST_MAIN(tst_ContenedorX)
#include "tst_contenedorx.moc"
