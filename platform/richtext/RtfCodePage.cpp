// SPDX-License-Identifier: MIT
#include "RtfCodePage.h"

#include <QStringDecoder>

#include <algorithm>
#include <array>
#include <iterator>
#include <map>
#include <memory>

namespace Rtf {

namespace {

constexpr int westernNumber = 1252;

struct Charset
{
    int charset;
    int codePage;
};

constexpr auto charsets =
    std::to_array<Charset>({{77, 10000}, {128, 932}, {129, 949}, {134, 936}, {136, 950}, {161, 1253}, {162, 1254},
        {163, 1258}, {177, 1255}, {178, 1256}, {186, 1257}, {204, 1251}, {222, 874}, {238, 1250}});

struct NamedPage
{
    int number;
    const char* name;
    bool multiByte;
};

constexpr auto namedPages = std::to_array<NamedPage>({{westernNumber, "windows-1252", false},
    {10000, "macintosh", false}, {437, "IBM437", false}, {850, "IBM850", false}, {874, "windows-874", false},
    {932, "Shift_JIS", true}, {936, "GBK", true}, {949, "windows-949", true}, {950, "Big5", true},
    {1250, "windows-1250", false}, {1251, "windows-1251", false}, {1253, "windows-1253", false},
    {1254, "windows-1254", false}, {1255, "windows-1255", false}, {1256, "windows-1256", false},
    {1257, "windows-1257", false}, {1258, "windows-1258", false}, {65001, "UTF-8", true}});

const NamedPage& namedPage(int number)
{
    const auto* const found = std::ranges::find(namedPages, number, &NamedPage::number);
    return found == std::end(namedPages) ? namedPages[0] : *found;
}

} // namespace

CodePage::CodePage(const char* name, bool multiByte)
    : m_name(name)
    , m_multiByte(multiByte)
{
    for (int byte = 0; byte < 256 && !multiByte; ++byte) {
        const char raw = char(byte);
        const QString decodedByte = decoded(QByteArrayView(&raw, 1));
        m_characters[size_t(byte)] = decodedByte.size() == 1 ? decodedByte.front().unicode() : u'\uFFFD';
    }
}

const CodePage& CodePage::numbered(int number)
{
    static std::map<const char*, std::unique_ptr<CodePage>> pages;

    const NamedPage& known = namedPage(number);
    std::unique_ptr<CodePage>& page = pages[known.name];
    if (!page) {
        page.reset(new CodePage(known.name, known.multiByte));
    }
    return *page;
}

const CodePage& CodePage::ofCharset(int charset, const CodePage& documentCodePage)
{
    const auto* const found = std::ranges::find(charsets, charset, &Charset::charset);
    return found == std::end(charsets) ? documentCodePage : numbered(found->codePage);
}

QString CodePage::decoded(QByteArrayView bytes) const
{
    QStringDecoder decoder(m_name, QStringDecoder::Flag::Stateless);
    // Qt may have been built without the library that knows these sets: Latin-1 is the nearest that is always there.
    QString text = decoder.isValid() ? QString(decoder.decode(bytes)) : QString::fromLatin1(bytes);
    // A text holds no NUL: whatever stored one would end the text there.
    return text.replace(QChar(QChar::Null), QChar(QChar::ReplacementCharacter));
}

uchar CodePage::byteOf(char16_t character) const
{
    const auto found = std::ranges::find(m_characters, character);
    return found == m_characters.end() || character == u'\uFFFD' ? uchar(0) : uchar(found - m_characters.begin());
}

} // namespace Rtf
