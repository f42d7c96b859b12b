// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

class Matrix;

/// The switch that starts the helper and makes it a login item, or stops it and removes the login item.
class BYlauncher final : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(BYlauncher)

public:
    explicit BYlauncher(QObject* parent = nullptr);
    ~BYlauncher() override;

    /// Two radio cells in row 0: column 0 on, column 1 off. Null is left out.
    Matrix* onOffRadioButton = nullptr;

    /// Shows whether the helper runs, as soon as that is known, and replaces a helper of an outdated build.
    void awakeFromNib();
    /// Starts the helper 0.2 seconds later; does nothing when a start has been asked for since the last off().
    void on(QObject* sender);
    /// Stops the helper and removes its login item.
    void off(QObject* sender);
    /// Adds the login item and starts the helper, unless it runs.
    void handleTimer();

private:
    void start();
    void showRunning(bool running);
};
