// SPDX-License-Identifier: MIT
#include "SoundPlayer.h"

#include "SoundEvent.h"

#include <platform/classic/FileTypes.h>
#include <platform/classic/ResourceFile.h>
#include <platform/sound/Sound.h>
#include <platform/sound/SoundResourcePlayer.h>

#include <QDir>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QSet>

#include <cstdlib>
#include <optional>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

Q_LOGGING_CATEGORY(log, "blipsy.playback", QtInfoMsg)

constexpr size_t phraseSlot = 22;
constexpr quint32 suitcaseType = fourCharCode("SFIL");
constexpr quint32 soundResourceType = fourCharCode("snd ");

/// Keeps a sound that has lost its slot until it has ended: destroying it would silence it.
void letPlayOn(std::shared_ptr<Sound> sound)
{
    static std::vector<std::shared_ptr<Sound>> playingOn;
    std::erase_if(playingOn, [](const auto& other) { return !other->isPlaying(); });
    if (sound && sound->isPlaying()) {
        playingOn.push_back(std::move(sound));
    }
}

bool isSuitcase(const QString& path)
{
    return FileTypes::hfsTypeCode(path) == suitcaseType;
}

/// One of the sounds in a folder at random, hidden ones included; nothing when there is none. Suitcases, which need no
/// extension, are sounds @p orSuitcase.
std::optional<QString> randomSoundIn(const QString& folder, bool orSuitcase)
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
    return names.isEmpty() ? std::nullopt : std::optional(folder + u'/' + names[::random() % names.size()]);
}

struct SuitcaseSound
{
    /// How many sounds the suitcase has.
    int count = 0;
    /// One of them at random.
    std::optional<QByteArray> resource = {};
};

/// Nothing of a file that is no suitcase.
SuitcaseSound randomSoundInSuitcase(const QString& path)
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

} // namespace

SoundPlayer& SoundPlayer::shared()
{
    static SoundPlayer player(Suitcases::AreHeardOut);
    return player;
}

void SoundPlayer::stopSlot(size_t slot)
{
    if (const std::shared_ptr<Sound> sound = std::exchange(m_sounds[slot], {})) {
        sound->stop();
    }
}

/// Puts @p sound into the slot and starts it; where it is null the slot is empty then. A sound that is there plays on.
void SoundPlayer::startInSlot(size_t slot, std::shared_ptr<Sound> sound, float gain)
{
    letPlayOn(std::exchange(m_sounds[slot], std::move(sound)));
    if (m_sounds[slot]) {
        m_sounds[slot]->play(gain);
    }
}

/// False when it is no suitcase, or an empty one.
bool SoundPlayer::playSuitcaseInSlot(size_t slot, const QString& path, float gain)
{
    if (m_suitcases == Suitcases::AreHeardOut) {
        return playRandomSndFromSuitcase(path) > 0;
    }
    const SuitcaseSound sound = randomSoundInSuitcase(path);
    if (sound.resource) {
        startInSlot(slot, Sound::soundWithResource(*sound.resource), gain);
    }
    return sound.count > 0;
}

std::shared_ptr<Sound> SoundPlayer::playFileInSlot(size_t slot, const QString& path, float gain)
{
    if (!playSuitcaseInSlot(slot, path, gain)) {
        startInSlot(slot, Sound::soundWithContentsOfFile(path), gain);
    } else if (m_suitcases == Suitcases::AreHeardOut) {
        return nullptr;
    }
    return m_sounds[slot];
}

void SoundPlayer::playFolderForEvent(size_t slot, const QString& folder, bool stopOthers, float gain)
{
    const std::optional<QString> path = randomSoundIn(folder, true);
    if (!path) {
        return;
    }
    qCInfo(log).noquote() << u"fullpathOfSoundToPlay: %1"_s.arg(*path);
    if (stopOthers) {
        for (size_t other = 0; other < slotCount; ++other) {
            if (m_sounds[other] && m_sounds[other]->isPlaying()) {
                stopSlot(other);
            }
        }
    }
    stopSlot(slot);
    playFileInSlot(slot, *path, gain);
}

std::shared_ptr<Sound> SoundPlayer::playPhrase(const QString& path, float gain)
{
    if (!QFileInfo(path).isDir()) {
        return playFileInSlot(phraseSlot, path, gain);
    }
    const std::optional<QString> chosen = randomSoundIn(path, false);
    if (!chosen) {
        return {};
    }
    stopSlot(phraseSlot);
    return playFileInSlot(phraseSlot, *chosen, gain);
}

void SoundPlayer::playSuitcase(const QString& path, float gain)
{
    playSuitcaseInSlot(phraseSlot, path, gain);
}

void SoundPlayer::playEvent(int code, const PropertyList::ArrayPointer& events, float gain)
{
    if (code < 0 || size_t(code) >= slotCount) {
        return;
    }
    const auto slot = size_t(code);
    const SoundEvent event = SoundEvent::withCode(code, events);
    const QString path = event ? event.soundFilepath() : QString();
    if (path.isEmpty()) {
        letPlayOn(std::move(m_sounds[slot]));
    } else if (QFileInfo(path).isDir()) {
        playFolderForEvent(slot, path, event.stopsOtherSounds(), gain);
    } else if (isSuitcase(path)) {
        playSuitcaseInSlot(slot, path, gain);
    } else {
        startInSlot(slot, Sound::soundWithContentsOfFile(path), gain);
    }
}

int playRandomSndFromSuitcase(const QString& path)
{
    const SuitcaseSound sound = randomSoundInSuitcase(path);
    if (sound.resource) {
        SoundResourcePlayer::playSynchronously(*sound.resource);
    }
    return sound.count;
}
