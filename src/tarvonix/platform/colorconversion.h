// SPDX-License-Identifier: MIT
#ifndef TARVONIX_COLORCONVERSION_H
#define TARVONIX_COLORCONVERSION_H

#include <tarvonix/tarvonix_export.h>

#include <QColor>
#include <QPalette>

namespace tarvonix {

/*!
    Conversion between the library's 32-bit colours and QColor.

    A plain colour is 0x00BBGGRR, red in the low byte. A value with the high
    bit set names a system colour by its index in the low byte (0x80000012 is
    the button text, 0x8000000F the button face, ...); it is drawn with the
    matching colour of \a palette.
*/
TARVONIX_EXPORT QColor toQColor(qint32 colour, const QPalette &palette = QPalette());

//! The plain 0x00BBGGRR form of \a colour.
TARVONIX_EXPORT qint32 fromQColor(const QColor &colour);

//! Whether \a colour names a system colour (its high bit is set).
TARVONIX_EXPORT bool isSystemColour(qint32 colour);

} // namespace tarvonix

#endif
