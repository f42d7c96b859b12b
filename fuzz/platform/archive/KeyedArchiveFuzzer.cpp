// SPDX-License-Identifier: MIT
#include <platform/archive/KeyedArchive.h>

#include <cstdint>
#include <cstdlib>

/// An index set that can be read keeps its members when it is archived again.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto members = KeyedArchive::unarchivedIndexSet(QByteArrayView(data, qsizetype(size)));
    if (members && KeyedArchive::unarchivedIndexSet(KeyedArchive::archivedIndexSet(*members)) != members) {
        std::abort();
    }
    return 0;
}
