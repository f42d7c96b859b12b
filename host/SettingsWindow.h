// SPDX-License-Identifier: MIT
#pragma once

#include <QMainWindow>

#include <optional>

class PreferencePane;

/// The host's window: a frame around the pane's view that remembers its size and place.
class SettingsWindow final : public QMainWindow
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(SettingsWindow)

public:
    /// @p pane stays its owner's and outlives the window.
    explicit SettingsWindow(PreferencePane& pane);
    ~SettingsWindow() override;

    /// Saves a picture of every tab as `NAME.png` in @p folder, which is made when it is missing, and prints the paths.
    /// False when one could not be saved.
    bool saveScreenshots(const QString& folder);

    /// Shows the window before all others, as if it had just been opened with @p document (an absolute path) and @p
    /// tab; either may be empty. While a dialog is open that is shown instead, and the rest is done when it has closed.
    /// @p activationToken is the desktop's permission to take the keyboard, or empty.
    void present(const QString& document, const QString& tab, const QString& activationToken);

protected:
    bool event(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    /// What is to be shown once no dialog is open.
    struct Wanted
    {
        QString document;
        QString tab;
    };

    void showWanted();

    PreferencePane& m_pane;
    std::optional<Wanted> m_wanted;
};
