// SPDX-License-Identifier: MIT
#ifndef TARVONIX_IMAGENES_H
#define TARVONIX_IMAGENES_H

#include <tarvonix/core/keyedcollection.h>
#include <tarvonix/model/imagen.h>

#include <QVariant>

#include <memory>

namespace tarvonix {

/*!
    The numbered pictures, keyed by the decimal text of each picture's number.

    Item() takes any value and looks it up as a key text, so Item(3) finds the
    picture numbered 3, not the third one, and yields nullptr when there is
    none. add() of a number already present fails with Error::DuplicateKey;
    remove() of an unknown position or key fails too.
*/
class TARVONIX_MODEL_EXPORT Imagenes
{
public:
    using Enumerator = KeyedCollection<std::shared_ptr<Imagen>>::Enumerator;
    using const_iterator = KeyedCollection<std::shared_ptr<Imagen>>::const_iterator;

    Imagenes();
    ~Imagenes();

    //! Loads \a archivo as picture number \a numero and files it.
    std::shared_ptr<Imagen> add(qint16 numero, const QString &archivo);
    std::shared_ptr<Imagen> Item(const QVariant &index) const;
    qint32 count() const;
    //! Removes by 1-based position (a number) or by key (a string).
    void remove(const QVariant &index);
    Enumerator NewEnum() const;

    const_iterator begin() const;
    const_iterator end() const;

private:
    KeyedCollection<std::shared_ptr<Imagen>> m_imagenes;
};

} // namespace tarvonix

#endif
