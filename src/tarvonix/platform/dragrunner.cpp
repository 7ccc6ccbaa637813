// SPDX-License-Identifier: MIT
#include <tarvonix/platform/dragrunner.h>

#include <QDrag>
#include <QDropEvent>

namespace tarvonix {

namespace {

DragRunner::Runner &installedRunner()
{
    static DragRunner::Runner runner;
    return runner;
}

} // namespace

void DragRunner::run(QDrag *drag, Qt::DropActions allowed, Finished finished)
{
    const Runner runner = installedRunner();
    if (runner) {
        runner(drag, allowed, std::move(finished));
        return;
    }
    const Qt::DropAction result = drag->exec(allowed);
    if (finished)
        finished(result);
}

DragRunner::Runner DragRunner::setRunner(Runner runner)
{
    return std::exchange(installedRunner(), std::move(runner));
}

Qt::DropAction DragRunner::action(qint32 effect)
{
    if (effect & Qt::CopyAction)
        return Qt::CopyAction;
    if (effect & Qt::MoveAction)
        return Qt::MoveAction;
    return Qt::IgnoreAction;
}

void DragRunner::answer(QDropEvent *event, Qt::DropAction action)
{
    event->setDropAction(action);
    event->setAccepted(action != Qt::IgnoreAction);
}

} // namespace tarvonix
