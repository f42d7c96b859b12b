// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

class QWidget;

/// The document windows of this process.
namespace FrontmostWindow {

/// The dynamic property under which a window carries its reference constant, a four-character code (quint32).
constexpr const char* referenceConstantProperty = "referenceConstant";

/// The active visible document window, or the first visible one while another program is active; for a sheet (a dialog
/// that belongs to one window) the window that it is attached to. Null where there is none, also in a program
/// without windows.
QWidget* documentWindow();

/// 0 for a window without one.
quint32 referenceConstant(const QWidget* window);

} // namespace FrontmostWindow
