// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <vector>

class ApplicationsTab;
class BYlauncher;
class EditPane;
class EventsTab;
class OptionsTab;
class PhrasesTab;
class QTabWidget;
class QWidget;
class SoundPanelAccessory;

/// The pane's interface: its four tabs, each with its controller, the edit pane, the launcher's controller, and the
/// connections between them.
///
/// Building connects every outlet and action but sets nothing up. Each controller's set-up is then run once, in any
/// order: none relies on another's having run.
class Interface final
{
public:
    Interface();
    ~Interface();
    Interface(const Interface&) = delete;
    Interface& operator=(const Interface&) = delete;
    Interface(Interface&&) = delete;
    Interface& operator=(Interface&&) = delete;

    /// The whole interface. Owned here; a host may put it into a window of its own and takes it out again.
    QWidget* view() const;

    /// The controllers' set-ups (`awakeFromNib`) but the launcher's, in the order in which they are usually run.
    std::vector<std::function<void()>> setUps();
    /// The launcher's, which may start the helper.
    void setUpLauncher();

    /// The tabs' names, untranslated.
    static QStringList tabNames();
    /// Shows a tab; false when there is none of that name.
    bool selectTab(const QString& name);

    /// Makes the document at @p path the one in use.
    void openDocument(const QString& path);
    /// Asks about text that has not been saved, before the view goes away.
    void willUnselect();

private:
    void addTabs();
    void connectTable();
    void connectLauncher();

    std::unique_ptr<SoundPanelAccessory> m_soundPanel;
    std::unique_ptr<QWidget> m_view;
    /// @name Parts of the view
    /// @{
    QTabWidget* m_tabs;
    PhrasesTab* m_phrases;
    EditPane* m_editPane;
    EventsTab* m_events;
    OptionsTab* m_options;
    /// The last of them, since it loads the document, which is read meanwhile.
    ApplicationsTab* m_applications;
    /// @}
    std::unique_ptr<BYlauncher> m_launcher;
};
