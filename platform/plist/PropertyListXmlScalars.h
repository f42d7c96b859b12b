// SPDX-License-Identifier: MIT
#pragma once

#include "PropertyList.h"

#include <string_view>

/// The values of the XML form that stand in one element and are no text.
namespace PropertyList::XmlScalars {

/// Reads the content of an element; a null value when it does not suit.
using Parser = Value (*)(std::string_view content);

/// What reads the elements of the name @p element; null for those of other kinds.
Parser parserOf(std::string_view element);

} // namespace PropertyList::XmlScalars
