// SPDX-License-Identifier: MIT
#include "RecentDocuments.h"

#include <core/BYGlobals.h>
#include <core/SharedNames.h>

using PropertyList::Value;

std::optional<QStringList> RecentDocuments::list()
{
    const PropertyList::ArrayPointer stored =
        BYGlobals::retrieveArrayFromUserDefaults(SettingKey::recentFilesArray).array();
    if (!stored) {
        return std::nullopt;
    }
    QStringList paths;
    for (const Value& value : std::as_const(*stored)) {
        if (value.type() == PropertyList::Type::String) {
            paths.append(value.string());
        }
    }
    return paths;
}

void RecentDocuments::store(const QStringList& paths)
{
    const PropertyList::ArrayPointer array = PropertyList::Array::create();
    for (const QString& path : paths) {
        array->append(path);
    }
    BYGlobals::storeSetting(array, SettingKey::recentFilesArray);
}

void RecentDocuments::add(const QString& path)
{
    QStringList paths = list().value_or(QStringList());
    if (!paths.contains(path)) {
        paths.append(path);
        store(paths);
    }
}

void RecentDocuments::remove(const QString& path)
{
    QStringList paths = list().value_or(QStringList());
    if (paths.removeOne(path)) {
        store(paths);
    }
}
