// SPDX-License-Identifier: MIT
#pragma once

#include <platform/bytes/FileStamp.h>
#include <platform/plist/PropertyListXmlPieces.h>

#include <QObject>
#include <QTimer>

#include <functional>
#include <future>
#include <optional>
#include <vector>

/// Writes a document to its file, at once or soon: then on a thread of its own, from bytes that are made in short turns
/// of the event loop. Changes that come while one is being written go into the next writing together. Why so, and what
/// was measured: docs/decisions/one-change.md.
///
/// What another program has put in the place of the version that was read or written last is kept among the
/// DocumentBackups first, and one log line names the copy; where it cannot be kept it is not overwritten. What the
/// first write of the program finds is kept there, too. A failed write leaves the file as it was, and is logged. What
/// has been asked for is written by the end of the program. Main thread only.
class DocumentFile final : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(DocumentFile)

public:
    using Continuation = std::function<void()>;

    /// In bytes: eight times the largest document that is of any use.
    static constexpr qint64 maximumSize = 1 << 28;

    DocumentFile();
    ~DocumentFile() override;

    /// Finishes, and notes that the version of the file at @p path that has @p stamp (nothing for no file) is in memory
    /// from now on. Bytes that were kept of another root are forgotten.
    void setVersion(const QString& path, const std::optional<FileStamp>& stamp);
    /// Whether the file at @p path is the version that was read, or last written. False where there is none.
    bool isUpToDate(const QString& path) const;

    /// Writes @p root to @p path now; false when it could not.
    bool write(const QString& path, const PropertyList::DictionaryPointer& root);
    /// Writes what @p root will hold by then to @p path, soon. A writing to another path has to be finished before.
    void writeSoon(const QString& path, const PropertyList::DictionaryPointer& root);
    /// Makes the bytes of @p root when there is nothing else to do, for the first change to be as fast as the others.
    void prepare(const PropertyList::DictionaryPointer& root);

    /// Runs @p continuation once everything that has been asked for is written, or could not be; at once when nothing
    /// is left to be written. They run in the order given.
    void afterwards(Continuation continuation);
    /// Writes what has been asked for, waits for it, and runs what was to run afterwards.
    void finish();

private:
    /// The version of a file that is in memory, or kept otherwise: nothing is lost when it is overwritten.
    struct Version
    {
        QString path;
        std::optional<FileStamp> stamp;
    };

    struct Outcome
    {
        bool isWritten = false;
        Version safe;
        QStringList problems;
    };

    using Continuations = std::vector<Continuation>;

    static Outcome writeBytes(const Version& safe, const QString& path, const QByteArrayList& pieces);
    static bool keepVersionOfOthers(Outcome& outcome, const QString& path);
    void takeTurn();
    std::optional<QByteArrayList> makeBytes(const QDeadlineTimer& deadline);
    void startWriting(const QByteArrayList& pieces);
    void concludeWriting(int number);
    void conclude(const Outcome& outcome);

    Version m_safe;
    PropertyList::XmlPieces m_pieces;
    QTimer m_turn;
    /// What is to be written, and where; null when nothing has been asked for.
    PropertyList::DictionaryPointer m_asked;
    QString m_path;
    PropertyList::DictionaryPointer m_prepared;
    /// What runs after the write that has been asked for, and after the one that runs now.
    Continuations m_afterAsked;
    Continuations m_afterRunning;
    std::future<Outcome> m_running;
    int m_number = 0;
};
