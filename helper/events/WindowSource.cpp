// SPDX-License-Identifier: MIT
#include "WindowSource.h"

#include <platform/windows/WindowWatcher.h>

#include <QFile>

#include <algorithm>

using Type = SessionWindow::Type;

namespace {

/// Desktop entries are small.
constexpr qint64 mostBytes = 65'536;

/// Whether the entry's categories name it (public source: freedesktop.org Desktop Menu Specification).
bool describesFileManager(const QString& path)
{
    QFile file(path);
    if (!path.endsWith(u".desktop") || !file.open(QIODevice::ReadOnly)) {
        return false;
    }
    const QList<QByteArray> lines = file.read(mostBytes).split('\n');
    return std::ranges::any_of(
        lines, [](const QByteArray& line) { return line.startsWith("Categories=") && line.contains("FileManager;"); });
}

} // namespace

WindowSource::WindowSource(WindowWatcher& windows, QObject* parent)
    : EventSource(parent)
    , m_windows(windows)
{
}

void WindowSource::start()
{
    connect(&m_windows, &WindowWatcher::opened, this, &WindowSource::open);
    connect(&m_windows, &WindowWatcher::changed, this, &WindowSource::change);
    connect(&m_windows, &WindowWatcher::closed, this, [this](const SessionWindow& window) {
        if (window.type == Type::Normal || window.type == Type::Dialog) {
            tell(EventCode::WindowClosed);
        }
    });
    connect(&m_windows, &WindowWatcher::popupMapped, this, [this](Type type) {
        if (type == Type::Menu) {
            tell(EventCode::MenuOpened);
        }
    });
    connect(&m_windows, &WindowWatcher::popupUnmapped, this, [this](Type type) {
        if (type == Type::Menu) {
            tell(EventCode::MenuClosed);
        }
    });
}

void WindowSource::open(const SessionWindow& window)
{
    if (window.type == Type::Dialog) {
        tell(EventCode::QuestionAsked);
    } else if (window.type == Type::Normal) {
        tell(isFileManager(window.applicationPath) ? EventCode::FolderOpened : EventCode::WindowOpened);
    }
}

void WindowSource::change(const SessionWindow& before, const SessionWindow& now)
{
    if (before.isHidden != now.isHidden) {
        tell(now.isHidden ? EventCode::WindowMinimized : EventCode::WindowRestored);
    }
    if (before.desktop && now.desktop && before.desktop != now.desktop) {
        tell(EventCode::WindowMovedToDesktop);
    }
    if (!before.demandsAttention && now.demandsAttention) {
        tell(EventCode::SystemAlert);
    }
}

bool WindowSource::isFileManager(const QString& applicationPath)
{
    const auto known = m_fileManagers.constFind(applicationPath);
    return known != m_fileManagers.cend()
               ? *known
               : *m_fileManagers.insert(applicationPath, describesFileManager(applicationPath));
}
