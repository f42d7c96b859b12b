// SPDX-License-Identifier: MIT
#include "ServiceRegistry.h"

#include "MessageBus.h"

#include <QByteArray>

#include <systemd/sd-bus.h>

using namespace std::chrono_literals;

namespace {

const MessageBus::Method nameHasOwner{
    "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "NameHasOwner"};
constexpr auto answerTimeout = 500ms;

} // namespace

void ServiceRegistry::isRegistered(const QString& name, QObject* context, const std::function<void(bool)>& answered)
{
    MessageBus::session().ask(
        nameHasOwner,
        [bytes = name.toUtf8()](sd_bus_message* message) { sd_bus_message_append(message, "s", bytes.constData()); },
        answerTimeout,
        [](sd_bus_message* reply) {
            int hasOwner = 0;
            return reply != nullptr && sd_bus_message_read(reply, "b", &hasOwner) > 0 && hasOwner != 0;
        },
        context, answered);
}
