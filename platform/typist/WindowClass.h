// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

struct xcb_connection_t;

namespace WindowClass {

/// The second half of WM_CLASS of @p window or, where a program has given the focus to a part of its window, of the
/// nearest window around it that has one. Empty where none has. Waits for the server's answers.
QString around(xcb_connection_t* connection, quint32 window);

} // namespace WindowClass
