// SPDX-License-Identifier: MIT
#include <tarvonix/core/int16.h>

#include <tarvonix/core/error.h>

#include <cmath>
#include <limits>

namespace tarvonix {

double roundHalfEven(double value)
{
    return std::nearbyint(value); // the default rounding mode is to nearest, ties to even
}

qint16 toInt16(double value)
{
    const double rounded = roundHalfEven(value);
    // NaN fails both comparisons and is refused like any value out of range.
    if (!(rounded >= std::numeric_limits<qint16>::min() && rounded <= std::numeric_limits<qint16>::max()))
        throw Error(Error::Overflow);
    return static_cast<qint16>(rounded);
}

qint16 toInt16(qint64 value)
{
    if (value < std::numeric_limits<qint16>::min() || value > std::numeric_limits<qint16>::max())
        throw Error(Error::Overflow);
    return static_cast<qint16>(value);
}

qint16 wrapInt16(qint64 value)
{
    return static_cast<qint16>(static_cast<quint16>(static_cast<quint64>(value) & 0xFFFFu));
}

} // namespace tarvonix
