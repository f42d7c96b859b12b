// SPDX-License-Identifier: MIT
#pragma once

#include "MenuTitle.h"

#include <platform/plist/PropertyList.h>

#include <QMap>
#include <QMenu>
#include <QObject>

#include <memory>

class PhraseListing;
class PhraseMenu;
class TrayIcon;

/// The helper's menu at its icon among the desktop's status icons: the commands, the phrases as the settings "MenuPref"
/// and "SortPref" say, and what the user has to know. Main thread only.
class HelperMenu final : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HelperMenu)

public:
    /// What "MenuPref" says of the icon: there is none. Heeded when the helper starts.
    static constexpr int noIcon = 4;

    /// What the user has to know, in the order in which the menu tells it.
    enum class Notice { Typing, Texts, HotKeys };

    explicit HelperMenu(QObject* parent = nullptr);
    ~HelperMenu() override;

    /// Shows the icon as soon as there is a place for it, unless the settings say that there is none.
    void show();

    /// Shows @p listing from now on; null shows no phrases.
    void showPhrases(const std::shared_ptr<const PhraseListing>& listing);

    /// Says so in the menu and by the icon; writes "ArrowPref".
    void setPaused(bool paused);

    /// Puts an item into the menu that says @p title, and @p explanation when it is chosen, and the title into the
    /// icon's tool tip; an empty title takes both out.
    void setNotice(Notice notice, const QString& title, const QString& explanation);

Q_SIGNALS:
    void pauseRequested(bool paused);
    void addRequested();
    void editRequested();
    void phraseChosen(const PropertyList::DictionaryPointer& entry);
    void explanationRequested(const QString& title, const QString& explanation);
    void quitRequested();

private:
    void addCommands();
    void fillPhrases();
    void showNotices();
    void showAbout();

    QMenu m_menu;
    /// Notices stand before it, ...
    QAction* m_firstSeparator = nullptr;
    QAction* m_pause = nullptr;
    /// ... and phrases before this one.
    QAction* m_lastSeparator = nullptr;
    QMap<Notice, QAction*> m_notices;
    PhraseMenu* m_phraseMenu = nullptr;
    std::shared_ptr<const PhraseListing> m_listing;
    MenuTitle::Drawn m_drawn = MenuTitle::Drawn::ByToolkit;
    bool m_isPaused = false;
    /// Goes first: it shows the menu.
    std::unique_ptr<TrayIcon> m_icon;
};
