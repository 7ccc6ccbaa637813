// SPDX-License-Identifier: MIT
#ifndef TARVONIX_LATEBINDING_H
#define TARVONIX_LATEBINDING_H

#include <tarvonix/tarvonix_export.h>

#include <QString>
#include <QVariant>
#include <QVariantList>

class QObject;

namespace tarvonix {

/*!
    Calls on a control by member name, through Qt's meta-object system.

    Controls talk to the control that holds them, and to the controls they
    create, by member name ("pActive", "setActive", "cast", "Resize"), so that
    any widget that offers those members can take part. A member is a
    Q_PROPERTY or a Q_INVOKABLE function, found by its exact name first and
    then without regard to letter case.

    The host-side members that every control has are Qt's own: "Width",
    "Height", "left", "top", "Visible", "Name", "enabled", "ToolTipText",
    "Move"(left, top) and "Refresh" act on the QWidget itself;
    "ClipControls" is accepted and ignored.

    A none target fails with Error::ObjectNotSet, a member the object lacks
    with Error::MemberNotSupported.
*/
class TARVONIX_EXPORT LateBinding
{
public:
    //! Calls \a member with \a arguments; a property name without arguments reads the property.
    static QVariant call(QObject *target, const QString &member, const QVariantList &arguments = {});
    static QVariant get(QObject *target, const QString &property);
    static void set(QObject *target, const QString &property, const QVariant &value);
    //! Whether \a target answers \a member, as a property or as a function.
    static bool hasMember(const QObject *target, const QString &member);
};

} // namespace tarvonix

#endif
