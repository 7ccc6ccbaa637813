// SPDX-License-Identifier: MIT
#include <tarvonix/platform/errortrap.h>

#include <tarvonix/core/error.h>

#include <QApplication>
#include <QGuiApplication>
#include <QLoggingCategory>
#include <QMessageBox>

namespace tarvonix {

namespace {

Q_LOGGING_CATEGORY(lcError, "tarvonix.error", QtWarningMsg)

ErrorHandler &installedHandler()
{
    static ErrorHandler handler;
    return handler;
}

void showMessageBox(const QString &message)
{
    // The box runs its own event loop: a failure in a paint event shown from
    // there would open the next box from inside the first one, without end.
    // Without a screen (the offscreen and minimal platforms) nobody could close it.
    static bool showing = false;
    const QString platform = QGuiApplication::platformName();
    if (showing || !qobject_cast<QApplication *>(QCoreApplication::instance())
        || platform == QLatin1String("offscreen") || platform == QLatin1String("minimal")) {
        qCWarning(lcError, "%s", qUtf8Printable(message));
        return;
    }
    showing = true;
    QMessageBox::critical(QApplication::activeWindow(), QCoreApplication::applicationName(), message);
    showing = false;
}

} // namespace

void reportError(const QString &message)
{
    const ErrorHandler handler = installedHandler(); // a copy: the handler may replace itself
    try {
        if (handler)
            handler(message);
        else
            showMessageBox(message);
    } catch (...) {
        // A handler that fails must not take the trap down with it.
        qCWarning(lcError, "%s", qUtf8Printable(message));
    }
}

ErrorHandler setErrorHandler(ErrorHandler handler)
{
    return std::exchange(installedHandler(), std::move(handler));
}

QString describeFailure(const std::exception &failure)
{
    if (const auto *error = dynamic_cast<const Error *>(&failure))
        return error->description();
    if (dynamic_cast<const std::bad_alloc *>(&failure))
        return QStringLiteral("Out of memory");
    return QString::fromLocal8Bit(failure.what());
}

} // namespace tarvonix
