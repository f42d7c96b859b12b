#include "FormattedText.h"

#include <QTextCursor>
#include <QTextDocument>

#include <AttributedText.h>
#include <Rtfd.h>

using namespace Qt::StringLiterals;

namespace {

Qt::Alignment blockAlignment(AttributedText::Alignment alignment)
{
    switch (alignment) {
    case AttributedText::Alignment::Left:
        return Qt::AlignLeft | Qt::AlignAbsolute;
    case AttributedText::Alignment::Right:
        return Qt::AlignRight | Qt::AlignAbsolute;
    case AttributedText::Alignment::Center:
        return Qt::AlignHCenter;
    case AttributedText::Alignment::Justified:
        return Qt::AlignJustify;
    case AttributedText::Alignment::Natural:
        break;
    }
    return Qt::AlignLeft;
}

/// States only what was set, so that the rest stays the document's own.
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

void alignParagraph(QTextCursor& cursor, Qt::Alignment alignment)
{
    if (cursor.blockFormat().alignment() != alignment) {
        QTextBlockFormat format;
        format.setAlignment(alignment);
        cursor.mergeBlockFormat(format);
    }
}

void insertAttachment(QTextCursor& cursor, TextAttachment file)
{
    QTextDocument& document = *cursor.document();
    file.name = TextAttachment::uniqueName(document, TextAttachment::safeName(file.name));
    file.addTo(document);
    cursor.insertImage(TextAttachment::imageFormat(file.name, {}));
}

std::optional<QByteArray> rtfdOfAttributedString(const QByteArray& archive)
{
    const AttributedText::ReadResult result = AttributedText::unarchived(archive);
    if (!result.text) {
        return std::nullopt;
    }
    QTextDocument document;
    FormattedText::fill(document, *result.text);
    return Rtfd::write(document);
}

std::optional<QByteArray> rtfdOfImage(const QByteArray& archive)
{
    const std::optional<QByteArray> picture = unarchivedImageFile(archive);
    if (!picture || TextAttachment::picture(*picture).isNull()) {
        return std::nullopt;
    }
    QTextDocument document;
    QTextCursor cursor(&document);
    insertAttachment(cursor, {u"my_image.tif"_s, *picture, false});
    return Rtfd::write(document);
}

} // namespace

void FormattedText::fill(QTextDocument& document, const AttributedText& text)
{
    document.clear();
    document.setUndoRedoEnabled(false);
    QTextCursor cursor(&document);
    qsizetype position = 0;
    for (const AttributedText::Run& run : text.runs) {
        // Paragraphs that the run begins take over the format of the one in which it starts.
        alignParagraph(cursor, blockAlignment(run.attributes.alignment));
        if (run.attributes.attachment) {
            insertAttachment(cursor, *run.attributes.attachment);
        } else {
            cursor.insertText(text.text.mid(position, run.length), characterFormat(run.attributes));
        }
        position += run.length;
    }
}

Importers::Converters FormattedText::converters()
{
    return {rtfdOfAttributedString, rtfdOfImage};
}
