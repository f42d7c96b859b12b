// SPDX-License-Identifier: MIT
#pragma once

#include "DocumentEntry.h"

/// A sound-event entry of the document by name. The document decides which events there are: only sound and volume are
/// ever set.
class SoundEvent final : public DocumentEntry
{
public:
    using DocumentEntry::DocumentEntry;

    /// The code of the system alert, whose volume is the system's own.
    static constexpr int systemAlertCode = 28;

    /// The first of @p events with this code; one that is none where there is no such event.
    static SoundEvent withCode(int code, const PropertyList::ArrayPointer& events)
    {
        for (int row = 0; events && row < events->size(); ++row) {
            const SoundEvent event = DocumentEntry::at(events, row);
            if (event && event.hasCode() && event.code() == code) {
                return event;
            }
        }
        return {};
    }

    bool hasCode() const { return dictionary()->contains(EventKey::event); }

    /// By which the helper knows the event: 0 to 79.
    int code() const { return value(EventKey::event).intValue(); }

    bool isSystemAlert() const { return code() == systemAlertCode; }

    QString name() const { return value(EventKey::eventName).textValue(); }

    /// The path of a file, a suitcase or a folder; what is no text counts as no sound.
    QString soundFilepath() const { return value(EventKey::soundFilepath).string(); }

    /// As the slider shows it; 0 where there is none.
    float volume() const { return float(value(EventKey::volume).doubleValue()); }

    void setVolume(const QString& volume) const { setText(EventKey::volume, volume); }

    /// Whether a sound of the event out of a folder silences all others.
    bool stopsOtherSounds() const { return value(EventKey::stopOtherSounds).integerValue() == 1; }
};
