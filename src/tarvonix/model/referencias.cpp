// SPDX-License-Identifier: MIT
#include <tarvonix/model/referencias.h>

namespace tarvonix {

Referencias::Referencias() = default;
Referencias::~Referencias() = default;

std::shared_ptr<Referencia> Referencias::add(const QString &clave, const QString &texto, qint32 color)
{
    auto referencia = std::make_shared<Referencia>();
    referencia->setClave(clave);
    referencia->setTexto(texto);
    referencia->setColor(color);
    m_referencias.add(clave, referencia);
    return referencia;
}

std::shared_ptr<Referencia> Referencias::Item(const QVariant &index) const
{
    return m_referencias.at(index.toString());
}

qint32 Referencias::count() const
{
    return qint32(m_referencias.count());
}

Referencias::Enumerator Referencias::NewEnum() const
{
    return m_referencias.enumerate();
}

void Referencias::clear()
{
    m_referencias.clear();
}

std::shared_ptr<Referencia> Referencias::find(const QString &clave) const
{
    return m_referencias.value(clave);
}

Referencias::const_iterator Referencias::begin() const
{
    return m_referencias.begin();
}

Referencias::const_iterator Referencias::end() const
{
    return m_referencias.end();
}

} // namespace tarvonix
