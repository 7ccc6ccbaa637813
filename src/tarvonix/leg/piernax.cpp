#include <tarvonix/leg/piernax.h>

#include <tarvonix/widgets/dummy.h>
#include <tarvonix/widgets/etiquetas.h>
#include <tarvonix/leg/geometriaceldas.h>
#include <tarvonix/views/imapax.h>
#include <tarvonix/model/caster.h>
#include <tarvonix/model/color.h>
#include <tarvonix/model/escala.h>
#include <tarvonix/model/imagen.h>
#include <tarvonix/model/objetos.h>
#include <tarvonix/model/pierna.h>
#include <tarvonix/model/ubicacion.h>
#include <tarvonix/platform/colorconversion.h>
#include <tarvonix/platform/dragrunner.h>
#include <tarvonix/core/error.h>
#include <tarvonix/platform/errortrap.h>
#include <tarvonix/core/int16.h>
#include <tarvonix/platform/latebinding.h>
#include <tarvonix/platform/shiftstate.h>

#include <QDrag>
#include <QDragEnterEvent>
#include <QDragMoveEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QPointer>

#include <cmath>

namespace tarvonix {

namespace {

constexpr qint32 blanco = 0xFFFFFF;
constexpr qint32 negro = 0;
// A press turns into a band or a drag once the pointer is more than this far (squared) from it.
constexpr double radioArrastre2 = 25;
// How near the viewport's edges a drag scrolls the frame.
constexpr double bordeDesplazamiento = 40;
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

PiernaX::PiernaX(QWidget *parent)
    : VistaX(parent)
    , m_seleccionados(std::make_shared<Objetos>())
    , m_ubicaciones(new etiquetas(this))
    , m_escalas(new etiquetas(this))
    , m_caja(new Dummy(this))
{
    setAutoFillBackground(true);
    QPalette fondo = palette();
    fondo.setColor(QPalette::Window, Qt::white);
    setPalette(fondo);
    setAcceptDrops(true);
    m_surface.setFont(font());

    QFont fuenteEtiquetas(QStringLiteral("Arial"));
    fuenteEtiquetas.setPointSizeF(8.25);

    m_ubicaciones->setObjectName(QStringLiteral("Ubicaciones"));
    m_ubicaciones->setFont(fuenteEtiquetas);
    m_ubicaciones->setGeometry(20, 0, 100, 20);

    m_escalas->setObjectName(QStringLiteral("escalas"));
    m_escalas->setSentido(1);
    m_escalas->setPrimero(4);
    m_escalas->setPaso(-1);
    m_escalas->setOLEDropMode(1);
    m_escalas->setFont(fuenteEtiquetas);
    m_escalas->setGeometry(0, 0, 20, 84);

    m_caja->setObjectName(QStringLiteral("Caja"));
    m_caja->setBackColor(blanco);
    m_caja->setBackStyle(0);
    m_caja->setBorderStyle(1);
    m_caja->hide();

    connect(m_escalas, &etiquetas::Click, this, [this](int etiqueta) { escalasClick(etiqueta, false); });
    connect(m_escalas, &etiquetas::RightClick, this, [this](int etiqueta) { escalasClick(etiqueta, true); });
    connect(m_escalas, &etiquetas::OLEStartDrag, this, [this](float, float, int) { escalasOLEStartDrag(); });
    connect(m_escalas, &etiquetas::OLEDragDrop, this,
            [this](const QMimeData *datos, qint32 *effect, int button, int shift, float, float,
                   int etiqueta) { escalasOLEDragDrop(datos, effect, button, shift, etiqueta); });
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
    if (m_seleccionados->count() > 0) {
        const ObjetoPtr primero = m_seleccionados->Item(1);
        if (primero && primero->getTipo() == QLatin1String("E"))
            m_seleccionados->clear();
    }
}

// ---------------------------------------------------------------------------
// Helpers

std::shared_ptr<Pierna> PiernaX::pierna() const
{
    if (!m_pierna)
        throw Error(Error::ObjectNotSet);
    return m_pierna;
}

GeometriaCeldas PiernaX::geometria() const
{
    return GeometriaCeldas(height(), m_escala, pierna()->getClasica());
}

QWidget *PiernaX::contenedor() const
{
    QWidget *frame = parentWidget();
    if (!frame)
        throw Error(Error::ObjectNotSet);
    return frame;
}

IMapaX &PiernaX::root() const
{
    if (!m_root)
        throw Error(Error::ObjectNotSet);
    return *m_root;
}

ObjetoPtr PiernaX::activarEnContenedor(const ObjetoPtr &objeto)
{
    // The frame answers with the object it made active, normally the one given.
    return LateBinding::call(contenedor(), QStringLiteral("setActive"), { QVariant::fromValue(objeto) })
        .value<ObjetoPtr>();
}

void PiernaX::recortarControles(bool)
{
    // Children are always clipped in Qt; the band and the drag need nothing switched.
}

// ---------------------------------------------------------------------------
// IContenedorX

void PiernaX::setObjeto(const ObjetoPtr &objeto)
{
    m_pierna = Caster::toPierna(objeto);
    validarControl();
    update();
}

ObjetoPtr PiernaX::getObjeto()
{
    return m_pierna;
}

void PiernaX::setRoot(IMapaX *root)
{
    m_root = root;
}

void PiernaX::setActivo(const ObjetoPtr &objeto, bool valor)
{
    trap(QStringLiteral("PiernaX.IContenedorX_setActivo->"), [&] {
        // A frame that activates or deactivates itself passes no object: nothing to mark.
        if (!objeto)
            return;
        // The leg itself has no cell to mark.
        if (objeto->getCodigo() != pierna()->getCodigo()) {
            objeto->setActivo(valor);
            if (objeto->getForma() != FormaNinguna)
                dibujarCelda(objeto);
        }
    });
}

std::shared_ptr<Objetos> PiernaX::getSeleccionados()
{
    return m_seleccionados;
}

void PiernaX::refrescar()
{
    validarControl();
    update();
}

void PiernaX::setEscala(float escala)
{
    m_escala = escala;
    validarControl();
    update();
}

void PiernaX::setBloqueo(bool) { }

void PiernaX::alinearHorizontal(const ObjetoPtr &) { }

void PiernaX::alinearVertical(const ObjetoPtr &) { }

void PiernaX::igualarDimension(const ObjetoPtr &) { }

void PiernaX::distribuirHorizontal() { }

void PiernaX::distribuirVertical() { }

void PiernaX::seleccionarTodos()
{
    trap(QStringLiteral("PiernaX.IContenedorX_seleccionarTodos->"), [this] {
        escalaSeleccionada();
        const auto leg = pierna();
        const qint16 filas = leg->getFilas();
        for (int t = 1; t <= filas; ++t) {
            const qint16 largo = leg->getLargo(qint16(t));
            for (int p = 1; p <= largo; ++p) {
                const ObjetoPtr objeto = leg->getObjeto(qint16(t), qint16(p));
                if (objeto && !objeto->getSeleccionado()) {
                    seleccionarObjeto(objeto);
                    dibujarCelda(objeto);
                }
            }
        }
    });
}

void PiernaX::deseleccionarTodos()
{
    unselectAll();
}

void PiernaX::seleccionar(const QString &codigo)
{
    trap(QStringLiteral("PiernaX.IContenedorX_seleccionar->"), [&] {
        qint16 fila = 0;
        qint16 columna = 0;
        if (!celdaDelCodigo(codigo, fila, columna))
            throw Error(Error::TypeMismatch);
        const ObjetoPtr objeto = pierna()->getObjeto(fila, columna);
        if (!objeto)
            return;
        escalaSeleccionada();
        if (!objeto->getSeleccionado()) {
            seleccionarObjeto(objeto);
            dibujarCelda(objeto);
        }
    });
}

// ---------------------------------------------------------------------------
// Layout

void PiernaX::validarControl()
{
    trap(QStringLiteral("PiernaX.validarControl->"), [this] {
        // 1. The leg's size and the cell geometry.
        const auto leg = pierna();
        const qint16 filas = leg->getFilas();
        const qint16 largo = leg->getLargo(1);
        const GeometriaCeldas g = geometria();
        // 2.-3. Wide enough for the first tier, high enough for every tier and the position strip.
        const int ancho = extension(g.anchoControl(filas, largo));
        const int alto = extension(g.altoControl(filas));
        // 4. Take the size, and let the frame adapt its scroll bars.
        resize(ancho, alto);
        LateBinding::call(contenedor(), QStringLiteral("Resize"), { QVariant::fromValue<QWidget *>(this) });
        // 5. The strips follow the grid.
        dibujarEscalas();
        dibujarUbicaciones();
    });
}

void PiernaX::dibujarEscalas()
{
    trap(QStringLiteral("PiernaX.dibujarEscalas->"), [this] {
        const qint16 filas = pierna()->getFilas();
        const GeometriaCeldas g = geometria();
        // 1. Its top at the top of the highest tier.
        m_escalas->move(m_escalas->x(), posicion(g.y(filas)));
        // 2. Counting down (its step is -1), so that the top label reads filas and the bottom one 1.
        m_escalas->setPrimero(filas);
        // 3. Its label pitch is the tier pitch.
        m_escalas->setSeparacion(float(g.ladoCelda() - g.solape()));
        // 4. One label per tier.
        m_escalas->resize(m_escalas->width(), extension((double(m_escalas->Separacion()) + 1) * filas));
        m_escalas->update();
    });
}

void PiernaX::dibujarUbicaciones()
{
    trap(QStringLiteral("PiernaX.dibujarUbicaciones->"), [this] {
        const qint16 largo = pierna()->getLargo(1);
        const GeometriaCeldas g = geometria();
        // 1.-2. Along the bottom edge, from the left margin.
        m_ubicaciones->move(qRound(GeometriaCeldas::margen), height() - m_ubicaciones->height() - 1);
        // 3. Its label pitch is the position pitch.
        m_ubicaciones->setSeparacion(float(g.ladoCelda()));
        // 4. One label per position of the first tier.
        m_ubicaciones->resize(extension((double(m_ubicaciones->Separacion()) + 1) * largo),
                              m_ubicaciones->height());
        m_ubicaciones->update();
    });
}

// ---------------------------------------------------------------------------
// Drawing

void PiernaX::changeEvent(QEvent *event)
{
    // printX measures with the surface's font, also outside a paint.
    if (event->type() == QEvent::FontChange)
        m_surface.setFont(font());
    QWidget::changeEvent(event);
}

void PiernaX::paintEvent(QPaintEvent *event)
{
    QPainter painter(this);
    Surface::Painting painting(m_surface, painter);
    m_surface.setFont(font());
    m_surface.setBackColor(fromQColor(palette().color(backgroundRole())));
    const QRect expuesto = event->rect();
    trap(QStringLiteral("PiernaX.dibujarTodo->"), [&] { dibujarTodo(GeometriaCeldas::margen, expuesto); });
}

void PiernaX::dibujarTodo(double margen, const QRect &expuesto)
{
    // 1. The geometry and the leg's shape.
    const auto leg = pierna();
    const GeometriaCeldas g = geometria();
    const double lado = g.ladoCelda();
    const bool clasica = leg->getClasica();
    const qint16 filas = leg->getFilas();
    const qint16 linea = leg->getLinea();
    qint16 maxLargo = 0;

    // Cells wholly outside the exposed rectangle are left out; what is drawn is drawn in full.
    const bool recortar = lado > 0 && std::isfinite(lado);
    const QRectF zona = QRectF(expuesto).adjusted(-2, -2, 2, 2);

    // 2. Tier by tier from the bottom, position by position from the left.
    for (int t = 1; t <= filas; ++t) {
        const double y = g.y(t);
        const qint16 largo = leg->getLargo(qint16(t));
        if (!recortar || (y < zona.bottom() && y + lado > zona.top())) {
            for (int p = 1; p <= largo; ++p) {
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
        if (largo > maxLargo)
            maxLargo = largo;
    }

    // 3. A line in front of every group of linea positions, in the plain arrangement only.
    if (!clasica && linea > 0) {
        const double abajo = height() - 21;
        const double arriba = g.y(filas) - 1;
        for (qint64 q = qint64(linea) + 1; q <= maxLargo; q += linea) {
            const double x = margen + double(q - 1) * (lado + 1);
            m_surface.line(x, abajo, x, arriba);
        }
    }
}

void PiernaX::dibujarCelda(const ObjetoPtr &objeto)
{
    trap(QStringLiteral("PiernaX.dibujarTodo->"), [&] {
        if (!objeto)
            throw Error(Error::ObjectNotSet);
        // The position codes of a leg end in one tier digit and three position digits.
        qint16 fila = 0;
        qint16 columna = 0;
        const auto leg = pierna();
        if (celdaDelCodigo(objeto->getPadre(), fila, columna) && leg->getObjeto(fila, columna) == objeto) {
            const QRectF celda = geometria().celda(fila, columna).normalized();
            update(celda.toAlignedRect().adjusted(-1, -1, 1, 1));
            return;
        }
        // Codes of tiers past 9 (and wrapped ones) or a parent code that is not the
        // object's position do not lead to its cell: repaint the grid instead.
        update();
    });
}

void PiernaX::dibujarVacia(double x, double y, double lado)
{
    // A circle with a plus, in the current fore colour.
    m_surface.circle(x + lado / 2, y + lado / 2, lado / 2);
    m_surface.line(x + lado / 4, y + lado / 2, x + 3 * lado / 4 + 1, y + lado / 2);
    m_surface.line(x + lado / 2, y + lado / 4, x + lado / 2, y + 3 * lado / 4 + 1);
}

void PiernaX::dibujarObjeto(double x, double y, double ancho, double alto, const ObjetoPtr &objeto)
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
        const qint32 fondo = m_surface.backColor();

        // 1. Erase the cell to the background.
        m_surface.setFillStyle(Surface::FillSolid);
        m_surface.setFillColor(fondo);
        m_surface.setForeColor(fondo);
        if (!imagen && forma == FormaCirculo) {
            const double r = ancho / 2 - 1;
            m_surface.circle(x + r, y + r, r);
        } else {
            m_surface.box(x, y, x + ancho - 1, y + alto - 1);
        }

        qint32 colorTexto = negro;
        if (!imagen) {
            // 2. The body in the object's colour; hatched when selected, in black on white.
            m_surface.setFillStyle(seleccionado ? Surface::FillUpwardDiagonal : Surface::FillSolid);
            m_surface.setFillColor(seleccionado && color == blanco ? negro : color);
            m_surface.setForeColor(color);
            if (forma == FormaCaja) {
                m_surface.box(x + 1, y + 1, x + ancho - 2, y + alto - 2);
            } else if (forma == FormaCirculo) {
                const double r = ancho / 2 - 2;
                m_surface.circle(x + r + 1, y + r + 1, r);
            }
            if (!seleccionado)
                colorTexto = Color::esColorClaro(color) ? negro : blanco;
        } else {
            // 3. The picture, hatched over in black when selected.
            const QImage dibujo = imagen->getHandler();
            if (!dibujo.isNull())
                m_surface.paintPicture(dibujo, x, y, ancho, alto);
            if (seleccionado) {
                m_surface.setFillStyle(Surface::FillUpwardDiagonal);
                m_surface.setFillColor(negro);
                if (forma == FormaCaja) {
                    m_surface.box(x + 1, y + 1, x + ancho - 2, y + alto - 2);
                } else if (forma == FormaCirculo) {
                    const double r = ancho / 2 - 2;
                    m_surface.circle(x + r + 1, y + r + 1, r);
                }
            }
        }
        m_surface.setForeColor(colorTexto);

        // 4. The tip, centred both ways when it fits.
        m_surface.setFillStyle(Surface::FillTransparent);
        printX(tip, float(x), float(y), float(ancho), float(alto), 0);

        // 5. The outline: dotted for the active object.
        m_surface.setForeColor(negro);
        m_surface.setDrawStyle(activo ? Surface::DrawDot : Surface::DrawSolid);
        if (forma == FormaCaja) {
            m_surface.box(x, y, x + ancho - 1, y + alto - 1);
        } else if (forma == FormaCirculo) {
            const double r = ancho / 2 - 1;
            m_surface.circle(x + r, y + r, r);
        }
        m_surface.setDrawStyle(Surface::DrawSolid);
    });
}

void PiernaX::printX(const QString &texto, float margenx, float margeny, float ancho, float alto,
                     qint16 posicion)
{
    trap(QStringLiteral("PiernaX.printX->"), [&] {
        // 1. The room inside the box's border and the text's size.
        const double anchoLibre = double(ancho) - 2;
        const double altoLibre = double(alto) - 2;
        const double anchoTexto = m_surface.textWidth(texto);
        const double altoTexto = m_surface.textHeight(texto);
        // 2. Text that does not fit is left out, not clipped.
        if (anchoTexto > anchoLibre || altoTexto > altoLibre)
            return;
        // 3. Across.
        switch (posicion & 3) {
        case 0:
            m_surface.setCurrentX(margenx + 1 + (anchoLibre - anchoTexto) / 2);
            break;
        case 1:
            m_surface.setCurrentX(margenx + 1 + anchoLibre - anchoTexto);
            break;
        case 2:
            m_surface.setCurrentX(margenx + 1);
            break;
        default:
            break;
        }
        // 4. Down.
        switch (int(std::floor(posicion / 4.0))) {
        case 0:
            m_surface.setCurrentY(margeny + 1 + (altoLibre - altoTexto) / 2);
            break;
        case 1:
            m_surface.setCurrentY(margeny + 1);
            break;
        case 2:
            m_surface.setCurrentY(margeny + 1 + altoLibre - altoTexto);
            break;
        default:
            break;
        }
        // 5.
        m_surface.print(texto);
    });
}

// ---------------------------------------------------------------------------
// Selection

void PiernaX::sobreQuien(double x, double y)
{
    trap(QStringLiteral("PiernaX.sobreQuien->"), [&] {
        const GeometriaCeldas::Celda celda = geometria().sobre(x, y);
        m_fila = celda.fila;
        m_columna = celda.columna;
    });
}

void PiernaX::seleccionarObjeto(const ObjetoPtr &objeto)
{
    m_seleccionados->add(objeto);
    objeto->setSeleccionado(true);
}

void PiernaX::alternarObjeto(const ObjetoPtr &objeto)
{
    if (objeto->getSeleccionado()) {
        m_seleccionados->remove(objeto);
        objeto->setSeleccionado(false);
    } else {
        seleccionarObjeto(objeto);
    }
}

void PiernaX::selectRectangle(int fila1, int columna1, int fila2, int columna2)
{
    trap(QStringLiteral("PiernaX.selectRectangle->"), [&] {
        escalaSeleccionada();
        const auto leg = pierna();
        const int pasoFila = fila1 > fila2 ? -1 : 1;
        const int pasoColumna = columna1 > columna2 ? -1 : 1;
        // Neither empty cells nor objects already selected are looked for: either ends the selection here.
        for (int t = fila1;; t += pasoFila) {
            for (int p = columna1;; p += pasoColumna) {
                const ObjetoPtr objeto = leg->getObjeto(qint16(t), qint16(p));
                m_seleccionados->add(objeto);
                objeto->setSeleccionado(true);
                dibujarCelda(objeto);
                if (p == columna2)
                    break;
            }
            if (t == fila2)
                break;
        }
    });
}

void PiernaX::unselectAll()
{
    trap(QStringLiteral("PiernaX.unselectAll->"), [this] {
        for (const ObjetoPtr &objeto : *m_seleccionados) {
            objeto->setSeleccionado(false);
            if (objeto->getForma() != FormaNinguna)
                dibujarCelda(objeto);
        }
        m_seleccionados->clear();
    });
}

void PiernaX::mostrarCaja(double x1, double y1, double x2, double y2)
{
    const double izquierda = std::min(x1, x2);
    const double ancho = x1 == x2 ? 1 : std::abs(x2 - x1);
    const double arriba = std::min(y1, y2);
    const double alto = y1 == y2 ? 1 : std::abs(y2 - y1);
    m_caja->setGeometry(posicion(izquierda), posicion(arriba), extension(ancho), extension(alto));
    if (m_caja->isHidden())
        m_caja->show();
}

// ---------------------------------------------------------------------------
// Gestures

void PiernaX::mousePressEvent(QMouseEvent *event)
{
    const QPointF punto = event->position();
    trap(QStringLiteral("PiernaX.MouseDown->"), [&] {
        mouseDown(mouseButton(event->button()), shiftState(event->modifiers()), punto.x(), punto.y());
    });
}

void PiernaX::mouseMoveEvent(QMouseEvent *event)
{
    const QPointF punto = event->position();
    trap(QStringLiteral("PiernaX.MouseMove->"), [&] {
        mouseMove(mouseButton(event->buttons()), shiftState(event->modifiers()), punto.x(), punto.y());
    });
}

void PiernaX::mouseReleaseEvent(QMouseEvent *event)
{
    const QPointF punto = event->position();
    trap(QStringLiteral("PiernaX.MouseUp->"), [&] {
        mouseUp(mouseButton(event->button()), shiftState(event->modifiers()), punto.x(), punto.y());
    });
}

void PiernaX::mouseDoubleClickEvent(QMouseEvent *)
{
    // The second press of a double click is no new press; its release is handled as usual.
}

void PiernaX::mouseDown(int button, int shift, double x, double y)
{
    // 1. What was current and hit before this press.
    const ObjetoPtr anterior = m_actual;
    const qint16 filaAnterior = m_fila;
    const qint16 columnaAnterior = m_columna;
    m_downX = x;
    m_downY = y;
    // 2. A picked tier gives way; find the cell.
    escalaSeleccionada();
    sobreQuien(x, y);
    const auto leg = pierna();
    if (leg->esUbicacion(m_fila, m_columna)) {
        // 3.1
        m_actual = leg->getObjeto(m_fila, m_columna);
        if (!m_actual) {
            // 3.2 An empty position: its position object becomes active.
            unselectAll();
            activarEnContenedor(leg->getUbicacion(m_fila, m_columna));
        } else {
            // 3.3 By the shift state, compared as an exact value.
            if (shift == CtrlMask || (shift == ShiftMask && button == RightButton)) {
                // The selection stays as it is.
            } else if (shift == ShiftMask) {
                if (anterior) {
                    unselectAll();
                    selectRectangle(filaAnterior, columnaAnterior, m_fila, m_columna);
                }
            } else if (m_actual->getCodigo() == leg->getCodigo()) {
                unselectAll();
            } else if (!m_actual->getSeleccionado()) {
                // A press on a selected object keeps the whole selection, so that a group can be dragged.
                unselectAll();
                seleccionarObjeto(m_actual);
            }
            m_actual = activarEnContenedor(m_actual);
        }
    } else {
        // 4. Outside the positions: the leg itself becomes active.
        m_actual = nullptr;
        unselectAll();
        m_pierna = Caster::toPierna(activarEnContenedor(leg));
    }
    // 5.
    m_armed = true;
}

void PiernaX::mouseMove(int button, int shift, double x, double y)
{
    Q_UNUSED(shift);
    if (!LateBinding::get(contenedor(), QStringLiteral("pActive")).toBool() || button != LeftButton)
        return;
    const double dx = x - m_downX;
    const double dy = y - m_downY;
    const bool fuera = dx * dx + dy * dy > radioArrastre2;
    if (!m_actual) {
        // Pressed on nothing: a rubber band.
        if (m_rubberBand) {
            mostrarCaja(m_downX, m_downY, x, y);
        } else if (fuera && m_armed) {
            recortarControles(false);
            m_armed = false;
            m_rubberBand = true;
            mostrarCaja(m_downX, m_downY, x, y);
        }
    } else if (fuera && m_armed) {
        // Pressed on an object: drag the selection out.
        recortarControles(false);
        m_armed = false;
        startDrag();
    }
}

void PiernaX::mouseUp(int button, int shift, double x, double y)
{
    if (!LateBinding::get(contenedor(), QStringLiteral("pActive")).toBool())
        return;
    if (m_rubberBand)
        soltarBanda();
    else
        soltarClick(button, shift, x, y);
}

void PiernaX::soltarBanda()
{
    // 1. Put the band away and take its rectangle.
    recortarControles(true);
    m_rubberBand = false;
    m_caja->hide();
    const QRectF banda(m_caja->geometry());
    escalaSeleccionada();
    // Toggle every object whose cell lies wholly inside; the rest of the selection stays.
    const auto leg = pierna();
    const GeometriaCeldas g = geometria();
    const qint16 filas = leg->getFilas();
    for (int t = 1; t <= filas; ++t) {
        const qint16 largo = leg->getLargo(qint16(t));
        for (int p = 1; p <= largo; ++p) {
            const ObjetoPtr objeto = leg->getObjeto(qint16(t), qint16(p));
            if (objeto && g.enBanda(t, p, banda)) {
                alternarObjeto(objeto);
                dibujarCelda(objeto);
            }
        }
    }
}

void PiernaX::soltarClick(int button, int shift, double x, double y)
{
    // 2.
    escalaSeleccionada();
    sobreQuien(x, y);
    const auto leg = pierna();
    if (leg->esUbicacion(m_fila, m_columna)) {
        const ObjetoPtr objeto = leg->getObjeto(m_fila, m_columna);
        if (objeto) {
            // A position with an object.
            m_actual = objeto;
            // Ctrl toggles; the frame's answer to setActive redraws the cell.
            if (shift == CtrlMask && button != RightButton && m_actual->getCodigo() != leg->getCodigo())
                alternarObjeto(m_actual);
            // A plain click inside a group, without a drag, narrows the selection.
            if (shift != ShiftMask && shift != CtrlMask && button == LeftButton
                && m_seleccionados->count() > 1) {
                unselectAll();
                seleccionarObjeto(m_actual);
            }
            m_actual = activarEnContenedor(m_actual);
            const bool multi = shift == CtrlMask || m_seleccionados->count() >= 2;
            if (button == LeftButton)
                root().clicked(m_actual, multi);
            else if (button == RightButton)
                root().rightClicked(m_actual, multi);
        } else {
            // An empty position: its position object stands in, always reported as multi.
            const ObjetoPtr ubicacion = leg->getUbicacion(m_fila, m_columna);
            activarEnContenedor(ubicacion);
            if (button == LeftButton)
                root().clicked(ubicacion, true);
            else if (button == RightButton)
                root().rightClicked(ubicacion, true);
        }
    } else {
        // Outside the positions: the leg.
        m_actual = nullptr;
        activarEnContenedor(leg);
        if (button == LeftButton)
            root().clicked(leg, false);
        else if (button == RightButton)
            root().rightClicked(leg, false);
    }
    m_armed = true;
}

// ---------------------------------------------------------------------------
// Drag and drop

void PiernaX::startDrag()
{
    // The data is the name of the frame that holds the control.
    const QString nombre = LateBinding::get(contenedor(), QStringLiteral("Name")).toString();
    auto *datos = new QMimeData;
    datos->setText(nombre);
    auto *drag = new QDrag(this);
    drag->setMimeData(datos);
    QPointer<PiernaX> self(this);
    DragRunner::run(drag, Qt::CopyAction | Qt::MoveAction, [self](Qt::DropAction) {
        if (self)
            self->completeDrag();
    });
}

void PiernaX::completeDrag()
{
    recortarControles(true);
}

void PiernaX::dragEnterEvent(QDragEnterEvent *event)
{
    // Taken whatever it carries, so that a refused drag does not fall through to the frame;
    // the move event that always follows decides.
    event->setDropAction(Qt::IgnoreAction);
    event->accept();
}

void PiernaX::dragMoveEvent(QDragMoveEvent *event)
{
    responderArrastre(event, QStringLiteral("PiernaX.dragOver->"), &PiernaX::dragOver);
}

void PiernaX::dropEvent(QDropEvent *event)
{
    responderArrastre(event, QStringLiteral("PiernaX.dragDrop->"), &PiernaX::dragDrop);
}

void PiernaX::responderArrastre(QDropEvent *event, const QString &etiqueta, PasoArrastre paso)
{
    qint32 effect = 0;
    const QPointF punto = event->position();
    trap(etiqueta, [&] {
        (this->*paso)(event->mimeData(), effect, mouseButton(event->buttons()), shiftState(event->modifiers()),
                      punto.x(), punto.y());
    });
    DragRunner::answer(event, DragRunner::action(effect));
}

void PiernaX::dragOver(const QMimeData *datos, qint32 &effect, int button, int shift, double x, double y)
{
    Q_UNUSED(button);
    if (!datos || !datos->hasText()) {
        effect = 0;
        return;
    }
    QWidget *frame = contenedor();
    if (!LateBinding::call(frame, QStringLiteral("isActive")).toBool())
        LateBinding::call(frame, QStringLiteral("activate"));
    effect = shift == ShiftMask ? 0 : 1;
    // Scroll the frame while the pointer is near the edges of what it shows.
    if (x < viewLeft() + bordeDesplazamiento)
        LateBinding::call(frame, QStringLiteral("hScroll"), { -1 });
    else if (x > viewRight() - bordeDesplazamiento)
        LateBinding::call(frame, QStringLiteral("hScroll"), { 1 });
    if (y < viewTop() + bordeDesplazamiento)
        LateBinding::call(frame, QStringLiteral("vScroll"), { -1 });
    else if (y > viewBottom() - bordeDesplazamiento)
        LateBinding::call(frame, QStringLiteral("vScroll"), { 1 });
}

void PiernaX::dragDrop(const QMimeData *datos, qint32 &effect, int button, int shift, double x, double y)
{
    Q_UNUSED(button);
    if (!datos || !datos->hasText())
        return;
    if (shift == ShiftMask) {
        effect = 0;
        return;
    }
    effect = 1;
    const QString origen = datos->text();
    sobreQuien(x, y);
    const auto leg = pierna();
    // The object of the cell, else its position, else the leg.
    ObjetoPtr destino;
    if (leg->esUbicacion(m_fila, m_columna)) {
        destino = leg->getObjeto(m_fila, m_columna);
        if (!destino)
            destino = leg->getUbicacion(m_fila, m_columna);
    } else {
        destino = leg;
    }
    root().droped(origen, destino, shift);
    m_escalas->update();
}

// ---------------------------------------------------------------------------
// The tier strip

void PiernaX::escalasClick(int etiqueta, bool derecho)
{
    const QString label = derecho ? QStringLiteral("PiernaX.escalas.RightClick->")
                                  : QStringLiteral("PiernaX.escalas.Click->");
    trap(label, [&] {
        // The top slot is the highest tier. A tier alone makes the selection, its flag untouched.
        const auto leg = pierna();
        m_actual = leg->getEscala(toInt16(qint64(leg->getFilas()) - etiqueta + 1));
        unselectAll();
        m_seleccionados->add(m_actual);
        m_actual = activarEnContenedor(m_actual);
        if (derecho)
            root().rightClicked(m_actual, false);
        else
            root().clicked(m_actual, false);
    });
}

void PiernaX::escalasOLEStartDrag()
{
    trap(QStringLiteral("PiernaX.escalas.OLEStartDrag->"), [this] {
        if (m_actual)
            startDrag();
    });
}

void PiernaX::escalasOLEDragDrop(const QMimeData *datos, qint32 *effect, int button, int shift, int etiqueta)
{
    Q_UNUSED(button);
    qint32 ninguno = 0;
    qint32 &efecto = effect ? *effect : ninguno;
    trap(QStringLiteral("PiernaX.escalas.OLEDragDrop->"), [&] {
        if (!datos || !datos->hasText()) {
            efecto = 0;
            return;
        }
        if (shift == ShiftMask) {
            efecto = 0;
            return;
        }
        efecto = 1;
        const QString origen = datos->text();
        const auto leg = pierna();
        const ObjetoPtr destino = leg->getEscala(toInt16(qint64(leg->getFilas()) - etiqueta + 1));
        if (destino)
            root().droped(origen, destino, shift);
        m_escalas->update();
    });
}

} // namespace tarvonix
