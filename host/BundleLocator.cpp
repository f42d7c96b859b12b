#include "BundleLocator.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace {

Q_LOGGING_CATEGORY(lcHost, "blipsy.host")

const QString bundleName = u"Blipsy.prefPane"_s;
const QString modulePath = u"/Contents/MacOS/BlipsyPref.so"_s;
const QString infoPath = u"/Contents/Info.plist"_s;
const QString resourcesPath = u"/Contents/Resources"_s;
const QString documentPath = u"/Contents/Resources/default.blipsy"_s;

QString originalBundle()
{
    const QString inBuildFolder = QCoreApplication::applicationDirPath() + u"/../"_s + bundleName;
    for (const QString& path : {inBuildFolder, QStringLiteral(BLIPSY_INSTALLED_BUNDLE)}) {
        if (QFileInfo::exists(path + modulePath)) {
            return QDir(path).canonicalPath();
        }
    }
    return {};
}

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

/// The library and its information are what an update changes.
bool isUpToDate(const QString& copy, const QString& original)
{
    return QFileInfo::exists(copy + documentPath) && contentOf(copy + infoPath) == contentOf(original + infoPath) &&
           QFileInfo(copy + modulePath).lastModified() >= QFileInfo(original + modulePath).lastModified();
}

bool copyTree(const QString& from, const QString& to)
{
    QDirIterator it(from, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString source = it.next();
        const QString target = to + source.mid(from.size());
        if (!QDir().mkpath(QFileInfo(target).path()) || !QFile::copy(source, target)) {
            qCWarning(lcHost).noquote() << "cannot copy" << source << "to" << target;
            return false;
        }
        QFile::setPermissions(target, QFile::permissions(target) | QFile::WriteOwner);
    }
    return true;
}

/// Puts a fresh copy in the place of an outdated one. The user's document moves into the new copy, and at no moment is
/// there neither the old nor the new one.
bool installCopy(const QString& original, const QString& copy)
{
    const QString fresh = copy + u".new"_s;
    const QString outdated = copy + u".old"_s;
    QDir(fresh).removeRecursively();
    if (!copyTree(original, fresh)) {
        QDir(fresh).removeRecursively();
        return false;
    }
    if (QFileInfo::exists(copy + documentPath)) {
        QFile::remove(fresh + documentPath);
        if (!QFile::copy(copy + documentPath, fresh + documentPath)) {
            QDir(fresh).removeRecursively();
            return false;
        }
    }
    QDir(outdated).removeRecursively();
    if (QFileInfo::exists(copy) && !QDir().rename(copy, outdated)) {
        return false;
    }
    const bool renamed = QDir().rename(fresh, copy);
    if (!renamed && QFileInfo::exists(outdated)) {
        QDir().rename(outdated, copy);
    }
    QDir(outdated).removeRecursively();
    return renamed;
}

} // namespace

QString BundleLocator::bundlePath()
{
    const QString original = originalBundle();
    if (original.isEmpty() || isWritable(original)) {
        return original;
    }
    const QString copy =
        QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + u"/blipsy/"_s + bundleName;
    if (isUpToDate(copy, original) || installCopy(original, copy)) {
        return copy;
    }
    qCWarning(lcHost).noquote() << "cannot make a writable copy of" << original << "at" << copy
                                << "- changes to the default document will be lost";
    return original;
}
