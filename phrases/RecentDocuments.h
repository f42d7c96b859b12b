// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

#include <optional>

/// The list of documents used lately, in the setting "RecentFilesArray": absolute paths, oldest first. Writes store the
/// setting without a notification.
namespace RecentDocuments {

/// The list; nothing when none is stored. What is no text in it is left out.
std::optional<QStringList> list();
void store(const QStringList& paths);

/// Appends @p path unless it is in the list already (exact comparison).
void add(const QString& path);
/// Takes the first occurrence of @p path out of the list.
void remove(const QString& path);

} // namespace RecentDocuments
