// SPDX-License-Identifier: MIT
#ifndef TARVONIX_STYLECODES_H
#define TARVONIX_STYLECODES_H

#include <QtGlobal>

namespace tarvonix {

/*!
    The values of the host-style properties BorderStyle and BackStyle that
    several controls share. The properties keep their qint16 type, so a host
    that stores the number reads back the same number; these name it.
*/
enum BorderStyleCode : qint16 {
    BorderNone = 0, //!< no border
    BorderSingle = 1, //!< a single line around the control
};

enum BackStyleCode : qint16 {
    BackTransparent = 0, //!< what lies beneath shows through
    BackOpaque = 1, //!< filled with BackColor
};

} // namespace tarvonix

#endif
