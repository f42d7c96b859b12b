// SPDX-License-Identifier: MIT
#pragma once

#include <platform/plist/PropertyList.h>

#include <QString>

#include <array>
#include <memory>

class Sound;

/// The state that all editors of the pane share: the one sounds document in memory, the settings store, the
/// notifications exchanged with the helper, and sound playback. Class operations only, main thread only.
class BYGlobals final
{
public:
    BYGlobals() = delete;

    /// The domain of the helper's settings, and the object of every notification.
    static const QString& appID();

    /// @name The sounds document
    /// The containers are handed out themselves, not copies: editors change entries in place and then write.
    /// @{

    /// Sets the document's path from the settings and, the first time, makes the application-to-document map.
    static void init();
    /// Loads the document at defaultFilePath() and sorts it. A file that cannot be read, or has more than 256 MB, gives
    /// no document (null containers); an empty path keeps the document in memory.
    static void fillArray();
    /// Sorts the phrase list in place by the setting "SortPref" (0 phrase, 1 sound path, 2 import order); another value
    /// leaves the order. Stable.
    static void sortArray();
    static QString defaultFilePath();
    static void setDefaultFilePath(const QString& path);
    static PropertyList::DictionaryPointer file4app();
    static PropertyList::DictionaryPointer clippingsDictionary();
    static PropertyList::ArrayPointer clippingsArray();
    static PropertyList::ArrayPointer soundsPrefsArray();
    /// A list of its own with the same entries; entries that are no dictionaries are left out of it.
    static PropertyList::ArrayPointer soundsPrefsArrayFiltered();
    /// The phrase entry at @p row. Never null: for a row that does not exist, or holds something else than a
    /// dictionary, an empty dictionary of its own, so that such an entry reads as empty and travels through a save
    /// unchanged.
    static PropertyList::DictionaryPointer clippingAtRow(qsizetype row);
    /// The "SoundFilepath" of the first phrase entry whose "Phrase" is exactly @p phrase; a null string when none is.
    static QString fullTextFor(const QString& phrase);

    /// Writes the whole document to defaultFilePath(), atomically. A failed write leaves the file as it was and is
    /// logged; without a document nothing is written.
    ///
    /// The document in memory wins over a version that another program has written since it was read, or last written.
    /// That version is kept among the DocumentBackups, and one log line names the copy; where it cannot be kept it is
    /// not overwritten.
    static void writeDocument();

    /// @}
    /// @name Editing state
    /// @{
    static int selectedClippingRowForEditing();
    static void setSelectedClippingRowForEditing(int row);
    static int previouslySelectedClippingRow();
    static void setPreviouslySelectedClippingRow(int row);
    static bool editEntryPaneTextIsDirty();
    static void setEditEntryPaneTextIsDirty(bool dirty);
    static QString lastEditedAbb();
    static void setLastEditedAbb(const QString& phrase);

    /// @}
    /// @name Settings store
    /// @{

    /// Stores @p value for the current user, flushes the domain and posts "Preferences Changed".
    static void saveToUserDefaults_forKey(const PropertyList::Value& value, const QString& key);
    /// Stores @p value and flushes, without a notification.
    static void storeSetting(const PropertyList::Value& value, const QString& key);
    /// The stored value, refreshed from storage; the empty string when the key is absent.
    static PropertyList::Value retrieveFromUserDefaults(const QString& key);
    /// The four below answer a null value when the key is absent.
    static PropertyList::Value retrieveDateFromUserDefaults(const QString& key);
    static PropertyList::Value retrieveUntypedObjectFromUserDefaults(const QString& key);
    static PropertyList::Value retrieveDataFromUserDefaults(const QString& key);
    /// Finds a value of the helper's domain only once one of the operations above has attached the domain to the
    /// reader; that is meant so.
    static PropertyList::Value retrieveArrayFromUserDefaults(const QString& key);

    /// @}
    /// @name Notifications
    /// @{

    /// Posts the named notification with the helper's object, without user information.
    static void sendNotification(const QString& name);
    /// The same with user information.
    static void sendNotification(const QString& name, const PropertyList::DictionaryPointer& userInfo);
    /// Reloads the document when @p object and @p name are the helper's "Preferences Changed".
    static void prefsChangedHere(const QString& name, const QString& object);

    /// @}
    /// @name Playback
    /// @{

    /// Plays the sound of the first sound event with this code; codes outside 0 to 79 are ignored.
    static void playSoundForEvent(int code);
    /// Plays the file, suitcase or folder (one of its files at random) at @p path. The sound that plays now, in the
    /// slot that phrases share; null when nothing does, as after a suitcase's.
    static std::shared_ptr<Sound> playSoundForPhrase(const QString& path);

    /// @}
};

/// Plays one 'snd ' resource of the file's resource fork, picked at random, and returns when it has been heard. Answers
/// the number of such resources in the file; 0 when it has none or cannot be opened.
int playRandomSndFromSuitcase(const QString& path);

/// Ask before removing a row; shared by the phrase and the events table. 1 except between a Command-Delete and the end
/// of the removal that it starts.
extern bool gConfirmRemove;

/// A text cell of the phrase table is being edited.
extern bool editEntryInProgress;
