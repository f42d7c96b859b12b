// SPDX-License-Identifier: MIT
#pragma once

#include "TypedStream.h"

#include <QColor>

/// The objects of typed streams that formatted text is made of, each read from its values. Objects of another class
/// than expected, or with other values, give empty results.
namespace TypedStream {

/// Goes through the values of an object. The archive must outlive it.
class Items final
{
public:
    Items(const Archive& archive, const Entry& entry)
        : m_archive(archive)
        , m_items(entry.items)
    {
    }

    bool atEnd() const { return m_next == m_items.size(); }

    /// The next value, whatever it is; null at the end.
    const Item* next();
    /// The next value as an integer, a real (or integer), bytes or an object; nothing or null where it is none.
    std::optional<qint64> nextInteger();
    std::optional<double> nextReal();
    QByteArray nextBytes();
    const Entry* nextObject();

private:
    const Archive& m_archive;
    const std::vector<Item>& m_items;
    size_t m_next = 0;
};

/// The UTF-8 bytes of a string object.
QByteArray stringBytes(const Archive& archive, const Entry& entry);
/// The bytes of a data object, or of any object that begins like one.
QByteArray dataBytes(const Archive& archive, const Entry& entry);
/// The value of a number object.
double number(const Archive& archive, const Entry& entry);
/// A color object in RGB; invalid for kinds that say nothing about the color.
QColor color(const Archive& archive, const Entry& entry);

struct Font
{
    /// As the platform names fonts: "Times-BoldItalic".
    QString name;
    /// In points, 0 to 10,000.
    double size = 0;
};

std::optional<Font> font(const Archive& archive, const Entry& entry);

/// Whether @p bytes begin as a TIFF file, of either byte order.
bool isTiffFile(QByteArrayView bytes);
/// Whether @p bytes begin as a TIFF, PNG, JPEG, GIF or PDF file.
bool isPictureFile(QByteArrayView bytes);

} // namespace TypedStream
