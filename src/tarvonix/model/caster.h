// SPDX-License-Identifier: MIT
#ifndef TARVONIX_CASTER_H
#define TARVONIX_CASTER_H

#include <tarvonix/model/iobjeto.h>

namespace tarvonix {

class Deposito;
class Escala;
class Lote;
class Pierna;
class Ubicacion;

/*!
    Turns a map object back into the kind that it is.

    Each cast yields the same object seen as its kind, or nullptr when the
    object is of another kind or is none; a cast never fails. Callers test
    getTipo() ("D", "L", "U", "E", "P") first and then cast.
*/
class TARVONIX_MODEL_EXPORT Caster
{
public:
    static std::shared_ptr<Deposito> toDeposito(const ObjetoPtr &objeto);
    static std::shared_ptr<Lote> toLote(const ObjetoPtr &objeto);
    static std::shared_ptr<Ubicacion> toUbicacion(const ObjetoPtr &objeto);
    static std::shared_ptr<Escala> toEscala(const ObjetoPtr &objeto);
    static std::shared_ptr<Pierna> toPierna(const ObjetoPtr &objeto);
};

} // namespace tarvonix

#endif
