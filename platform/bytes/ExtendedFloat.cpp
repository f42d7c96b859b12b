// SPDX-License-Identifier: MIT
#include "ExtendedFloat.h"

#include <QtEndian>

#include <cmath>

namespace {

constexpr int bias = 16383;
constexpr int mantissaBits = 64;
constexpr quint16 specialExponent = 0x7FFF;

} // namespace

double ExtendedFloat::decode(QByteArrayView bytes)
{
    if (bytes.size() < size) {
        return 0;
    }
    const auto signAndExponent = qFromBigEndian<quint16>(bytes.data());
    const quint16 exponent = signAndExponent & specialExponent;
    const auto mantissa = qFromBigEndian<quint64>(bytes.data() + 2);
    const double value = std::ldexp(double(mantissa), exponent - bias - (mantissaBits - 1));
    if (exponent == specialExponent || !std::isfinite(value)) {
        return 0;
    }
    return (signAndExponent & 0x8000) != 0 ? -value : value;
}

QByteArray ExtendedFloat::encode(double value)
{
    QByteArray bytes(size, '\0');
    if (value > 0) {
        int exponent = 0;
        const double fraction = std::frexp(value, &exponent); // 0.5 to 1
        qToBigEndian(quint16(exponent + bias - 1), bytes.data());
        qToBigEndian(quint64(std::ldexp(fraction, mantissaBits)), bytes.data() + 2);
    }
    return bytes;
}
