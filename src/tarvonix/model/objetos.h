// SPDX-License-Identifier: MIT
#ifndef TARVONIX_OBJETOS_H
#define TARVONIX_OBJETOS_H

#include <tarvonix/core/keyedcollection.h>
#include <tarvonix/model/iobjeto.h>

#include <functional>

namespace tarvonix {

/*!
    An ordered collection of map objects keyed by code.

    add() reads the object's code once, when it is added, and files the
    object under it; keys compare without regard to letter case and a code
    can stand only once (a second add fails with Error::DuplicateKey and
    leaves the collection unchanged). The lookups never fail: an unknown
    position or key yields nullptr. remove() never fails either.
*/
class TARVONIX_MODEL_EXPORT Objetos
{
public:
    using Enumerator = KeyedCollection<ObjetoPtr>::Enumerator;
    using const_iterator = KeyedCollection<ObjetoPtr>::const_iterator;

    Objetos();
    ~Objetos();

    //! Files \a objeto under its present code; a none object fails with Error::ObjectNotSet.
    void add(const ObjetoPtr &objeto);

    //! The object at the 1-based \a position, or nullptr.
    ObjetoPtr Item(int position) const;
    //! The object under \a key, or nullptr.
    ObjetoPtr Item(const QString &key) const;

    qint32 count() const;

    //! Removes the entry under the object's present code; does nothing if there is none.
    void remove(const ObjetoPtr &objeto);

    /*!
        Removes, in one pass, every object that \a predicate holds for and
        answers how many went; the others keep their order. The predicate is
        asked about every object, in order, before anything is removed.
        Cheaper than one remove() per object when many go at once.
    */
    qint32 removeIf(const std::function<bool(const ObjetoPtr &)> &predicate);

    //! The objects in insertion order, as they are now; later changes do not reach it.
    Enumerator NewEnum() const;

    //! Starts a new, empty collection when there is at least one object.
    void clear();

    //! Whether an object is filed under \a key.
    bool contains(const QString &key) const;
    //! The 1-based position of the object filed under \a key, or 0 when there is none.
    qint32 indexOf(const QString &key) const;

    const_iterator begin() const;
    const_iterator end() const;

private:
    KeyedCollection<ObjetoPtr> m_objetos;
};

} // namespace tarvonix

Q_DECLARE_METATYPE(std::shared_ptr<tarvonix::Objetos>)

#endif
