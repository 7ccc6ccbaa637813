// SPDX-License-Identifier: MIT
#include <tarvonix/model/referencia.h>

namespace tarvonix {

Referencia::Referencia() = default;
Referencia::~Referencia() = default;

void Referencia::setColor(qint32 color)
{
    m_color = color;
}

void Referencia::setClave(const QString &clave)
{
    m_clave = clave;
}

void Referencia::setTexto(const QString &texto)
{
    m_texto = texto;
}

qint32 Referencia::getColor() const
{
    return m_color;
}

QString Referencia::getClave() const
{
    return m_clave;
}

QString Referencia::getTexto() const
{
    return m_texto;
}

} // namespace tarvonix
