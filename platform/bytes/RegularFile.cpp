// SPDX-License-Identifier: MIT
#include "RegularFile.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

Result<std::unique_ptr<QFile>> RegularFile::open(const QString& path)
{
    const QFileInfo info(path);
    if (info.exists() && !info.isFile()) {
        return Failure{u"it is not an ordinary file"_s};
    }
    auto file = std::make_unique<QFile>(path);
    if (!file->open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        return Failure{file->errorString()};
    }
    return file;
}

Result<QByteArray> RegularFile::read(const QString& path, qint64 maximumSize)
{
    const Result<std::unique_ptr<QFile>> file = open(path);
    if (!file) {
        return Failure{file.error()};
    }
    if ((*file)->size() > maximumSize) {
        return Failure{u"it has more than %1 bytes"_s.arg(maximumSize)};
    }
    QByteArray bytes = (*file)->readAll();
    if ((*file)->error() != QFileDevice::NoError) {
        return Failure{(*file)->errorString()};
    }
    return bytes;
}
