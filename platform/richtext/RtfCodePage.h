// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArrayView>
#include <QString>

#include <array>

namespace Rtf {

/// One of the character sets that RTF's 8-bit text is written in.
class CodePage final
{
public:
    /// The code page with this number as `\ansicpg` gives it (10000 is Mac Roman); 1252 for a number that is not known.
    static const CodePage& numbered(int number);
    /// The same for the character set of a font (`\fcharset`); @p documentCodePage where the set names none.
    static const CodePage& ofCharset(int charset, const CodePage& documentCodePage);

    /// Some characters take two or more bytes: only whole runs of bytes can be decoded.
    bool isMultiByte() const { return m_multiByte; }

    /// The character of one byte, in a set that is not multi-byte.
    char16_t character(uchar byte) const { return m_characters[byte]; }

    /// Decodes a run of bytes; what has no meaning becomes U+FFFD.
    QString decoded(QByteArrayView bytes) const;
    /// The byte of a character, in a set that is not multi-byte; 0 when it has none.
    uchar byteOf(char16_t character) const;

    CodePage(const CodePage&) = delete;
    CodePage& operator=(const CodePage&) = delete;
    CodePage(CodePage&&) = delete;
    CodePage& operator=(CodePage&&) = delete;
    ~CodePage() = default;

private:
    CodePage(const char* name, bool multiByte);

    const char* m_name;
    bool m_multiByte;
    std::array<char16_t, 256> m_characters{};
};

} // namespace Rtf
