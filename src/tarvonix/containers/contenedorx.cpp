// SPDX-License-Identifier: MIT
#include <tarvonix/containers/contenedorx.h>

#include <tarvonix/core/error.h>
#include <tarvonix/core/int16.h>
#include <tarvonix/model/color.h>
#include <tarvonix/model/imagen.h>
#include <tarvonix/model/objetocomun.h>
#include <tarvonix/model/objetos.h>
#include <tarvonix/platform/childcontrols.h>
#include <tarvonix/platform/colorconversion.h>
#include <tarvonix/platform/errortrap.h>
#include <tarvonix/platform/shiftstate.h>
#include <tarvonix/platform/surface.h>
#include <tarvonix/views/imapax.h>
#include <tarvonix/views/vistax_p.h>
#include <tarvonix/widgets/dummy.h>

#include <QHash>
#include <QPainter>
#include <QPointer>
#include <QScopeGuard>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace tarvonix {

namespace {

constexpr float margen = 2; // between the control's edge and object coordinate 0
constexpr int holgura = 100; // the control shrinks only when it is this much too large
constexpr qint32 gris = 0xC0C0C0;
constexpr qint32 negro = 0;
constexpr qint32 blanco = 0xFFFFFF;

// Beyond this many pending rectangles one repaint of the whole control is cheaper.
constexpr int maxInvalidaciones = 64;

IObjeto &requerido(const ObjetoPtr &objeto)
{
    if (!objeto)
        throw Error(Error::ObjectNotSet);
    return *objeto;
}

std::shared_ptr<Objetos> hijosDe(const IObjeto &objeto)
{
    std::shared_ptr<Objetos> hijos = objeto.getObjetos();
    if (!hijos)
        throw Error(Error::ObjectNotSet);
    return hijos;
}

//! A drawing length as whole pixels, the way the surface rounds it; lengths no widget can take are an
//! overflow.
int enPixeles(double value)
{
    if (!(std::abs(value) <= 1.0e9))
        throw Error(Error::Overflow);
    return Surface::pixel(value);
}

qint32 redondear(float value)
{
    const double rounded = roundHalfEven(value);
    if (!(rounded >= std::numeric_limits<qint32>::min() && rounded <= std::numeric_limits<qint32>::max()))
        throw Error(Error::Overflow);
    return qint32(rounded);
}

QString nombreCaja(const IObjeto &objeto)
{
    return objeto.getCodigo() + QLatin1Char('c');
}

QRectF normalizado(double x, double y, double w, double h)
{
    return QRectF(std::min(x, x + w), std::min(y, y + h), std::abs(w), std::abs(h));
}

/*!
    Every pixel that drawing an object in (x, y, w, h) may touch: the box,
    the circle (as wide as high, so it may overhang a flat box) and the
    square of forma 3 (as wide as the box is high), with a pixel of rounding
    on each side.
*/
QRectF areaDibujo(float x, float y, float w, float h)
{
    if (!std::isfinite(x) || !std::isfinite(y) || !std::isfinite(w) || !std::isfinite(h))
        return {};
    return normalizado(x, y, w, h)
        .united(normalizado(x, y, w - 2.0, w - 2.0))
        .united(normalizado(x + 2.0, y + 2.0, h - 4.0, h - 4.0))
        .adjusted(-2, -2, 2, 2);
}

//! The plain arrow shown while the selection is moved, instead of the platform's drag cursors.
QPixmap flechaSimple()
{
    static const QPointF contorno[]
        = { { 0, 0 }, { 0, 16 }, { 4, 12 }, { 7, 18 }, { 9, 17 }, { 6, 11 }, { 11, 11 } };
    QPixmap pixmap(12, 19);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setPen(Qt::black);
    painter.setBrush(Qt::white);
    painter.drawPolygon(contorno, int(std::size(contorno)));
    return pixmap;
}

// The axis along which a distribution spaces the selection.
enum class Eje { Horizontal, Vertical };

/*!
    What the size fits of one layout operation remember between objects.

    An alignment or a distribution fits the control after every object it
    changes, by the rule of ajustarTamano(): grow at once, shrink only past
    the slack. Only that object differs from the previous fit, and growing a
    child container depends on its own children alone, so the right and
    bottom edges of all children sit in a max tree that one change updates in
    O(log N). The fits run on the size kept here; the control takes the last
    one once the operation ends.
*/
struct Ajuste
{
    bool valido = false;
    bool repintar = false;
    int ancho = 0;
    int alto = 0;
    QHash<const IObjeto *, size_t> hojas; // each child's leaf
    size_t primeraHoja = 1;
    std::vector<int> derechas; // max trees: node i over nodes 2i and 2i + 1, leaves from primeraHoja
    std::vector<int> fondos;

    void llenar(const std::vector<std::pair<const IObjeto *, std::pair<int, int>>> &extremos)
    {
        hojas.clear();
        hojas.reserve(qsizetype(extremos.size()));
        primeraHoja = 1;
        while (primeraHoja < extremos.size())
            primeraHoja *= 2;
        derechas.assign(2 * primeraHoja, std::numeric_limits<int>::min());
        fondos.assign(2 * primeraHoja, std::numeric_limits<int>::min());
        for (size_t i = 0; i < extremos.size(); ++i) {
            hojas.insert(extremos[i].first, primeraHoja + i);
            derechas[primeraHoja + i] = extremos[i].second.first;
            fondos[primeraHoja + i] = extremos[i].second.second;
        }
        for (size_t i = primeraHoja - 1; i >= 1; --i) {
            derechas[i] = std::max(derechas[2 * i], derechas[2 * i + 1]);
            fondos[i] = std::max(fondos[2 * i], fondos[2 * i + 1]);
        }
    }

    //! The leaf of \a hijo, or 0 for an object that is not one of the children.
    size_t hojaDe(const IObjeto *hijo) const { return hojas.value(hijo, 0); }

    void anotar(size_t hoja, int derecha, int fondo)
    {
        subir(derechas, hoja, derecha);
        subir(fondos, hoja, fondo);
    }

    // Up from the leaf only as far as the maxima change: a move along one axis
    // leaves the other tree alone, and most moves stop near the leaf.
    static void subir(std::vector<int> &arbol, size_t nodo, int valor)
    {
        if (arbol[nodo] == valor)
            return;
        arbol[nodo] = valor;
        for (nodo /= 2; nodo >= 1; nodo /= 2) {
            const int mayor = std::max(arbol[2 * nodo], arbol[2 * nodo + 1]);
            if (arbol[nodo] == mayor)
                return;
            arbol[nodo] = mayor;
        }
    }
};

} // namespace

struct ContenedorX::Private
{
    explicit Private(ContenedorX *owner)
        : q(owner)
        , vista(VistaXPrivate::get(owner))
        , cajas(owner)
    { }

    // Painting and repainting.
    void pintarHijos(const QRect &expuesto);
    void dibujarObjeto(float x, float y, float w, float h, const ObjetoPtr &o);
    void dibujarNuevo(const ObjetoPtr &o);
    void redibujarHijo(const QString &etiqueta, const ObjetoPtr &o);
    void limpiar(const ObjetoPtr &o);
    void invalidar(const QRectF &area);

    // Sizing.
    void validar(const ObjetoPtr &o);
    void validarControl(const ObjetoPtr &cambiado = nullptr);
    void ajustarTamano(int right, int bottom);
    //! A layout operation starts: the fits after each object run on a kept size.
    void empezarAjuste();
    //! ... and ends: the control takes the size of the last fit.
    void terminarAjuste() noexcept;

    bool esLigado(const ObjetoPtr &o);

    // The spatial index of the children, in the view base.
    //! The box a child is indexed under: every pixel drawing it may touch.
    QRectF cajaIndice(const IObjeto &hijo) const;
    void indexar(const Objetos &hijos);
    /*!
        Whether the index can answer for the children: it is rebuilt when the
        collection or the scale changed since it was filled. A scale that is
        not a positive number leaves the children to a plain walk.
    */
    bool indiceAlDia();
    //! The child under the press when \a punto is where it happened and nothing moved since.
    bool golpeVigente(QPointF punto);

    // Moving the selection with outline boxes.
    void startDrag(int shift, QPointF punto);
    void moverConCajas();
    void dibujarOtraCaja(const ObjetoPtr &o, float x, float y);
    void moverOtraCaja(const ObjetoPtr &o, float dx, float dy);
    void borrarOtraCaja(const ObjetoPtr &o);
    void OtraCajaVisible(const ObjetoPtr &o, bool visible);
    QPoint moverCajas(QPointF punto);
    void crecerBajoCajas(QPoint extremo);

    // Alignment and distribution.
    void alinear(const QString &label, const ObjetoPtr &referencia, int que);
    void distribuir(const QString &label, Eje eje);

    ContenedorX *const q;
    // What the view base keeps for this view: the selection, the press, the band, the frame, the surface.
    VistaXPrivate *const vista;

    ObjetoPtr objeto;
    float escala = 1.0f;
    bool bloqueo = false;

    // Pointer and drag state.
    ObjetoPtr actual;
    bool dragging = false;
    bool boxesCreated = false;
    bool boxesVisible = false;
    qint32 dragX = 0, dragY = 0;

    ChildControls cajas; // the outline boxes of a move
    qint16 borderStyle = BorderNone;
    int invalidaciones = 0;
    std::unique_ptr<Ajuste> ajuste;

    // What the index was filled from: the collection's size, ends, the scale and
    // the objects' count of geometry changes.
    qint32 indexados = -1;
    quint64 geometriaIndexada = 0;
    const IObjeto *primeroIndexado = nullptr;
    const IObjeto *ultimoIndexado = nullptr;
    float escalaIndexada = 0;
    // The child found under the last press, so that its release does not look again.
    struct Golpe
    {
        bool valido = false;
        QPointF punto;
        quint64 generacion = 0;
        ObjetoPtr objeto;
    } golpe;
};

ContenedorX::ContenedorX(QWidget *parent)
    : VistaX(QStringLiteral("ContenedorX"), QStringLiteral("box"), parent)
    , d(std::make_unique<Private>(this))
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    d->vista->surface.setBackColor(qint32(0x8000000F)); // the button face until an object is bound
    d->vista->movible = true;
}

ContenedorX::~ContenedorX() = default;

qint16 ContenedorX::BorderStyle() const
{
    return d->borderStyle;
}

void ContenedorX::setBorderStyle(qint16 style)
{
    d->borderStyle = style;
    update();
}

// --- Binding and the contract's plain operations -----------------------------

void ContenedorX::setObjeto(const ObjetoPtr &objeto)
{
    trap(QStringLiteral("ContenedorX.IContenedorX_setObjeto->"), [&] {
        d->objeto = objeto;
        const IObjeto &o = requerido(objeto);
        d->vista->surface.setBackColor(o.getColor());
        setToolTip(o.getDescripcion());
        d->validarControl();
        update();
    });
}

ObjetoPtr ContenedorX::getObjeto()
{
    return d->objeto;
}

void ContenedorX::refrescar()
{
    trap(QStringLiteral("ContenedorX.IContenedorX_refrescar->"), [&] {
        d->validarControl();
        update();
    });
}

void ContenedorX::setEscala(float escala)
{
    trap(QStringLiteral("ContenedorX.IContenedorX_setEscala->"), [&] {
        d->escala = escala;
        d->validarControl();
        update();
    });
}

void ContenedorX::setBloqueo(bool bloqueo)
{
    d->bloqueo = bloqueo;
    d->vista->movible = !bloqueo;
}

// --- Painting ----------------------------------------------------------------

void ContenedorX::pintar(QPainter &painter, const QRect &expuesto)
{
    d->invalidaciones = 0;
    trap(QStringLiteral("ContenedorX.Paint->"), [&] { d->pintarHijos(expuesto); });
    if (d->borderStyle == BorderSingle) {
        painter.setPen(QPen(palette().color(QPalette::WindowText), 0));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(0, 0, width() - 1, height() - 1);
    }
}

void ContenedorX::Private::pintarHijos(const QRect &expuesto)
{
    vista->surface.clear(expuesto.x(), expuesto.y(), expuesto.width(), expuesto.height());
    if (!objeto)
        return;
    // The bound object: its tip at the top left, never an outline.
    dibujarObjeto(0, 0, float(q->width()), float(q->height()), objeto);
    // The children that reach into the visible rectangle (and the exposed one), in collection order.
    if (!objeto->getPuedeContener())
        return;
    const auto dentro = [](float a, float desde, float hasta) {
        return a >= desde && a <= hasta;
    };
    const QRectF exposedArea(expuesto);
    const auto pintarSiSeVe = [&](const ObjetoPtr &k) {
        const float x = k->getX() * escala + margen;
        const float y = k->getY() * escala + margen;
        const float w = k->getAncho() * escala;
        const float h = k->getAlto() * escala;
        const bool horizontal = dentro(x, vista->viewLeft, vista->viewRight)
            || dentro(x + w, vista->viewLeft, vista->viewRight);
        const bool vertical = dentro(y, vista->viewTop, vista->viewBottom)
            || dentro(y + h, vista->viewTop, vista->viewBottom);
        if (horizontal && vertical && areaDibujo(x, y, w, h).intersects(exposedArea))
            dibujarObjeto(x, y, w, h, k);
    };
    if (indiceAlDia()) {
        for (const ObjetoPtr &k : vista->indice.en(exposedArea))
            pintarSiSeVe(k);
    } else {
        for (const ObjetoPtr &k : hijosDe(*objeto)->NewEnum())
            pintarSiSeVe(k);
    }
}

void ContenedorX::Private::dibujarObjeto(float x, float y, float w, float h, const ObjetoPtr &o)
{
    trap(QStringLiteral("ContenedorX.dibujarObjeto->"), [&] {
        const IObjeto &dibujado = requerido(o);
        const bool contiene = dibujado.getPuedeContener();
        const bool activo = dibujado.getActivo();
        const bool seleccionado = dibujado.getSeleccionado();
        const qint16 forma = dibujado.getForma();
        const QString tip = dibujado.getTip();
        const std::shared_ptr<Imagen> imagen = dibujado.getImagen();
        // The outline, never around the bound object itself.
        const bool contorno
            = dibujado.getCodigo() != requerido(objeto).getCodigo() && (forma != FormaCuadro || seleccionado);
        Surface &s = vista->surface;

        if (contiene) {
            // A child container: its tip at the top left, a grey frame.
            s.setForeColor(seleccionado ? negro : gris);
            q->printX(tip, x, y, w, h, 6);
            s.setDrawStyle(Surface::DrawSolid);
            s.setFillStyle(Surface::FillTransparent);
            s.setForeColor(gris);
        } else {
            // Erase to the background, unless a plain box covers every pixel of
            // it anyway: a solid fill inside a solid outline.
            const bool cubierto = !imagen && forma == FormaCaja && !seleccionado && !activo && contorno && w > 0 && h > 0;
            s.setFillStyle(Surface::FillSolid);
            s.setFillColor(s.backColor());
            s.setForeColor(s.backColor());
            if (!imagen && forma == FormaCirculo) {
                const float r = w / 2 - 1;
                s.circle(x + r, y + r, r);
            } else if (!cubierto) {
                s.box(x, y, x + w - 1, y + h - 1);
            }
            // The inner rectangle: a square at the left for forma 3.
            float ix = x, iy = y, iw = w, ih = h;
            if (forma == FormaCuadro) {
                ix = x + 2;
                iy = y + 2;
                iw = h - 4;
                ih = h - 4;
            }
            const auto formaInterior = [&](float r) {
                if (forma == FormaCaja || forma == FormaCuadro)
                    s.box(ix + 1, iy + 1, ix + iw - 2, iy + ih - 2);
                else if (forma == FormaCirculo)
                    s.circle(ix + r + 1, iy + r + 1, r);
            };
            if (imagen) {
                // The picture, hatched over when selected.
                const QImage handler = imagen->getHandler();
                if (!handler.isNull()) {
                    s.paintPicture(handler, ix, iy, iw, ih);
                    if (seleccionado) {
                        s.setFillStyle(Surface::FillUpwardDiagonal);
                        s.setFillColor(negro);
                        formaInterior(iw / 2 - 2);
                    }
                    s.setForeColor(negro);
                }
            } else {
                // The colour, hatched when selected; the text readable on it.
                const qint32 col = dibujado.getColor();
                s.setFillStyle(seleccionado ? Surface::FillUpwardDiagonal : Surface::FillSolid);
                s.setFillColor(col == blanco && seleccionado ? negro : col);
                s.setForeColor(col);
                formaInterior(iw / 2 - 2);
                // A shape this control does not know is not filled: its text stands on the background.
                const bool relleno = forma == FormaCaja || forma == FormaCirculo;
                const qint32 fondo = relleno ? col : fromQColor(toQColor(s.backColor(), q->palette()));
                if (!seleccionado && forma != FormaCuadro)
                    s.setForeColor(Color::esColorClaro(fondo) ? negro : blanco);
                else
                    s.setForeColor(negro);
            }
            s.setFillStyle(Surface::FillTransparent);
            // The tip: right of the square for forma 3, centred otherwise.
            if (forma == FormaCuadro)
                q->printX(tip, ix + iw + 2, y, w - iw - 4, h, 2);
            else
                q->printX(tip, ix, iy, iw, ih, 0);
            // The outline below: black, dotted for the active child.
            s.setForeColor(negro);
            s.setDrawStyle(activo ? Surface::DrawDot : Surface::DrawSolid);
        }

        if (contorno) {
            if (forma == FormaCaja || forma == FormaCuadro) {
                s.box(x, y, x + w - 1, y + h - 1);
            } else if (forma == FormaCirculo) {
                const float r = w / 2 - 1;
                s.circle(x + r, y + r, r);
            }
        }
        s.setDrawStyle(Surface::DrawSolid);
    });
}

void ContenedorX::printX(const QString &texto, float x, float y, float ancho, float alto, qint16 posicion)
{
    trap(QStringLiteral("ContenedorX.printX->"), [&] {
        Surface &s = d->vista->surface;
        const float aw = ancho - 4;
        const float ah = alto - 4;
        const float tw = float(s.textWidth(texto));
        const float th = float(s.textHeight(texto));
        const QRectF libre(x + 2, y + 2, aw, ah);
        // On one line when it fits.
        if (tw <= aw && th <= ah) {
            d->vista->colocarTexto(posicion & 3, posicion / 4, libre, QSizeF(tw, th));
            s.print(texto);
            return;
        }
        // Otherwise one character per line, when that column fits.
        const float cw = float(s.textWidth(QStringLiteral("W")));
        const float bloque = float(texto.size()) * th;
        if (cw > aw || bloque > ah)
            return;
        d->vista->colocarTexto(posicion & 3, posicion / 4, libre, QSizeF(cw, bloque));
        const double columna = s.currentX();
        for (const QChar c : texto) {
            s.print(QString(c));
            s.setCurrentX(columna);
        }
    });
}

void ContenedorX::Private::invalidar(const QRectF &area)
{
    const QRectF visible = area & QRectF(q->rect());
    if (visible.isEmpty())
        return;
    if (++invalidaciones > maxInvalidaciones)
        q->update();
    else
        q->update(visible.toAlignedRect());
}

void ContenedorX::Private::limpiar(const ObjetoPtr &o)
{
    redibujarHijo(QStringLiteral("ContenedorX.limpiar->"), o);
}

void ContenedorX::Private::dibujarNuevo(const ObjetoPtr &o)
{
    redibujarHijo(QStringLiteral("ContenedorX.dibujarNuevo->"), o);
}

void ContenedorX::Private::redibujarHijo(const QString &etiqueta, const ObjetoPtr &o)
{
    // Erasing and redrawing a child both come down to repainting its area in
    // collection order; what each keeps is the check that the child is ours.
    trap(etiqueta, [&] {
        const IObjeto &hijo = requerido(o);
        const bool nuestro = hijo.getPadre() == requerido(objeto).getCodigo();
        // A layout operation moves many children: the index is filled again and the
        // whole control repainted once, when it is done.
        if (ajuste) {
            ajuste->repintar = ajuste->repintar || nuestro;
        } else {
            // Whatever moved or resized the child, its box in the index follows.
            const QRectF area = cajaIndice(hijo);
            vista->indice.mover(&hijo, area);
            if (nuestro)
                invalidar(area);
        }
        if (!nuestro)
            reportError(etiqueta + QStringLiteral("No se encontró padre del objeto en primer nivel"));
    });
}

// --- Sizing ------------------------------------------------------------------

void ContenedorX::Private::validar(const ObjetoPtr &o)
{
    trap(QStringLiteral("ContenedorX.validar->"), [&] {
        IObjeto &hijo = requerido(o);
        if (!hijo.getPuedeContener())
            return;
        qint16 right = 100;
        qint16 bottom = 40;
        for (const ObjetoPtr &k : hijosDe(hijo)->NewEnum()) {
            right = std::max(right, toInt16(qint64(k->getX()) + k->getAncho()));
            bottom = std::max(bottom, toInt16(qint64(k->getY()) + k->getAlto()));
        }
        const float derecha = right + 4 / escala;
        const float fondo = bottom + 4 / escala;
        if (hijo.getAncho() < derecha)
            hijo.setAncho(toInt16(double(derecha)));
        if (hijo.getAlto() < fondo)
            hijo.setAlto(toInt16(double(fondo)));
    });
}

void ContenedorX::Private::validarControl(const ObjetoPtr &cambiado)
{
    trap(QStringLiteral("ContenedorX.validarControl->"), [&] {
        const IObjeto &ligado = requerido(objeto);
        // At least 298 x 148 object units, and room for every child.
        int right = 298;
        int bottom = 148;
        if (ajuste && ajuste->valido && cambiado) {
            // Within one layout operation: only the changed object moved since the last fit.
            ajuste->valido = false;
            if (const size_t hoja = ajuste->hojaDe(cambiado.get())) {
                validar(cambiado);
                ajuste->anotar(hoja, cambiado->getX() + cambiado->getAncho(), cambiado->getY() + cambiado->getAlto());
            }
            ajuste->valido = true;
            right = std::max(right, ajuste->derechas[1]);
            bottom = std::max(bottom, ajuste->fondos[1]);
        } else if (ligado.getPuedeContener()) {
            std::vector<std::pair<const IObjeto *, std::pair<int, int>>> extremos;
            if (ajuste)
                ajuste->valido = false;
            const std::shared_ptr<Objetos> hijos = hijosDe(ligado);
            for (const ObjetoPtr &k : hijos->NewEnum()) {
                validar(k);
                const int derecha = k->getX() + k->getAncho();
                const int fondo = k->getY() + k->getAlto();
                right = std::max(right, derecha);
                bottom = std::max(bottom, fondo);
                if (ajuste)
                    extremos.push_back({ k.get(), { derecha, fondo } });
            }
            if (ajuste) {
                ajuste->llenar(extremos);
                ajuste->valido = true;
                // The operation moves many children: the index is filled again once, when next asked.
                indexados = -1;
            } else {
                indexar(*hijos);
            }
        }
        ajustarTamano(right, bottom);
    });
}

void ContenedorX::Private::ajustarTamano(int right, int bottom)
{
    const float necesarioW = right * escala + 4;
    const float necesarioH = bottom * escala + 4;
    // Grow at once, shrink only past the slack.
    int ancho = ajuste ? ajuste->ancho : q->width();
    int alto = ajuste ? ajuste->alto : q->height();
    if (necesarioW > ancho || necesarioW < ancho - holgura)
        ancho = std::max(0, enPixeles(necesarioW));
    if (necesarioH > alto || necesarioH < alto - holgura)
        alto = std::max(0, enPixeles(necesarioH));
    // Within a layout operation the control takes its size once, at the end.
    if (ajuste) {
        ajuste->ancho = ancho;
        ajuste->alto = alto;
        return;
    }
    // The frame fits itself to the new size.
    if (ancho != q->width() || alto != q->height()) {
        q->resize(ancho, alto);
        vista->frameResize();
    }
}

void ContenedorX::Private::empezarAjuste()
{
    ajuste = std::make_unique<Ajuste>();
    ajuste->ancho = q->width();
    ajuste->alto = q->height();
}

void ContenedorX::Private::terminarAjuste() noexcept
{
    if (!ajuste)
        return;
    const QSize tamano(ajuste->ancho, ajuste->alto);
    if (ajuste->repintar)
        q->update();
    ajuste.reset();
    indexados = -1;
    trap(QStringLiteral("ContenedorX.validarControl->"), [&] {
        if (tamano != q->size()) {
            q->resize(tamano);
            vista->frameResize();
        }
    });
}

// --- Hit-testing and selection ---------------------------------------------

QRectF ContenedorX::Private::cajaIndice(const IObjeto &hijo) const
{
    return areaDibujo(hijo.getX() * escala + margen, hijo.getY() * escala + margen, hijo.getAncho() * escala,
                      hijo.getAlto() * escala);
}

void ContenedorX::Private::indexar(const Objetos &hijos)
{
    const Objetos::Enumerator todos = hijos.NewEnum();
    // Cells about twice the size of a child keep a few children per cell, however dense the map.
    double suma = 0;
    for (const ObjetoPtr &k : todos)
        suma += std::max(std::abs(double(k->getAncho())), std::abs(double(k->getAlto())));
    const double medio = hijos.count() > 0 ? suma / hijos.count() * escala : 0;
    vista->indice.clear(std::clamp(2 * medio + 4, 16.0, 1024.0));
    for (const ObjetoPtr &k : todos)
        vista->indice.agregar(k, cajaIndice(*k));
    indexados = hijos.count();
    primeroIndexado = indexados > 0 ? hijos.Item(1).get() : nullptr;
    ultimoIndexado = indexados > 0 ? hijos.Item(indexados).get() : nullptr;
    escalaIndexada = escala;
    geometriaIndexada = ObjetoComun::cambiosDeGeometria();
}

bool ContenedorX::Private::indiceAlDia()
{
    if (!objeto || !objeto->getPuedeContener() || !(escala > 0) || !std::isfinite(escala))
        return false;
    const std::shared_ptr<Objetos> hijos = hijosDe(*objeto);
    const qint32 n = hijos->count();
    // A host adds and removes children in the collection itself: its size and ends tell.
    if (n != indexados || escala != escalaIndexada || ObjetoComun::cambiosDeGeometria() != geometriaIndexada
        || (n > 0 && (hijos->Item(1).get() != primeroIndexado || hijos->Item(n).get() != ultimoIndexado)))
        indexar(*hijos);
    return true;
}

bool ContenedorX::Private::golpeVigente(QPointF punto)
{
    return golpe.valido && golpe.punto == punto && indiceAlDia() && golpe.generacion == vista->indice.generacion();
}

bool ContenedorX::Private::esLigado(const ObjetoPtr &o)
{
    return requerido(o).getCodigo() == requerido(objeto).getCodigo();
}

ObjetoPtr ContenedorX::sobreQuien(float x, float y)
{
    ObjetoPtr encontrado;
    trap(QStringLiteral("ContenedorX.sobreQuien->"), [&] {
        const float px = (x - margen) / d->escala;
        const float py = (y - margen) / d->escala;
        const auto debajo = [&](const ObjetoPtr &k) {
            const float kx = k->getX();
            const float ky = k->getY();
            return kx <= px && px <= kx + k->getAncho() && ky <= py && py <= ky + k->getAlto();
        };
        // The earliest child wins, edges included.
        if (requerido(d->objeto).getPuedeContener()) {
            if (d->indiceAlDia()) {
                for (const ObjetoPtr &k : d->vista->indice.en(QPointF(x, y))) {
                    if (debajo(k)) {
                        encontrado = k;
                        return;
                    }
                }
            } else {
                for (const ObjetoPtr &k : hijosDe(*d->objeto)->NewEnum()) {
                    if (debajo(k)) {
                        encontrado = k;
                        return;
                    }
                }
            }
        }
        encontrado = d->objeto;
    });
    return encontrado;
}

void ContenedorX::MouseDown(int, int shift, QPointF punto)
{
    d->golpe.valido = false;
    d->actual = sobreQuien(float(punto.x()), float(punto.y()));
    if (d->indiceAlDia())
        d->golpe = { true, punto, d->vista->indice.generacion(), d->actual };
    // A press on a selected child keeps the group, so that it can be dragged.
    if (shift != ShiftMask && shift != CtrlMask) {
        if (d->esLigado(d->actual)) {
            d->vista->unselectAll();
        } else if (!d->actual->getSeleccionado()) {
            d->vista->unselectAll();
            d->vista->seleccionarObjeto(d->actual);
        }
    }
    d->actual = d->vista->frameSetActive(d->actual);
}

void ContenedorX::MouseMove(int shift, QPointF punto)
{
    if (!d->actual || d->esLigado(d->actual))
        trap(QStringLiteral("ContenedorX.dibujarCaja->"), [&] { d->vista->seguirBanda(punto); });
    else if (!d->dragging && d->vista->tomarPulsacion(punto))
        d->startDrag(shift, punto);
}

void ContenedorX::soltarBanda(const QRect &rect)
{
    // The band toggles every child wholly inside it, and tells nobody.
    d->actual = nullptr;
    const float x1 = (rect.x() - margen) / d->escala;
    const float y1 = (rect.y() - margen) / d->escala;
    const float x2 = (rect.x() + rect.width() - margen) / d->escala;
    const float y2 = (rect.y() + rect.height() - margen) / d->escala;
    if (!requerido(d->objeto).getPuedeContener())
        return;
    const auto alternarSiDentro = [&](const ObjetoPtr &k) {
        const float kx = k->getX();
        const float ky = k->getY();
        if (x1 <= kx && y1 <= ky && kx + k->getAncho() <= x2 && ky + k->getAlto() <= y2)
            d->vista->alternar(k);
    };
    if (d->indiceAlDia()) {
        // A child wholly inside the band has its box meet the band: the index answers a superset.
        for (const ObjetoPtr &k : d->vista->indice.en(QRectF(rect).adjusted(-1, -1, 1, 1)))
            alternarSiDentro(k);
    } else {
        for (const ObjetoPtr &k : hijosDe(*d->objeto)->NewEnum())
            alternarSiDentro(k);
    }
}

void ContenedorX::soltarClick(int button, int shift, QPointF punto)
{
    d->actual = d->golpeVigente(punto) ? d->golpe.objeto : sobreQuien(float(punto.x()), float(punto.y()));
    d->golpe.valido = false;
    const bool modificada = shift == ShiftMask || shift == CtrlMask;
    const std::shared_ptr<Objetos> seleccion = getSeleccionados();
    if (modificada && button != RightButton && !d->esLigado(d->actual)) {
        d->vista->alternar(d->actual);
    } else if (button == LeftButton && !modificada && seleccion->count() > 1) {
        // A plain click inside a group, without a drag, narrows the selection to the clicked child.
        requerido(d->actual);
        d->vista->unselectAll();
        d->vista->seleccionarObjeto(d->actual);
    }
    d->actual = d->vista->frameSetActive(d->actual);
    const bool multiple = seleccion->count() > 1 || shift == CtrlMask;
    if (button == LeftButton)
        d->vista->raiz().clicked(d->actual, multiple);
    else if (button == RightButton)
        d->vista->raiz().rightClicked(d->actual, multiple);
}

void ContenedorX::redibujarObjeto(const ObjetoPtr &objeto)
{
    d->dibujarNuevo(objeto);
}

void ContenedorX::seleccionar(const QString &codigo)
{
    trap(QStringLiteral("ContenedorX.IContenedorX_seleccionar->"), [&] {
        if (!requerido(d->objeto).getPuedeContener())
            return;
        const ObjetoPtr k = hijosDe(*d->objeto)->Item(codigo);
        if (k && !k->getSeleccionado()) {
            d->vista->seleccionarObjeto(k);
            d->dibujarNuevo(k);
        }
    });
}

ObjetoPtr ContenedorX::localizar(const QString &codigo)
{
    ObjetoPtr encontrado;
    trapSilently([&] {
        if (d->objeto && d->objeto->getPuedeContener())
            encontrado = hijosDe(*d->objeto)->Item(codigo);
    });
    return encontrado;
}

QRect ContenedorX::areaDe(const ObjetoPtr &objeto)
{
    return objeto ? d->cajaIndice(*objeto).toAlignedRect() : QRect();
}

void ContenedorX::seleccionarTodos()
{
    trap(QStringLiteral("ContenedorX.IContenedorX_seleccionarTodos->"), [&] {
        if (!requerido(d->objeto).getPuedeContener())
            return;
        for (const ObjetoPtr &k : hijosDe(*d->objeto)->NewEnum()) {
            if (k->getSeleccionado())
                continue;
            d->vista->seleccionarObjeto(k);
            d->dibujarNuevo(k);
        }
    });
}

// --- Moving and drag-and-drop -----------------------------------------------

void ContenedorX::Private::startDrag(int shift, QPointF punto)
{
    dragging = true;
    dragX = redondear(float(punto.x()));
    dragY = redondear(float(punto.y()));
    // With Shift the outline boxes show at once.
    if (shift == ShiftMask) {
        moverConCajas();
    } else {
        boxesCreated = false;
        boxesVisible = false;
    }
    QString nombre;
    trap(QStringLiteral("ContenedorX.OLEStartDrag->"), [&] { nombre = vista->frameName(); });
    vista->arrastrar(nombre, flechaSimple());
}

void ContenedorX::Private::moverConCajas()
{
    trap(QStringLiteral("ContenedorX.moverConCajas->"), [&] {
        boxesCreated = true;
        boxesVisible = true;
        for (const ObjetoPtr &o : q->getSeleccionados()->NewEnum())
            dibujarOtraCaja(o, float(dragX), float(dragY));
    });
}

void ContenedorX::Private::dibujarOtraCaja(const ObjetoPtr &o, float x, float y)
{
    trap(QStringLiteral("ContenedorX.dibujarOtraCaja->"), [&] {
        const IObjeto &hijo = requerido(o);
        const QPointF desde = vista->pulsado;
        const QRect lugar(enPixeles(hijo.getX() * escala + margen + (x - float(desde.x()))),
                          enPixeles(hijo.getY() * escala + margen + (y - float(desde.y()))),
                          std::max(0, enPixeles(hijo.getAncho() * escala)),
                          std::max(0, enPixeles(hijo.getAlto() * escala)));
        QWidget *caja = cajas.add(QStringLiteral("Tarvonix.Dummy"), nombreCaja(hijo));
        caja->setGeometry(lugar);
        caja->raise();
        caja->show();
    });
}

void ContenedorX::Private::moverOtraCaja(const ObjetoPtr &o, float dx, float dy)
{
    trap(QStringLiteral("ContenedorX.moverOtraCaja->"), [&] {
        QWidget *caja = cajas.item(nombreCaja(requerido(o)));
        caja->move(enPixeles(caja->x() + dx), enPixeles(caja->y() + dy));
    });
}

void ContenedorX::Private::borrarOtraCaja(const ObjetoPtr &o)
{
    trap(QStringLiteral("ContenedorX.borrarOtraCaja->"), [&] { cajas.remove(nombreCaja(requerido(o))); });
}

void ContenedorX::Private::OtraCajaVisible(const ObjetoPtr &o, bool visible)
{
    trap(QStringLiteral("ContenedorX.OtraCajaVisible->"),
         [&] { cajas.item(nombreCaja(requerido(o)))->setVisible(visible); });
}

void ContenedorX::dragOver(int shift, QPointF punto, Qt::DropAction &efecto)
{
    if (shift != ShiftMask) {
        // Without Shift it is a drop somewhere else: the boxes hide until Shift comes back.
        if (d->dragging) {
            if (d->boxesVisible) {
                for (const ObjetoPtr &o : getSeleccionados()->NewEnum())
                    d->OtraCajaVisible(o, false);
            }
            d->boxesVisible = false;
        }
        efecto = Qt::CopyAction;
        return;
    }
    if (!d->dragging) {
        efecto = Qt::CopyAction;
        return;
    }
    // A move: the boxes follow the pointer and the control grows under them.
    const QPoint extremo = d->moverCajas(punto);
    efecto = Qt::MoveAction;
    d->crecerBajoCajas(extremo);
}

//! Moves the outline boxes to the pointer; answers the largest right and bottom edge they reach.
QPoint ContenedorX::Private::moverCajas(QPointF punto)
{
    const float x = float(punto.x());
    const float y = float(punto.y());
    const QPointF desde = vista->pulsado;
    if (!boxesCreated) {
        dragX = redondear(x);
        dragY = redondear(y);
        moverConCajas();
    } else if (!boxesVisible) {
        for (const ObjetoPtr &o : q->getSeleccionados()->NewEnum())
            OtraCajaVisible(o, true);
        boxesVisible = true;
    }
    const float dx = x - float(dragX);
    const float dy = y - float(dragY);
    for (const ObjetoPtr &o : q->getSeleccionados()->NewEnum())
        moverOtraCaja(o, dx, dy);
    // The boxes are at the pointer now, even if an edge below does not fit: the next move starts here.
    dragX = redondear(x);
    dragY = redondear(y);
    qint16 maxRight = 0;
    qint16 maxBottom = 0;
    for (const ObjetoPtr &o : q->getSeleccionados()->NewEnum()) {
        const float right = (qint32(o->getX()) + o->getAncho()) * escala + margen + (x - float(desde.x()));
        const float bottom = (qint32(o->getY()) + o->getAlto()) * escala + margen + (y - float(desde.y()));
        maxRight = std::max(maxRight, toInt16(double(right)));
        maxBottom = std::max(maxBottom, toInt16(double(bottom)));
    }
    return QPoint(maxRight, maxBottom);
}

//! Boxes past the control's edges grow it to them plus the slack, never beyond 32000 plus the slack.
void ContenedorX::Private::crecerBajoCajas(QPoint extremo)
{
    int ancho = q->width();
    int alto = q->height();
    if (extremo.x() > ancho)
        ancho = std::min(extremo.x(), 32000) + holgura;
    if (extremo.y() > alto)
        alto = std::min(extremo.y(), 32000) + holgura;
    if (ancho != q->width() || alto != q->height()) {
        q->resize(ancho, alto);
        vista->frameResize();
    }
}

void ContenedorX::dragDrop(const QString &texto, int shift, QPointF punto, Qt::DropAction &efecto)
{
    if (shift != ShiftMask) {
        // A drop for the map: what was dragged, from which frame, onto what.
        efecto = Qt::CopyAction;
        const ObjetoPtr destino = sobreQuien(float(punto.x()), float(punto.y()));
        d->vista->raiz().droped(texto, destino, shift);
        return;
    }
    if (d->bloqueo || !d->dragging) {
        efecto = Qt::IgnoreAction;
        return;
    }
    // The move, measured from the press: the pointer's whole travel over the scale.
    efecto = Qt::MoveAction;
    IMapaX &raiz = d->vista->raiz();
    const QPointF desde = d->vista->pulsado;
    const float dx = (float(punto.x()) - float(desde.x())) / d->escala;
    const float dy = (float(punto.y()) - float(desde.y())) / d->escala;
    // The host hears of each move and may close the frame, this view with it.
    const QPointer<ContenedorX> vivo(this);
    for (const ObjetoPtr &o : getSeleccionados()->NewEnum()) {
        d->limpiar(o);
        const qint16 nuevoX = toInt16(double(o->getX() + dx));
        const qint16 nuevoY = toInt16(double(o->getY() + dy));
        o->setX(nuevoX);
        o->setY(nuevoY);
        d->dibujarNuevo(o);
        raiz.moved(o);
        if (!vivo)
            return;
    }
    d->validarControl();
}

void ContenedorX::completeDrag()
{
    trap(QStringLiteral("ContenedorX.OLECompleteDrag->"), [&] {
        if (!d->dragging)
            return;
        if (d->boxesCreated) {
            for (const ObjetoPtr &o : getSeleccionados()->NewEnum())
                d->borrarOtraCaja(o);
            // Boxes of children that left the selection during the drag go too.
            for (const QString &nombre : d->cajas.names())
                d->cajas.remove(nombre);
            d->boxesCreated = false;
            d->boxesVisible = false;
        }
        d->dragging = false;
        d->actual = nullptr;
    });
}

// --- Alignment, equal size and distribution ---------------------------------

namespace {
enum Alineacion { Arriba, Izquierda, Dimension };
}

void ContenedorX::alinearHorizontal(const ObjetoPtr &referencia)
{
    d->alinear(QStringLiteral("ContenedorX.IContenedorX_alinearHorizontal->"), referencia, Arriba);
}

void ContenedorX::alinearVertical(const ObjetoPtr &referencia)
{
    d->alinear(QStringLiteral("ContenedorX.IContenedorX_alinearVertical->"), referencia, Izquierda);
}

void ContenedorX::igualarDimension(const ObjetoPtr &referencia)
{
    d->alinear(QStringLiteral("ContenedorX.IContenedorX_igualarDimension->"), referencia, Dimension);
}

void ContenedorX::Private::alinear(const QString &label, const ObjetoPtr &referencia, int que)
{
    trap(label, [&] {
        if (q->getSeleccionados()->count() == 0)
            return;
        // The reference is read once: it may be one of the selection.
        const IObjeto &modelo = requerido(referencia);
        const qint16 x = modelo.getX();
        const qint16 y = modelo.getY();
        const qint16 ancho = modelo.getAncho();
        const qint16 alto = modelo.getAlto();
        IMapaX &raiz = vista->raiz();
        empezarAjuste();
        auto fin = qScopeGuard([this] { terminarAjuste(); });
        const QPointer<ContenedorX> vivo(q);
        for (const ObjetoPtr &o : q->getSeleccionados()->NewEnum()) {
            limpiar(o);
            if (que == Arriba) {
                o->setY(y);
            } else if (que == Izquierda) {
                o->setX(x);
            } else {
                o->setAncho(ancho);
                o->setAlto(alto);
            }
            raiz.moved(o);
            if (!vivo) {
                fin.dismiss();
                return;
            }
            dibujarNuevo(o);
            validarControl(o);
        }
    });
}

void ContenedorX::distribuirHorizontal()
{
    d->distribuir(QStringLiteral("ContenedorX.IContenedorX_distribuirHorizontal->"), Eje::Horizontal);
}

void ContenedorX::distribuirVertical()
{
    d->distribuir(QStringLiteral("ContenedorX.IContenedorX_distribuirVertical->"), Eje::Vertical);
}

void ContenedorX::Private::distribuir(const QString &label, Eje eje)
{
    trap(label, [&] {
        const bool horizontal = eje == Eje::Horizontal;
        const auto posicion = [horizontal](const IObjeto &o) {
            return horizontal ? o.getX() : o.getY();
        };
        const auto largo = [horizontal](const IObjeto &o) {
            return horizontal ? o.getAncho() : o.getAlto();
        };
        // Two or fewer have nothing in between.
        if (q->getSeleccionados()->count() <= 2)
            return;
        IMapaX &raiz = vista->raiz();
        empezarAjuste();
        auto fin = qScopeGuard([this] { terminarAjuste(); });
        const QPointer<ContenedorX> vivo(q);

        // Extent and total length of the selection, and the selection ordered by position.
        struct Elemento
        {
            ObjetoPtr objeto;
            qint16 posicion;
            qsizetype orden;
        };
        std::vector<Elemento> lista;
        lista.reserve(size_t(q->getSeleccionados()->count()));
        qint64 minLeft = 32000;
        qint64 maxRight = 0;
        qint64 total = 0;
        for (const ObjetoPtr &o : q->getSeleccionados()->NewEnum()) {
            const qint64 left = posicion(*o);
            const qint64 right = left + largo(*o) - 1;
            minLeft = std::min(minLeft, left);
            maxRight = std::max(maxRight, right);
            total += largo(*o);
            lista.push_back({ o, posicion(*o), qsizetype(lista.size()) });
            limpiar(o);
        }
        // Each object goes before the first one listed with a position at least as large:
        // among equal positions the one met later comes first.
        std::sort(lista.begin(), lista.end(), [](const Elemento &a, const Elemento &b) {
            return a.posicion != b.posicion ? a.posicion < b.posicion : a.orden > b.orden;
        });

        // The same gap between neighbours, in object units.
        const size_t n = lista.size();
        const float gap = float(double(maxRight - minLeft + 1 - total) / double(n - 1));

        // The first stays.
        const ObjetoPtr &primero = lista.front().objeto;
        dibujarNuevo(primero);
        qint64 prevRight = qint64(posicion(*primero)) + largo(*primero) - 1;

        // Each one in between starts gap units after the last unit the previous one covers.
        for (size_t i = 1; i + 1 < n; ++i) {
            const ObjetoPtr &o = lista[i].objeto;
            const qint16 nuevo = toInt16(double(float(prevRight) + gap));
            if (horizontal)
                o->setX(nuevo);
            else
                o->setY(nuevo);
            raiz.moved(o);
            if (!vivo) {
                fin.dismiss();
                return;
            }
            dibujarNuevo(o);
            validarControl(o);
            prevRight = qint64(posicion(*o)) + largo(*o) - 1;
        }

        // The last stays.
        dibujarNuevo(lista.back().objeto);
    });
}

// --- The keyboard's elements: the children -----------------------------------

int ContenedorX::elementos()
{
    const auto hijos = d->objeto && d->objeto->getPuedeContener() ? d->objeto->getObjetos() : nullptr;
    return hijos ? hijos->count() : 0;
}

ObjetoPtr ContenedorX::elemento(int i)
{
    return i >= 0 && i < elementos() ? d->objeto->getObjetos()->Item(i + 1) : nullptr;
}

QRectF ContenedorX::zonaElemento(int i)
{
    const ObjetoPtr k = elemento(i);
    if (!k)
        return {};
    return normalizado(k->getX() * d->escala + margen, k->getY() * d->escala + margen,
                       k->getAncho() * d->escala, k->getAlto() * d->escala);
}

int ContenedorX::vecino(int i, int dx, int dy)
{
    // The nearest child whose centre lies ahead, within 45 degrees of the arrow if any does.
    const QPointF desde = zonaElemento(i).center();
    int mejor = i;
    double mejorDistancia = 0;
    bool mejorEnCono = false;
    for (int j = 0, n = elementos(); j < n; ++j) {
        const QPointF delta = zonaElemento(j).center() - desde;
        const double avance = delta.x() * dx + delta.y() * dy;
        const double lateral = std::abs(delta.x() * dy - delta.y() * dx);
        if (j == i || avance <= 0)
            continue;
        const bool enCono = lateral <= avance;
        const double distancia = avance * avance + lateral * lateral;
        if (mejor == i || (enCono && !mejorEnCono) || (enCono == mejorEnCono && distancia < mejorDistancia)) {
            mejor = j;
            mejorDistancia = distancia;
            mejorEnCono = enCono;
        }
    }
    return mejor;
}

int ContenedorX::indiceDe(const ObjetoPtr &objeto)
{
    if (!objeto || elementos() == 0)
        return -1;
    const auto hijos = d->objeto->getObjetos();
    const qint32 posicion = hijos->indexOf(objeto->getCodigo());
    return posicion > 0 && hijos->Item(posicion) == objeto ? posicion - 1 : -1;
}

void ContenedorX::moverSeleccion(int dx, int dy)
{
    if (d->bloqueo)
        return;
    IMapaX &raiz = d->vista->raiz();
    const QPointer<ContenedorX> vivo(this);
    for (const ObjetoPtr &o : getSeleccionados()->NewEnum()) {
        d->limpiar(o);
        o->setX(toInt16(qint64(o->getX()) + dx));
        o->setY(toInt16(qint64(o->getY()) + dy));
        d->dibujarNuevo(o);
        raiz.moved(o);
        if (!vivo)
            return;
    }
    d->validarControl();
}

} // namespace tarvonix
