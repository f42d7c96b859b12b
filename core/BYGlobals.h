// SPDX-License-Identifier: MIT
#pragma once

#include "Changes.h"
#include "Settings.h"
#include "SoundPlayer.h"
#include "SoundsDocument.h"

/// The state that all editors of the pane share, under the names that its documentation gives: the one SoundsDocument
/// in memory, the Settings, the notifications exchanged with the helper, and the SoundPlayer. Class operations only,
/// main thread only.
class BYGlobals final
{
public:
    BYGlobals() = delete;

    /// The domain of the helper's settings, and the object of every notification.
    static const QString& appID() { return helperIdentifier; }

    /// @name The sounds document
    /// @{

    /// Sets the document's path from the settings and, the first time, makes the application-to-document map.
    static void init();

    static void fillArray()
    {
        SoundsDocument::shared().load();
        SoundsDocument::shared().prepareSaving();
    }

    static void sortArray() { SoundsDocument::shared().sort(); }

    static QString defaultFilePath() { return SoundsDocument::shared().path(); }

    static void setDefaultFilePath(const QString& path) { SoundsDocument::shared().setPath(path); }

    static PropertyList::DictionaryPointer file4app() { return applicationDocuments; }

    static PropertyList::DictionaryPointer clippingsDictionary() { return SoundsDocument::shared().root(); }

    static PropertyList::ArrayPointer clippingsArray() { return SoundsDocument::shared().phrases(); }

    static PropertyList::ArrayPointer soundsPrefsArray() { return SoundsDocument::shared().events(); }

    static PropertyList::ArrayPointer soundsPrefsArrayFiltered() { return SoundsDocument::shared().filteredEvents(); }

    /// The "SoundFilepath" of the first phrase entry whose "Phrase" is exactly @p phrase; a null string when none is.
    static QString fullTextFor(const QString& phrase);

    static void writeDocument() { SoundsDocument::shared().save(); }

    /// @}
    /// @name Editing state
    /// @{
    static int selectedClippingRowForEditing() { return selectedRow; }

    static void setSelectedClippingRowForEditing(int row) { selectedRow = row; }

    static int previouslySelectedClippingRow() { return previousRow; }

    static void setPreviouslySelectedClippingRow(int row) { previousRow = row; }

    static bool editEntryPaneTextIsDirty() { return textIsDirty; }

    static void setEditEntryPaneTextIsDirty(bool dirty) { textIsDirty = dirty; }

    static QString lastEditedAbb() { return lastPhrase; }

    static void setLastEditedAbb(const QString& phrase) { lastPhrase = phrase; }

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
    static PropertyList::Value retrieveDateFromUserDefaults(const QString& key) { return Settings::stored(key); }

    static PropertyList::Value retrieveUntypedObjectFromUserDefaults(const QString& key)
    {
        return Settings::stored(key);
    }

    static PropertyList::Value retrieveDataFromUserDefaults(const QString& key) { return Settings::stored(key); }

    /// Finds a value of the helper's domain only once one of the operations above has attached the domain to the
    /// reader; that is meant so.
    static PropertyList::Value retrieveArrayFromUserDefaults(const QString& key);

    /// @}
    /// @name Notifications
    /// @{

    /// Posts the named notification with the helper's object.
    static void sendNotification(const QString& name, const PropertyList::DictionaryPointer& userInfo = {})
    {
        Changes::tell(name, userInfo);
    }

    /// Reloads the document when @p object and @p name are the helper's "Preferences Changed".
    static void prefsChangedHere(const QString& name, const QString& object);

    /// @}
    /// @name Playback
    /// @{

    /// Plays the sound of the first sound event with this code; codes outside 0 to 79 are ignored.
    static void playSoundForEvent(int code) { SoundPlayer::shared().playEvent(code, soundsPrefsArray()); }

    /// Plays the file, suitcase or folder (one of its files at random) at @p path. The sound that plays now, in the
    /// slot that phrases share; null when nothing does, as after a suitcase's.
    static std::shared_ptr<Sound> playSoundForPhrase(const QString& path)
    {
        return SoundPlayer::shared().playPhrase(path);
    }

    /// @}

private:
    inline static PropertyList::DictionaryPointer applicationDocuments;
    inline static int selectedRow = 0;
    inline static int previousRow = 0;
    inline static bool textIsDirty = false;
    inline static QString lastPhrase = QStringLiteral("");
};

/// Ask before removing a row; shared by the phrase and the events table. 1 except between a Command-Delete and the end
/// of the removal that it starts.
inline bool gConfirmRemove = true;

/// A text cell of the phrase table is being edited.
inline bool editEntryInProgress = false;
