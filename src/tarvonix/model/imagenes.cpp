// SPDX-License-Identifier: MIT
#include <tarvonix/model/imagenes.h>

#include <tarvonix/core/int16.h>

namespace tarvonix {

Imagenes::Imagenes() = default;
Imagenes::~Imagenes() = default;

std::shared_ptr<Imagen> Imagenes::add(qint16 numero, const QString &archivo)
{
    auto imagen = std::make_shared<Imagen>();
    imagen->setNumero(numero);
    imagen->setArchivo(archivo);
    m_imagenes.add(QString::number(numero), imagen);
    return imagen;
}

std::shared_ptr<Imagen> Imagenes::Item(const QVariant &index) const
{
    return m_imagenes.value(index.toString());
}

qint32 Imagenes::count() const
{
    return qint32(m_imagenes.count());
}

void Imagenes::remove(const QVariant &index)
{
    if (index.typeId() == QMetaType::QString || !index.canConvert<double>()) {
        m_imagenes.remove(index.toString());
        return;
    }
    const double position = roundHalfEven(index.toDouble());
    if (!(position >= 1 && position <= double(m_imagenes.count())))
        throw Error(Error::SubscriptOutOfRange);
    m_imagenes.removeAt(qsizetype(position));
}

Imagenes::Enumerator Imagenes::NewEnum() const
{
    return m_imagenes.enumerate();
}

Imagenes::const_iterator Imagenes::begin() const
{
    return m_imagenes.begin();
}

Imagenes::const_iterator Imagenes::end() const
{
    return m_imagenes.end();
}

} // namespace tarvonix
