// SPDX-License-Identifier: MIT
#include "SessionFront.h"

#include <platform/bus/BusProperties.h>
#include <platform/bus/LoginSession.h>

using namespace Qt::StringLiterals;

namespace {

const QString active = u"Active"_s;
const QString lockedHint = u"LockedHint"_s;

} // namespace

SessionFront::SessionFront() = default;
SessionFront::~SessionFront() = default;

void SessionFront::follow()
{
    LoginSession::find(this, [this](const QByteArray& path) { followSession(path); });
    followScreenSaver("org.freedesktop.ScreenSaver", Locker::ScreenSaver);
    followScreenSaver("org.gnome.ScreenSaver", Locker::DesktopsScreenSaver);
}

void SessionFront::followSession(const QByteArray& path)
{
    if (m_session) {
        return;
    }
    m_session = std::make_unique<BusProperties>(MessageBus::system(),
        BusProperties::Source{LoginSession::service, path, LoginSession::interface, {active, lockedHint}}, nullptr);
    const auto tell = [this] {
        Q_EMIT changed(m_session->value(active).integerValue() != 0);
        setLocked(Locker::LoginManager, m_session->value(lockedHint).integerValue() != 0);
    };
    connect(m_session.get(), &BusProperties::known, this, tell);
    connect(m_session.get(), &BusProperties::changed, this, tell);
    m_session->follow();
}

/// Desktops differ in the path.
void SessionFront::followScreenSaver(const char* interface, Locker locker)
{
    MessageBus& bus = MessageBus::session();
    bus.subscribe({interface, {}, interface, "ActiveChanged"}, this, [this, locker](const MessageBus::Signal& signal) {
        setLocked(locker, signal.argument(0).integerValue() != 0);
    });
    // One that has ended locks nothing any more.
    bus.followService(interface, this, [this, locker](const QString& owner) {
        if (owner.isEmpty()) {
            setLocked(locker, false);
        }
    });
}

void SessionFront::setLocked(Locker locker, bool isLocked)
{
    const bool wasLocked = m_lockers.any();
    m_lockers.set(size_t(locker), isLocked);
    if (m_lockers.any() != wasLocked) {
        Q_EMIT locked(m_lockers.any());
    }
}
