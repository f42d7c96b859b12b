// SPDX-License-Identifier: MIT
#pragma once

#include "InputWatcher.h"

#include <platform/keyboard/ServerKeyboard.h>

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

private:
    struct Disconnect
    {
        void operator()(xcb_connection_t* connection) const;
    };

    using Connection = std::unique_ptr<xcb_connection_t, Disconnect>;

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

    ServerInput(Connection connection, quint8 inputExtension, ServerKeyboard keyboard);
    static std::optional<quint8> selectRawEvents(xcb_connection_t* connection);
    void readEvents();
    void takeEvent(const xcb_generic_event_t& event);
    void takeRawEvent(const xcb_input_raw_key_press_event_t& event, quint16 type);
    bool isOwnPress(quint8 keycode);
    void takeKeyPress(quint8 keycode, InputTime time);
    void takeButtonPress(quint32 button, InputTime time);
    void tellRepetitions(InputTime now);
    void readLayout();

    Connection m_connection;
    quint8 m_inputExtension;
    ServerKeyboard m_keyboard;
    KeyRepetition m_repetition;
    /// Nothing when the server did not tell the layout.
    std::optional<KeyInterpreter> m_interpreter;
    std::optional<HeldKey> m_held;
    /// In the order in which they were sent, which is that of their events.
    std::deque<OwnPress> m_ownPresses;
};
