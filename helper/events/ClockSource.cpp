// SPDX-License-Identifier: MIT
#include "ClockSource.h"

#include <product/Product.h>

#include <QLoggingCategory>

#include <sys/timerfd.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <utility>

namespace {

Q_LOGGING_CATEGORY(log, PRODUCT_NAME ".events.clock")

/// In milliseconds. Wherever the clocks differ from UTC, they do so by whole quarters.
constexpr qint64 quarter = 900'000;
constexpr int latest = 30'000;

} // namespace

ClockSource::ClockSource(QObject* parent, Clock clock)
    : EventSource(parent)
    , m_clock(std::move(clock))
{
}

ClockSource::~ClockSource()
{
    m_notifier.reset();
    if (m_timer >= 0) {
        ::close(m_timer);
    }
}

void ClockSource::start()
{
    m_timer = ::timerfd_create(CLOCK_REALTIME, TFD_NONBLOCK | TFD_CLOEXEC);
    if (m_timer < 0) {
        qCWarning(log).noquote() << "no timer:" << std::strerror(errno);
        return;
    }
    m_notifier = std::make_unique<QSocketNotifier>(m_timer, QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &ClockSource::takeTime);
    arm();
}

std::optional<EventCode> ClockSource::eventAt(const QTime& time)
{
    if (time.msecsSinceStartOfDay() % quarter >= latest) {
        return {};
    }
    switch (time.minute()) {
    case 0:
        return EventCode::FullHour;
    case 30:
        return EventCode::HalfHour;
    default:
        return EventCode::QuarterHour;
    }
}

void ClockSource::arm()
{
    const qint64 now = m_clock();
    const qint64 wait = quarter - now % quarter;
    const qint64 end = QDateTime::currentMSecsSinceEpoch() + wait;
    itimerspec timer{};
    timer.it_value.tv_sec = end / 1000;
    timer.it_value.tv_nsec = end % 1000 * 1'000'000;
    ::timerfd_settime(m_timer, TFD_TIMER_ABSTIME | TFD_TIMER_CANCEL_ON_SET, &timer, nullptr);
}

void ClockSource::takeTime()
{
    quint64 count = 0;
    // Fails when the clock has been set: then the time tells nothing.
    const bool hasExpired = ::read(m_timer, &count, sizeof count) == ssize_t(sizeof count);
    const std::optional<EventCode> event =
        hasExpired ? eventAt(QDateTime::fromMSecsSinceEpoch(m_clock()).time()) : std::nullopt;
    arm();
    if (event) {
        tell(*event);
    }
}
