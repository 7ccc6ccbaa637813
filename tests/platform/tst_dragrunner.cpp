// SPDX-License-Identifier: MIT
#include <tarvonix/platform/dragrunner.h>

#include <QDrag>
#include <QDropEvent>
#include <QMimeData>
#include <QTest>
#include <QWidget>

using namespace tarvonix;

class tst_DragRunner : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void platformOrInstalledRunnerTakesTheDrag()
    {
        QWidget source;
        source.show();
        auto *drag = new QDrag(&source);
        drag->setMimeData(new QMimeData);
        QList<Qt::DropAction> ended;
        // With no runner installed the platform runs the drag; offscreen it ends at once, unaccepted.
        DragRunner::run(drag, Qt::CopyAction | Qt::MoveAction,
                        [&](Qt::DropAction result) { ended.append(result); });
        QCOMPARE(ended, QList<Qt::DropAction> { Qt::IgnoreAction });

        // An installed runner takes the drag instead, and the previous one comes back.
        QList<Qt::DropActions> taken;
        const DragRunner::Runner previous = DragRunner::setRunner(
            [&](QDrag *, Qt::DropActions allowed, const DragRunner::Finished &) { taken.append(allowed); });
        DragRunner::run(new QDrag(&source), Qt::MoveAction,
                        [&](Qt::DropAction result) { ended.append(result); });
        DragRunner::setRunner(previous);
        QCOMPARE(taken, QList<Qt::DropActions> { Qt::MoveAction });
        QCOMPARE(ended.size(), 1); // the end belongs to whoever took the drag
    }

    void effectsBecomeActions_data()
    {
        QTest::addColumn<int>("effect");
        QTest::addColumn<Qt::DropAction>("action");
        QTest::newRow("none") << 0 << Qt::IgnoreAction;
        QTest::newRow("move") << 2 << Qt::MoveAction;
        QTest::newRow("both offers copy") << 3 << Qt::CopyAction;
    }
    void effectsBecomeActions()
    {
        QFETCH(int, effect);
        QFETCH(Qt::DropAction, action);
        QCOMPARE(DragRunner::action(effect), action);
        QMimeData data;
        QDropEvent event(QPointF(1, 1), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton,
                         Qt::NoModifier);
        event.ignore();
        DragRunner::answer(&event, action);
        QVERIFY(event.isAccepted() == (action != Qt::IgnoreAction) && event.dropAction() == action);
    }
};

QTEST_MAIN(tst_DragRunner)
#include "tst_dragrunner.moc"
