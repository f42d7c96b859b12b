// SPDX-License-Identifier: MIT
#include "DeviceSource.h"

DeviceSource::DeviceSource(QObject* parent)
    : EventSource(parent)
    // Not the interfaces, of which a device may have many.
    , m_devices("usb", "usb_device", this)
    , m_backlight("backlight", {}, this)
{
}

void DeviceSource::start()
{
    connect(&m_devices, &DeviceMonitor::added, this, [this] { tell(EventCode::DeviceConnected); });
    connect(&m_devices, &DeviceMonitor::removed, this, [this] { tell(EventCode::DeviceDisconnected); });
    connect(&m_backlight, &DeviceMonitor::changed, this, [this] { tell(EventCode::BrightnessChanged); });
    m_devices.start();
    m_backlight.start();
}
