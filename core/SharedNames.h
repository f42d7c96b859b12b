// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// The names that the pane and the helper share, each in one place. Values are what other programs see: none may
/// change.

/// Keys of the sounds document.
namespace DocumentKey {
inline const QString clippings = QStringLiteral("Clippings");
inline const QString snippets = QStringLiteral("Snippets");
inline const QString sounds = QStringLiteral("Sounds");
inline const QString setVolume = QStringLiteral("SetVolume");
} // namespace DocumentKey

/// Keys of a phrase entry.
namespace PhraseKey {
inline const QString phrase = QStringLiteral("Phrase");
inline const QString soundFilepath = QStringLiteral("SoundFilepath");
inline const QString app = QStringLiteral("App");
inline const QString plainText = QStringLiteral("Plain Text");
inline const QString rtfd = QStringLiteral("RTFD");
inline const QString sortOrder = QStringLiteral("SortOrder");
inline const QString option = QStringLiteral("Option");
inline const QString service = QStringLiteral("Service");
} // namespace PhraseKey

/// Keys of a sound-event entry.
namespace EventKey {
inline const QString event = QStringLiteral("Event");
inline const QString eventName = QStringLiteral("EventName");
inline const QString eventCatName = QStringLiteral("EventCatName");
inline const QString soundFilepath = QStringLiteral("SoundFilepath");
inline const QString volume = QStringLiteral("Volume");
inline const QString stopOtherSounds = QStringLiteral("StopOtherSounds");
} // namespace EventKey

/// Names of the notifications exchanged with the helper.
namespace NotificationName {
inline const QString preferencesChanged = QStringLiteral("Preferences Changed");
inline const QString refreshMenu = QStringLiteral("RefreshMenu");
inline const QString newRowAdded = QStringLiteral("NewRowAdded");
inline const QString rowRemoved = QStringLiteral("RowRemoved");
inline const QString newRowAddedViaMenu = QStringLiteral("NewRowAddedViaMenu");
inline const QString scrollToAbb = QStringLiteral("ScrollToAbb");
inline const QString turnExpansionOff = QStringLiteral("TurnExpansionOff");
inline const QString turnExpansionOn = QStringLiteral("TurnExpansionOn");
inline const QString refreshAppsArray = QStringLiteral("RefreshAppsArray");
inline const QString keepRich = QStringLiteral("Keep Rich");
inline const QString byeBye = QStringLiteral("ByeBye");
inline const QString accessibilityIsOff = QStringLiteral("AXApiIsOff");
inline const QString playEvent = QStringLiteral("PlayEvent");
inline const QString playSuitcase = QStringLiteral("PlaySfil");
} // namespace NotificationName

/// The helper: the domain of its settings, the object of every notification, the name of its service.
inline const QString helperIdentifier = QStringLiteral("com.blipsy.BlipsyMenu");
