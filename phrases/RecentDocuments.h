// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// Changes to the list of documents used lately, Settings::recentFiles. Nobody is told.
namespace RecentDocuments {

/// Appends @p path unless it is in the list already (exact comparison).
void add(const QString& path);
/// Takes the first occurrence of @p path out of the list.
void remove(const QString& path);

} // namespace RecentDocuments
