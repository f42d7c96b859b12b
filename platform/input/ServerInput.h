// SPDX-License-Identifier: MIT
#pragma once

#include "DragDetector.h"
#include "InputWatcher.h"

#include <platform/keyboard/ServerKeyboard.h>
#include <platform/keyboard/XcbHandles.h>

#include <QDeadlineTimer>

#include <deque>
#include <optional>

struct xcb_input_raw_key_press_event_t;

/// What is typed and clicked on the X server, through raw events (XInput 2) of a connection of its own. No grab; grabs
/// of other programs do not hide anything. Why so: docs/decisions/typed-keys.md.
///
/// Raw events do not tell of the server's repetition of a key. It is reckoned from the server's delay and interval, and
/// told when something else happens, before that: after a long press the count may be one off.
class ServerInput final : public InputWatcher
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(ServerInput)

public:
    /// Null where there is no X server, or one without XInput 2.2 or the keyboard extension.
    static std::unique_ptr<ServerInput> create();

    ~ServerInput() override;

    void passOver(quint8 keycode) override;
    /// The library's buffer of what has come holds the last dozens of events until others take their place.
    void forget() override;

private:
    /// The key that the server repeats.
    struct HeldKey
    {
        quint8 keycode = 0;
        InputTime since = 0;
        /// How many repetitions have been told.
        quint32 told = 0;
    };

    /// A press that this program has sent.
    struct OwnPress
    {
        quint8 keycode = 0;
        QDeadlineTimer until;
    };

    ServerInput(Xcb::Connection connection, quint8 inputExtension, ServerKeyboard keyboard);
    static std::optional<quint8> inputExtension(xcb_connection_t* connection);
    static void selectRawEvents(xcb_connection_t* connection, bool withMotion);
    void readEvents();
    void takeEvent(const xcb_generic_event_t& event);
    void takeRawEvent(const xcb_input_raw_key_press_event_t& event, quint16 type);
    bool isOwnPress(quint8 keycode);
    void takeKeyPress(quint8 keycode, InputTime time);
    void takeButtonPress(quint32 button, InputTime time);
    void watchMotion();
    void tellRepetitions(InputTime now);
    void readLayout();

    Xcb::Connection m_connection;
    quint8 m_inputExtension;
    ServerKeyboard m_keyboard;
    KeyRepetition m_repetition;
    /// Nothing when the server did not tell the layout.
    std::optional<KeyInterpreter> m_interpreter;
    std::optional<HeldKey> m_held;
    /// In the order in which they were sent, which is that of their events.
    std::deque<OwnPress> m_ownPresses;
    DragDetector m_drag;
    /// Selected only while it may be a drag: a pointer that moves otherwise does not wake this process.
    bool m_hearsMotion = false;
};
