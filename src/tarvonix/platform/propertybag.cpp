// SPDX-License-Identifier: MIT
#include <tarvonix/platform/propertybag.h>

#include <tarvonix/core/keyedcollection.h>

#include <QDataStream>
#include <QFile>
#include <QSaveFile>

namespace tarvonix {

namespace {
constexpr quint32 bagMagic = 0x54525842; // "TRXB"
constexpr quint16 bagVersion = 1;
} // namespace

struct PropertyBag::Private
{
    KeyedCollection<QVariant> values;
};

PropertyBag::PropertyBag()
    : d(std::make_unique<Private>())
{
}

PropertyBag::PropertyBag(const PropertyBag &other)
    : d(std::make_unique<Private>(*other.d))
{
}

PropertyBag &PropertyBag::operator=(const PropertyBag &other)
{
    if (this != &other)
        *d = *other.d;
    return *this;
}

PropertyBag::~PropertyBag() = default;

QVariant PropertyBag::readProperty(const QString &key, const QVariant &defaultValue) const
{
    if (!d->values.contains(key))
        return defaultValue;
    QVariant value = d->values.at(key);
    if (defaultValue.isValid() && value.metaType() != defaultValue.metaType()) {
        QVariant converted = value;
        if (!converted.convert(defaultValue.metaType()))
            return defaultValue;
        return converted;
    }
    return value;
}

void PropertyBag::writeProperty(const QString &key, const QVariant &value, const QVariant &defaultValue)
{
    // Replace rather than update so that the key keeps the spelling of the last write.
    if (d->values.contains(key))
        d->values.remove(key);
    if (value != defaultValue)
        d->values.add(key, value);
}

bool PropertyBag::contains(const QString &key) const
{
    return d->values.contains(key);
}

QStringList PropertyBag::keys() const
{
    return d->values.keys();
}

bool PropertyBag::isEmpty() const
{
    return d->values.isEmpty();
}

bool PropertyBag::save(QIODevice *device) const
{
    if (!device)
        return false;
    QDataStream out(device);
    out.setVersion(QDataStream::Qt_6_0);
    out << bagMagic << bagVersion << quint32(d->values.count());
    for (qsizetype i = 1; i <= d->values.count(); ++i)
        out << d->values.keyAt(i) << d->values.at(i);
    return out.status() == QDataStream::Ok;
}

bool PropertyBag::load(QIODevice *device)
{
    if (!device)
        return false;
    QDataStream in(device);
    in.setVersion(QDataStream::Qt_6_0);
    quint32 magic = 0;
    quint16 version = 0;
    quint32 count = 0;
    in >> magic >> version >> count;
    if (in.status() != QDataStream::Ok || magic != bagMagic || version != bagVersion)
        return false;
    KeyedCollection<QVariant> loaded;
    for (quint32 i = 0; i < count; ++i) {
        QString key;
        QVariant value;
        in >> key >> value;
        if (in.status() != QDataStream::Ok || loaded.contains(key))
            return false;
        loaded.add(key, value);
    }
    d->values = loaded;
    return true;
}

bool PropertyBag::save(const QString &fileName) const
{
    QSaveFile file(fileName);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    return save(&file) && file.commit();
}

bool PropertyBag::load(const QString &fileName)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    return load(&file);
}

} // namespace tarvonix
