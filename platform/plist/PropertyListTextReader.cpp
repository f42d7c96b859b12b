// SPDX-License-Identifier: MIT
#include "PropertyListForms.h"

#include <platform/bytes/MacRoman.h>

#include <array>

using namespace Qt::StringLiterals;

namespace PropertyList {

namespace {

// The characters of the NeXTSTEP encoding from 0x80 on, which octal escapes use.
constexpr std::array<char16_t, 128> nextStepCharacters{
    // clang-format off
    0x00A0, 0x00C0, 0x00C1, 0x00C2, 0x00C3, 0x00C4, 0x00C5, 0x00C7, 0x00C8, 0x00C9, 0x00CA, 0x00CB, 0x00CC, 0x00CD, 0x00CE, 0x00CF,
    0x00D0, 0x00D1, 0x00D2, 0x00D3, 0x00D4, 0x00D5, 0x00D6, 0x00D9, 0x00DA, 0x00DB, 0x00DC, 0x00DD, 0x00DE, 0x00B5, 0x00D7, 0x00F7,
    0x00A9, 0x00A1, 0x00A2, 0x00A3, 0x2044, 0x00A5, 0x0192, 0x00A7, 0x00A4, 0x2019, 0x201C, 0x00AB, 0x2039, 0x203A, 0xFB01, 0xFB02,
    0x00AE, 0x2013, 0x2020, 0x2021, 0x00B7, 0x00A6, 0x00B6, 0x2022, 0x201A, 0x201E, 0x201D, 0x00BB, 0x2026, 0x2030, 0x00AC, 0x00BF,
    0x00B9, 0x02CB, 0x00B4, 0x02C6, 0x02DC, 0x00AF, 0x02D8, 0x02D9, 0x00A8, 0x00B2, 0x02DA, 0x00B8, 0x00B3, 0x02DD, 0x02DB, 0x02C7,
    0x2014, 0x00B1, 0x00BC, 0x00BD, 0x00BE, 0x00E0, 0x00E1, 0x00E2, 0x00E3, 0x00E4, 0x00E5, 0x00E7, 0x00E8, 0x00E9, 0x00EA, 0x00EB,
    0x00EC, 0x00C6, 0x00ED, 0x00AA, 0x00EE, 0x00EF, 0x00F0, 0x00F1, 0x0141, 0x00D8, 0x0152, 0x00BA, 0x00F2, 0x00F3, 0x00F4, 0x00F5,
    0x00F6, 0x00E6, 0x00F9, 0x00FA, 0x00FB, 0x0131, 0x00FC, 0x00FD, 0x0142, 0x00F8, 0x0153, 0x00DF, 0x00FE, 0x00FF, 0xFFFD, 0xFFFD,
    // clang-format on
};

bool isBare(QChar c)
{
    const char16_t unit = c.unicode();
    const bool isLetter = (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z');
    return isLetter || (unit >= u'0' && unit <= u'9') || u"_$/:.-"_s.contains(c);
}

int digitOf(QChar c, int base)
{
    const char16_t unit = c.unicode();
    int digit = base;
    if (unit >= u'0' && unit <= u'9') {
        digit = unit - u'0';
    } else if ((unit | 0x20) >= u'a' && (unit | 0x20) <= u'f') {
        digit = (unit | 0x20) - u'a' + 10;
    }
    return digit < base ? digit : -1;
}

class TextReader final
{
public:
    explicit TextReader(const QString& text)
        : m_text(text)
    {
    }

    Result<Value> read()
    {
        Value root = readRoot();
        return resultOf(std::move(root), m_problem);
    }

private:
    Value readRoot();
    Value readValue(int depth);
    Value readArray(int depth);
    /// Pairs up to @p closing, or to the end of the text for a null one; @p entries may hold a first key already.
    Value readPairs(QChar closing, std::optional<QString> firstKey, int depth);
    std::optional<Value> readPairValue(const QString& key, int depth);
    Value readData();
    std::optional<QString> readString();
    std::optional<QString> readQuoted(QChar quote);
    QChar readEscape();
    char16_t readDigits(int base, int longest);
    bool skipSpace();
    bool skipComment(bool isBlock);

    bool atEnd() const { return m_at == m_text.size(); }

    QChar current() const { return atEnd() ? QChar() : m_text[m_at]; }

    bool take(QChar c)
    {
        const bool taken = !atEnd() && m_text[m_at] == c;
        m_at += taken ? 1 : 0;
        return taken;
    }

    // Counts from the beginning, for the one message only.
    bool fail(QStringView what) { return m_problem.note(what, QStringView(m_text).left(m_at).toUtf8().size()); }

    Value failed(QStringView what)
    {
        fail(what);
        return {};
    }

    const QString m_text;
    qsizetype m_at = 0;
    FirstProblem m_problem;
};

Value TextReader::readRoot()
{
    if (!skipSpace()) {
        return {};
    }
    if (atEnd()) {
        return failed(u"there is no value");
    }
    Value root;
    if (current() == u'{' || current() == u'(' || current() == u'<') {
        root = readValue(0);
    } else {
        std::optional<QString> text = readString();
        if (!text || !skipSpace()) {
            return {};
        }
        // A file of pairs without braces around them is a dictionary.
        const bool isPair = current() == u'=' || current() == u';';
        root = isPair ? readPairs(QChar(), std::move(text), 1) : Value(*std::move(text));
    }
    if (root.isNull() || !skipSpace()) {
        return {};
    }
    return atEnd() ? root : failed(u"something follows the value");
}

Value TextReader::readValue(int depth)
{
    const bool isContainer = current() == u'{' || current() == u'(';
    if (isContainer && depth == maximumDepth) {
        return failed(u"containers are nested too deeply");
    }
    if (take(u'{')) {
        return readPairs(u'}', std::nullopt, depth + 1);
    }
    if (take(u'(')) {
        return readArray(depth + 1);
    }
    if (take(u'<')) {
        return readData();
    }
    std::optional<QString> text = readString();
    return text ? Value(*std::move(text)) : Value();
}

Value TextReader::readArray(int depth)
{
    std::vector<Value> items;
    for (;;) {
        if (!skipSpace()) {
            return {};
        }
        if (take(u')')) {
            return Array::create(std::move(items));
        }
        Value item = readValue(depth);
        if (item.isNull() || !skipSpace()) {
            return {};
        }
        items.push_back(std::move(item));
        if (!take(u',') && current() != u')') {
            return failed(u"an array element without a comma or end behind it");
        }
    }
}

Value TextReader::readPairs(QChar closing, std::optional<QString> firstKey, int depth)
{
    std::vector<Dictionary::Entry> entries;
    for (;;) {
        if (!skipSpace()) {
            return {};
        }
        if (!firstKey && (closing.isNull() ? atEnd() : take(closing))) {
            break;
        }
        std::optional<QString> key = firstKey ? std::exchange(firstKey, std::nullopt) : readString();
        std::optional<Value> value = key ? readPairValue(*key, depth) : std::nullopt;
        if (!value) {
            return {};
        }
        entries.push_back({*std::move(key), *std::move(value)});
        // Some writers leave out the last semicolon.
        const bool atClosing = closing.isNull() ? atEnd() : current() == closing;
        if (!take(u';') && !atClosing) {
            return failed(u"a pair without a semicolon behind it");
        }
    }
    return Dictionary::create(std::move(entries));
}

/// What follows a key: "= value", or nothing where the key stands for itself. White space behind it is skipped.
std::optional<Value> TextReader::readPairValue(const QString& key, int depth)
{
    if (!skipSpace()) {
        return std::nullopt;
    }
    Value value = key;
    if (take(u'=')) {
        value = skipSpace() ? readValue(depth) : Value();
    } else if (current() != u';') {
        fail(u"a key without a value");
        return std::nullopt;
    }
    if (value.isNull() || !skipSpace()) {
        return std::nullopt;
    }
    return value;
}

Value TextReader::readData()
{
    QByteArray bytes;
    int high = -1;
    for (; !atEnd(); ++m_at) {
        if (current().isSpace()) {
            continue;
        }
        const int digit = digitOf(current(), 16);
        if (digit < 0) {
            break;
        }
        if (high < 0) {
            high = digit;
        } else {
            bytes.append(char(high << 4 | digit));
            high = -1;
        }
    }
    if (high >= 0) {
        return failed(u"data with an odd number of digits");
    }
    return take(u'>') ? Value(bytes) : failed(u"data with something else than hexadecimal digits, or without an end");
}

std::optional<QString> TextReader::readString()
{
    const QChar quote = current();
    if (take(u'"') || take(u'\'')) {
        return readQuoted(quote);
    }
    const qsizetype begin = m_at;
    while (!atEnd() && isBare(current())) {
        ++m_at;
    }
    if (m_at == begin) {
        fail(u"text is missing");
        return std::nullopt;
    }
    return m_text.mid(begin, m_at - begin);
}

std::optional<QString> TextReader::readQuoted(QChar quote)
{
    QString text = u""_s;
    while (!atEnd()) {
        if (take(quote)) {
            return text;
        }
        const bool isEscape = take(u'\\');
        if (isEscape && atEnd()) {
            break;
        }
        text.append(isEscape ? readEscape() : m_text[m_at++]);
    }
    fail(u"a quotation without an end");
    return std::nullopt;
}

/// What stands behind a backslash.
QChar TextReader::readEscape()
{
    static constexpr QStringView letters = u"abfnrtv";
    static constexpr QStringView meanings = u"\a\b\f\n\r\t\v";
    if (digitOf(current(), 8) >= 0) {
        const char16_t byte = readDigits(8, 3) & 0xFF;
        return byte < 0x80 ? byte : nextStepCharacters[byte - 0x80];
    }
    const QChar escaped = m_text[m_at++];
    if (escaped == u'U' && digitOf(current(), 16) >= 0) {
        return readDigits(16, 4);
    }
    const qsizetype letter = letters.indexOf(escaped);
    return letter >= 0 ? meanings[letter] : escaped;
}

char16_t TextReader::readDigits(int base, int longest)
{
    int number = 0;
    for (int count = 0; count < longest && digitOf(current(), base) >= 0; ++count) {
        number = number * base + digitOf(current(), base);
        ++m_at;
    }
    return char16_t(number);
}

/// Past white space and comments; false after an error.
bool TextReader::skipSpace()
{
    for (;;) {
        while (!atEnd() && current().isSpace()) {
            ++m_at;
        }
        const QStringView rest = QStringView(m_text).mid(m_at, 2);
        const bool isBlock = rest == u"/*";
        if (!isBlock && rest != u"//") {
            return true;
        }
        if (!skipComment(isBlock)) {
            return false;
        }
    }
}

bool TextReader::skipComment(bool isBlock)
{
    if (isBlock) {
        const qsizetype end = m_text.indexOf(u"*/"_s, m_at + 2);
        if (end < 0) {
            return fail(u"a comment without an end");
        }
        m_at = end + 2;
        return true;
    }
    while (!atEnd() && current() != u'\n' && current() != u'\r') {
        ++m_at;
    }
    return true;
}

} // namespace

Result<Value> readText(QByteArrayView bytes)
{
    const std::optional<QString> text = decodeUtf8(bytes);
    return TextReader(text ? *text : MacRoman::decode(bytes)).read();
}

} // namespace PropertyList
