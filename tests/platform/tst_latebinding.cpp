#include <tarvonix/model/objeto.h>
#include <tarvonix/core/error.h>
#include <tarvonix/platform/latebinding.h>

#include "testframe.h"

#include <QTest>

using namespace tarvonix;

class tst_LateBinding : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void hostMembersActOnTheWidget();
    void propertiesAndFunctionsByName();
    void objectsTravelThroughCalls();
    void failures();
};

void tst_LateBinding::hostMembersActOnTheWidget()
{
    QWidget parent;
    QWidget widget(&parent);
    widget.setObjectName(QStringLiteral("D12c"));
    LateBinding::set(&widget, QStringLiteral("Width"), 120);
    LateBinding::set(&widget, QStringLiteral("height"), 45.5); // rounds, ties to even
    LateBinding::set(&widget, QStringLiteral("left"), 7);
    LateBinding::set(&widget, QStringLiteral("TOP"), 9);
    QCOMPARE(widget.geometry(), QRect(7, 9, 120, 46));
    QCOMPARE(LateBinding::get(&widget, QStringLiteral("Width")).toInt(), 120);
    QCOMPARE(LateBinding::get(&widget, QStringLiteral("Name")).toString(), QStringLiteral("D12c"));

    LateBinding::call(&widget, QStringLiteral("Move"), {30, 40});
    QCOMPARE(widget.pos(), QPoint(30, 40));

    // "Visible" is the widget's own setting, not whether its parent shows it.
    LateBinding::set(&widget, QStringLiteral("Visible"), true);
    QVERIFY(LateBinding::get(&widget, QStringLiteral("Visible")).toBool());
    LateBinding::set(&widget, QStringLiteral("Visible"), false);
    QVERIFY(widget.isHidden());

    LateBinding::set(&widget, QStringLiteral("ClipControls"), false); // accepted, no meaning
    LateBinding::set(&widget, QStringLiteral("enabled"), false);
    QVERIFY(!widget.isEnabled());
}

void tst_LateBinding::propertiesAndFunctionsByName()
{
    TestFrame frame;
    LateBinding::set(&frame, QStringLiteral("pActive"), false);
    QCOMPARE(LateBinding::get(&frame, QStringLiteral("pActive")).toBool(), false);
    QCOMPARE(LateBinding::call(&frame, QStringLiteral("isActive")).toBool(), false);
    LateBinding::call(&frame, QStringLiteral("Activate")); // letter case does not matter
    QVERIFY(frame.pActive());
    LateBinding::call(&frame, QStringLiteral("hScroll"), {-1});
    QCOMPARE(frame.calls, (QStringList{QStringLiteral("isActive"), QStringLiteral("activate"),
                                       QStringLiteral("hScroll(-1)")}));
    QVERIFY(LateBinding::hasMember(&frame, QStringLiteral("Resize")));
    QVERIFY(!LateBinding::hasMember(&frame, QStringLiteral("cast")));
}

void tst_LateBinding::objectsTravelThroughCalls()
{
    TestFrame frame;
    auto objeto = std::make_shared<Objeto>();
    objeto->setCodigo(QStringLiteral("D1"));
    const QVariant answer = LateBinding::call(&frame, QStringLiteral("setActive"),
                                              {QVariant::fromValue<ObjetoPtr>(objeto)});
    QCOMPARE(answer.value<ObjetoPtr>(), ObjetoPtr(objeto));
    QCOMPARE(frame.calls.last(), QStringLiteral("setActive(D1)"));

    frame.answerNone = true;
    QVERIFY(!LateBinding::call(&frame, QStringLiteral("setActive"), {QVariant::fromValue<ObjetoPtr>(objeto)})
                 .value<ObjetoPtr>());

    QWidget control;
    LateBinding::call(&frame, QStringLiteral("Resize"), {QVariant::fromValue<QWidget *>(&control)});
    QCOMPARE(frame.calls.last(), QStringLiteral("Resize"));
}

void tst_LateBinding::failures()
{
    TestFrame frame;
    try {
        LateBinding::call(&frame, QStringLiteral("cast"));
        QFAIL("a member the object lacks must fail");
    } catch (const Error &error) {
        QCOMPARE(error.code(), Error::MemberNotSupported);
    }
    try {
        LateBinding::get(nullptr, QStringLiteral("Width"));
        QFAIL("a none target must fail");
    } catch (const Error &error) {
        QCOMPARE(error.code(), Error::ObjectNotSet);
    }
    // An argument that cannot become the parameter's type is refused, not passed on.
    QVERIFY_THROWS_EXCEPTION(Error, LateBinding::call(&frame, QStringLiteral("setActive"),
                                                      {QVariant::fromValue(QStringList{QStringLiteral("x")})}));
    QVERIFY_THROWS_EXCEPTION(Error, LateBinding::set(&frame, QStringLiteral("Width"), 1.0e12));
    QCOMPARE(frame.width(), 800);
}

QTEST_MAIN(tst_LateBinding)
#include "tst_latebinding.moc"
