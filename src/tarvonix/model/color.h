// SPDX-License-Identifier: MIT
#ifndef TARVONIX_COLOR_H
#define TARVONIX_COLOR_H

#include <tarvonix/tarvonixmodel_export.h>

#include <QtGlobal>

/*!
    Colour functions on 0x00BBGGRR colours (red in the low byte).

    Both take the channels apart as red = colour mod 256, green =
    floor(colour / 256) mod 256 and blue = floor(floor(colour / 256) / 256),
    where mod keeps the sign of the dividend and blue has no modulo. Plain
    colours give channels 0..255; system colours (high bit set) give
    meaningless channels, so callers pass plain colours only.
*/
namespace tarvonix::Color {

/*!
    Each channel multiplied by \a factor and cut to its whole part; a channel
    above 255 is taken as 255. A factor below 1 darkens, above 1 lightens.
    A result that does not fit 32 bits fails with Error::Overflow.
*/
TARVONIX_MODEL_EXPORT qint32 sombrearColor(qint32 colour, double factor);

//! Whether 0.299 red + 0.587 green + 0.114 blue is at least 150: text on it is then drawn black.
TARVONIX_MODEL_EXPORT bool esColorClaro(qint32 colour);

} // namespace tarvonix::Color

#endif
