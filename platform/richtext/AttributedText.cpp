// SPDX-License-Identifier: MIT
#include "AttributedText.h"

#include <QTextCursor>
#include <QTextDocument>

#include <vector>

namespace {

QTextCharFormat characterFormat(const AttributedText::Attributes& attributes)
{
    QTextCharFormat format;
    if (!attributes.fontFamily.isEmpty()) {
        format.setFontFamilies({attributes.fontFamily});
    }
    if (attributes.fontSize > 0) {
        format.setFontPointSize(attributes.fontSize);
    }
    if (attributes.isBold) {
        format.setFontWeight(QFont::Bold);
    }
    if (attributes.isItalic) {
        format.setFontItalic(true);
    }
    if (attributes.isUnderlined) {
        format.setFontUnderline(true);
    }
    if (attributes.isStruckOut) {
        format.setFontStrikeOut(true);
    }
    if (attributes.superscript != 0) {
        const bool isRaised = attributes.superscript > 0;
        format.setVerticalAlignment(isRaised ? QTextCharFormat::AlignSuperScript : QTextCharFormat::AlignSubScript);
    }
    if (attributes.color.isValid()) {
        format.setForeground(attributes.color);
    }
    if (attributes.backgroundColor.isValid()) {
        format.setBackground(attributes.backgroundColor);
    }
    if (!attributes.link.isEmpty()) {
        format.setAnchor(true);
        format.setAnchorHref(attributes.link);
    }
    return format;
}

/// The name that @p file has in @p document, to which it is added unless it is there.
QString nameIn(QTextDocument& document, TextAttachment file)
{
    file.name = TextAttachment::safeName(file.name);
    if (TextAttachment::in(document, file.name) != file) {
        file.name = TextAttachment::uniqueName(document, file.name);
        file.addTo(document);
    }
    return file.name;
}

QTextCharFormat formatIn(QTextDocument& document, const AttributedText::Attributes& attributes)
{
    QTextCharFormat format = characterFormat(attributes);
    if (attributes.attachment) {
        format.merge(TextAttachment::imageFormat(nameIn(document, *attributes.attachment), attributes.pictureSize));
    }
    return format;
}

} // namespace

void AttributedText::fill(QTextDocument& document) const
{
    const bool undo = document.isUndoRedoEnabled();
    document.setUndoRedoEnabled(false);
    // One edit for the whole text: a view then lays out what can be seen, and the rest when there is time.
    QTextCursor cursor(&document);
    cursor.beginEditBlock();
    document.clear();
    TextAttachment::removeAllFrom(document);
    std::vector<std::optional<QTextCharFormat>> formats(size_t(styles.size()));
    Rtf::Paragraph paragraph;
    qsizetype position = 0;
    for (const Run& run : runs) {
        const Attributes& attributes = styles[run.style];
        if (attributes.paragraph != paragraph) {
            paragraph = attributes.paragraph;
            cursor.setBlockFormat(paragraph.toFormat());
        }
        std::optional<QTextCharFormat>& format = formats[size_t(run.style)];
        if (!format) {
            format = formatIn(document, attributes);
        }
        cursor.insertText(text.sliced(position, run.length), *format);
        position += run.length;
    }
    cursor.endEditBlock();
    document.setUndoRedoEnabled(undo);
}
