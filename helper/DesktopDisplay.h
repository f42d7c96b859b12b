// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

class QApplication;

/// The desktop that the helper shows itself on, if there is one.
namespace DesktopDisplay {

/// The application object, on the session's display; where none can be reached, without one, after a line in the log
/// (unless that is what the environment asks for): then there is no icon and no clipboard, and the rest works. The
/// toolkit by itself would end the process. @p argc and
/// @p argv have to outlive the object.
std::unique_ptr<QApplication> start(int& argc, char** argv);

/// Whether start() has reached a display.
bool isThere();

} // namespace DesktopDisplay
