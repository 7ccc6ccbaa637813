#include <tarvonix/platform/controlregistry.h>

#include <tarvonix/core/error.h>
#include <tarvonix/core/keyedcollection.h>

#include <QWidget>

namespace tarvonix {

struct ControlRegistry::Private
{
    KeyedCollection<Factory> factories;
};

ControlRegistry::ControlRegistry()
    : d(new Private) // lives as long as the process, like the registrations that fill it
{
}

ControlRegistry &ControlRegistry::instance()
{
    static ControlRegistry registry;
    return registry;
}

void ControlRegistry::add(const QString &progId, Factory factory)
{
    if (d->factories.contains(progId))
        d->factories.remove(progId);
    d->factories.add(progId, std::move(factory));
}

bool ControlRegistry::contains(const QString &progId) const
{
    return d->factories.contains(progId);
}

QStringList ControlRegistry::progIds() const
{
    return d->factories.keys();
}

QWidget *ControlRegistry::create(const QString &progId, QWidget *parent) const
{
    const Factory factory = d->factories.value(progId);
    if (!factory)
        throw Error(Error::InvalidArgument, QStringLiteral("Invalid class string: %1").arg(progId));
    return factory(parent);
}

ControlRegistration::ControlRegistration(const QString &progId, ControlRegistry::Factory factory)
{
    ControlRegistry::instance().add(progId, std::move(factory));
}

} // namespace tarvonix
