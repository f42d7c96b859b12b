// SPDX-License-Identifier: MIT
#pragma once

#include "ClippingAddition.h"
#include "HelperMenu.h"
#include "HotKeys.h"
#include "SessionLimits.h"
#include "SettingsProgram.h"

#include <platform/bus/DesktopNotification.h>
#include <platform/plist/PropertyList.h>

#include <QObject>
#include <QString>

/// What the user can have the helper do, by its menu or by hot keys: pause, add a phrase, edit phrases, choose one,
/// quit. Main thread only.
class UserCommands final : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(UserCommands)

public:
    explicit UserCommands(QObject* parent = nullptr);
    ~UserCommands() override;

    /// Shows the icon, and reserves the hot keys.
    void begin();

    /// The settings have changed.
    void readSettings() { m_hotKeys.readSettings(); }

    /// The menu shows @p listing from now on; null shows no phrases.
    void showPhrases(const std::shared_ptr<const PhraseListing>& listing) { m_menu.showPhrases(listing); }

    /// The pane has the user type into it, where hot keys are typed, too; or no longer.
    void setHeldByPane(bool isHeld) { m_hotKeys.setHeld(isHeld); }

    /// The phrase that "Edit Clippings" is to show: the one that was heard last.
    void setLastPhrase(const QString& phrase) { m_lastPhrase = phrase; }

    /// Says in the menu and, where there are any, at once by a notification what the limits are and what to do.
    void tellLimits(const SessionLimits& limits);

Q_SIGNALS:
    /// The helper is to be silent and to do nothing, or to go on.
    void paused(bool isPaused);
    /// What is typed is to set nothing off, since it is typed into a dialog of the helper; or it is again.
    void asking(bool isAsking);
    /// Chosen in the menu: to be inserted, and heard.
    void phraseChosen(const PropertyList::DictionaryPointer& entry);
    /// The document on the disk has another phrase.
    void phraseAdded();
    void quitRequested();

private:
    void setPaused(bool isPaused);
    void showRefusedHotKeys();

    HelperMenu m_menu;
    HotKeys m_hotKeys;
    ClippingAddition m_addition;
    SettingsProgram m_settings;
    DesktopNotification m_notification;
    QString m_lastPhrase;
    bool m_isPaused = false;
};
