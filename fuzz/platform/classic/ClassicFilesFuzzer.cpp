// SPDX-License-Identifier: MIT
#include <platform/classic/AppleDouble.h>
#include <platform/classic/FinderInfo.h>
#include <platform/classic/MacBinary.h>
#include <platform/classic/ResourceFork.h>

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

void readFork(QByteArrayView bytes)
{
    const auto parsed = ResourceFork::parse(bytes.toByteArray());
    if (!parsed) {
        return;
    }
    for (const ResourceFork::Resource& resource : parsed->resources()) {
        parsed->data(resource);
    }
}

} // namespace

/// Resource forks, bare and inside their containers.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArrayView bytes(data, qsizetype(size));
    const BoundedBytes file(bytes);
    readFork(bytes);
    if (const auto container = AppleDouble::parse(bytes, file.size())) {
        const ByteRange fork = container->entry(AppleDouble::resourceFork).value_or(ByteRange());
        const ByteRange info = container->entry(AppleDouble::finderInfo).value_or(ByteRange());
        readFork(bytes.sliced(qsizetype(fork.offset), qsizetype(fork.length)));
        FinderInfo::parse(bytes.sliced(qsizetype(info.offset), qsizetype(info.length)));
    }
    if (const auto binary = MacBinary::parse(bytes, file.size())) {
        readFork(bytes.sliced(qsizetype(binary->resourceFork.offset), qsizetype(binary->resourceFork.length)));
    }
    return 0;
}
