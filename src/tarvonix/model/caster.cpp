// SPDX-License-Identifier: MIT
#include <tarvonix/model/caster.h>

#include <tarvonix/model/deposito.h>
#include <tarvonix/model/escala.h>
#include <tarvonix/model/lote.h>
#include <tarvonix/model/pierna.h>
#include <tarvonix/model/ubicacion.h>

namespace tarvonix {

std::shared_ptr<Deposito> Caster::toDeposito(const ObjetoPtr &objeto)
{
    return std::dynamic_pointer_cast<Deposito>(objeto);
}

std::shared_ptr<Lote> Caster::toLote(const ObjetoPtr &objeto)
{
    return std::dynamic_pointer_cast<Lote>(objeto);
}

std::shared_ptr<Ubicacion> Caster::toUbicacion(const ObjetoPtr &objeto)
{
    return std::dynamic_pointer_cast<Ubicacion>(objeto);
}

std::shared_ptr<Escala> Caster::toEscala(const ObjetoPtr &objeto)
{
    return std::dynamic_pointer_cast<Escala>(objeto);
}

std::shared_ptr<Pierna> Caster::toPierna(const ObjetoPtr &objeto)
{
    return std::dynamic_pointer_cast<Pierna>(objeto);
}

} // namespace tarvonix
