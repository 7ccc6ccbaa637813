// SPDX-License-Identifier: MIT
#include <tarvonix/model/imagen.h>

namespace tarvonix {

Imagen::Imagen() = default;
Imagen::~Imagen() = default;

qint16 Imagen::getNumero() const
{
    return m_numero;
}

QString Imagen::getArchivo() const
{
    return m_archivo;
}

QImage Imagen::getHandler() const
{
    return m_handler;
}

void Imagen::setNumero(qint16 numero)
{
    m_numero = numero;
}

void Imagen::setArchivo(const QString &archivo)
{
    // The name is kept whatever the load gives.
    m_archivo = archivo;
    // A picture that cannot be read leaves no handler (QImage answers null).
    m_handler = archivo.isEmpty() ? QImage() : QImage(archivo);
}

} // namespace tarvonix
