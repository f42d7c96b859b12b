// SPDX-License-Identifier: MIT
#pragma once

#include <QHash>
#include <QObject>
#include <QString>
#include <QStringList>

#include <memory>

class QSocketNotifier;

struct inotify_event;

/// What has happened to a file in a watched folder.
struct FolderChange
{
    enum class Kind {
        Created,
        /// Was open for writing, and has been closed.
        Written,
        /// Moved within the watched folders; `oldFolder` and `oldName` tell from where.
        Renamed,
        MovedIn,
        MovedOut,
        Deleted,
    };

    Kind kind = Kind::Created;
    QString folder;
    QString name;
    QString oldFolder;
    QString oldName;
};

/// Follows what happens in some folders themselves, not in the folders in them, through the kernel (inotify). A folder
/// that does not exist is watched as soon as it does, also when it comes back; what is in it by then (the first 100) is
/// told as created. Network folders tell only what this
/// machine does. Where the user has no watches left there is a line in the log, and silence.
class FolderWatch final : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(FolderWatch)

public:
    /// @p folders are absolute paths, without a slash at the end.
    FolderWatch(QStringList folders, QObject* parent);
    ~FolderWatch() override;

    /// Begins to watch.
    void start();

Q_SIGNALS:
    void changed(const FolderChange& change);

private:
    void watchAll();
    int watch(const QString& folder);
    void tellContents(const QString& folder);
    void read();
    void take(const inotify_event& event, const QString& name);
    void finishMove();

    QStringList m_folders;
    int m_descriptor = -1;
    std::unique_ptr<QSocketNotifier> m_notifier;
    /// The folders watched, and the nearest existing ones above those that are missing.
    QHash<int, QString> m_paths;
    /// A file that has left a folder; the next event may tell where to.
    FolderChange m_leaving;
    quint32 m_leavingCookie = 0;
    bool m_hasBegun = false;
};
