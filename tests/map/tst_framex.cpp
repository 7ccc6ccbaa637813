#include <tarvonix/containers/contenedorx.h>
#include <tarvonix/widgets/etiquetas.h>
#include <tarvonix/leg/piernax.h>
#include <tarvonix/map/framex.h>
#include <tarvonix/model/deposito.h>
#include <tarvonix/model/objeto.h>
#include <tarvonix/model/objetos.h>
#include <tarvonix/model/pierna.h>

#include "errorcatcher.h"
#include "recordingmapa.h"

#include <QScrollBar>
#include <QTest>

using namespace tarvonix;

namespace {

// Stands in for the map as the frame's parent: it answers "startMove".
class Anfitrion : public QWidget
{
    Q_OBJECT
public:
    Q_INVOKABLE void startMove(QWidget *frame) { movidos.append(frame); }
    QList<QWidget *> movidos;
};

std::shared_ptr<Objeto> contenedorDe(const QString &tipo, int ancho, int alto)
{
    auto objeto = std::make_shared<Objeto>();
    objeto->setTipo(tipo);
    objeto->setCodigo(QStringLiteral("C1"));
    objeto->setDescripcion(QStringLiteral("Nave de crianza"));
    objeto->setPuedeContener(true);
    auto hijo = std::make_shared<Deposito>();
    hijo->setCodigo(QStringLiteral("D1"));
    hijo->setAncho(qint16(ancho));
    hijo->setAlto(qint16(alto));
    hijo->setForma(1);
    hijo->setPadre(QStringLiteral("C1"));
    hijo->setSeleccionado(true);
    hijo->setActivo(true);
    objeto->getObjetos()->add(hijo);
    return objeto;
}

struct Banco
{
    Anfitrion anfitrion;
    RecordingMapa mapa;
    FrameX *frame;

    Banco()
        : frame(new FrameX(&anfitrion))
    {
        anfitrion.resize(1200, 900);
        frame->setRoot(&mapa);
        anfitrion.show();
        frame->show();
    }
    QWidget *hijo(const char *nombre) const
    {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); // a replaced "conten" is gone
        return frame->findChild<QWidget *>(QLatin1String(nombre));
    }
};

} // namespace

class tst_FrameX : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void containerFollowsTheType_data();
    void containerFollowsTheType();
    void fitsScrollBarsToWhatDoesNotFit();
    void scrollingMovesTheContainer();
    void activationLooksAndReports();
    void scrollBarsFollowTheActivation_data();
    void scrollBarsFollowTheActivation();
    void titleBarButtons();
    void minimiseKeepsTheHeight();
};

void tst_FrameX::containerFollowsTheType_data()
{
    QTest::addColumn<QString>("tipo");
    QTest::addColumn<bool>("pierna");
    QTest::newRow("P") << QStringLiteral("P") << true;
    QTest::newRow("p") << QStringLiteral("p") << false;
    QTest::newRow("PIERNA") << QStringLiteral("PIERNA") << false;
    QTest::newRow("D") << QStringLiteral("D") << false;
}

void tst_FrameX::containerFollowsTheType()
{
    QFETCH(QString, tipo);
    QFETCH(bool, pierna);
    Banco banco;
    ObjetoPtr objeto;
    if (tipo == QLatin1String("P")) {
        auto leg = std::make_shared<Pierna>();
        leg->setCodigo(QStringLiteral("P1"));
        leg->setEscalas(2);
        leg->setEscala(1, 5);
        leg->setEscala(2, 5);
        objeto = leg;
    } else {
        objeto = contenedorDe(tipo, 50, 50);
    }
    banco.frame->setObjeto(objeto);
    QWidget *conten = banco.hijo("conten");
    QCOMPARE(qobject_cast<PiernaX *>(conten) != nullptr, pierna);
    QCOMPARE(qobject_cast<ContenedorX *>(conten) != nullptr, !pierna);
    QCOMPARE(banco.frame->getObjeto(), objeto);
    // The contained control stands just below the title, one pixel in.
    QCOMPARE(conten->pos(), QPoint(3 + 1, 3 + 18 + 1));
    if (!pierna) {
        // The children start neither selected nor active.
        QVERIFY(!objeto->getObjetos()->Item(1)->getSeleccionado());
        QVERIFY(!objeto->getObjetos()->Item(1)->getActivo());
    }

    // A second object replaces the contained control.
    QPointer<QWidget> primero = conten;
    banco.frame->setObjeto(contenedorDe(QStringLiteral("N"), 10, 10));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!primero);
    QCOMPARE(banco.frame->findChildren<QWidget *>(QStringLiteral("conten")).size(), 1);
}

void tst_FrameX::fitsScrollBarsToWhatDoesNotFit()
{
    Banco banco;
    banco.frame->setMaxViewPort(698, 498);
    // A tiny leg (one tier of one position) still makes the smallest frame.
    auto diminuta = std::make_shared<Pierna>();
    diminuta->setCodigo(QStringLiteral("P9"));
    diminuta->setEscalas(1);
    diminuta->setEscala(1, 1);
    banco.frame->setObjeto(diminuta);
    QVERIFY(banco.hijo("conten")->width() + 17 + 8 < 300);
    QCOMPARE(banco.frame->width(), 300);
    QCOMPARE(banco.frame->height(), 100);
    QVERIFY(banco.hijo("horiz")->isHidden());
    QVERIFY(banco.hijo("vert")->isHidden());

    // A wide object: the frame takes the largest width and the bar scrolls exactly the rest.
    banco.mapa.clear();
    banco.frame->setObjeto(contenedorDe(QStringLiteral("N"), 1000, 50));
    QWidget *conten = banco.hijo("conten");
    auto *horiz = qobject_cast<QScrollBar *>(banco.hijo("horiz"));
    QCOMPARE(banco.frame->width(), 698);
    QVERIFY(!horiz->isHidden());
    QCOMPARE(horiz->maximum(), conten->width() - 698 + 17 + 8);
    QVERIFY(banco.mapa.log().contains(QStringLiteral("ensureVisible"))); // it grew
    QVERIFY(banco.hijo("vert")->isHidden());

    // The bars and the corner sit along the right and bottom edges of the inside.
    auto *vert = qobject_cast<QScrollBar *>(banco.hijo("vert"));
    QCOMPARE(horiz->geometry().bottom(), banco.frame->height() - 3 - 1);
    QCOMPARE(vert->geometry().right(), banco.frame->width() - 3 - 1);
    QCOMPARE(horiz->width(), banco.frame->width() - 6 - vert->width());
}

void tst_FrameX::scrollingMovesTheContainer()
{
    Banco banco;
    banco.frame->setMaxViewPort(400, 300);
    banco.frame->setObjeto(contenedorDe(QStringLiteral("N"), 1000, 1000));
    QWidget *conten = banco.hijo("conten");
    auto *horiz = qobject_cast<QScrollBar *>(banco.hijo("horiz"));
    auto *vert = qobject_cast<QScrollBar *>(banco.hijo("vert"));
    horiz->setValue(50);
    vert->setValue(30);
    QCOMPARE(conten->pos(), QPoint(3 + 1 - 50, 3 + 18 + 1 - 30));
    banco.frame->hScroll(1);
    QCOMPARE(horiz->value(), 50 + horiz->singleStep());
    banco.frame->vScroll(-1);
    QCOMPARE(vert->value(), 30 - vert->singleStep());
}

void tst_FrameX::activationLooksAndReports()
{
    Banco banco;
    const auto objeto = contenedorDe(QStringLiteral("N"), 50, 50);
    banco.frame->setObjeto(objeto);
    auto *titulo = qobject_cast<etiquetas *>(banco.hijo("titulo"));
    QCOMPARE(titulo->BackColor(), 0xC0C0C0);
    QVERIFY(!titulo->font().bold());

    banco.mapa.clear();
    banco.frame->setActivo(objeto, true);
    QVERIFY(banco.frame->pActive());
    QCOMPARE(banco.mapa.log(), QStringList{QStringLiteral("setActive(none,2)")});
    for (const char *nombre : {"titulo", "mini", "cerrar"}) {
        auto *etiqueta = qobject_cast<etiquetas *>(banco.hijo(nombre));
        QCOMPARE(etiqueta->BackColor(), 0x800000);
        QCOMPARE(etiqueta->ForeColor(), 0xFFFFFF);
    }
    QVERIFY(titulo->font().bold());
    // Navy, as drawn.
    const QImage imagen = titulo->grab().toImage();
    QCOMPARE(imagen.pixelColor(titulo->width() / 2, titulo->height() - 3), QColor(0, 0, 0x80));

    // Inside an active frame, another object becomes the active one.
    const ObjetoPtr hijo = objeto->getObjetos()->Item(1);
    banco.mapa.clear();
    QCOMPARE(banco.frame->setActive(hijo), hijo);
    QCOMPARE(banco.mapa.log(), QStringList{QStringLiteral("setActive(D1,1)")});
    QVERIFY(hijo->getActivo());

    banco.frame->setActivo(nullptr, false);
    QVERIFY(!banco.frame->pActive());
    QCOMPARE(titulo->BackColor(), 0xC0C0C0);
    QCOMPARE(titulo->ForeColor(), 0);
}

void tst_FrameX::scrollBarsFollowTheActivation_data()
{
    QTest::addColumn<QString>("nombre");
    QTest::newRow("horiz") << QStringLiteral("horiz");
    QTest::newRow("vert") << QStringLiteral("vert");
}

void tst_FrameX::scrollBarsFollowTheActivation()
{
    QFETCH(QString, nombre);
    Banco banco;
    banco.frame->setMaxViewPort(400, 300);
    banco.frame->setObjeto(contenedorDe(QStringLiteral("N"), 1000, 1000));
    auto *barra = banco.frame->findChild<QScrollBar *>(nombre);
    QVERIFY(barra->isVisible());
    QVERIFY(!barra->isEnabled());
    banco.frame->setActivo(nullptr, true);
    QVERIFY(barra->isEnabled());
    banco.frame->setActivo(nullptr, false);
    QVERIFY(!barra->isEnabled());

    // A press on the inactive frame's bar activates the frame, and the bar takes the press:
    // three quarters along is past the handle, so it pages forward.
    const QPoint enLaPista = barra->orientation() == Qt::Horizontal ? QPoint(barra->width() * 3 / 4, barra->height() / 2)
                                                                    : QPoint(barra->width() / 2, barra->height() * 3 / 4);
    QTest::mouseClick(barra, Qt::LeftButton, Qt::NoModifier, enLaPista);
    QVERIFY(banco.frame->pActive());
    QVERIFY(barra->isEnabled());
    QCOMPARE(barra->value(), qMin(barra->pageStep(), barra->maximum()));
}

void tst_FrameX::titleBarButtons()
{
    ErrorCatcher errors;
    Banco banco;
    const auto objeto = contenedorDe(QStringLiteral("N"), 50, 50);
    banco.frame->setObjeto(objeto);
    auto *titulo = qobject_cast<etiquetas *>(banco.hijo("titulo"));

    // A move can only start from an active frame.
    Q_EMIT titulo->OLEStartDrag(20, 5, 1);
    QVERIFY(banco.anfitrion.movidos.isEmpty());
    QTest::mousePress(titulo, Qt::LeftButton, Qt::NoModifier, QPoint(20, 5)); // activates
    QVERIFY(banco.frame->pActive());
    Q_EMIT titulo->OLEStartDrag(26, 5, 1);
    QCOMPARE(banco.anfitrion.movidos, QList<QWidget *>{banco.frame});
    QCOMPARE(banco.frame->getDragX(), float(titulo->x() + 26));
    QCOMPARE(banco.frame->getDragY(), float(titulo->y() + 5));

    banco.mapa.clear();
    QTest::mousePress(banco.hijo("mini"), Qt::RightButton, Qt::NoModifier, QPoint(5, 5));
    QCOMPARE(banco.mapa.log(), QStringList{QStringLiteral("rightClicked(C1,false)")});
    banco.mapa.clear();
    QTest::mousePress(banco.hijo("cerrar"), Qt::LeftButton, Qt::NoModifier, QPoint(5, 5));
    QCOMPARE(banco.mapa.log(), QStringList{QStringLiteral("remove(C1)")});

    // Without a root the failure is shown, not thrown.
    banco.frame->setRoot(nullptr);
    QTest::mousePress(banco.hijo("cerrar"), Qt::LeftButton, Qt::NoModifier, QPoint(5, 5));
    QCOMPARE(errors.messages(),
             QStringList{QStringLiteral("FrameX.cerrar.Click->Object variable or With block variable not set")});
}

void tst_FrameX::minimiseKeepsTheHeight()
{
    Banco banco;
    banco.frame->setMaxViewPort(1000, 800);
    banco.frame->setObjeto(contenedorDe(QStringLiteral("N"), 300, 400));
    const int alto = banco.frame->height();
    QWidget *mini = banco.hijo("mini");
    QCOMPARE(mini->toolTip(), QStringLiteral("Minimizar"));
    QTest::mousePress(mini, Qt::LeftButton, Qt::NoModifier, QPoint(5, 5));
    QCOMPARE(banco.frame->height(), 18 + 6);
    QCOMPARE(mini->toolTip(), QStringLiteral("Restaurar"));
    QVERIFY(banco.frame->pActive());

    // Fitted again while minimised: the height stays.
    banco.frame->setMaxViewPort(900, 700);
    QCOMPARE(banco.frame->height(), 18 + 6);

    banco.mapa.clear();
    QTest::mousePress(mini, Qt::LeftButton, Qt::NoModifier, QPoint(5, 5));
    QCOMPARE(banco.frame->height(), alto);
    QCOMPARE(mini->toolTip(), QStringLiteral("Minimizar"));
    QVERIFY(banco.mapa.log().contains(QStringLiteral("ensureVisible")));
}

QTEST_MAIN(tst_FrameX)
#include "tst_framex.moc"
