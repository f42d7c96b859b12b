// SPDX-License-Identifier: MIT
#include "RegularFile.h"

#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

Result<QByteArray> RegularFile::read(const QString& path, qint64 maximumSize)
{
    const QFileInfo info(path);
    if (info.exists() && !info.isFile()) {
        return Failure{u"it is not an ordinary file"_s};
    }
    if (info.size() > maximumSize) {
        return Failure{u"it has more than %1 bytes"_s.arg(maximumSize)};
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return Failure{file.errorString()};
    }
    QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError) {
        return Failure{file.errorString()};
    }
    return bytes;
}
