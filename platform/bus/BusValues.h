// SPDX-License-Identifier: MIT
#pragma once

#include <platform/plist/PropertyList.h>

struct sd_bus_message;

/// The arguments of messages as property-list values. A text, number, boolean or data is one of its own type; an array
/// one of texts (as); a dictionary one of variants (a{sv}) that hold any of these.
namespace BusValues {

/// Appends @p value to @p message. False when it is of another type.
bool append(sd_bus_message* message, const PropertyList::Value& value);

/// The next argument of @p message, which it goes past; null at the end, and for a type that none of the above has.
/// Narrow integers are integers, object paths are texts, and a variant is what it holds.
PropertyList::Value read(sd_bus_message* message);

} // namespace BusValues
