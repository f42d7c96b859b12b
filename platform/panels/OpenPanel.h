// SPDX-License-Identifier: MIT
#pragma once

#include "PanelTypes.h"

#include <QPointer>
#include <QWidget>

#include <functional>
#include <utility>

class FilePanel;

constexpr int okButton = 1;
constexpr int cancelButton = 0;

/// A modal panel in which the user chooses existing files or folders.
///
/// File types are extensions ("aiff"; compared without regard to case) and classic types between apostrophes ('SFIL');
/// folders can always be entered. The type "app" offers applications: `.desktop` entries and `.app` bundles, shown with
/// the name and icon that the desktop gives them, and the folder "/Applications" shows all of the desktop's.
class OpenPanel final
{
public:
    explicit OpenPanel(QWidget* parent = nullptr)
        : m_parent(parent)
    {
    }

    void setTitle(const QString& title) { m_title = title; }

    void setAllowsMultipleSelection(bool allow) { m_rules.allowsMultipleSelection = allow; }

    /// By default files can be chosen and directories cannot.
    void setCanChooseDirectories(bool can) { m_rules.canChooseDirectories = can; }

    void setCanChooseFiles(bool can) { m_rules.canChooseFiles = can; }

    /// A folder that is offered beside the file list, among the user's own places, while the panel runs. One that is
    /// not there is left out.
    void setPlace(const QString& folder) { m_place = folder; }

    /// A widget shown below the file list while the panel runs; it goes back to its parent, hidden, afterwards.
    void setAccessoryView(QWidget* view) { m_accessory = view; }

    /// Called on each change of the panel's selection.
    void setSelectionDidChange(std::function<void()> handler) { m_selectionDidChange = std::move(handler); }

    /// Runs the panel: 1 when the user has chosen, 0 when not. @p directory is the folder shown first (the home folder
    /// when it does not exist), @p file the name preselected, @p types what can be chosen (all files when empty).
    int runModalForDirectory_file_types(const QString& directory, const QString& file, const QStringList& types);

    /// The absolute paths selected now or, afterwards, chosen, without a slash at their ends.
    QStringList filenames() const { return m_filenames; }

    /// Shows another folder while the panel runs.
    void setDirectory(const QString& path);

private:
    int chooseApplication();
    int browse(const QString& directory, const QString& file);
    void noteSelection(const QStringList& paths);

    QPointer<QWidget> m_parent;
    QString m_title;
    PanelRules m_rules;
    QString m_place;
    QPointer<QWidget> m_accessory;
    std::function<void()> m_selectionDidChange;
    /// The file browser while it runs.
    QPointer<FilePanel> m_filePanel;
    QStringList m_filenames;
};
