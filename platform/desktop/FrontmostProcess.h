// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <optional>

/// The program that the user is working with.
namespace FrontmostProcess {

/// The result code that stands for "no such process".
constexpr int processNotFoundError = -600;

/// The name of the program whose window is active: the file name of its executable, or its window class where the
/// process cannot be looked at. Asked of the window manager (_NET_ACTIVE_WINDOW, _NET_WM_PID). In a session without an
/// X server the answer is this program while it is active itself, and nothing otherwise.
std::optional<QString> name();

} // namespace FrontmostProcess
