// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

class QWidget;

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
    explicit OpenPanel(QWidget* parent = nullptr);
    ~OpenPanel();
    OpenPanel(const OpenPanel&) = delete;
    OpenPanel& operator=(const OpenPanel&) = delete;
    OpenPanel(OpenPanel&&) = delete;
    OpenPanel& operator=(OpenPanel&&) = delete;

    void setTitle(const QString& title);
    void setAllowsMultipleSelection(bool allow);
    /// By default files can be chosen and directories cannot.
    void setCanChooseDirectories(bool can);
    void setCanChooseFiles(bool can);
    /// A widget shown below the file list while the panel runs; it goes back to its parent, hidden, afterwards.
    void setAccessoryView(QWidget* view);
    /// Called on each change of the panel's selection.
    void setSelectionDidChange(std::function<void()> handler);

    /// Runs the panel: 1 when the user has chosen, 0 when not. @p directory is the folder shown first (the home folder
    /// when it does not exist), @p file the name preselected, @p types what can be chosen (all files when empty).
    int runModalForDirectory_file_types(const QString& directory, const QString& file, const QStringList& types);

    /// The absolute paths selected now or, afterwards, chosen, without a slash at their ends.
    QStringList filenames() const;
    /// Shows another folder while the panel runs.
    void setDirectory(const QString& path);

private:
    class Implementation;

    std::unique_ptr<Implementation> m_implementation;
};
