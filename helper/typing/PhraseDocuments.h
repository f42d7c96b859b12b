// SPDX-License-Identifier: MIT
#pragma once

#include "PhraseIndex.h"

#include <platform/bytes/FileStamp.h>

#include <QHash>
#include <QObject>
#include <QStringList>

#include <memory>
#include <optional>

/// The sounds documents that applications have of their own: loaded when one is first needed, again when its file has
/// changed, and kept until no application has it any more. Loading happens on another thread, as long as it takes.
class PhraseDocuments final : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(PhraseDocuments)

public:
    using Index = std::shared_ptr<const PhraseIndex>;

    using QObject::QObject;

    /// The phrases of the document at @p path as it was read last; null when that has not happened yet. Looks at the
    /// file (one `stat`), and begins to read it where it is another one.
    Index phrasesOf(const QString& path);

    /// Drops all documents but those at @p paths.
    void keepOnly(const QStringList& paths);

Q_SIGNALS:
    /// The document at @p path has been read: phrasesOf() answers something else. Not told of a file that cannot be
    /// read, which has a line in the log: the last good version stays.
    void loaded(const QString& path);

private:
    struct Document
    {
        Index phrases;
        /// Of the file that was read last, or could not be; nothing for no file.
        std::optional<FileStamp> stamp;
        bool isLoading = false;
    };

    void load(const QString& path);
    void take(const QString& path, const Index& phrases);

    QHash<QString, Document> m_documents;
};
