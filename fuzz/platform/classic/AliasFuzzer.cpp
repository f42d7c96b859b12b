// SPDX-License-Identifier: MIT
#include <platform/classic/AliasRecord.h>
#include <platform/classic/Bookmark.h>

#include <QtGlobal>

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

/// Alias records and bookmarks: whatever they say, their path never leads upwards.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArrayView bytes(data, qsizetype(size));
    for (const auto& target : {AliasRecord::parse(bytes), Bookmark::parse(bytes)}) {
        const QString path = target.value_or(AliasTarget()).path + u'/';
        if (path.contains(u"/../")) {
            qFatal("a path that leads upwards");
        }
    }
    return 0;
}
