// SPDX-License-Identifier: MIT
#include <tarvonix/leg/geometriaceldas.h>

#include <tarvonix/core/error.h>
#include <tarvonix/core/int16.h>

#include <cmath>

namespace tarvonix {

namespace {

// Whole part toward minus infinity, in 16 bits.
qint16 parteEntera(double dividendo, double divisor)
{
    if (divisor == 0)
        throw Error(Error::DivisionByZero);
    return toInt16(std::floor(dividendo / divisor));
}

} // namespace

GeometriaCeldas::GeometriaCeldas(double alto, double escala, bool clasica)
    : m_alto(alto)
    , m_lado(escala * 20)
    , m_clasica(clasica)
{ }

double GeometriaCeldas::y(int t) const
{
    return m_alto - 21 - m_lado - (t - 1) * pasoFila();
}

double GeometriaCeldas::x(int t, int p) const
{
    return margen + 1 + (p - 1) * pasoColumna() + (t - 1) * desplazamiento();
}

QRectF GeometriaCeldas::celda(int t, int p) const
{
    return QRectF(x(t, p), y(t), m_lado, m_lado);
}

GeometriaCeldas::Celda GeometriaCeldas::sobre(double x, double y) const
{
    Celda celda;
    // The tier, counted from the band below the grid.
    celda.fila = toInt16(qint64(parteEntera(m_alto - y - m_lado - 1 - margen, pasoFila())) + 2);
    // The position, undoing the shift of that tier.
    celda.columna
        = toInt16(qint64(parteEntera(x - (celda.fila - 1) * desplazamiento() - margen, pasoColumna())) + 1);
    return celda;
}

bool GeometriaCeldas::enBanda(int t, int p, const QRectF &banda) const
{
    const double arriba = y(t);
    if (!(arriba >= banda.top() && arriba + m_lado <= banda.bottom()))
        return false;
    // The band measures from the gap column left of the cell.
    const double izquierda = x(t, p) - 1;
    return izquierda >= banda.left() && izquierda + m_lado <= banda.right();
}

double GeometriaCeldas::anchoControl(int filas, int largo) const
{
    // Only the first tier counts: longer tiers above it are clipped.
    return pasoColumna() * largo + 2 * margen - 1 + (filas - 1) * desplazamiento();
}

double GeometriaCeldas::altoControl(int filas) const
{
    return pasoFila() * (filas - 1) + (m_lado + 21);
}

} // namespace tarvonix
