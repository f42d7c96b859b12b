// SPDX-License-Identifier: MIT
#pragma once

#include "SharedNames.h"

#include <platform/plist/PropertyList.h>

#include <QByteArray>
#include <QStringList>

#include <optional>

/// One setting of the helper's domain, which the helper reads and writes as well: its key, and what it means where the
/// domain has nothing under the key, or the empty text.
///
/// Numbers and switches are stored as decimal text ("1" is on), lists as arrays of texts; what is stored in another
/// type is converted as PropertyList::Value does it, to nothing where that cannot be. A Setting of a
/// PropertyList::Value takes and gives whatever it is.
template <typename T>
struct Setting
{
    QString key;
    T whenAbsent = {};

    /// The value, refreshed from storage.
    T value() const;
    /// Sets the value for this process; Changes::saveSettings() writes it.
    void set(const T& value) const;
    /// Sets the value and writes it. Nobody is told.
    void store(const T& value) const;
    /// Sets the value and writes it, then tells the helper "Preferences Changed".
    void publish(const T& value) const;
};

/// The settings that the pane and the helper share. The hot keys and the options of check boxes have computed keys.
namespace Settings {

inline const Setting<QString> defaultFilePath{QStringLiteral("defaultFilePath")};
/// The documents used lately: absolute paths, oldest first.
inline const Setting<std::optional<QStringList>> recentFiles{QStringLiteral("RecentFilesArray")};
/// From an application to the path of its document; an empty path stands for none.
inline const Setting<PropertyList::DictionaryPointer> file4App{QStringLiteral("File4App")};
/// The applications that have a document of their own, or none.
inline const Setting<std::optional<QStringList>> appsFiles{QStringLiteral("AppsFiles")};
/// The order of the phrases: 0 phrase, 1 sound path, 2 import order; another value leaves the order.
inline const Setting<int> sortPref{QStringLiteral("SortPref"), 0};
inline const Setting<int> menuPref{QStringLiteral("MenuPref"), 3};
inline const Setting<int> announcerPref{QStringLiteral("iTunesAnnouncerPref"), 1};
inline const Setting<int> triggerInhibPref{QStringLiteral("TriggerInhibPref"), 0};
/// A number as the user has typed it; the helper makes of it what it can.
inline const Setting<QString> idleTalkIntervalPref{QStringLiteral("IdleTalkIntervalPref"), QStringLiteral("2")};
/// The characters that end a typed phrase, as the bytes of a CharacterBitmap.
inline const Setting<std::optional<QByteArray>> triggersSet{QStringLiteral("TriggersSet")};
inline const Setting<bool> noTriggers{QStringLiteral("NoTriggers"), false};
inline const Setting<bool> playSoundOnDrop{QStringLiteral("Play sound as I drop it on event list:"), false};
/// The helper's picture in the menu bar, as a text.
inline const Setting<QString> arrowPref{QStringLiteral("ArrowPref")};
/// The hot keys, by their names, that the helper could not have because another program holds them.
inline const Setting<std::optional<QStringList>> refusedHotKeys{QStringLiteral("RefusedHotKeys")};
/// From a window class to the way in which its programs take a text: "Control-V", "Control-Shift-V", "Shift-Insert", or
/// "Typed" for those that take no paste. Adds to what the helper knows.
inline const Setting<PropertyList::DictionaryPointer> pasteWays{QStringLiteral("PasteWays")};
/// The build of the helper that ran last.
inline const Setting<int> menuBuild{QStringLiteral("MenuBuild"), 0};

/// What is stored under @p key, refreshed from storage; a null value where nothing is.
PropertyList::Value stored(const QString& key);

} // namespace Settings
