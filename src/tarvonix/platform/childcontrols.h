// SPDX-License-Identifier: MIT
#ifndef TARVONIX_CHILDCONTROLS_H
#define TARVONIX_CHILDCONTROLS_H

#include <tarvonix/core/keyedcollection.h>
#include <tarvonix/tarvonix_export.h>

#include <QPointer>
#include <QWidget>

namespace tarvonix {

/*!
    The child controls that a control creates at run time and reaches by name.

    Names compare without regard to letter case and keep their order of
    creation. A name can stand only once: adding it again fails with
    Error::DuplicateKey before anything is created. Looking up or removing a
    name that is not there fails with Error::ControlNotFound.

    A removed control leaves the collection at once and is deleted with
    deleteLater(), so a control may ask to be removed from inside one of its
    own event handlers.
*/
class TARVONIX_EXPORT ChildControls
{
public:
    explicit ChildControls(QWidget *owner);

    //! Creates a control of class \a progId named \a name on the owner; it starts hidden.
    QWidget *add(const QString &progId, const QString &name);
    //! Files an existing child of the owner under its objectName().
    void adopt(QWidget *control);
    //! The control named \a name; fails with Error::ControlNotFound.
    QWidget *item(const QString &name) const;
    //! The control named \a name, or nullptr.
    QWidget *find(const QString &name) const;
    bool contains(const QString &name) const;
    //! Removes the control named \a name from the collection and deletes it later.
    void remove(const QString &name);
    QStringList names() const;
    qsizetype count() const;

private:
    QWidget *m_owner;
    KeyedCollection<QPointer<QWidget>> m_controls;
};

} // namespace tarvonix

#endif
