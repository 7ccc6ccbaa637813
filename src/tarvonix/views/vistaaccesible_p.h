// SPDX-License-Identifier: MIT
#ifndef TARVONIX_VISTAACCESIBLE_P_H
#define TARVONIX_VISTAACCESIBLE_P_H

//
//  W A R N I N G
//  -------------
//
// This file is not part of the Tarvonix API. It is shared by the view base
// and its accessible interfaces, and may change from version to version.
//

#include <tarvonix/tarvonix_export.h>

#include <QAccessibleWidget>
#include <QHash>

namespace tarvonix {

class VistaX;

/*!
    \internal
    A view as screen readers see it: a list whose items are the view's
    elements (the children of a container, the positions of a leg), after the
    widgets the view holds (a leg's label strips, the rubber band).

    The items are made on first request and kept, each registered with
    QAccessible, until the view goes; an item reads its object afresh on
    every call, so what the host changes in its objects is what a screen
    reader hears.
*/
class TARVONIX_AUTOTEST_EXPORT VistaAccesible : public QAccessibleWidget
{
public:
    explicit VistaAccesible(VistaX *vista);
    ~VistaAccesible() override;

    //! Installs the factory that gives every view this interface; once, whoever asks first.
    static void instalar();

    //! The child index of element \a i.
    int hijoDeElemento(int i) const;

    int childCount() const override;
    QAccessibleInterface *child(int index) const override;
    int indexOfChild(const QAccessibleInterface *child) const override;
    QAccessibleInterface *childAt(int x, int y) const override;
    QAccessibleInterface *focusChild() const override;
    QString text(QAccessible::Text t) const override;

private:
    VistaX *vista() const;
    QAccessibleInterface *elemento(int i) const;

    mutable QHash<int, QAccessible::Id> m_elementos;
};

} // namespace tarvonix

#endif
