// SPDX-License-Identifier: MIT
#include "SoundPlayer.h"

#include "SoundEvent.h"
#include "SoundFiles.h"

#include <platform/sound/Sound.h>
#include <platform/sound/SoundResourcePlayer.h>

#include <QFileInfo>
#include <QLoggingCategory>

#include <cstdlib>
#include <optional>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

Q_LOGGING_CATEGORY(log, "blipsy.playback", QtInfoMsg)

constexpr size_t phraseSlot = 22;

/// Keeps a sound that has lost its slot until it has ended: destroying it would silence it.
void letPlayOn(std::shared_ptr<Sound> sound)
{
    static std::vector<std::shared_ptr<Sound>> playingOn;
    std::erase_if(playingOn, [](const auto& other) { return !other->isPlaying(); });
    if (sound && sound->isPlaying()) {
        playingOn.push_back(std::move(sound));
    }
}

/// One of the sounds in a folder at random; nothing when there is none. Suitcases are sounds @p orSuitcase.
std::optional<QString> randomSoundIn(const QString& folder, bool orSuitcase)
{
    const QStringList names = SoundFiles::namesIn(folder, orSuitcase);
    return names.isEmpty() ? std::nullopt : std::optional(folder + u'/' + names[::random() % names.size()]);
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
    const SoundFiles::SuitcaseSound sound = SoundFiles::randomInSuitcase(path);
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
    } else if (SoundFiles::isSuitcase(path)) {
        playSuitcaseInSlot(slot, path, gain);
    } else {
        startInSlot(slot, Sound::soundWithContentsOfFile(path), gain);
    }
}

int playRandomSndFromSuitcase(const QString& path)
{
    const SoundFiles::SuitcaseSound sound = SoundFiles::randomInSuitcase(path);
    if (sound.resource) {
        SoundResourcePlayer::playSynchronously(*sound.resource);
    }
    return sound.count;
}
