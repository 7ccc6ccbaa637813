// SPDX-License-Identifier: MIT
#ifndef TARVONIX_INT16_H
#define TARVONIX_INT16_H

#include <tarvonix/tarvonixmodel_export.h>

#include <QtGlobal>

namespace tarvonix {

/*!
    Conversions into the 16-bit object units of map objects.

    Positions and sizes of map objects are 16-bit integers. A computed value
    that does not fit is the failure Error::Overflow, never a silent wrap; the
    one place where wrapping is wanted (the codes a leg generates) says so by
    calling wrapInt16().
*/

//! Rounds \a value to the nearest integer, ties to even, and checks that it fits 16 bits.
TARVONIX_MODEL_EXPORT qint16 toInt16(double value);

//! Checks that \a value fits 16 bits.
TARVONIX_MODEL_EXPORT qint16 toInt16(qint64 value);

//! Rounds to the nearest integer with ties to even (2.5 -> 2, 3.5 -> 4), without range check.
TARVONIX_MODEL_EXPORT double roundHalfEven(double value);

//! Two's-complement wrap into 16 bits (33000 -> -32536), with no failure.
TARVONIX_MODEL_EXPORT qint16 wrapInt16(qint64 value);

} // namespace tarvonix

#endif
