// SPDX-License-Identifier: MIT
#include "SoundFiles.h"

#include <platform/classic/FileTypes.h>
#include <platform/classic/ResourceFile.h>
#include <platform/sound/SoundDecoder.h>

#include <QDir>
#include <QFileInfo>
#include <QSet>

#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

constexpr quint32 suitcaseType = fourCharCode("SFIL");
constexpr quint32 soundResourceType = fourCharCode("snd ");

} // namespace

bool SoundFiles::isSuitcase(const QString& path)
{
    return FileTypes::hfsTypeCode(path) == suitcaseType;
}

SoundFiles::SuitcaseSound SoundFiles::randomInSuitcase(const QString& path)
{
    const std::optional<QString> target = FileTypes::isAliasFile(path) ? FileTypes::resolveAliases(path) : path;
    if (!target) {
        return {};
    }
    const qint16 previousFile = ResourceFile::current();
    const qint16 file = ResourceFile::open(*target);
    SuitcaseSound sound;
    if (file >= 0) {
        sound.count = ResourceFile::countInCurrentFile(soundResourceType);
        if (sound.count > 0) {
            const int index = int(::random() % sound.count) + 1;
            sound.resource = ResourceFile::inCurrentFileAtIndex(soundResourceType, index);
        }
        ResourceFile::close(file);
    }
    ResourceFile::setCurrent(previousFile);
    return sound;
}

QStringList SoundFiles::namesIn(const QString& folder, bool orSuitcase)
{
    const QDir::Filters everything = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;
    QStringList names = QDir(folder).entryList(everything, QDir::Name);
    // A companion that only holds the resource fork of another entry ("._name") is a part of that one.
    const QSet<QString> all(names.cbegin(), names.cend());
    names.removeIf([&](const QString& name) {
        const bool isCompanion = name.startsWith("._"_L1) && all.contains(name.mid(2));
        const bool looksLikeSound = name.contains(u'.') && name != ".DS_Store"_L1;
        return isCompanion || (!looksLikeSound && !(orSuitcase && isSuitcase(folder + u'/' + name)));
    });
    return names;
}

std::optional<QString> SoundFiles::problemWith(const QString& path)
{
    const QFileInfo file(path);
    if (!file.exists()) {
        return u"there is no such file"_s;
    }
    if (file.isDir()) {
        return namesIn(path, true).isEmpty() ? std::optional(u"the folder has no sounds"_s) : std::nullopt;
    }
    if (randomInSuitcase(path).count > 0) {
        return std::nullopt;
    }
    if (isSuitcase(path)) {
        return u"the suitcase has no sounds"_s;
    }
    const SoundDecoder::OpenResult sound = SoundDecoder::openFile(path);
    return sound ? std::nullopt : std::optional(sound.error());
}
