// SPDX-License-Identifier: MIT
#include "Workspace.h"

#include <platform/bus/MessageBus.h>

#include <QLoggingCategory>
#include <QStorageInfo>

#include <systemd/sd-bus.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

Q_LOGGING_CATEGORY(log, "blipsy.workspace")

constexpr auto udisks = "org.freedesktop.UDisks2";
/// Unmounting writes back what is still in memory.
constexpr auto unmountTimeout = 60s;

/// The device that is mounted at @p mountPoint ("/dev/sdb1"); empty when nothing is.
QByteArray deviceMountedAt(const QString& mountPoint)
{
    // Not looked up in the list of all volumes: that asks each of them for its size, and a network folder may hang.
    const QStorageInfo volume(mountPoint);
    return volume.rootPath() == mountPoint ? volume.device() : QByteArray();
}

/// The object that UDisks has for a block device: its name, in which all but letters and digits are written as _xx.
QByteArray blockObject(const QByteArray& device)
{
    QByteArray path = "/org/freedesktop/UDisks2/block_devices/";
    for (const char character : device.mid(device.lastIndexOf('/') + 1)) {
        const bool plain = (character >= '0' && character <= '9') || (character >= 'a' && character <= 'z') ||
                           (character >= 'A' && character <= 'Z');
        path += plain ? QByteArray(1, character) : '_' + QByteArray(1, character).toHex();
    }
    return path;
}

void appendNoOptions(sd_bus_message* message)
{
    sd_bus_message_append(message, "a{sv}", 0);
}

void eject(const QByteArray& drive)
{
    MessageBus::system().call({udisks, drive, "org.freedesktop.UDisks2.Drive", "Eject"}, appendNoOptions,
        unmountTimeout, [drive](sd_bus_message* reply) {
            if (reply == nullptr) {
                qCInfo(log).noquote() << "cannot eject" << drive;
            }
        });
}

/// A disk image has no drive; its loop device goes with the unmounting.
void ejectDriveOf(const QByteArray& block)
{
    MessageBus::system().call(
        {udisks, block, "org.freedesktop.DBus.Properties", "Get"},
        [](sd_bus_message* message) { sd_bus_message_append(message, "ss", "org.freedesktop.UDisks2.Block", "Drive"); },
        unmountTimeout,
        [](sd_bus_message* reply) {
            const char* drive = nullptr;
            if (reply != nullptr && sd_bus_message_read(reply, "v", "o", &drive) > 0 && qstrcmp(drive, "/") != 0) {
                eject(drive);
            }
        });
}

} // namespace

void Workspace::unmountAndEject(const QString& mountPoint)
{
    const QByteArray device = deviceMountedAt(mountPoint);
    if (!device.startsWith("/dev/")) {
        return;
    }
    const QByteArray block = blockObject(device);
    MessageBus::system().call({udisks, block, "org.freedesktop.UDisks2.Filesystem", "Unmount"}, appendNoOptions,
        unmountTimeout, [block, mountPoint](sd_bus_message* reply) {
            if (reply == nullptr) {
                qCInfo(log).noquote() << "cannot unmount" << mountPoint;
                return;
            }
            ejectDriveOf(block);
        });
}
