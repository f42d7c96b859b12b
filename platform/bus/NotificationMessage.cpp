// SPDX-License-Identifier: MIT
#include "NotificationMessage.h"

#include "BusValues.h"

#include <systemd/sd-bus.h>

#include <algorithm>
#include <array>

using PropertyList::Type;
using PropertyList::Value;

namespace {

bool isSendable(const Value& value)
{
    static constexpr std::array sendable{Type::Boolean, Type::Integer, Type::Real, Type::String, Type::Data};
    return std::ranges::find(sendable, value.type()) != sendable.end();
}

} // namespace

PropertyList::DictionaryPointer NotificationMessage::sendableUserInfo(const PropertyList::DictionaryPointer& userInfo)
{
    if (!userInfo) {
        return {};
    }
    PropertyList::DictionaryPointer sendable = PropertyList::Dictionary::create();
    for (const auto& [key, value] : *userInfo) {
        if (isSendable(value)) {
            sendable->insert(key, value);
        }
    }
    return sendable->isEmpty() ? PropertyList::DictionaryPointer() : sendable;
}

bool NotificationMessage::append(sd_bus_message* message, const DistributedNotification& notification)
{
    const Value userInfo = notification.userInfo ? notification.userInfo : PropertyList::Dictionary::create();
    return BusValues::append(message, notification.name) && BusValues::append(message, notification.object) &&
           BusValues::append(message, userInfo);
}

std::optional<DistributedNotification> NotificationMessage::read(sd_bus_message* message)
{
    if (sd_bus_message_has_signature(message, "ssa{sv}") <= 0) {
        return std::nullopt;
    }
    DistributedNotification notification;
    notification.name = BusValues::read(message).string();
    notification.object = BusValues::read(message).string();
    notification.userInfo = sendableUserInfo(BusValues::read(message).dictionary());
    return notification;
}
