// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// Texts of any kind as titles of menu items.
namespace MenuTitle {

/// In characters; longer ones make a menu too wide.
inline constexpr qsizetype longestTitle = 60;

/// Who draws the menu, and so which characters mean something in a title.
enum class Drawn {
    /// The toolkit: an ampersand marks the key of an item.
    ByToolkit,
    /// The desktop, to which the toolkit tells the menu over the bus: an underscore does, made of the first ampersand.
    ByDesktop,
};

/// One line of at most @p length characters, whole ones. What was left out leaves an ellipsis.
QString shortened(const QString& text, qsizetype length = longestTitle);

/// shortened(), so that every character of it is shown as it is.
QString plain(const QString& text, Drawn drawn);

} // namespace MenuTitle
