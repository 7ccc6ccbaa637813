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
    const qsizetype stale = m_controls.positionOf(name);
    if (stale > 0 && !m_controls.at(stale))
        m_controls.removeAt(stale);
    if (m_controls.contains(name))
        throw Error(Error::DuplicateKey);
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
    const qsizetype position = m_controls.positionOf(name);
    if (position == 0)
        throw Error(Error::ControlNotFound);
    QPointer<QWidget> control = m_controls.at(position);
    m_controls.removeAt(position);
    if (control) {
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
