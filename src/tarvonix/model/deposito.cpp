// SPDX-License-Identifier: MIT
#include <tarvonix/model/deposito.h>

namespace tarvonix {

Deposito::Deposito()
    : ObjetoComun(Perfil{QStringLiteral("D"),
                         ConGeometria | ConForma | ConImagen | ConTag | ConColor | ConTip
                             | ConReferencias,
                         0xFFFFFF})
{
}

Deposito::~Deposito() = default;

qint32 Deposito::getNumero() const
{
    return m_numero;
}

void Deposito::setNumero(qint32 numero)
{
    m_numero = numero;
}

QString Deposito::getProducto() const
{
    return m_producto;
}

void Deposito::setProducto(const QString &producto)
{
    m_producto = producto;
}

bool Deposito::getMultiLote() const
{
    return m_multiLote;
}

void Deposito::setMultiLote(bool multiLote)
{
    m_multiLote = multiLote;
}

} // namespace tarvonix
