// SPDX-License-Identifier: MIT
#include "PathNames.h"

#include <QUrl>

QString pathOfFileUrl(const QUrl& url)
{
    return url.isLocalFile() ? url.path(QUrl::FullyDecoded | QUrl::StripTrailingSlash) : QString();
}

QStringView withoutEndSlash(QStringView path)
{
    while (path.size() > 1 && path.endsWith(u'/')) {
        path.chop(1);
    }
    return path;
}

QStringView lastPathComponent(QStringView path)
{
    const QStringView rest = withoutEndSlash(path);
    return rest.size() > 1 ? rest.sliced(rest.lastIndexOf(u'/') + 1) : rest;
}
