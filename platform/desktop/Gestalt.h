// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

#include <bit>

/// Questions about the machine that the program runs on.
namespace Gestalt {

/// 'sysa': the processor's architecture. The answer tells the order of bytes in a word, nothing finer: every
/// little-endian processor answers as an Intel one.
inline constexpr quint32 systemArchitecture = 0x73797361;

inline constexpr qint32 bigEndianArchitecture = 2;
inline constexpr qint32 intelArchitecture = 10;

/// What query() answers for a selector that it does not know.
inline constexpr int undefinedSelectorError = -5551;

struct Answer
{
    /// 0, or an error code, and then there is no response.
    int error = 0;
    qint32 response = 0;
};

/// The architecture that this program was built for.
constexpr qint32 nativeArchitecture()
{
    return std::endian::native == std::endian::little ? intelArchitecture : bigEndianArchitecture;
}

constexpr Answer query(quint32 selector)
{
    return selector == systemArchitecture ? Answer{0, nativeArchitecture()} : Answer{undefinedSelectorError, 0};
}

} // namespace Gestalt
