// SPDX-License-Identifier: MIT
#include "BYGlobals.h"

#include "SharedNames.h"

#include <platform/classic/FileTypes.h>
#include <platform/classic/ResourceFile.h>
#include <platform/sound/Sound.h>
#include <platform/sound/SoundResourcePlayer.h>

#include <QDir>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QSet>
#include <QStringList>

#include <array>
#include <cstdlib>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

Q_LOGGING_CATEGORY(log, "blipsy.playback", QtInfoMsg)

constexpr size_t slotCount = 80;
constexpr size_t phraseSlot = 22;
constexpr FileTypes::TypeCode suitcaseType = FileTypes::typeCode("SFIL");
constexpr FileTypes::TypeCode soundResourceType = FileTypes::typeCode("snd ");

/// The sound that was last started for each event code, playing or finished; the phrases share one slot.
std::array<std::shared_ptr<Sound>, slotCount> soundForEvent;

/// Keeps a sound that has lost its slot until it has ended: destroying it would silence it.
void letPlayOn(std::shared_ptr<Sound> sound)
{
    static std::vector<std::shared_ptr<Sound>> playingOn;
    std::erase_if(playingOn, [](const auto& other) { return !other->isPlaying(); });
    if (sound && sound->isPlaying()) {
        playingOn.push_back(std::move(sound));
    }
}

void stopSlot(size_t slot)
{
    if (const std::shared_ptr<Sound> sound = std::exchange(soundForEvent[slot], {})) {
        sound->stop();
    }
}

/// Puts the sound of the file at @p path into the slot and starts it. A sound that is there plays on.
std::shared_ptr<Sound> startInSlot(size_t slot, const QString& path)
{
    letPlayOn(std::exchange(soundForEvent[slot], Sound::soundWithContentsOfFile(path)));
    if (soundForEvent[slot]) {
        soundForEvent[slot]->play();
    }
    return soundForEvent[slot];
}

std::shared_ptr<Sound> playFileInSlot(size_t slot, const QString& path)
{
    return playRandomSndFromSuitcase(path) == 0 ? startInSlot(slot, path) : nullptr;
}

bool isSuitcase(const QString& path)
{
    return FileTypes::hfsTypeCode(path) == suitcaseType;
}

/// The names in a folder in their order, hidden ones included. A companion that only holds the resource fork of another
/// entry ("._name") is a part of that one.
QStringList namesInFolder(const QString& folder)
{
    const QDir::Filters everything = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;
    QStringList names = QDir(folder).entryList(everything, QDir::Name);
    const QSet<QString> all(names.cbegin(), names.cend());
    names.removeIf([&all](const QString& name) { return name.startsWith("._"_L1) && all.contains(name.mid(2)); });
    return names;
}

bool looksLikeSoundFile(const QString& name)
{
    return name.contains(u'.') && name != ".DS_Store"_L1;
}

/// One of the names at random, or nothing when there is none.
std::optional<QString> randomName(const QStringList& names)
{
    if (names.isEmpty()) {
        return {};
    }
    return names[::random() % names.size()];
}

std::optional<QString> randomPhraseSound(const QString& folder)
{
    QStringList names = namesInFolder(folder);
    names.removeIf([](const QString& name) { return !looksLikeSoundFile(name); });
    return randomName(names);
}

std::optional<QString> randomEventSound(const QString& folder)
{
    QStringList names = namesInFolder(folder);
    names.removeIf(
        [&folder](const QString& name) { return !looksLikeSoundFile(name) && !isSuitcase(folder + u'/' + name); });
    return randomName(names);
}

PropertyList::DictionaryPointer entryForEvent(int code)
{
    const PropertyList::ArrayPointer events = BYGlobals::soundsPrefsArray();
    if (!events) {
        return {};
    }
    for (const PropertyList::Value& value : std::as_const(*events)) {
        PropertyList::DictionaryPointer entry = value.dictionary();
        if (entry && entry->contains(EventKey::event) && entry->value(EventKey::event).integerValue() == code) {
            return entry;
        }
    }
    return {};
}

void playFolderForEvent(size_t slot, const QString& folder, bool stopOthers)
{
    const std::optional<QString> name = randomEventSound(folder);
    if (!name) {
        return;
    }
    const QString full = folder + u'/' + *name;
    qCInfo(log).noquote() << u"fullpathOfSoundToPlay: %1"_s.arg(full);
    if (stopOthers) {
        for (size_t other = 0; other < slotCount; ++other) {
            if (soundForEvent[other] && soundForEvent[other]->isPlaying()) {
                stopSlot(other);
            }
        }
    }
    stopSlot(slot);
    playFileInSlot(slot, full);
}

} // namespace

int playRandomSndFromSuitcase(const QString& path)
{
    const std::optional<QString> target = FileTypes::isAliasFile(path) ? FileTypes::resolveAliases(path) : path;
    if (!target) {
        return 0;
    }
    const qint16 previousFile = ResourceFile::current();
    const qint16 file = ResourceFile::open(*target);
    if (file < 0) {
        ResourceFile::setCurrent(previousFile);
        return 0;
    }
    const int count = ResourceFile::countInCurrentFile(soundResourceType);
    if (count > 0) {
        const int index = int(::random() % count) + 1;
        if (const auto resource = ResourceFile::inCurrentFileAtIndex(soundResourceType, index)) {
            SoundResourcePlayer::playSynchronously(*resource);
        }
    }
    ResourceFile::close(file);
    ResourceFile::setCurrent(previousFile);
    return count;
}

std::shared_ptr<Sound> BYGlobals::playSoundForPhrase(const QString& path)
{
    if (!QFileInfo(path).isDir()) {
        return playFileInSlot(phraseSlot, path);
    }
    const std::optional<QString> name = randomPhraseSound(path);
    if (!name) {
        return {};
    }
    stopSlot(phraseSlot);
    return playFileInSlot(phraseSlot, path + u'/' + *name);
}

void BYGlobals::playSoundForEvent(int code)
{
    if (code < 0 || size_t(code) >= slotCount) {
        return;
    }
    const auto slot = size_t(code);
    const PropertyList::DictionaryPointer entry = entryForEvent(code);
    const QString path = entry ? entry->value(EventKey::soundFilepath).string() : QString();
    if (path.isEmpty()) {
        letPlayOn(std::move(soundForEvent[slot]));
    } else if (QFileInfo(path).isDir()) {
        playFolderForEvent(slot, path, entry->value(EventKey::stopOtherSounds).integerValue() == 1);
    } else if (isSuitcase(path)) {
        playRandomSndFromSuitcase(path);
    } else {
        startInSlot(slot, path);
    }
}
