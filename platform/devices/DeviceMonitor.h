// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QObject>
#include <QSocketNotifier>

#include <memory>

struct udev;
struct udev_monitor;

/// What the device manager (udev) tells about the devices of one subsystem as they come, go and change. Silent, with a
/// line in the log, where there is none.
class DeviceMonitor final : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(DeviceMonitor)

public:
    /// @p type is the kind of device within the @p subsystem (DEVTYPE); empty for all.
    DeviceMonitor(QByteArray subsystem, QByteArray type, QObject* parent);
    ~DeviceMonitor() override;

    void start();

Q_SIGNALS:
    void added();
    void removed();
    void changed();

private:
    struct Unref
    {
        void operator()(udev* context) const;
        void operator()(udev_monitor* monitor) const;
    };

    void receive();

    QByteArray m_subsystem;
    QByteArray m_type;
    std::unique_ptr<udev, Unref> m_context;
    std::unique_ptr<udev_monitor, Unref> m_monitor;
    std::unique_ptr<QSocketNotifier> m_notifier;
};
