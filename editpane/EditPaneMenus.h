// SPDX-License-Identifier: MIT
#pragma once

class QMenu;
class QWidget;

/// The menus of the edit pane. Every item's data() is its tag and its tool tip is what it inserts.
namespace EditPaneMenus {

/// Item 0 carries the dates, item 1 the times (their titles are set when the pane is set up), items 2 to 4 are the
/// formats of the user's settings, item 5 carries the phrases, which are not there yet. Owned by @p parent.
QMenu* makeDateFormats(QWidget* parent);

/// The formatting markers (tags 1000 to 1006) and the symbols (1007 to 1010), which are the first character of their
/// title. Owned by @p parent.
QMenu* makeTextFormats(QWidget* parent);

} // namespace EditPaneMenus
