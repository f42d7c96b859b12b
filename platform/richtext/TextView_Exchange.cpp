// SPDX-License-Identifier: MIT
#include "TextView.h"

#include "Rtf.h"
#include "Rtfd.h"
#include "TextAttachment.h"

#include <platform/bytes/PathNames.h>
#include <platform/bytes/RegularFile.h>
#include <product/Product.h>

#include <QBuffer>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QMimeData>
#include <QMimeDatabase>
#include <QTextBlock>
#include <QTextDocumentFragment>
#include <QUrl>

#include <algorithm>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

Q_LOGGING_CATEGORY(log, PRODUCT_NAME ".text")

const QString wrapperMimeType = u"application/x-rtfd"_s;

const QStringList& richTextMimeTypes()
{
    static const QStringList types{u"text/rtf"_s, u"application/rtf"_s, u"text/richtext"_s};
    return types;
}

// The kinds of picture whose bytes are kept as they are; others are stored as PNG.
const QStringList& pictureMimeTypes()
{
    static const QStringList types{u"image/png"_s, u"image/jpeg"_s, u"image/gif"_s, u"image/tiff"_s};
    return types;
}

constexpr qint64 maximumFileSize = 64 * 1024 * 1024;
/// A picture wider than this is shown smaller, so that it fits a pane; its bytes stay.
constexpr qreal maximumShownWidth = 480;

QSizeF shownSize(const QSize& pixels)
{
    QSizeF size(pixels);
    if (size.width() > maximumShownWidth) {
        size.scale(maximumShownWidth, size.height(), Qt::KeepAspectRatio);
    }
    return size;
}

/// A run of characters that shows a file.
struct AttachmentRun
{
    int position;
    int length;
    QTextImageFormat format;
    QString name;
};

QList<AttachmentRun> attachmentRuns(const QTextDocument& document)
{
    QList<AttachmentRun> runs;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextFragment fragment = it.fragment();
            const QTextImageFormat format = fragment.charFormat().toImageFormat();
            const auto name = TextAttachment::nameOf(QUrl(format.name()));
            if (name && format.isImageFormat()) {
                runs.append({fragment.position(), fragment.length(), format, *name});
            }
        }
    }
    return runs;
}

/// Takes the files that @p text shows from @p owner into it.
void takeAttachments(QTextDocument& text, const QTextDocument& owner)
{
    for (const AttachmentRun& run : attachmentRuns(text)) {
        if (const auto file = TextAttachment::in(owner, run.name)) {
            file->addTo(text);
        }
    }
}

/// Gives the files of @p text to @p target, under new names where a different file has the name there.
void giveAttachments(QTextDocument& text, QTextDocument& target)
{
    for (const AttachmentRun& run : attachmentRuns(text)) {
        auto file = TextAttachment::in(text, run.name);
        if (!file || TextAttachment::in(target, run.name) == file) {
            continue;
        }
        file->name = TextAttachment::uniqueName(target, run.name);
        file->addTo(target);
        auto format = run.format;
        format.setName(TextAttachment::imageFormat(file->name, {}).name());
        QTextCursor cursor(&text);
        cursor.setPosition(run.position);
        cursor.setPosition(run.position + run.length, QTextCursor::KeepAnchor);
        cursor.setCharFormat(format);
    }
}

} // namespace

QMimeData* TextView::createMimeDataFromSelection() const
{
    auto content = std::make_unique<QMimeData>();
    content->setText(textCursor().selectedText().replace(QChar::ParagraphSeparator, u'\n'));
    if (m_richText) {
        QTextDocument selection;
        selection.setDefaultFont(document()->defaultFont());
        QTextCursor(&selection).insertFragment(textCursor().selection());
        takeAttachments(selection, *document());
        content->setData(wrapperMimeType, Rtfd::write(selection));
        content->setData(richTextMimeTypes().front(), Rtf::write(selection).rtf);
        content->setHtml(textCursor().selection().toHtml());
    }
    return content.release();
}

bool TextView::canInsertFromMimeData(const QMimeData* source) const
{
    const bool graphics = m_importsGraphics && (source->hasImage() || source->hasUrls());
    return source->hasText() || (m_richText && (graphics || source->hasHtml() || source->hasFormat(wrapperMimeType)));
}

void TextView::insertFromMimeData(const QMimeData* source)
{
    if (isReadOnly()) {
        return;
    }
    if (m_richText && m_importsGraphics && (insertFiles(*source) || (!source->hasHtml() && insertPicture(*source)))) {
        return;
    }
    if (m_richText && insertRichText(*source)) {
        return;
    }
    if (m_richText && source->hasHtml()) {
        QTextEdit::insertFromMimeData(source);
    } else if (source->hasText()) {
        insertText(source->text());
    }
}

bool TextView::insertRichText(const QMimeData& source)
{
    QStringList types = richTextMimeTypes();
    types.prepend(wrapperMimeType);
    const auto type = std::ranges::find_if(types, [&source](const QString& known) { return source.hasFormat(known); });
    if (type == types.end()) {
        return false;
    }
    QTextDocument pasted;
    if (!Rtfd::read(source.data(*type), pasted)) {
        return false;
    }
    giveAttachments(pasted, *document());
    textCursor().insertFragment(QTextDocumentFragment(&pasted));
    ensureCursorVisible();
    return true;
}

bool TextView::insertPicture(const QMimeData& source)
{
    if (!source.hasImage()) {
        return false;
    }
    for (const QString& type : pictureMimeTypes()) {
        const QByteArray bytes = source.data(type);
        if (!bytes.isEmpty()) {
            insertAttachment(u"Pasted Graphic."_s + QMimeDatabase().mimeTypeForName(type).preferredSuffix(), bytes);
            return true;
        }
    }
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    if (!source.imageData().value<QImage>().save(&buffer, "PNG")) {
        return false;
    }
    insertAttachment(u"Pasted Graphic.png"_s, png);
    return true;
}

bool TextView::insertFiles(const QMimeData& source)
{
    const QList<QUrl> urls = source.urls();
    if (urls.isEmpty() || !std::ranges::all_of(urls, &QUrl::isLocalFile)) {
        return false;
    }
    QTextCursor cursor = textCursor();
    cursor.beginEditBlock();
    const auto count = std::ranges::count_if(urls, [this](const QUrl& url) { return insertFile(pathOfFileUrl(url)); });
    cursor.endEditBlock();
    return count > 0;
}

bool TextView::insertFile(const QString& path)
{
    const Result<QByteArray> contents = RegularFile::read(path, maximumFileSize);
    if (!contents) {
        qCWarning(log).noquote() << u"cannot take %1 into a text: %2"_s.arg(path, contents.error());
        return false;
    }
    insertAttachment(QFileInfo(path).fileName(), *contents);
    return true;
}

void TextView::insertAttachment(const QString& name, const QByteArray& contents)
{
    const TextAttachment attachment{TextAttachment::uniqueName(*document(), name), contents, false};
    attachment.addTo(*document());
    QTextCharFormat format = TextAttachment::textFormat(currentCharFormat());
    format.merge(
        TextAttachment::imageFormat(attachment.name, shownSize(TextAttachment::picture(attachment.contents).size())));
    textCursor().insertText(QString(QChar::ObjectReplacementCharacter), format);
    ensureCursorVisible();
}
