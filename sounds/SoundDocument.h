// SPDX-License-Identifier: MIT
#pragma once

/// What follows every change of a sound.
namespace SoundDocument {

/// Writes the document and tells the helper with "RefreshMenu". A failed write is logged and otherwise ignored.
void saveAndRefreshMenu();

} // namespace SoundDocument
