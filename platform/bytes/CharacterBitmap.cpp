// SPDX-License-Identifier: MIT
#include "CharacterBitmap.h"

#include <algorithm>

namespace {

constexpr qsizetype firstSurrogateByte = 0xD800 / 8;
constexpr qsizetype surrogateBytes = 0x800 / 8;

qsizetype byteOf(QChar character)
{
    return character.unicode() / 8;
}

char maskOf(QChar character)
{
    return char(1U << (character.unicode() % 8));
}

} // namespace

CharacterBitmap::CharacterBitmap()
    : m_bytes(byteCount, '\0')
{
}

CharacterBitmap::CharacterBitmap(QByteArrayView bytes)
    : CharacterBitmap()
{
    std::ranges::copy(bytes.first(std::min(bytes.size(), byteCount)), m_bytes.begin());
    std::fill_n(m_bytes.begin() + firstSurrogateByte, surrogateBytes, '\0');
}

void CharacterBitmap::add(QStringView characters)
{
    for (const QChar character : characters) {
        if (!character.isSurrogate()) {
            m_bytes[byteOf(character)] = char(m_bytes.at(byteOf(character)) | maskOf(character));
        }
    }
}

void CharacterBitmap::remove(QStringView characters)
{
    for (const QChar character : characters) {
        m_bytes[byteOf(character)] = char(m_bytes.at(byteOf(character)) & ~maskOf(character));
    }
}

bool CharacterBitmap::contains(QChar character) const
{
    return (m_bytes.at(byteOf(character)) & maskOf(character)) != 0;
}

bool CharacterBitmap::isEmpty() const
{
    return std::ranges::all_of(m_bytes, [](char byte) { return byte == '\0'; });
}
