#include "FormattedText.h"

#include <platform/archive/AttributedText.h>
#include <platform/richtext/ParagraphSide.h>
#include <platform/richtext/Rtf.h>
#include <platform/richtext/Rtfd.h>

#include <QTextCursor>
#include <QTextDocument>

#include <algorithm>

using namespace Qt::StringLiterals;

using Importers::Formatting;

namespace {

/// Nothing for the side that the language's own direction gives.
Qt::Alignment sideOf(AttributedText::Alignment alignment)
{
    switch (alignment) {
    case AttributedText::Alignment::Left:
        return Qt::AlignLeft;
    case AttributedText::Alignment::Right:
        return Qt::AlignRight;
    case AttributedText::Alignment::Center:
        return Qt::AlignHCenter;
    case AttributedText::Alignment::Justified:
        return Qt::AlignJustify;
    case AttributedText::Alignment::Natural:
        break;
    }
    return {};
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

void alignParagraph(QTextCursor& cursor, Qt::Alignment side)
{
    const QTextBlockFormat current = cursor.blockFormat();
    QTextBlockFormat wanted = current;
    if (side) {
        wanted.setAlignment(ParagraphSide::alignmentTo(side));
    } else {
        wanted.clearProperty(QTextFormat::BlockAlignment);
    }
    if (wanted != current) {
        cursor.setBlockFormat(wanted);
    }
}

/// A file that the text shows more than once is stored once, or a small archive could fill the disk.
void insertAttachment(QTextCursor& cursor, TextAttachment file)
{
    QTextDocument& document = *cursor.document();
    file.name = TextAttachment::safeName(file.name);
    if (TextAttachment::in(document, file.name) != file) {
        file.name = TextAttachment::uniqueName(document, file.name);
        file.addTo(document);
    }
    cursor.insertImage(TextAttachment::imageFormat(file.name, {}));
}

/// The characters that stand for an attached file show it; whatever else has the file as its attribute stays text.
void insertRun(QTextCursor& cursor, const QString& text, const AttributedText::Attributes& attributes)
{
    if (!attributes.attachment) {
        cursor.insertText(text, characterFormat(attributes));
        return;
    }
    for (const QChar character : text) {
        if (character == QChar::ObjectReplacementCharacter) {
            insertAttachment(cursor, *attributes.attachment);
        } else {
            cursor.insertText(character, characterFormat(attributes));
        }
    }
}

bool isWholeRtfd(const QByteArray& rtfd)
{
    if (Rtf::isRtf(rtfd)) {
        return true;
    }
    const Rtfd::Contents contents = Rtfd::readWrapper(rtfd);
    const bool hasText =
        std::ranges::any_of(contents.files, [](const TextAttachment& file) { return Rtf::isRtf(file.contents); });
    return hasText && contents.warnings.isEmpty();
}

// What this reader has a complaint about may be whole for another program, and is all that there is of the text.
Formatting unchangedRtfd(const QByteArray& rtfd)
{
    return {rtfd, isWholeRtfd(rtfd) ? QStringList() : QStringList(u"formatted text looks damaged, kept as it is"_s)};
}

Formatting rtfdOfAttributedString(const QByteArray& archive)
{
    AttributedText::ReadResult result = AttributedText::unarchived(archive);
    if (!result.text) {
        return {};
    }
    QTextDocument document;
    FormattedText::fill(document, *result.text);
    return {Rtfd::write(document), std::move(result.warnings)};
}

Formatting rtfdOfImage(const QByteArray& archive)
{
    const std::optional<QByteArray> picture = unarchivedImageFile(archive);
    if (!picture || TextAttachment::picture(*picture).isNull()) {
        return {};
    }
    QTextDocument document;
    QTextCursor cursor(&document);
    insertAttachment(cursor, {u"my_image.tif"_s, *picture, false});
    return {Rtfd::write(document), {}};
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
        alignParagraph(cursor, sideOf(run.attributes.alignment));
        insertRun(cursor, text.text.mid(position, run.length), run.attributes);
        position += run.length;
    }
}

Importers::Converters FormattedText::converters()
{
    return {unchangedRtfd, rtfdOfAttributedString, rtfdOfImage};
}
