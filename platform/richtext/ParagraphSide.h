// SPDX-License-Identifier: MIT
#pragma once

#include <Qt>

class QTextBlock;

/// The side of a paragraph: `Qt::AlignLeft`, `Qt::AlignRight`, `Qt::AlignHCenter` or `Qt::AlignJustify`, as a reader
/// sees it. A text document swaps left and right where the text runs from right to left, unless the alignment is
/// absolute.
namespace ParagraphSide {

/// The side on which the lines of @p block stand now, natural or chosen.
Qt::Alignment of(const QTextBlock& block);

/// The alignment of a text document that puts lines on @p side, whichever way their text runs.
Qt::Alignment alignmentTo(Qt::Alignment side);

} // namespace ParagraphSide
