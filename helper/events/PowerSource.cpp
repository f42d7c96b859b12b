// SPDX-License-Identifier: MIT
#include "PowerSource.h"

using namespace Qt::StringLiterals;
using PropertyList::Value;

namespace {

constexpr qint64 fullyCharged = 4;
constexpr qint64 warningLow = 3;
/// Above it is only "action": the machine is about to switch itself off.
constexpr qint64 warningCritical = 4;

} // namespace

PowerSource::PowerSource(QObject* parent)
    : EventSource(parent)
    , m_power(MessageBus::system(),
          {"org.freedesktop.UPower", "/org/freedesktop/UPower", "org.freedesktop.UPower", {u"OnBattery"_s}}, this)
    , m_battery(MessageBus::system(),
          {"org.freedesktop.UPower", "/org/freedesktop/UPower/devices/DisplayDevice", "org.freedesktop.UPower.Device",
              {u"State"_s, u"WarningLevel"_s}},
          this)
{
}

void PowerSource::start()
{
    connect(&m_power, &BusProperties::changed, this,
        [this](const QString& /*name*/, const Value& /*before*/, const Value& now) {
            tell(now.integerValue() != 0 ? EventCode::PowerDisconnected : EventCode::PowerConnected);
        });
    connect(
        &m_battery, &BusProperties::changed, this, [this](const QString& name, const Value& before, const Value& now) {
            takeBattery(name, before.integerValue(), now.integerValue());
        });
    m_power.follow();
    m_battery.follow();
}

void PowerSource::takeBattery(const QString& property, qint64 before, qint64 now)
{
    if (property == u"State") {
        if (now == fullyCharged) {
            tell(EventCode::BatteryFull);
        }
    } else if (now == warningLow && before < warningLow) {
        tell(EventCode::BatteryLow);
    } else if (now >= warningCritical && before < warningCritical) {
        tell(EventCode::BatteryCritical);
    }
}
