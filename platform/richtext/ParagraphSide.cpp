// SPDX-License-Identifier: MIT
#include "ParagraphSide.h"

#include <QTextBlock>

Qt::Alignment ParagraphSide::of(const QTextBlock& block)
{
    const Qt::Alignment alignment = block.blockFormat().alignment() & Qt::AlignHorizontal_Mask;
    const Qt::Alignment side = alignment & ~Qt::Alignment(Qt::AlignAbsolute);
    if (alignment.testFlag(Qt::AlignAbsolute) || block.textDirection() == Qt::LeftToRight) {
        return side;
    }
    return side == Qt::AlignLeft ? Qt::AlignRight : side == Qt::AlignRight ? Qt::AlignLeft : side;
}

Qt::Alignment ParagraphSide::alignmentTo(Qt::Alignment side)
{
    const bool isSwapped = side == Qt::AlignLeft || side == Qt::AlignRight;
    return isSwapped ? side | Qt::AlignAbsolute : side;
}
