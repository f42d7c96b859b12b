// SPDX-License-Identifier: MIT
#pragma once

#include "EventSource.h"

#include <QDateTime>
#include <QSocketNotifier>

#include <functional>
#include <memory>
#include <optional>

/// The clock: the quarters of an hour. One wake-up at each, none in between.
///
/// Listens to a timer of the kernel that follows the wall clock, also when that is set. A quarter that the machine has
/// slept through is not told.
class ClockSource final : public EventSource
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(ClockSource)

public:
    /// The time, in milliseconds since the beginning of 1970 (UTC).
    using Clock = std::function<qint64()>;

    explicit ClockSource(QObject* parent, Clock clock = &QDateTime::currentMSecsSinceEpoch);
    ~ClockSource() override;

    void start() override;

    /// The event of this moment; nothing where no quarter has begun in the last 30 seconds.
    static std::optional<EventCode> eventAt(const QTime& time);

private:
    void arm();
    void takeTime();

    Clock m_clock;
    int m_timer = -1;
    std::unique_ptr<QSocketNotifier> m_notifier;
};
