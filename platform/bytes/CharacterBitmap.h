// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

/// A set of characters in the bitmap form: 8,192 bytes in which character n of the Basic Multilingual Plane is bit n %
/// 8 (the lowest first) of byte n / 8 (public source: the bitmap representation of Foundation's character sets).
///
/// Characters beyond U+FFFF and surrogates are not part of the set: the form always has the same size.
class CharacterBitmap final
{
public:
    static constexpr qsizetype byteCount = 8192;

    /// An empty set.
    CharacterBitmap();
    /// The set in @p bytes: what is missing counts as empty, further planes and the surrogates' bits are dropped.
    explicit CharacterBitmap(QByteArrayView bytes);

    void add(QStringView characters);
    void remove(QStringView characters);

    bool contains(QChar character) const;
    bool isEmpty() const;

    /// Always 8,192 bytes.
    QByteArray bytes() const { return m_bytes; }

    bool operator==(const CharacterBitmap&) const = default;

private:
    QByteArray m_bytes;
};
