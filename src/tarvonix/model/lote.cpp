// SPDX-License-Identifier: MIT
#include <tarvonix/model/lote.h>

namespace tarvonix {

Lote::Lote()
    : ObjetoComun(Perfil{QStringLiteral("L"),
                         ConGeometria | ConForma | ConImagen | ConTag | ConColor | ConTip,
                         0xFFFFFF})
{
}

Lote::~Lote() = default;

QString Lote::getReferencia() const
{
    return m_referencia;
}

void Lote::setReferencia(const QString &referencia)
{
    m_referencia = referencia;
}

QString Lote::getProducto() const
{
    return m_producto;
}

void Lote::setProducto(const QString &producto)
{
    m_producto = producto;
}

qint16 Lote::getAnada() const
{
    return m_anada;
}

void Lote::setAnada(qint16 anada)
{
    m_anada = anada;
}

QString Lote::getInterno() const
{
    return m_interno;
}

void Lote::setInterno(const QString &interno)
{
    m_interno = interno;
}

QString Lote::getEstado() const
{
    return m_estado;
}

void Lote::setEstado(const QString &estado)
{
    m_estado = estado;
}

} // namespace tarvonix
