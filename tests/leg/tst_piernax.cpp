// SPDX-License-Identifier: MIT
#include <tarvonix/leg/geometriaceldas.h>
#include <tarvonix/leg/piernax.h>
#include <tarvonix/model/imagen.h>
#include <tarvonix/model/lote.h>
#include <tarvonix/model/objetos.h>
#include <tarvonix/model/pierna.h>
#include <tarvonix/model/ubicacion.h>

#include "dragdriver.h"
#include "errorcatcher.h"
#include "pixels.h"
#include "recordingmapa.h"
#include "testframe.h"

#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using namespace tarvonix;
using namespace Qt::StringLiterals;

namespace {

using Zona = std::tuple<QRect, QColor, QColor, QPoint, QString>;
const QColor blanco(Qt::white), negro(Qt::black), verde(Qt::green), azul(Qt::blue), nada;

// Leg "P01" of filas x largo green boxes "Lt.p", the top tier masArriba longer, tier vacia's first empty.
std::shared_ptr<Pierna> nuevaPierna(int filas, int largo, bool clasica, int vacia = 0, int masArriba = 0)
{
    auto leg = std::make_shared<Pierna>();
    leg->setCodigo(u"P01"_s), leg->setClasica(clasica), leg->setEscalas(qint16(filas));
    for (qint16 t = 1; t <= filas; ++t) {
        leg->setEscala(t, qint16(largo + (t == filas ? masArriba : 0)));
        for (qint16 p = t == vacia ? 2 : 1; p <= leg->getLargo(t); ++p) {
            auto lote = std::make_shared<Lote>();
            lote->setCodigo(u"L%1.%2"_s.arg(t).arg(p)), lote->setForma(FormaCaja), lote->setColor(0x00FF00);
            lote->setPadre(leg->getUbicacion(t, p)->getCodigo()), leg->setObjeto(t, p, lote);
        }
    }
    return leg;
}

struct Espia : PiernaX
{
    using PiernaX::PiernaX;
    void paintEvent(QPaintEvent *event) override { pintado |= event->rect(), PiernaX::paintEvent(event); }
    QRect pintado;
};

// The control (noting what it repaints) over a leg in a recording frame, with a recording root.
struct Vista
{
    explicit Vista(const std::shared_ptr<Pierna> &leg)
    {
        vista->setRoot(&mapa), vista->setObjeto(leg);
        frame.resize(qMax(vista->width(), 100), qMax(vista->height(), 100)), frame.show();
        (void)QTest::qWaitForWindowExposed(&frame), frame.calls.clear();
    }
    QWidget *tira(const char *nombre) const { return vista->findChild<QWidget *>(nombre); }
    TestFrame frame;
    RecordingMapa mapa;
    Espia *vista = new Espia(&frame);
};

} // namespace

class tst_PiernaX : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void drawing_data()
    {
        // The zone, its colour, when valid the only other colour in it, how many pixels of the colour (from
        // x to y); or a text drawn in the colour over the other, centred in the zone.
        QTest::addColumn<Zona>("caso");
        // The inside of cell (t, p) of the scene drawn below, or the part at (dx, dy) of size (w, h).
        const auto celda = [](int t, int p, int dx = 0, int dy = 0, int w = 0, int h = 0, bool clasica = false) {
            const QRect c = GeometriaCeldas(clasica ? 77 : 83, 1, clasica).celda(t, p).toRect();
            return w ? QRect(c.x() + dx, c.y() + dy, w, h) : c.adjusted(1, 1, -1, -1);
        };
        const auto fila = [](const char *nombre, QRect zona, QColor c, QColor f, int lo, int hi, const char *t = "") {
            QTest::newRow(nombre) << Zona { zona, c, f, QPoint(lo, hi), QString(t) };
        };
        fila("box body", celda(1, 1), verde, nada, 324, 324);
        fila("box outline, not past the cell", celda(1, 1, 0, 0, 21, 1), negro, blanco, 20, 20);
        fila("selected: hatched", celda(1, 2), verde, blanco, 19, 161);
        fila("white selected: hatched black", celda(1, 3), negro, blanco, 19, 161);
        fila("active: dotted outline", celda(1, 4, 0, 0, 20, 1), negro, blanco, 4, 14);
        fila("picture", celda(1, 5), azul, nada, 324, 324);
        fila("selected picture: hatched black", celda(1, 7, 2, 2, 16, 16), negro, azul, 17, 200);
        fila("empty: ring, plus across", celda(2, 1, 0, 10, 17, 1), negro, blanco, 12, 12);
        fila("circle: corner", celda(2, 2, 1, 1, 1, 1), blanco, nada, 1, 1);
        fila("circle: body", celda(2, 2, 9, 9, 1, 1), verde, nada, 1, 1);
        fila("white tip on a dark colour", celda(2, 3), blanco, Qt::red, 0, 0, "7");
        fila("black tip on a light colour", celda(2, 5), negro, Qt::cyan, 0, 0, "7");
        fila("tip too wide: left out", celda(2, 4), verde, nada, 324, 324);
        fila("group line in front of 4", QRect(83, 0, 1, 62), negro, nada, 62, 62);
        fila("no group line in front of 5", QRect(104, 0, 1, 62), blanco, nada, 62, 62);
        fila("classic: no group line", celda(1, 4, -1, 2, 1, 18, true), blanco, nada, 18, 18);
    }
    void drawing()
    {
        const bool clasica = QByteArrayView(QTest::currentDataTag()).startsWith("classic");
        QFETCH(Zona, caso);
        const auto &[zona, color, fondo, cuantos, texto] = caso;
        QTemporaryDir dir;
        QImage dibujo(4, 4, QImage::Format_RGB32);
        dibujo.fill(azul);
        QVERIFY(dibujo.save(dir.filePath(u"azul.png"_s)));
        const auto imagen = std::make_shared<Imagen>();
        imagen->setArchivo(dir.filePath(u"azul.png"_s));
        auto leg = nuevaPierna(3, 7, clasica, 2, 1); // tier 3 runs past the edge: the control fits tier 1
        Pierna &l = *leg;
        l.setLinea(3), l.getObjeto(2, 4)->setTip(u"WWWWWWWW"_s);
        l.getObjeto(1, 2)->setSeleccionado(true), l.getObjeto(1, 3)->setSeleccionado(true);
        l.getObjeto(1, 7)->setSeleccionado(true), l.getObjeto(1, 7)->setImagen(imagen);
        l.getObjeto(1, 5)->setImagen(imagen), l.getObjeto(1, 3)->setColor(0xFFFFFF);
        l.getObjeto(1, 4)->setActivo(true), l.getObjeto(2, 2)->setForma(FormaCirculo);
        l.getObjeto(2, 3)->setColor(0x0000FF), l.getObjeto(2, 3)->setTip(u"7"_s); // red: kept as blue, green, red
        l.getObjeto(2, 5)->setColor(0xFFFF00), l.getObjeto(2, 5)->setTip(u"7"_s);
        ErrorCatcher catcher;
        Vista v(leg);
        v.vista->setProperty("FontName", u"DejaVu Sans"_s), v.vista->setProperty("FontSize", 9);
        v.vista->refrescar();
        QCOMPARE(v.frame.calls, QStringList { u"Resize"_s });
        QCOMPARE((QList { v.vista->rect(), v.tira("escalas")->geometry(), v.tira("Ubicaciones")->geometry() }),
                 (clasica ? QList { QRect(0, 0, 206, 77), QRect(0, 0, 20, 54), QRect(20, 56, 147, 20) }
                          : QList { QRect(0, 0, 186, 83), QRect(0, 0, 20, 63), QRect(20, 62, 147, 20) }));
        QCOMPARE(v.tira("escalas")->property("Primero").toInt(), 3); // the top slot reads the top tier
        // The zone is painted alone: what cells it cuts are drawn whole.
        QImage image(v.vista->size(), QImage::Format_RGB32);
        image.fill(Qt::red), v.vista->render(&image, zona.topLeft(), QRegion(zona));
        QVERIFY(catcher.messages().isEmpty());
        if (!texto.isEmpty()) {
            const QFont fuente(u"DejaVu Sans"_s, 9);
            const QFontMetrics m(fuente);
            const QPoint origen(qFloor(zona.x() + (zona.width() - m.horizontalAdvance(texto)) / 2.0 + 0.5),
                                qFloor(zona.y() + (zona.height() - m.height()) / 2.0 + 0.5));
            QVERIFY(pixels::showsText(image, origen, texto, fuente, color, fondo));
            return;
        }
        const int n = pixels::count(image, zona, color);
        QVERIFY2(n >= cuantos.x() && n <= cuantos.y(), qPrintable(QString::number(n)));
        QCOMPARE(n + pixels::count(image, zona, fondo), zona.width() * zona.height()); // no fondo: all of color
    }
    void repaintsTheChangedCell()
    {
        auto leg = nuevaPierna(12, 3, false);
        Vista v(leg);
        const GeometriaCeldas g(v.vista->height(), 1, false);
        // A changed cell repaints alone, a pixel around it; in any tier, 12 too, though its codes end in "2001".
        v.vista->pintado = QRect(), v.vista->seleccionar(u"P012003"_s);
        QTRY_VERIFY(v.vista->pintado.contains(g.celda(2, 3).toRect()));
        QVERIFY(v.vista->pintado.width() <= 22 && v.vista->pintado.height() <= 22);
        v.vista->setActivo(leg->getObjeto(12, 1), true);
        QTRY_VERIFY(v.vista->pintado.contains(g.celda(12, 1).toRect()));
    }
    void gestures_data()
    {
        QTest::addColumn<QString>("montaje");
        QTest::addColumn<QString>("pasos");
        QTest::addColumn<QString>("salida");
        QTest::addColumn<QString>("mensaje");
        const auto fila = [](const char *nombre, const char *pasos, const char *salida, const char *montaje = "",
                             const char *mensaje = "Object variable or With block variable not set") {
            QTest::newRow(nombre) << QString(montaje) << QString(pasos) << QString(salida) << QString(mensaje);
        };
        fila("right button; top edge of tier 2: (3, 1), empty", "r1.1 r3.1v r@90,50v 1.1 @25,21v",
             "rightClicked(L1.1,false) {} rightClicked(P013001,true) {} rightClicked(P01,false) "
             "clicked(L1.1,false) {} clicked(P013001,true) {}");
        fila("press keeps a group, release narrows it, right clicks keep it", "1.1 c1.2 1.1v cr1.2v sr2.2v",
             "clicked(L1.1,false) clicked(L1.2,true) {L1.1,L1.2} clicked(L1.1,false) {L1.1} "
             "rightClicked(L1.2,true) {L1.1} rightClicked(L2.2,false) {L1.1}");
        fila("Shift: a rectangle, none from nothing, failing at a hole", "s1.2 1.1 s2.3v 3.3 s2.2v 1.1 s3.2",
             "clicked(L1.2,false) clicked(L1.1,false) {L1.1,L1.2,L1.3,L2.1,L2.2,L2.3} clicked(L2.3,true) "
             "clicked(L3.3,false) {L3.3,L3.2,L2.3,L2.2} clicked(L2.2,true) clicked(L1.1,false) "
             "clicked(L3.2,true) !selectRectangle {L1.1,L1.2,L2.1,L2.2}");
        fila("tier strip: top slot is tier 3, it drags out, cells drop it", "rE3 E1v E1~ c2.2v E1 todos todos",
             "rightClicked(P011000,false) {P013000(off)} clicked(P013000,false) drag(Dframe) "
             "clicked(P013000,false) {} clicked(L2.2,true) clicked(P013000,false) "
             "{L1.1,L1.2,L1.3,L2.1,L2.2,L2.3,L3.2,L3.3}");
        fila("by code, twice is once; codes that name no cell fail",
             "E1 codigo:P012001 codigo:P012001 codigo:X2002 codigo:P1 codigo: codigo:12",
             "clicked(P013000,false) !IContenedorX_seleccionar->Type mismatch !IContenedorX_seleccionar->Type "
             "mismatch {L2.1,L2.2}");
        fila("drops: to the cell's object, else its position, the leg, or a tier; Shift or no text: refused",
             "soltar:1.3 soltar:c3.1 soltar:@90,50 soltar:E1 sobre:s1.3 soltar:s1.3 soltar:sE1 imagen soltar:E1",
             "copy droped(D7,L1.3,0) copy droped(D7,P013001,2) copy droped(D7,P01,0) copy droped(D7,P013000,0) "
             "ignore ignore ignore ignore {}");
        fila("keys: up the tiers, an empty position, the longer top tier, Shift adds, nothing moves",
             "tecla:Up tecla:Up tecla:Up tecla:Space tecla:Right tecla:Right tecla:Right tecla:Up tecla:Down "
             "tecla:Shift+Left tecla:Ctrl+Right tecla:Ctrl+Space",
             "clicked(P013001,true) clicked(L2.2,false) clicked(L2.2,true) {}", "larga");
        fila("no leg: every paint fails, drops refused", "@50,50 codigo:P011001 todos E1 rE1 soltar:E1",
             "ignore !validarControl !dibujarTodo !sobreQuien !MouseDown !sobreQuien !MouseUp "
             "!IContenedorX_seleccionar !IContenedorX_seleccionarTodos !escalas.Click !escalas.RightClick "
             "!escalas.OLEDragDrop {}",
             "sin pierna");
        fila("no root", "1.1", "!MouseUp {L1.1}", "sin raiz");
        fila("unbuilt leg", "", "!validarControl !dibujarTodo {}", "sin rejilla", "Subscript out of range");
        // A failed hit test is outside the positions, not the cell hit before.
        fila("scales out of range", "1.1 escala:-1 escala:0 escala:nan escala:1e30 escala:0.1 @30,10",
             "clicked(L1.1,false) clicked(P01,false) !validarControl->Invalid procedure call or argument "
             "!dibujarEscalas->Invalid procedure call or argument !validarControl !validarControl !sobreQuien "
             "!sobreQuien {}",
             "clasica", "Overflow");
    }
    // On a 3 x 3 leg with (3, 1) empty (tier 1 at y 42..61, tier 2 at 21..40), a step is a click on a cell
    // "t.p", a point "@x,y" or a tier strip slot "E1", after c (Ctrl), s (Shift), r (right button); with v the
    // selection is noted between press and release, with ~ the pointer moves 10 down meanwhile. "soltar:" or
    // "sobre:" before one drop text or drag it over ("imagen" makes it a picture); "todos", "codigo:" and
    // "escala:" call the control, "tecla:" types a key ("larga": tier 3 has a fourth position). Out come root
    // calls, drop answers, drags, notes, failures ("!operation", less mensaje) and the selection ("(off)": unflagged).
    void gestures()
    {
        QFETCH(QString, montaje);
        QFETCH(QString, pasos);
        QFETCH(QString, mensaje);
        ErrorCatcher catcher;
        Vista v(montaje == "sin pierna"        ? nullptr
                    : montaje == "sin rejilla" ? std::make_shared<Pierna>()
                                               : nuevaPierna(3, 3, montaje == "clasica", 3, montaje == "larga"));
        v.vista->setRoot(montaje == "sin raiz" ? nullptr : &v.mapa);
        DragDriver driver;
        QStringList salida;
        QMimeData datos;
        datos.setText(u"D7"_s);
        const auto seleccion = [&] {
            QStringList codigos;
            for (const ObjetoPtr &o : *v.vista->getSeleccionados())
                codigos.append(o->getCodigo() + (o->getSeleccionado() ? "" : "(off)"));
            return '{' + codigos.join(',') + '}';
        };
        const GeometriaCeldas celdas(v.vista->height(), 1, montaje == "clasica");
        static const QRegularExpression forma(R"(^([csr]*)([E@]?)(\d+)[.,]?(\d*)([v~]?)$)");
        for (const QString &paso : pasos.split(u' ', Qt::SkipEmptyParts)) {
            const QString arg = paso.section(u':', 1);
            const QRegularExpressionMatch g = forma.match(paso.contains(u':') ? arg : paso);
            const Qt::KeyboardModifiers teclas
                = (g.captured(1).contains(u'c') ? Qt::ControlModifier : Qt::NoModifier)
                | (g.captured(1).contains(u's') ? Qt::ShiftModifier : Qt::NoModifier);
            const Qt::MouseButton boton = g.captured(1).contains(u'r') ? Qt::RightButton : Qt::LeftButton;
            const int a = g.captured(3).toInt(), b = g.captured(4).toInt();
            QWidget *w = g.captured(2) == "E" ? v.tira("escalas") : v.vista;
            const QPoint pt = g.captured(2) == "@" ? QPoint(a, b)
                : w != v.vista                     ? QPoint(10, 21 * a - 16)
                                                   : celdas.celda(a, b).center().toPoint();
            if (paso == "todos") {
                v.vista->seleccionarTodos();
            } else if (paso == "imagen") {
                datos.clear(), datos.setImageData(QImage(2, 2, QImage::Format_RGB32));
            } else if (paso.startsWith("codigo:")) {
                v.vista->seleccionar(arg);
            } else if (paso.startsWith("escala:")) {
                v.vista->setEscala(arg.toFloat());
            } else if (paso.startsWith("tecla:")) {
                QTest::keySequence(v.vista, QKeySequence(arg));
            } else if (paso.contains(u':')) {
                const auto efecto = (paso.startsWith("soltar") ? DragDriver::dropData
                                                               : DragDriver::moveData)(w, pt, &datos, teclas);
                salida += efecto == Qt::CopyAction ? "copy" : efecto == Qt::IgnoreAction ? "ignore" : "other";
            } else {
                const QPoint fin = pt + QPoint(0, g.captured(5) == "~" ? 10 : 0);
                QTest::mousePress(w, boton, teclas, pt);
                QMouseEvent mueve(QEvent::MouseMove, fin, w->mapToGlobal(fin), Qt::NoButton, boton, {});
                if (fin != pt && QCoreApplication::sendEvent(w, &mueve) && driver.dragging())
                    salida += "drag(" + driver.text() + ')', driver.finish();
                if (g.captured(5) == "v")
                    salida += seleccion();
                QTest::mouseRelease(w, boton, teclas, fin);
            }
            salida += v.mapa.log(), v.mapa.clear();
        }
        for (const QString &m : catcher.messages())
            salida += '!' + m.mid(8).remove("->" + mensaje);
        QTEST((salida << seleccion()).join(u' '), "salida");
    }
};

QTEST_MAIN(tst_PiernaX)
#include "tst_piernax.moc"
