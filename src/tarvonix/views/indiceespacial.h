// SPDX-License-Identifier: MIT
#ifndef TARVONIX_INDICEESPACIAL_H
#define TARVONIX_INDICEESPACIAL_H

//
//  W A R N I N G
//  -------------
//
// This file is not part of the Tarvonix API. It is shared by the view base
// and the views built on it, and may change from version to version.
//

#include <tarvonix/model/iobjeto.h>
#include <tarvonix/tarvonix_export.h>

#include <QPointF>
#include <QRectF>

#include <unordered_map>
#include <vector>

namespace tarvonix {

/*!
    \internal
    A uniform grid over the boxes of a view's children, so that a click or a
    paint looks only at the children near it instead of at all of them.

    Every object keeps the place it was added in: queries answer objects in
    that order, so "the first child wins" and the draw order need no more
    than the order of the collection the index was filled from. Boxes are in
    drawing units and include their edges. A box is a superset of what the
    view hits or paints; the view applies its exact test to what the index
    answers.

    The generation changes whenever the index does, which lets a view tell
    whether an answer it kept is still good.
*/
class TARVONIX_AUTOTEST_EXPORT IndiceEspacial
{
public:
    //! Empties the index; boxes added from now on go into cells of side \a lado.
    void clear(double lado = 64);
    //! Adds \a objeto after every object already in the index; it must not be in it yet.
    void agregar(const ObjetoPtr &objeto, const QRectF &caja);
    //! Gives \a objeto the box \a caja; false when it is not in the index.
    bool mover(const IObjeto *objeto, const QRectF &caja);
    void quitar(const IObjeto *objeto);
    bool contiene(const IObjeto *objeto) const { return m_ids.count(objeto) != 0; }
    qsizetype count() const { return qsizetype(m_ids.size()); }
    quint64 generacion() const { return m_generacion; }

    //! The objects whose box contains \a punto, in order.
    std::vector<ObjetoPtr> en(QPointF punto) const;
    //! The objects whose box meets \a zona, in order.
    std::vector<ObjetoPtr> en(const QRectF &zona) const;

private:
    struct Entrada
    {
        ObjetoPtr objeto; // none once removed
        QRectF caja;
        bool grande = false;
    };
    struct Celdas
    {
        qint64 x1, y1, x2, y2;
        qint64 cuantas() const { return (x2 - x1 + 1) * (y2 - y1 + 1); }
    };

    Celdas celdasDe(const QRectF &caja) const;
    void poner(int id);
    void sacar(int id);
    template<typename F> std::vector<ObjetoPtr> buscar(const QRectF &zona, F &&acepta) const;
    static quint64 clave(qint64 x, qint64 y) { return (quint64(quint32(x)) << 32) | quint32(y); }

    double m_lado = 64;
    std::vector<Entrada> m_entradas; // by id, the order objects were added in
    std::unordered_map<const IObjeto *, int> m_ids;
    std::unordered_map<quint64, std::vector<int>> m_celdas;
    std::vector<int> m_grandes; // boxes over too many cells, looked at by every query
    quint64 m_generacion = 0;
    // Marks the ids a query has already taken, so that a box in several cells is answered once.
    mutable std::vector<quint32> m_marcas;
    mutable quint32 m_sello = 0;
};

} // namespace tarvonix

#endif
