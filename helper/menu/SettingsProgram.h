// SPDX-License-Identifier: MIT
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QString>

/// The program that shows the settings pane: started, or asked to come to the front where it runs.
class SettingsProgram final : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(SettingsProgram)

public:
    explicit SettingsProgram(QObject* parent = nullptr);
    ~SettingsProgram() override;

    /// Shows the pane, at the phrase with the text @p phrase; wherever it is, for an empty one. Returns at once.
    void show(const QString& phrase);

private:
    void ask(bool mayStart);
    void start();
    /// Where the program is: beside the bundle in a build folder, where it is installed, or on the user's path. Empty
    /// when it is nowhere.
    static QString path();

    /// What is to be shown once the pane answers; null when nothing is.
    QString m_phrase;
    QElapsedTimer m_sinceStart;
    bool m_isFollowing = false;
};
