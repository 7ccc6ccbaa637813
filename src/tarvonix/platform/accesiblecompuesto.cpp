// SPDX-License-Identifier: MIT
#include <tarvonix/platform/accesiblecompuesto_p.h>

#include <QWindow>

namespace tarvonix {

AccesibleCompuesto::AccesibleCompuesto(QWidget *control, QAccessible::Role role)
    : QAccessibleWidget(control, role)
{ }

AccesibleCompuesto::~AccesibleCompuesto()
{
    for (const QAccessible::Id id : std::as_const(m_partes))
        QAccessible::deleteAccessibleInterface(id);
}

void AccesibleCompuesto::instalar(QAccessible::InterfaceFactory fabrica)
{
    static QList<QAccessible::InterfaceFactory> instaladas;
    if (instaladas.contains(fabrica))
        return;
    instaladas.append(fabrica);
    QAccessible::installFactory(fabrica);
}

QAccessibleInterface *AccesibleCompuesto::parte(int i) const
{
    if (i < 0 || i >= partes())
        return nullptr;
    const auto it = m_partes.constFind(i);
    if (it != m_partes.constEnd())
        return QAccessible::accessibleInterface(*it);
    QAccessibleInterface *interfaz = nuevaParte(i);
    m_partes.insert(i, QAccessible::registerAccessibleInterface(interfaz));
    return interfaz;
}

int AccesibleCompuesto::childCount() const
{
    return QAccessibleWidget::childCount() + partes();
}

QAccessibleInterface *AccesibleCompuesto::child(int index) const
{
    const int widgets = QAccessibleWidget::childCount();
    return index < widgets ? QAccessibleWidget::child(index) : parte(index - widgets);
}

int AccesibleCompuesto::indexOfChild(const QAccessibleInterface *child) const
{
    // A part has no object; a child widget does.
    if (child && !child->object()) {
        const int i = m_partes.key(QAccessible::uniqueId(const_cast<QAccessibleInterface *>(child)), -1);
        return i < 0 ? -1 : hijoDeParte(i);
    }
    return QAccessibleWidget::indexOfChild(child);
}

ParteAccesible::ParteAccesible(QWidget *control, int indice)
    : m_control(control)
    , m_indice(indice)
{ }

bool ParteAccesible::isValid() const
{
    return m_control;
}

QWindow *ParteAccesible::window() const
{
    return m_control ? m_control->window()->windowHandle() : nullptr;
}

QAccessibleInterface *ParteAccesible::parent() const
{
    return QAccessible::queryAccessibleInterface(m_control);
}

QRect ParteAccesible::rect() const
{
    if (!isValid())
        return {};
    const QRect caja = zona();
    return QRect(m_control->mapToGlobal(caja.topLeft()), caja.size());
}

void *ParteAccesible::interface_cast(QAccessible::InterfaceType tipo)
{
    return tipo == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface *>(this) : nullptr;
}

} // namespace tarvonix
