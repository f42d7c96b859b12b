// SPDX-License-Identifier: MIT
#include "SessionSource.h"

#include <QDateTime>
#include <QGuiApplication>

#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using PropertyList::Value;

namespace {

constexpr auto service = "org.freedesktop.login1";
constexpr auto managerPath = "/org/freedesktop/login1";
constexpr auto managerInterface = "org.freedesktop.login1.Manager";
constexpr auto sessionInterface = "org.freedesktop.login1.Session";
constexpr auto answerTimeout = 5s;
/// A session that is younger than this when it is first seen has just begun.
constexpr std::chrono::milliseconds youngest = 60s;

} // namespace

SessionSource::SessionSource(QObject* parent)
    : EventSource(parent)
{
}

void SessionSource::start()
{
    MessageBus& bus = MessageBus::system();
    bus.subscribe(
        {service, managerPath, managerInterface, "PrepareForShutdown"}, this, [this](const MessageBus::Signal& signal) {
            if (signal.argument(0).integerValue() != 0) {
                endSession();
            }
        });
    bus.followService(service, this, [this](const QString& owner) {
        if (!owner.isEmpty() && m_session == nullptr) {
            findSession();
        }
    });
    if (qGuiApp != nullptr) {
        connect(qGuiApp, &QGuiApplication::commitDataRequest, this, &SessionSource::endSession, Qt::DirectConnection);
    }
}

void SessionSource::findSession()
{
    // A program that the user's service manager has started belongs to no session: then it is the user's graphical one.
    const QString session = qEnvironmentVariable("XDG_SESSION_ID", u"auto"_s);
    MessageBus::system().request({service, managerPath, managerInterface, "GetSession"}, {session}, answerTimeout, this,
        [this](const MessageBus::Arguments* reply) {
            const QByteArray path = MessageBus::valueAt(reply, 0).string().toLatin1();
            if (!path.isEmpty() && m_session == nullptr) {
                follow(path);
            }
        });
}

void SessionSource::follow(const QByteArray& session)
{
    MessageBus& bus = MessageBus::system();
    for (const bool isLocked : {true, false}) {
        bus.subscribe({service, session, sessionInterface, isLocked ? "Lock" : "Unlock"}, this,
            [this, isLocked](const MessageBus::Signal&) { setLocked(isLocked); });
    }
    m_session = new BusProperties(
        bus, {service, session, sessionInterface, {u"Active"_s, u"LockedHint"_s, u"Timestamp"_s}}, this);
    connect(m_session, &BusProperties::changed, this,
        [this](const QString& name, const Value&, const Value& now) { takeProperty(name, now.integerValue() != 0); });
    connect(
        m_session, &BusProperties::known, this,
        [this] {
            m_isLocked = m_session->value(u"LockedHint").integerValue() != 0;
            const std::chrono::microseconds begin(m_session->value(u"Timestamp").integerValue());
            const std::chrono::milliseconds now(QDateTime::currentMSecsSinceEpoch());
            if (begin > 0us && now - begin < youngest) {
                tell(EventCode::LogIn);
            }
        },
        Qt::SingleShotConnection);
    m_session->follow();
}

void SessionSource::takeProperty(const QString& name, bool now)
{
    if (name == u"Active") {
        tell(EventCode::UserSwitched);
    } else if (name == u"LockedHint") {
        setLocked(now);
    }
}

/// Some lockers set the hint, some only act on the signal, some do both.
void SessionSource::setLocked(bool isLocked)
{
    if (isLocked != m_isLocked) {
        m_isLocked = isLocked;
        tell(isLocked ? EventCode::ScreenLocked : EventCode::ScreenUnlocked);
    }
}

void SessionSource::endSession()
{
    if (!std::exchange(m_isEnding, true)) {
        tell(EventCode::LogOut);
    }
}
