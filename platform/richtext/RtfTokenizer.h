// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArrayView>

/// The lexical level of RTF (public source: "Rich Text Format (RTF) Specification", version 1.9.1).
namespace Rtf {

enum class TokenKind {
    GroupBegin,
    GroupEnd,
    /// A control word: `text` is its letters.
    Word,
    /// A control symbol: `text` is its one byte; an escaped line end is always a line feed.
    Symbol,
    /// One byte written as `\'xx`: `value`.
    Byte,
    /// Raw bytes of the text, without line ends.
    Text,
    End,
};

struct Token
{
    TokenKind kind = TokenKind::End;
    /// Points into the tokenizer's input.
    QByteArrayView text;
    /// The number after a control word, held to the range of int; 0 where none is written.
    int value = 0;
    bool hasValue = false;

    /// How a word that switches an attribute is meant: without a number, and with any but 0, it switches on.
    bool isOn() const { return !hasValue || value != 0; }
};

/// Cuts RTF into tokens in one pass, without copying. Every input is accepted: what ends too early just ends. The raw
/// bytes after `\binN` are skipped, at most to the end of the input.
class Tokenizer final
{
public:
    /// @p bytes must outlive the tokenizer and its tokens.
    explicit Tokenizer(QByteArrayView bytes)
        : m_bytes(bytes)
    {
    }

    Token next();

private:
    Token readText();
    Token readControl();
    Token readWord();
    Token readHexByte();
    void readNumber(Token& token);

    QByteArrayView m_bytes;
    qsizetype m_position = 0;
};

} // namespace Rtf
