// SPDX-License-Identifier: MIT
#ifndef TARVONIX_GEOMETRIACELDAS_H
#define TARVONIX_GEOMETRIACELDAS_H

#include <tarvonix/tarvonix_export.h>

#include <QRectF>
#include <QtGlobal>

namespace tarvonix {

/*!
    The arithmetic of a leg view's grid: where every cell stands, how big the
    control and its strips are, and which cell lies under a point.

    Drawing, hit testing and the rubber band of PiernaX all ask this one class,
    so what is drawn and what is hit can never disagree. A value is cheap: it
    is made afresh from the control's present height, scale and arrangement
    wherever one is needed.

    Tiers t count from 1 at the bottom, positions p from 1 at the left. Every
    length is in the control's pixels. A cell is ladoCelda() square; the gap
    between neighbouring positions is one pixel. In the classic arrangement
    each tier is shifted right by half a cell against the tier below and
    overlaps it, so that tiers are solape() - 1 pixels closer than cells.
*/
class TARVONIX_EXPORT GeometriaCeldas
{
public:
    //! The strip of pixels left of the grid (tier labels) and the band kept below it (position labels).
    static constexpr double margen = 20;

    /*!
        The geometry of a control \a alto pixels high, drawn at \a escala,
        classic (\a clasica) or plain.
    */
    GeometriaCeldas(double alto, double escala, bool clasica);

    //! The side of a cell: escala * 20.
    double ladoCelda() const { return m_lado; }
    //! How far each tier is shifted right against the one below it: half a cell when classic, else 0.
    double desplazamiento() const { return m_clasica ? m_lado / 2 : 0; }
    //! How far each tier reaches into the gap above the one below it: 3 when classic, else 0.
    double solape() const { return m_clasica ? 3 : 0; }
    //! From the top of one tier to the top of the next: ladoCelda + 1 - solape.
    double pasoFila() const { return m_lado + 1 - solape(); }
    //! From the left edge of one position to the next: ladoCelda + 1.
    double pasoColumna() const { return m_lado + 1; }

    //! The top edge of the cells of tier \a t.
    double y(int t) const;
    //! The left edge of the cell of position \a p in tier \a t.
    double x(int t, int p) const;
    //! The cell (t, p) as the rectangle (x, y, ladoCelda, ladoCelda).
    QRectF celda(int t, int p) const;

    struct Celda
    {
        qint16 fila = 0;
        qint16 columna = 0;
    };

    /*!
        The tier and position under the point (\a x, \a y), by arithmetic
        alone: it does not say whether that cell exists, and a point in a gap
        or outside the grid gives a neighbour or a number outside the grid. A
        point on the top edge of a cell gives the tier above it.

        A scale at which tiers or positions no longer advance fails with
        Error::DivisionByZero; a result beyond 16 bits with Error::Overflow.
    */
    Celda sobre(double x, double y) const;

    /*!
        Whether the rubber band \a banda takes in cell (t, p): the cell's top
        and bottom lie within the band, and so do its left and right edges
        counted from the gap column left of the cell. A cell only partly
        covered is not taken.
    */
    bool enBanda(int t, int p, const QRectF &banda) const;

    //! The width a control needs for \a filas tiers whose first tier has \a largo positions.
    double anchoControl(int filas, int largo) const;
    //! The height a control needs for \a filas tiers: the top tier at 0 and the position band below tier 1.
    double altoControl(int filas) const;

private:
    double m_alto;
    double m_lado;
    bool m_clasica;
};

} // namespace tarvonix

#endif
