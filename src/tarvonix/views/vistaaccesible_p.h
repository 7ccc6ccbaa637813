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

#include <tarvonix/platform/accesiblecompuesto_p.h>

namespace tarvonix {

class VistaX;

/*!
    \internal
    A view as screen readers see it: a list whose items are the view's
    elements (the children of a container, the positions of a leg), after the
    widgets the view holds (a leg's label strips, the rubber band). An item
    reads its object afresh on every call, so what the host changes in its
    objects is what a screen reader hears.
*/
class VistaAccesible : public AccesibleCompuesto
{
public:
    explicit VistaAccesible(VistaX *vista);

    //! Installs the factory that gives every view this interface.
    static void instalar();

    QAccessibleInterface *childAt(int x, int y) const override;
    QAccessibleInterface *focusChild() const override;
    QString text(QAccessible::Text t) const override;

protected:
    int partes() const override;
    QAccessibleInterface *nuevaParte(int i) const override;

private:
    VistaX *vista() const;
};

} // namespace tarvonix

#endif
