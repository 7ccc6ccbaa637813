#include <tarvonix/containers/contenedorx.h>
#include <tarvonix/leg/piernax.h>
#include <tarvonix/map/framex.h>
#include <tarvonix/model/lote.h>
#include <tarvonix/model/objeto.h>
#include <tarvonix/model/objetos.h>
#include <tarvonix/model/pierna.h>
#include <tarvonix/model/ubicacion.h>
#include <tarvonix/platform/latebinding.h>
#include <tarvonix/widgets/dummy.h>

#include "dragdriver.h"
#include "errorcatcher.h"
#include "recordingmapa.h"
#include "testframe.h"

#include <QMimeData>
#include <QTest>

using namespace tarvonix;

namespace {

// Three objects A, B, C side by side, 20 pixels square, in either view, and where to point at them: the
// same gestures must do the same on both.
struct Escena
{
    ErrorCatcher errors;
    TestFrame frame;
    RecordingMapa mapa;
    VistaX *vista = nullptr;
    ObjetoPtr ligado;
    ObjetoPtr objetos[3];
    QPoint en[3]; // the centres of A, B and C
    QPoint fuera; // on no object: the bound object answers
    QPoint bandaDesde, bandaHasta; // from nothing over A and B wholly, C partly

    explicit Escena(const QString &clase)
    {
        // The leg: one tier of three positions, cells at x 21, 42 and 63, y 0.
        const bool pierna = clase == QLatin1String("PiernaX");
        auto leg = std::make_shared<Pierna>();
        leg->setCodigo(QStringLiteral("P01"));
        leg->setEscalas(1);
        leg->setEscala(1, 3);
        ligado = pierna ? ObjetoPtr(leg) : std::make_shared<Objeto>();
        ligado->setCodigo(pierna ? QStringLiteral("P01") : QStringLiteral("R"));
        ligado->setPuedeContener(!pierna);
        for (int i = 0; i < 3; ++i) {
            const ObjetoPtr o = pierna ? ObjetoPtr(std::make_shared<Lote>()) : std::make_shared<Objeto>();
            o->setCodigo(QString(QLatin1Char('A' + i)));
            o->setForma(FormaCaja);
            o->setX(qint16(10 + 30 * i));
            o->setY(10);
            o->setAncho(20);
            o->setAlto(20);
            o->setPadre(pierna ? leg->getUbicacion(1, qint16(i + 1))->getCodigo() : QStringLiteral("R"));
            pierna ? leg->setObjeto(1, qint16(i + 1), o) : ligado->getObjetos()->add(o);
            objetos[i] = o;
            en[i] = pierna ? QPoint(31 + 21 * i, 10) : QPoint(22 + 30 * i, 22);
        }
        vista = nueva(clase, &frame);
        fuera = pierna ? QPoint(5, 10) : QPoint(200, 100);
        bandaDesde = pierna ? QPoint(5, 30) : QPoint(5, 60);
        bandaHasta = pierna ? QPoint(75, 0) : QPoint(80, 5);
        vista->setRoot(&mapa);
        vista->setObjeto(ligado);
        vista->setEscala(1);
        frame.show();
        frame.calls.clear();
    }

    static VistaX *nueva(const QString &clase, QWidget *parent)
    {
        return clase == QLatin1String("PiernaX") ? static_cast<VistaX *>(new PiernaX(parent)) : new ContenedorX(parent);
    }
    QStringList seleccion() const
    {
        QStringList codes;
        for (const ObjetoPtr &o : *vista->getSeleccionados())
            codes.append(o->getCodigo() + (o->getSeleccionado() ? "" : "(flag off)"));
        return codes;
    }
    Dummy *banda() const { return vista->findChild<Dummy *>(QString(), Qt::FindDirectChildrenOnly); }
    void mover(QPoint p) const
    {
        QMouseEvent event(QEvent::MouseMove, p, vista->mapToGlobal(p), Qt::NoButton, Qt::LeftButton, {});
        QCoreApplication::sendEvent(vista, &event);
    }
};

const QStringList vistas { QStringLiteral("ContenedorX"), QStringLiteral("PiernaX") };

void porVista()
{
    QTest::addColumn<QString>("clase");
    for (const QString &clase : vistas)
        QTest::newRow(qPrintable(clase)) << clase;
}

} // namespace

class tst_VistaX : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void clicksSelectAndReport_data() { porVista(); }
    void clicksSelectAndReport();
    void rubberBandTogglesWhatItEncloses_data() { porVista(); }
    void rubberBandTogglesWhatItEncloses();
    void dragStartsPastTheThreshold_data() { porVista(); }
    void dragStartsPastTheThreshold();
    void dragOverActivatesAndScrolls_data();
    void dragOverActivatesAndScrolls();
    void containerContract_data() { porVista(); }
    void containerContract();
    void typedFrame_data() { porVista(); }
    void typedFrame();
    void failuresAreReported_data();
    void failuresAreReported();
};

void tst_VistaX::clicksSelectAndReport()
{
    QFETCH(QString, clase);
    Escena e(clase);
    QTest::mouseClick(e.vista, Qt::LeftButton, {}, e.en[0]);
    QCOMPARE(e.seleccion(), QStringList { "A" });
    QCOMPARE(e.frame.calls, (QStringList { "setActive(A)", "setActive(A)" })); // press and release
    // Ctrl toggles, and reports several.
    QTest::mouseClick(e.vista, Qt::LeftButton, Qt::ControlModifier, e.en[1]);
    QCOMPARE(e.seleccion(), (QStringList { "A", "B" }));
    QTest::mouseClick(e.vista, Qt::LeftButton, Qt::ControlModifier, e.en[0]);
    QCOMPARE(e.seleccion(), QStringList { "B" });
    QTest::mouseClick(e.vista, Qt::LeftButton, {}, e.fuera);
    QCOMPARE(e.mapa.log(), (QStringList { "clicked(A,false)", "clicked(B,true)", "clicked(A,true)",
                                          QStringLiteral("clicked(%1,false)").arg(e.ligado->getCodigo()) }));
    QVERIFY(e.seleccion().isEmpty());

    e.vista->seleccionarTodos();
    QCOMPARE(e.seleccion(), (QStringList { "A", "B", "C" }));
    e.vista->deseleccionarTodos();
    QVERIFY(e.seleccion().isEmpty() && !e.objetos[0]->getSeleccionado() && !e.objetos[2]->getSeleccionado());

    // In an inactive frame a release reports nothing and a move draws no band.
    e.mapa.clear();
    e.frame.setPActive(false);
    QTest::mousePress(e.vista, Qt::LeftButton, {}, e.bandaDesde);
    e.mover(e.bandaHasta);
    QVERIFY(e.banda()->isHidden());
    QTest::mouseRelease(e.vista, Qt::LeftButton, {}, e.bandaHasta);
    QTest::mouseClick(e.vista, Qt::LeftButton, {}, e.en[1]);
    QVERIFY(e.mapa.log().isEmpty());
    QVERIFY(e.errors.messages().isEmpty());
}

void tst_VistaX::rubberBandTogglesWhatItEncloses()
{
    QFETCH(QString, clase);
    Escena e(clase);
    Dummy *banda = e.banda();
    QVERIFY(banda && banda->isHidden());
    QTest::mousePress(e.vista, Qt::LeftButton, {}, e.bandaDesde);
    e.mover(e.bandaDesde + QPoint(3, -4)); // exactly 5 away: not yet
    QVERIFY(banda->isHidden());
    e.mover(e.bandaDesde + QPoint(4, -4));
    QVERIFY(banda->isVisible());
    e.mover(e.bandaDesde); // on the press point: one pixel wide and high
    QCOMPARE(banda->geometry(), QRect(e.bandaDesde, QSize(1, 1)));
    e.mover(e.bandaHasta);
    e.vista->getSeleccionados()->add(e.objetos[1]); // the live selection: B selected meanwhile
    e.objetos[1]->setSeleccionado(true);
    const QPoint lado = e.bandaHasta - e.bandaDesde;
    QCOMPARE(banda->geometry(), QRect(qMin(e.bandaDesde.x(), e.bandaHasta.x()), qMin(e.bandaDesde.y(), e.bandaHasta.y()),
                                      qAbs(lado.x()), qAbs(lado.y())));
    QTest::mouseRelease(e.vista, Qt::LeftButton, {}, e.bandaHasta);
    QVERIFY(banda->isHidden());
    // A turns on, B (selected before) off, C (only partly inside) stays; the root hears nothing.
    QCOMPARE(e.seleccion(), QStringList { "A" });
    QVERIFY(e.mapa.log().isEmpty());
    QVERIFY(e.errors.messages().isEmpty());
}

void tst_VistaX::dragStartsPastTheThreshold()
{
    QFETCH(QString, clase);
    Escena e(clase);
    DragDriver driver;
    QTest::mousePress(e.vista, Qt::LeftButton, {}, e.en[0]);
    e.mover(e.en[0] + QPoint(3, 4));
    QCOMPARE(driver.started(), 0);
    e.mover(e.en[0] + QPoint(4, 4));
    e.mover(e.en[0] + QPoint(9, 9)); // one drag per press
    QCOMPARE(driver.started(), 1);
    QCOMPARE(driver.text(), QStringLiteral("Dframe"));
    QCOMPARE(driver.allowed(), Qt::CopyAction | Qt::MoveAction);
    QCOMPARE(driver.drop(e.vista, e.en[2]), Qt::CopyAction);
    driver.finish();
    QCOMPARE(e.mapa.log(), QStringList { "droped(Dframe,C,0)" });

    // Data without text is refused, and nothing is asked of the frame.
    e.mapa.clear();
    e.frame.calls.clear();
    QMimeData binario;
    binario.setData(QStringLiteral("application/octet-stream"), QByteArray("\x01\x02", 2));
    QCOMPARE(DragDriver::moveData(e.vista, e.en[1], &binario), Qt::IgnoreAction);
    QCOMPARE(DragDriver::dropData(e.vista, e.en[1], &binario), Qt::IgnoreAction);
    QVERIFY(e.mapa.log().isEmpty() && e.frame.calls.isEmpty());
    QVERIFY(e.errors.messages().isEmpty());
}

void tst_VistaX::dragOverActivatesAndScrolls_data()
{
    QTest::addColumn<QString>("clase");
    QTest::addColumn<QPoint>("punto");
    QTest::addColumn<QStringList>("llamadas");
    // Viewport (100, 50) to (400, 200), with a band of 40.
    for (const QString &clase : vistas) {
        const auto row = [&](const char *nombre) { return std::ref(QTest::addRow("%s, %s", qPrintable(clase), nombre) << clase); };
        row("middle") << QPoint(250, 120) << QStringList();
        row("39 inside the left edge") << QPoint(139, 120) << QStringList { "hScroll(-1)" };
        row("40 inside the left edge") << QPoint(140, 120) << QStringList();
        row("near the right edge") << QPoint(361, 120) << QStringList { "hScroll(1)" };
        row("near the top") << QPoint(250, 89) << QStringList { "vScroll(-1)" };
        row("near the bottom-left") << QPoint(120, 170) << QStringList { "hScroll(-1)", "vScroll(1)" };
    }
}

void tst_VistaX::dragOverActivatesAndScrolls()
{
    QFETCH(QString, clase);
    QFETCH(QPoint, punto);
    QFETCH(QStringList, llamadas);
    Escena e(clase);
    e.vista->setViewPort(100, 50, 400, 200);
    DragDriver driver;
    QTest::mousePress(e.vista, Qt::LeftButton, {}, e.en[0]);
    e.mover(e.en[0] + QPoint(10, 0));
    driver.move(e.vista, QPoint(250, 120)); // the pointer enters
    // An inactive frame is activated first; one step per drag-over event.
    e.frame.setPActive(false);
    e.frame.calls.clear();
    QCOMPARE(driver.move(e.vista, punto), Qt::CopyAction);
    QCOMPARE(e.frame.calls, (QStringList { "isActive", "activate" } + llamadas));
    e.frame.calls.clear();
    driver.move(e.vista, punto);
    QCOMPARE(e.frame.calls, QStringList { "isActive" } + llamadas);
    driver.finish();
    QVERIFY(e.errors.messages().isEmpty());
}

void tst_VistaX::containerContract()
{
    QFETCH(QString, clase);
    Escena e(clase);
    auto *contrato = LateBinding::call(e.vista, QStringLiteral("cast")).value<IContenedorX *>();
    QCOMPARE(contrato, static_cast<IContenedorX *>(e.vista));
    QCOMPARE(contrato->getObjeto(), e.ligado);
    // The live collection: what a caller takes out, the view no longer clears.
    contrato->seleccionarTodos();
    contrato->getSeleccionados()->remove(e.objetos[0]);
    contrato->deseleccionarTodos();
    QVERIFY(e.objetos[0]->getSeleccionado() && !e.objetos[1]->getSeleccionado());
    // The active flag: never on the bound object itself, nor for no object.
    contrato->setActivo(e.ligado, true);
    contrato->setActivo(nullptr, true);
    contrato->setActivo(e.objetos[1], true);
    QVERIFY(!e.ligado->getActivo() && e.objetos[1]->getActivo());
    QVERIFY(e.errors.messages().isEmpty());
}

void tst_VistaX::typedFrame()
{
    // A view inside a FrameX reaches it through IFrameX: a press activates the frame, and the drag
    // carries the frame's name.
    QFETCH(QString, clase);
    Escena e(clase);
    QWidget anfitrion;
    anfitrion.resize(1200, 900);
    auto *marco = new FrameX(&anfitrion);
    marco->setObjectName(QStringLiteral("Dmarco"));
    marco->setRoot(&e.mapa);
    marco->setMaxViewPort(3000, 3000);
    marco->setObjeto(e.ligado);
    anfitrion.show();
    auto *vista = marco->findChild<VistaX *>(QStringLiteral("conten"));
    QCOMPARE(vista->metaObject()->className(), e.vista->metaObject()->className());
    DragDriver driver;
    QTest::mousePress(vista, Qt::LeftButton, {}, e.en[0]);
    QVERIFY(marco->pActive());
    QMouseEvent mueve(QEvent::MouseMove, e.en[0] + QPoint(10, 0), vista->mapToGlobal(e.en[0] + QPoint(10, 0)),
                      Qt::NoButton, Qt::LeftButton, {});
    QCoreApplication::sendEvent(vista, &mueve);
    QCOMPARE(driver.text(), QStringLiteral("Dmarco"));
    driver.finish();
    QTest::mouseRelease(vista, Qt::LeftButton, {}, e.en[0] + QPoint(10, 0));

    // A view moved into another parent calls that one.
    vista->setParent(&e.frame);
    vista->show();
    QTest::mouseClick(vista, Qt::LeftButton, {}, e.en[1]);
    QCOMPARE(e.frame.calls, (QStringList { "setActive(B)", "setActive(B)" }));
    QVERIFY(e.errors.messages().isEmpty());
}

void tst_VistaX::failuresAreReported_data()
{
    QTest::addColumn<QString>("clase");
    QTest::addColumn<QString>("caso");
    QTest::addColumn<QStringList>("mensajes");
    const QString noSet = QStringLiteral("Object variable or With block variable not set");
    const QString noMember = QStringLiteral("Object doesn't support this property or method");
    for (const QString &clase : vistas) {
        const auto row = [&](const char *caso) { return std::ref(QTest::addRow("%s, %s", qPrintable(clase), caso) << clase << caso); };
        row("no frame: click") << QStringList { clase + ".MouseDown->" + noSet, clase + ".MouseUp->" + noSet };
        row("plain parent: click") << QStringList { clase + ".MouseDown->" + noMember, clase + ".MouseUp->" + noMember };
        row("plain parent: drag") << QStringList { clase + ".dragOver->" + noMember };
        row("unbound: setActivo") << QStringList { clase + ".IContenedorX_setActivo->" + noSet };
    }
}

void tst_VistaX::failuresAreReported()
{
    QFETCH(QString, clase);
    QFETCH(QString, caso);
    QFETCH(QStringList, mensajes);
    Escena e(clase);
    QWidget plano;
    const std::unique_ptr<VistaX> suelta(Escena::nueva(clase, nullptr));
    e.vista->setParent(caso.startsWith(QLatin1String("plain")) ? &plano : nullptr);
    QMimeData texto;
    texto.setText(QStringLiteral("D1"));
    if (caso.endsWith(QLatin1String("click")))
        QTest::mouseClick(e.vista, Qt::LeftButton, {}, e.en[0]);
    else if (caso.endsWith(QLatin1String("drag")))
        QCOMPARE(DragDriver::moveData(e.vista, e.en[0], &texto), Qt::CopyAction); // as proposed
    else
        suelta->setActivo(e.objetos[0], true);
    QStringList got = e.errors.messages();
    got.removeDuplicates(); // the container's drag-enter is a drag-move as well
    QCOMPARE(got, mensajes);
    QVERIFY(e.mapa.log().isEmpty());
    e.vista->setParent(&e.frame);
}

QTEST_MAIN(tst_VistaX)
#include "tst_vistax.moc"
