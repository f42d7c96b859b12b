// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include <vector>

class EventSource;
class InputWatcher;
class WindowWatcher;

/// All sources of events.
class EventSources final : public QObject
{
    Q_OBJECT

public:
    /// @p input and @p windows may be null where the session has none; otherwise they must live as long.
    EventSources(InputWatcher* input, WindowWatcher* windows, QObject* parent);

    /// Begins to listen. Once.
    void start();

Q_SIGNALS:
    /// @p code is 0 to 79, as EventCode has it.
    void happened(int code);

private:
    void add(EventSource* source);

    /// Children of this object.
    std::vector<EventSource*> m_sources;
};
