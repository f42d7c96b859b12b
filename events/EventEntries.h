// SPDX-License-Identifier: MIT
#pragma once

#include <platform/plist/PropertyList.h>

#include <QStringView>

/// What is asked of the document's sound-event entries, as functions over its lists. An element that is no dictionary
/// is an entry without keys.
namespace EventEntries {

/// The code of the system alert, whose volume is the system's own.
constexpr int systemAlertCode = 28;

/// Makes @p filtered hold those entries of @p all, in the same order, that @p text matches; all of them for an empty
/// text. Elements that are no dictionaries are left out. Null lists are left alone.
void filter(const PropertyList::ArrayPointer& all, const PropertyList::ArrayPointer& filtered, QStringView text);

/// The entry at @p row, or a null pointer when there is no such row or it holds no dictionary.
PropertyList::DictionaryPointer entryAt(const PropertyList::ArrayPointer& entries, int row);

/// The first entry of @p all whose "Event" is, as text, that of @p entry; a null pointer when there is none.
PropertyList::DictionaryPointer firstWithEventOf(
    const PropertyList::ArrayPointer& all, const PropertyList::DictionaryPointer& entry);

/// What has become of @p entry: itself while it is in @p all; after @p all was loaded anew, the first entry of its
/// event; a null pointer when there is none.
PropertyList::DictionaryPointer present(
    const PropertyList::ArrayPointer& all, const PropertyList::DictionaryPointer& entry);

} // namespace EventEntries
