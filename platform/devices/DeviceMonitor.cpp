// SPDX-License-Identifier: MIT
#include "DeviceMonitor.h"

#include <product/Product.h>

#include <QLoggingCategory>

#include <libudev.h>

#include <utility>

namespace {

Q_LOGGING_CATEGORY(log, PRODUCT_NAME ".devices")

} // namespace

DeviceMonitor::DeviceMonitor(QByteArray subsystem, QByteArray type, QObject* parent)
    : QObject(parent)
    , m_subsystem(std::move(subsystem))
    , m_type(std::move(type))
{
}

DeviceMonitor::~DeviceMonitor() = default;

void DeviceMonitor::Unref::operator()(udev* context) const
{
    udev_unref(context);
}

void DeviceMonitor::Unref::operator()(udev_monitor* monitor) const
{
    udev_monitor_unref(monitor);
}

void DeviceMonitor::start()
{
    m_context.reset(udev_new());
    m_monitor.reset(m_context ? udev_monitor_new_from_netlink(m_context.get(), "udev") : nullptr);
    // The filter is the kernel's: devices of other kinds wake nobody.
    const char* const type = m_type.isEmpty() ? nullptr : m_type.constData();
    if (!m_monitor ||
        udev_monitor_filter_add_match_subsystem_devtype(m_monitor.get(), m_subsystem.constData(), type) < 0 ||
        udev_monitor_enable_receiving(m_monitor.get()) < 0) {
        qCInfo(log).noquote() << "devices cannot be followed:" << m_subsystem;
        return;
    }
    m_notifier = std::make_unique<QSocketNotifier>(udev_monitor_get_fd(m_monitor.get()), QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &DeviceMonitor::receive);
}

void DeviceMonitor::receive()
{
    // Null also for what others than the device manager have sent.
    udev_device* const device = udev_monitor_receive_device(m_monitor.get());
    if (device == nullptr) {
        return;
    }
    const QByteArray action = udev_device_get_action(device);
    udev_device_unref(device);
    if (action == "add") {
        Q_EMIT added();
    } else if (action == "remove") {
        Q_EMIT removed();
    } else if (action == "change") {
        Q_EMIT changed();
    }
}
