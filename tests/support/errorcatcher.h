// SPDX-License-Identifier: MIT
#ifndef TARVONIX_TESTS_ERRORCATCHER_H
#define TARVONIX_TESTS_ERRORCATCHER_H

#include <tarvonix/platform/errortrap.h>

#include <QStringList>

// Collects the messages that the controls report while it lives, instead of
// showing message boxes, and puts the previous handler back at the end.
class ErrorCatcher
{
public:
    ErrorCatcher()
        : m_previous(tarvonix::setErrorHandler([this](const QString &message) { m_messages.append(message); }))
    {
    }
    ~ErrorCatcher() { tarvonix::setErrorHandler(m_previous); }
    Q_DISABLE_COPY(ErrorCatcher)

    const QStringList &messages() const { return m_messages; }
    void clear() { m_messages.clear(); }

private:
    QStringList m_messages;
    tarvonix::ErrorHandler m_previous;
};

#endif
