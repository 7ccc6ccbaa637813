// SPDX-License-Identifier: MIT
#include <tarvonix/core/error.h>

namespace tarvonix {

Error::Error(Code code)
    : Error(code, standardDescription(code))
{
}

Error::Error(Code code, const QString &description)
    : std::runtime_error(description.toStdString())
    , m_code(code)
{
}

QString Error::description() const
{
    return QString::fromStdString(what());
}

QString Error::standardDescription(Code code)
{
    switch (code) {
    case InvalidArgument:
        return QStringLiteral("Invalid procedure call or argument");
    case Overflow:
        return QStringLiteral("Overflow");
    case DivisionByZero:
        return QStringLiteral("Division by zero");
    case SubscriptOutOfRange:
        return QStringLiteral("Subscript out of range");
    case TypeMismatch:
        return QStringLiteral("Type mismatch");
    case ObjectNotSet:
        return QStringLiteral("Object variable or With block variable not set");
    case MemberNotSupported:
        return QStringLiteral("Object doesn't support this property or method");
    case DuplicateKey:
        return QStringLiteral("This key is already associated with an element of this collection");
    case ControlNotFound:
        return QStringLiteral("Control not found");
    }
    return QStringLiteral("Application-defined or object-defined error");
}

} // namespace tarvonix
