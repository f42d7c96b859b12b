// SPDX-License-Identifier: MIT
#include "SessionSource.h"

#include <platform/bus/LoginSession.h>

#include <QDateTime>
#include <QGuiApplication>

#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using PropertyList::Value;

namespace {

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
        {LoginSession::service, LoginSession::managerPath, LoginSession::managerInterface, "PrepareForShutdown"}, this,
        [this](const MessageBus::Signal& signal) {
            if (signal.argument(0).integerValue() != 0) {
                endSession();
            }
        });
    LoginSession::find(this, [this](const QByteArray& path) {
        if (m_session == nullptr) {
            follow(path);
        }
    });
    if (qGuiApp != nullptr) {
        connect(qGuiApp, &QGuiApplication::commitDataRequest, this, &SessionSource::endSession, Qt::DirectConnection);
    }
}

void SessionSource::follow(const QByteArray& session)
{
    MessageBus& bus = MessageBus::system();
    for (const bool isLocked : {true, false}) {
        bus.subscribe({LoginSession::service, session, LoginSession::interface, isLocked ? "Lock" : "Unlock"}, this,
            [this, isLocked](const MessageBus::Signal&) { setLocked(isLocked); });
    }
    m_session = new BusProperties(bus,
        {LoginSession::service, session, LoginSession::interface, {u"Active"_s, u"LockedHint"_s, u"Timestamp"_s}},
        this);
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
