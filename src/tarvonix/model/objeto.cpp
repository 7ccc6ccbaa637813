// SPDX-License-Identifier: MIT
#include <tarvonix/model/objeto.h>

namespace tarvonix {

Objeto::Objeto()
    : ObjetoComun(Perfil{std::nullopt,
                         ConGeometria | ConForma | ConImagen | ConTag | ConColor | ConTip
                             | ConReferencias | ConContener,
                         0xFFFFFF})
{
}

Objeto::~Objeto() = default;

} // namespace tarvonix
