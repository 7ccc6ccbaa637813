// SPDX-License-Identifier: MIT
#include <tarvonix/leg/piernax.h>

#include <tarvonix/core/error.h>
#include <tarvonix/core/int16.h>
#include <tarvonix/leg/geometriaceldas.h>
#include <tarvonix/model/caster.h>
#include <tarvonix/model/color.h>
#include <tarvonix/model/escala.h>
#include <tarvonix/model/imagen.h>
#include <tarvonix/model/objetos.h>
#include <tarvonix/model/pierna.h>
#include <tarvonix/model/ubicacion.h>
#include <tarvonix/platform/colorconversion.h>
#include <tarvonix/platform/errortrap.h>
#include <tarvonix/platform/shiftstate.h>
#include <tarvonix/platform/surface.h>
#include <tarvonix/views/imapax.h>
#include <tarvonix/views/vistax_p.h>
#include <tarvonix/widgets/dummy.h>
#include <tarvonix/widgets/etiquetas.h>

#include <QDragEnterEvent>
#include <QMimeData>
#include <QPointer>

#include <algorithm>
#include <cmath>
#include <functional>

namespace tarvonix {

namespace {

constexpr qint32 blanco = 0xFFFFFF;
constexpr qint32 negro = 0;
// The largest extent a widget can take.
constexpr double extensionMaxima = QWIDGETSIZE_MAX;

// A length of a child control or of the control itself, in whole pixels.
int extension(double valor)
{
    if (!(std::abs(valor) <= extensionMaxima))
        throw Error(Error::Overflow);
    if (valor < 0)
        throw Error(Error::InvalidArgument);
    return int(roundHalfEven(valor));
}

// A position of a child control, in whole pixels.
int posicion(double valor)
{
    if (!(std::abs(valor) <= extensionMaxima))
        throw Error(Error::Overflow);
    return int(roundHalfEven(valor));
}

/*!
    The tier and position that a code names in its last four characters: one
    tier digit and three position digits. Answers false when they are no number.
*/
bool celdaDelCodigo(const QString &codigo, qint16 &fila, qint16 &columna)
{
    bool esNumero = false;
    const int numero = codigo.right(4).toInt(&esNumero);
    if (!esNumero)
        return false;
    fila = qint16(std::floor(numero / 1000.0));
    columna = qint16(numero % 1000);
    return true;
}

} // namespace

struct PiernaX::Private
{
    explicit Private(PiernaX *owner)
        : q(owner)
        , vista(VistaXPrivate::get(owner))
    { }

    //! The bound leg; fails with Error::ObjectNotSet when there is none.
    std::shared_ptr<Pierna> piernaLigada() const;
    GeometriaCeldas geometria() const;
    //! Runs \a paso on every position that holds an object: tier, position, object.
    void porCelda(const std::function<void(int, int, const ObjetoPtr &)> &paso);

    // Layout and drawing
    void validarControl();
    void dibujarEscalas();
    void dibujarUbicaciones();
    void dibujarTodo(double margen, const QRect &expuesto);
    void dibujarCelda(const ObjetoPtr &objeto);
    //! The cell that holds \a objeto, found through its position's code; false when that cell does not hold it.
    bool celdaDe(const Pierna &leg, const ObjetoPtr &objeto, qint16 &t, qint16 &p) const;
    void dibujarObjeto(double x, double y, double ancho, double alto, const ObjetoPtr &objeto);
    void dibujarVacia(double x, double y, double lado);

    // Selection
    //! Keeps the tier and position under the point (\a x, \a y) as the last hit.
    void sobreQuien(double x, double y);
    void selectRectangle(int fila1, int columna1, int fila2, int columna2);

    // The keyboard's elements: every position, tier by tier from the bottom.
    //! The tier and position of element \a i; false outside the leg.
    bool celdaDeElemento(int i, int &t, int &p) const;
    int elementoDeCelda(int t, int p) const;

    // The tier strip
    void escalasClick(int etiqueta, bool derecho);
    void escalasOLEStartDrag();
    void escalasOLEDragDrop(const QMimeData *datos, qint32 *effect, int shift, int etiqueta);

    PiernaX *const q;
    // What the view base keeps for this view: the selection, the press, the band, the frame, the surface.
    VistaXPrivate *const vista;

    std::shared_ptr<Pierna> pierna;
    float escala = 1.0f;

    ObjetoPtr actual;
    qint16 fila = 0; // the tier and position of the last hit
    qint16 columna = 0;

    etiquetas *ubicaciones = nullptr;
    etiquetas *escalas = nullptr;
};

PiernaX::PiernaX(QWidget *parent)
    : VistaX(QStringLiteral("PiernaX"), QStringLiteral("Caja"), parent)
    , d(std::make_unique<Private>(this))
{
    setAutoFillBackground(true);
    QPalette fondo = palette();
    fondo.setColor(QPalette::Window, Qt::white);
    setPalette(fondo);

    QFont fuenteEtiquetas(QStringLiteral("Arial"));
    fuenteEtiquetas.setPointSizeF(8.25);

    d->ubicaciones = new etiquetas(this);
    d->ubicaciones->setObjectName(QStringLiteral("Ubicaciones"));
    d->ubicaciones->setAccessibleName(QStringLiteral("Ubicaciones"));
    d->ubicaciones->setFont(fuenteEtiquetas);
    d->ubicaciones->setGeometry(20, 0, 100, 20);

    d->escalas = new etiquetas(this);
    d->escalas->setObjectName(QStringLiteral("escalas"));
    d->escalas->setAccessibleName(QStringLiteral("Escalas"));
    d->escalas->setSentido(etiquetas::SentidoDown);
    d->escalas->setPrimero(4);
    d->escalas->setPaso(-1);
    d->escalas->setOLEDropMode(etiquetas::OLEDropManual);
    d->escalas->setFont(fuenteEtiquetas);
    d->escalas->setGeometry(0, 0, 20, 84);

    Dummy &caja = d->vista->cajaBanda();
    caja.setBackColor(blanco);
    caja.setBackStyle(BackTransparent);
    caja.setBorderStyle(BorderSingle);

    connect(d->escalas, &etiquetas::Click, this, [this](int etiqueta) { d->escalasClick(etiqueta, false); });
    connect(d->escalas, &etiquetas::RightClick, this,
            [this](int etiqueta) { d->escalasClick(etiqueta, true); });
    connect(d->escalas, &etiquetas::OLEStartDrag, this,
            [this](float, float, int) { d->escalasOLEStartDrag(); });
    connect(d->escalas, &etiquetas::OLEDragDrop, this,
            [this](const QMimeData *datos, qint32 *effect, int, int shift, float, float, int etiqueta) {
                d->escalasOLEDragDrop(datos, effect, shift, etiqueta);
            });
}

PiernaX::~PiernaX() = default;

// ---------------------------------------------------------------------------
// Members reached by name

QString PiernaX::FontName() const
{
    return font().family();
}

void PiernaX::setFontName(const QString &name)
{
    QFont fuente = font();
    fuente.setFamily(name);
    setFont(fuente);
}

qint16 PiernaX::FontSize() const
{
    return qint16(std::lround(font().pointSizeF()));
}

void PiernaX::setFontSize(qint16 size)
{
    if (size <= 0)
        return; // no font has such a size
    QFont fuente = font();
    fuente.setPointSize(size);
    setFont(fuente);
}

void PiernaX::escalaSeleccionada()
{
    // A selection holds tiers or cells, never both: a picked tier gives way to cells.
    if (getSeleccionados()->count() > 0) {
        const ObjetoPtr primero = getSeleccionados()->Item(1);
        if (primero && primero->getTipo() == QLatin1String("E"))
            getSeleccionados()->clear();
    }
}

// ---------------------------------------------------------------------------
// Helpers

std::shared_ptr<Pierna> PiernaX::Private::piernaLigada() const
{
    if (!pierna)
        throw Error(Error::ObjectNotSet);
    return pierna;
}

void PiernaX::Private::porCelda(const std::function<void(int, int, const ObjetoPtr &)> &paso)
{
    // Tier by tier from the bottom, position by position from the left; empty positions are passed over.
    const auto leg = piernaLigada();
    const qint16 filas = leg->getFilas();
    for (int t = 1; t <= filas; ++t) {
        const qint16 largo = leg->getLargo(qint16(t));
        for (int p = 1; p <= largo; ++p) {
            if (const ObjetoPtr objeto = leg->getObjeto(qint16(t), qint16(p)))
                paso(t, p, objeto);
        }
    }
}

GeometriaCeldas PiernaX::Private::geometria() const
{
    return GeometriaCeldas(q->height(), escala, piernaLigada()->getClasica());
}

// ---------------------------------------------------------------------------
// IContenedorX

void PiernaX::setObjeto(const ObjetoPtr &objeto)
{
    d->pierna = Caster::toPierna(objeto);
    d->validarControl();
    update();
}

ObjetoPtr PiernaX::getObjeto()
{
    return d->pierna;
}

void PiernaX::redibujarObjeto(const ObjetoPtr &objeto)
{
    if (objeto->getForma() != FormaNinguna)
        d->dibujarCelda(objeto);
}

void PiernaX::refrescar()
{
    d->validarControl();
    update();
}

void PiernaX::setEscala(float escala)
{
    d->escala = escala;
    d->validarControl();
    update();
}

void PiernaX::seleccionarTodos()
{
    trap(QStringLiteral("PiernaX.IContenedorX_seleccionarTodos->"), [this] {
        escalaSeleccionada();
        d->porCelda([this](int, int, const ObjetoPtr &objeto) {
            if (!objeto->getSeleccionado()) {
                d->vista->seleccionarObjeto(objeto);
                d->dibujarCelda(objeto);
            }
        });
    });
}

ObjetoPtr PiernaX::localizar(const QString &codigo)
{
    // A placed object by its own code or by the code of the position it stands on.
    ObjetoPtr encontrado;
    trapSilently([&] {
        const auto leg = d->piernaLigada();
        d->porCelda([&](int t, int p, const ObjetoPtr &objeto) {
            if (!encontrado
                && (objeto->getCodigo().compare(codigo, Qt::CaseInsensitive) == 0
                    || leg->getUbicacion(qint16(t), qint16(p))->getCodigo().compare(codigo, Qt::CaseInsensitive) == 0))
                encontrado = objeto;
        });
    });
    return encontrado;
}

QRect PiernaX::areaDe(const ObjetoPtr &objeto)
{
    QRect area;
    trapSilently([&] {
        d->porCelda([&](int t, int p, const ObjetoPtr &enCelda) {
            if (enCelda == objeto)
                area = d->geometria().celda(t, p).normalized().toAlignedRect();
        });
    });
    return area;
}

void PiernaX::seleccionar(const QString &codigo)
{
    trap(QStringLiteral("PiernaX.IContenedorX_seleccionar->"), [&] {
        qint16 fila = 0;
        qint16 columna = 0;
        if (!celdaDelCodigo(codigo, fila, columna))
            throw Error(Error::TypeMismatch);
        const ObjetoPtr objeto = d->piernaLigada()->getObjeto(fila, columna);
        if (!objeto)
            return;
        escalaSeleccionada();
        if (!objeto->getSeleccionado()) {
            d->vista->seleccionarObjeto(objeto);
            d->dibujarCelda(objeto);
        }
    });
}

// ---------------------------------------------------------------------------
// Layout

void PiernaX::Private::validarControl()
{
    trap(QStringLiteral("PiernaX.validarControl->"), [this] {
        // The leg's size and the cell geometry.
        const auto leg = piernaLigada();
        const qint16 filas = leg->getFilas();
        const qint16 largo = leg->getLargo(1);
        const GeometriaCeldas g = geometria();
        // Wide enough for the first tier, high enough for every tier and the position strip.
        const int ancho = extension(g.anchoControl(filas, largo));
        const int alto = extension(g.altoControl(filas));
        // Take the size, and let the frame adapt its scroll bars.
        q->resize(ancho, alto);
        vista->frameResize();
        // The strips follow the grid.
        dibujarEscalas();
        dibujarUbicaciones();
    });
}

void PiernaX::Private::dibujarEscalas()
{
    trap(QStringLiteral("PiernaX.dibujarEscalas->"), [this] {
        const qint16 filas = piernaLigada()->getFilas();
        const GeometriaCeldas g = geometria();
        // Its top at the top of the highest tier.
        escalas->move(escalas->x(), posicion(g.y(filas)));
        // Counting down (its step is -1), so that the top label reads filas and the bottom one 1.
        escalas->setPrimero(filas);
        // Its label pitch is the tier pitch.
        escalas->setSeparacion(float(g.ladoCelda() - g.solape()));
        // One label per tier.
        escalas->resize(escalas->width(), extension((double(escalas->Separacion()) + 1) * filas));
        escalas->update();
    });
}

void PiernaX::Private::dibujarUbicaciones()
{
    trap(QStringLiteral("PiernaX.dibujarUbicaciones->"), [this] {
        const qint16 largo = piernaLigada()->getLargo(1);
        const GeometriaCeldas g = geometria();
        // Along the bottom edge, from the left margin.
        ubicaciones->move(qRound(GeometriaCeldas::margen), q->height() - ubicaciones->height() - 1);
        // Its label pitch is the position pitch.
        ubicaciones->setSeparacion(float(g.ladoCelda()));
        // One label per position of the first tier.
        ubicaciones->resize(extension((double(ubicaciones->Separacion()) + 1) * largo),
                            ubicaciones->height());
        ubicaciones->update();
    });
}

// ---------------------------------------------------------------------------
// Drawing

void PiernaX::pintar(QPainter &, const QRect &expuesto)
{
    d->vista->surface.setBackColor(fromQColor(palette().color(backgroundRole())));
    trap(QStringLiteral("PiernaX.dibujarTodo->"), [&] { d->dibujarTodo(GeometriaCeldas::margen, expuesto); });
}

void PiernaX::Private::dibujarTodo(double margen, const QRect &expuesto)
{
    // The geometry and the leg's shape.
    const auto leg = piernaLigada();
    const GeometriaCeldas g = geometria();
    const double lado = g.ladoCelda();
    const bool clasica = leg->getClasica();
    const qint16 filas = leg->getFilas();
    const qint16 linea = leg->getLinea();
    qint16 maxLargo = 0;

    // Cells wholly outside the exposed rectangle are left out; what is drawn is drawn in full.
    const bool recortar = lado > 0 && std::isfinite(lado);
    const QRectF zona = QRectF(expuesto).adjusted(-2, -2, 2, 2);

    // With cells that advance, only the tiers and positions that can reach into the zone are looked at;
    // each is still tested, so what is drawn does not depend on the rounding here.
    const bool saltar = recortar && g.pasoFila() > 0 && g.pasoColumna() > 0;
    const auto entero = [](double valor) {
        return qint64(std::clamp(valor, -1.0e6, 1.0e6));
    };
    const qint64 alto = q->height();
    int filaDesde = 1;
    int filaHasta = filas;
    if (saltar) {
        filaDesde = int(std::max<qint64>(1, entero(std::floor((alto - 21 - lado - zona.bottom()) / g.pasoFila()))));
        filaHasta = int(std::min<qint64>(filas, entero(std::ceil((alto - 21 - zona.top()) / g.pasoFila())) + 2));
    }

    // Tier by tier from the bottom, position by position from the left.
    for (int t = filaDesde; t <= filaHasta; ++t) {
        const double y = g.y(t);
        const qint16 largo = leg->getLargo(qint16(t));
        if (!recortar || (y < zona.bottom() && y + lado > zona.top())) {
            int columnaDesde = 1;
            int columnaHasta = largo;
            if (saltar) {
                const double x1 = g.x(t, 1);
                columnaDesde = int(std::max<qint64>(1, entero(std::floor((zona.left() - lado - x1) / g.pasoColumna()))));
                columnaHasta = int(std::min<qint64>(largo, entero(std::ceil((zona.right() - x1) / g.pasoColumna())) + 2));
            }
            for (int p = columnaDesde; p <= columnaHasta; ++p) {
                const double x = g.x(t, p);
                if (recortar && !(x < zona.right() && x + lado > zona.left()))
                    continue;
                const ObjetoPtr objeto = leg->getObjeto(qint16(t), qint16(p));
                if (!objeto)
                    dibujarVacia(x, y, lado);
                else
                    dibujarObjeto(x, y, lado, lado, objeto);
            }
        }
    }
    for (int t = 1; t <= filas; ++t)
        maxLargo = std::max(maxLargo, leg->getLargo(qint16(t)));

    // A line in front of every group of linea positions, in the plain arrangement only.
    if (!clasica && linea > 0) {
        const double abajo = q->height() - 21;
        const double arriba = g.y(filas) - 1;
        for (qint64 p = qint64(linea) + 1; p <= maxLargo; p += linea) {
            const double x = margen + double(p - 1) * (lado + 1);
            vista->surface.line(x, abajo, x, arriba);
        }
    }
}

void PiernaX::Private::dibujarCelda(const ObjetoPtr &objeto)
{
    trap(QStringLiteral("PiernaX.dibujarTodo->"), [&] {
        if (!objeto)
            throw Error(Error::ObjectNotSet);
        qint16 filaPadre = 0;
        qint16 columnaPadre = 0;
        if (celdaDe(*piernaLigada(), objeto, filaPadre, columnaPadre)) {
            const QRectF celda = geometria().celda(filaPadre, columnaPadre).normalized();
            q->update(celda.toAlignedRect().adjusted(-1, -1, 1, 1));
            return;
        }
        // A parent code that is not the object's position does not lead to its cell: repaint the grid.
        q->update();
    });
}

bool PiernaX::Private::celdaDe(const Pierna &leg, const ObjetoPtr &objeto, qint16 &t, qint16 &p) const
{
    // A position's code is the leg's first six characters and tier * 1000 + position, wrapped to 16
    // bits: every value the number may stand for, and every split of it into a tier and a position
    // of at most 32767, is tried against what the leg holds there.
    const QString padre = objeto->getPadre();
    const QString prefijo = leg.getCodigo().left(6);
    if (!padre.startsWith(prefijo))
        return false;
    bool esNumero = false;
    const int numero = QStringView(padre).mid(prefijo.size()).toInt(&esNumero);
    if (!esNumero || numero < -32768 || numero > 32767)
        return false;
    const qint64 filas = leg.getFilas();
    const qint64 maximo = filas * 1000 + 32767;
    for (qint64 valor = quint16(qint16(numero)); valor <= maximo; valor += 65536) {
        const qint64 desde = std::max<qint64>(1, (valor - 32767 + 999) / 1000);
        for (qint64 tier = std::min(filas, valor / 1000); tier >= desde; --tier) {
            const qint64 lugar = valor - tier * 1000;
            const std::shared_ptr<Escala> nivel = leg.getEscala(qint16(tier));
            if (!nivel || lugar < 1 || lugar > nivel->getLargo())
                continue;
            if (leg.getObjeto(qint16(tier), qint16(lugar)) == objeto) {
                t = qint16(tier);
                p = qint16(lugar);
                return true;
            }
        }
    }
    return false;
}

void PiernaX::Private::dibujarVacia(double x, double y, double lado)
{
    // A circle with a plus, in the current fore colour.
    vista->surface.circle(x + lado / 2, y + lado / 2, lado / 2);
    vista->surface.line(x + lado / 4, y + lado / 2, x + 3 * lado / 4 + 1, y + lado / 2);
    vista->surface.line(x + lado / 2, y + lado / 4, x + lado / 2, y + 3 * lado / 4 + 1);
}

void PiernaX::Private::dibujarObjeto(double x, double y, double ancho, double alto, const ObjetoPtr &objeto)
{
    trap(QStringLiteral("PiernaX.dibujarObjeto->"), [&] {
        if (!objeto)
            throw Error(Error::ObjectNotSet);
        const bool activo = objeto->getActivo();
        const bool seleccionado = objeto->getSeleccionado();
        const qint16 forma = objeto->getForma();
        const std::shared_ptr<Imagen> imagen = objeto->getImagen();
        const qint32 color = objeto->getColor();
        const QString tip = objeto->getTip();
        const qint32 fondo = vista->surface.backColor();

        // Erase the cell to the background, unless a plain box covers every
        // pixel of it anyway: a solid fill inside a solid outline.
        const bool cubierto = !imagen && forma == FormaCaja && !seleccionado && !activo && ancho > 0 && alto > 0;
        vista->surface.setFillStyle(Surface::FillSolid);
        vista->surface.setFillColor(fondo);
        vista->surface.setForeColor(fondo);
        if (!imagen && forma == FormaCirculo) {
            const double r = ancho / 2 - 1;
            vista->surface.circle(x + r, y + r, r);
        } else if (!cubierto) {
            vista->surface.box(x, y, x + ancho - 1, y + alto - 1);
        }

        qint32 colorTexto = negro;
        if (!imagen) {
            // The body in the object's colour; hatched when selected, in black on white.
            vista->surface.setFillStyle(seleccionado ? Surface::FillUpwardDiagonal : Surface::FillSolid);
            vista->surface.setFillColor(seleccionado && color == blanco ? negro : color);
            vista->surface.setForeColor(color);
            if (forma == FormaCaja) {
                vista->surface.box(x + 1, y + 1, x + ancho - 2, y + alto - 2);
            } else if (forma == FormaCirculo) {
                const double r = ancho / 2 - 2;
                vista->surface.circle(x + r + 1, y + r + 1, r);
            }
            if (!seleccionado)
                colorTexto = Color::esColorClaro(color) ? negro : blanco;
        } else {
            // The picture, hatched over in black when selected.
            const QImage dibujo = imagen->getHandler();
            if (!dibujo.isNull())
                vista->surface.paintPicture(dibujo, x, y, ancho, alto);
            if (seleccionado) {
                vista->surface.setFillStyle(Surface::FillUpwardDiagonal);
                vista->surface.setFillColor(negro);
                if (forma == FormaCaja) {
                    vista->surface.box(x + 1, y + 1, x + ancho - 2, y + alto - 2);
                } else if (forma == FormaCirculo) {
                    const double r = ancho / 2 - 2;
                    vista->surface.circle(x + r + 1, y + r + 1, r);
                }
            }
        }
        vista->surface.setForeColor(colorTexto);

        // The tip, centred both ways when it fits.
        vista->surface.setFillStyle(Surface::FillTransparent);
        q->printX(tip, float(x), float(y), float(ancho), float(alto), 0);

        // The outline: dotted for the active object.
        vista->surface.setForeColor(negro);
        vista->surface.setDrawStyle(activo ? Surface::DrawDot : Surface::DrawSolid);
        if (forma == FormaCaja) {
            vista->surface.box(x, y, x + ancho - 1, y + alto - 1);
        } else if (forma == FormaCirculo) {
            const double r = ancho / 2 - 1;
            vista->surface.circle(x + r, y + r, r);
        }
        vista->surface.setDrawStyle(Surface::DrawSolid);
    });
}

void PiernaX::printX(const QString &texto, float margenx, float margeny, float ancho, float alto,
                     qint16 posicion)
{
    trap(QStringLiteral("PiernaX.printX->"), [&] {
        Surface &s = d->vista->surface;
        // The room inside the box's border and the text's size.
        const QRectF libre(double(margenx) + 1, double(margeny) + 1, double(ancho) - 2, double(alto) - 2);
        const QSizeF tamano(s.textWidth(texto), s.textHeight(texto));
        // Text that does not fit is left out, not clipped.
        if (tamano.width() > libre.width() || tamano.height() > libre.height())
            return;
        d->vista->colocarTexto(posicion & 3, int(std::floor(posicion / 4.0)), libre, tamano);
        s.print(texto);
    });
}

// ---------------------------------------------------------------------------
// Selection

void PiernaX::Private::sobreQuien(double x, double y)
{
    // A point that cannot be placed is outside the positions, not the cell found last time.
    fila = 0;
    columna = 0;
    trap(QStringLiteral("PiernaX.sobreQuien->"), [&] {
        const GeometriaCeldas::Celda celda = geometria().sobre(x, y);
        fila = celda.fila;
        columna = celda.columna;
    });
}

void PiernaX::Private::selectRectangle(int fila1, int columna1, int fila2, int columna2)
{
    trap(QStringLiteral("PiernaX.selectRectangle->"), [&] {
        q->escalaSeleccionada();
        const auto leg = piernaLigada();
        const int pasoFila = fila1 > fila2 ? -1 : 1;
        const int pasoColumna = columna1 > columna2 ? -1 : 1;
        // Neither empty cells nor objects already selected are looked for: either ends the selection here.
        for (int t = fila1;; t += pasoFila) {
            for (int p = columna1;; p += pasoColumna) {
                const ObjetoPtr objeto = leg->getObjeto(qint16(t), qint16(p));
                vista->seleccionarObjeto(objeto);
                dibujarCelda(objeto);
                if (p == columna2)
                    break;
            }
            if (t == fila2)
                break;
        }
    });
}

// ---------------------------------------------------------------------------
// Gestures

void PiernaX::mouseDoubleClickEvent(QMouseEvent *)
{
    // The second press of a double click is no new press; its release is handled as usual.
}

void PiernaX::MouseDown(int button, int shift, QPointF punto)
{
    // What was current and hit before this press.
    const ObjetoPtr anterior = d->actual;
    const qint16 filaAnterior = d->fila;
    const qint16 columnaAnterior = d->columna;
    // A picked tier gives way; find the cell.
    escalaSeleccionada();
    d->sobreQuien(punto.x(), punto.y());
    const auto leg = d->piernaLigada();
    if (leg->esUbicacion(d->fila, d->columna)) {
        d->actual = leg->getObjeto(d->fila, d->columna);
        if (!d->actual) {
            // An empty position: its position object becomes active.
            d->vista->unselectAll();
            d->vista->frameSetActive(leg->getUbicacion(d->fila, d->columna));
        } else {
            // By the shift state, compared as an exact value.
            if (shift == CtrlMask || (shift == ShiftMask && button == RightButton)) {
                // The selection stays as it is.
            } else if (shift == ShiftMask) {
                if (anterior) {
                    d->vista->unselectAll();
                    d->selectRectangle(filaAnterior, columnaAnterior, d->fila, d->columna);
                }
            } else if (d->actual->getCodigo() == leg->getCodigo()) {
                d->vista->unselectAll();
            } else if (!d->actual->getSeleccionado()) {
                // A press on a selected object keeps the whole selection, so that a group can be dragged.
                d->vista->unselectAll();
                d->vista->seleccionarObjeto(d->actual);
            }
            d->actual = d->vista->frameSetActive(d->actual);
        }
    } else {
        // Outside the positions: the leg itself becomes active.
        d->actual = nullptr;
        d->vista->unselectAll();
        d->pierna = Caster::toPierna(d->vista->frameSetActive(leg));
    }
}

void PiernaX::MouseMove(int, QPointF punto)
{
    // Pressed on nothing: a rubber band; on an object: drag the selection out.
    if (!d->actual)
        d->vista->seguirBanda(punto);
    else if (d->vista->tomarPulsacion(punto))
        d->vista->arrastrar(d->vista->frameName());
}

void PiernaX::soltarBanda(const QRect &rect)
{
    escalaSeleccionada();
    // Toggle every object whose cell lies wholly inside; the rest of the selection stays.
    const QRectF banda(rect);
    const GeometriaCeldas g = d->geometria();
    d->porCelda([&](int t, int p, const ObjetoPtr &objeto) {
        if (g.enBanda(t, p, banda)) {
            d->vista->alternar(objeto);
            d->dibujarCelda(objeto);
        }
    });
}

void PiernaX::soltarClick(int button, int shift, QPointF punto)
{
    escalaSeleccionada();
    d->sobreQuien(punto.x(), punto.y());
    const auto leg = d->piernaLigada();
    if (leg->esUbicacion(d->fila, d->columna)) {
        const ObjetoPtr objeto = leg->getObjeto(d->fila, d->columna);
        if (objeto) {
            // A position with an object.
            d->actual = objeto;
            // Ctrl toggles; the frame's answer to setActive redraws the cell.
            if (shift == CtrlMask && button != RightButton && d->actual->getCodigo() != leg->getCodigo())
                d->vista->alternar(d->actual);
            // A plain click inside a group, without a drag, narrows the selection.
            if (shift != ShiftMask && shift != CtrlMask && button == LeftButton
                && getSeleccionados()->count() > 1) {
                d->vista->unselectAll();
                d->vista->seleccionarObjeto(d->actual);
            }
            d->actual = d->vista->frameSetActive(d->actual);
            const bool multi = shift == CtrlMask || getSeleccionados()->count() >= 2;
            if (button == LeftButton)
                d->vista->raiz().clicked(d->actual, multi);
            else if (button == RightButton)
                d->vista->raiz().rightClicked(d->actual, multi);
        } else {
            // An empty position: its position object stands in, always reported as multi.
            const ObjetoPtr ubicacion = leg->getUbicacion(d->fila, d->columna);
            d->vista->frameSetActive(ubicacion);
            if (button == LeftButton)
                d->vista->raiz().clicked(ubicacion, true);
            else if (button == RightButton)
                d->vista->raiz().rightClicked(ubicacion, true);
        }
    } else {
        // Outside the positions: the leg.
        d->actual = nullptr;
        d->vista->frameSetActive(leg);
        if (button == LeftButton)
            d->vista->raiz().clicked(leg, false);
        else if (button == RightButton)
            d->vista->raiz().rightClicked(leg, false);
    }
}

// ---------------------------------------------------------------------------
// Drag and drop

void PiernaX::dragEnterEvent(QDragEnterEvent *event)
{
    // Taken whatever it carries, so that a refused drag does not fall through to the frame;
    // the move event that always follows decides.
    event->setDropAction(Qt::IgnoreAction);
    event->accept();
}

void PiernaX::dragOver(int shift, QPointF, Qt::DropAction &efecto)
{
    // Nothing moves in a grid: Shift refuses.
    efecto = shift == ShiftMask ? Qt::IgnoreAction : Qt::CopyAction;
}

void PiernaX::dragDrop(const QString &texto, int shift, QPointF punto, Qt::DropAction &efecto)
{
    if (shift == ShiftMask) {
        efecto = Qt::IgnoreAction;
        return;
    }
    efecto = Qt::CopyAction;
    d->sobreQuien(punto.x(), punto.y());
    const auto leg = d->piernaLigada();
    // The object of the cell, else its position, else the leg.
    ObjetoPtr destino;
    if (leg->esUbicacion(d->fila, d->columna)) {
        destino = leg->getObjeto(d->fila, d->columna);
        if (!destino)
            destino = leg->getUbicacion(d->fila, d->columna);
    } else {
        destino = leg;
    }
    d->vista->raiz().droped(texto, destino, shift);
    d->escalas->update();
}

// ---------------------------------------------------------------------------
// The tier strip

void PiernaX::Private::escalasClick(int etiqueta, bool derecho)
{
    const QString label = derecho ? QStringLiteral("PiernaX.escalas.RightClick->")
                                  : QStringLiteral("PiernaX.escalas.Click->");
    trap(label, [&] {
        // The top slot is the highest tier. A tier alone makes the selection, its flag untouched.
        const auto leg = piernaLigada();
        actual = leg->getEscala(toInt16(qint64(leg->getFilas()) - etiqueta + 1));
        vista->unselectAll();
        q->getSeleccionados()->add(actual);
        actual = vista->frameSetActive(actual);
        if (derecho)
            vista->raiz().rightClicked(actual, false);
        else
            vista->raiz().clicked(actual, false);
    });
}

void PiernaX::Private::escalasOLEStartDrag()
{
    trap(QStringLiteral("PiernaX.escalas.OLEStartDrag->"), [this] {
        if (actual)
            vista->arrastrar(vista->frameName());
    });
}

void PiernaX::Private::escalasOLEDragDrop(const QMimeData *datos, qint32 *effect, int shift, int etiqueta)
{
    qint32 ninguno = 0;
    qint32 &efecto = effect ? *effect : ninguno;
    trap(QStringLiteral("PiernaX.escalas.OLEDragDrop->"), [&] {
        if (!datos || !datos->hasText()) {
            efecto = 0;
            return;
        }
        // Refused until the drop has found its tier: a failure on the way (no leg) does not copy.
        efecto = 0;
        if (shift == ShiftMask)
            return;
        const QString origen = datos->text();
        const auto leg = piernaLigada();
        const ObjetoPtr destino = leg->getEscala(toInt16(qint64(leg->getFilas()) - etiqueta + 1));
        efecto = 1;
        const QPointer<etiquetas> tira(escalas); // the host may close the frame, the strip with it
        if (destino)
            vista->raiz().droped(origen, destino, shift);
        if (tira)
            tira->update();
    });
}

// ---------------------------------------------------------------------------
// The keyboard's elements

bool PiernaX::Private::celdaDeElemento(int i, int &t, int &p) const
{
    if (!pierna || i < 0)
        return false;
    for (t = 1; t <= pierna->getFilas(); ++t) {
        const int largo = std::max<int>(0, pierna->getLargo(qint16(t)));
        if (i < largo) {
            p = i + 1;
            return true;
        }
        i -= largo;
    }
    return false;
}

int PiernaX::Private::elementoDeCelda(int t, int p) const
{
    int i = p - 1;
    for (int debajo = 1; debajo < t; ++debajo)
        i += std::max<int>(0, pierna->getLargo(qint16(debajo)));
    return i;
}

int PiernaX::elementos()
{
    int t = 0;
    int p = 0;
    int n = 0;
    while (d->celdaDeElemento(n, t, p))
        n += d->pierna->getLargo(qint16(t));
    return n;
}

ObjetoPtr PiernaX::elemento(int i)
{
    int t = 0;
    int p = 0;
    if (!d->celdaDeElemento(i, t, p))
        return nullptr;
    const ObjetoPtr objeto = d->pierna->getObjeto(qint16(t), qint16(p));
    return objeto ? objeto : d->pierna->getUbicacion(qint16(t), qint16(p));
}

QRectF PiernaX::zonaElemento(int i)
{
    int t = 0;
    int p = 0;
    return d->celdaDeElemento(i, t, p) ? d->geometria().celda(t, p).normalized() : QRectF();
}

int PiernaX::vecino(int i, int dx, int dy)
{
    int t = 0;
    int p = 0;
    if (!d->celdaDeElemento(i, t, p))
        return i;
    // Up is the tier above; a shorter tier is entered at its last position.
    const int fila = t - dy;
    const int columna = p + dx;
    if (fila < 1 || fila > d->pierna->getFilas())
        return i;
    const int largo = d->pierna->getLargo(qint16(fila));
    if (largo < 1 || columna < 1 || (dy == 0 && columna > largo))
        return i;
    return d->elementoDeCelda(fila, std::min(columna, largo));
}

int PiernaX::indiceDe(const ObjetoPtr &objeto)
{
    qint16 t = 0;
    qint16 p = 0;
    if (!objeto || !d->pierna || !d->celdaDe(*d->pierna, objeto, t, p))
        return -1;
    return d->elementoDeCelda(t, p);
}

void PiernaX::pulsarElemento(int i, int shift)
{
    int t = 0;
    int p = 0;
    if (!d->celdaDeElemento(i, t, p))
        return;
    // As a click there: a picked tier gives way, the cell becomes the last hit.
    escalaSeleccionada();
    d->fila = qint16(t);
    d->columna = qint16(p);
    d->actual = d->pierna->getObjeto(d->fila, d->columna);
    if (d->actual) {
        VistaX::pulsarElemento(i, shift);
    } else if (shift == 0) {
        // An empty position: its position object stands in, always reported as several.
        const ObjetoPtr ubicacion = d->pierna->getUbicacion(d->fila, d->columna);
        d->vista->unselectAll();
        d->vista->frameSetActive(ubicacion);
        d->vista->raiz().clicked(ubicacion, true);
    }
}

} // namespace tarvonix
