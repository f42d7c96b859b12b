// SPDX-License-Identifier: MIT
#include "LoginSession.h"

#include "MessageBus.h"

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr auto answerTimeout = 5s;

} // namespace

void LoginSession::find(QObject* context, const std::function<void(const QByteArray&)>& found)
{
    MessageBus::system().followService(service, context, [context, found](const QString& owner) {
        if (owner.isEmpty()) {
            return;
        }
        // A program that the user's service manager has started belongs to no session: then it is the user's graphical
        // one.
        const QString session = qEnvironmentVariable("XDG_SESSION_ID", u"auto"_s);
        MessageBus::system().request({service, managerPath, managerInterface, "GetSession"}, {session}, answerTimeout,
            context, [found](const MessageBus::Arguments* reply) {
                const QByteArray path = MessageBus::valueAt(reply, 0).string().toLatin1();
                if (!path.isEmpty()) {
                    found(path);
                }
            });
    });
}

void LoginSession::followSleep(QObject* context, const std::function<void(bool)>& changed)
{
    MessageBus::system().subscribe({service, managerPath, managerInterface, "PrepareForSleep"}, context,
        [changed](const MessageBus::Signal& signal) { changed(signal.argument(0).integerValue() != 0); });
}
