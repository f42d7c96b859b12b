// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// How a program is made to take a text.
enum class PasteWay {
    /// The keys of most programs.
    ControlV,
    /// Those of most terminals, in which Control-V is a character.
    ControlShiftV,
    /// Those of old programs and terminals, which may take the selection (PRIMARY) instead of the clipboard.
    ShiftInsert,
    /// Not by a paste: the text is typed.
    Typed,
};

namespace PasteWays {

/// The way for windows of this class (the second half of WM_CLASS, in any case): what the setting "PasteWays" says,
/// else what is known of the class.
PasteWay of(const QString& windowClass);

} // namespace PasteWays
