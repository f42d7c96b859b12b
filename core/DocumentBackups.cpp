// SPDX-License-Identifier: MIT
#include "DocumentBackups.h"

#include <platform/bytes/RegularFile.h>
#include <platform/storage/AtomicFile.h>

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QMutex>
#include <QSet>
#include <QThread>
#include <QThreadPool>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

Q_LOGGING_CATEGORY(log, "blipsy.backups")

/// Of one document.
constexpr qsizetype maximumCount = 10;
/// As much of the document's name as fits beside the rest, whatever the script.
constexpr qsizetype maximumNameLength = 60;
constexpr qsizetype identityDigits = 8;
const QLatin1StringView momentFormat("yyyyMMdd'T'HHmmss.zzz'Z'");
const QLatin1StringView suffix(".Blipsy");

/// What tells documents of one name apart.
QString identityOf(const QString& documentPath)
{
    const QByteArray path = QFileInfo(documentPath).absoluteFilePath().toUtf8();
    return QString::fromLatin1(QCryptographicHash::hash(path, QCryptographicHash::Sha256).toHex().left(identityDigits));
}

/// A path that no file has yet.
QString freePath(const QString& documentPath)
{
    const QString name =
        QFileInfo(documentPath).completeBaseName().left(maximumNameLength) + u'-' + identityOf(documentPath) + u'-';
    QString path;
    QDateTime moment = QDateTime::currentDateTimeUtc();
    do {
        path = DocumentBackups::folder() + u'/' + name + moment.toString(momentFormat) + suffix;
        moment = moment.addMSecs(1);
    } while (QFileInfo::exists(path));
    return path;
}

void removeOldest(const QString& documentPath)
{
    const QString ofDocument = u"*-"_s + identityOf(documentPath) + u"-*"_s + suffix;
    const QStringList names =
        QDir(DocumentBackups::folder()).entryList({ofDocument}, QDir::Files, QDir::Name | QDir::Reversed);
    for (const QString& name : names.sliced(qMin(maximumCount, names.size()))) {
        QFile::remove(DocumentBackups::folder() + u'/' + name);
    }
}

/// Copies what @p document has open.
Result<QString> copyOf(QFile& document, qint64 maximumSize)
{
    if (document.size() > maximumSize) {
        return Failure{u"cannot read %1: it has more than %2 bytes"_s.arg(document.fileName()).arg(maximumSize)};
    }
    const QString folder = DocumentBackups::folder();
    // A document may be one that nobody else is to read.
    if (!QDir().mkpath(folder) ||
        !QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner)) {
        return Failure{u"cannot make the folder %1"_s.arg(folder)};
    }
    const QString path = freePath(document.fileName());
    AtomicFile::removeLeftovers(path);
    if (const auto copied = AtomicFile::copy(document, path); !copied) {
        return Failure{copied.error()};
    }
    removeOldest(document.fileName());
    return path;
}

/// Whether @p documentPath is one that this program has not kept a copy of. From now on it is.
bool isFirstOf(const QString& documentPath)
{
    static QMutex mutex;
    static QSet<QString> kept;
    const QMutexLocker lock(&mutex);
    const qsizetype before = kept.size();
    kept.insert(documentPath);
    return kept.size() > before;
}

void report(const QString& documentPath, const QString& problem)
{
    qCWarning(log).noquote() << u"no backup of %1: %2"_s.arg(documentPath, problem);
}

} // namespace

QString DocumentBackups::folder()
{
    const QString state = qEnvironmentVariable("XDG_STATE_HOME");
    const QString root = QDir::isAbsolutePath(state) ? state : QDir::homePath() + u"/.local/state"_s;
    return root + u"/blipsy/backups"_s;
}

Result<QString> DocumentBackups::keep(const QString& documentPath, qint64 maximumSize)
{
    const Result<std::unique_ptr<QFile>> document = RegularFile::open(documentPath);
    if (!document) {
        return Failure{u"cannot read %1: %2"_s.arg(documentPath, document.error())};
    }
    Result<QString> copy = copyOf(**document, maximumSize);
    if (copy) {
        isFirstOf(documentPath);
    }
    return copy;
}

void DocumentBackups::keepBeforeFirstWrite(const QString& documentPath, qint64 maximumSize)
{
    if (!isFirstOf(documentPath) || !QFileInfo::exists(documentPath)) {
        return;
    }
    Result<std::unique_ptr<QFile>> document = RegularFile::open(documentPath);
    if (!document) {
        report(documentPath, document.error());
        return;
    }
    const auto copy = [document = std::shared_ptr(std::move(*document)), maximumSize] {
        if (const auto copied = copyOf(*document, maximumSize); !copied) {
            report(document->fileName(), copied.error());
        }
    };
    const QCoreApplication* const application = QCoreApplication::instance();
    if (application && application->thread() == QThread::currentThread()) {
        QThreadPool::globalInstance()->start(copy);
    } else {
        copy();
    }
}

bool DocumentBackups::contains(const QString& path)
{
    const QString own = QFileInfo(folder()).canonicalFilePath();
    return !own.isEmpty() && QFileInfo(QFileInfo(path).path()).canonicalFilePath() == own;
}

QString DocumentBackups::documentName(const QString& path)
{
    // Identity and moment come after it.
    return QFileInfo(path).completeBaseName().section(u'-', 0, -3);
}

QDateTime DocumentBackups::moment(const QString& path)
{
    QDateTime moment = QDateTime::fromString(QFileInfo(path).completeBaseName().section(u'-', -1), momentFormat);
    moment.setTimeSpec(Qt::UTC);
    return moment;
}

QString DocumentBackups::documentAmong(const QStringList& documentPaths, const QString& path)
{
    const QString identity = QFileInfo(path).completeBaseName().section(u'-', -2, -2);
    for (const QString& document : documentPaths) {
        if (identityOf(document) == identity) {
            return document;
        }
    }
    return {};
}
