// SPDX-License-Identifier: MIT
#include <tarvonix/platform/childcontrols.h>

#include <tarvonix/platform/controlregistry.h>

namespace tarvonix {

ChildControls::ChildControls(QWidget *owner)
    : m_owner(owner)
{
}

QWidget *ChildControls::add(const QString &progId, const QString &name)
{
    // A control deleted behind the collection's back frees its name.
    if (m_controls.contains(name)) {
        if (m_controls.value(name))
            throw Error(Error::DuplicateKey);
        m_controls.remove(name);
    }
    QWidget *control = ControlRegistry::instance().create(progId, m_owner);
    control->setObjectName(name);
    control->hide();
    m_controls.add(name, control);
    return control;
}

void ChildControls::adopt(QWidget *control)
{
    if (!control)
        throw Error(Error::ObjectNotSet);
    m_controls.add(control->objectName(), control);
}

QWidget *ChildControls::item(const QString &name) const
{
    QWidget *control = find(name);
    if (!control)
        throw Error(Error::ControlNotFound);
    return control;
}

QWidget *ChildControls::find(const QString &name) const
{
    return m_controls.value(name).data();
}

bool ChildControls::contains(const QString &name) const
{
    return find(name) != nullptr;
}

void ChildControls::remove(const QString &name)
{
    const std::optional<QPointer<QWidget>> taken = m_controls.take(name);
    if (!taken)
        throw Error(Error::ControlNotFound);
    if (QWidget *control = *taken) {
        control->hide();
        control->deleteLater();
    }
}

QStringList ChildControls::names() const
{
    return m_controls.keys();
}

qsizetype ChildControls::count() const
{
    return m_controls.count();
}

} // namespace tarvonix
