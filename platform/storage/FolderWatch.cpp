// SPDX-License-Identifier: MIT
#include "FolderWatch.h"

#include <product/Product.h>

#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QList>
#include <QLoggingCategory>
#include <QSet>
#include <QSocketNotifier>

#include <sys/inotify.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <optional>
#include <utility>

namespace {

Q_LOGGING_CATEGORY(log, PRODUCT_NAME ".folders")

constexpr quint32 whatMatters = IN_CREATE | IN_CLOSE_WRITE | IN_MOVED_FROM | IN_MOVED_TO | IN_DELETE | IN_DELETE_SELF |
                                IN_MOVE_SELF | IN_ONLYDIR | IN_EXCL_UNLINK;
constexpr quint32 whatBringsFolders = IN_CREATE | IN_MOVED_TO | IN_DELETE_SELF | IN_MOVE_SELF | IN_ONLYDIR;
/// Of one turn of the loop: whoever changes thousands of files does not keep the program from its other work.
constexpr size_t mostBytes = 16'384;
/// Of a folder that has just appeared.
constexpr int mostContents = 100;

/// All but what begins a move.
std::optional<FolderChange::Kind> kindOf(quint32 mask)
{
    static constexpr std::array<std::pair<quint32, FolderChange::Kind>, 4> kinds{{
        {IN_CREATE, FolderChange::Kind::Created},
        {IN_CLOSE_WRITE, FolderChange::Kind::Written},
        {IN_MOVED_TO, FolderChange::Kind::MovedIn},
        {IN_DELETE, FolderChange::Kind::Deleted},
    }};
    const auto* const found =
        std::ranges::find_if(kinds, [mask](const auto& kind) { return (mask & kind.first) != 0; });
    return found != kinds.end() ? std::optional(found->second) : std::nullopt;
}

} // namespace

FolderWatch::FolderWatch(QStringList folders, QObject* parent)
    : QObject(parent)
    , m_folders(std::move(folders))
{
}

FolderWatch::~FolderWatch()
{
    m_notifier.reset();
    if (m_descriptor >= 0) {
        ::close(m_descriptor);
    }
}

void FolderWatch::start()
{
    m_descriptor = ::inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    if (m_descriptor < 0) {
        qCWarning(log).noquote() << "no folders can be watched:" << std::strerror(errno);
        return;
    }
    m_notifier = std::make_unique<QSocketNotifier>(m_descriptor, QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &FolderWatch::read);
    watchAll();
    m_hasBegun = true;
}

void FolderWatch::watchAll()
{
    QSet<int> needed;
    for (const QString& folder : std::as_const(m_folders)) {
        needed.insert(watch(folder));
    }
    const QList<int> watches = m_paths.keys();
    for (const int watch : watches) {
        if (!needed.contains(watch)) {
            m_paths.remove(watch);
            ::inotify_rm_watch(m_descriptor, watch);
        }
    }
}

/// Or, where there is no such folder, the nearest one above it, in which it may appear. A folder that is watched
/// already keeps its number.
int FolderWatch::watch(const QString& folder)
{
    QString path = folder;
    int number = ::inotify_add_watch(m_descriptor, QFile::encodeName(path).constData(), whatMatters);
    while (number < 0 && (errno == ENOENT || errno == ENOTDIR) && path.size() > 1) {
        path = QFileInfo(path).path();
        // It may be watched for its own sake, too.
        number = ::inotify_add_watch(
            m_descriptor, QFile::encodeName(path).constData(), whatBringsFolders | quint32(IN_MASK_ADD));
    }
    if (number < 0) {
        qCInfo(log).noquote() << "cannot watch" << folder << "-" << std::strerror(errno);
    } else if (m_paths.value(number) != path) {
        m_paths.insert(number, path);
        if (m_hasBegun && path == folder) {
            tellContents(folder);
        }
    }
    return number;
}

/// Whoever makes a folder often puts something in it before it can be watched.
void FolderWatch::tellContents(const QString& folder)
{
    QDirIterator entries(folder, QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    for (int i = 0; i < mostContents && entries.hasNext(); ++i) {
        entries.next();
        Q_EMIT changed({FolderChange::Kind::Created, folder, entries.fileName(), {}, {}});
    }
}

void FolderWatch::read()
{
    alignas(inotify_event) std::array<char, mostBytes> bytes{};
    const ssize_t count = ::read(m_descriptor, bytes.data(), bytes.size());
    for (ssize_t at = 0; at + ssize_t(sizeof(inotify_event)) <= count;) {
        const auto* const event = reinterpret_cast<const inotify_event*>(bytes.data() + at);
        // The name is filled up with zeros.
        const QString name = event->len == 0 ? QString() : QFile::decodeName(event->name);
        take(*event, name);
        at += ssize_t(sizeof(inotify_event)) + event->len;
    }
    finishMove();
}

void FolderWatch::take(const inotify_event& event, const QString& name)
{
    const QString folder = m_paths.value(event.wd);
    const bool hasFolderGone = (event.mask & (IN_IGNORED | IN_DELETE_SELF | IN_MOVE_SELF)) != 0;
    if (folder.isEmpty()) {
        return;
    }
    if (hasFolderGone) {
        m_paths.remove(event.wd);
        ::inotify_rm_watch(m_descriptor, event.wd);
    }
    if (event.cookie == 0 || event.cookie != m_leavingCookie) {
        finishMove();
    }
    if ((event.mask & IN_MOVED_FROM) != 0) {
        m_leaving = {FolderChange::Kind::MovedOut, folder, name, {}, {}};
        m_leavingCookie = event.cookie;
    } else if (const auto kind = kindOf(event.mask); kind && m_folders.contains(folder)) {
        const bool isRename = *kind == FolderChange::Kind::MovedIn && std::exchange(m_leavingCookie, 0) != 0;
        Q_EMIT changed(isRename
                           ? FolderChange{FolderChange::Kind::Renamed, folder, name, m_leaving.folder, m_leaving.name}
                           : FolderChange{*kind, folder, name, {}, {}});
    }
    if (hasFolderGone || (event.mask & IN_ISDIR) != 0) {
        watchAll();
    }
}

/// The file that has left went to no watched folder.
void FolderWatch::finishMove()
{
    if (std::exchange(m_leavingCookie, 0) != 0 && m_folders.contains(m_leaving.folder)) {
        Q_EMIT changed(m_leaving);
    }
}
