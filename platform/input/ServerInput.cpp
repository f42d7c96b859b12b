// SPDX-License-Identifier: MIT
#include "ServerInput.h"

#include <QLoggingCategory>
#include <QSocketNotifier>

#include <xcb/xinput.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>
#include <utility>

using namespace std::chrono_literals;

namespace {

Q_LOGGING_CATEGORY(log, "blipsy.input")

/// More repetitions than this between two events are no typing.
constexpr quint32 maximumRepetitions = 1'000;

/// From the moment when a key is sent until its event must have come back.
constexpr auto longestWayOfOwnPress = 1s;

template <typename Type>
using Reply = std::unique_ptr<Type, decltype(&std::free)>;

/// Raw events in spite of the grabs of other clients came with 2.1, 2.2 is in every server of the last ten years.
bool hasInputExtension(xcb_connection_t* connection)
{
    const auto request = xcb_input_xi_query_version(connection, 2, 2);
    const Reply<xcb_input_xi_query_version_reply_t> version(
        xcb_input_xi_query_version_reply(connection, request, nullptr), &std::free);
    return version && std::pair(version->major_version, version->minor_version) >= std::pair<quint16, quint16>(2, 2);
}

} // namespace

void ServerInput::Disconnect::operator()(xcb_connection_t* connection) const
{
    xcb_disconnect(connection);
}

std::unique_ptr<ServerInput> ServerInput::create()
{
    // A connection that fails is an object all the same, and must be closed like any other.
    Connection connection(qEnvironmentVariableIsSet("DISPLAY") ? xcb_connect(nullptr, nullptr) : nullptr);
    if (!connection || xcb_connection_has_error(connection.get()) != 0) {
        return nullptr;
    }
    const std::optional<ServerKeyboard> keyboard = ServerKeyboard::of(connection.get(), ServerKeyboard::Follow::State);
    const std::optional<quint8> extension = keyboard ? selectRawEvents(connection.get()) : std::nullopt;
    if (!extension) {
        qCWarning(log).noquote() << "The X server lacks an extension that tells what is typed";
        return nullptr;
    }
    return std::unique_ptr<ServerInput>(new ServerInput(std::move(connection), *extension, *keyboard));
}

/// Answers the number by which events name the extension; nothing when the server lacks it.
std::optional<quint8> ServerInput::selectRawEvents(xcb_connection_t* connection)
{
    const xcb_query_extension_reply_t* const extension = xcb_get_extension_data(connection, &xcb_input_id);
    if (!extension || extension->present == 0 || !hasInputExtension(connection)) {
        return {};
    }

    struct
    {
        xcb_input_event_mask_t head;
        quint32 events;
    } const mask{// From a device and from the master that it is attached to each event would come twice.
        {XCB_INPUT_DEVICE_ALL_MASTER, 1}, XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS |
                                              XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE |
                                              XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS};

    xcb_screen_iterator_t screen = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (; screen.rem > 0; xcb_screen_next(&screen)) {
        xcb_input_xi_select_events(connection, screen.data->root, 1, &mask.head);
    }
    xcb_flush(connection);
    return extension->major_opcode;
}

ServerInput::ServerInput(Connection connection, quint8 inputExtension, ServerKeyboard keyboard)
    : m_connection(std::move(connection))
    , m_inputExtension(inputExtension)
    , m_keyboard(keyboard)
{
    readLayout();
    auto* const notifier =
        new QSocketNotifier(xcb_get_file_descriptor(m_connection.get()), QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this, notifier] {
        readEvents();
        if (xcb_connection_has_error(m_connection.get()) != 0) {
            notifier->setEnabled(false);
            Q_EMIT ended();
        }
    });
    // Reading the replies has read the events before them too, of which the notifier will not tell.
    QMetaObject::invokeMethod(this, &ServerInput::readEvents, Qt::QueuedConnection);
}

ServerInput::~ServerInput() = default;

void ServerInput::readEvents()
{
    for (;;) {
        const Reply<xcb_generic_event_t> event(xcb_poll_for_event(m_connection.get()), &std::free);
        if (!event) {
            return;
        }
        takeEvent(*event);
    }
}

void ServerInput::takeEvent(const xcb_generic_event_t& event)
{
    switch (m_keyboard.news(event)) {
    case ServerKeyboard::News::State:
        if (m_interpreter) {
            m_interpreter->setState(ServerKeyboard::state(event));
        }
        return;
    case ServerKeyboard::News::Layout:
        readLayout();
        return;
    case ServerKeyboard::News::Repetition:
        m_repetition = m_keyboard.readRepetition();
        return;
    case ServerKeyboard::News::None:
        break;
    }
    const auto& raw = reinterpret_cast<const xcb_input_raw_key_press_event_t&>(event);
    if ((event.response_type & 0x7F) == XCB_GE_GENERIC && raw.extension == m_inputExtension) {
        takeRawEvent(raw, raw.event_type);
    }
}

/// A press of a key or a button; they have the same fields.
void ServerInput::takeRawEvent(const xcb_input_raw_key_press_event_t& event, quint16 type)
{
    tellRepetitions(event.time);
    switch (type) {
    case XCB_INPUT_RAW_KEY_PRESS:
        takeKeyPress(quint8(event.detail), event.time);
        break;
    case XCB_INPUT_RAW_KEY_RELEASE:
        if (m_held && m_held->keycode == event.detail) {
            m_held.reset();
        }
        break;
    case XCB_INPUT_RAW_BUTTON_PRESS:
        takeButtonPress(event.detail, event.time);
        break;
    default:
        break;
    }
}

void ServerInput::passOver(quint8 keycode)
{
    m_ownPresses.push_back({keycode, QDeadlineTimer(longestWayOfOwnPress)});
}

bool ServerInput::isOwnPress(quint8 keycode)
{
    while (!m_ownPresses.empty() && m_ownPresses.front().until.hasExpired()) {
        m_ownPresses.pop_front();
    }
    if (m_ownPresses.empty() || m_ownPresses.front().keycode != keycode) {
        return false;
    }
    m_ownPresses.pop_front();
    return true;
}

void ServerInput::takeKeyPress(quint8 keycode, InputTime time)
{
    if (isOwnPress(keycode)) {
        return;
    }
    // A key that is not repeated, such as a modifier, does not end the repetition of another.
    if (m_repetition.repeats(keycode)) {
        m_held = HeldKey{keycode, time, 0};
    }
    if (m_interpreter) {
        Q_EMIT keyPressed({m_interpreter->press(keycode), time, false});
    }
}

void ServerInput::takeButtonPress(quint32 button, InputTime time)
{
    using Button = ButtonPress::Button;
    using Direction = WheelTurn::Direction;
    constexpr std::array buttons{Button::Left, Button::Middle, Button::Right};
    constexpr std::array directions{Direction::Up, Direction::Down, Direction::Left, Direction::Right};
    constexpr quint32 firstWheel = 4;
    if (button >= firstWheel && button < firstWheel + directions.size()) {
        Q_EMIT wheelTurned({directions[button - firstWheel], time});
    } else {
        const bool isNamed = button >= 1 && button <= buttons.size();
        Q_EMIT buttonPressed({isNamed ? buttons[button - 1] : Button::Other, time});
    }
}

void ServerInput::tellRepetitions(InputTime now)
{
    if (!m_held || !m_interpreter) {
        return;
    }
    const auto delay = quint32(m_repetition.delay.count());
    const auto interval = quint32(m_repetition.interval.count());
    const quint32 elapsed = now - m_held->since;
    // Events of several devices may come a little out of order.
    if (qint32(elapsed) < 0 || elapsed < delay || !m_repetition.repeats(m_held->keycode)) {
        return;
    }
    const quint32 count = (elapsed - delay) / interval + 1;
    for (quint32 left = std::min(count - m_held->told, maximumRepetitions); left > 0; --left) {
        Q_EMIT keyPressed({m_interpreter->press(m_held->keycode), now, true});
    }
    m_held->told = count;
}

void ServerInput::readLayout()
{
    m_repetition = m_keyboard.readRepetition();
    if (Xkb::State state = m_keyboard.readState()) {
        m_interpreter.emplace(std::move(state));
    } else {
        qCWarning(log).noquote() << "The X server did not tell its keyboard layout";
    }
}
