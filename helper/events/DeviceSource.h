// SPDX-License-Identifier: MIT
#pragma once

#include "EventSource.h"

#include <platform/devices/DeviceMonitor.h>

/// Devices that are plugged in and out, and the brightness of a built-in display.
///
/// Listens to the device manager (udev): USB devices, and the subsystem "backlight".
class DeviceSource final : public EventSource
{
    Q_OBJECT

public:
    explicit DeviceSource(QObject* parent);

    void start() override;

private:
    DeviceMonitor m_devices;
    DeviceMonitor m_backlight;
};
