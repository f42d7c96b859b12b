// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <functional>

class QObject;

/// The helper BlipsyMenu as a process: the copy inside the pane's bundle, found by the service that it registers while
/// it runs. Nothing here waits for the helper.
namespace HelperProcess {

/// The oldest build that may stay running when the pane opens.
inline constexpr qint64 oldestCompatibleBuild = 10012;
/// How long after stop() a new helper may be started, in milliseconds.
inline constexpr int restartDelay = 200;

/// The helper's bundle inside the pane's bundle.
QString bundlePath();

/// Asks whether the helper runs, and hands the answer to @p answered on the thread of @p context, unless that has been
/// destroyed by then. The answer is no where the session bus is absent or does not answer within half a second.
void isRunning(QObject* context, const std::function<void(bool)>& answered);

/// Starts the helper. False, with one log line, when its program is missing or cannot be run.
bool start();

/// Asks every process of the helper's name to end.
void stop();

} // namespace HelperProcess
