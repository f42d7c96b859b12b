// SPDX-License-Identifier: MIT
#include "PrintSource.h"

#include <platform/bus/LoginSession.h>

namespace {

/// The arguments of the signals about jobs: sssusbuus..., of which these count.
constexpr size_t jobAt = 6;
constexpr size_t stateAt = 7;
/// Internet Printing Protocol, job-state: processing; those above 6 are over, of which 9 is completed.
constexpr qint64 processing = 5;
constexpr qint64 stopped = 6;
constexpr qint64 completed = 9;
constexpr qsizetype mostJobs = 1000;

} // namespace

PrintSource::PrintSource(QObject* parent)
    : EventSource(parent)
    , m_subscription(this)
{
}

void PrintSource::start()
{
    // The notifier is a program that comes and goes without a name of its own.
    for (const char* const member : {"JobState", "JobCompleted"}) {
        MessageBus::system().subscribe({{}, {}, "org.cups.cupsd.Notifier", member}, this,
            [this](const MessageBus::Signal& signal) { takeJob(signal); });
    }
    LoginSession::followSleep(this, [this](bool isAsleep) {
        if (!isAsleep) {
            m_subscription.ask();
        }
    });
    m_subscription.start();
}

/// The same may be told several times, once for each program that has asked.
void PrintSource::takeJob(const MessageBus::Signal& signal)
{
    const qint64 job = signal.argument(jobAt).integerValue();
    const qint64 state = signal.argument(stateAt).integerValue();
    if (state == processing && !m_printing.contains(job) && m_printing.size() < mostJobs) {
        m_printing.insert(job);
        tell(EventCode::PrintingStarted);
    } else if (state > stopped && m_printing.remove(job) && state == completed) {
        tell(EventCode::PrintingFinished);
    }
}
