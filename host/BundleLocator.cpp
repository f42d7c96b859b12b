// SPDX-License-Identifier: MIT
#include "BundleLocator.h"

#include "LockFiles.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QLoggingCategory>
#include <QStandardPaths>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

Q_LOGGING_CATEGORY(log, "blipsy.host")

const QString bundleName = u"Blipsy.prefPane"_s;
const QString modulePath = u"/Contents/MacOS/BlipsyPref.so"_s;
const QString helperPath = u"/Contents/BlipsyMenu.app/Contents/MacOS/BlipsyMenu"_s;
const QString infoPath = u"/Contents/Info.plist"_s;
const QString resourcesPath = u"/Contents/Resources"_s;
const QString documentPath = u"/Contents/Resources/default.blipsy"_s;

/// In milliseconds: as long as a copy takes on a slow disk.
constexpr int lockTimeout = 10'000;

/// The document is replaced by renaming, so the folder has to be writable as well as the file.
bool isWritable(const QString& bundle)
{
    return QFileInfo(bundle + documentPath).isWritable() && QFileInfo(bundle + resourcesPath).isWritable();
}

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// The programs and their information are what an update changes.
bool isUpToDate(const QString& copy, const QString& original)
{
    const auto isCurrent = [&](const QString& program) {
        return QFileInfo(copy + program).lastModified() >= QFileInfo(original + program).lastModified();
    };
    return QFileInfo::exists(copy + documentPath) && contentOf(copy + infoPath) == contentOf(original + infoPath) &&
           isCurrent(modulePath) && isCurrent(helperPath);
}

bool copyTree(const QString& from, const QString& to)
{
    QDirIterator it(from, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString source = it.next();
        const QString target = to + source.mid(from.size());
        if (!QDir().mkpath(QFileInfo(target).path()) || !QFile::copy(source, target)) {
            qCWarning(log).noquote() << "cannot copy" << source << "to" << target;
            return false;
        }
        QFile::setPermissions(target, QFile::permissions(target) | QFile::WriteOwner);
    }
    return true;
}

QString outdatedCopy(const QString& copy)
{
    return copy + u".old"_s;
}

/// Ends an update, this one's or one that was cut short: an old copy takes its place again when there is no new one, or
/// else leaves the user's document to it.
void finishUpdate(const QString& copy)
{
    const QString outdated = outdatedCopy(copy);
    if (!QFileInfo::exists(copy)) {
        QDir().rename(outdated, copy);
        return;
    }
    // Renaming replaces the new copy's document in one step; the file itself is never copied.
    const QByteArray document = QFile::encodeName(outdated + documentPath);
    const QByteArray place = QFile::encodeName(copy + documentPath);
    if (!QFileInfo::exists(outdated + documentPath) || std::rename(document.constData(), place.constData()) == 0) {
        QDir(outdated).removeRecursively();
    }
}

/// Puts a fresh copy in the place of an outdated one. However it ends, the user's document is in one of the two, and
/// finishUpdate() finds it there.
bool installCopy(const QString& original, const QString& copy)
{
    const QString fresh = copy + u".new"_s;
    QDir(fresh).removeRecursively();
    const bool isInstalled = copyTree(original, fresh) &&
                             (!QFileInfo::exists(copy) || QDir().rename(copy, outdatedCopy(copy))) &&
                             QDir().rename(fresh, copy);
    QDir(fresh).removeRecursively();
    finishUpdate(copy);
    return isInstalled;
}

} // namespace

QString BundleLocator::originalPath()
{
    const QString inBuildFolder = QCoreApplication::applicationDirPath() + u"/../"_s + bundleName;
    for (const QString& path : {inBuildFolder, QStringLiteral(BLIPSY_INSTALLED_BUNDLE)}) {
        if (QFileInfo::exists(path + modulePath)) {
            return QDir(path).canonicalPath();
        }
    }
    return {};
}

QString BundleLocator::bundlePath()
{
    const QString original = originalPath();
    if (original.isEmpty() || isWritable(original)) {
        return original;
    }
    const QString copy =
        QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + u"/blipsy/"_s + bundleName;
    if (updateCopy(original, copy)) {
        return copy;
    }
    qCWarning(log).noquote() << "cannot make a writable copy of" << original << "at" << copy
                             << "- changes to the default document will be lost";
    return original;
}

bool BundleLocator::updateCopy(const QString& original, const QString& copy)
{
    QDir().mkpath(QFileInfo(copy).path());
    QLockFile lock(copy + u".lock"_s);
    lock.setStaleLockTime(LockFiles::emptyLockLifetime);
    if (!lock.tryLock(lockTimeout)) {
        return isUpToDate(copy, original);
    }
    finishUpdate(copy);
    return isUpToDate(copy, original) || installCopy(original, copy);
}
