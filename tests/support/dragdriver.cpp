#include "dragdriver.h"

#include <QCoreApplication>
#include <QDrag>
#include <QDragEnterEvent>
#include <QDropEvent>

DragDriver::DragDriver()
{
    m_previous = tarvonix::DragRunner::setRunner(
        [this](QDrag *drag, Qt::DropActions allowed, tarvonix::DragRunner::Finished finished) {
            ++m_started;
            m_allowed = allowed;
            m_data = std::make_unique<QMimeData>();
            if (const QMimeData *data = drag->mimeData()) {
                for (const QString &format : data->formats())
                    m_data->setData(format, data->data(format));
            }
            drag->deleteLater();
            m_finished = std::move(finished);
            m_entered = nullptr;
        });
}

DragDriver::~DragDriver()
{
    tarvonix::DragRunner::setRunner(m_previous);
}

QString DragDriver::text() const
{
    return m_data ? m_data->text() : QString();
}

namespace {

// Qt delivers drag moves and drops only to the widget that accepted the last drag-enter.
void enter(QWidget *target, QPoint pos, Qt::DropActions allowed, const QMimeData *data,
           Qt::KeyboardModifiers modifiers)
{
    QDragEnterEvent event(pos, allowed, data, Qt::LeftButton, modifiers);
    QCoreApplication::sendEvent(target, &event);
}

} // namespace

Qt::DropAction DragDriver::moveData(QWidget *target, QPoint pos, const QMimeData *data,
                                    Qt::KeyboardModifiers modifiers)
{
    enter(target, pos, Qt::CopyAction | Qt::MoveAction, data, modifiers);
    QDragMoveEvent event(pos, Qt::CopyAction | Qt::MoveAction, data, Qt::LeftButton, modifiers);
    QCoreApplication::sendEvent(target, &event);
    return event.isAccepted() ? event.dropAction() : Qt::IgnoreAction;
}

Qt::DropAction DragDriver::dropData(QWidget *target, QPoint pos, const QMimeData *data,
                                    Qt::KeyboardModifiers modifiers)
{
    enter(target, pos, Qt::CopyAction | Qt::MoveAction, data, modifiers);
    QDropEvent event(pos, Qt::CopyAction | Qt::MoveAction, data, Qt::LeftButton, modifiers);
    QCoreApplication::sendEvent(target, &event);
    return event.isAccepted() ? event.dropAction() : Qt::IgnoreAction;
}

Qt::DropAction DragDriver::move(QWidget *target, QPoint pos, Qt::KeyboardModifiers modifiers)
{
    if (!m_data)
        return Qt::IgnoreAction;
    if (m_entered != target) {
        enter(target, pos, m_allowed, m_data.get(), modifiers);
        m_entered = target;
    }
    QDragMoveEvent event(pos, m_allowed, m_data.get(), Qt::LeftButton, modifiers);
    QCoreApplication::sendEvent(target, &event);
    return event.isAccepted() ? event.dropAction() : Qt::IgnoreAction;
}

Qt::DropAction DragDriver::drop(QWidget *target, QPoint pos, Qt::KeyboardModifiers modifiers)
{
    if (!m_data)
        return Qt::IgnoreAction;
    if (m_entered != target)
        enter(target, pos, m_allowed, m_data.get(), modifiers);
    m_entered = nullptr; // after a drop, Qt has no drag target any more
    QDropEvent event(pos, m_allowed, m_data.get(), Qt::LeftButton, modifiers);
    QCoreApplication::sendEvent(target, &event);
    return event.isAccepted() ? event.dropAction() : Qt::IgnoreAction;
}

void DragDriver::finish(Qt::DropAction result)
{
    auto finished = std::move(m_finished);
    m_finished = nullptr;
    if (finished)
        finished(result);
}
