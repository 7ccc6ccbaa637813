// SPDX-License-Identifier: MIT
#ifndef TARVONIX_DRAGRUNNER_H
#define TARVONIX_DRAGRUNNER_H

#include <tarvonix/tarvonix_export.h>

#include <Qt>

#include <functional>

class QDrag;
class QDropEvent;

namespace tarvonix {

/*!
    Runs the drags that the controls start.

    A control starts a drag with run() and does its end-of-drag work in the
    \c finished callback. On a real display the drag is the platform's modal
    QDrag::exec() and \c finished follows as soon as it returns. A test, where
    no platform drag exists, installs a runner of its own that keeps the
    callback, sends the drag-enter, drag-move and drop events a person would
    cause, and then calls it — so the whole gesture runs through the same
    member functions as with a real pointer.
*/
class TARVONIX_EXPORT DragRunner
{
public:
    using Finished = std::function<void(Qt::DropAction result)>;
    using Runner = std::function<void(QDrag *drag, Qt::DropActions allowed, Finished finished)>;

    //! Runs \a drag offering \a allowed, then calls \a finished with the outcome.
    static void run(QDrag *drag, Qt::DropActions allowed, Finished finished);

    //! Installs \a runner and answers the one it replaces; an empty runner restores QDrag::exec().
    static Runner setRunner(Runner runner);

    //! The action of a drop effect: 0 none, 1 copy, 2 move; 3 (both) offers copy.
    static Qt::DropAction action(qint32 effect);

    //! Answers a drag-move or drop \a event with \a action: accepted with it, or refused when it is no action.
    static void answer(QDropEvent *event, Qt::DropAction action);
};

} // namespace tarvonix

#endif
