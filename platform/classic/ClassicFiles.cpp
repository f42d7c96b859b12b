// SPDX-License-Identifier: MIT
#include "ClassicFiles.h"

#include "ClassicFolders.h"

#include <platform/bytes/BoundedBytes.h>
#include <platform/bytes/MacRoman.h>
#include <platform/storage/Preferences.h>

#include <QDir>
#include <QFileInfo>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr quint64 nameOffset = 6;
constexpr qsizetype longestSuffix = 5;

/// The name cut short, with the inode by which the file is found again: "Beginning#1A2B.aif".
QByteArray shortenedName(const QString& name, quint64 inode)
{
    QByteArray bytes;
    for (const QChar character : name) {
        bytes += MacRoman::encode(QStringView(&character, 1)).value_or("?");
    }
    const qsizetype dot = bytes.lastIndexOf('.');
    const QByteArray suffix = dot > 0 && bytes.size() - dot <= longestSuffix ? bytes.sliced(dot) : QByteArray();
    const QByteArray tail = '#' + QByteArray::number(inode, 16).toUpper() + suffix;
    const qsizetype beginning =
        std::min(bytes.size() - suffix.size(), ClassicFiles::FileRecord::longestName - tail.size());
    return bytes.first(beginning) + tail;
}

QByteArray classicName(const QFileInfo& file)
{
    const QString name = ClassicFiles::withSeparatorsExchanged(file.fileName());
    const std::optional<QByteArray> bytes = MacRoman::encode(name);
    const bool survives =
        bytes && bytes->size() <= ClassicFiles::FileRecord::longestName && MacRoman::decode(*bytes) == name;
    return survives ? *bytes : shortenedName(name, ClassicFolders::inodeOf(file.absoluteFilePath()));
}

/// The file in @p folder that a shortened name stands for; empty when @p name is none.
QString fileOfShortenedName(const QString& folder, const QByteArray& name)
{
    const qsizetype mark = name.lastIndexOf('#');
    if (mark < 0) {
        return {};
    }
    const QStringList files =
        QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    const auto found = std::find_if(files.begin(), files.end(),
        [&](const QString& file) { return classicName(QFileInfo(folder + u'/' + file)) == name; });
    return found == files.end() ? QString() : *found;
}

QString pathIn(const QString& folder, const QString& name)
{
    return (folder.endsWith(u'/') ? folder : folder + u'/') + name;
}

bool isThere(const QString& path)
{
    return ClassicFolders::inodeOf(path) != 0;
}

bool isName(const QByteArray& name)
{
    return !name.isEmpty() && name.size() <= ClassicFiles::FileRecord::longestName && !name.contains(':') &&
           !name.contains('\0') && name != "." && name != "..";
}

} // namespace

std::optional<ClassicFiles::FileRecord> ClassicFiles::FileRecord::fromStored(QByteArrayView bytes)
{
    const BoundedBytes record(bytes);
    if (!record.contains(0, storedSize) || record.big<quint8>(nameOffset) > longestName) {
        return std::nullopt;
    }
    return FileRecord{{record.big<qint16>(0), record.big<qint32>(2)}, record.pascalString(nameOffset).toByteArray()};
}

QString ClassicFiles::withSeparatorsExchanged(QString name)
{
    for (QChar& character : name) {
        character = character == u':' ? QChar(u'/') : character == u'/' ? QChar(u':') : character;
    }
    return name;
}

std::optional<ClassicFiles::Folder> ClassicFiles::findPreferencesFolder()
{
    return ClassicFolders::identify(QFileInfo(Preferences::filePath(u"any"_s)).path());
}

ClassicFiles::RecordResult ClassicFiles::makeRecord(const Folder& folder, const QByteArray& name)
{
    if (!isName(name)) {
        return {{}, badNameError};
    }
    const FileRecord record{folder, name};
    const std::optional<QString> path = pathOf(record);
    if (!path) {
        return {{}, folderNotFoundError};
    }
    return {record, isThere(*path) ? ResourceFile::noErr : ResourceFile::fileNotFoundError};
}

std::optional<ClassicFiles::FileRecord> ClassicFiles::recordForPath(const QString& path)
{
    if (path.isEmpty() || !isThere(path)) {
        return std::nullopt;
    }
    // Without the dots and the slash at the end, so that the last name is the file's own.
    const QFileInfo file(QDir::cleanPath(QFileInfo(path).absoluteFilePath()));
    const std::optional<Folder> own = file.isSymLink() ? std::nullopt : ClassicFolders::identify(file.filePath());
    if (own && own->identifier == rootFolder) {
        return FileRecord{{own->volume, parentOfRoot}, file.isRoot() ? "/" : classicName(file)};
    }
    const std::optional<Folder> parent = ClassicFolders::identify(file.path());
    return parent ? std::optional(FileRecord{*parent, classicName(file)}) : std::nullopt;
}

std::optional<QString> ClassicFiles::pathOf(const FileRecord& record)
{
    const Folder& folder = record.folder;
    if (folder.identifier == parentOfRoot) {
        return ClassicFolders::pathOf({folder.volume, rootFolder});
    }
    const std::optional<QString> place = ClassicFolders::pathOf(folder);
    if (!place || !isName(record.name)) {
        return std::nullopt;
    }
    QString path = pathIn(*place, withSeparatorsExchanged(MacRoman::decode(record.name)));
    if (isThere(path)) {
        return path;
    }
    const QString shortened = fileOfShortenedName(*place, record.name);
    return shortened.isEmpty() ? path : pathIn(*place, shortened);
}

qint16 ClassicFiles::openResourceFile(const FileRecord& record, ResourceFile::Access access)
{
    return ResourceFile::open(pathOf(record).value_or(QString()), access);
}
