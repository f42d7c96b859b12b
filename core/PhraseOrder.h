// SPDX-License-Identifier: MIT
#pragma once

#include <platform/plist/PropertyList.h>

#include <QStringView>

/// The orders in which phrase entries are sorted.
namespace PhraseOrder {

enum class Comparison {
    /// Texts without regard to letter case; whatever is no text counts as absent.
    CaseInsensitiveText,
    /// Numbers by size, then texts by their characters ("10" before "2").
    Natural,
};

/// Sorts @p entries in place and stably by the value that each holds under @p key. Entries without such a value, and
/// those that are no dictionaries, come before all others in ascending order.
void sort(
    PropertyList::Array& entries, QStringView key, Comparison comparison, Qt::SortOrder order = Qt::AscendingOrder);

} // namespace PhraseOrder
