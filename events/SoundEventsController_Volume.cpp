// SPDX-License-Identifier: MIT
#include "SoundEventsController.h"

#include "EventEntries.h"

#include <core/BYGlobals.h>
#include <core/Changes.h>
#include <core/SoundEvent.h>
#include <platform/controls/Slider.h>
#include <platform/desktop/Text.h>
#include <platform/sound/AlertVolume.h>
#include <platform/table/TableView.h>

#include <QLabel>
#include <QLoggingCategory>

using namespace Qt::StringLiterals;
using PropertyList::Dictionary;
using PropertyList::DictionaryPointer;

namespace {

Q_LOGGING_CATEGORY(log, "blipsy.events.volume")

/// The slider's value for an alert level word: the unsigned low 16 bits in units of 1/256.
float sliderValueOf(quint32 levelWord)
{
    return float(levelWord & 0xFFFF) * 0.00390625F;
}

/// The level word for a slider value: the level in both halves.
quint32 levelWordOf(float sliderValue)
{
    const auto level = quint32(double(sliderValue) * 256.0);
    return level | (level << 16);
}

float alertVolume()
{
    const AlertVolume::Reading reading = AlertVolume::getSysBeepVolume();
    if (reading.error != 0) {
        qCWarning(log).noquote() << u" GetSysBeepVolume err = %1"_s.arg(reading.error);
    }
    return sliderValueOf(reading.level);
}

float generalVolume()
{
    const DictionaryPointer document = BYGlobals::clippingsDictionary();
    return document ? float(document->value(DocumentKey::setVolume).doubleValue()) : 0;
}

} // namespace

void SoundEventsController::tableViewSelectionDidChange()
{
    const SoundEvent event = EventEntries::shownAt(selectedRow());
    QString label;
    float volume = 0;
    if (!event) {
        label = Text::tr("Set volume:");
        volume = generalVolume();
    } else if (event.isSystemAlert()) {
        label = Text::tr("Alert volume:");
        volume = alertVolume();
    } else {
        label = Text::tr("Event volume:");
        volume = event.volume();
    }
    if (myVolumeSlider != nullptr) {
        myVolumeSlider->setFloatValue(volume);
    }
    if (myVolumeSliderLabel != nullptr) {
        myVolumeSliderLabel->setText(label);
    }
}

void SoundEventsController::volumeSliderAction(Slider* sender)
{
    const SoundEvent event = EventEntries::shownAt(selectedRow());
    if (event && event.isSystemAlert()) {
        AlertVolume::setSysBeepVolume(levelWordOf(sender->floatValue()));
    } else if (event) {
        event.setVolume(sender->stringValue());
    } else if (const DictionaryPointer document = BYGlobals::clippingsDictionary()) {
        document->insert(DocumentKey::setVolume, sender->stringValue());
    }
    Changes::saveDocument();
    if (event) {
        const DictionaryPointer userInfo = Dictionary::create();
        userInfo->insert(EventKey::event, event->value(EventKey::event));
        Changes::tell(NotificationName::playEvent, userInfo);
    }
}
