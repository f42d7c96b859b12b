// SPDX-License-Identifier: MIT
#include "TextAttachment.h"

#include <QBuffer>
#include <QFileInfo>
#include <QHash>
#include <QImageReader>
#include <QTextDocument>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 maximumPixels = 64'000'000;

/// The files of one document, owned by it. (A document's own resources cannot be taken away again.)
class AttachmentStore final : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(AttachmentStore)

public:
    explicit AttachmentStore(QTextDocument& document)
        : QObject(&document)
    {
    }

    static AttachmentStore* of(const QTextDocument& document)
    {
        return document.findChild<AttachmentStore*>({}, Qt::FindDirectChildrenOnly);
    }

    QHash<QString, TextAttachment> files;
};

} // namespace

bool TextAttachment::operator==(const TextAttachment& other) const
{
    return name == other.name && isPackage == other.isPackage &&
           (contents.isSharedWith(other.contents) || contents == other.contents);
}

QString TextAttachment::safeName(QString name)
{
    for (QChar& character : name) {
        if (character == u'/' || character < u' ') {
            character = u'_';
        }
    }
    name = name.trimmed();
    // The names that mean something in a folder, and in the flattened form of rich text.
    const bool reserved =
        name.isEmpty() || name == u"." || name == u".." || name == u"TXT.rtf" || name.startsWith(u"__@");
    return reserved ? u'_' + name : name;
}

QString TextAttachment::uniqueName(const QTextDocument& document, const QString& wanted)
{
    const QString safe = safeName(wanted);
    const QFileInfo file(safe);
    const QString suffix = file.suffix().isEmpty() ? QString() : u'.' + file.suffix();
    const QString base = safe.chopped(suffix.size());
    QString name = safe;
    for (int number = 1; in(document, name); ++number) {
        name = base + u' ' + QString::number(number) + suffix;
    }
    return name;
}

QTextImageFormat TextAttachment::imageFormat(const QString& name, QSizeF size)
{
    QTextImageFormat format;
    format.setName(u"attachment:"_s + QString::fromLatin1(QUrl::toPercentEncoding(name)));
    if (!size.isEmpty()) {
        format.setWidth(size.width());
        format.setHeight(size.height());
    }
    return format;
}

QTextCharFormat TextAttachment::textFormat(QTextCharFormat format)
{
    for (const QTextFormat::Property property :
        {QTextFormat::ImageName, QTextFormat::ImageWidth, QTextFormat::ImageHeight, QTextFormat::ObjectType}) {
        format.clearProperty(property);
    }
    return format;
}

std::optional<QString> TextAttachment::nameOf(const QUrl& url)
{
    if (url.scheme() != u"attachment") {
        return std::nullopt;
    }
    return QUrl::fromPercentEncoding(url.path(QUrl::FullyEncoded).toLatin1());
}

void TextAttachment::addTo(QTextDocument& document) const
{
    AttachmentStore* store = AttachmentStore::of(document);
    if (store == nullptr) {
        store = new AttachmentStore(document);
    }
    store->files.insert(name, *this);
}

std::optional<TextAttachment> TextAttachment::in(const QTextDocument& document, const QString& name)
{
    const AttachmentStore* const store = AttachmentStore::of(document);
    if (store == nullptr || !store->files.contains(name)) {
        return std::nullopt;
    }
    return store->files.value(name);
}

void TextAttachment::removeAllFrom(QTextDocument& document)
{
    if (AttachmentStore* const store = AttachmentStore::of(document); store != nullptr) {
        store->files.clear();
    }
}

bool TextAttachment::isPicture() const
{
    QBuffer buffer;
    buffer.setData(contents);
    buffer.open(QIODevice::ReadOnly);
    return !isPackage && QImageReader(&buffer).canRead();
}

QImage TextAttachment::picture(const QByteArray& bytes)
{
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    reader.setAutoTransform(true);
    const QSize size = reader.size();
    // A format that does not tell its size beforehand is held by the reader's own limit on allocations.
    if (size.isValid() && qint64(size.width()) * size.height() > maximumPixels) {
        return {};
    }
    return reader.read();
}

#include "TextAttachment.moc"
