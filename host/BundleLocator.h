// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// Finds the pane's bundle, and sees to it that the user can write the document inside.
namespace BundleLocator {

/// The bundle next to the program (in a build folder), or the installed one; empty when there is none. For what changes
/// nothing in it.
QString originalPath();

/// The bundle that the pane is loaded from; empty when there is none.
///
/// That is the one at originalPath() when its resources are writable for the user. Where they are not, it is a copy in
/// `$XDG_DATA_HOME/blipsy`, made at the first start and renewed when the original has changed; the user's own default
/// document in it is kept. Why the whole bundle: docs/decisions/copied-bundle.md. When no copy can be made the original
/// is used as it is, and one log line says why.
QString bundlePath();

/// Makes @p copy a copy of the bundle @p original, or brings it up to date, keeping the document in it. Ends what an
/// update that was killed has left half done. Other processes that do the same wait for each other, for up to ten
/// seconds. False when there is no up-to-date copy at the end.
bool updateCopy(const QString& original, const QString& copy);

} // namespace BundleLocator
