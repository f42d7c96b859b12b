// SPDX-License-Identifier: MIT
#pragma once

/// What the host has to know of the session bus before it goes near it.
namespace SessionBus {

enum class State {
    /// There is none.
    Absent,
    /// It takes connections but says nothing.
    Hung,
    Answering,
};

/// Waits up to two seconds for the bus to greet a new connection.
State state();

/// Makes the toolkit believe that there is no session bus. It would wait for a hung one for ever, with no window. What
/// has a connection of its own, as the pane has, is not concerned, nor are child processes. Call before the toolkit has
/// used the bus.
void hideFromToolkit();

} // namespace SessionBus
