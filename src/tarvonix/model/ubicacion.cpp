// SPDX-License-Identifier: MIT
#include <tarvonix/model/ubicacion.h>

namespace tarvonix {

Ubicacion::Ubicacion()
    : ObjetoComun(Perfil{QStringLiteral("U"), ConForma | ConTag | ConColor | ConTip, 0})
{
}

Ubicacion::~Ubicacion() = default;

void Ubicacion::setConjunto(const QString &conjunto)
{
    m_conjunto = conjunto;
}

QString Ubicacion::getConjunto() const
{
    return m_conjunto;
}

qint16 Ubicacion::getEscala() const
{
    return m_escala;
}

void Ubicacion::setEscala(qint16 escala)
{
    m_escala = escala;
}

qint16 Ubicacion::getUbicacion() const
{
    return m_ubicacion;
}

void Ubicacion::setUbicacion(qint16 ubicacion)
{
    m_ubicacion = ubicacion;
}

} // namespace tarvonix
