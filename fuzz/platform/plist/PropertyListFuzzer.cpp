// SPDX-License-Identifier: MIT
#include <platform/plist/PropertyList.h>

#include <cstdint>
#include <cstdlib>

namespace {

void require(bool condition)
{
    if (!condition) {
        std::abort();
    }
}

} // namespace

/// Every form: what can be read can be written and gives the same value again, in both written forms.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArrayView bytes(data, qsizetype(size));
    const PropertyList::ReadResult result = PropertyList::read(bytes);
    require(result.root.isNull() != result.error.isEmpty());
    if (result.root.isNull()) {
        return 0;
    }
    const QByteArray binary = PropertyList::writeBinary(result.root);
    require(PropertyList::read(binary).root == result.root);
    if (const auto xml = PropertyList::writeXml(result.root)) {
        // Dates lose their fractions on the way, and a dictionary may turn into the reference that it stands for.
        const PropertyList::Value again = PropertyList::read(*xml).root;
        require(!again.isNull());
        require(PropertyList::writeXml(again) == xml);
    }
    return 0;
}
