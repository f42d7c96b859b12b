// SPDX-License-Identifier: MIT
#pragma once

#include "KeyInterpreter.h"
#include "XkbHandles.h"

#include <xcb/xcb.h>

#include <array>
#include <chrono>
#include <optional>

/// How the X server repeats keys that are held down.
struct KeyRepetition
{
    /// A bit for each keycode, the lowest first; all 0 while the repetition is off.
    std::array<quint8, 32> keys{};
    /// From the press to the first repetition, and from one to the next.
    std::chrono::milliseconds delay{0};
    std::chrono::milliseconds interval{0};

    bool repeats(quint8 keycode) const { return interval.count() > 0 && (keys[keycode / 8] >> (keycode % 8) & 1) != 0; }
};

/// The X server's core keyboard, as one connection sees it. The connection must live as long as this object.
class ServerKeyboard final
{
public:
    /// What the connection is told of, besides changes of the layout.
    enum class Follow { Group, State };
    /// What an event of the connection tells.
    enum class News { None, Layout, State, Repetition };

    /// Asks the server to tell this connection of changes. Nothing where it lacks the keyboard extension.
    static std::optional<ServerKeyboard> of(xcb_connection_t* connection, Follow follow);

    News news(const xcb_generic_event_t& event) const;
    /// What an event with News::State tells.
    static KeyboardState state(const xcb_generic_event_t& event);

    /// Asks the server, and waits for its answers, for the layout and the state that count now; null when it did not
    /// tell.
    Xkb::State readState() const;
    /// The same for the repetition of keys; all zero when it did not tell.
    KeyRepetition readRepetition() const;

private:
    ServerKeyboard(xcb_connection_t* connection, quint8 firstEvent);
    void selectEvents(Follow follow) const;

    xcb_connection_t* m_connection;
    qint32 m_device;
    quint8 m_firstEvent;
};
