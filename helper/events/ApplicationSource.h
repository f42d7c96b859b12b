// SPDX-License-Identifier: MIT
#pragma once

#include "EventSource.h"

#include <QHash>
#include <QString>

#include <optional>

class WindowWatcher;
struct SessionWindow;

/// Applications, by their windows: opened with the first, quit with the last, hidden when all are, brought to the front
/// when one of another application gets the keyboard.
///
/// Listens to the window watcher.
class ApplicationSource final : public EventSource
{
    Q_OBJECT

public:
    /// @p windows must live as long.
    ApplicationSource(WindowWatcher& windows, QObject* parent);

    void start() override;

private:
    void open(const SessionWindow& window);
    void close(const SessionWindow& window);
    void change(const SessionWindow& before, const SessionWindow& now);
    void activate(const std::optional<SessionWindow>& window);
    bool isHidden(const QString& application) const;

    WindowWatcher& m_windows;
    /// How many windows each has.
    QHash<QString, int> m_counts;
    QString m_front;
};
