// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class QKeyEvent;

/// The characters that a key press means to the pane: Backspace and Delete both give U+007F, the keypad's Enter U+0003,
/// the arrows U+F700 (up), U+F701 (down), U+F702 (left) and U+F703 (right); with the command modifier the letter
/// itself, in lower case; every other key its text. Empty for a key without characters.
QString keyCharacters(const QKeyEvent& event);
