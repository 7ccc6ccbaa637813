// SPDX-License-Identifier: MIT
#include <tarvonix/model/escala.h>

namespace tarvonix {

Escala::Escala()
    : ObjetoComun(Perfil{QStringLiteral("E"), 0, 0})
{
}

Escala::~Escala() = default;

qint16 Escala::getEscala() const
{
    return m_escala;
}

void Escala::setEscala(qint16 escala)
{
    m_escala = escala;
}

qint16 Escala::getLargo() const
{
    return m_largo;
}

void Escala::setLargo(qint16 largo)
{
    m_largo = largo;
}

} // namespace tarvonix
