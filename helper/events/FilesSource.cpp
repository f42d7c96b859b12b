// SPDX-License-Identifier: MIT
#include "FilesSource.h"

#include "UserFolders.h"

#include <QStandardPaths>

namespace {

/// Programs that create files and never close them do not fill the memory.
constexpr qsizetype mostNew = 1000;

} // namespace

FilesSource::FilesSource(QObject* parent)
    : EventSource(parent)
    , m_folders(UserFolders::paths({QStandardPaths::DesktopLocation, QStandardPaths::DocumentsLocation,
                    QStandardPaths::MusicLocation, QStandardPaths::PicturesLocation, QStandardPaths::MoviesLocation}),
          this)
{
}

void FilesSource::start()
{
    connect(&m_folders, &FolderWatch::changed, this, &FilesSource::take);
    m_folders.start();
}

void FilesSource::take(const FolderChange& change)
{
    using Kind = FolderChange::Kind;
    if (change.kind == Kind::Renamed) {
        takeRename(change);
        return;
    }
    if (UserFolders::isTemporary(change.name)) {
        return;
    }
    const QString path = change.folder + u'/' + change.name;
    if (change.kind == Kind::Created && m_new.size() < mostNew) {
        m_new.insert(path);
    } else if (change.kind == Kind::Written) {
        tell(m_new.remove(path) ? EventCode::FileCopied : EventCode::FileSaved);
    } else if (change.kind == Kind::Deleted || change.kind == Kind::MovedOut) {
        m_new.remove(path);
    }
}

/// Careful programs save by renaming a temporary file.
void FilesSource::takeRename(const FolderChange& change)
{
    const bool wasTemporary = UserFolders::isTemporary(change.oldName);
    const bool isTemporary = UserFolders::isTemporary(change.name);
    m_new.remove(change.oldFolder + u'/' + change.oldName);
    if (wasTemporary && !isTemporary) {
        tell(EventCode::FileSaved);
    } else if (!wasTemporary && !isTemporary && change.folder == change.oldFolder) {
        tell(EventCode::FileRenamed);
    }
}
