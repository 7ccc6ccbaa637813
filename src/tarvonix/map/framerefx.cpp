// SPDX-License-Identifier: MIT
#include <tarvonix/map/framerefx.h>

#include <tarvonix/legend/referenciasx.h>
#include <tarvonix/map/barratitulo_p.h>
#include <tarvonix/map/mapax.h>
#include <tarvonix/model/iobjeto.h>
#include <tarvonix/platform/errortrap.h>
#include <tarvonix/platform/latebinding.h>
#include <tarvonix/views/imapax.h>
#include <tarvonix/widgets/etiquetas.h>

namespace tarvonix {

namespace {

constexpr int anchoBoton = 22;
constexpr int anchoMinimo = 150;
// The design layout, which holds until the legend first fits its list.
constexpr QSize tamanoInicial(274, 227);
constexpr QRect rectLista(0, 20, 268, 201);

} // namespace

struct FrameRefX::Private
{
    explicit Private(FrameRefX *frame)
        : q(frame)
        , barra(frame, anchoBoton)
    { }

    void ajustarALista();
    void distribuir();
    void minimizar();
    void activarSiHaceFalta();
    void iniciarMovimiento(float x, float y);

    FrameRefX *const q;
    BarraTitulo barra;
    ReferenciasX *refx = nullptr;
    IMapaX *root = nullptr;
    bool active = false;
};

FrameRefX::FrameRefX(QWidget *parent)
    : QWidget(parent)
    , d(std::make_unique<Private>(this))
{
    setAutoFillBackground(true);
    resize(tamanoInicial);
    setAccessibleName(QStringLiteral("Leyenda")); // its title bar has no text
    d->refx = new ReferenciasX(this);
    d->refx->setObjectName(QStringLiteral("refx"));
    BarraTitulo::colocar(d->refx, rectLista.x(), rectLista.y());
    d->refx->resize(rectLista.size());

    etiquetas *titulo = d->barra.titulo();
    const auto activarSiHaceFalta = [this] {
        d->activarSiHaceFalta();
    };
    connect(titulo, &etiquetas::Click, this, activarSiHaceFalta);
    connect(titulo, &etiquetas::OLEStartDrag, this, [this](float x, float y, int) {
        trap(QStringLiteral("FrameRefX.titulo.OLEStartDrag->"), [&] { d->iniciarMovimiento(x, y); });
    });
    for (etiquetas *etiqueta : { titulo, d->barra.mini(), d->barra.cerrar() })
        connect(etiqueta, &etiquetas::RightClick, this, activarSiHaceFalta);
    connect(d->refx, &ReferenciasX::Click, this, activarSiHaceFalta);
    connect(d->refx, &ReferenciasX::DblClick, this, activarSiHaceFalta);
    connect(d->refx, &ReferenciasX::Resize, this, [this] { d->ajustarALista(); });
    // What the pointer starts is trapped here: no failure may leave a mouse handler.
    connect(d->barra.cerrar(), &etiquetas::Click, this, [this] {
        trap(QStringLiteral("FrameRefX.cerrar.Click->"), [this] {
            // The map removes the legend and stops wanting it.
            if (auto *mapa = qobject_cast<MapaX *>(parentWidget()))
                mapa->remove(nullptr);
            else // a host's own parent offers the removal by name
                LateBinding::call(parentWidget(), QStringLiteral("remove"),
                                  { QVariant::fromValue<ObjetoPtr>(nullptr) });
        });
    });
    connect(d->barra.mini(), &etiquetas::Click, this,
            [this] { trap(QStringLiteral("FrameRefX.Minimizar->"), [this] { d->minimizar(); }); });

    d->distribuir();
    d->barra.alFrente();
}

FrameRefX::~FrameRefX()
{
    d->root = nullptr;
}

void FrameRefX::setMaxViewPort(double, double) { }

float FrameRefX::getDragX() const
{
    return d->barra.dragX();
}

float FrameRefX::getDragY() const
{
    return d->barra.dragY();
}

void FrameRefX::setRoot(IMapaX *m)
{
    d->root = m;
}

void FrameRefX::IObjetoX_setRoot(IMapaX *m)
{
    setRoot(m);
}

void FrameRefX::setActive(bool act)
{
    d->active = act;
    d->barra.mostrarActivo(act);
    if (act)
        raise();
}

void FrameRefX::activate()
{
    setActive(true);
}

bool FrameRefX::isActive() const
{
    return d->active;
}

void FrameRefX::Private::activarSiHaceFalta()
{
    if (!active)
        q->activate();
}

void FrameRefX::setReferencias(const std::shared_ptr<Referencias> &ref)
{
    d->refx->setReferencias(ref);
}

void FrameRefX::Private::ajustarALista()
{
    // The list and the border around it, never narrower than the smallest legend.
    const int W = qMax(BarraTitulo::izquierda(refx) + refx->width() + 2 * BarraTitulo::borde, anchoMinimo);
    const int H = BarraTitulo::arriba(refx) + refx->height() + 2 * BarraTitulo::borde;
    // A legend that grew asks the map to bring it into view.
    const bool crece = q->width() < W || q->height() < H;
    q->resize(W, H);
    distribuir(); // a hidden legend gets no resize event until it shows
    if (crece && root)
        root->ensureVisible(q);
}

void FrameRefX::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    d->distribuir();
}

void FrameRefX::Private::distribuir()
{
    barra.distribuir(q->width() - 2 * BarraTitulo::borde);
}

void FrameRefX::Private::minimizar()
{
    if (!barra.minimizado()) {
        q->activate();
        barra.alternarMinimizado();
    } else {
        barra.alternarMinimizado();
        q->activate();
        if (root)
            root->ensureVisible(q);
    }
}

void FrameRefX::Private::iniciarMovimiento(float x, float y)
{
    if (active)
        barra.iniciarMovimiento(x, y);
}

} // namespace tarvonix
