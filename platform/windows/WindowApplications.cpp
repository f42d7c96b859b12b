// SPDX-License-Identifier: MIT
#include "WindowApplications.h"

#include <platform/desktop/DesktopApplications.h>

#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

#include <algorithm>
#include <iterator>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

/// The executable of a process of this user; empty for those of others.
QString programOf(qint64 pid)
{
    const QString path = pid > 0 ? QFile::symLinkTarget(u"/proc/%1/exe"_s.arg(pid)) : QString();
    // What the kernel appends when the file has been replaced since, as by an update.
    static const QString deleted = u" (deleted)"_s;
    return path.endsWith(deleted) ? path.chopped(deleted.size()) : path;
}

/// The name of the program that an entry starts, without its folder.
QString programOf(const DesktopApplications::Entry& entry)
{
    QStringList words = QProcess::splitCommand(entry.exec);
    const auto isSetting = [](const QString& word) { return word == u"env" || word.contains(u'='); };
    const auto program = std::ranges::find_if_not(words, isSetting);
    return program == words.end() ? QString() : QFileInfo(*program).fileName();
}

std::vector<std::optional<FileStamp>> stampsOfFolders()
{
    const QStringList folders = QStandardPaths::standardLocations(QStandardPaths::ApplicationsLocation);
    std::vector<std::optional<FileStamp>> stamps;
    std::ranges::transform(
        folders, std::back_inserter(stamps), [](const QString& folder) { return FileStamp::of(folder); });
    return stamps;
}

} // namespace

QString WindowApplications::pathFor(const SessionWindow& window)
{
    const QString program = programOf(window.pid);
    QString path = entryFor(window, program);
    if (path.isEmpty() && refresh()) {
        path = entryFor(window, program);
    }
    return path.isEmpty() ? program : path;
}

QString WindowApplications::entryFor(const SessionWindow& window, const QString& program) const
{
    const QString windowClass = window.windowClass.toLower();
    const QString instanceName = window.instanceName.toLower();
    const QString programName = QFileInfo(program).fileName().toLower();
    const std::array<std::pair<const Paths*, QString>, 5> ways{{{&m_byClass, windowClass}, {&m_byClass, instanceName},
        {&m_byName, windowClass}, {&m_byName, instanceName}, {&m_byProgram, programName}}};
    for (const auto& [paths, key] : ways) {
        if (const QString path = key.isEmpty() ? QString() : paths->value(key); !path.isEmpty()) {
            return path;
        }
    }
    return {};
}

/// Reads the entries again when their folders have changed. Whether they have.
bool WindowApplications::refresh()
{
    std::vector<std::optional<FileStamp>> stamps = stampsOfFolders();
    if (stamps == m_folders) {
        return false;
    }
    m_folders = std::move(stamps);
    m_byClass.clear();
    m_byName.clear();
    m_byProgram.clear();
    const auto insertFirst = [](Paths& paths, const QString& key, const QString& path) {
        if (!key.isEmpty() && !paths.contains(key)) {
            paths.insert(key, path);
        }
    };
    const QList<DesktopApplications::Entry> entries = DesktopApplications::installed();
    for (const DesktopApplications::Entry& entry : entries) {
        insertFirst(m_byClass, entry.windowClass.toLower(), entry.path);
        insertFirst(m_byName, QFileInfo(entry.path).completeBaseName().toLower(), entry.path);
        const QString program = programOf(entry).toLower();
        m_byProgram.insert(program, m_byProgram.contains(program) ? QString() : entry.path);
    }
    return true;
}
