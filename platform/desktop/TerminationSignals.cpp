// SPDX-License-Identifier: MIT
#include "TerminationSignals.h"

#include <sys/eventfd.h>
#include <unistd.h>

#include <array>
#include <csignal>

namespace {

constexpr std::array terminations{SIGTERM, SIGINT, SIGHUP};

/// What the signal handler writes to. A descriptor that reads signals itself would need them blocked, also in the
/// programs that this process starts.
int wakeUp = -1;

void noteSignal(int /*signal*/)
{
    ::eventfd_write(wakeUp, 1);
}

int newWakeUp()
{
    wakeUp = ::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    return wakeUp;
}

} // namespace

TerminationSignals::TerminationSignals()
    : m_notifier(newWakeUp(), QSocketNotifier::Read)
{
    connect(&m_notifier, &QSocketNotifier::activated, this, [this] {
        eventfd_t count = 0;
        ::eventfd_read(wakeUp, &count);
        Q_EMIT received();
    });
    for (const int signal : terminations) {
        std::signal(signal, noteSignal);
    }
}

TerminationSignals::~TerminationSignals()
{
    for (const int signal : terminations) {
        std::signal(signal, SIG_DFL);
    }
    m_notifier.setEnabled(false);
    ::close(wakeUp);
}
