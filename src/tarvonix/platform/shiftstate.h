// SPDX-License-Identifier: MIT
#ifndef TARVONIX_SHIFTSTATE_H
#define TARVONIX_SHIFTSTATE_H

#include <tarvonix/tarvonix_export.h>

#include <Qt>

namespace tarvonix {

/*!
    The pointer and key states as the controls compare them.

    The shift state is the sum of 1 (Shift), 2 (Ctrl) and 4 (Alt) and is
    compared as an exact value: 1 is Shift alone, 3 is Shift and Ctrl.
    Buttons are 1 (left), 2 (right) and 4 (middle), summed when several are down.
*/
enum ShiftBits { ShiftMask = 1, CtrlMask = 2, AltMask = 4 };
enum ButtonBits { LeftButton = 1, RightButton = 2, MiddleButton = 4 };

TARVONIX_EXPORT int shiftState(Qt::KeyboardModifiers modifiers);
TARVONIX_EXPORT Qt::KeyboardModifiers toModifiers(int shift);
TARVONIX_EXPORT int mouseButton(Qt::MouseButtons buttons);

} // namespace tarvonix

#endif
