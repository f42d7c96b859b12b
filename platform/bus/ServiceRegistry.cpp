// SPDX-License-Identifier: MIT
#include "ServiceRegistry.h"

#include "MessageBus.h"

using namespace std::chrono_literals;

namespace {

const MessageBus::Method nameHasOwner{
    "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "NameHasOwner"};
constexpr auto answerTimeout = 500ms;

} // namespace

void ServiceRegistry::isRegistered(const QString& name, QObject* context, const std::function<void(bool)>& answered)
{
    MessageBus::session().ask(
        nameHasOwner, {name}, answerTimeout,
        [](const MessageBus::Arguments* reply) {
            return reply != nullptr && !reply->empty() && reply->front().integerValue() != 0;
        },
        context, answered);
}
