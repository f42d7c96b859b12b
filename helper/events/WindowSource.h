// SPDX-License-Identifier: MIT
#pragma once

#include "EventSource.h"

#include <QHash>
#include <QString>

class WindowWatcher;
struct SessionWindow;

/// Windows and menus: opened, closed, minimized, moved to another workspace, asking for attention. A dialog that opens
/// is a question, and a window of a file manager an opened folder.
///
/// Listens to the window watcher.
class WindowSource final : public EventSource
{
    Q_OBJECT

public:
    /// @p windows must live as long.
    WindowSource(WindowWatcher& windows, QObject* parent);

    void start() override;

private:
    void open(const SessionWindow& window);
    void change(const SessionWindow& before, const SessionWindow& now);
    bool isFileManager(const QString& applicationPath);

    WindowWatcher& m_windows;
    /// By the paths of their desktop entries.
    QHash<QString, bool> m_fileManagers;
};
