// SPDX-License-Identifier: MIT
#include "FileTracesSource.h"

#include "UserFolders.h"

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

const QString coreDumps = u"/var/lib/systemd/coredump"_s;
constexpr QStringView recentDocuments = u"recently-used.xbel";

QString screenshotFolder()
{
    const QString named = qEnvironmentVariable("XDG_SCREENSHOTS_DIR");
    return named.isEmpty() ? QStandardPaths::writableLocation(QStandardPaths::PicturesLocation) + u"/Screenshots"_s
                           : named;
}

/// "core.PROGRAM.USER.…", with the dots in the program's name written otherwise.
bool isOwnCoreDump(const QString& name)
{
    const QList<QStringView> parts = QStringView(name).split(u'.');
    return parts.size() > 2 && parts[0] == u"core" && parts[2] == QString::number(::getuid());
}

} // namespace

FileTracesSource::FileTracesSource(QObject* parent)
    : EventSource(parent)
    , m_screenshots(screenshotFolder())
    , m_dataFolder(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation))
    , m_folders({m_screenshots, m_dataFolder, coreDumps}, this)
{
}

void FileTracesSource::start()
{
    connect(&m_folders, &FolderWatch::changed, this, &FileTracesSource::take);
    m_folders.start();
}

void FileTracesSource::take(const FolderChange& change)
{
    using Kind = FolderChange::Kind;
    const bool isReady = change.kind == Kind::Written || change.kind == Kind::MovedIn || change.kind == Kind::Renamed;
    if (change.folder == coreDumps) {
        // They get their names when they are complete.
        if ((isReady || change.kind == Kind::Created) && isOwnCoreDump(change.name)) {
            tell(EventCode::ApplicationCrashed);
        }
    } else if (!isReady) {
        return;
    } else if (change.folder == m_screenshots && !UserFolders::isTemporary(change.name)) {
        tell(EventCode::ScreenCaptured);
    } else if (change.folder == m_dataFolder && change.name == recentDocuments) {
        tell(EventCode::FileOpened);
    }
}
