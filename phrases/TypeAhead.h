// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// The keys typed into the phrase table to find a phrase. A run lasts one second from its first key, not from its last.
struct TypeAhead
{
    QString abbFrag;
    /// When abbFrag was last emptied, in seconds of a clock that only goes forward.
    double lastTime = 0;

    /// Empties the buffer when the run that began at lastTime is over at @p now.
    void beginRunIfOver(double now);
};
