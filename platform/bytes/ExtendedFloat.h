// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QByteArrayView>

/// The 80-bit extended floating-point numbers of AIFF files and sampled sounds (SANE): a sign, a 15-bit exponent, a
/// 64-bit mantissa with its leading one; big-endian.
namespace ExtendedFloat {

constexpr qsizetype size = 10;

/// The value of the 10 bytes; 0 for fewer bytes, for what is not a finite number, and where a double cannot hold it.
double decode(QByteArrayView bytes);
/// The 10 bytes of @p value, which must be finite and not negative.
QByteArray encode(double value);

} // namespace ExtendedFloat
