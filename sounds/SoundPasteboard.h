// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <optional>

/// Copy and paste of sound paths, between rows of either table.
namespace SoundPasteboard {

/// The pasteboard type of a sound path.
extern const QString clippingType;

/// Puts @p path on the general pasteboard, as a sound path and as plain text.
void copy(const QString& path);

/// The sound path on the general pasteboard; nothing when something else was copied last.
std::optional<QString> paste();

} // namespace SoundPasteboard
