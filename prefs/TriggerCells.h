// SPDX-License-Identifier: MIT
#pragma once

class Matrix;
class QWidget;

/// The check boxes of the characters that can end a phrase.
namespace TriggerCells {

inline constexpr int rowCount = 4;
inline constexpr int columnCount = 7;

/// Fills the empty grid of @p matrix. Checked are the characters that end a phrase until the user chooses otherwise.
/// The cells follow @p previous in the order of the Tab key.
void fill(Matrix& matrix, QWidget* previous);

} // namespace TriggerCells
