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
    void platformDragEndsThroughTheCallback();
    void effectsBecomeActions_data();
    void effectsBecomeActions();
};

void tst_DragRunner::platformDragEndsThroughTheCallback()
{
    QWidget source;
    source.show();
    auto *drag = new QDrag(&source);
    auto *data = new QMimeData;
    data->setText(QStringLiteral("D12"));
    drag->setMimeData(data);
    int ended = 0;
    // With no runner installed the platform runs the drag; offscreen it ends at once, unaccepted.
    DragRunner::run(drag, Qt::CopyAction | Qt::MoveAction, [&](Qt::DropAction result) {
        ++ended;
        QCOMPARE(result, Qt::IgnoreAction);
    });
    QCOMPARE(ended, 1);

    // An installed runner takes the drag instead, and the previous one comes back.
    int taken = 0;
    const DragRunner::Runner previous = DragRunner::setRunner(
        [&](QDrag *, Qt::DropActions allowed, const DragRunner::Finished &) {
            ++taken;
            QCOMPARE(allowed, Qt::DropActions(Qt::MoveAction));
        });
    DragRunner::run(new QDrag(&source), Qt::MoveAction, [&](Qt::DropAction) { ++ended; });
    QCOMPARE(taken, 1);
    QCOMPARE(ended, 1); // the end belongs to whoever took the drag
    DragRunner::setRunner(previous);
}

void tst_DragRunner::effectsBecomeActions_data()
{
    QTest::addColumn<int>("effect");
    QTest::addColumn<Qt::DropAction>("action");
    QTest::newRow("none") << 0 << Qt::IgnoreAction;
    QTest::newRow("copy") << 1 << Qt::CopyAction;
    QTest::newRow("move") << 2 << Qt::MoveAction;
    QTest::newRow("both offers copy") << 3 << Qt::CopyAction;
}

void tst_DragRunner::effectsBecomeActions()
{
    QFETCH(int, effect);
    QFETCH(Qt::DropAction, action);
    QCOMPARE(DragRunner::action(effect), action);

    QMimeData data;
    QDropEvent event(QPointF(1, 1), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
    event.ignore();
    DragRunner::answer(&event, action);
    QCOMPARE(event.isAccepted(), action != Qt::IgnoreAction);
    QCOMPARE(event.dropAction(), action);
}

QTEST_MAIN(tst_DragRunner)
#include "tst_dragrunner.moc"
