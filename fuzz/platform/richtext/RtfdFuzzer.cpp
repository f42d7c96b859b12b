// SPDX-License-Identifier: MIT
#include <platform/richtext/Rtfd.h>

#include <QTextDocument>

#include <cstdint>
#include <cstdlib>
#include <tuple>

/// Any wrapper can be read; its files come back from a wrapper written with them, and its pictures can be asked for.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArrayView bytes(data, qsizetype(size));
    const Rtfd::Contents contents = Rtfd::readWrapper(bytes);
    for (const TextAttachment& file : contents.files) {
        TextAttachment::picture(file.contents);
    }
    if (Rtfd::readWrapper(Rtfd::writeWrapper(contents.files)).files.size() != contents.files.size()) {
        std::abort();
    }
    QTextDocument document;
    std::ignore = Rtfd::read(bytes, document);
    return 0;
}
