// SPDX-License-Identifier: MIT
#ifndef TARVONIX_ACCESIBLECOMPUESTO_P_H
#define TARVONIX_ACCESIBLECOMPUESTO_P_H

//
//  W A R N I N G
//  -------------
//
// This file is not part of the Tarvonix API. It is shared by the controls'
// accessible interfaces and may change from version to version.
//

#include <QAccessibleWidget>
#include <QHash>
#include <QPointer>
#include <QWidget>

namespace tarvonix {

/*!
    \internal
    A control as screen readers see it when it draws parts of its own that
    are no widgets (a view's objects, a strip's numbered slots): after its
    child widgets come its parts, each an interface made on first request
    and kept, registered with QAccessible, until the control goes.
*/
class AccesibleCompuesto : public QAccessibleWidget
{
public:
    AccesibleCompuesto(QWidget *control, QAccessible::Role role);
    ~AccesibleCompuesto() override;

    //! Installs \a fabrica with QAccessible once, however often it is asked.
    static void instalar(QAccessible::InterfaceFactory fabrica);

    //! The child index of part \a i.
    int hijoDeParte(int i) const { return QAccessibleWidget::childCount() + i; }
    //! Part \a i, or nullptr outside.
    QAccessibleInterface *parte(int i) const;

    int childCount() const override;
    QAccessibleInterface *child(int index) const override;
    int indexOfChild(const QAccessibleInterface *child) const override;

protected:
    virtual int partes() const = 0;
    virtual QAccessibleInterface *nuevaParte(int i) const = 0;

private:
    mutable QHash<int, QAccessible::Id> m_partes;
};

/*!
    \internal
    One part of a control: no object and no children of its own; the
    control's interface is its parent. Subclasses say what it is.
*/
class ParteAccesible : public QAccessibleInterface, public QAccessibleActionInterface
{
public:
    ParteAccesible(QWidget *control, int indice);

    bool isValid() const override;
    QObject *object() const override { return nullptr; }
    QWindow *window() const override;
    QAccessibleInterface *parent() const override;
    QAccessibleInterface *child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface *) const override { return -1; }
    QAccessibleInterface *childAt(int, int) const override { return nullptr; }
    void setText(QAccessible::Text, const QString &) override { }
    QRect rect() const override;
    void *interface_cast(QAccessible::InterfaceType tipo) override;
    QStringList keyBindingsForAction(const QString &) const override { return {}; }

protected:
    //! The part's box in the control's pixels.
    virtual QRect zona() const = 0;

    const QPointer<QWidget> m_control;
    const int m_indice;
};

} // namespace tarvonix

#endif
