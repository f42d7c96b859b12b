// SPDX-License-Identifier: MIT
#include "DiskSource.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using PropertyList::Value;

namespace {

constexpr auto service = "org.freedesktop.UDisks2";
constexpr auto managerPath = "/org/freedesktop/UDisks2";
constexpr auto objectManager = "org.freedesktop.DBus.ObjectManager";
constexpr auto answerTimeout = 10s;
constexpr QStringView filesystem = u"org.freedesktop.UDisks2.Filesystem";
constexpr QStringView block = u"org.freedesktop.UDisks2.Block";
/// More than any machine has; a service that goes mad does not fill the memory.
constexpr qsizetype mostDisks = 1000;

/// Whether the block device with these properties can be taken out.
bool isRemovable(const Value& properties)
{
    const PropertyList::DictionaryPointer hints = properties.dictionary();
    return hints && hints->value(u"HintSystem").integerValue() == 0 && hints->value(u"HintIgnore").integerValue() == 0;
}

bool contains(const Value& array, QStringView text)
{
    const PropertyList::ArrayPointer items = array.array();
    return items && std::ranges::any_of(*items, [text](const Value& item) { return item.stringView() == text; });
}

} // namespace

void DiskSource::start()
{
    MessageBus& bus = MessageBus::system();
    using Signal = MessageBus::Signal;
    bus.subscribe({service, managerPath, objectManager, "InterfacesAdded"}, this,
        [this](const Signal& signal) { add(signal.argument(0).string(), signal.argument(1), true); });
    bus.subscribe({service, managerPath, objectManager, "InterfacesRemoved"}, this,
        [this](const Signal& signal) { remove(signal.argument(0).string(), signal.argument(1)); });
    bus.subscribe(
        {service, {}, "org.freedesktop.DBus.Properties", "PropertiesChanged"}, this, [this](const Signal& signal) {
            const auto properties = signal.argument(1).dictionary();
            const auto points = properties ? properties->value(u"MountPoints").array() : PropertyList::ArrayPointer();
            if (points && signal.argument(0).stringView() == filesystem) {
                setInserted(signal.path, !points->isEmpty(), true);
            }
        });
    bus.followService(service, this, [this](const QString& owner) {
        m_disks.clear();
        if (!owner.isEmpty()) {
            findDisks();
        }
    });
}

void DiskSource::findDisks()
{
    MessageBus::system().request({service, managerPath, objectManager, "GetManagedObjects"}, {}, answerTimeout, this,
        [this](const MessageBus::Arguments* reply) {
            const PropertyList::DictionaryPointer objects = MessageBus::valueAt(reply, 0).dictionary();
            if (!objects) {
                return;
            }
            for (const auto& [path, interfaces] : *objects) {
                add(path, interfaces, false);
            }
        });
}

/// A drive with a slot has its block device all the time, and a file system as long as there is something in it.
void DiskSource::add(const QString& object, const Value& interfaces, bool isNews)
{
    const PropertyList::DictionaryPointer added = interfaces.dictionary();
    if (!added) {
        return;
    }
    if (!m_disks.contains(object) && m_disks.size() < mostDisks && isRemovable(added->value(block))) {
        m_disks.insert(object, false);
    }
    if (added->contains(filesystem)) {
        setInserted(object, true, isNews);
    }
}

void DiskSource::remove(const QString& object, const Value& interfaces)
{
    if (contains(interfaces, filesystem)) {
        setInserted(object, false, true);
    }
    if (contains(interfaces, block)) {
        m_disks.remove(object);
    }
}

/// Who ejects a disk sees it unmounted; that it is then pulled out is no second event. Nor is that it is mounted after
/// it has come.
void DiskSource::setInserted(const QString& object, bool isInserted, bool isNews)
{
    const auto disk = m_disks.find(object);
    if (disk == m_disks.end() || std::exchange(*disk, isInserted) == isInserted || !isNews) {
        return;
    }
    tell(isInserted ? EventCode::DiskInserted : EventCode::DiskEjected);
}
