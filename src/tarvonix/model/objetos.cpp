// SPDX-License-Identifier: MIT
#include <tarvonix/model/objetos.h>

namespace tarvonix {

Objetos::Objetos() = default;
Objetos::~Objetos() = default;

void Objetos::add(const ObjetoPtr &objeto)
{
    if (!objeto)
        throw Error(Error::ObjectNotSet);
    m_objetos.add(objeto->getCodigo(), objeto);
}

ObjetoPtr Objetos::Item(int position) const
{
    return m_objetos.value(qsizetype(position));
}

ObjetoPtr Objetos::Item(const QString &key) const
{
    return m_objetos.value(key);
}

qint32 Objetos::count() const
{
    return qint32(m_objetos.count());
}

void Objetos::remove(const ObjetoPtr &objeto)
{
    if (!objeto)
        return;
    m_objetos.take(objeto->getCodigo());
}

qint32 Objetos::removeIf(const std::function<bool(const ObjetoPtr &)> &predicate)
{
    return qint32(m_objetos.removeIf(predicate));
}

Objetos::Enumerator Objetos::NewEnum() const
{
    return m_objetos.enumerate();
}

void Objetos::clear()
{
    m_objetos.clear();
}

bool Objetos::contains(const QString &key) const
{
    return m_objetos.contains(key);
}

qint32 Objetos::indexOf(const QString &key) const
{
    return qint32(m_objetos.positionOf(key));
}

Objetos::const_iterator Objetos::begin() const
{
    return m_objetos.begin();
}

Objetos::const_iterator Objetos::end() const
{
    return m_objetos.end();
}

} // namespace tarvonix
