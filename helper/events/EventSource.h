// SPDX-License-Identifier: MIT
#pragma once

#include "EventCode.h"

#include <QObject>

/// Where some of the events come from: one service of the desktop, one kind of watch.
///
/// What there is already when a source starts is no event. A source is silent where its service is absent, and heard as
/// soon as that comes; it waits for nothing and wakes up for nothing but what it listens to.
///
/// To add one, copy a short one (NetworkSource), name its events in EventCode.h and docs/events.md, and make it in
/// EventSources.cpp.
class EventSource : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// Begins to listen. Once.
    virtual void start() = 0;

Q_SIGNALS:
    /// @p code is 0 to 79, as EventCode has it.
    void happened(int code);

protected:
    void tell(EventCode code) { Q_EMIT happened(int(code)); }
};
