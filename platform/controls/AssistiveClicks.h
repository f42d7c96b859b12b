// SPDX-License-Identifier: MIT
#pragma once

/// What assistive programs do to the toolkit's controls counts as the user's own doing.
namespace AssistiveClicks {

/// Check boxes, radio buttons and tool buttons that an assistive program toggles are clicked from now on: the toolkit
/// would turn them without the signal that tells the user's clicks from changes by code. A matrix is a group to such
/// programs. Can be called again.
void install();

} // namespace AssistiveClicks
