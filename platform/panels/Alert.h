// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <functional>

class QWidget;

/// Modal questions.
namespace Alert {

constexpr int defaultReturn = 1;
constexpr int alternateReturn = 0;
constexpr int firstButtonReturn = 1000;
constexpr int secondButtonReturn = 1001;

/// What Escape and the close box do.
enum class Dismissal {
    AnswersAlternate,
    /// Nothing: neither answer leaves things as they are, so one of them has to be given.
    IsRefused
};

/// Runs an application-modal alert panel and returns 1 for the default button, 0 for the alternate one. An empty
/// @p alternateButton leaves that button out.
int runAlertPanel(QWidget* parent, const QString& title, const QString& message, const QString& defaultButton,
    const QString& alternateButton, Dismissal dismissal = Dismissal::AnswersAlternate);

/// Shows a warning as a sheet on @p window and returns at once; @p didEnd hears 1000 for the first button, 1001 for the
/// second and for closing it. The window is blocked for input until then.
void beginSheet(QWidget* window, const QString& messageText, const QString& informativeText, const QString& firstButton,
    const QString& secondButton, std::function<void(int)> didEnd);

/// The desktop's alert sound.
void beep();

} // namespace Alert
