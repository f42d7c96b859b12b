// SPDX-License-Identifier: MIT
#pragma once

#include <core/Phrase.h>

#include <QString>

#include <optional>
#include <variant>
#include <vector>

class QDateTime;

/// A text that is inserted in one piece.
struct TextPiece
{
    QString plain;
    /// The same with its formatting, a whole document; empty where there is none.
    QString html;
};

/// An arrow key that is pressed between two pieces.
enum class CaretMove { Left, Up, Right, Down };

using TextStep = std::variant<TextPiece, CaretMove>;

/// What is inserted for a phrase: its text with stamps and calendar conversions filled in and the texts of the phrases
/// that it refers to, without markers. Those, in the text of the phrase itself, mean what the members say; in a text
/// that is referred to they mean nothing and are left out, like its formatting.
///
/// A reference to a phrase that is not there stays as it is written; one that leads back to a phrase in whose text it
/// stands is left out.
struct PhraseText
{
    /// In UTF-16 units: a text that would be longer (texts may refer to each other many times) is not inserted.
    static constexpr qsizetype maximumLength = 1'000'000;

    std::vector<TextStep> steps;
    /// How many characters, as the arrow keys count them, stand after the last "%|"; nothing without one.
    std::optional<qsizetype> charactersAfterCaret;
    /// "%+" or "%-", the last of them; nothing without one: the user's settings decide.
    std::optional<bool> keepsTrigger;

    /// Whether the phrase has a text, and not only a sound.
    static bool isIn(const Phrase& phrase);

    /// The text of @p phrase at @p moment; references are looked up in @p documents, lists of phrases that may be null,
    /// one after the other. Nothing when it has no text, or too long a one.
    static std::optional<PhraseText> of(
        const Phrase& phrase, const std::vector<PropertyList::ArrayPointer>& documents, const QDateTime& moment);
};

/// How many characters @p text has for who moves through it with the arrow keys.
qsizetype caretStepsIn(QStringView text);
