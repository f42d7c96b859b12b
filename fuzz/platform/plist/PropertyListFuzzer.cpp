// SPDX-License-Identifier: MIT
#include <platform/plist/PropertyList.h>
#include <platform/plist/PropertyListXmlPieces.h>

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
    const Result<PropertyList::Value> root = PropertyList::read(bytes);
    if (!root) {
        require(!root.error().isEmpty());
        return 0;
    }
    require(!root->isNull());
    require(*PropertyList::read(PropertyList::writeBinary(*root)) == *root);
    if (const auto xml = PropertyList::writeXml(*root)) {
        // Dates lose their fractions on the way, and a dictionary may turn into the reference that it stands for.
        const Result<PropertyList::Value> again = PropertyList::read(*xml);
        require(bool(again));
        require(PropertyList::writeXml(*again) == xml);
        if (const auto* dictionary = root->dictionaryInPlace()) {
            PropertyList::XmlPieces pieces;
            require(pieces.update(*dictionary) == PropertyList::XmlPieces::State::Complete);
            require(pieces.pieces().join() == *xml);
        }
    }
    return 0;
}
