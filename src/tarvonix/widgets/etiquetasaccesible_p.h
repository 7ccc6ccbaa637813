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

#include <QAccessibleWidget>
#include <QHash>

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
class EtiquetasAccesible : public QAccessibleWidget
{
public:
    explicit EtiquetasAccesible(etiquetas *tira);
    ~EtiquetasAccesible() override;

    //! Installs the factory that gives every strip this interface; once, whoever asks first.
    static void instalar();

    QAccessible::Role role() const override;
    QString text(QAccessible::Text t) const override;
    int childCount() const override;
    QAccessibleInterface *child(int index) const override;
    int indexOfChild(const QAccessibleInterface *child) const override;
    QStringList actionNames() const override;
    void doAction(const QString &accion) override;

private:
    etiquetas *tira() const;
    int ranuras() const;

    mutable QHash<int, QAccessible::Id> m_ranuras;
};

} // namespace tarvonix

#endif
