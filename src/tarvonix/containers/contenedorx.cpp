#include <tarvonix/containers/contenedorx.h>

#include <tarvonix/widgets/dummy.h>
#include <tarvonix/views/imapax.h>
#include <tarvonix/model/color.h>
#include <tarvonix/model/imagen.h>
#include <tarvonix/model/objetos.h>
#include <tarvonix/platform/dragrunner.h>
#include <tarvonix/core/error.h>
#include <tarvonix/platform/errortrap.h>
#include <tarvonix/core/int16.h>
#include <tarvonix/platform/latebinding.h>
#include <tarvonix/platform/shiftstate.h>

#include <QDrag>
#include <QDragEnterEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>
#include <QScopeGuard>

#include <algorithm>
#include <cmath>
#include <limits>
#include <set>
#include <unordered_map>
#include <vector>

namespace tarvonix {

namespace {

constexpr float margen = 2; // between the control's edge and object coordinate 0
constexpr float bandaScroll = 40; // a drag this close to the visible edge scrolls the frame
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

} // namespace

/*!
    What the size fits of one layout operation remember between objects.

    An alignment or a distribution fits the control after every object it
    changes. Only that object differs from the previous fit, and growing a
    child container depends on its own children alone, so the fit keeps the
    right and bottom edge of every child in ordered sets and updates the
    changed object's entry instead of walking every child again.
*/
struct ContenedorX::Ajuste
{
    bool valido = false;
    std::unordered_map<const IObjeto *, std::pair<int, int>> extremos;
    std::multiset<int> derechas;
    std::multiset<int> fondos;

    void anotar(const IObjeto *objeto, int derecha, int fondo)
    {
        const auto [it, nuevo] = extremos.try_emplace(objeto, derecha, fondo);
        if (!nuevo) {
            derechas.erase(derechas.find(it->second.first));
            fondos.erase(fondos.find(it->second.second));
            it->second = { derecha, fondo };
        }
        derechas.insert(derecha);
        fondos.insert(fondo);
    }
};

ContenedorX::ContenedorX(QWidget *parent)
    : VistaX(parent)
    , m_seleccionados(std::make_shared<Objetos>())
    , m_cajas(this)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAcceptDrops(true);
    m_surface.setBackColor(qint32(0x8000000F)); // the button face until an object is bound
    m_surface.setFont(font());

    m_box = new Dummy(this);
    m_box->setObjectName(QStringLiteral("box"));
    m_box->hide();
    m_cajas.adopt(m_box);
}

ContenedorX::~ContenedorX() = default;

qint16 ContenedorX::BorderStyle() const
{
    return m_borderStyle;
}

void ContenedorX::setBorderStyle(qint16 style)
{
    m_borderStyle = style;
    update();
}

// --- Binding and the contract's plain operations -----------------------------

void ContenedorX::setObjeto(const ObjetoPtr &objeto)
{
    trap(QStringLiteral("ContenedorX.IContenedorX_setObjeto->"), [&] {
        m_objeto = objeto;
        const IObjeto &o = requerido(objeto);
        m_surface.setBackColor(o.getColor());
        setToolTip(o.getDescripcion());
        validarControl();
        update();
    });
}

ObjetoPtr ContenedorX::getObjeto()
{
    return m_objeto;
}

void ContenedorX::setRoot(IMapaX *root)
{
    m_root = root;
}

std::shared_ptr<Objetos> ContenedorX::getSeleccionados()
{
    return m_seleccionados;
}

void ContenedorX::refrescar()
{
    trap(QStringLiteral("ContenedorX.IContenedorX_refrescar->"), [&] {
        validarControl();
        update();
    });
}

void ContenedorX::setEscala(float escala)
{
    trap(QStringLiteral("ContenedorX.IContenedorX_setEscala->"), [&] {
        m_escala = escala;
        validarControl();
        update();
    });
}

void ContenedorX::setBloqueo(bool bloqueo)
{
    m_bloqueo = bloqueo;
}

// --- Painting ----------------------------------------------------------------

void ContenedorX::changeEvent(QEvent *event)
{
    // printX measures with the surface's font at any time, not only while painting.
    if (event->type() == QEvent::FontChange)
        m_surface.setFont(font());
    QWidget::changeEvent(event);
}

void ContenedorX::paintEvent(QPaintEvent *event)
{
    QPainter painter(this);
    Surface::Painting painting(m_surface, painter);
    m_surface.setFont(font());
    m_invalidaciones = 0;
    const QRect expuesto = event->rect();
    trap(QStringLiteral("ContenedorX.Paint->"), [&] { pintar(expuesto); });
    if (m_borderStyle == 1) {
        painter.setPen(QPen(palette().color(QPalette::WindowText), 0));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(0, 0, width() - 1, height() - 1);
    }
}

void ContenedorX::pintar(const QRect &expuesto)
{
    m_surface.clear(expuesto.x(), expuesto.y(), expuesto.width(), expuesto.height());
    if (!m_objeto)
        return;
    // 1.
    const float ancho = float(width());
    const float alto = float(height());
    // 2. The bound object: its tip at the top left, never an outline.
    dibujarObjeto(0, 0, ancho, alto, m_objeto);
    // 3. The children that reach into the visible rectangle (and the exposed one), in collection order.
    if (!m_objeto->getPuedeContener())
        return;
    const auto dentro = [](float a, float desde, float hasta) {
        return a >= desde && a <= hasta;
    };
    const QRectF exposedArea(expuesto);
    for (const ObjetoPtr &k : hijosDe(*m_objeto)->NewEnum()) {
        const float x = k->getX() * m_escala + margen;
        const float y = k->getY() * m_escala + margen;
        const float w = k->getAncho() * m_escala;
        const float h = k->getAlto() * m_escala;
        const bool horizontal = dentro(x, viewLeft(), viewRight()) || dentro(x + w, viewLeft(), viewRight());
        const bool vertical = dentro(y, viewTop(), viewBottom()) || dentro(y + h, viewTop(), viewBottom());
        if (horizontal && vertical && areaDibujo(x, y, w, h).intersects(exposedArea))
            dibujarObjeto(x, y, w, h, k);
    }
}

void ContenedorX::dibujarObjeto(float x, float y, float w, float h, const ObjetoPtr &o)
{
    trap(QStringLiteral("ContenedorX.dibujarObjeto->"), [&] {
        const IObjeto &objeto = requerido(o);
        const bool contiene = objeto.getPuedeContener();
        const bool activo = objeto.getActivo();
        const bool seleccionado = objeto.getSeleccionado();
        const qint16 forma = objeto.getForma();
        const QString tip = objeto.getTip();
        const std::shared_ptr<Imagen> imagen = objeto.getImagen();
        Surface &s = m_surface;

        if (contiene) {
            // 1.–3. A child container: its tip at the top left, a grey frame.
            s.setForeColor(seleccionado ? negro : gris);
            printX(tip, x, y, w, h, 6);
            s.setDrawStyle(Surface::DrawSolid);
            s.setFillStyle(Surface::FillTransparent);
            s.setForeColor(gris);
        } else {
            // 1. Erase to the background.
            s.setFillStyle(Surface::FillSolid);
            s.setFillColor(s.backColor());
            s.setForeColor(s.backColor());
            if (!imagen && forma == FormaCirculo) {
                const float r = w / 2 - 1;
                s.circle(x + r, y + r, r);
            } else {
                s.box(x, y, x + w - 1, y + h - 1);
            }
            // 2. The inner rectangle: a square at the left for forma 3.
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
                // 3. The picture, hatched over when selected.
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
                // 4. The colour, hatched when selected; the text readable on it.
                const qint32 col = objeto.getColor();
                s.setFillStyle(seleccionado ? Surface::FillUpwardDiagonal : Surface::FillSolid);
                s.setFillColor(col == blanco && seleccionado ? negro : col);
                s.setForeColor(col);
                formaInterior(iw / 2 - 2);
                if (!seleccionado && forma != FormaCuadro)
                    s.setForeColor(Color::esColorClaro(col) ? negro : blanco);
                else
                    s.setForeColor(negro);
            }
            // 5.
            s.setFillStyle(Surface::FillTransparent);
            // 6. The tip: right of the square for forma 3, centred otherwise.
            if (forma == FormaCuadro)
                printX(tip, ix + iw + 2, y, w - iw - 4, h, 2);
            else
                printX(tip, ix, iy, iw, ih, 0);
            // 7.
            s.setForeColor(negro);
            s.setDrawStyle(activo ? Surface::DrawDot : Surface::DrawSolid);
        }

        // The outline, never around the bound object itself.
        if (objeto.getCodigo() != requerido(m_objeto).getCodigo() && (forma != FormaCuadro || seleccionado)) {
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
        Surface &s = m_surface;
        // 1.
        const float aw = ancho - 4;
        const float ah = alto - 4;
        const float tw = float(s.textWidth(texto));
        const float th = float(s.textHeight(texto));
        // 2.
        const auto colocar = [&](float w, float h) {
            switch (posicion & 3) {
            case 0:
                s.setCurrentX(x + 2 + (aw - w) / 2);
                break;
            case 1:
                s.setCurrentX(x + 2 + aw - w);
                break;
            case 2:
                s.setCurrentX(x + 2);
                break;
            default:
                break;
            }
            switch (posicion / 4) {
            case 0:
                s.setCurrentY(y + 2 + (ah - h) / 2);
                break;
            case 1:
                s.setCurrentY(y + 2);
                break;
            case 2:
                s.setCurrentY(y + 2 + ah - h);
                break;
            default:
                break;
            }
        };
        // 3. On one line when it fits.
        if (tw <= aw && th <= ah) {
            colocar(tw, th);
            s.print(texto);
            return;
        }
        // 4. Otherwise one character per line, when that column fits.
        const float cw = float(s.textWidth(QStringLiteral("W")));
        const float bloque = float(texto.size()) * th;
        if (cw > aw || bloque > ah)
            return;
        colocar(cw, bloque);
        const double columna = s.currentX();
        for (const QChar c : texto) {
            s.print(QString(c));
            s.setCurrentX(columna);
        }
    });
}

void ContenedorX::invalidar(const QRectF &area)
{
    const QRectF visible = area & QRectF(rect());
    if (visible.isEmpty())
        return;
    if (++m_invalidaciones > maxInvalidaciones)
        update();
    else
        update(visible.toAlignedRect());
}

void ContenedorX::limpiar(const ObjetoPtr &o)
{
    redibujarHijo(QStringLiteral("ContenedorX.limpiar->"), o);
}

void ContenedorX::dibujarNuevo(const ObjetoPtr &o)
{
    redibujarHijo(QStringLiteral("ContenedorX.dibujarNuevo->"), o);
}

void ContenedorX::redibujarHijo(const QString &etiqueta, const ObjetoPtr &o)
{
    // Erasing and redrawing a child both come down to repainting its area in
    // collection order; what each keeps is the check that the child is ours.
    trap(etiqueta, [&] {
        const IObjeto &objeto = requerido(o);
        if (objeto.getPadre() != requerido(m_objeto).getCodigo()) {
            reportError(etiqueta + QStringLiteral("No se encontró padre del objeto en primer nivel"));
            return;
        }
        invalidar(areaDibujo(objeto.getX() * m_escala + margen, objeto.getY() * m_escala + margen,
                             objeto.getAncho() * m_escala, objeto.getAlto() * m_escala));
    });
}

// --- Sizing ------------------------------------------------------------------

void ContenedorX::validar(const ObjetoPtr &o)
{
    trap(QStringLiteral("ContenedorX.validar->"), [&] {
        IObjeto &objeto = requerido(o);
        if (!objeto.getPuedeContener())
            return;
        qint16 right = 100;
        qint16 bottom = 40;
        for (const ObjetoPtr &k : hijosDe(objeto)->NewEnum()) {
            right = std::max(right, toInt16(qint64(k->getX()) + k->getAncho()));
            bottom = std::max(bottom, toInt16(qint64(k->getY()) + k->getAlto()));
        }
        const float derecha = right + 4 / m_escala;
        const float fondo = bottom + 4 / m_escala;
        if (objeto.getAncho() < derecha)
            objeto.setAncho(toInt16(double(derecha)));
        if (objeto.getAlto() < fondo)
            objeto.setAlto(toInt16(double(fondo)));
    });
}

void ContenedorX::validarControl(const ObjetoPtr &cambiado)
{
    trap(QStringLiteral("ContenedorX.validarControl->"), [&] {
        const IObjeto &objeto = requerido(m_objeto);
        // 1.
        int right = 298;
        int bottom = 148;
        if (m_ajuste && m_ajuste->valido && cambiado) {
            // Within one layout operation: only the changed object moved since the last fit.
            m_ajuste->valido = false;
            if (m_ajuste->extremos.count(cambiado.get())) {
                validar(cambiado);
                m_ajuste->anotar(cambiado.get(), cambiado->getX() + cambiado->getAncho(),
                                 cambiado->getY() + cambiado->getAlto());
            }
            m_ajuste->valido = true;
            if (!m_ajuste->derechas.empty()) {
                right = std::max(right, *m_ajuste->derechas.rbegin());
                bottom = std::max(bottom, *m_ajuste->fondos.rbegin());
            }
        } else if (objeto.getPuedeContener()) {
            if (m_ajuste)
                *m_ajuste = Ajuste();
            for (const ObjetoPtr &k : hijosDe(objeto)->NewEnum()) {
                validar(k);
                const int derecha = k->getX() + k->getAncho();
                const int fondo = k->getY() + k->getAlto();
                right = std::max(right, derecha);
                bottom = std::max(bottom, fondo);
                if (m_ajuste)
                    m_ajuste->anotar(k.get(), derecha, fondo);
            }
            if (m_ajuste)
                m_ajuste->valido = true;
        }
        ajustarTamano(right, bottom);
    });
}

void ContenedorX::ajustarTamano(int right, int bottom)
{
    // 2.
    const float necesarioW = right * m_escala + 4;
    const float necesarioH = bottom * m_escala + 4;
    // 3. Grow at once, shrink only past the slack.
    int ancho = width();
    int alto = height();
    if (necesarioW > ancho || necesarioW < ancho - holgura)
        ancho = std::max(0, enPixeles(necesarioW));
    if (necesarioH > alto || necesarioH < alto - holgura)
        alto = std::max(0, enPixeles(necesarioH));
    // 4.
    if (ancho != width() || alto != height()) {
        resize(ancho, alto);
        llamarFrame(QStringLiteral("Resize"), { QVariant::fromValue<QWidget *>(this) });
    }
}

// --- The frame and the root --------------------------------------------------

IMapaX &ContenedorX::root() const
{
    if (!m_root)
        throw Error(Error::ObjectNotSet);
    return *m_root;
}

QVariant ContenedorX::llamarFrame(const QString &member, const QVariantList &arguments)
{
    return LateBinding::call(parentWidget(), member, arguments);
}

bool ContenedorX::framePActive()
{
    return LateBinding::get(parentWidget(), QStringLiteral("pActive")).toBool();
}

ObjetoPtr ContenedorX::frameSetActive(const ObjetoPtr &o)
{
    return llamarFrame(QStringLiteral("setActive"), { QVariant::fromValue<ObjetoPtr>(o) }).value<ObjetoPtr>();
}

// --- Hit-testing and selection ---------------------------------------------

ObjetoPtr ContenedorX::sobreQuien(float x, float y)
{
    ObjetoPtr encontrado;
    trap(QStringLiteral("ContenedorX.sobreQuien->"), [&] {
        // 1.
        const float px = (x - margen) / m_escala;
        const float py = (y - margen) / m_escala;
        // 2. The earliest child wins, edges included.
        if (requerido(m_objeto).getPuedeContener()) {
            for (const ObjetoPtr &k : hijosDe(*m_objeto)->NewEnum()) {
                const float kx = k->getX();
                const float ky = k->getY();
                if (kx <= px && px <= kx + k->getAncho() && ky <= py && py <= ky + k->getAlto()) {
                    encontrado = k;
                    return;
                }
            }
        }
        // 3.
        encontrado = m_objeto;
    });
    return encontrado;
}

void ContenedorX::mousePressEvent(QMouseEvent *event)
{
    const QPointF p = event->position();
    MouseDown(mouseButton(event->button()), shiftState(event->modifiers()), float(p.x()), float(p.y()));
}

void ContenedorX::mouseMoveEvent(QMouseEvent *event)
{
    const QPointF p = event->position();
    MouseMove(mouseButton(event->buttons()), shiftState(event->modifiers()), float(p.x()), float(p.y()));
}

void ContenedorX::mouseReleaseEvent(QMouseEvent *event)
{
    const QPointF p = event->position();
    MouseUp(mouseButton(event->button()), shiftState(event->modifiers()), float(p.x()), float(p.y()));
}

void ContenedorX::MouseDown(int, int shift, float x, float y)
{
    trap(QStringLiteral("ContenedorX.MouseDown->"), [&] {
        // 1.
        m_downX = x;
        m_downY = y;
        m_actual = sobreQuien(x, y);
        // 2. A press on a selected child keeps the group, so that it can be dragged.
        if (shift != ShiftMask && shift != CtrlMask) {
            if (requerido(m_actual).getCodigo() == requerido(m_objeto).getCodigo()) {
                unselectAll();
            } else if (!m_actual->getSeleccionado()) {
                unselectAll();
                m_seleccionados->add(m_actual);
                m_actual->setSeleccionado(true);
            }
        }
        // 3.
        m_actual = frameSetActive(m_actual);
        // 4.
        m_pressed = true;
    });
}

void ContenedorX::MouseMove(int button, int shift, float x, float y)
{
    trap(QStringLiteral("ContenedorX.MouseMove->"), [&] {
        if (button != LeftButton || !framePActive())
            return;
        const float dx = x - m_downX;
        const float dy = y - m_downY;
        const bool lejos = dx * dx + dy * dy > 25;
        if (!m_actual || m_actual->getCodigo() == requerido(m_objeto).getCodigo()) {
            if (m_rubberBand) {
                dibujarCaja(m_downX, m_downY, x, y);
            } else if (lejos && m_pressed) {
                m_rubberBand = true;
                dibujarCaja(m_downX, m_downY, x, y);
            }
        } else if (!m_dragging && lejos && m_pressed) {
            startDrag(shift, x, y);
        }
    });
}

void ContenedorX::MouseUp(int button, int shift, float x, float y)
{
    trap(QStringLiteral("ContenedorX.MouseUp->"), [&] {
        // 1.
        if (!framePActive())
            return;
        // 2. The band toggles every child wholly inside it, and tells nobody.
        if (m_rubberBand) {
            m_rubberBand = false;
            Dummy &box = banda();
            box.hide();
            m_actual = nullptr;
            const float x1 = (box.x() - margen) / m_escala;
            const float y1 = (box.y() - margen) / m_escala;
            const float x2 = (box.x() + box.width() - margen) / m_escala;
            const float y2 = (box.y() + box.height() - margen) / m_escala;
            if (!requerido(m_objeto).getPuedeContener())
                return;
            for (const ObjetoPtr &k : hijosDe(*m_objeto)->NewEnum()) {
                const float kx = k->getX();
                const float ky = k->getY();
                if (x1 <= kx && y1 <= ky && kx + k->getAncho() <= x2 && ky + k->getAlto() <= y2)
                    alternar(k);
            }
            return;
        }
        // 3.
        m_actual = sobreQuien(x, y);
        const bool modificada = shift == ShiftMask || shift == CtrlMask;
        if (modificada && button != RightButton
            && requerido(m_actual).getCodigo() != requerido(m_objeto).getCodigo()) {
            alternar(m_actual);
        } else if (button == LeftButton && !modificada && m_seleccionados->count() > 1) {
            // A plain click inside a group, without a drag, narrows the selection to the clicked child.
            requerido(m_actual);
            unselectAll();
            m_seleccionados->add(m_actual);
            m_actual->setSeleccionado(true);
        }
        m_actual = frameSetActive(m_actual);
        const bool multiple = m_seleccionados->count() > 1 || shift == CtrlMask;
        if (button == LeftButton)
            root().clicked(m_actual, multiple);
        else if (button == RightButton)
            root().rightClicked(m_actual, multiple);
        m_pressed = true;
    });
}

void ContenedorX::alternar(const ObjetoPtr &o)
{
    if (!o->getSeleccionado()) {
        m_seleccionados->add(o);
        o->setSeleccionado(true);
    } else {
        m_seleccionados->remove(o);
        o->setSeleccionado(false);
    }
}

void ContenedorX::dibujarCaja(float x1, float y1, float x2, float y2)
{
    trap(QStringLiteral("ContenedorX.dibujarCaja->"), [&] {
        const float left = std::min(x1, x2);
        const float top = std::min(y1, y2);
        const float ancho = x1 == x2 ? 1 : std::abs(x2 - x1);
        const float alto = y1 == y2 ? 1 : std::abs(y2 - y1);
        Dummy &box = banda();
        box.setGeometry(enPixeles(left), enPixeles(top), enPixeles(ancho), enPixeles(alto));
        if (box.isHidden()) {
            box.raise();
            box.show();
        }
    });
}

Dummy &ContenedorX::banda() const
{
    if (!m_box)
        throw Error(Error::ControlNotFound);
    return *m_box;
}

void ContenedorX::unselectAll()
{
    trap(QStringLiteral("ContenedorX.unselectAll->"), [&] {
        for (const ObjetoPtr &o : m_seleccionados->NewEnum()) {
            o->setSeleccionado(false);
            dibujarNuevo(o);
        }
        m_seleccionados->clear();
    });
}

void ContenedorX::seleccionar(const QString &codigo)
{
    trap(QStringLiteral("ContenedorX.IContenedorX_seleccionar->"), [&] {
        if (!requerido(m_objeto).getPuedeContener())
            return;
        const ObjetoPtr k = hijosDe(*m_objeto)->Item(codigo);
        if (k && !k->getSeleccionado()) {
            m_seleccionados->add(k);
            k->setSeleccionado(true);
            dibujarNuevo(k);
        }
    });
}

void ContenedorX::seleccionarTodos()
{
    trap(QStringLiteral("ContenedorX.IContenedorX_seleccionarTodos->"), [&] {
        if (!requerido(m_objeto).getPuedeContener())
            return;
        for (const ObjetoPtr &k : hijosDe(*m_objeto)->NewEnum()) {
            if (k->getSeleccionado())
                continue;
            m_seleccionados->add(k);
            k->setSeleccionado(true);
            dibujarNuevo(k);
        }
    });
}

void ContenedorX::deseleccionarTodos()
{
    trap(QStringLiteral("ContenedorX.IContenedorX_deseleccionarTodos->"), [&] { unselectAll(); });
}

void ContenedorX::setActivo(const ObjetoPtr &objeto, bool valor)
{
    trap(QStringLiteral("ContenedorX.IContenedorX_setActivo->"), [&] {
        // A frame that activates or deactivates itself passes no object: nothing to mark.
        if (!objeto)
            return;
        if (objeto->getCodigo() == requerido(m_objeto).getCodigo())
            return;
        objeto->setActivo(valor);
        dibujarNuevo(objeto);
    });
}

// --- Moving and drag-and-drop -----------------------------------------------

void ContenedorX::startDrag(int shift, float x, float y)
{
    // 1.
    m_dragging = true;
    m_pressed = false;
    m_dragX = redondear(x);
    m_dragY = redondear(y);
    // 2. With Shift the outline boxes show at once.
    if (shift == ShiftMask) {
        moverConCajas();
    } else {
        m_boxesCreated = false;
        m_boxesVisible = false;
    }
    // 3. The data is the name of the frame that holds this container.
    auto *datos = new QMimeData;
    trap(QStringLiteral("ContenedorX.OLEStartDrag->"),
         [&] { datos->setText(llamarFrame(QStringLiteral("Name")).toString()); });
    auto *drag = new QDrag(this);
    drag->setMimeData(datos);
    drag->setDragCursor(flechaSimple(), Qt::MoveAction);
    const QPointer<ContenedorX> self(this);
    DragRunner::run(drag, Qt::CopyAction | Qt::MoveAction, [self](Qt::DropAction) {
        if (self)
            self->completeDrag();
    });
}

void ContenedorX::moverConCajas()
{
    trap(QStringLiteral("ContenedorX.moverConCajas->"), [&] {
        m_boxesCreated = true;
        m_boxesVisible = true;
        for (const ObjetoPtr &o : m_seleccionados->NewEnum())
            dibujarOtraCaja(o, float(m_dragX), float(m_dragY));
    });
}

void ContenedorX::dibujarOtraCaja(const ObjetoPtr &o, float x, float y)
{
    trap(QStringLiteral("ContenedorX.dibujarOtraCaja->"), [&] {
        const IObjeto &objeto = requerido(o);
        const QRect lugar(enPixeles(objeto.getX() * m_escala + margen + (x - m_downX)),
                          enPixeles(objeto.getY() * m_escala + margen + (y - m_downY)),
                          std::max(0, enPixeles(objeto.getAncho() * m_escala)),
                          std::max(0, enPixeles(objeto.getAlto() * m_escala)));
        QWidget *caja = m_cajas.add(QStringLiteral("Tarvonix.Dummy"), nombreCaja(objeto));
        caja->setGeometry(lugar);
        caja->raise();
        caja->show();
    });
}

void ContenedorX::moverOtraCaja(const ObjetoPtr &o, float dx, float dy)
{
    trap(QStringLiteral("ContenedorX.moverOtraCaja->"), [&] {
        QWidget *caja = m_cajas.item(nombreCaja(requerido(o)));
        caja->move(enPixeles(caja->x() + dx), enPixeles(caja->y() + dy));
    });
}

void ContenedorX::borrarOtraCaja(const ObjetoPtr &o)
{
    trap(QStringLiteral("ContenedorX.borrarOtraCaja->"), [&] { m_cajas.remove(nombreCaja(requerido(o))); });
}

void ContenedorX::OtraCajaVisible(const ObjetoPtr &o, bool visible)
{
    trap(QStringLiteral("ContenedorX.OtraCajaVisible->"),
         [&] { m_cajas.item(nombreCaja(requerido(o)))->setVisible(visible); });
}

void ContenedorX::dragEnterEvent(QDragEnterEvent *event)
{
    dragMoveEvent(event);
}

void ContenedorX::dragMoveEvent(QDragMoveEvent *event)
{
    const Qt::DropAction efecto
        = dragOver(event->mimeData(), event->proposedAction(), mouseButton(event->buttons()),
                   shiftState(event->modifiers()), event->position());
    DragRunner::answer(event, efecto);
}

void ContenedorX::dropEvent(QDropEvent *event)
{
    const Qt::DropAction efecto
        = dragDrop(event->mimeData(), event->proposedAction(), mouseButton(event->buttons()),
                   shiftState(event->modifiers()), event->position());
    DragRunner::answer(event, efecto);
}

Qt::DropAction ContenedorX::dragOver(const QMimeData *datos, Qt::DropAction efecto, int, int shift,
                                     QPointF pos)
{
    trap(QStringLiteral("ContenedorX.dragOver->"), [&] {
        const float x = float(pos.x());
        const float y = float(pos.y());
        // 1.
        if (!datos || !datos->hasText()) {
            efecto = Qt::IgnoreAction;
            return;
        }
        // 2.
        if (!llamarFrame(QStringLiteral("isActive")).toBool())
            llamarFrame(QStringLiteral("activate"));
        if (shift == ShiftMask) {
            // 3. A move: the boxes follow the pointer and the control grows under them.
            if (!m_dragging) {
                efecto = Qt::CopyAction;
            } else {
                if (!m_boxesCreated) {
                    m_dragX = redondear(x);
                    m_dragY = redondear(y);
                    moverConCajas();
                } else if (!m_boxesVisible) {
                    for (const ObjetoPtr &o : m_seleccionados->NewEnum())
                        OtraCajaVisible(o, true);
                    m_boxesVisible = true;
                }
                const float dx = x - float(m_dragX);
                const float dy = y - float(m_dragY);
                qint16 maxRight = 0;
                qint16 maxBottom = 0;
                for (const ObjetoPtr &o : m_seleccionados->NewEnum()) {
                    moverOtraCaja(o, dx, dy);
                    const float right
                        = (qint32(o->getX()) + o->getAncho()) * m_escala + margen + (x - m_downX);
                    const float bottom
                        = (qint32(o->getY()) + o->getAlto()) * m_escala + margen + (y - m_downY);
                    maxRight = std::max(maxRight, toInt16(double(right)));
                    maxBottom = std::max(maxBottom, toInt16(double(bottom)));
                }
                efecto = Qt::MoveAction;
                int ancho = width();
                int alto = height();
                if (maxRight > ancho)
                    ancho = std::min<int>(maxRight, 32000) + holgura;
                if (maxBottom > alto)
                    alto = std::min<int>(maxBottom, 32000) + holgura;
                if (ancho != width() || alto != height()) {
                    resize(ancho, alto);
                    llamarFrame(QStringLiteral("Resize"), { QVariant::fromValue<QWidget *>(this) });
                }
                m_dragX = redondear(x);
                m_dragY = redondear(y);
            }
        } else {
            // 4. Without Shift it is a drop somewhere else: the boxes hide until Shift comes back.
            if (m_dragging) {
                if (m_boxesVisible) {
                    for (const ObjetoPtr &o : m_seleccionados->NewEnum())
                        OtraCajaVisible(o, false);
                }
                m_boxesVisible = false;
            }
            efecto = Qt::CopyAction;
        }
        // 5. Near the visible rectangle's edges the frame scrolls.
        if (x < viewLeft() + bandaScroll)
            llamarFrame(QStringLiteral("hScroll"), { QVariant::fromValue<qint16>(-1) });
        else if (x > viewRight() - bandaScroll)
            llamarFrame(QStringLiteral("hScroll"), { QVariant::fromValue<qint16>(1) });
        if (y < viewTop() + bandaScroll)
            llamarFrame(QStringLiteral("vScroll"), { QVariant::fromValue<qint16>(-1) });
        else if (y > viewBottom() - bandaScroll)
            llamarFrame(QStringLiteral("vScroll"), { QVariant::fromValue<qint16>(1) });
    });
    return efecto;
}

Qt::DropAction ContenedorX::dragDrop(const QMimeData *datos, Qt::DropAction efecto, int, int shift,
                                     QPointF pos)
{
    trap(QStringLiteral("ContenedorX.dragDrop->"), [&] {
        const float x = float(pos.x());
        const float y = float(pos.y());
        if (!datos || !datos->hasText()) {
            efecto = Qt::IgnoreAction;
            return;
        }
        const QString texto = datos->text();
        if (shift != ShiftMask) {
            // A drop for the map: what was dragged, from which frame, onto what.
            efecto = Qt::CopyAction;
            const ObjetoPtr destino = sobreQuien(x, y);
            root().droped(texto, destino, shift);
            return;
        }
        if (m_bloqueo || !m_dragging) {
            efecto = Qt::IgnoreAction;
            return;
        }
        // The move, measured from the press: the pointer's whole travel over the scale.
        efecto = Qt::MoveAction;
        IMapaX &raiz = root();
        const float dx = (x - m_downX) / m_escala;
        const float dy = (y - m_downY) / m_escala;
        for (const ObjetoPtr &o : m_seleccionados->NewEnum()) {
            limpiar(o);
            const qint16 nuevoX = toInt16(double(o->getX() + dx));
            const qint16 nuevoY = toInt16(double(o->getY() + dy));
            o->setX(nuevoX);
            o->setY(nuevoY);
            dibujarNuevo(o);
            raiz.moved(o);
        }
        validarControl();
    });
    return efecto;
}

void ContenedorX::completeDrag()
{
    trap(QStringLiteral("ContenedorX.OLECompleteDrag->"), [&] {
        if (!m_dragging)
            return;
        if (m_boxesCreated) {
            for (const ObjetoPtr &o : m_seleccionados->NewEnum())
                borrarOtraCaja(o);
            // Boxes of children that left the selection during the drag go too.
            for (const QString &nombre : m_cajas.names()) {
                if (!m_box || m_cajas.find(nombre) != m_box.data())
                    m_cajas.remove(nombre);
            }
            m_boxesCreated = false;
            m_boxesVisible = false;
        }
        m_dragging = false;
        m_actual = nullptr;
    });
}

// --- Alignment, equal size and distribution ---------------------------------

namespace {
enum Alineacion { Arriba, Izquierda, Dimension };
}

void ContenedorX::alinearHorizontal(const ObjetoPtr &referencia)
{
    alinear(QStringLiteral("ContenedorX.IContenedorX_alinearHorizontal->"), referencia, Arriba);
}

void ContenedorX::alinearVertical(const ObjetoPtr &referencia)
{
    alinear(QStringLiteral("ContenedorX.IContenedorX_alinearVertical->"), referencia, Izquierda);
}

void ContenedorX::igualarDimension(const ObjetoPtr &referencia)
{
    alinear(QStringLiteral("ContenedorX.IContenedorX_igualarDimension->"), referencia, Dimension);
}

void ContenedorX::alinear(const QString &label, const ObjetoPtr &referencia, int que)
{
    trap(label, [&] {
        if (m_seleccionados->count() == 0)
            return;
        // The reference is read once: it may be one of the selection.
        const IObjeto &modelo = requerido(referencia);
        const qint16 x = modelo.getX();
        const qint16 y = modelo.getY();
        const qint16 ancho = modelo.getAncho();
        const qint16 alto = modelo.getAlto();
        IMapaX &raiz = root();
        m_ajuste = std::make_unique<Ajuste>();
        const auto fin = qScopeGuard([this] { m_ajuste.reset(); });
        for (const ObjetoPtr &o : m_seleccionados->NewEnum()) {
            // 1.
            limpiar(o);
            // 2.
            if (que == Arriba) {
                o->setY(y);
            } else if (que == Izquierda) {
                o->setX(x);
            } else {
                o->setAncho(ancho);
                o->setAlto(alto);
            }
            // 3.–5.
            raiz.moved(o);
            dibujarNuevo(o);
            validarControl(o);
        }
    });
}

void ContenedorX::distribuirHorizontal()
{
    distribuir(QStringLiteral("ContenedorX.IContenedorX_distribuirHorizontal->"), Eje::Horizontal);
}

void ContenedorX::distribuirVertical()
{
    distribuir(QStringLiteral("ContenedorX.IContenedorX_distribuirVertical->"), Eje::Vertical);
}

void ContenedorX::distribuir(const QString &label, Eje eje)
{
    trap(label, [&] {
        const bool horizontal = eje == Eje::Horizontal;
        const auto posicion = [horizontal](const IObjeto &o) {
            return horizontal ? o.getX() : o.getY();
        };
        const auto largo = [horizontal](const IObjeto &o) {
            return horizontal ? o.getAncho() : o.getAlto();
        };
        // 1.
        if (m_seleccionados->count() <= 2)
            return;
        IMapaX &raiz = root();
        m_ajuste = std::make_unique<Ajuste>();
        const auto fin = qScopeGuard([this] { m_ajuste.reset(); });

        // 2. Extent and total length of the selection, and the selection ordered by position.
        struct Elemento
        {
            ObjetoPtr objeto;
            qint16 posicion;
            qsizetype orden;
        };
        std::vector<Elemento> lista;
        lista.reserve(size_t(m_seleccionados->count()));
        qint64 minLeft = 32000;
        qint64 maxRight = 0;
        qint64 total = 0;
        for (const ObjetoPtr &o : m_seleccionados->NewEnum()) {
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

        // 3.
        const size_t n = lista.size();
        const float gap = float(double(maxRight - minLeft + 1 - total) / double(n - 1));

        // 4. The first stays.
        const ObjetoPtr &primero = lista.front().objeto;
        dibujarNuevo(primero);
        qint64 prevRight = qint64(posicion(*primero)) + largo(*primero) - 1;

        // 5. Each one in between starts gap units after the last unit the previous one covers.
        for (size_t i = 1; i + 1 < n; ++i) {
            const ObjetoPtr &o = lista[i].objeto;
            const qint16 nuevo = toInt16(double(float(prevRight) + gap));
            if (horizontal)
                o->setX(nuevo);
            else
                o->setY(nuevo);
            raiz.moved(o);
            dibujarNuevo(o);
            validarControl(o);
            prevRight = qint64(posicion(*o)) + largo(*o) - 1;
        }

        // 6. The last stays.
        dibujarNuevo(lista.back().objeto);
    });
}

} // namespace tarvonix
