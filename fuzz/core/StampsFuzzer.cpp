// SPDX-License-Identifier: MIT
#include <core/parseNSStringStamp4strftime.h>

#include <QDateTime>

#include <cstddef>
#include <cstdint>

/// A phrase's text with stamps and formats, at a moment of its own: the first eight bytes, in seconds.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    constexpr std::size_t momentSize = 8;
    constexpr qint64 farthest = 400'000'000'000;
    if (size < momentSize) {
        return 0;
    }
    quint64 seconds = 0;
    for (std::size_t i = 0; i < momentSize; ++i) {
        seconds = seconds << 8 | data[i];
    }
    QString text = QString::fromUtf8(QByteArrayView(data + momentSize, qsizetype(size - momentSize)));
    parseNSStringStamp4strftime(text, QDateTime::fromSecsSinceEpoch(qint64(seconds) % farthest, Qt::UTC));
    return 0;
}
