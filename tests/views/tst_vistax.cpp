#include <tarvonix/containers/contenedorx.h>
#include <tarvonix/leg/piernax.h>
#include <tarvonix/map/framex.h>
#include <tarvonix/model/lote.h>
#include <tarvonix/model/objeto.h>
#include <tarvonix/model/objetos.h>
#include <tarvonix/model/pierna.h>
#include <tarvonix/model/ubicacion.h>
#include <tarvonix/widgets/dummy.h>

#include "dragdriver.h"
#include "errorcatcher.h"
#include "recordingmapa.h"
#include "testframe.h"

#include <QMouseEvent>
#include <QTest>

using namespace tarvonix;

namespace {

// Three objects A, B, C side by side, 20 pixels square, in either view, and
// where to point at them: the same gestures must do the same on both.
struct Escena
{
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
        const QStringList codigos { "A", "B", "C" };
        if (clase == QLatin1String("ContenedorX")) {
            auto raiz = std::make_shared<Objeto>();
            raiz->setCodigo(QStringLiteral("R"));
            raiz->setPuedeContener(true);
            for (int i = 0; i < 3; ++i) {
                auto o = std::make_shared<Objeto>();
                o->setCodigo(codigos[i]);
                o->setPadre(QStringLiteral("R"));
                o->setX(qint16(10 + 30 * i));
                o->setY(10);
                o->setAncho(20);
                o->setAlto(20);
                o->setForma(FormaCaja);
                raiz->getObjetos()->add(o);
                objetos[i] = o;
                en[i] = QPoint(22 + 30 * i, 22);
            }
            ligado = raiz;
            vista = new ContenedorX(&frame);
            fuera = QPoint(200, 100);
            bandaDesde = QPoint(5, 60);
            bandaHasta = QPoint(80, 5);
        } else {
            // One tier of three positions: cells at x 21, 42 and 63, y 0, 20 pixels square.
            auto leg = std::make_shared<Pierna>();
            leg->setCodigo(QStringLiteral("P01"));
            leg->setEscalas(1);
            leg->setEscala(1, 3);
            for (int p = 1; p <= 3; ++p) {
                auto lote = std::make_shared<Lote>();
                lote->setCodigo(codigos[p - 1]);
                lote->setForma(FormaCaja);
                lote->setPadre(leg->getUbicacion(1, qint16(p))->getCodigo());
                leg->setObjeto(1, qint16(p), lote);
                objetos[p - 1] = lote;
                en[p - 1] = QPoint(31 + 21 * (p - 1), 10);
            }
            ligado = leg;
            vista = new PiernaX(&frame);
            fuera = QPoint(5, 10);
            bandaDesde = QPoint(5, 30);
            bandaHasta = QPoint(75, 0);
        }
        vista->setRoot(&mapa);
        vista->setObjeto(ligado);
        vista->setEscala(1);
        frame.show();
        frame.calls.clear();
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

void vistas()
{
    QTest::addColumn<QString>("clase");
    QTest::newRow("ContenedorX") << QStringLiteral("ContenedorX");
    QTest::newRow("PiernaX") << QStringLiteral("PiernaX");
}

} // namespace

class tst_VistaX : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void clicksSelectAndReport_data() { vistas(); }
    void clicksSelectAndReport();
    void rubberBandTogglesWhatItEncloses_data() { vistas(); }
    void rubberBandTogglesWhatItEncloses();
    void dragStartsPastTheThreshold_data() { vistas(); }
    void dragStartsPastTheThreshold();
    void dragOverActivatesAndScrolls_data();
    void dragOverActivatesAndScrolls();
    void typedFrame_data() { vistas(); }
    void typedFrame();
};

void tst_VistaX::clicksSelectAndReport()
{
    QFETCH(QString, clase);
    ErrorCatcher errors;
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
    QCOMPARE(e.mapa.log(),
             (QStringList { "clicked(A,false)", "clicked(B,true)", "clicked(A,true)",
                            QStringLiteral("clicked(%1,false)").arg(e.ligado->getCodigo()) }));
    QVERIFY(e.seleccion().isEmpty());

    e.vista->seleccionarTodos();
    QCOMPARE(e.seleccion(), (QStringList { "A", "B", "C" }));
    e.vista->deseleccionarTodos();
    QVERIFY(e.seleccion().isEmpty());
    for (const ObjetoPtr &o : e.objetos)
        QVERIFY(!o->getSeleccionado());
    QVERIFY(errors.messages().isEmpty());
}

void tst_VistaX::rubberBandTogglesWhatItEncloses()
{
    QFETCH(QString, clase);
    ErrorCatcher errors;
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
    QCOMPARE(banda->geometry(),
             QRect(qMin(e.bandaDesde.x(), e.bandaHasta.x()), qMin(e.bandaDesde.y(), e.bandaHasta.y()),
                   qAbs(lado.x()), qAbs(lado.y())));
    QTest::mouseRelease(e.vista, Qt::LeftButton, {}, e.bandaHasta);
    QVERIFY(banda->isHidden());
    // A turns on, B (selected before) off, C (only partly inside) stays; the root hears nothing.
    QCOMPARE(e.seleccion(), QStringList { "A" });
    QVERIFY(e.mapa.log().isEmpty());
    QVERIFY(errors.messages().isEmpty());
}

void tst_VistaX::dragStartsPastTheThreshold()
{
    QFETCH(QString, clase);
    ErrorCatcher errors;
    Escena e(clase);
    DragDriver driver;
    QTest::mousePress(e.vista, Qt::LeftButton, {}, e.en[0]);
    e.mover(e.en[0] + QPoint(3, 4));
    QCOMPARE(driver.started(), 0);
    e.mover(e.en[0] + QPoint(4, 4));
    QCOMPARE(driver.started(), 1);
    QCOMPARE(driver.text(), QStringLiteral("Dframe"));
    QCOMPARE(driver.allowed(), Qt::CopyAction | Qt::MoveAction);
    e.mover(e.en[0] + QPoint(9, 9)); // one drag per press
    QCOMPARE(driver.started(), 1);
    QCOMPARE(driver.drop(e.vista, e.en[2]), Qt::CopyAction);
    driver.finish();
    QCOMPARE(e.mapa.log(), QStringList { "droped(Dframe,C,0)" });
    QVERIFY(errors.messages().isEmpty());
}

void tst_VistaX::dragOverActivatesAndScrolls_data()
{
    QTest::addColumn<QString>("clase");
    QTest::addColumn<QPoint>("punto");
    QTest::addColumn<QStringList>("llamadas");
    // Viewport (100, 50) to (400, 200), with a band of 40.
    const struct
    {
        const char *nombre;
        QPoint punto;
        QStringList llamadas;
    } filas[] = {
        { "middle", QPoint(250, 120), {} },
        { "39 inside the left edge", QPoint(139, 120), { "hScroll(-1)" } },
        { "40 inside the left edge", QPoint(140, 120), {} },
        { "near the right edge", QPoint(361, 120), { "hScroll(1)" } },
        { "near the top", QPoint(250, 89), { "vScroll(-1)" } },
        { "near the bottom-left", QPoint(120, 170), { "hScroll(-1)", "vScroll(1)" } },
    };
    for (const QString &clase : { QStringLiteral("ContenedorX"), QStringLiteral("PiernaX") }) {
        for (const auto &fila : filas)
            QTest::addRow("%s, %s", qPrintable(clase), fila.nombre) << clase << fila.punto << fila.llamadas;
    }
}

void tst_VistaX::dragOverActivatesAndScrolls()
{
    QFETCH(QString, clase);
    QFETCH(QPoint, punto);
    QFETCH(QStringList, llamadas);
    ErrorCatcher errors;
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
    QVERIFY(errors.messages().isEmpty());
}

void tst_VistaX::typedFrame()
{
    // A view inside a FrameX reaches it through IFrameX: the drag carries the frame's name and
    // "Resize" fits the frame to the view.
    QFETCH(QString, clase);
    ErrorCatcher errors;
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
    QVERIFY(vista);
    QCOMPARE(vista->metaObject()->className(), e.vista->metaObject()->className());
    // Grown, the view has the frame fit round it: the scroll bar's 17 and 8 of border across; the
    // title's 18 as well down.
    marco->setEscala(8);
    QVERIFY(vista->width() > 500);
    QCOMPARE(marco->size(), vista->size() + QSize(17 + 8, 18 + 17 + 8));

    DragDriver driver;
    marco->setEscala(1);
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
    QVERIFY(errors.messages().isEmpty());
}

QTEST_MAIN(tst_VistaX)
#include "tst_vistax.moc"
