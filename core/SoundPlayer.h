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
    /// The one player of the process: events of one code share a slot, phrases share another.
    static SoundPlayer& shared();

    /// Plays the sound of the first of @p events with this code; codes outside 0 to 79 are ignored.
    void playEvent(int code, const PropertyList::ArrayPointer& events);

    /// Plays what is at @p path. The sound that plays now; null when nothing does, as after a suitcase's.
    std::shared_ptr<Sound> playPhrase(const QString& path);

private:
    static constexpr size_t slotCount = 80;

    void playFolderForEvent(size_t slot, const QString& folder, bool stopOthers);
    std::shared_ptr<Sound> playFileInSlot(size_t slot, const QString& path);
    std::shared_ptr<Sound> startInSlot(size_t slot, const QString& path);
    void stopSlot(size_t slot);

    /// The sound that was last started for each event code, playing or finished; the phrases share one slot.
    std::array<std::shared_ptr<Sound>, slotCount> m_sounds;
};

/// Plays one 'snd ' resource of the file's resource fork, picked at random, and returns when it has been heard. Answers
/// the number of such resources in the file; 0 when it has none or cannot be opened.
int playRandomSndFromSuitcase(const QString& path);
