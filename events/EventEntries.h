// SPDX-License-Identifier: MIT
#pragma once

#include <core/SoundEvent.h>

#include <QStringView>

/// What is asked of the document's sound events, as functions over its lists. An element that is no dictionary is no
/// event.
namespace EventEntries {

/// Makes @p filtered hold those entries of @p all, in the same order, that @p text matches; all of them for an empty
/// text. Elements that are no dictionaries are left out. Null lists are left alone.
void filter(const PropertyList::ArrayPointer& all, const PropertyList::ArrayPointer& filtered, QStringView text);

/// The event that the table shows at @p row; none when there is no such row.
SoundEvent shownAt(int row);

/// The first event of @p all whose "Event" is, as text, that of @p event; none when there is none.
SoundEvent firstWithEventOf(const PropertyList::ArrayPointer& all, const SoundEvent& event);

/// What has become of @p event: itself while it is in @p all; after @p all was loaded anew, the first of its "Event";
/// none when there is none.
SoundEvent present(const PropertyList::ArrayPointer& all, const SoundEvent& event);

} // namespace EventEntries
