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
    leave();
    tarvonix::DragRunner::setRunner(m_previous);
}

void DragDriver::leave()
{
    // The drag manager keeps the widget that accepted the last drag-enter as the target of
    // every later drag-move and drop, whatever widget they are sent to: let it go.
    if (m_entered) {
        QDragLeaveEvent event;
        QCoreApplication::sendEvent(m_entered, &event);
    }
    m_entered = nullptr;
}

QString DragDriver::text() const
{
    return m_data ? m_data->text() : QString();
}

Qt::DropAction DragDriver::moveData(QWidget *target, QPoint pos, const QMimeData *data,
                                    Qt::KeyboardModifiers modifiers)
{
    QDragEnterEvent enter(pos, Qt::CopyAction | Qt::MoveAction, data, Qt::LeftButton, modifiers);
    QCoreApplication::sendEvent(target, &enter);
    QDragMoveEvent event(pos, Qt::CopyAction | Qt::MoveAction, data, Qt::LeftButton, modifiers);
    QCoreApplication::sendEvent(target, &event);
    QDragLeaveEvent leave;
    QCoreApplication::sendEvent(target, &leave);
    return event.isAccepted() ? event.dropAction() : Qt::IgnoreAction;
}

Qt::DropAction DragDriver::dropData(QWidget *target, QPoint pos, const QMimeData *data,
                                    Qt::KeyboardModifiers modifiers)
{
    QDragEnterEvent enter(pos, Qt::CopyAction | Qt::MoveAction, data, Qt::LeftButton, modifiers);
    QCoreApplication::sendEvent(target, &enter);
    QDropEvent event(pos, Qt::CopyAction | Qt::MoveAction, data, Qt::LeftButton, modifiers);
    QCoreApplication::sendEvent(target, &event);
    QDragLeaveEvent leave; // a refused drop leaves the target set
    QCoreApplication::sendEvent(target, &leave);
    return event.isAccepted() ? event.dropAction() : Qt::IgnoreAction;
}

Qt::DropAction DragDriver::move(QWidget *target, QPoint pos, Qt::KeyboardModifiers modifiers)
{
    if (!m_data)
        return Qt::IgnoreAction;
    enterOnce(target, pos, modifiers);
    QDragMoveEvent event(pos, m_allowed, m_data.get(), Qt::LeftButton, modifiers);
    QCoreApplication::sendEvent(target, &event);
    return event.isAccepted() ? event.dropAction() : Qt::IgnoreAction;
}

Qt::DropAction DragDriver::drop(QWidget *target, QPoint pos, Qt::KeyboardModifiers modifiers)
{
    if (!m_data)
        return Qt::IgnoreAction;
    enterOnce(target, pos, modifiers);
    QDropEvent event(pos, m_allowed, m_data.get(), Qt::LeftButton, modifiers);
    QCoreApplication::sendEvent(target, &event);
    return event.isAccepted() ? event.dropAction() : Qt::IgnoreAction;
}

void DragDriver::enterOnce(QWidget *target, QPoint pos, Qt::KeyboardModifiers modifiers)
{
    // The pointer arrives over a new widget: it leaves the last one and enters this one.
    if (m_entered == target)
        return;
    leave();
    QDragEnterEvent enter(pos, m_allowed, m_data.get(), Qt::LeftButton, modifiers);
    QCoreApplication::sendEvent(target, &enter);
    m_entered = target;
}

void DragDriver::finish(Qt::DropAction result)
{
    leave();
    auto finished = std::move(m_finished);
    m_finished = nullptr;
    if (finished)
        finished(result);
}
