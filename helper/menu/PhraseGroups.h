// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <functional>
#include <vector>

/// How a list that is too long for one menu is divided into submenus. Pure functions over places in the list.
namespace PhraseGroups {

/// More items than this are no menu that a person can use.
inline constexpr qsizetype mostItems = 36;

/// The places from @p first on, @p count of them.
struct Range
{
    qsizetype first = 0;
    qsizetype count = 0;

    bool operator==(const Range&) const = default;
};

/// Parts of @p range in their order, no more than mostItems and of about one size: as many as make the least items
/// anywhere in the tree that comes of dividing the parts again.
std::vector<Range> evenly(Range range);

/// Parts of @p range in which all items begin with the same initial, in their order; nothing when there are more than
/// mostItems of them, or just one.
std::vector<Range> byInitial(Range range, const std::function<QString(qsizetype place)>& textAt);

/// What an item is filed under: a letter as a capital, "0–9" for digits, "#" for all else.
QString initialOf(QStringView text);

} // namespace PhraseGroups
