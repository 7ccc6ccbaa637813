// SPDX-License-Identifier: MIT
#include <tarvonix/containers/contenedorx.h>
#include <tarvonix/map/framex.h>
#include <tarvonix/widgets/etiquetas.h>

#include "errorcatcher.h"
#include "naves.h"
#include "recordingmapa.h"

#include <QScrollBar>
#include <QTest>

using namespace tarvonix;
using namespace Qt::StringLiterals;

namespace {
const QString sinObjeto = u"->Object variable or With block variable not set"_s;

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
    std::shared_ptr<Objeto> objeto;
    explicit Banco(QSize hijo = {})
        : objeto(naves::nave(u"C1"_s, u"N"_s, false, {QRect(QPoint(10, 10), hijo), {70, 10, 50, 40}}))
    {
        frame->setRoot(&mapa), frame->setMaxViewPort(400, 300);
        if (hijo.isValid())
            frame->setObjeto(objeto);
        anfitrion.show();
    }
    template<typename T = QWidget>
    T *hijo(const QString &nombre) const
    {
        naves::flushDeletes(); // a replaced "conten" is gone
        return frame->findChild<T *>(nombre);
    }
    void pulsar(const QString &n, Qt::MouseButton b = Qt::LeftButton) { QTest::mousePress(hijo(n), b, {}, {5, 5}); }
    // The title bar's look: the title's colours and weight, and the colours of the close button.
    QString aspecto() const
    {
        const auto *titulo = hijo<etiquetas>(u"titulo"_s), *cerrar = hijo<etiquetas>(u"cerrar"_s);
        return u"%1/%2 %3/%4 %5"_s.arg(titulo->BackColor(), 0, 16).arg(titulo->ForeColor(), 0, 16)
            .arg(cerrar->BackColor(), 0, 16).arg(cerrar->ForeColor(), 0, 16).arg(titulo->font().bold());
    }
};
} // namespace

class tst_FrameX : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void containerFollowsTheType_data()
    {
        QTest::addColumn<QString>("tipo");
        QTest::newRow("p") << u"p"_s; // only "P" is a leg, as in the map's own test
        QTest::newRow("PIERNA") << u"PIERNA"_s;
    }
    void containerFollowsTheType()
    {
        QFETCH(QString, tipo);
        Banco banco;
        banco.frame->seleccionarTodos(); // nothing contained yet
        const ObjetoPtr objeto = naves::nave(u"C1"_s, tipo), hijo = objeto->getObjetos()->Item(1);
        hijo->setSeleccionado(true), hijo->setActivo(true);
        banco.frame->setObjeto(objeto);
        QPointer<QWidget> conten = banco.hijo(u"conten"_s);
        QVERIFY(qobject_cast<ContenedorX *>(conten) && banco.frame->getObjeto() == objeto);
        QVERIFY(!hijo->getSeleccionado() && !hijo->getActivo()); // the children start plain
        banco.frame->setObjeto(naves::nave(u"C2"_s)); // a second object replaces the contained control
        QVERIFY(banco.hijo(u"conten"_s) && !conten);
        QCOMPARE(banco.frame->findChildren<QWidget *>(u"conten"_s).size(), 1);
        banco.frame->setObjeto(nullptr);
        QCOMPARE(banco.errors.messages(), (QStringList{"FrameX.IContenedorX_seleccionarTodos" + sinObjeto,
                                                       "FrameX.IContenedorX_setObjeto" + sinObjeto}));
    }

    void fitsWhatItHolds_data()
    {
        QTest::addColumn<QSize>("hijo");
        QTest::addColumn<bool>("horizontal");
        QTest::addColumn<bool>("vertical");
        QTest::newRow("small") << QSize(10, 10) << false << false;
        QTest::newRow("wide") << QSize(1000, 50) << true << false;
        QTest::newRow("both") << QSize(1000, 1000) << true << true;
    }
    void fitsWhatItHolds()
    {
        QFETCH(QSize, hijo);
        QFETCH(bool, horizontal);
        QFETCH(bool, vertical);
        Banco banco(hijo);
        QWidget *conten = banco.hijo(u"conten"_s);
        auto *horiz = banco.hijo<QScrollBar>(u"horiz"_s), *vert = banco.hijo<QScrollBar>(u"vert"_s);
        // 17 of bar, 8 of border and 18 of title round the content; at least 300 x 100, at most 400 x 300.
        const QSize justo(qMax(300, conten->width() + 17 + 8), qMax(100, conten->height() + 18 + 17 + 8));
        QCOMPARE(banco.frame->size(), QSize(horizontal ? 400 : justo.width(), vertical ? 300 : justo.height()));
        QVERIFY(banco.mapa.log().contains(u"ensureVisible"_s)); // it grew
        QVERIFY(horiz->isVisible() == horizontal && vert->isVisible() == vertical);
        QCOMPARE(banco.hijo(u"esquina"_s)->isVisible(), horizontal && vertical);
        // The bars lie inside the border (3) on the right and bottom and scroll just what does not fit.
        QVERIFY(vert->geometry().right() + 4 == banco.frame->width()
                && horiz->geometry().bottom() + 4 == banco.frame->height());
        QCOMPARE(horiz->maximum(), horizontal ? conten->width() - 400 + 17 + 8 : 0);
        QCOMPARE(vert->maximum(), vertical ? conten->height() - 300 + 18 + 17 + 8 : 0);
        // Scrolling moves the contained control; a step goes only where a bar is in use.
        horiz->setValue(50), vert->setValue(30);
        QCOMPARE(conten->pos(), QPoint(3 + 1 - horiz->value(), 3 + 18 + 1 - vert->value()));
        banco.frame->hScroll(1), banco.frame->vScroll(-1);
        QCOMPARE(QPoint(horiz->value(), vert->value()), QPoint(horizontal ? 60 : 0, vertical ? 20 : 0));
    }

    void activationAndTitleBar()
    {
        Banco banco(QSize(1000, 1000));
        const auto barras = banco.frame->findChildren<QScrollBar *>();
        const QString inactivo = u"c0c0c0/0 c0c0c0/0 0"_s;
        QVERIFY(!barras.at(0)->isEnabled() && !barras.at(1)->isEnabled() && banco.aspecto() == inactivo);
        banco.mapa.clear(), banco.frame->setActivo(banco.objeto, true);
        QCOMPARE(banco.mapa.log(), QStringList{u"setActive(none,2)"_s});
        QCOMPARE(banco.aspecto(), u"800000/ffffff 800000/ffffff 1"_s);
        // Inside an active frame, another object becomes the active one.
        const ObjetoPtr hijo = banco.objeto->getObjetos()->Item(2);
        banco.mapa.clear();
        QVERIFY(banco.frame->setActive(hijo) == hijo && hijo->getActivo());
        QCOMPARE(banco.mapa.log(), QStringList{u"setActive(C1D2,1)"_s});
        // The bars follow the activation. A press on an inactive frame's bar activates the frame, and the bar
        // takes the press: three quarters along is past the handle, so it pages forward.
        for (QScrollBar *bar : barras) {
            QVERIFY(bar->isVisible() && bar->isEnabled());
            banco.frame->setActivo(nullptr, false);
            QVERIFY(!banco.frame->pActive() && !bar->isEnabled() && banco.aspecto() == inactivo);
            QTest::mouseClick(bar, Qt::LeftButton, {}, QPoint(bar->width() * 3 / 4, bar->height() * 3 / 4));
            QVERIFY(banco.frame->pActive() && bar->isEnabled());
            QCOMPARE(bar->value(), qMin(bar->pageStep(), bar->maximum()));
        }
        // A move starts only from an active frame; a press on the title activates it.
        banco.frame->setActivo(nullptr, false);
        auto *titulo = banco.hijo<etiquetas>(u"titulo"_s);
        Q_EMIT titulo->OLEStartDrag(20, 5, 1), banco.pulsar(u"titulo"_s);
        Q_EMIT titulo->OLEStartDrag(20, 5, 1);
        QCOMPARE(banco.anfitrion.movidos, QList<QWidget *>{banco.frame});
        banco.frame->setActivo(nullptr, false), banco.mapa.clear();
        banco.pulsar(u"mini"_s, Qt::RightButton), banco.pulsar(u"cerrar"_s); // the first activates, then reports
        QCOMPARE(banco.mapa.log().join(u' '), u"setActive(none,2) rightClicked(C1,false) remove(C1)"_s);
        // Minimised, the frame keeps its height, even when it is fitted again.
        const int alto = banco.frame->height();
        banco.pulsar(u"mini"_s), banco.frame->setMaxViewPort(900, 700);
        QVERIFY(banco.frame->height() == 18 + 6 && banco.hijo(u"mini"_s)->toolTip() == u"Restaurar"_s);
        banco.mapa.clear(), banco.pulsar(u"mini"_s);
        QVERIFY(banco.frame->height() == alto && banco.hijo(u"mini"_s)->toolTip() == u"Minimizar"_s);
        QCOMPARE(banco.mapa.log(), QStringList{u"ensureVisible"_s});
        // Without a root, the failures are reported.
        banco.frame->setActivo(nullptr, false), banco.frame->setRoot(nullptr);
        banco.pulsar(u"titulo"_s, Qt::RightButton), banco.pulsar(u"cerrar"_s);
        QCOMPARE(banco.errors.messages(), (QStringList{"FrameX.IContenedorX_setActivo" + sinObjeto,
                                                       "FrameX.titulo.RightClick" + sinObjeto,
                                                       "FrameX.cerrar.Click" + sinObjeto}));
    }
};

QTEST_MAIN(tst_FrameX)
#include "tst_framex.moc"
