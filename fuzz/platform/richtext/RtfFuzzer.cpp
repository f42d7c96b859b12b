// SPDX-License-Identifier: MIT
#include <platform/richtext/Rtf.h>

#include <QTextDocument>

#include <cstdint>
#include <cstdlib>

/// Any text can be read, and reading what was written from it gives the same RTF again.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    QTextDocument document;
    Rtf::read(QByteArrayView(data, qsizetype(size)), {}).text.fill(document);
    const Rtf::Written written = Rtf::write(document);

    QTextDocument copy;
    Rtf::read(written.rtf, written.attachments).text.fill(copy);
    if (copy.toRawText() != document.toRawText()) {
        std::abort();
    }
    return 0;
}
