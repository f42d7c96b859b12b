// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QImage>
#include <QSizeF>
#include <QString>
#include <QTextImageFormat>
#include <QUrl>

#include <optional>

class QTextDocument;

/// A file inside a rich text: a picture, or any other file.
///
/// In a text document it is one U+FFFC with an image format whose name is the file's URL ("attachment:" and the
/// percent-encoded file name), which names nothing outside the document. The document owns the files: they stay when
/// the user deletes the character, so that undo brings the file back, until removeAllFrom().
struct TextAttachment
{
    /// A plain file name, unique in its text; see safeName().
    QString name;
    /// The file's bytes; for a package (a folder shown as a file) its node in the flattened form.
    QByteArray contents;
    bool isPackage = false;

    /// Files that share their bytes are compared without a look at them.
    bool operator==(const TextAttachment& other) const;

    /// @p name as a name that can be no path: separators and control characters replaced, never empty, "." or "..", and
    /// none of those that the stored form keeps for itself.
    static QString safeName(QString name);
    /// @p wanted, or with a number before its suffix where @p document already has a file of that name.
    static QString uniqueName(const QTextDocument& document, const QString& wanted);

    /// The format of the character that shows the file. An empty @p size shows a picture in its own size.
    static QTextImageFormat imageFormat(const QString& name, QSizeF size);
    /// @p format for text, without the file that it shows, if any: what is typed beside a picture is no picture.
    static QTextCharFormat textFormat(QTextCharFormat format);
    /// The file name that an image's URL holds; nothing for an image that is no attachment.
    static std::optional<QString> nameOf(const QUrl& url);

    /// Adds the file to @p document, or replaces the one of the same name.
    void addTo(QTextDocument& document) const;
    /// The file of @p document with this name; nothing when it has none.
    static std::optional<TextAttachment> in(const QTextDocument& document, const QString& name);

    static void removeAllFrom(QTextDocument& document);

    /// Whether the file begins as a picture that can be shown.
    bool isPicture() const;

    /// The pixels of a picture file; a null image where @p bytes are no picture, or one of more than 64 million pixels,
    /// whose decoding could take all memory.
    static QImage picture(const QByteArray& bytes);
};
