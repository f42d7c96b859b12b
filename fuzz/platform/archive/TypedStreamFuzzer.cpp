// SPDX-License-Identifier: MIT
#include <platform/archive/ArchivedText.h>

#include <cstdint>
#include <cstdlib>

/// Attributed strings and images; the runs always cover the text exactly.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArrayView bytes(data, qsizetype(size));
    unarchivedImageFile(bytes);
    const Result<ArchivedText> result = unarchivedText(bytes);
    if (result) {
        qsizetype covered = 0;
        for (const AttributedText::Run& run : result->text.runs) {
            covered += run.length;
        }
        if (covered != result->text.text.size()) {
            std::abort();
        }
    }
    return 0;
}
