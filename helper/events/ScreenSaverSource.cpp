// SPDX-License-Identifier: MIT
#include "ScreenSaverSource.h"

#include <platform/bus/BusProperties.h>
#include <platform/bus/LoginSession.h>

#include <utility>

using namespace Qt::StringLiterals;
using PropertyList::Value;

void ScreenSaverSource::start()
{
    followScreenSaver("org.freedesktop.ScreenSaver");
    followScreenSaver("org.gnome.ScreenSaver");
    followCompositor();
    followSleep();
}

/// Desktops differ in the path, and some send it under both names.
void ScreenSaverSource::followScreenSaver(const char* interface)
{
    MessageBus::session().subscribe({interface, {}, interface, "ActiveChanged"}, this,
        [this](const MessageBus::Signal& signal) { setActive(signal.argument(0).integerValue() != 0); });
}

void ScreenSaverSource::followCompositor()
{
    auto* const display = new BusProperties(MessageBus::session(),
        {"org.gnome.Mutter.DisplayConfig", "/org/gnome/Mutter/DisplayConfig", "org.gnome.Mutter.DisplayConfig",
            {u"PowerSaveMode"_s}},
        this);
    connect(display, &BusProperties::changed, this,
        [this](const QString& /*name*/, const Value& /*before*/, const Value& now) {
            // 0 is on, 1 to 3 are the ways of saving; below 0 it is not known.
            if (now.integerValue() >= 0) {
                setAsleep(now.integerValue() > 0);
            }
        });
    display->follow();
}

void ScreenSaverSource::followSleep()
{
    LoginSession::followSleep(this, [this](bool isAsleep) { setAsleep(isAsleep); });
}

void ScreenSaverSource::setActive(bool isActive)
{
    if (std::exchange(m_isActive, isActive) != isActive) {
        tell(isActive ? EventCode::ScreenSaverStarted : EventCode::ScreenSaverStopped);
    }
}

void ScreenSaverSource::setAsleep(bool isAsleep)
{
    if (std::exchange(m_isAsleep, isAsleep) != isAsleep) {
        tell(isAsleep ? EventCode::DisplayAsleep : EventCode::DisplayAwake);
    }
}
