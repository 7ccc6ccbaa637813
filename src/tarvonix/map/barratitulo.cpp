// SPDX-License-Identifier: MIT
#include <tarvonix/map/barratitulo_p.h>

#include <tarvonix/map/mapax.h>
#include <tarvonix/widgets/etiquetas.h>
#include <tarvonix/platform/latebinding.h>

#include <QEvent>
#include <QPainter>
#include <QStyleOptionFrame>
#include <QWidget>

namespace tarvonix {

namespace {

constexpr qint32 fondoActivo = 0x800000;   // navy
constexpr qint32 textoActivo = 0xFFFFFF;
constexpr qint32 fondoInactivo = 0xC0C0C0; // silver
constexpr qint32 textoInactivo = 0;
// The title's width until the frame first lays itself out.
constexpr int anchoTituloInicial = 200;

// The raised border, drawn above the frame's children so that a scrolled
// container never paints over it. The pointer goes through to what is below.
class Borde : public QWidget
{
public:
    explicit Borde(QWidget *frame)
        : QWidget(frame)
    {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setGeometry(frame->rect());
        frame->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Resize)
            setGeometry(static_cast<QWidget *>(watched)->rect());
        return false;
    }

    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        const QRect r = rect();
        const QPalette &p = palette();
        for (int i = 0; i < BarraTitulo::borde; ++i) {
            const QRect anillo = r.adjusted(i, i, -i - 1, -i - 1);
            const QColor claro = i == 0 ? p.color(QPalette::Midlight) : p.color(QPalette::Light);
            const QColor oscuro = i == 0 ? p.color(QPalette::Shadow) : p.color(QPalette::Mid);
            const QColor cara = p.color(QPalette::Button);
            painter.setPen(i == 2 ? cara : claro);
            painter.drawLine(anillo.topLeft(), anillo.topRight());
            painter.drawLine(anillo.topLeft(), anillo.bottomLeft());
            painter.setPen(i == 2 ? cara : oscuro);
            painter.drawLine(anillo.bottomLeft(), anillo.bottomRight());
            painter.drawLine(anillo.topRight(), anillo.bottomRight());
        }
    }
};

etiquetas *nuevaEtiqueta(QWidget *frame, const QString &nombre, int ancho)
{
    auto *etiqueta = new etiquetas(frame);
    etiqueta->setObjectName(nombre);
    etiqueta->setNumerar(false);
    etiqueta->setSeparacion(float(ancho - 1));
    etiqueta->setEfecto(true);
    etiqueta->resize(ancho, BarraTitulo::altoTitulo);
    return etiqueta;
}

} // namespace

BarraTitulo::BarraTitulo(QWidget *frame, int anchoBoton)
    : m_frame(frame)
{
    m_titulo = nuevaEtiqueta(frame, QStringLiteral("titulo"), anchoTituloInicial);
    m_titulo->setEfecto(false);
    m_mini = nuevaEtiqueta(frame, QStringLiteral("mini"), anchoBoton);
    m_mini->setTexto(QStringLiteral("_"));
    m_mini->setToolTip(QStringLiteral("Minimizar"));
    m_cerrar = nuevaEtiqueta(frame, QStringLiteral("cerrar"), anchoBoton);
    m_cerrar->setTexto(QStringLiteral("x"));
    m_cerrar->setToolTip(QStringLiteral("Cerrar"));
    colocar(m_titulo, 0, 0);
    m_borde = new Borde(frame);
    mostrarActivo(false);
}

void BarraTitulo::mostrarActivo(bool activo)
{
    for (etiquetas *etiqueta : {m_titulo.data(), m_mini.data(), m_cerrar.data()}) {
        etiqueta->setBackColor(activo ? fondoActivo : fondoInactivo);
        etiqueta->setForeColor(activo ? textoActivo : textoInactivo);
        etiqueta->update();
    }
    QFont fuente = m_titulo->font();
    fuente.setBold(activo);
    m_titulo->setFont(fuente);
}

void BarraTitulo::setTexto(const QString &texto)
{
    m_frame->setAccessibleName(texto); // what a screen reader calls the frame
    m_titulo->setTexto(texto);
    m_titulo->update();
}

void BarraTitulo::distribuir(int ancho)
{
    // The two buttons overlap by one pixel; the title ends where "mini" begins.
    colocar(m_cerrar, ancho - m_cerrar->width(), 0);
    colocar(m_mini, izquierda(m_cerrar) + 1 - m_mini->width(), 0);
    const int anchoTitulo = izquierda(m_mini) + 1;
    m_titulo->setSeparacion(float(anchoTitulo));
    m_titulo->resize(qMax(0, anchoTitulo), altoTitulo);
    m_titulo->update();
}

bool BarraTitulo::alternarMinimizado()
{
    m_minimizado = !m_minimizado;
    if (m_minimizado) {
        m_altoGuardado = m_frame->height();
        m_frame->resize(m_frame->width(), altoTitulo + 2 * borde);
        m_mini->setToolTip(QStringLiteral("Restaurar"));
    } else {
        m_frame->resize(m_frame->width(), m_altoGuardado);
        m_mini->setToolTip(QStringLiteral("Minimizar"));
    }
    return m_minimizado;
}

void BarraTitulo::iniciarMovimiento(float x, float y)
{
    m_dragX = x + float(m_titulo->x());
    m_dragY = y + float(m_titulo->y());
    m_posicionAlArrastrar = m_frame->pos();
    QWidget *padre = m_frame->parentWidget();
    if (auto *mapa = qobject_cast<MapaX *>(padre))
        mapa->startMove(m_frame);
    else // a host's own parent offers the move by name
        LateBinding::call(padre, QStringLiteral("startMove"), {QVariant::fromValue<QWidget *>(m_frame)});
}

void BarraTitulo::alFrente()
{
    m_titulo->raise();
    m_mini->raise();
    m_cerrar->raise();
    m_borde->raise();
}

void BarraTitulo::colocar(QWidget *control, int izquierdaInterior, int arribaInterior)
{
    control->move(izquierdaInterior + borde, arribaInterior + borde);
}

int BarraTitulo::izquierda(const QWidget *control)
{
    return control->x() - borde;
}

int BarraTitulo::arriba(const QWidget *control)
{
    return control->y() - borde;
}

} // namespace tarvonix
