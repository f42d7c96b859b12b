// SPDX-License-Identifier: MIT
#include "ApplicationSource.h"

#include <platform/windows/WindowWatcher.h>

#include <algorithm>
#include <utility>

namespace {

bool counts(const SessionWindow& window)
{
    return window.type == SessionWindow::Type::Normal || window.type == SessionWindow::Type::Dialog;
}

/// What tells applications apart, as far as it is known.
QString applicationOf(const SessionWindow& window)
{
    if (!window.applicationPath.isEmpty()) {
        return window.applicationPath;
    }
    return window.windowClass.isEmpty() ? QString::number(window.pid) : window.windowClass;
}

} // namespace

ApplicationSource::ApplicationSource(WindowWatcher& windows, QObject* parent)
    : EventSource(parent)
    , m_windows(windows)
{
}

void ApplicationSource::start()
{
    for (const SessionWindow& window : m_windows.windows()) {
        if (counts(window)) {
            ++m_counts[applicationOf(window)];
        }
    }
    if (const auto active = m_windows.active(); active) {
        m_front = applicationOf(*active);
    }
    connect(&m_windows, &WindowWatcher::opened, this, &ApplicationSource::open);
    connect(&m_windows, &WindowWatcher::closed, this, &ApplicationSource::close);
    connect(&m_windows, &WindowWatcher::changed, this, &ApplicationSource::change);
    connect(&m_windows, &WindowWatcher::activated, this, &ApplicationSource::activate);
}

void ApplicationSource::open(const SessionWindow& window)
{
    const QString application = applicationOf(window);
    if (counts(window) && ++m_counts[application] == 1) {
        // Its first window comes to the front with it.
        m_front = application;
        tell(EventCode::ApplicationOpened);
    }
}

void ApplicationSource::close(const SessionWindow& window)
{
    const auto count = m_counts.find(applicationOf(window));
    if (!counts(window) || count == m_counts.end() || --*count > 0) {
        return;
    }
    m_counts.remove(applicationOf(window));
    tell(EventCode::ApplicationQuit);
}

void ApplicationSource::change(const SessionWindow& before, const SessionWindow& now)
{
    const QString application = applicationOf(now);
    const QString old = applicationOf(before);
    if (counts(before) != counts(now) || old != application) {
        // The window has said more about itself: the same program by another name.
        const auto count = m_counts.find(old);
        if (counts(before) && count != m_counts.end() && --*count <= 0) {
            m_counts.remove(old);
        }
        m_counts[application] += counts(now) ? 1 : 0;
        m_front = m_front == old ? application : m_front;
    }
    if (!before.isHidden && now.isHidden && isHidden(application)) {
        tell(EventCode::ApplicationHidden);
    }
}

void ApplicationSource::activate(const std::optional<SessionWindow>& window)
{
    if (window && counts(*window) && std::exchange(m_front, applicationOf(*window)) != applicationOf(*window)) {
        tell(EventCode::ApplicationActivated);
    }
}

bool ApplicationSource::isHidden(const QString& application) const
{
    const std::vector<SessionWindow> windows = m_windows.windows();
    return std::ranges::all_of(windows, [&application](const SessionWindow& window) {
        return window.isHidden || !counts(window) || applicationOf(window) != application;
    });
}
