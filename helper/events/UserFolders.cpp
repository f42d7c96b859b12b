// SPDX-License-Identifier: MIT
#include "UserFolders.h"

#include <QDir>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr std::array partialEndings{".part"_L1, ".crdownload"_L1, ".partial"_L1, ".download"_L1};

} // namespace

QStringList UserFolders::paths(const QList<QStandardPaths::StandardLocation>& kinds)
{
    QStringList folders;
    for (const QStandardPaths::StandardLocation kind : kinds) {
        const QString folder = QDir::cleanPath(QStandardPaths::writableLocation(kind));
        if (!folder.isEmpty() && folder != QDir::homePath() && !folders.contains(folder)) {
            folders.append(folder);
        }
    }
    return folders;
}

bool UserFolders::isTemporary(const QString& name)
{
    return name.startsWith(u'.') || name.startsWith(u'#') || name.endsWith(u'~') || name.endsWith(u".tmp") ||
           isPartial(name);
}

bool UserFolders::isPartial(const QString& name)
{
    return std::ranges::any_of(partialEndings, [&name](QLatin1StringView ending) { return name.endsWith(ending); });
}
