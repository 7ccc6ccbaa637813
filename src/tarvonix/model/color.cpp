// SPDX-License-Identifier: MIT
#include <tarvonix/model/color.h>

#include <tarvonix/core/error.h>

#include <cmath>
#include <limits>

namespace tarvonix::Color {

namespace {

struct Canales
{
    qint64 rojo;
    qint64 verde;
    qint64 azul;
};

qint64 divisionEntera(qint64 dividendo, qint64 divisor)
{
    const qint64 cociente = dividendo / divisor;
    return (dividendo % divisor != 0 && dividendo < 0) ? cociente - 1 : cociente; // floor, also below 0
}

Canales separar(qint32 colour)
{
    const qint64 valor = colour;
    const qint64 sinRojo = divisionEntera(valor, 256);
    return Canales{valor % 256, sinRojo % 256, divisionEntera(sinRojo, 256)};
}

double sombrear(qint64 canal, double factor)
{
    const double resultado = std::floor(double(canal) * factor);
    return std::isnan(resultado) || resultado > 255 ? 255 : resultado;
}

} // namespace

qint32 sombrearColor(qint32 colour, double factor)
{
    // The channels.
    const Canales c = separar(colour);
    // Each one scaled and cut, then put together again.
    const double resultado = sombrear(c.rojo, factor) + 256.0 * sombrear(c.verde, factor)
        + 65536.0 * sombrear(c.azul, factor);
    if (!(resultado >= std::numeric_limits<qint32>::min() && resultado <= std::numeric_limits<qint32>::max()))
        throw Error(Error::Overflow);
    return qint32(resultado);
}

bool esColorClaro(qint32 colour)
{
    const Canales c = separar(colour);
    // In thousandths, so that a sum of exactly 150 is not lost to rounding.
    return 299 * c.rojo + 587 * c.verde + 114 * c.azul >= 150000;
}

} // namespace tarvonix::Color
