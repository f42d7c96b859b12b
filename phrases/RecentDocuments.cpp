// SPDX-License-Identifier: MIT
#include "RecentDocuments.h"

#include <core/Settings.h>

void RecentDocuments::add(const QString& path)
{
    QStringList paths = Settings::recentFiles.value().value_or(QStringList());
    if (!paths.contains(path)) {
        Settings::recentFiles.store(paths << path);
    }
}

void RecentDocuments::remove(const QString& path)
{
    QStringList paths = Settings::recentFiles.value().value_or(QStringList());
    if (paths.removeOne(path)) {
        Settings::recentFiles.store(paths);
    }
}
