// SPDX-License-Identifier: MIT
#pragma once

#include <platform/bytes/FileStamp.h>
#include <platform/plist/PropertyList.h>

#include <QByteArray>
#include <QHash>
#include <QString>

#include <optional>

/// One preferences domain: its file as last read, and what this process has set since.
class PreferencesDomain final
{
public:
    explicit PreferencesDomain(const QString& name);
    ~PreferencesDomain();
    Q_DISABLE_COPY_MOVE(PreferencesDomain)

    /// The domain of that name, made on first use; it lives until the process ends.
    static PreferencesDomain& named(const QString& name);

    const QString& filePath() const { return m_path; }

    /// The value as of the last refresh, a copy; null where the key is not set.
    PropertyList::Value value(const QString& key) const;
    /// A null @p value removes the key.
    void setValue(const QString& key, const PropertyList::Value& value);
    /// Reads the file again where it has changed. One that cannot be read, of which one log line tells, changes nothing
    /// of what was read before.
    void refresh();
    /// Stores what was set. False when it could not be stored; then it is kept.
    bool store();

private:
    void readFile();
    bool lockAndStore();
    bool writeMerged();
    void retryLater();

    QString m_path;
    /// m_path in the file system's encoding: every reading of a setting looks at the file.
    QByteArray m_nativePath;
    std::optional<FileStamp> m_stamp;
    /// The file is there and cannot be read: then it stays as it is.
    bool m_isBroken = false;
    PropertyList::DictionaryPointer m_stored = PropertyList::Dictionary::create();
    QHash<QString, PropertyList::Value> m_pending;
    QString m_readProblem;
    QString m_storeProblem;
    bool m_lockTimedOut = false;
    bool m_retryScheduled = false;
};
