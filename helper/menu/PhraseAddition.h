// SPDX-License-Identifier: MIT
#pragma once

#include <platform/bytes/Result.h>

#include <QString>

/// A phrase added to the document that is in use, as the pane would add it.
namespace PhraseAddition {

/// Why @p phrase cannot be added, in words for the user; empty when it can. Looks at the document in memory.
QString problemWith(const QString& phrase);

/// Adds @p phrase with @p text to the version of the document that is on the disk now, writes it, and tells the pane
/// ("NewRowAddedViaMenu"). Why it was not added is said in words for the user, and the document is as it was.
Result<void> add(const QString& phrase, const QString& text);

} // namespace PhraseAddition
