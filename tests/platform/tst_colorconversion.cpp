// SPDX-License-Identifier: MIT
#include <tarvonix/platform/colorconversion.h>
#include <tarvonix/platform/shiftstate.h>

#include <QTest>

using namespace tarvonix;

// The two conversions at the edge between Qt and the controls: colours and shift states.
class tst_ColorConversion : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void coloursKeepRedInTheLowByteOrComeFromThePalette()
    {
        QCOMPARE(toQColor(0x0000FF), QColor(255, 0, 0));
        QCOMPARE(toQColor(0x800000), QColor(0, 0, 128)); // navy
        QCOMPARE(fromQColor(QColor(0x12, 0x34, 0x56)), qint32(0x563412));
        QVERIFY(!isSystemColour(0xFFFFFF) && isSystemColour(qint32(0x80000012)));
        QPalette palette;
        palette.setColor(QPalette::ButtonText, QColor(1, 2, 3));
        palette.setColor(QPalette::Button, QColor(4, 5, 6));
        QCOMPARE(toQColor(qint32(0x80000012), palette), QColor(1, 2, 3));
        QCOMPARE(toQColor(qint32(0x8000000F), palette), QColor(4, 5, 6));
        QVERIFY(toQColor(qint32(0x800000FF), palette).isValid()); // unknown index: still a colour
    }

    void shiftStatesAreExactSums_data()
    {
        QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
        QTest::addColumn<int>("shift");
        QTest::newRow("shift") << Qt::KeyboardModifiers(Qt::ShiftModifier) << 1;
        QTest::newRow("shift+ctrl") << (Qt::ShiftModifier | Qt::ControlModifier) << 3;
        QTest::newRow("alt") << Qt::KeyboardModifiers(Qt::AltModifier) << 4;
        QTest::newRow("keypad is no modifier") << Qt::KeyboardModifiers(Qt::KeypadModifier) << 0;
    }
    void shiftStatesAreExactSums()
    {
        QFETCH(Qt::KeyboardModifiers, modifiers);
        QFETCH(int, shift);
        QCOMPARE(shiftState(modifiers), shift);
        QCOMPARE(shiftState(toModifiers(shift)), shift);
        QCOMPARE(mouseButton(Qt::LeftButton | Qt::RightButton), 3);
    }
};

QTEST_MAIN(tst_ColorConversion)
#include "tst_colorconversion.moc"
