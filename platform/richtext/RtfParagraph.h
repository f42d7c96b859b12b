// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QList>
#include <QTextBlockFormat>
#include <QTextOption>

class QTextBlock;

namespace Rtf {

/// Twips (1/20 point) in one pixel of a text document, which is laid out at 96 pixels per inch.
constexpr int twipsPerPixel = 15;
/// Twips in one pixel of a picture: the platform shows a picture's pixel as one point.
constexpr int twipsPerPicturePixel = 20;

/// The attributes of a paragraph as RTF states them; lengths in twips.
struct Paragraph
{
    /// A side as ParagraphSide tells it; none: the natural side of the script.
    Qt::Alignment side = {};
    int leftIndent = 0;
    int rightIndent = 0;
    /// Relative to leftIndent.
    int firstLineIndent = 0;
    int spaceBefore = 0;
    int spaceAfter = 0;
    /// How the height of lines is given: natural, proportional, at least or exactly so.
    QTextBlockFormat::LineHeightTypes spacing = QTextBlockFormat::SingleHeight;
    /// Twips, or 240ths of the natural height for proportional spacing.
    int lineHeight = 0;
    /// Positions in pixels, as the text document wants them.
    QList<QTextOption::Tab> tabs;

    static Paragraph fromBlock(const QTextBlock& block);
    QTextBlockFormat toFormat() const;
    /// The control words that set exactly this, `\pard` first, closed by a blank.
    QByteArray toRtf() const;

    bool operator==(const Paragraph&) const = default;
};

} // namespace Rtf
