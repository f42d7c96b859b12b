// SPDX-License-Identifier: MIT
#include "DownloadSource.h"

#include "UserFolders.h"

#include <QFileInfo>

DownloadSource::DownloadSource(QObject* parent)
    : EventSource(parent)
    , m_folder(UserFolders::paths({QStandardPaths::DownloadLocation}), this)
{
}

void DownloadSource::start()
{
    connect(&m_folder, &FolderWatch::changed, this, &DownloadSource::take);
    m_folder.start();
}

void DownloadSource::take(const FolderChange& change)
{
    using Kind = FolderChange::Kind;
    if (UserFolders::isTemporary(change.name)) {
        if (change.kind == Kind::Created && UserFolders::isPartial(change.name)) {
            tell(EventCode::DownloadStarted);
        }
        return;
    }
    // Beside an incomplete file some programs keep an empty one with the last name.
    const bool isComplete = change.kind == Kind::MovedIn ||
                            (change.kind == Kind::Renamed && UserFolders::isTemporary(change.oldName)) ||
                            (change.kind == Kind::Written && QFileInfo(change.folder + u'/' + change.name).size() > 0);
    if (isComplete) {
        tell(EventCode::DownloadFinished);
    }
}
