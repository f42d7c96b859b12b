// SPDX-License-Identifier: MIT
#include "FileTypes.h"

#include "AliasRecord.h"
#include "Bookmark.h"
#include "FilePeek.h"
#include "ForkLocator.h"

#include <platform/bytes/MacRoman.h>

#include <QFileInfo>
#include <QStorageInfo>
#include <QStringList>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int longestChain = 32;
constexpr quint64 largestAliasFile = 16 * 1024 * 1024;
constexpr auto aliasType = fourCharCode("alis");

bool holdsBookmark(const QString& path)
{
    const FilePeek file(path, FilePeek::Links::Refuse);
    return Bookmark::isAliasFile(file.read({0, Bookmark::aliasFileMarkSize}));
}

std::optional<QByteArray> aliasRecordBytes(const QString& path)
{
    const auto info = ForkLocator::finderInfo(path);
    if (!info || !info->isAlias()) {
        return std::nullopt;
    }
    const auto located = ForkLocator::resourceFork(path).found;
    if (!located) {
        return std::nullopt;
    }
    const ResourceFork::Resource* usual = located->fork.withId(aliasType, 0);
    const ResourceFork::Resource* alias = usual ? usual : located->fork.atIndex(aliasType, 1);
    return alias ? located->fork.data(*alias) : std::nullopt;
}

/// What the alias file at @p path says; nothing when it is none, or is damaged.
std::optional<AliasTarget> readAlias(const QString& path)
{
    if (holdsBookmark(path)) {
        const FilePeek file(path, FilePeek::Links::Refuse);
        return Bookmark::parse(file.read({0, largestAliasFile}));
    }
    const auto record = aliasRecordBytes(path);
    return record ? AliasRecord::parse(*record) : std::nullopt;
}

/// Where the target may be. The volume on which an alias was made is rarely mounted at the same place here, so the
/// volume that holds the alias and the folder of the alias come into question too.
QStringList possibleTargets(const AliasTarget& target, const QString& aliasPath)
{
    QStringList paths;
    if (!target.path.isEmpty()) {
        paths.append(target.path);
    }
    if (!target.pathOnVolume.isEmpty()) {
        const QString root = QStorageInfo(aliasPath).rootPath();
        paths.append((root.endsWith(u'/') ? root : root + u'/') + target.pathOnVolume);
    }
    if (AliasPath::isSafeComponent(target.name)) {
        paths.append(QFileInfo(aliasPath).absolutePath() + u'/' + target.name);
    }
    return paths;
}

/// The names of aliases have their accents apart, those of most files here have not.
std::optional<QString> existingPath(const QString& path)
{
    for (const QString& form : {path, path.normalized(QString::NormalizationForm_C)}) {
        if (const QFileInfo info(form); info.exists() || info.isSymLink()) {
            return form;
        }
    }
    return std::nullopt;
}

std::optional<QString> aliasFileTarget(const QString& path)
{
    const std::optional<AliasTarget> target = readAlias(path);
    if (!target) {
        return std::nullopt;
    }
    const QString own = QFileInfo(path).absoluteFilePath();
    for (const QString& possible : possibleTargets(*target, path)) {
        if (auto found = existingPath(possible); found && *found != own) {
            return found;
        }
    }
    return std::nullopt;
}

} // namespace

std::optional<quint32> FileTypes::hfsTypeCode(const QString& path)
{
    const auto info = ForkLocator::finderInfo(path);
    return info && info->type != 0 ? std::optional(info->type) : std::nullopt;
}

QString FileTypes::fileTypeForHFSTypeCode(quint32 code)
{
    return u'\'' + MacRoman::decode(fourCharBytes(code)) + u'\'';
}

bool FileTypes::isAliasFile(const QString& path)
{
    return !QFileInfo(path).isSymLink() && (holdsBookmark(path) || aliasRecordBytes(path).has_value());
}

std::optional<QString> FileTypes::resolveAliases(const QString& path)
{
    QString current = path;
    for (int step = 0; step <= longestChain; ++step) {
        const QFileInfo file(current);
        const bool isLink = file.isSymLink();
        if (!isLink && !isAliasFile(current)) {
            return step == 0 || file.exists() ? std::optional(current) : std::nullopt;
        }
        const std::optional<QString> target = isLink ? file.symLinkTarget() : aliasFileTarget(current);
        if (!target || target->isEmpty()) {
            return std::nullopt;
        }
        current = *target;
    }
    return std::nullopt;
}
