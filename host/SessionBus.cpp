// SPDX-License-Identifier: MIT
#include "SessionBus.h"

#include <QDBusConnection>
#include <QDeadlineTimer>

#include <systemd/sd-bus.h>

#include <chrono>
#include <memory>

using namespace std::chrono_literals;

namespace {

constexpr auto greetingTimeout = 2s;

struct CloseBus
{
    void operator()(sd_bus* bus) const { sd_bus_close_unref(bus); }
};

} // namespace

// The toolkit's own connections cannot be waited for with a limit.
SessionBus::State SessionBus::state()
{
    sd_bus* opened = nullptr;
    const int result = sd_bus_open_user(&opened);
    const std::unique_ptr<sd_bus, CloseBus> bus(opened);
    if (result < 0) {
        return State::Absent;
    }
    const QDeadlineTimer deadline(greetingTimeout);
    while (sd_bus_is_ready(opened) == 0 && !deadline.hasExpired()) {
        const auto remaining = std::chrono::ceil<std::chrono::microseconds>(deadline.remainingTimeAsDuration());
        const int processed = sd_bus_process(opened, nullptr);
        if (processed < 0 || (processed == 0 && sd_bus_wait(opened, uint64_t(remaining.count())) < 0)) {
            return State::Absent;
        }
    }
    return sd_bus_is_ready(opened) > 0 ? State::Answering : State::Hung;
}

void SessionBus::hideFromToolkit()
{
    const char* const variable = "DBUS_SESSION_BUS_ADDRESS";
    const bool wasSet = qEnvironmentVariableIsSet(variable);
    const QByteArray address = qgetenv(variable);
    qputenv(variable, "unix:path=/dev/null");
    // The toolkit keeps its first connection, even one that failed.
    QDBusConnection::sessionBus();
    if (wasSet) {
        qputenv(variable, address);
    } else {
        qunsetenv(variable);
    }
}
