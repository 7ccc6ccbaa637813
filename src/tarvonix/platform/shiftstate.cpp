// SPDX-License-Identifier: MIT
#include <tarvonix/platform/shiftstate.h>

namespace tarvonix {

int shiftState(Qt::KeyboardModifiers modifiers)
{
    int shift = 0;
    if (modifiers.testFlag(Qt::ShiftModifier))
        shift |= ShiftMask;
    if (modifiers.testFlag(Qt::ControlModifier))
        shift |= CtrlMask;
    if (modifiers.testFlag(Qt::AltModifier))
        shift |= AltMask;
    return shift;
}

Qt::KeyboardModifiers toModifiers(int shift)
{
    Qt::KeyboardModifiers modifiers;
    modifiers.setFlag(Qt::ShiftModifier, shift & ShiftMask);
    modifiers.setFlag(Qt::ControlModifier, shift & CtrlMask);
    modifiers.setFlag(Qt::AltModifier, shift & AltMask);
    return modifiers;
}

int mouseButton(Qt::MouseButtons buttons)
{
    int button = 0;
    if (buttons.testFlag(Qt::LeftButton))
        button |= LeftButton;
    if (buttons.testFlag(Qt::RightButton))
        button |= RightButton;
    if (buttons.testFlag(Qt::MiddleButton))
        button |= MiddleButton;
    return button;
}

} // namespace tarvonix
