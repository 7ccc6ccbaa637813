// SPDX-License-Identifier: MIT
#include <tarvonix/core/error.h>
#include <tarvonix/model/objeto.h>
#include <tarvonix/platform/latebinding.h>

#include "../model/modeltest.h"
#include "testframe.h"

#include <QTest>

using namespace tarvonix;
using namespace Qt::StringLiterals;
using modeltest::failureOf;

class tst_LateBinding : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void hostMembersActOnTheWidget()
    {
        QWidget parent;
        QWidget widget(&parent);
        widget.setObjectName(u"D12c"_s);
        for (auto [name, value] :
             { std::pair { "Width", 120.0 }, { "height", 45.5 }, { "left", 7.0 }, { "TOP", 9.0 } })
            LateBinding::set(&widget, QLatin1String(name), value); // any letter case; the height rounds
        QCOMPARE(widget.geometry(), QRect(7, 9, 120, 46));
        QCOMPARE(LateBinding::get(&widget, u"Width"_s).toInt(), 120);
        QCOMPARE(LateBinding::get(&widget, u"Name"_s).toString(), u"D12c"_s);
        LateBinding::call(&widget, u"Move"_s, { 30, 40 });
        QCOMPARE(widget.pos(), QPoint(30, 40));
        // "Visible" is the widget's own setting, not whether its parent shows it.
        LateBinding::set(&widget, u"Visible"_s, true);
        QVERIFY(LateBinding::get(&widget, u"Visible"_s).toBool());
        LateBinding::set(&widget, u"Visible"_s, false);
        QVERIFY(widget.isHidden());
        LateBinding::set(&widget, u"ClipControls"_s, false); // accepted, no meaning
        LateBinding::set(&widget, u"enabled"_s, false);
        QVERIFY(!widget.isEnabled());
    }

    void propertiesAndFunctionsByName()
    {
        TestFrame frame;
        LateBinding::set(&frame, u"pActive"_s, false);
        QCOMPARE(LateBinding::get(&frame, u"pActive"_s).toBool(), false);
        QCOMPARE(LateBinding::call(&frame, u"isActive"_s).toBool(), false);
        LateBinding::call(&frame, u"Activate"_s); // letter case does not matter
        QVERIFY(frame.pActive());
        LateBinding::call(&frame, u"hScroll"_s, { -1 });
        QWidget control;
        LateBinding::call(&frame, u"Resize"_s, { QVariant::fromValue<QWidget *>(&control) });
        QCOMPARE(frame.calls, (QStringList { u"isActive"_s, u"activate"_s, u"hScroll(-1)"_s, u"Resize"_s }));
        QVERIFY(LateBinding::hasMember(&frame, u"Resize"_s) && !LateBinding::hasMember(&frame, u"cast"_s));
        // Objects travel through calls both ways.
        auto objeto = modeltest::objeto(u"D1"_s);
        const QVariant argument = QVariant::fromValue<ObjetoPtr>(objeto);
        QCOMPARE(LateBinding::call(&frame, u"setActive"_s, { argument }).value<ObjetoPtr>(), objeto);
        QCOMPARE(frame.calls.last(), u"setActive(D1)"_s);
        frame.answerNone = true;
        QVERIFY(!LateBinding::call(&frame, u"setActive"_s, { argument }).value<ObjetoPtr>());
    }

    void failures()
    {
        TestFrame frame;
        QCOMPARE(failureOf([&] { LateBinding::call(&frame, u"cast"_s); }), int(Error::MemberNotSupported));
        QCOMPARE(failureOf([&] { LateBinding::get(nullptr, u"Width"_s); }), int(Error::ObjectNotSet));
        // An argument that cannot become the parameter's type is refused, not passed on.
        const QVariant list = QVariant::fromValue(QStringList { u"x"_s });
        QCOMPARE(failureOf([&] { LateBinding::call(&frame, u"setActive"_s, { list }); }),
                 int(Error::InvalidArgument));
        QCOMPARE(failureOf([&] { LateBinding::set(&frame, u"Width"_s, 1.0e12); }), int(Error::Overflow));
        QCOMPARE(frame.width(), 800);
    }
};

QTEST_MAIN(tst_LateBinding)
#include "tst_latebinding.moc"
