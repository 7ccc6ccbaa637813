#include <tarvonix/containers/contenedorx.h>
#include <tarvonix/leg/piernax.h>
#include <tarvonix/map/framex.h>
#include <tarvonix/model/pierna.h>
#include <tarvonix/widgets/etiquetas.h>

#include "errorcatcher.h"
#include "naves.h"
#include "recordingmapa.h"

#include <QScrollBar>
#include <QTest>

using namespace tarvonix;
using namespace Qt::StringLiterals;

namespace {

// Stands in for the map as the frame's parent: it answers "startMove".
class Anfitrion : public QWidget
{
    Q_OBJECT
public:
    Q_INVOKABLE void startMove(QWidget *frame) { movidos.append(frame); }
    QList<QWidget *> movidos;
};

// A frame under a host, its root recording, holding room "C1" whose first vessel is \a hijo large.
struct Banco
{
    ErrorCatcher errors;
    Anfitrion anfitrion;
    RecordingMapa mapa;
    FrameX *frame = new FrameX(&anfitrion);
    std::shared_ptr<Objeto> objeto = naves::nave(u"C1"_s);

    explicit Banco(QSize hijo = {}, QSize maximo = QSize(400, 300))
    {
        frame->setRoot(&mapa);
        frame->setMaxViewPort(maximo.width(), maximo.height());
        objeto->getObjetos()->Item(1)->setAncho(qint16(hijo.width()));
        objeto->getObjetos()->Item(1)->setAlto(qint16(hijo.height()));
        if (hijo.isValid())
            frame->setObjeto(objeto);
        anfitrion.resize(1200, 900);
        anfitrion.show();
    }
    template<typename T = QWidget>
    T *hijo(const QString &nombre) const
    {
        naves::flushDeletes(); // a replaced "conten" is gone
        return frame->findChild<T *>(nombre);
    }
    void pulsar(const QString &nombre, Qt::MouseButton boton = Qt::LeftButton) const
    {
        QTest::mousePress(hijo(nombre), boton, Qt::NoModifier, QPoint(5, 5));
    }
    // The title bar's colours and weight, as "back/fore" for the title, "mini" and "cerrar".
    QString aspecto() const
    {
        QStringList colores;
        for (const auto &nombre : {u"titulo"_s, u"mini"_s, u"cerrar"_s}) {
            const auto *etiqueta = hijo<etiquetas>(nombre);
            colores << u"%1/%2"_s.arg(etiqueta->BackColor(), 0, 16).arg(etiqueta->ForeColor(), 0, 16);
        }
        return colores.join(u' ') + (hijo(u"titulo"_s)->font().bold() ? u" bold"_s : QString());
    }
};

} // namespace

using Accion = std::function<void(Banco &)>;
Q_DECLARE_METATYPE(Accion)

class tst_FrameX : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void containerFollowsTheType_data();
    void containerFollowsTheType();
    void fitsWhatItHolds_data();
    void fitsWhatItHolds();
    void activation_data();
    void activation();
    void titleBarButtons();
    void failures_data();
    void failures();
};

void tst_FrameX::containerFollowsTheType_data()
{
    QTest::addColumn<QString>("tipo");
    QTest::addColumn<bool>("pierna");
    QTest::newRow("P") << u"P"_s << true;
    QTest::newRow("p") << u"p"_s << false;
    QTest::newRow("PIERNA") << u"PIERNA"_s << false;
    QTest::newRow("D") << u"D"_s << false;
}

void tst_FrameX::containerFollowsTheType()
{
    QFETCH(QString, tipo);
    QFETCH(bool, pierna);
    Banco banco;
    auto leg = std::make_shared<Pierna>();
    leg->setEscalas(1);
    leg->setEscala(1, 5);
    const ObjetoPtr objeto = pierna ? ObjetoPtr(leg) : naves::nave(u"C1"_s, tipo);
    objeto->setTipo(tipo);
    const ObjetoPtr hijo = pierna ? nullptr : objeto->getObjetos()->Item(1);
    if (hijo) {
        hijo->setSeleccionado(true);
        hijo->setActivo(true);
    }
    banco.frame->setObjeto(objeto);
    QPointer<QWidget> conten = banco.hijo(u"conten"_s);
    QCOMPARE(qobject_cast<PiernaX *>(conten) != nullptr, pierna);
    QCOMPARE(qobject_cast<ContenedorX *>(conten) != nullptr, !pierna);
    QCOMPARE(banco.frame->getObjeto(), objeto);
    QCOMPARE(conten->pos(), QPoint(3 + 1, 3 + 18 + 1)); // just below the title, one pixel in
    QVERIFY(!hijo || (!hijo->getSeleccionado() && !hijo->getActivo())); // the children start plain
    // A second object replaces the contained control.
    banco.frame->setObjeto(naves::nave(u"C2"_s));
    QVERIFY(banco.hijo(u"conten"_s) && !conten);
    QCOMPARE(banco.frame->findChildren<QWidget *>(u"conten"_s).size(), 1);
}

void tst_FrameX::fitsWhatItHolds_data()
{
    QTest::addColumn<QSize>("hijo");
    QTest::addColumn<bool>("horizontal");
    QTest::addColumn<bool>("vertical");
    QTest::newRow("small") << QSize(10, 10) << false << false;
    QTest::newRow("wide") << QSize(1000, 50) << true << false;
    QTest::newRow("tall") << QSize(50, 1000) << false << true;
    QTest::newRow("both") << QSize(1000, 1000) << true << true;
}

void tst_FrameX::fitsWhatItHolds()
{
    QFETCH(QSize, hijo);
    QFETCH(bool, horizontal);
    QFETCH(bool, vertical);
    Banco banco(hijo);
    QWidget *conten = banco.hijo(u"conten"_s);
    auto *horiz = banco.hijo<QScrollBar>(u"horiz"_s);
    auto *vert = banco.hijo<QScrollBar>(u"vert"_s);
    // Round the contained control: 17 of scroll bar and 8 of border, the 18 of title too downwards; never
    // smaller than 300 x 100, never larger than the map allows (400 x 300).
    const QSize justo(qMax(300, conten->width() + 17 + 8), qMax(100, conten->height() + 18 + 17 + 8));
    QCOMPARE(banco.frame->size(), QSize(horizontal ? 400 : justo.width(), vertical ? 300 : justo.height()));
    QVERIFY(banco.mapa.log().contains(u"ensureVisible"_s)); // it grew
    QCOMPARE(horiz->isVisible(), horizontal);
    QCOMPARE(vert->isVisible(), vertical);
    QCOMPARE(banco.hijo(u"esquina"_s)->isVisible(), horizontal && vertical);
    // The bars run along the right and bottom edges of the inside and scroll exactly what does not fit.
    QCOMPARE(horiz->geometry().bottom(), banco.frame->height() - 3 - 1);
    QCOMPARE(vert->geometry().right(), banco.frame->width() - 3 - 1);
    QCOMPARE(horiz->width(), banco.frame->width() - 6 - vert->width());
    QCOMPARE(horiz->maximum(), horizontal ? conten->width() - 400 + 17 + 8 : 0);
    QCOMPARE(vert->maximum(), vertical ? conten->height() - 300 + 18 + 17 + 8 : 0);
    // Scrolling moves the contained control; a step goes only where a bar is in use.
    horiz->setValue(50);
    vert->setValue(30);
    QCOMPARE(conten->pos(), QPoint(3 + 1 - horiz->value(), 3 + 18 + 1 - vert->value()));
    const QPoint antes(horiz->value(), vert->value());
    banco.frame->hScroll(1);
    banco.frame->vScroll(-1);
    QCOMPARE(QPoint(horiz->value(), vert->value()), antes + QPoint(horizontal ? 10 : 0, vertical ? -10 : 0));
}

void tst_FrameX::activation_data()
{
    QTest::addColumn<QString>("barra");
    QTest::newRow("horiz") << u"horiz"_s;
    QTest::newRow("vert") << u"vert"_s;
}

void tst_FrameX::activation()
{
    QFETCH(QString, barra);
    Banco banco(QSize(1000, 1000));
    auto *bar = banco.hijo<QScrollBar>(barra);
    const QString inactivo = u"c0c0c0/0 c0c0c0/0 c0c0c0/0"_s;
    QVERIFY(bar->isVisible() && !bar->isEnabled());
    QCOMPARE(banco.aspecto(), inactivo);
    banco.mapa.clear();
    banco.frame->setActivo(banco.objeto, true);
    QVERIFY(banco.frame->pActive() && bar->isEnabled());
    QCOMPARE(banco.mapa.log(), QStringList{u"setActive(none,2)"_s});
    QCOMPARE(banco.aspecto(), u"800000/ffffff 800000/ffffff 800000/ffffff bold"_s);
    // Inside an active frame, another object becomes the active one.
    const ObjetoPtr hijo = banco.objeto->getObjetos()->Item(2);
    banco.mapa.clear();
    QCOMPARE(banco.frame->setActive(hijo), hijo);
    QVERIFY(hijo->getActivo());
    QCOMPARE(banco.mapa.log(), QStringList{u"setActive(C1D2,1)"_s});
    banco.frame->setActivo(nullptr, false);
    QVERIFY(!banco.frame->pActive() && !bar->isEnabled());
    QCOMPARE(banco.aspecto(), inactivo);

    // A press on the inactive frame's bar activates the frame, and the bar takes the press:
    // three quarters along is past the handle, so it pages forward.
    const QPoint enLaPista = bar->orientation() == Qt::Horizontal ? QPoint(bar->width() * 3 / 4, bar->height() / 2)
                                                                  : QPoint(bar->width() / 2, bar->height() * 3 / 4);
    QTest::mouseClick(bar, Qt::LeftButton, Qt::NoModifier, enLaPista);
    QVERIFY(banco.frame->pActive() && bar->isEnabled());
    QCOMPARE(bar->value(), qMin(bar->pageStep(), bar->maximum()));
}

void tst_FrameX::titleBarButtons()
{
    Banco banco(QSize(300, 400), QSize(1000, 800));
    // A move can only start from an active frame.
    Q_EMIT banco.hijo<etiquetas>(u"titulo"_s)->OLEStartDrag(20, 5, 1);
    QVERIFY(banco.anfitrion.movidos.isEmpty());
    banco.pulsar(u"titulo"_s); // activates
    Q_EMIT banco.hijo<etiquetas>(u"titulo"_s)->OLEStartDrag(20, 5, 1);
    QCOMPARE(banco.anfitrion.movidos, QList<QWidget *>{banco.frame});

    banco.frame->setActivo(nullptr, false);
    banco.mapa.clear();
    banco.pulsar(u"mini"_s, Qt::RightButton); // activates, then reports
    banco.pulsar(u"cerrar"_s);
    QCOMPARE(banco.mapa.log(),
             (QStringList{u"setActive(none,2)"_s, u"rightClicked(C1,false)"_s, u"remove(C1)"_s}));

    // Minimised, the frame keeps its height, even when it is fitted again.
    const int alto = banco.frame->height();
    QWidget *mini = banco.hijo(u"mini"_s);
    banco.pulsar(u"mini"_s);
    QCOMPARE(banco.frame->height(), 18 + 6);
    QCOMPARE(mini->toolTip(), u"Restaurar"_s);
    banco.frame->setMaxViewPort(900, 700);
    QCOMPARE(banco.frame->height(), 18 + 6);
    banco.mapa.clear();
    banco.pulsar(u"mini"_s);
    QCOMPARE(banco.frame->height(), alto);
    QCOMPARE(mini->toolTip(), u"Minimizar"_s);
    QCOMPARE(banco.mapa.log(), QStringList{u"ensureVisible"_s});
}

void tst_FrameX::failures_data()
{
    QTest::addColumn<Accion>("accion");
    QTest::addColumn<QStringList>("etiquetas");
    const QString sinObjeto = u"->Object variable or With block variable not set"_s;
    QTest::newRow("close without a root") << Accion([](Banco &b) {
        b.frame->setRoot(nullptr);
        b.pulsar(u"cerrar"_s);
    }) << QStringList{"FrameX.cerrar.Click" + sinObjeto};
    QTest::newRow("right-click without a root") << Accion([](Banco &b) {
        b.frame->setRoot(nullptr);
        b.pulsar(u"titulo"_s, Qt::RightButton);
    }) << QStringList{"FrameX.IContenedorX_setActivo" + sinObjeto, "FrameX.titulo.RightClick" + sinObjeto};
    QTest::newRow("no object") << Accion([](Banco &b) { b.frame->setObjeto(nullptr); })
                               << QStringList{"FrameX.IContenedorX_setObjeto" + sinObjeto};
    QTest::newRow("nothing contained") << Accion([](Banco &b) { b.frame->seleccionarTodos(); })
                                       << QStringList{"FrameX.IContenedorX_seleccionarTodos" + sinObjeto};
}

void tst_FrameX::failures()
{
    QFETCH(Accion, accion);
    QFETCH(QStringList, etiquetas);
    Banco banco;
    accion(banco);
    QCOMPARE(banco.errors.messages(), etiquetas);
}

QTEST_MAIN(tst_FrameX)
#include "tst_framex.moc"
