// SPDX-License-Identifier: MIT
#include <tarvonix/containers/contenedorx.h>
#include <tarvonix/leg/piernax.h>
#include <tarvonix/map/framex.h>
#include <tarvonix/model/lote.h>
#include <tarvonix/model/objeto.h>
#include <tarvonix/model/objetos.h>
#include <tarvonix/model/pierna.h>
#include <tarvonix/model/referencias.h>
#include <tarvonix/model/ubicacion.h>
#include <tarvonix/platform/latebinding.h>
#include <tarvonix/widgets/dummy.h>

#include "dragdriver.h"
#include "errorcatcher.h"
#include "pixels.h"
#include "recordingmapa.h"
#include "testframe.h"

#include <QAccessible>
#include <QTest>
#include <private/qguiapplication_p.h>
#include <qpa/qplatformaccessibility.h>
#include <qpa/qplatformintegration.h>

using namespace tarvonix;
using namespace Qt::StringLiterals;

namespace {

VistaX *nueva(const QString &clase, QWidget *parent)
{
    return clase == "PiernaX"_L1 ? static_cast<VistaX *>(new PiernaX(parent)) : new ContenedorX(parent);
}

// A, B and C side by side, 20 pixels square, in either view: the same gestures must do the same on both.
struct Escena
{
    ErrorCatcher errors;
    TestFrame frame;
    RecordingMapa mapa;
    VistaX *vista = nullptr;
    ObjetoPtr ligado, objetos[3];
    // The centres of A, B, C; on nothing (the bound object answers); a band over A and B wholly, C partly.
    QPoint en[3], fuera, bandaDesde, bandaHasta;
    explicit Escena(const QString &clase)
    {
        // The leg: one tier of three positions, cells at x 21, 42 and 63, y 0.
        const bool pierna = clase == "PiernaX"_L1;
        auto leg = std::make_shared<Pierna>();
        leg->setEscalas(1), leg->setEscala(1, 3);
        ligado = pierna ? ObjetoPtr(leg) : std::make_shared<Objeto>();
        ligado->setCodigo(pierna ? u"P01"_s : u"R"_s), ligado->setPuedeContener(!pierna);
        for (int i = 0; i < 3; ++i) {
            const ObjetoPtr o = objetos[i] = pierna ? ObjetoPtr(std::make_shared<Lote>()) : std::make_shared<Objeto>();
            o->setCodigo(QString(QLatin1Char('A' + i))), o->setForma(FormaCaja);
            o->setX(qint16(10 + 30 * i)), o->setY(10), o->setAncho(20), o->setAlto(20);
            o->setPadre(pierna ? leg->getUbicacion(1, qint16(i + 1))->getCodigo() : u"R"_s);
            pierna ? leg->setObjeto(1, qint16(i + 1), o) : ligado->getObjetos()->add(o);
            en[i] = pierna ? QPoint(31 + 21 * i, 10) : QPoint(22 + 30 * i, 22);
        }
        std::tie(fuera, bandaDesde, bandaHasta) = pierna ? std::tuple(QPoint(5, 10), QPoint(5, 30), QPoint(75, 0))
                                                         : std::tuple(QPoint(200, 100), QPoint(5, 60), QPoint(80, 5));
        vista = nueva(clase, &frame), vista->setRoot(&mapa), vista->setObjeto(ligado);
        frame.show(), frame.calls.clear();
    }
    //! The view in an active window, with the keyboard's focus given as \a razon gives it.
    void enfocar(Qt::FocusReason razon = Qt::TabFocusReason)
    {
        frame.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&frame));
        vista->clearFocus(), vista->setFocus(razon); // the window's activation gave it the focus already
    }
    QStringList seleccion() const
    {
        QStringList codes;
        for (const ObjetoPtr &o : *vista->getSeleccionados())
            codes.append(o->getCodigo() + (o->getSeleccionado() ? "" : "(flag off)"));
        return codes;
    }
};

} // namespace

class tst_VistaX : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase_data()
    {
        QTest::addColumn<QString>("clase");
        for (const char *clase : { "ContenedorX", "PiernaX" })
            QTest::newRow(clase) << QString::fromLatin1(clase);
    }
    void init() { QFETCH_GLOBAL(QString, clase); e.emplace(clase); }
    void cleanup() { QVERIFY(e->errors.messages().isEmpty()); } // failures are expected only where cleared
    void clicksSelectAndReport()
    {
        QTest::mouseClick(e->vista, Qt::LeftButton, {}, e->en[0]);
        QCOMPARE(e->seleccion(), QStringList { "A" });
        QCOMPARE(e->frame.calls, (QStringList { "setActive(A)", "setActive(A)" })); // press and release
        // Ctrl toggles, and reports several.
        QTest::mouseClick(e->vista, Qt::LeftButton, Qt::ControlModifier, e->en[1]);
        QTest::mouseClick(e->vista, Qt::LeftButton, Qt::ControlModifier, e->en[0]);
        QCOMPARE(e->seleccion(), QStringList { "B" });
        QTest::mouseClick(e->vista, Qt::LeftButton, {}, e->fuera);
        QCOMPARE(e->mapa.log(), (QStringList { "clicked(A,false)", "clicked(B,true)", "clicked(A,true)",
                                               "clicked(" + e->ligado->getCodigo() + ",false)" }));
        QVERIFY(e->seleccion().isEmpty());
        // The contract hands out the live collection: what a caller takes out, the view no longer clears.
        auto *contrato = LateBinding::call(e->vista, u"cast"_s).value<IContenedorX *>();
        QCOMPARE(contrato->getObjeto(), e->ligado);
        contrato->seleccionarTodos();
        QCOMPARE(e->seleccion(), (QStringList { "A", "B", "C" }));
        contrato->getSeleccionados()->remove(e->objetos[0]), contrato->deseleccionarTodos();
        QVERIFY(e->seleccion().isEmpty() && e->objetos[0]->getSeleccionado() && !e->objetos[2]->getSeleccionado());
        // The active flag: never on the bound object itself, nor for no object.
        contrato->setActivo(e->ligado, true), contrato->setActivo(nullptr, true), contrato->setActivo(e->objetos[1], true);
        QVERIFY(!e->ligado->getActivo() && e->objetos[1]->getActivo());
        // In an inactive frame a release reports nothing and a move draws no band.
        e->mapa.clear(), e->frame.setPActive(false);
        QTest::mousePress(e->vista, Qt::LeftButton, {}, e->bandaDesde);
        QTest::mouseMove(e->vista, e->bandaHasta);
        QVERIFY(e->vista->findChild<Dummy *>(QString(), Qt::FindDirectChildrenOnly)->isHidden());
        QTest::mouseRelease(e->vista, Qt::LeftButton, {}, e->bandaHasta);
        QTest::mouseClick(e->vista, Qt::LeftButton, {}, e->en[1]);
        QVERIFY(e->mapa.log().isEmpty());
    }
    void rubberBandTogglesWhatItEncloses()
    {
        Dummy *banda = e->vista->findChild<Dummy *>(QString(), Qt::FindDirectChildrenOnly);
        const QPoint desde = e->bandaDesde, hasta = e->bandaHasta;
        QVERIFY(banda && banda->isHidden());
        QTest::mousePress(e->vista, Qt::LeftButton, {}, desde);
        QTest::mouseMove(e->vista, desde + QPoint(3, -4)); // exactly 5 away: not yet
        QVERIFY(banda->isHidden());
        QTest::mouseMove(e->vista, desde + QPoint(4, -4));
        QVERIFY(banda->isVisible());
        QTest::mouseMove(e->vista, desde); // on the press point: one pixel wide and high
        QCOMPARE(banda->geometry(), QRect(desde, QSize(1, 1)));
        QTest::mouseMove(e->vista, hasta);
        QCOMPARE(banda->geometry(), QRect(QPoint(qMin(desde.x(), hasta.x()), qMin(desde.y(), hasta.y())),
                                          QSize(qAbs(hasta.x() - desde.x()), qAbs(hasta.y() - desde.y()))));
        e->vista->getSeleccionados()->add(e->objetos[1]), e->objetos[1]->setSeleccionado(true); // B, meanwhile
        QTest::mouseRelease(e->vista, Qt::LeftButton, {}, hasta);
        QVERIFY(banda->isHidden());
        // A turns on, B (selected before) off, C (only partly inside) stays; the root hears nothing.
        QCOMPARE(e->seleccion(), QStringList { "A" });
        QVERIFY(e->mapa.log().isEmpty());
    }
    void dragStartsActivatesAndScrolls_data()
    {
        // Viewport (100, 50) to (400, 200), with a band of 40.
        QTest::addColumn<QPoint>("punto");
        QTest::addColumn<QStringList>("llamadas");
        QTest::newRow("40 inside the left edge") << QPoint(140, 120) << QStringList();
        QTest::newRow("near the top-right") << QPoint(361, 89) << QStringList { "hScroll(1)", "vScroll(-1)" };
        QTest::newRow("39 inside the bottom-left") << QPoint(139, 161) << QStringList { "hScroll(-1)", "vScroll(1)" };
    }
    void dragStartsActivatesAndScrolls()
    {
        QFETCH(QPoint, punto);
        QFETCH(QStringList, llamadas);
        // Data without text is refused, and nothing is asked of the frame.
        QMimeData binario;
        binario.setData(u"application/octet-stream"_s, "\x01\x02");
        QCOMPARE(DragDriver::moveData(e->vista, e->en[1], &binario), Qt::IgnoreAction);
        QCOMPARE(DragDriver::dropData(e->vista, e->en[1], &binario), Qt::IgnoreAction);
        QVERIFY(e->mapa.log().isEmpty() && e->frame.calls.isEmpty());
        e->vista->setViewPort(100, 50, 400, 200);
        DragDriver driver;
        QTest::mousePress(e->vista, Qt::LeftButton, {}, e->en[0]);
        QTest::mouseMove(e->vista, e->en[0] + QPoint(3, 4));
        QCOMPARE(driver.started(), 0);
        QTest::mouseMove(e->vista, e->en[0] + QPoint(4, 4));
        QTest::mouseMove(e->vista, e->en[0] + QPoint(9, 9)); // one drag per press
        QCOMPARE(driver.started(), 1);
        QCOMPARE(driver.text(), u"Dframe"_s);
        QCOMPARE(driver.allowed(), Qt::CopyAction | Qt::MoveAction);
        driver.move(e->vista, QPoint(250, 120)); // the pointer enters
        // An inactive frame is activated first; one scroll step per drag-over event.
        e->frame.setPActive(false), e->frame.calls.clear();
        QCOMPARE(driver.move(e->vista, punto), Qt::CopyAction);
        QCOMPARE(e->frame.calls, (QStringList { "isActive", "activate" } + llamadas));
        e->frame.calls.clear(), driver.move(e->vista, punto);
        QCOMPARE(e->frame.calls, QStringList { "isActive" } + llamadas);
        QCOMPARE(driver.drop(e->vista, e->en[2]), Qt::CopyAction);
        driver.finish();
        QCOMPARE(e->mapa.log(), QStringList { "droped(Dframe,C,0)" });
    }
    void keysWorkTheElements_data()
    {
        // From the mark on A; a leg has no moves, so its root hears no "moved".
        QTest::addColumn<QString>("teclas");
        QTest::addColumn<QString>("seleccion");
        QTest::addColumn<QString>("raiz");
        const auto fila = [](const char *nombre, const char *teclas, const char *seleccion, const char *raiz) {
            QTest::newRow(nombre) << QString(teclas) << QString(seleccion) << QString(raiz);
        };
        fila("Space: the marked one alone", "Space", "A", "clicked(A,false)");
        fila("arrows, to the last at most", "Right, Right, Right, Space", "C", "clicked(C,false)");
        fila("nobody above or below", "Right, Up, Down, Space", "B", "clicked(B,false)");
        fila("Ctrl+Space toggles", "Ctrl+Space, Right, Ctrl+Space, Left, Ctrl+Space", "B", "clicked(A,true) clicked(B,true) clicked(A,true)");
        fila("Shift+arrows extend", "Shift+Right, Shift+Right, Shift+Left", "B C", "clicked(B,false) clicked(C,true) clicked(B,true)");
        fila("Ctrl+A, telling nobody", "Ctrl+A", "A B C", "");
        fila("Ctrl+arrows move by a unit", "Space, Ctrl+Right, Ctrl+Down, Ctrl+Down", "A", "clicked(A,false) moved(A) moved(A) moved(A)");
        fila("locked: no move", "Space, Ctrl+Left", "A", "clicked(A,false)");
        fila("the map's keys and others pass", "Return, Menu, Alt+Right, Shift+Space, Ctrl+B", "", "");
    }
    void keysWorkTheElements()
    {
        QFETCH_GLOBAL(QString, clase);
        QFETCH(QString, teclas);
        QFETCH(QString, seleccion);
        QFETCH(QString, raiz);
        e->vista->setBloqueo(QByteArray(QTest::currentDataTag()).startsWith("locked"));
        e->enfocar();
        for (const QString &tecla : teclas.split(u", "_s))
            QTest::keySequence(e->vista, QKeySequence(tecla));
        QCOMPARE(e->seleccion().join(u' '), seleccion);
        if (clase == "PiernaX"_L1)
            raiz.remove(u" moved(A)"_s);
        QCOMPARE(e->mapa.log().join(u' '), raiz);
        QCOMPARE(QPoint(e->objetos[0]->getX(), e->objetos[0]->getY()), raiz.contains(u"moved"_s) ? QPoint(11, 12) : QPoint(10, 10));
    }
    void focusMarkShowsWhileTheKeyboardWorks()
    {
        QImage antes = pixels::grab(e->vista);
        e->enfocar(), QTest::keyClick(e->vista, Qt::Key_Right);
        // The style's focus rectangle around B, and nothing changed elsewhere.
        const QRect marca = QRect(e->en[1] - QPoint(10, 10), QSize(20, 20)).adjusted(-3, -3, 3, 3);
        const QImage conMarca = pixels::grab(e->vista);
        int dentro = 0;
        for (int y = 0; y < antes.height(); ++y)
            for (int x = 0; x < antes.width(); ++x)
                dentro += antes.pixel(x, y) == conMarca.pixel(x, y) ? 0 : marca.contains(x, y) ? 1 : -10000;
        QVERIFY2(dentro > 0, qPrintable(QString::number(dentro)));
        // A click hides it; the next arrow shows it on what the click selected, and so does losing the focus.
        QTest::mouseClick(e->vista, Qt::LeftButton, {}, e->en[2]);
        antes = pixels::grab(e->vista);
        QTest::keyClick(e->vista, Qt::Key_Left);
        QVERIFY(pixels::grab(e->vista) != antes);
        QTest::keyClick(e->vista, Qt::Key_Space);
        QCOMPARE(e->mapa.log().last(), u"clicked(C,false)"_s);
        e->vista->clearFocus();
        QCOMPARE(pixels::grab(e->vista), antes);
        // A mark outside the visible part asks the frame to scroll towards it, either way.
        e->vista->setViewPort(100, 50, 400, 200), e->frame.calls.clear();
        e->enfocar(Qt::BacktabFocusReason), e->vista->setViewPort(0, -20, 20, 20);
        QTest::keyClick(e->vista, Qt::Key_Left);
        QCOMPARE(e->frame.calls.mid(1), (QStringList { "hScroll(-1)", "vScroll(-1)", "hScroll(1)", "vScroll(1)" }));
    }
    void screenReadersSeeTheElements()
    {
        QFETCH_GLOBAL(QString, clase);
        static QList<std::pair<QAccessible::Event, int>> eventos;
        eventos.clear();
        QAccessible::installUpdateHandler([](QAccessibleEvent *evento) {
            if (evento->child() >= 0)
                eventos.append({ evento->type(), evento->child() });
        });
        QGuiApplicationPrivate::platformIntegration()->accessibility()->setActive(true);
        e->objetos[1]->setTip(u"Tinto"_s), e->objetos[1]->setDescripcion(u"Crianza"_s), e->objetos[1]->setColor(0xFF);
        auto claves = std::make_shared<Referencias>();
        claves->add(u"1"_s, u"Reserva"_s, 0xFF), e->ligado->setReferencias(claves);
        QAccessibleInterface *vista = QAccessible::queryAccessibleInterface(e->vista);
        const int primero = vista->childCount() - 3;
        QAccessibleInterface *hijo = vista->child(primero + 1);
        QCOMPARE(hijo->text(QAccessible::Description), e->ligado->getReferencias() ? u"Crianza, Reserva"_s : u"Crianza"_s);
        QCOMPARE(hijo->rect(), QRect(e->vista->mapToGlobal(e->en[1] - QPoint(10, 10)), QSize(20, 20)));
        QVERIFY(vista->childAt(hijo->rect().center().x(), hijo->rect().center().y()) == hijo && hijo->parent() == vista);
        QVERIFY(vista->indexOfChild(hijo) == primero + 1 && hijo->role() == QAccessible::ListItem);
        QVERIFY(!hijo->childCount() && !hijo->child(0) && hijo->indexOfChild(vista) < 0 && !hijo->childAt(0, 0));
        const QPoint fuera = e->vista->mapToGlobal(e->fuera); // a leg's tier strip, or nothing
        QCOMPARE(vista->childAt(fuera.x(), fuera.y()),
                 QAccessible::queryAccessibleInterface(e->vista->findChild<QWidget *>(u"escalas"_s)));
        // Press makes the selection, select adds to it, setFocus moves the mark; each is heard.
        QCOMPARE(hijo->actionInterface()->actionNames(),
                 (QStringList { QAccessibleActionInterface::pressAction(), u"select"_s, QAccessibleActionInterface::setFocusAction() }));
        hijo->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        vista->child(primero)->actionInterface()->doAction(u"select"_s);
        e->enfocar(Qt::MouseFocusReason), e->vista->clearFocus(); // the action gives it
        vista->child(primero + 2)->actionInterface()->doAction(QAccessibleActionInterface::setFocusAction());
        QCOMPARE(e->mapa.log(), (QStringList { "clicked(B,false)", "clicked(A,true)" }));
        QCOMPARE(eventos, (QList<std::pair<QAccessible::Event, int>> {
                              { QAccessible::SelectionAdd, primero + 1 }, { QAccessible::SelectionAdd, primero },
                              { QAccessible::Focus, primero + 2 } }));
        QCOMPARE(vista->focusChild(), vista->child(primero + 2));
        e->vista->setBloqueo(true), e->vista->setEnabled(false);
        QStringList estados; // name: selected, focused, movable, disabled
        for (int i = primero; i < vista->childCount(); ++i) {
            const QAccessible::State estado = vista->child(i)->state();
            estados.append(vista->child(i)->text(QAccessible::Name)
                           + u": %1%2%3%4"_s.arg(estado.selected).arg(estado.focused).arg(estado.movable).arg(estado.disabled));
        }
        QCOMPARE(estados, (QStringList { "A: 1001", "B Tinto: 1001", "C: 0001" }));
        QAccessible::installUpdateHandler(nullptr), QGuiApplicationPrivate::platformIntegration()->accessibility()->setActive(false);
    }
    void typedFrame()
    {
        // A view taken out of a FrameX calls its new frame, not the one it reached through IFrameX.
        QWidget anfitrion;
        auto *marco = new FrameX(&anfitrion);
        marco->setRoot(&e->mapa), marco->setObjeto(e->ligado);
        anfitrion.show();
        auto *vista = marco->findChild<VistaX *>(u"conten"_s);
        QTest::mouseClick(vista, Qt::LeftButton, {}, e->en[0]);
        QVERIFY(marco->pActive());
        vista->setParent(&e->frame);
        QTest::mouseClick(vista, Qt::LeftButton, {}, e->en[1]);
        QCOMPARE(e->frame.calls, (QStringList { "setActive(B)", "setActive(B)" }));
    }
    void failuresAreReported_data()
    {
        QTest::addColumn<QStringList>("mensajes"); // after "<the view's class>."
        const QString noSet = u"->Object variable or With block variable not set"_s,
                      noMember = u"->Object doesn't support this property or method"_s;
        QTest::newRow("no frame: click") << QStringList { "MouseDown" + noSet, "MouseUp" + noSet };
        QTest::newRow("plain parent: click") << QStringList { "MouseDown" + noMember, "MouseUp" + noMember };
        QTest::newRow("plain parent: drag") << QStringList { "dragOver" + noMember };
        QTest::newRow("unbound: setActivo") << QStringList { "IContenedorX_setActivo" + noSet };
    }
    void failuresAreReported()
    {
        QFETCH_GLOBAL(QString, clase);
        const QByteArray caso = QTest::currentDataTag();
        QFETCH(QStringList, mensajes);
        QWidget plano;
        const std::unique_ptr<VistaX> suelta(nueva(clase, nullptr));
        e->vista->setParent(caso.startsWith("plain") ? &plano : nullptr);
        QMimeData texto;
        texto.setText(u"D1"_s);
        if (caso.endsWith("click"))
            QTest::mouseClick(e->vista, Qt::LeftButton, {}, e->en[0]);
        else if (caso.endsWith("drag"))
            QCOMPARE(DragDriver::moveData(e->vista, e->en[0], &texto), Qt::CopyAction); // as proposed
        else
            suelta->setActivo(e->objetos[0], true);
        QStringList got = e->errors.messages();
        got.removeDuplicates(); // the container's drag-enter is a drag-move as well
        QCOMPARE(got.replaceInStrings(clase + u'.', QString()), mensajes);
        QVERIFY(e->mapa.log().isEmpty());
        e->errors.clear(), e->vista->setParent(&e->frame);
    }

private:
    std::optional<Escena> e;
};

QTEST_MAIN(tst_VistaX)
#include "tst_vistax.moc"
