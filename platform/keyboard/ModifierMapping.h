// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

struct xcb_connection_t;

/// Which of the X server's eight modifier bits (1, 2, 4 … 128) the keys of a modifier set, as the keyboard is mapped
/// now; 0 where no key of that name sets one.
struct ModifierMapping
{
    quint16 super = 0;
    quint16 alt = 0;
    quint16 numLock = 0;

    static ModifierMapping ofServer(xcb_connection_t* connection);
};
