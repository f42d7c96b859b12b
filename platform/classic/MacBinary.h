// SPDX-License-Identifier: MIT
#pragma once

#include "FinderInfo.h"

#include <platform/bytes/BoundedBytes.h>

#include <QByteArrayView>

#include <optional>

/// The header of a MacBinary file, versions I, II and III (the "MacBinary II" and "MacBinary III" standard proposals):
/// one file's data fork, resource fork and Finder information, each padded to 128 bytes.
struct MacBinary
{
    static constexpr quint64 headerSize = 128;

    /// 1, 2 or 3.
    int version = 0;
    FinderInfo finderInfo;
    ByteRange resourceFork;

    /// Reads the header from the first bytes of a file that is @p fileSize bytes long; nothing when it is no MacBinary
    /// file. Versions II and III are known by their check sum. Version I has none, so it must be plausible in every
    /// field and both forks must fit the file. Forks are cut off at the end of the file.
    static std::optional<MacBinary> parse(QByteArrayView head, quint64 fileSize);
};
