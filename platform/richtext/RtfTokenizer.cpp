// SPDX-License-Identifier: MIT
#include "RtfTokenizer.h"

#include <algorithm>
#include <limits>

namespace Rtf {

namespace {

bool isLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool isLineEnd(char c)
{
    return c == '\n' || c == '\r';
}

bool endsText(char c)
{
    return c == '\\' || c == '{' || c == '}' || isLineEnd(c);
}

int hexDigit(char c)
{
    if (isDigit(c)) {
        return c - '0';
    }
    const char lower = char(c | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

} // namespace

Token Tokenizer::next()
{
    while (m_position < m_bytes.size() && isLineEnd(m_bytes[m_position])) {
        ++m_position;
    }
    if (m_position >= m_bytes.size()) {
        return {};
    }
    switch (m_bytes[m_position]) {
    case '{':
        ++m_position;
        return {TokenKind::GroupBegin, {}};
    case '}':
        ++m_position;
        return {TokenKind::GroupEnd, {}};
    case '\\':
        ++m_position;
        return readControl();
    default:
        return readText();
    }
}

Token Tokenizer::readText()
{
    const qsizetype start = m_position;
    const auto* const end = std::find_if(m_bytes.begin() + start, m_bytes.end(), endsText);
    m_position = end - m_bytes.begin();
    return {TokenKind::Text, m_bytes.sliced(start, m_position - start)};
}

Token Tokenizer::readControl()
{
    if (m_position >= m_bytes.size()) {
        return {};
    }
    const char first = m_bytes[m_position];
    if (isLetter(first)) {
        return readWord();
    }
    if (first == '\'') {
        ++m_position;
        return readHexByte();
    }
    const QByteArrayView symbol = isLineEnd(first) ? QByteArrayView("\n") : m_bytes.sliced(m_position, 1);
    ++m_position;
    return {TokenKind::Symbol, symbol};
}

Token Tokenizer::readHexByte()
{
    int value = 0;
    int digits = 0;
    for (; digits < 2 && m_position < m_bytes.size(); ++digits, ++m_position) {
        const int digit = hexDigit(m_bytes[m_position]);
        if (digit < 0) {
            break;
        }
        value = value * 16 + digit;
    }
    if (digits == 0) {
        return {TokenKind::Symbol, QByteArrayView("'")};
    }
    return {TokenKind::Byte, {}, value, true};
}

Token Tokenizer::readWord()
{
    const qsizetype start = m_position;
    const auto* const end = std::find_if_not(m_bytes.begin() + start, m_bytes.end(), isLetter);
    m_position = end - m_bytes.begin();
    Token token{TokenKind::Word, m_bytes.sliced(start, m_position - start)};
    readNumber(token);
    if (m_position < m_bytes.size() && m_bytes[m_position] == ' ') {
        ++m_position;
    }
    if (token.text == "bin") {
        m_position += std::clamp<qsizetype>(token.value, 0, m_bytes.size() - m_position);
    }
    return token;
}

void Tokenizer::readNumber(Token& token)
{
    const bool negative = m_position < m_bytes.size() && m_bytes[m_position] == '-';
    const qsizetype start = m_position + (negative ? 1 : 0);
    qint64 value = 0;
    qsizetype position = start;
    for (; position < m_bytes.size() && isDigit(m_bytes[position]); ++position) {
        value = std::min<qint64>(value * 10 + (m_bytes[position] - '0'), std::numeric_limits<int>::max());
    }
    if (position == start) {
        return;
    }
    m_position = position;
    token.value = int(negative ? -value : value);
    token.hasValue = true;
}

} // namespace Rtf
