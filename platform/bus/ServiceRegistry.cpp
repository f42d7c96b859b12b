// SPDX-License-Identifier: MIT
#include "ServiceRegistry.h"

#include "MessageBus.h"

using namespace std::chrono_literals;

namespace {

constexpr auto daemon = "org.freedesktop.DBus";
constexpr auto daemonPath = "/org/freedesktop/DBus";
const MessageBus::Method nameHasOwner{daemon, daemonPath, daemon, "NameHasOwner"};
const MessageBus::Method requestName{daemon, daemonPath, daemon, "RequestName", "su"};
constexpr auto answerTimeout = 500ms;
/// Longer: a session that is just starting has much to do.
constexpr auto registrationTimeout = 2s;

/// Of D-Bus's own numbers: not to wait for a name that another has, and the answers of success.
constexpr qint64 doNotQueue = 4;
constexpr qint64 primaryOwner = 1;
constexpr qint64 alreadyOwner = 4;

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

void ServiceRegistry::registerService(const QString& name, QObject* context, const std::function<void(bool)>& answered)
{
    MessageBus::session().ask(
        requestName, {name, doNotQueue}, registrationTimeout,
        [](const MessageBus::Arguments* reply) {
            const qint64 answer = reply != nullptr && !reply->empty() ? reply->front().integerValue() : 0;
            return answer == primaryOwner || answer == alreadyOwner;
        },
        context, answered);
}
