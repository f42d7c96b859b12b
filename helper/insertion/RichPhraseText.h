// SPDX-License-Identifier: MIT
#pragma once

#include "PhraseText.h"
#include "TextTokens.h"

#include <QByteArray>
#include <QString>

#include <optional>

class PhraseReferenceTexts;

namespace RichPhraseText {

/// What is inserted for the formatted text in @p rtfd. Nothing where no text can be read in it.
std::optional<PhraseText> of(const QByteArray& rtfd, PhraseReferenceTexts& references);

/// @p html with @p text behind it, in the format of its end.
QString appended(const QString& html, const QString& text);

/// The arrow key that a marker stands for; nothing for the other markers.
std::optional<CaretMove> moveOf(TextToken::Kind marker);

} // namespace RichPhraseText
