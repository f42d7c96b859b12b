// SPDX-License-Identifier: MIT
#pragma once

#include "DocumentFile.h"

#include <platform/bytes/FileStamp.h>
#include <platform/bytes/Result.h>
#include <platform/plist/PropertyList.h>

#include <QString>

#include <future>
#include <optional>
#include <utility>

/// A sounds document in memory: its root, and the lists inside it. The containers are handed out themselves, not
/// copies: editors change entries in place and then write (docs/decisions/shared-containers.md). Main thread only.
class SoundsDocument final
{
public:
    /// In bytes: eight times the largest document that is of any use.
    static constexpr qint64 maximumSize = 1 << 28;

    /// What a file held when it was read. Until it is taken nobody else has its containers, whichever thread reads.
    struct Contents
    {
        QString path;
        /// From before it was read, so that a later change is noticed; nothing for no file.
        std::optional<FileStamp> stamp;
        /// The value of "SortPref" by which the phrases are in order.
        int order = 0;
        /// Or why it cannot be read.
        Result<PropertyList::DictionaryPointer> root = Failure{};
    };

    /// Reads the document at @p path and sorts its phrases as "SortPref" says by @p order. May be called on any thread.
    static Contents read(const QString& path, int order);
    /// The root of the document at @p path, or why it cannot be read. May be called on any thread.
    static Result<PropertyList::DictionaryPointer> readRoot(const QString& path);
    /// The phrases of a document; null where it has none.
    static PropertyList::ArrayPointer phrasesOf(const PropertyList::DictionaryPointer& root);

    /// The one document that all editors of the process share.
    static SoundsDocument& shared();

    const QString& path() const { return m_path; }

    /// Where the document is, or an empty path for one that is only in memory. Loads nothing. What is to be saved at
    /// another path is saved first.
    void setPath(const QString& path);

    /// Begins to read the document at @p path on a thread of its own; load() takes what it gave unless the file, the
    /// path or the order is another one by then. For the start, when there is much else to do.
    void readAhead(const QString& path);

    /// Loads the document at path() and sorts it, after what is to be saved has been saved. A file that cannot be read,
    /// or has more than 256 MB, gives no document (null containers), and one log line for as long as it stays so; an
    /// empty path keeps the document in memory.
    ///
    /// A file that has not changed since it was read is not read again while the document in memory is still what was
    /// read: when the window opens, several of its parts load the document.
    void load();

    /// Has @p contents as the document from now on, as load() would; they have been read at path(). Takes no time, but
    /// for what is to be saved before.
    void take(const Contents& contents);

    /// Sorts the phrases in place, and stably, by the setting "SortPref".
    void sort();

    /// Whether the file at path() is the version that was read, or last written. False where there is none.
    bool isUpToDate() const { return m_file.isUpToDate(m_path); }

    /// Writes the whole document to path(), atomically; false when it could not. A failed write leaves the file as it
    /// was and is logged; without a document nothing is written.
    ///
    /// The document in memory wins over a version that another program has written since it was read, or last written.
    /// That version is kept among the DocumentBackups, and one log line names the copy; where it cannot be kept it is
    /// not overwritten. What the first save of the program finds is kept there in any case; where it cannot be, a log
    /// line says so, and it is overwritten.
    bool save();

    /// The same on another thread, with all changes that are made until that has begun; returns at once.
    void saveSoon();

    /// Runs @p continuation once everything that is to be saved soon is saved, or could not be; at once when nothing
    /// is.
    void afterSaving(DocumentFile::Continuation continuation) { m_file.afterwards(std::move(continuation)); }

    /// Saves what is to be saved soon, and waits for it.
    void finishSaving() { m_file.finish(); }

    /// Has the document's bytes made in the background, so that the first change is saved as fast as the others. They
    /// take as much memory as the file.
    void prepareSaving();

    const PropertyList::DictionaryPointer& root() const { return m_root; }

    const PropertyList::ArrayPointer& phrases() const { return m_phrases; }

    const PropertyList::ArrayPointer& events() const { return m_events; }

    /// A list of its own with the same entries as events(); entries that are no dictionaries are left out of it.
    const PropertyList::ArrayPointer& filteredEvents() const { return m_filteredEvents; }

private:
    bool isAsLoaded() const;
    Contents contentsOfFile();
    void reportReading(const QString& problem);

    DocumentFile m_file;
    QString m_path = QStringLiteral("");
    PropertyList::DictionaryPointer m_root;
    PropertyList::ArrayPointer m_phrases;
    PropertyList::ArrayPointer m_events;
    PropertyList::ArrayPointer m_filteredEvents;
    QString m_reportedProblem;
    /// The order in which the phrases were loaded, and the array's revision then.
    int m_loadedOrder = 0;
    quint32 m_loadedRevision = 0;
    std::future<Contents> m_ahead;
};
