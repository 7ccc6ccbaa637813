// SPDX-License-Identifier: MIT
#include "dragdriver.h"

#include <QCoreApplication>
#include <QDrag>
#include <QDragEnterEvent>
#include <QDropEvent>

namespace {
// Sends a drag-enter, drag-move or drop event; answers the action the target accepted.
template<typename Event>
Qt::DropAction send(QWidget *target, QPoint pos, Qt::DropActions allowed, const QMimeData *data,
                    Qt::KeyboardModifiers modifiers)
{
    Event event(pos, allowed, data, Qt::LeftButton, modifiers);
    QCoreApplication::sendEvent(target, &event);
    return event.isAccepted() ? event.dropAction() : Qt::IgnoreAction;
}

void sendLeave(QWidget *target)
{
    QDragLeaveEvent event;
    QCoreApplication::sendEvent(target, &event);
}

// A whole visit from outside any control: enter, move or drop, leave (a refused drop leaves the target set).
template<typename Event>
Qt::DropAction visit(QWidget *target, QPoint pos, const QMimeData *data, Qt::KeyboardModifiers modifiers)
{
    send<QDragEnterEvent>(target, pos, Qt::CopyAction | Qt::MoveAction, data, modifiers);
    const Qt::DropAction action = send<Event>(target, pos, Qt::CopyAction | Qt::MoveAction, data, modifiers);
    sendLeave(target);
    return action;
}
} // namespace

DragDriver::DragDriver()
{
    m_previous = tarvonix::DragRunner::setRunner(
        [this](QDrag *drag, Qt::DropActions allowed, tarvonix::DragRunner::Finished finished) {
            ++m_started;
            m_allowed = allowed;
            m_data = std::make_unique<QMimeData>();
            for (const QString &format : drag->mimeData() ? drag->mimeData()->formats() : QStringList())
                m_data->setData(format, drag->mimeData()->data(format));
            drag->deleteLater();
            m_finished = std::move(finished);
            m_entered = nullptr;
        });
}

DragDriver::~DragDriver()
{
    leave();
    tarvonix::DragRunner::setRunner(m_previous);
}

void DragDriver::leave()
{
    // The drag manager keeps the widget that accepted the last drag-enter as the target of
    // every later drag-move and drop, whatever widget they are sent to: let it go.
    if (m_entered)
        sendLeave(m_entered);
    m_entered = nullptr;
}

Qt::DropAction DragDriver::moveData(QWidget *target, QPoint pos, const QMimeData *data,
                                    Qt::KeyboardModifiers modifiers)
{
    return visit<QDragMoveEvent>(target, pos, data, modifiers);
}

Qt::DropAction DragDriver::dropData(QWidget *target, QPoint pos, const QMimeData *data,
                                    Qt::KeyboardModifiers modifiers)
{
    return visit<QDropEvent>(target, pos, data, modifiers);
}

Qt::DropAction DragDriver::move(QWidget *target, QPoint pos, Qt::KeyboardModifiers modifiers)
{
    return enterOnce(target, pos, modifiers)
        ? send<QDragMoveEvent>(target, pos, m_allowed, m_data.get(), modifiers)
        : Qt::IgnoreAction;
}

Qt::DropAction DragDriver::drop(QWidget *target, QPoint pos, Qt::KeyboardModifiers modifiers)
{
    return enterOnce(target, pos, modifiers)
        ? send<QDropEvent>(target, pos, m_allowed, m_data.get(), modifiers)
        : Qt::IgnoreAction;
}

bool DragDriver::enterOnce(QWidget *target, QPoint pos, Qt::KeyboardModifiers modifiers)
{
    // The pointer arrives over a new widget: it leaves the last one and enters this one.
    if (!m_data || m_entered == target)
        return bool(m_data);
    leave();
    send<QDragEnterEvent>(target, pos, m_allowed, m_data.get(), modifiers);
    m_entered = target;
    return true;
}

void DragDriver::finish(Qt::DropAction result)
{
    leave();
    if (const auto finished = std::exchange(m_finished, nullptr))
        finished(result);
}
