#pragma once

#include <QString>

class QMenu;

/// Tool tips that show a text of the user's as it is: the toolkit takes what looks like markup for markup, and lays out
/// all of a text however long.
namespace PlainToolTip {

/// @p text, shortened to what a tool tip can hold, for the toolkit to show; empty for an empty text.
QString shown(const QString& text);

/// Shows the tool tips of the items of @p menu in this way. The items keep theirs.
void useIn(QMenu& menu);

} // namespace PlainToolTip
