// SPDX-License-Identifier: MIT
#pragma once

#include "EventSource.h"

#include <platform/bus/BusProperties.h>

/// The power adapter, and the battery as the desktop shows it (all batteries together).
///
/// Listens to UPower (public source: its D-Bus interface, Device's State and WarningLevel).
class PowerSource final : public EventSource
{
    Q_OBJECT

public:
    explicit PowerSource(QObject* parent);

    void start() override;

private:
    void takeBattery(const QString& property, qint64 before, qint64 now);

    BusProperties m_power;
    BusProperties m_battery;
};
