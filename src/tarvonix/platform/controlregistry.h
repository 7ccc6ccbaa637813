// SPDX-License-Identifier: MIT
#ifndef TARVONIX_CONTROLREGISTRY_H
#define TARVONIX_CONTROLREGISTRY_H

#include <tarvonix/tarvonix_export.h>

#include <QString>
#include <QStringList>

#include <functional>

class QWidget;

namespace tarvonix {

/*!
    The controls that can be created by class name.

    Controls create their child controls at run time by a ProgID made of
    "Tarvonix." and the class name ("Tarvonix.FrameX", "Tarvonix.Dummy").
    The registry fills itself with every control of the library the first
    time it is used, so a static build or a plugin that links the library
    keeps every name; no control registers itself at load time. A host adds
    its own controls with add(). ProgIDs compare without regard to letter
    case.
*/
class TARVONIX_EXPORT ControlRegistry
{
public:
    using Factory = std::function<QWidget *(QWidget *parent)>;

    //! The registry, holding every control of the library from the first call on.
    static ControlRegistry &instance();

    //! Registers \a factory under \a progId, replacing an earlier one.
    void add(const QString &progId, Factory factory);
    bool contains(const QString &progId) const;
    QStringList progIds() const;

    //! A new control of class \a progId with parent \a parent; an unknown ProgID fails with Error::InvalidArgument.
    QWidget *create(const QString &progId, QWidget *parent = nullptr) const;

private:
    ControlRegistry();
    struct Private;
    Private *d;
};

} // namespace tarvonix

#endif
