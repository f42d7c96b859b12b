#pragma once

#include <QByteArrayView>

namespace Rtf {

/// The control words that the reader knows.
enum class Word {
    Unknown,
    // Groups with a content of their own.
    FontTable,
    ColorTable,
    ExpandedColorTable,
    Field,
    FieldInstruction,
    FieldResult,
    Graphic,
    Skipped,
    // The document.
    AnsiCodePage,
    Mac,
    DefaultFont,
    FallbackCount,
    // Characters.
    Plain,
    FontNumber,
    FontSize,
    Foreground,
    Background,
    Bold,
    Italic,
    Underline,
    NoUnderline,
    Strike,
    Superscript,
    Subscript,
    NoBaseline,
    // Paragraphs.
    ParagraphDefaults,
    AlignLeft,
    AlignRight,
    AlignCenter,
    AlignJustify,
    AlignNatural,
    LeftIndent,
    RightIndent,
    FirstIndent,
    SpaceBefore,
    SpaceAfter,
    LineHeight,
    LineHeightIsMultiple,
    TabRight,
    TabCenter,
    TabDecimal,
    Tab,
    // Text.
    Unicode,
    NewParagraph,
    NamedCharacter,
};

struct WordMeaning
{
    Word word = Word::Unknown;
    /// The character of Word::NamedCharacter.
    char16_t character = 0;
};

WordMeaning meaningOf(QByteArrayView word);

} // namespace Rtf
