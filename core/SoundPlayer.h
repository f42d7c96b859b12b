// SPDX-License-Identifier: MIT
#pragma once

#include <platform/plist/PropertyList.h>

#include <QString>

#include <array>
#include <memory>

class Sound;

/// Plays the sounds of phrases and events: files, suitcases (one of their 'snd ' resources at random) and folders (one
/// of their files at random). What is no sound plays nothing. Main thread only.
class SoundPlayer final
{
public:
    enum class Suitcases {
        /// A call that plays a suitcase returns when that has been heard, at full volume.
        AreHeardOut,
        /// Suitcases play as files do.
        InTheBackground,
    };

    explicit SoundPlayer(Suitcases suitcases)
        : m_suitcases(suitcases)
    {
    }

    /// The pane's player, which hears suitcases out: events of one code share a slot, phrases share another.
    static SoundPlayer& shared();

    /// Plays the sound of the first of @p events with this code, its samples multiplied by @p gain (0 to 1); codes
    /// outside 0 to 79 are ignored.
    void playEvent(int code, const PropertyList::ArrayPointer& events, float gain = 1);

    /// Plays what is at @p path. The sound that plays now; null when nothing does, as after a suitcase that was heard
    /// out.
    std::shared_ptr<Sound> playPhrase(const QString& path, float gain = 1);

    /// Plays a sound out of the suitcase at @p path; nothing where it is none.
    void playSuitcase(const QString& path, float gain = 1);

private:
    static constexpr size_t slotCount = 80;

    void playFolderForEvent(size_t slot, const QString& folder, bool stopOthers, float gain);
    std::shared_ptr<Sound> playFileInSlot(size_t slot, const QString& path, float gain);
    bool playSuitcaseInSlot(size_t slot, const QString& path, float gain);
    void startInSlot(size_t slot, std::shared_ptr<Sound> sound, float gain);
    void stopSlot(size_t slot);

    const Suitcases m_suitcases;

    /// The sound that was last started for each event code, playing or finished; the phrases share one slot.
    std::array<std::shared_ptr<Sound>, slotCount> m_sounds;
};

/// Plays one 'snd ' resource of the file's resource fork, picked at random, and returns when it has been heard. Answers
/// the number of such resources in the file; 0 when it has none or cannot be opened.
int playRandomSndFromSuitcase(const QString& path);
