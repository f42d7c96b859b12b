// SPDX-License-Identifier: MIT
#pragma once

#include <QStringView>

#include <vector>

/// A part of a phrase's text as it is stored.
struct TextToken
{
    enum class Kind {
        /// Text that is inserted, after its stamps and calendar conversions are filled in.
        Literal,
        /// Another phrase's text: its name between two of the marks.
        Reference,
        /// "%|": the caret stands here in the end.
        Caret,
        /// "%<", "%^", "%>" and "%v": an arrow key is pressed here.
        Left,
        Up,
        Right,
        Down,
        /// "%+" and "%-".
        KeepTrigger,
        DropTrigger,
    };

    Kind kind = Kind::Literal;
    /// In UTF-16 units.
    qsizetype position = 0;
    qsizetype length = 0;
};

namespace TextTokens {

/// What stands on both sides of a referenced phrase: U+270D, the writing hand.
constexpr QChar referenceMark(0x270D);

/// The parts of @p text in order, without gaps. Two percent signs are one of the text and begin no marker; a reference
/// mark without a second one is text.
std::vector<TextToken> of(QStringView text);

/// The name in a reference, of which @p reference is the text.
QStringView nameIn(QStringView reference);

} // namespace TextTokens
