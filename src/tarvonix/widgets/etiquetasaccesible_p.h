// SPDX-License-Identifier: MIT
#ifndef TARVONIX_ETIQUETASACCESIBLE_P_H
#define TARVONIX_ETIQUETASACCESIBLE_P_H

//
//  W A R N I N G
//  -------------
//
// This file is not part of the Tarvonix API. It is the label strip's
// accessible interface and may change from version to version.
//

#include <tarvonix/platform/accesiblecompuesto_p.h>

namespace tarvonix {

class etiquetas;

/*!
    \internal
    A label strip as screen readers see it. A numbered strip (a leg's tiers
    and positions) is a list of its slots, each named by its number and
    pressed as a click on it. A strip of one text is a button when it sinks
    under the pointer (a frame's minimise and close buttons, named by their
    tool tips) and a title otherwise (a frame's title, named by its text).
*/
class EtiquetasAccesible : public AccesibleCompuesto
{
public:
    explicit EtiquetasAccesible(etiquetas *tira);

    //! Installs the factory that gives every strip this interface.
    static void instalar();

    QAccessible::Role role() const override;
    QString text(QAccessible::Text t) const override;
    QStringList actionNames() const override;
    void doAction(const QString &accion) override;

protected:
    int partes() const override;
    QAccessibleInterface *nuevaParte(int i) const override;

private:
    etiquetas *tira() const;
};

} // namespace tarvonix

#endif
