// SPDX-License-Identifier: MIT
#pragma once

#include <platform/bytes/BoundedBytes.h>

/// The Finder's information about a file (32 bytes, big-endian; "Inside Macintosh: Macintosh Toolbox Essentials",
/// chapter 7), as far as anything here needs it.
struct FinderInfo
{
    /// Bits of flags.
    static constexpr quint16 aliasFlag = 0x8000;

    quint32 type = 0;
    quint16 flags = 0;

    bool isAlias() const noexcept { return (flags & aliasFlag) != 0; }

    /// Reads @p bytes; what a shorter block leaves out counts as zero.
    static FinderInfo parse(QByteArrayView bytes)
    {
        const BoundedBytes block(bytes);
        return {block.big<quint32>(0), block.big<quint16>(8)};
    }
};
