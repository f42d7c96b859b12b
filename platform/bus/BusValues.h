// SPDX-License-Identifier: MIT
#pragma once

#include <platform/plist/PropertyList.h>

#include <vector>

struct sd_bus_message;

/// The arguments of messages as property-list values. A text, number, boolean or data is one of its own type. Written,
/// an array is one of texts (as), and a dictionary one of variants (a{sv}) that hold any of these. Read, arrays may
/// hold whatever can be read, and dictionaries have texts or object paths as keys.
namespace BusValues {

/// Appends @p value to @p message. False when it is of another type.
bool append(sd_bus_message* message, const PropertyList::Value& value);
/// The same, but an integer is appended as @p type where that is i or u (32 bits, with and without a sign); what does
/// not fit is cut off.
bool append(sd_bus_message* message, const PropertyList::Value& value, char type);

/// The next argument of @p message, which it goes past; null at the end, and for a type that none of the above has.
/// Narrow integers are integers, object paths are texts, and a variant is what it holds.
///
/// A message is hostile: of arrays and dictionaries the first 4096 elements are read, and containers may be nested
/// eight deep; what is beyond is null.
PropertyList::Value read(sd_bus_message* message);

/// The arguments of @p message from the beginning, 16 at most.
std::vector<PropertyList::Value> readAll(sd_bus_message* message);

} // namespace BusValues
