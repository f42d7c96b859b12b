// SPDX-License-Identifier: MIT
#include "DocumentBackups.h"

#include <platform/bytes/RegularFile.h>
#include <platform/storage/AtomicFile.h>

#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {

/// As much of the document's name as fits beside the rest, whatever the script.
constexpr qsizetype maximumNameLength = 60;
constexpr qsizetype identityDigits = 8;

QString backupsFolder()
{
    const QString state = qEnvironmentVariable("XDG_STATE_HOME");
    const QString root = QDir::isAbsolutePath(state) ? state : QDir::homePath() + u"/.local/state"_s;
    return root + u"/blipsy/backups"_s;
}

/// A path that no file has yet.
QString freePath(const QString& folder, const QFileInfo& document)
{
    const QByteArray identity =
        QCryptographicHash::hash(document.absoluteFilePath().toUtf8(), QCryptographicHash::Sha256).toHex();
    const QString name = document.completeBaseName().left(maximumNameLength) + u'-' +
                         QString::fromLatin1(identity.left(identityDigits)) + u'-';
    QString path;
    QDateTime moment = QDateTime::currentDateTimeUtc();
    do {
        path = folder + u'/' + name + moment.toString(u"yyyyMMdd'T'HHmmss.zzz'Z'"_s) + u".Blipsy"_s;
        moment = moment.addMSecs(1);
    } while (QFileInfo::exists(path));
    return path;
}

} // namespace

Result<QString> DocumentBackups::keep(const QString& documentPath, qint64 maximumSize)
{
    const Result<QByteArray> contents = RegularFile::read(documentPath, maximumSize);
    if (!contents) {
        return Failure{u"cannot read %1: %2"_s.arg(documentPath, contents.error())};
    }
    const QString folder = backupsFolder();
    // A document may be one that nobody else is to read.
    if (!QDir().mkpath(folder) ||
        !QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner)) {
        return Failure{u"cannot make the folder %1"_s.arg(folder)};
    }
    const QString path = freePath(folder, QFileInfo(documentPath));
    AtomicFile::removeLeftovers(path);
    if (const auto written = AtomicFile::write(path, *contents); !written) {
        return Failure{written.error()};
    }
    return path;
}
