#pragma once

#include <QMainWindow>

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

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    PreferencePane& m_pane;
};
