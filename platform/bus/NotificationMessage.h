// SPDX-License-Identifier: MIT
#pragma once

#include "DistributedNotificationCenter.h"

#include <product/Product.h>

#include <optional>

struct sd_bus_message;

/// The form that notifications have on the bus: (s name, s object, a{sv} userInfo).
namespace NotificationMessage {

inline constexpr auto path = PRODUCT_NOTIFICATION_PATH;
inline constexpr auto interface = PRODUCT_IDENTIFIER ".DistributedNotifications";
inline constexpr auto member = "Posted";

/// A dictionary of its own with those entries of @p userInfo that a message can carry: texts, numbers, booleans and
/// data. Null when there are none.
PropertyList::DictionaryPointer sendableUserInfo(const PropertyList::DictionaryPointer& userInfo);

/// Appends the arguments to @p message. False when one does not fit.
bool append(sd_bus_message* message, const DistributedNotification& notification);

/// Reads the arguments; values of other types than those above are left out. Nothing when the signature is another.
std::optional<DistributedNotification> read(sd_bus_message* message);

} // namespace NotificationMessage
