// SPDX-License-Identifier: MIT
#include "Workspace.h"

#include <platform/bus/MessageBus.h>
#include <product/Product.h>

#include <QLoggingCategory>
#include <QStorageInfo>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

Q_LOGGING_CATEGORY(log, PRODUCT_NAME ".workspace")

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
    const QByteArray name = device.mid(device.lastIndexOf('/') + 1);
    for (const char character : name) {
        const bool plain = (character >= '0' && character <= '9') || (character >= 'a' && character <= 'z') ||
                           (character >= 'A' && character <= 'Z');
        path += plain ? QByteArray(1, character) : '_' + QByteArray(1, character).toHex();
    }
    return path;
}

void callVolumes(const QByteArray& path, const char* interface, const char* member,
    const MessageBus::Arguments& arguments, const MessageBus::Reader& reader)
{
    MessageBus::system().call({"org.freedesktop.UDisks2", path, interface, member}, arguments, unmountTimeout, reader);
}

MessageBus::Arguments noOptions()
{
    return {PropertyList::Dictionary::create()};
}

void eject(const QByteArray& drive)
{
    callVolumes(
        drive, "org.freedesktop.UDisks2.Drive", "Eject", noOptions(), [drive](const MessageBus::Arguments* reply) {
            if (reply == nullptr) {
                qCInfo(log).noquote() << "cannot eject" << drive;
            }
        });
}

/// A disk image has no drive; its loop device goes with the unmounting.
void ejectDriveOf(const QByteArray& block)
{
    callVolumes(block, "org.freedesktop.DBus.Properties", "Get", {u"org.freedesktop.UDisks2.Block"_s, u"Drive"_s},
        [](const MessageBus::Arguments* reply) {
            const QString drive = reply == nullptr || reply->empty() ? QString() : reply->front().string();
            if (!drive.isEmpty() && drive != u"/") {
                eject(drive.toLatin1());
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
    callVolumes(block, "org.freedesktop.UDisks2.Filesystem", "Unmount", noOptions(),
        [block, mountPoint](const MessageBus::Arguments* reply) {
            if (reply == nullptr) {
                qCInfo(log).noquote() << "cannot unmount" << mountPoint;
                return;
            }
            ejectDriveOf(block);
        });
}
