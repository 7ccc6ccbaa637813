// SPDX-License-Identifier: MIT
#ifndef TARVONIX_ERRORTRAP_H
#define TARVONIX_ERRORTRAP_H

#include <tarvonix/tarvonix_export.h>

#include <QString>

#include <exception>
#include <functional>
#include <utility>

namespace tarvonix {

/*!
    How the controls tell the user about a failure.

    Every operation and event handler of a control runs under a trap: a
    failure inside it is caught, shown as the operation's label followed at
    once by the failure's description ("MapaX.add->Control not found"), and
    the operation ends normally. No exception ever leaves a trapped operation,
    so none crosses a Qt event handler.

    The text goes to the handler installed with setErrorHandler(). The default
    handler shows a critical message box titled with the application's name;
    tests and hosts without a screen install their own. Where no box can be
    shown (no QApplication, the offscreen or minimal platform, a box already
    open) and when a handler itself fails, the text goes to the logging
    category "tarvonix.error" as a warning, which hosts can filter with
    QLoggingCategory::setFilterRules().
*/

using ErrorHandler = std::function<void(const QString &message)>;

//! Shows \a message through the installed handler.
TARVONIX_EXPORT void reportError(const QString &message);

//! Installs \a handler and answers the one it replaces; an empty handler restores the message box.
TARVONIX_EXPORT ErrorHandler setErrorHandler(ErrorHandler handler);

//! The description of a caught failure: Error's own text, or what() of any other exception.
TARVONIX_EXPORT QString describeFailure(const std::exception &failure);

/*!
    Runs \a operation under the trap labelled \a label (for example
    "ContenedorX.MouseDown->"). Answers true when the operation ended without
    failure; otherwise the label and the description have been reported.
*/
template<typename Operation>
bool trap(const QString &label, Operation &&operation) noexcept
{
    try {
        std::forward<Operation>(operation)();
        return true;
    } catch (const std::exception &failure) {
        reportError(label + describeFailure(failure));
    } catch (...) {
        reportError(label + QStringLiteral("Unknown failure"));
    }
    return false;
}

/*!
    Runs \a operation and swallows any failure without a word: for the few
    operations that end silently (lookups such as isMember, key handling).
    Answers true when the operation ended without failure.
*/
template<typename Operation>
bool trapSilently(Operation &&operation) noexcept
{
    try {
        std::forward<Operation>(operation)();
        return true;
    } catch (...) {
        return false;
    }
}

} // namespace tarvonix

#endif
