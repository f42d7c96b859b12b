// SPDX-License-Identifier: MIT
#pragma once

#include <platform/bytes/Result.h>

#include <QString>

/// Runs the scripts by which programs make and delete login items. Of the script language exactly this is understood,
/// one statement to a line:
///
///     set NAME to "TEXT"
///     tell application "System Events"
///     make login item at end with properties {path:NAME, hidden:false}
///     delete login item "ITEM"
///     end tell
///
/// In a text \" is a quotation mark and \\ a backslash. A login item is a desktop entry in the user's autostart folder
/// (`$XDG_CONFIG_HOME/autostart`), named after the application bundle that it starts; making it again replaces it.
namespace LoginItemScript {

/// Runs @p source up to the first error.
Result<void> execute(const QString& source);

/// @p text as it stands between the quotation marks of a script.
QString escaped(const QString& text);

} // namespace LoginItemScript
