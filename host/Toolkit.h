// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

class QApplication;

/// The toolkit that draws the windows.
namespace Toolkit {

/// The application object. Where no display can be reached the program ends with one line, and the exit code 1; by
/// itself the toolkit would write several and dump core. @p argc and @p argv have to outlive the object.
std::unique_ptr<QApplication> start(int& argc, char** argv);

} // namespace Toolkit
