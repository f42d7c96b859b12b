// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class QAction;
class QMenu;

/// Tool tips that show a text of the user's as it is: the toolkit takes what looks like markup for markup, and lays out
/// all of a text however long.
namespace PlainToolTip {

/// @p text, shortened to what a tool tip can hold, for the toolkit to show; empty for an empty text.
QString shown(const QString& text);

/// Gives @p item the tool tip @p text. Unlike one that was set on the item itself, an empty one is none, and not the
/// item's title.
void setOn(QAction& item, const QString& text);

/// Shows the tool tips of the items of @p menu that setOn() has given one, in this way.
void useIn(QMenu& menu);

} // namespace PlainToolTip
