// SPDX-License-Identifier: MIT
#ifndef TARVONIX_TESTS_DRAGDRIVER_H
#define TARVONIX_TESTS_DRAGDRIVER_H

#include <tarvonix/platform/dragrunner.h>

#include <QMimeData>
#include <QPoint>
#include <QPointer>
#include <QWidget>

#include <memory>

// Drives the drags that controls start, as a person's pointer would: while it lives, a control's drag
// does not end at once; the test sends drag events with move()/drop() and ends the drag with finish(),
// which runs the control's end-of-drag step. Create it after the widgets it drags over: when it goes,
// it tells the widget it last entered that the drag has left.
class DragDriver
{
public:
    DragDriver();
    ~DragDriver();
    Q_DISABLE_COPY(DragDriver)

    //! Whether a control has started a drag that has not been finished.
    bool dragging() const { return bool(m_finished); }
    //! The text the started drag carries.
    QString text() const { return m_data ? m_data->text() : QString(); }
    Qt::DropActions allowed() const { return m_allowed; }
    int started() const { return m_started; }

    //! Drag-enter (the first time over \a target) and drag-move at \a pos; answers the accepted action.
    Qt::DropAction move(QWidget *target, QPoint pos, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    //! Drop at \a pos on \a target (entered first if it is not the one entered last); answers the accepted action.
    Qt::DropAction drop(QWidget *target, QPoint pos, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    //! Ends the drag, as the platform does after a drop or a cancel.
    void finish(Qt::DropAction result = Qt::IgnoreAction);

    //! Drag-move and drop of arbitrary \a data from outside any control, each a whole visit: enter, move or drop, leave.
    static Qt::DropAction moveData(QWidget *target, QPoint pos, const QMimeData *data,
                                   Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    static Qt::DropAction dropData(QWidget *target, QPoint pos, const QMimeData *data,
                                   Qt::KeyboardModifiers modifiers = Qt::NoModifier);

private:
    // False when no drag has started.
    bool enterOnce(QWidget *target, QPoint pos, Qt::KeyboardModifiers modifiers);
    void leave();

    tarvonix::DragRunner::Runner m_previous;
    tarvonix::DragRunner::Finished m_finished;
    std::unique_ptr<QMimeData> m_data;
    Qt::DropActions m_allowed;
    QPointer<QWidget> m_entered;
    int m_started = 0;
};

#endif
