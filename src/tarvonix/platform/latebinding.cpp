// SPDX-License-Identifier: MIT
#include <tarvonix/platform/latebinding.h>

#include <tarvonix/core/error.h>

#include <QMetaMethod>
#include <QMetaProperty>
#include <QWidget>

#include <array>
#include <cmath>

namespace tarvonix {

namespace {

enum class HostMember { None, Width, Height, Left, Top, Visible, Name, Enabled, ClipControls, ToolTipText, Move, Refresh };

HostMember hostMember(const QString &name)
{
    static const std::array<std::pair<const char *, HostMember>, 11> members = {{
        {"Width", HostMember::Width},
        {"Height", HostMember::Height},
        {"left", HostMember::Left},
        {"top", HostMember::Top},
        {"Visible", HostMember::Visible},
        {"Name", HostMember::Name},
        {"enabled", HostMember::Enabled},
        {"ClipControls", HostMember::ClipControls},
        {"ToolTipText", HostMember::ToolTipText},
        {"Move", HostMember::Move},
        {"Refresh", HostMember::Refresh},
    }};
    for (const auto &[text, member] : members) {
        if (name.compare(QLatin1String(text), Qt::CaseInsensitive) == 0)
            return member;
    }
    return HostMember::None;
}

int toInt(const QVariant &value)
{
    const double number = value.toDouble();
    if (!std::isfinite(number) || std::abs(number) > 1.0e9)
        throw Error(Error::Overflow);
    return int(std::lround(number));
}

QObject *checked(QObject *target)
{
    if (!target)
        throw Error(Error::ObjectNotSet);
    return target;
}

int findProperty(const QMetaObject *meta, const QString &name)
{
    const int exact = meta->indexOfProperty(name.toLatin1().constData());
    if (exact >= 0)
        return exact;
    for (int i = 0; i < meta->propertyCount(); ++i) {
        if (name.compare(QLatin1String(meta->property(i).name()), Qt::CaseInsensitive) == 0)
            return i;
    }
    return -1;
}

QMetaMethod findMethod(const QMetaObject *meta, const QString &name, qsizetype argumentCount)
{
    QMetaMethod caseless;
    for (int i = meta->methodCount() - 1; i >= 0; --i) {
        const QMetaMethod method = meta->method(i);
        if (method.access() != QMetaMethod::Public || method.parameterCount() != argumentCount)
            continue;
        const QString methodName = QString::fromLatin1(method.name());
        if (methodName == name)
            return method;
        if (!caseless.isValid() && methodName.compare(name, Qt::CaseInsensitive) == 0)
            caseless = method;
    }
    return caseless;
}

QVariant invoke(QObject *target, const QMetaMethod &method, const QVariantList &arguments)
{
    std::array<QVariant, 10> converted;
    std::array<QByteArray, 10> typeNames; // QGenericArgument keeps only a pointer to the name
    std::array<QGenericArgument, 10> generic;
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        const QMetaType type = method.parameterMetaType(int(i));
        converted[size_t(i)] = arguments.at(i);
        if (type.id() != QMetaType::QVariant && converted[size_t(i)].metaType() != type
            && !converted[size_t(i)].convert(type))
            throw Error(Error::InvalidArgument);
        if (type.id() == QMetaType::QVariant) {
            generic[size_t(i)] = QGenericArgument("QVariant", &arguments.at(i));
        } else {
            typeNames[size_t(i)] = method.parameterTypeName(int(i));
            generic[size_t(i)] =
                QGenericArgument(typeNames[size_t(i)].constData(), converted[size_t(i)].constData());
        }
    }
    QVariant result;
    QGenericReturnArgument returned;
    if (method.returnMetaType().isValid() && method.returnMetaType().id() != QMetaType::Void) {
        result = QVariant(method.returnMetaType());
        returned = QGenericReturnArgument(method.typeName(), result.data());
    }
    const bool ok = method.invoke(target, Qt::DirectConnection, returned, generic[0], generic[1], generic[2],
                                  generic[3], generic[4], generic[5], generic[6], generic[7], generic[8],
                                  generic[9]);
    if (!ok)
        throw Error(Error::MemberNotSupported);
    return result;
}

QVariant getHost(QWidget *widget, HostMember member)
{
    switch (member) {
    case HostMember::Width:
        return widget->width();
    case HostMember::Height:
        return widget->height();
    case HostMember::Left:
        return widget->x();
    case HostMember::Top:
        return widget->y();
    case HostMember::Visible:
        return !widget->isHidden();
    case HostMember::Name:
        return widget->objectName();
    case HostMember::Enabled:
        return widget->isEnabled();
    case HostMember::ClipControls:
        return true;
    case HostMember::ToolTipText:
        return widget->toolTip();
    default:
        throw Error(Error::MemberNotSupported);
    }
}

void setHost(QWidget *widget, HostMember member, const QVariant &value)
{
    switch (member) {
    case HostMember::Width:
        widget->resize(qMax(0, toInt(value)), widget->height());
        return;
    case HostMember::Height:
        widget->resize(widget->width(), qMax(0, toInt(value)));
        return;
    case HostMember::Left:
        widget->move(toInt(value), widget->y());
        return;
    case HostMember::Top:
        widget->move(widget->x(), toInt(value));
        return;
    case HostMember::Visible:
        widget->setVisible(value.toBool());
        return;
    case HostMember::Name:
        widget->setObjectName(value.toString());
        return;
    case HostMember::Enabled:
        widget->setEnabled(value.toBool());
        return;
    case HostMember::ClipControls:
        return; // no meaning for Qt widgets
    case HostMember::ToolTipText:
        widget->setToolTip(value.toString());
        return;
    default:
        throw Error(Error::MemberNotSupported);
    }
}

} // namespace

QVariant LateBinding::get(QObject *target, const QString &property)
{
    checked(target);
    // The host-side members come first: QWidget's own lower-case properties must not shadow them.
    if (auto *widget = qobject_cast<QWidget *>(target); widget && hostMember(property) != HostMember::None
        && hostMember(property) != HostMember::Move && hostMember(property) != HostMember::Refresh)
        return getHost(widget, hostMember(property));
    const int index = findProperty(target->metaObject(), property);
    if (index >= 0)
        return target->metaObject()->property(index).read(target);
    const QMetaMethod method = findMethod(target->metaObject(), property, 0);
    if (method.isValid())
        return invoke(target, method, {});
    throw Error(Error::MemberNotSupported);
}

void LateBinding::set(QObject *target, const QString &property, const QVariant &value)
{
    checked(target);
    if (auto *widget = qobject_cast<QWidget *>(target); widget && hostMember(property) != HostMember::None
        && hostMember(property) != HostMember::Move && hostMember(property) != HostMember::Refresh) {
        setHost(widget, hostMember(property), value);
        return;
    }
    const int index = findProperty(target->metaObject(), property);
    if (index >= 0) {
        const QMetaProperty meta = target->metaObject()->property(index);
        if (!meta.isWritable() || !meta.write(target, value))
            throw Error(Error::InvalidArgument);
        return;
    }
    const QMetaMethod method = findMethod(target->metaObject(), property, 1);
    if (!method.isValid())
        throw Error(Error::MemberNotSupported);
    invoke(target, method, {value});
}

QVariant LateBinding::call(QObject *target, const QString &member, const QVariantList &arguments)
{
    checked(target);
    if (arguments.size() > 10)
        throw Error(Error::InvalidArgument);
    const QMetaMethod method = findMethod(target->metaObject(), member, arguments.size());
    if (method.isValid())
        return invoke(target, method, arguments);
    auto *widget = qobject_cast<QWidget *>(target);
    const HostMember host = hostMember(member);
    if (widget && host == HostMember::Move && arguments.size() == 2) {
        widget->move(toInt(arguments.at(0)), toInt(arguments.at(1)));
        return {};
    }
    if (widget && host == HostMember::Refresh && arguments.isEmpty()) {
        widget->update();
        return {};
    }
    if (arguments.isEmpty())
        return get(target, member);
    throw Error(Error::MemberNotSupported);
}

bool LateBinding::hasMember(const QObject *target, const QString &member)
{
    if (!target)
        return false;
    const QMetaObject *meta = target->metaObject();
    if (findProperty(meta, member) >= 0)
        return true;
    for (int i = 0; i < meta->methodCount(); ++i) {
        if (member.compare(QLatin1String(meta->method(i).name()), Qt::CaseInsensitive) == 0)
            return true;
    }
    return qobject_cast<const QWidget *>(target) && hostMember(member) != HostMember::None;
}

} // namespace tarvonix
