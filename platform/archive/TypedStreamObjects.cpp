// SPDX-License-Identifier: MIT
#include "TypedStreamObjects.h"

#include <platform/bytes/BoundedBytes.h>

#include <QStringDecoder>

#include <algorithm>
#include <array>
#include <cmath>

namespace TypedStream {

namespace {

// Colors may name others as their fallback.
constexpr int deepestFallback = 4;

/// A component of a color, 0 to 1; what is no number counts as 0.
float component(Items& items)
{
    const double value = items.nextReal().value_or(0);
    return value > 0 ? float(std::min(value, 1.0)) : 0.0F;
}

QColor colorOf(const Archive& archive, const Entry& entry, int depth)
{
    if (!archive.isKindOf(entry, "NSColor") || depth > deepestFallback) {
        return {};
    }
    Items items(archive, entry);
    const qint64 kind = items.nextInteger().value_or(0);
    std::array<float, 5> values{};
    const auto take = [&items, &values](size_t count) {
        std::generate_n(values.begin(), count, [&items] { return component(items); });
    };
    switch (kind) {
    case 1:
    case 2:
        take(4);
        return QColor::fromRgbF(values[0], values[1], values[2], values[3]);
    case 3:
    case 4:
        take(2);
        return QColor::fromRgbF(values[0], values[0], values[0], values[1]);
    case 5:
        take(5);
        return QColor::fromCmykF(values[0], values[1], values[2], values[3], values[4]).toRgb();
    case 6: {
        // A named color: the names of its list and itself, and a color for where the list is not known.
        items.next();
        items.next();
        const Entry* fallback = items.nextObject();
        return fallback != nullptr ? colorOf(archive, *fallback, depth + 1) : QColor();
    }
    default:
        return {};
    }
}

/// The string in an old serialized property list: its type and length (32 bits, little-endian), then the text.
QString serializedString(const QByteArray& bytes)
{
    constexpr quint32 dataType = 4;
    constexpr quint32 byteStringType = 5;
    constexpr quint32 wideStringType = 6;
    constexpr quint64 headerSize = 8;
    const BoundedBytes bounded(bytes);
    const auto type = bounded.little<quint32>(0);
    const QByteArrayView text = bounded.slice(headerSize, bounded.little<quint32>(4));
    if (type == wideStringType) {
        QStringDecoder decoder(QStringDecoder::Utf16, QStringConverter::Flag::Stateless);
        return decoder(text);
    }
    return type == dataType || type == byteStringType ? QString::fromLatin1(text) : QString();
}

} // namespace

const Item* Items::next()
{
    return atEnd() ? nullptr : &m_items[m_next++];
}

std::optional<qint64> Items::nextInteger()
{
    const auto* integer = std::get_if<qint64>(next());
    return integer != nullptr ? std::optional(*integer) : std::nullopt;
}

std::optional<double> Items::nextReal()
{
    const Item* item = next();
    if (const auto* integer = std::get_if<qint64>(item)) {
        return double(*integer);
    }
    const auto* real = std::get_if<double>(item);
    return real != nullptr ? std::optional(*real) : std::nullopt;
}

QByteArray Items::nextBytes()
{
    const auto* bytes = std::get_if<QByteArray>(next());
    return bytes != nullptr ? *bytes : QByteArray();
}

const Entry* Items::nextObject()
{
    const Item* item = next();
    return item != nullptr ? m_archive.object(*item) : nullptr;
}

QByteArray stringBytes(const Archive& archive, const Entry& entry)
{
    return archive.isKindOf(entry, "NSString") ? Items(archive, entry).nextBytes() : QByteArray();
}

QByteArray dataBytes(const Archive& archive, const Entry& entry)
{
    Items items(archive, entry);
    items.next(); // the length once more
    return items.nextBytes();
}

double number(const Archive& archive, const Entry& entry)
{
    if (!archive.isKindOf(entry, "NSValue")) {
        return 0;
    }
    Items items(archive, entry);
    items.next(); // the type encoding
    const double value = items.nextReal().value_or(0);
    return std::isfinite(value) ? value : 0;
}

QColor color(const Archive& archive, const Entry& entry)
{
    return colorOf(archive, entry, 0);
}

std::optional<Font> font(const Archive& archive, const Entry& entry)
{
    constexpr double largestSize = 10'000;
    if (!archive.isKindOf(entry, "NSFont")) {
        return std::nullopt;
    }
    Items items(archive, entry);
    items.next(); // the length of the name
    Font font{serializedString(items.nextBytes()), items.nextReal().value_or(0)};
    if (font.name.isEmpty() || !(font.size >= 0 && font.size <= largestSize)) {
        return std::nullopt;
    }
    return font;
}

bool isTiffFile(QByteArrayView bytes)
{
    return bytes.startsWith(QByteArrayView("II*\0", 4)) || bytes.startsWith(QByteArrayView("MM\0*", 4));
}

bool isPictureFile(QByteArrayView bytes)
{
    static constexpr std::array<QByteArrayView, 4> beginnings{"\x89PNG", "\xFF\xD8\xFF", "GIF8", "%PDF"};
    return isTiffFile(bytes) ||
           std::ranges::any_of(beginnings, [bytes](QByteArrayView beginning) { return bytes.startsWith(beginning); });
}

} // namespace TypedStream
