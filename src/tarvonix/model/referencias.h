// SPDX-License-Identifier: MIT
#ifndef TARVONIX_REFERENCIAS_H
#define TARVONIX_REFERENCIAS_H

#include <tarvonix/core/keyedcollection.h>
#include <tarvonix/model/referencia.h>

#include <QVariant>

namespace tarvonix {

/*!
    A list of colour keys, keyed by clave, in the order they were added.

    Item() takes any value and looks it up as a key text, never as a
    position: after adding claves "2" and "1", Item(2) is the first entry.
    An unknown key makes Item() fail with Error::InvalidArgument; find() is
    the lookup that yields nullptr instead. A clave can stand only once.
*/
class TARVONIX_MODEL_EXPORT Referencias
{
public:
    using Enumerator = KeyedCollection<std::shared_ptr<Referencia>>::Enumerator;
    using const_iterator = KeyedCollection<std::shared_ptr<Referencia>>::const_iterator;

    Referencias();
    ~Referencias();

    //! Creates the key entry and files it; a clave already present fails with Error::DuplicateKey.
    std::shared_ptr<Referencia> add(const QString &clave, const QString &texto, qint32 color);
    std::shared_ptr<Referencia> Item(const QVariant &index) const;
    qint32 count() const;
    Enumerator NewEnum() const;
    //! Starts a new, empty list when there is at least one entry.
    void clear();
    std::shared_ptr<Referencia> find(const QString &clave) const;

    const_iterator begin() const;
    const_iterator end() const;

private:
    KeyedCollection<std::shared_ptr<Referencia>> m_referencias;
};

} // namespace tarvonix

Q_DECLARE_METATYPE(std::shared_ptr<tarvonix::Referencias>)

#endif
