// SPDX-License-Identifier: MIT
#include <tarvonix/platform/controlregistry.h>

#include <tarvonix/core/error.h>
#include <tarvonix/core/keyedcollection.h>

#include <QWidget>

namespace tarvonix {

struct ControlRegistry::Private
{
    KeyedCollection<Factory> factories;
};

// Defined with the list of the library's controls, at the top of the library.
void registerLibraryControls(ControlRegistry &registry);

ControlRegistry::ControlRegistry()
    : d(new Private) // lives as long as the process
{
}

ControlRegistry &ControlRegistry::instance()
{
    // Filled on first use rather than by constructors of globals, which a static
    // build drops when nothing else refers to their object files.
    static ControlRegistry *const registry = [] {
        auto *filled = new ControlRegistry;
        registerLibraryControls(*filled);
        return filled;
    }();
    return *registry;
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

} // namespace tarvonix
