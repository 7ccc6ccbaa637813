// SPDX-License-Identifier: MIT
#ifndef TARVONIX_PIERNA_H
#define TARVONIX_PIERNA_H

#include <tarvonix/model/objetocomun.h>

#include <vector>

namespace tarvonix {

class Escala;
class Ubicacion;

/*!
    A leg: a column of stacked storage positions, arranged in tiers.

    The host builds a leg with setCodigo(), setEmpresa(), setEscalas(n), then
    setEscala(e, largo) once per tier, then setObjeto(e, p, obj) for each
    occupied position. Tiers count from 1 at the bottom, positions from 1 at
    the left.

    The leg makes its own tiers and position objects and gives them codes:
    the first six characters of the leg's code followed by e * 1000 for tier
    e, or e * 1000 + p for position p of tier e. Those numbers are computed in
    16-bit arithmetic that wraps without failure, so from tier 33 on they turn
    negative (tier 33 of leg "P" is "P-32536").

    getTipo() answers "P". The leg never contains in the sense of
    setPuedeContener(): getObjetos() is computed on every call from the
    objects placed in the grid, tier by tier and position by position, and
    fails when two placed objects share a code.

    A new leg reports one tier from getFilas() although it holds none until
    setEscalas() is called.
*/
class TARVONIX_MODEL_EXPORT Pierna : public ObjetoComun
{
public:
    Pierna();
    ~Pierna() override;

    std::shared_ptr<Objetos> getObjetos() const override;

    void setLinea(qint16 linea);
    qint16 getLinea() const;

    //! Rebuilds the grid with \a n empty tiers; earlier tiers and placements are dropped.
    void setEscalas(qint16 n);
    //! Gives tier \a e \a largo positions and empties it; fails with Error::SubscriptOutOfRange outside the grid.
    void setEscala(qint16 e, qint16 largo);
    qint16 getFilas() const;
    //! Number of positions of tier \a e; fails with Error::SubscriptOutOfRange outside the grid.
    qint16 getLargo(qint16 e) const;

    //! Places \a objeto at (e, p), replacing what was there; fails with Error::SubscriptOutOfRange outside the grid.
    void setObjeto(qint16 e, qint16 p, const ObjetoPtr &objeto);
    //! What is placed at (e, p), or nullptr (also outside the grid).
    ObjetoPtr getObjeto(qint16 e, qint16 p) const;
    //! A new position object describing (e, p), or nullptr when tier \a e does not exist. \a p is not checked.
    std::shared_ptr<Ubicacion> getUbicacion(qint16 e, qint16 p) const;
    //! Tier \a e, or nullptr.
    std::shared_ptr<Escala> getEscala(qint16 e) const;
    /*!
        Whether (e, p) is a storage position: 1 <= e <= getFilas() and
        1 <= p <= getLargo(e). A tier outside 1..getFilas() answers false; a
        leg whose grid was never built fails with Error::SubscriptOutOfRange.
    */
    bool esUbicacion(qint16 e, qint16 p) const;

    void setClasica(bool clasica);
    bool getClasica() const;

private:
    Escala &escalaEn(qint16 e) const;
    std::vector<ObjetoPtr> &posicionesDe(qint16 e);
    const std::vector<ObjetoPtr> &posicionesDe(qint16 e) const;
    QString prefijo() const;

    qint16 m_filas = 1;
    std::vector<std::shared_ptr<Escala>> m_escalas;    // tier e at [e - 1]
    std::vector<std::vector<ObjetoPtr>> m_posiciones;  // position (e, p) at [e - 1][p - 1]
    qint16 m_linea = 0;
    bool m_clasica = true;
};

} // namespace tarvonix

#endif
