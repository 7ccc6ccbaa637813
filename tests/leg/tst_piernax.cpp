#include <tarvonix/leg/geometriaceldas.h>
#include <tarvonix/leg/piernax.h>
#include <tarvonix/model/imagen.h>
#include <tarvonix/model/lote.h>
#include <tarvonix/model/objetos.h>
#include <tarvonix/model/pierna.h>
#include <tarvonix/model/ubicacion.h>
#include <tarvonix/widgets/etiquetas.h>

#include "dragdriver.h"
#include "errorcatcher.h"
#include "pixels.h"
#include "recordingmapa.h"
#include "testframe.h"

#include <QPaintEvent>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using namespace tarvonix;

namespace {

const QColor blanco(Qt::white), negro(Qt::black), verde(Qt::green), azul(Qt::blue), nada;

// A leg "P01" of filas tiers, each largo positions long but the top one masArriba longer, with a green box
// "Lt.p" in every position.
std::shared_ptr<Pierna> nuevaPierna(int filas, int largo, bool clasica, int masArriba = 0)
{
    auto leg = std::make_shared<Pierna>();
    leg->setCodigo("P01");
    leg->setClasica(clasica);
    leg->setEscalas(qint16(filas));
    for (int t = 1; t <= filas; ++t) {
        leg->setEscala(qint16(t), qint16(largo + (t == filas ? masArriba : 0)));
        for (int p = 1; p <= leg->getLargo(qint16(t)); ++p) {
            auto lote = std::make_shared<Lote>();
            lote->setCodigo(QStringLiteral("L%1.%2").arg(t).arg(p));
            lote->setForma(FormaCaja);
            lote->setColor(0x00FF00);
            lote->setPadre(leg->getUbicacion(qint16(t), qint16(p))->getCodigo());
            leg->setObjeto(qint16(t), qint16(p), lote);
        }
    }
    return leg;
}

// The control over a leg in a recording frame, with a recording root.
struct Vista
{
    explicit Vista(const std::shared_ptr<Pierna> &leg, bool sinMarco = false, bool sinRaiz = false)
        : vista(new PiernaX(sinMarco ? nullptr : &frame))
        , suelta(sinMarco ? vista : nullptr)
    {
        vista->setRoot(sinRaiz ? nullptr : &mapa);
        if (leg)
            vista->setObjeto(leg);
        frame.resize(qMax(vista->width(), 100), qMax(vista->height(), 100));
        frame.show();
        (void)QTest::qWaitForWindowExposed(&frame);
        frame.calls.clear();
    }
    QWidget *tira(const char *nombre) const { return vista->findChild<etiquetas *>(nombre); }

    TestFrame frame;
    RecordingMapa mapa;
    PiernaX *vista;
    std::unique_ptr<PiernaX> suelta;
};

/*
    Runs the steps on Vista over a leg of 3 x 3 positions with (3, 1) empty (plain, 83 high: tier 1 at
    y 42..61, tier 2 at y 21..40; or classic) and answers what came of them, in order: the root's calls,
    the failures as "!operation" (with the message mensaje), the answers to drops, the drags started,
    the last object the frame was asked to activate and the selection ("(off)" when not flagged).
    A step is a gesture, clicked: "2.3" the centre of cell (2, 3), "@25,21" a point, "E1" the top slot
    of the tier strip, "U1" the first of the position strip, after c (Ctrl), s (Shift), r (right
    button); with a suffix v the selection is noted between press and release, with ~ the pointer moves
    10 down meanwhile. "soltar:" or "sobre:" and a gesture drops text there or drags it over from
    outside ("imagen" turns it into a picture); "todos", "mover", "codigo:", "escala:" call the control.
*/
QString correr(const QString &montaje, const QString &pasos, const QString &mensaje)
{
    ErrorCatcher catcher;
    auto leg = montaje == "sin pierna" ? nullptr : nuevaPierna(3, 3, montaje == "clasica");
    if (montaje == "sin rejilla")
        leg = std::make_shared<Pierna>();
    else if (leg)
        leg->setObjeto(3, 1, nullptr);
    Vista v(leg, montaje == "sin marco", montaje == "sin raiz");
    DragDriver driver;
    QStringList salida;
    QMimeData datos;
    datos.setText("D7");
    const auto seleccion = [&] {
        QStringList codigos;
        for (const ObjetoPtr &o : *v.vista->getSeleccionados())
            codigos.append(o->getCodigo() + (o->getSeleccionado() ? "" : "(off)"));
        return '{' + codigos.join(',') + '}';
    };
    const auto anotar = [&] {
        salida += v.mapa.log();
        v.mapa.clear();
        for (const QString &m : catcher.messages())
            salida += m.endsWith("->" + mensaje) ? '!' + m.section("->", 0, 0).mid(8) : m;
        catcher.clear();
    };
    anotar();
    static const QRegularExpression forma(R"(^([csr]*)([EU@]?)(\d+)[.,]?(\d*)([v~]?)$)");
    for (const QString &paso : pasos.split(u' ', Qt::SkipEmptyParts)) {
        const QString arg = paso.section(u':', 1);
        const QRegularExpressionMatch g = forma.match(paso.contains(u':') ? arg : paso);
        const Qt::KeyboardModifiers teclas
            = (g.captured(1).contains(u'c') ? Qt::ControlModifier : Qt::NoModifier)
            | (g.captured(1).contains(u's') ? Qt::ShiftModifier : Qt::NoModifier);
        const Qt::MouseButton boton = g.captured(1).contains(u'r') ? Qt::RightButton : Qt::LeftButton;
        const int a = g.captured(3).toInt(), b = g.captured(4).toInt();
        QWidget *w = g.captured(2) == "E" ? v.tira("escalas")
            : g.captured(2) == "U"        ? v.tira("Ubicaciones")
                                          : v.vista;
        const QPoint pt = g.captured(2) == "@" ? QPoint(a, b)
            : w != v.vista
            ? QPoint(10, 21 * a - 16)
            : GeometriaCeldas(v.vista->height(), 1, montaje == "clasica").celda(a, b).center().toPoint();
        if (paso == "todos") {
            v.vista->seleccionarTodos();
        } else if (paso == "imagen") {
            datos.setImageData(QImage(2, 2, QImage::Format_RGB32));
            datos.removeFormat("text/plain");
        } else if (paso == "mover") { // a grid has nothing to lock, align or distribute
            const ObjetoPtr primero = v.vista->getSeleccionados()->Item(1);
            v.vista->setBloqueo(true);
            v.vista->alinearHorizontal(primero);
            v.vista->alinearVertical(primero);
            v.vista->igualarDimension(primero);
            v.vista->distribuirHorizontal();
            v.vista->distribuirVertical();
        } else if (paso.startsWith("codigo:")) {
            v.vista->seleccionar(arg);
        } else if (paso.startsWith("escala:")) {
            v.vista->setEscala(arg.toFloat());
        } else if (paso.contains(u':')) {
            const Qt::DropAction efecto = paso.startsWith("soltar")
                ? DragDriver::dropData(w, pt, &datos, teclas)
                : DragDriver::moveData(w, pt, &datos, teclas);
            salida += efecto == Qt::CopyAction ? "copy" : efecto == Qt::IgnoreAction ? "ignore" : "other";
        } else {
            const QPoint fin = pt + QPoint(0, g.captured(5) == "~" ? 10 : 0);
            QTest::mousePress(w, boton, teclas, pt);
            QMouseEvent mueve(QEvent::MouseMove, fin, w->mapToGlobal(fin), Qt::NoButton, boton, {});
            if (fin != pt && QCoreApplication::sendEvent(w, &mueve) && driver.dragging()) {
                salida += "drag(" + driver.text() + ')';
                driver.finish();
            }
            if (g.captured(5) == "v")
                salida += seleccion();
            QTest::mouseRelease(w, boton, teclas, fin);
        }
        anotar();
    }
    const QStringList activados = v.frame.calls.filter("setActive");
    if (!activados.isEmpty())
        salida += "activo" + activados.last().mid(9);
    return (salida << seleccion()).join(u' ');
}

} // namespace

class tst_PiernaX : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void drawing_data();
    void drawing();
    void onlyTheChangedCellIsRepainted();
    void gestures_data();
    void gestures();
};

void tst_PiernaX::drawing_data()
{
    QTest::addColumn<bool>("clasica");
    QTest::addColumn<QRect>("zona");
    QTest::addColumn<QColor>("color");
    QTest::addColumn<QColor>("fondo"); // when valid, the only other colour in the zone
    QTest::addColumn<QPoint>("cuantos"); // how many pixels of color: from x to y
    QTest::addColumn<QString>("texto"); // when set, drawn in color over fondo, centred in the zone
    // The inside of cell (t, p) of the scene drawn below, or the part at (dx, dy) of size (w, h).
    const auto celda = [](int t, int p, int dx = 0, int dy = 0, int w = 0, int h = 0, bool clasica = false) {
        const QRect c = GeometriaCeldas(clasica ? 77 : 83, 1, clasica).celda(t, p).toRect();
        return w ? QRect(c.x() + dx, c.y() + dy, w, h) : c.adjusted(1, 1, -1, -1);
    };
    const auto fila = [](const char *nombre, QRect zona, QColor color, QColor fondo, int minimo, int maximo,
                         const char *texto = "", bool clasica = false) {
        QTest::newRow(nombre) << clasica << zona << color << fondo << QPoint(minimo, maximo)
                              << QString(texto);
    };
    fila("box body", celda(1, 1), verde, nada, 324, 324);
    fila("box outline", celda(1, 1, 0, 0, 20, 1), negro, nada, 20, 20);
    fila("gap column", QRect(41, 42, 1, 20), blanco, nada, 20, 20);
    fila("selected: hatched", celda(1, 2), verde, blanco, 19, 161);
    fila("white selected: hatched black", celda(1, 3), negro, blanco, 19, 161);
    fila("active: dotted outline", celda(1, 4, 0, 0, 20, 1), negro, blanco, 4, 14);
    fila("picture", celda(1, 5), azul, nada, 324, 324);
    fila("picture of a circle fills the square", celda(1, 6, 1, 1, 2, 2), azul, nada, 4, 4);
    fila("selected picture: hatched black", celda(1, 7, 2, 2, 16, 16), negro, azul, 17, 200);
    fila("empty: plus across", celda(2, 1, 5, 10, 11, 1), negro, nada, 11, 11);
    fila("empty: plus down", celda(2, 1, 10, 5, 1, 11), negro, nada, 11, 11);
    fila("empty: past the plus", celda(2, 1, 16, 10, 1, 1), blanco, nada, 1, 1);
    fila("empty: ring", celda(2, 1, 0, 10, 1, 1), negro, nada, 1, 1);
    fila("circle: corner", celda(2, 2, 1, 1, 1, 1), blanco, nada, 1, 1);
    fila("circle: body", celda(2, 2, 9, 9, 1, 1), verde, nada, 1, 1);
    fila("white tip on a dark colour", celda(2, 3), blanco, Qt::red, 0, 0, "7");
    fila("black tip on a light colour", celda(2, 5), negro, Qt::cyan, 0, 0, "7");
    fila("tip too wide: left out", celda(2, 4), verde, nada, 324, 324);
    fila("group line in front of 4", QRect(83, 0, 1, 62), negro, nada, 62, 62);
    fila("group line in front of 7", QRect(146, 0, 1, 62), negro, nada, 62, 62);
    fila("no group line in front of 5", QRect(104, 0, 1, 62), blanco, nada, 62, 62);
    const QColor plata(192, 192, 192);
    fila("tier strip: top slot", QRect(0, 0, 20, 20), negro, plata, 0, 0, "3");
    fila("tier strip: bottom slot", QRect(0, 42, 20, 20), negro, plata, 0, 0, "1");
    fila("position strip: last slot", QRect(146, 62, 20, 20), negro, plata, 0, 0, "7");
    fila("classic: no group line", celda(1, 4, -1, 2, 1, 18, true), blanco, nada, 18, 18, "", true);
    fila("classic: top tier shifted", celda(3, 1, 1, 1, 18, 18, true), verde, nada, 324, 324, "", true);
}

void tst_PiernaX::drawing()
{
    QFETCH(bool, clasica);
    QFETCH(QRect, zona);
    QFETCH(QColor, color);
    QFETCH(QColor, fondo);
    QFETCH(QString, texto);
    QTemporaryDir dir;
    QImage dibujo(4, 4, QImage::Format_RGB32);
    dibujo.fill(azul);
    QVERIFY(dibujo.save(dir.filePath("azul.png")));
    auto imagen = std::make_shared<Imagen>();
    imagen->setArchivo(dir.filePath("azul.png"));
    auto leg = nuevaPierna(3, 7, clasica, 1); // the top tier is drawn past the edge: the control fits tier 1
    leg->setLinea(3);
    leg->setObjeto(2, 1, nullptr);
    const auto en = [&](int t, int p) {
        return leg->getObjeto(qint16(t), qint16(p));
    };
    for (const auto &[t, p] : { std::pair(1, 2), { 1, 3 }, { 1, 7 } })
        en(t, p)->setSeleccionado(true);
    for (int p : { 5, 6, 7 })
        en(1, p)->setImagen(imagen);
    en(1, 3)->setColor(0xFFFFFF);
    en(1, 4)->setActivo(true);
    en(1, 6)->setForma(FormaCirculo);
    en(2, 2)->setForma(FormaCirculo);
    en(2, 3)->setColor(0x0000FF); // red: colours are kept as blue, green, red
    en(2, 5)->setColor(0xFFFF00);
    for (int p : { 3, 5 })
        en(2, p)->setTip("7");
    en(2, 4)->setTip("WWWWWWWW");
    ErrorCatcher catcher;
    Vista v(leg);
    // Tips in the font set by name; the control and its strips follow the grid, the tier strip counting
    // down from the top tier.
    v.vista->setProperty("FontName", "DejaVu Sans");
    v.vista->setProperty("FontSize", 9);
    v.vista->refrescar();
    QCOMPARE(v.vista->property("FontName").toString(), "DejaVu Sans");
    QCOMPARE(v.frame.calls, QStringList { "Resize" });
    const QList<QRect> rectangulos { v.vista->rect(), v.tira("escalas")->geometry(),
                                     v.tira("Ubicaciones")->geometry() };
    QCOMPARE(rectangulos,
             (clasica ? QList { QRect(0, 0, 206, 77), QRect(0, 0, 20, 54), QRect(20, 56, 147, 20) }
                      : QList { QRect(0, 0, 186, 83), QRect(0, 0, 20, 63), QRect(20, 62, 147, 20) }));
    const QImage image = pixels::grab(v.vista);
    // A paint of the zone alone draws it as a full paint does: cells cut by it are drawn whole.
    QImage parcial(image.size(), QImage::Format_RGB32);
    parcial.fill(Qt::red);
    v.vista->render(&parcial, zona.topLeft(), QRegion(zona));
    QCOMPARE(parcial.copy(zona), image.copy(zona));
    QVERIFY(catcher.messages().isEmpty());
    if (!texto.isEmpty()) {
        // The strips draw in their own font, the cells in the control's.
        const QFont fuente
            = zona.x() < 20 || zona.y() >= 62 ? v.tira("escalas")->font() : QFont("DejaVu Sans", 9);
        const QFontMetrics m(fuente);
        const QPoint origen(qFloor(zona.x() + (zona.width() - m.horizontalAdvance(texto)) / 2.0 + 0.5),
                            qFloor(zona.y() + (zona.height() - m.height()) / 2.0 + 0.5));
        QVERIFY(pixels::showsText(image, origen, texto, fuente, color, fondo));
        return;
    }
    QFETCH(QPoint, cuantos);
    const int n = pixels::count(image, zona, color);
    QVERIFY2(n >= cuantos.x() && n <= cuantos.y(), qPrintable(QString::number(n)));
    if (fondo.isValid())
        QCOMPARE(n + pixels::count(image, zona, fondo), zona.width() * zona.height());
}

void tst_PiernaX::onlyTheChangedCellIsRepainted()
{
    struct Pintadas : QObject
    {
        QRect rect;
        bool eventFilter(QObject *, QEvent *event) override
        {
            if (event->type() == QEvent::Paint)
                rect |= static_cast<QPaintEvent *>(event)->rect();
            return false;
        }
    } pintadas;
    auto leg = nuevaPierna(12, 3, false);
    Vista v(leg);
    v.vista->installEventFilter(&pintadas);
    QTest::qWait(20);
    // A cell found by its position code: only that cell is repainted.
    pintadas.rect = QRect();
    v.vista->seleccionar("P012003");
    QTRY_VERIFY(pintadas.rect.isValid());
    const QRect celda = GeometriaCeldas(v.vista->height(), 1, false).celda(2, 3).toRect();
    QVERIFY(pintadas.rect.contains(celda) && pintadas.rect.width() <= celda.width() + 4);
    // Tier 12's codes end in "2001": the code does not lead to the cell, so the whole grid is repainted.
    pintadas.rect = QRect();
    v.vista->setActivo(leg->getObjeto(12, 1), true);
    QTRY_VERIFY(pintadas.rect.isValid());
    QCOMPARE(pintadas.rect, v.vista->rect());
}

void tst_PiernaX::gestures_data()
{
    QTest::addColumn<QString>("montaje");
    QTest::addColumn<QString>("pasos");
    QTest::addColumn<QString>("salida");
    QTest::addColumn<QString>("mensaje");
    const auto fila = [](const char *nombre, const char *pasos, const char *salida, const char *montaje = "",
                         const char *mensaje = "Object variable or With block variable not set") {
        QTest::newRow(nombre) << QString(montaje) << QString(pasos) << QString(salida) << QString(mensaje);
    };
    fila("right button", "r1.1 r3.1v r@90,50v",
         "rightClicked(L1.1,false) {} rightClicked(P013001,true) {} rightClicked(P01,false) activo(P01) {}");
    fila("top edge of tier 2: (3, 1), empty", "1.1 @25,21v",
         "clicked(L1.1,false) {} clicked(P013001,true) activo(P013001) {}");
    fila("Ctrl toggles on release", "1.1 c1.2v c1.1v",
         "clicked(L1.1,false) {L1.1} clicked(L1.2,true) {L1.1,L1.2} clicked(L1.1,true) activo(L1.1) {L1.2}");
    fila("a press keeps the group, its release narrows it", "1.1 c1.2 1.1v",
         "clicked(L1.1,false) clicked(L1.2,true) {L1.1,L1.2} clicked(L1.1,false) activo(L1.1) {L1.1}");
    fila("Ctrl or Shift, right button: no change", "1.1 cr1.2v sr2.2v",
         "clicked(L1.1,false) {L1.1} rightClicked(L1.2,true) {L1.1} rightClicked(L2.2,false) activo(L2.2) "
         "{L1.1}");
    fila("Shift: a rectangle", "1.1 s2.3v 3.3 s2.2",
         "clicked(L1.1,false) {L1.1,L1.2,L1.3,L2.1,L2.2,L2.3} clicked(L2.3,true) clicked(L3.3,false) "
         "clicked(L2.2,true) activo(L2.2) {L3.3,L3.2,L2.3,L2.2}");
    fila("Shift with nothing before", "s1.2", "clicked(L1.2,false) activo(L1.2) {}");
    fila("the tier strip's top slot is the top tier", "rE3 E1v",
         "rightClicked(P011000,false) {P013000(off)} clicked(P013000,false) activo(P013000) {P013000(off)}");
    fila("a cell drops the picked tier", "E1 c2.2v",
         "clicked(P013000,false) {} clicked(L2.2,true) activo(L2.2) {L2.2}");
    fila("all drops it too, twice is once", "E1 todos todos",
         "clicked(P013000,false) activo(P013000) {L1.1,L1.2,L1.3,L2.1,L2.2,L2.3,L3.2,L3.3}");
    fila("by code, twice is once", "E1 codigo:P012001 codigo:P012001 codigo:X2002",
         "clicked(P013000,false) activo(P013000) {L2.1,L2.2}");
    fila("a picked tier drags out", "E1~",
         "drag(Dframe) clicked(P013000,false) activo(P013000) {P013000(off)}");
    // A drop goes to the object of the cell, else its position, else the leg; a tier slot to its tier.
    // Nothing moves in a grid: Shift refuses; so do anything but text and the position strip.
    fila("drops", "soltar:1.3 soltar:c3.1 soltar:@90,50 soltar:E1",
         "copy droped(D7,L1.3,0) copy droped(D7,P013001,2) copy droped(D7,P01,0) copy droped(D7,P013000,0) "
         "{}");
    fila("refused drops",
         "sobre:1.3 sobre:s1.3 soltar:s1.3 soltar:sE1 soltar:U1 imagen sobre:1.3 soltar:1.3 soltar:E1",
         "copy ignore ignore ignore ignore ignore ignore ignore {}");
    fila("nothing moves", "1.1 mover", "clicked(L1.1,false) activo(L1.1) {L1.1}");
    // Failures: without a leg the first paint fails already.
    fila("no leg", "@50,50 codigo:P011001 todos E1 rE1 soltar:E1",
         "!dibujarTodo !sobreQuien !MouseDown !sobreQuien !MouseUp !IContenedorX_seleccionar "
         "!IContenedorX_seleccionarTodos !escalas.Click !escalas.RightClick copy !escalas.OLEDragDrop {}",
         "sin pierna");
    fila("unbuilt leg", "", "!validarControl !dibujarTodo {}", "sin rejilla", "Subscript out of range");
    fila("no root", "1.1", "!MouseUp activo(L1.1) {L1.1}", "sin raiz");
    fila("no frame", "1.1", "!validarControl !MouseDown !MouseUp {L1.1}", "sin marco");
    fila("rectangle over an empty cell", "1.1 s3.2",
         "clicked(L1.1,false) clicked(L3.2,true) !selectRectangle activo(L3.2) {L1.1,L1.2,L2.1,L2.2}");
    fila("codes that name no cell", "codigo:P1 codigo: codigo:12",
         "!IContenedorX_seleccionar !IContenedorX_seleccionar {}", "", "Type mismatch");
    fila("negative scales", "escala:-1 escala:0", "!validarControl !dibujarEscalas {}", "clasica",
         "Invalid procedure call or argument");
    fila("scales beyond any size", "escala:nan escala:1e30 escala:0.1 @30,10",
         "!validarControl !validarControl clicked(P01,false) !sobreQuien !sobreQuien activo(P01) {}",
         "clasica", "Overflow");
}

void tst_PiernaX::gestures()
{
    QFETCH(QString, montaje);
    QFETCH(QString, pasos);
    QFETCH(QString, mensaje);
    QTEST(correr(montaje, pasos, mensaje), "salida");
}

QTEST_MAIN(tst_PiernaX)
#include "tst_piernax.moc"
