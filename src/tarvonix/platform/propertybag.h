// SPDX-License-Identifier: MIT
#ifndef TARVONIX_PROPERTYBAG_H
#define TARVONIX_PROPERTYBAG_H

#include <tarvonix/tarvonix_export.h>

#include <QString>
#include <QStringList>
#include <QVariant>

#include <memory>

class QIODevice;

namespace tarvonix {

/*!
    The design-time properties of a control, as the host saves them with its form.

    Keys compare without regard to letter case, so a value written under
    "BorderStyle" is read back under "Borderstyle". Writing a value equal to
    its default stores nothing (and removes what was stored), so a saved form
    holds only what differs from the defaults. Reading converts the stored
    value to the type of the default it is read with.

    A bag round-trips through a file or any QIODevice, keeping each value's type.
*/
class TARVONIX_EXPORT PropertyBag
{
public:
    PropertyBag();
    PropertyBag(const PropertyBag &other);
    PropertyBag &operator=(const PropertyBag &other);
    ~PropertyBag();

    //! The value stored under \a key converted to the type of \a defaultValue, or \a defaultValue.
    QVariant readProperty(const QString &key, const QVariant &defaultValue = QVariant()) const;

    //! Stores \a value under \a key unless it equals \a defaultValue, in which case the key is cleared.
    void writeProperty(const QString &key, const QVariant &value, const QVariant &defaultValue = QVariant());

    bool contains(const QString &key) const;
    //! The stored keys in the spelling they were last written with, in the order first written.
    QStringList keys() const;
    bool isEmpty() const;

    bool save(QIODevice *device) const;
    bool load(QIODevice *device);
    //! Writes the bag to \a fileName; answers false when the file cannot be written.
    bool save(const QString &fileName) const;
    //! Replaces the contents with those of \a fileName; answers false (and keeps the bag) when it cannot be read.
    bool load(const QString &fileName);

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace tarvonix

#endif
