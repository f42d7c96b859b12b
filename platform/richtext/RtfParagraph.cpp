// SPDX-License-Identifier: MIT
#include "RtfParagraph.h"

#include "ParagraphSide.h"

#include <QTextBlock>
#include <QTextDocument>

namespace Rtf {

namespace {

/// RTF gives proportional heights in 240ths, a text document in percent.
constexpr qreal partsPerPercent = 2.4;

int twips(qreal pixels)
{
    return qRound(pixels * twipsPerPixel);
}

qreal pixels(int twips)
{
    return qreal(twips) / twipsPerPixel;
}

QByteArray word(const char* name, int value)
{
    return value == 0 ? QByteArray() : '\\' + QByteArray(name) + QByteArray::number(value);
}

QByteArray sideWord(Qt::Alignment side)
{
    switch (side) {
    case Qt::AlignLeft:
        return "\\ql";
    case Qt::AlignRight:
        return "\\qr";
    case Qt::AlignHCenter:
        return "\\qc";
    case Qt::AlignJustify:
        return "\\qj";
    default:
        return "\\qnatural";
    }
}

QByteArray tabWords(const QTextOption::Tab& tab)
{
    QByteArray kind;
    switch (tab.type) {
    case QTextOption::RightTab:
        kind = "\\tqr";
        break;
    case QTextOption::CenterTab:
        kind = "\\tqc";
        break;
    case QTextOption::DelimiterTab:
        kind = "\\tqdec";
        break;
    case QTextOption::LeftTab:
        break;
    }
    return kind + "\\tx" + QByteArray::number(twips(tab.position));
}

QByteArray spacingWords(QTextBlockFormat::LineHeightTypes spacing, int height)
{
    if (spacing == QTextBlockFormat::SingleHeight) {
        return {};
    }
    return (spacing == QTextBlockFormat::FixedHeight ? "\\sl-" : "\\sl") + QByteArray::number(height) +
           (spacing == QTextBlockFormat::ProportionalHeight ? "\\slmult1" : "\\slmult0");
}

} // namespace

Paragraph Paragraph::fromBlock(const QTextBlock& block)
{
    const QTextBlockFormat format = block.blockFormat();
    Paragraph paragraph;
    if (format.hasProperty(QTextFormat::BlockAlignment)) {
        paragraph.side = ParagraphSide::of(block);
    }
    paragraph.leftIndent = twips(format.leftMargin() + format.indent() * block.document()->indentWidth());
    paragraph.rightIndent = twips(format.rightMargin());
    paragraph.firstLineIndent = twips(format.textIndent());
    paragraph.spaceBefore = twips(format.topMargin());
    paragraph.spaceAfter = twips(format.bottomMargin());
    const auto spacing = QTextBlockFormat::LineHeightTypes(format.lineHeightType());
    if (spacing == QTextBlockFormat::ProportionalHeight) {
        paragraph.spacing = spacing;
        paragraph.lineHeight = qRound(format.lineHeight() * partsPerPercent);
    } else if (spacing == QTextBlockFormat::FixedHeight || spacing == QTextBlockFormat::MinimumHeight) {
        paragraph.spacing = spacing;
        paragraph.lineHeight = twips(format.lineHeight());
    }
    paragraph.tabs = format.tabPositions();
    return paragraph;
}

QTextBlockFormat Paragraph::toFormat() const
{
    QTextBlockFormat format;
    if (side) {
        format.setAlignment(ParagraphSide::alignmentTo(side));
    }
    const auto setLength = [&format](QTextFormat::Property property, int length) {
        if (length != 0) {
            format.setProperty(property, pixels(length));
        }
    };
    setLength(QTextFormat::BlockLeftMargin, leftIndent);
    setLength(QTextFormat::BlockRightMargin, rightIndent);
    setLength(QTextFormat::TextIndent, firstLineIndent);
    setLength(QTextFormat::BlockTopMargin, spaceBefore);
    setLength(QTextFormat::BlockBottomMargin, spaceAfter);
    if (spacing != QTextBlockFormat::SingleHeight) {
        const bool isProportional = spacing == QTextBlockFormat::ProportionalHeight;
        format.setLineHeight(isProportional ? lineHeight / partsPerPercent : pixels(lineHeight), spacing);
    }
    if (!tabs.isEmpty()) {
        format.setTabPositions(tabs);
    }
    return format;
}

QByteArray Paragraph::toRtf() const
{
    QByteArray words = "\\pard";
    for (const QTextOption::Tab& tab : tabs) {
        words += tabWords(tab);
    }
    words += word("li", leftIndent) + word("ri", rightIndent) + word("fi", firstLineIndent);
    words += word("sb", spaceBefore) + word("sa", spaceAfter) + spacingWords(spacing, lineHeight);
    return words + sideWord(side) + ' ';
}

} // namespace Rtf
