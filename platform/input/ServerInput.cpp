// SPDX-License-Identifier: MIT
#include "ServerInput.h"

#include <QLoggingCategory>
#include <QSocketNotifier>

#include <xcb/xinput.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstring>
#include <utility>

using namespace std::chrono_literals;

namespace {

Q_LOGGING_CATEGORY(log, "blipsy.input")

/// More repetitions than this between two events are no typing.
constexpr quint32 maximumRepetitions = 1'000;

/// From the moment when a key is sent until its event must have come back.
constexpr auto longestWayOfOwnPress = 1s;

constexpr quint32 firstButton = 1;

/// Raw events in spite of the grabs of other clients came with 2.1, 2.2 is in every server of the last ten years.
bool hasInputExtension(xcb_connection_t* connection)
{
    const auto request = xcb_input_xi_query_version(connection, 2, 2);
    const Xcb::Reply<xcb_input_xi_query_version_reply_t> version(
        xcb_input_xi_query_version_reply(connection, request, nullptr));
    return version && std::pair(version->major_version, version->minor_version) >= std::pair<quint16, quint16>(2, 2);
}

/// Leaves nothing of a key in freed memory.
void wipe(xcb_generic_event_t& event)
{
    // Generic events have words beyond the ordinary size, and the library's count of them in between.
    const bool isLonger = (event.response_type & 0x7F) == XCB_GE_GENERIC;
    const auto words = isLonger ? size_t(reinterpret_cast<const xcb_ge_generic_event_t&>(event).length) : 0;
    explicit_bzero(&event, sizeof event + words * sizeof(quint32));
}

} // namespace

std::unique_ptr<ServerInput> ServerInput::create()
{
    Xcb::Connection connection = Xcb::connectToServer();
    if (!connection) {
        return nullptr;
    }
    const std::optional<ServerKeyboard> keyboard = ServerKeyboard::of(connection.get(), ServerKeyboard::Follow::State);
    const std::optional<quint8> extension = keyboard ? inputExtension(connection.get()) : std::nullopt;
    if (!extension) {
        qCWarning(log).noquote() << "The X server lacks an extension that tells what is typed";
        return nullptr;
    }
    selectRawEvents(connection.get(), false);
    return std::unique_ptr<ServerInput>(new ServerInput(std::move(connection), *extension, *keyboard));
}

/// The number by which events name the extension; nothing when the server lacks it.
std::optional<quint8> ServerInput::inputExtension(xcb_connection_t* connection)
{
    const xcb_query_extension_reply_t* const extension = xcb_get_extension_data(connection, &xcb_input_id);
    const bool isThere = extension && extension->present != 0 && hasInputExtension(connection);
    return isThere ? std::optional(extension->major_opcode) : std::nullopt;
}

void ServerInput::selectRawEvents(xcb_connection_t* connection, bool withMotion)
{
    constexpr quint32 always = XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE |
                               XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_RELEASE;

    struct
    {
        xcb_input_event_mask_t head;
        quint32 events;
    } const mask{// From a device and from the master that it is attached to each event would come twice.
        {XCB_INPUT_DEVICE_ALL_MASTER, 1}, always | (withMotion ? quint32(XCB_INPUT_XI_EVENT_MASK_RAW_MOTION) : 0)};

    xcb_screen_iterator_t screen = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (; screen.rem > 0; xcb_screen_next(&screen)) {
        xcb_input_xi_select_events(connection, screen.data->root, 1, &mask.head);
    }
    xcb_flush(connection);
}

ServerInput::ServerInput(Xcb::Connection connection, quint8 inputExtension, ServerKeyboard keyboard)
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

void ServerInput::forget()
{
    if (m_interpreter) {
        m_interpreter->abandonComposition();
    }
    // An answer longer than the buffer, which nobody reads, takes the place of what has come before.
    const xcb_setup_t* const setup = xcb_get_setup(m_connection.get());
    const auto count = quint8(setup->max_keycode - setup->min_keycode + 1);
    const auto request = xcb_get_keyboard_mapping(m_connection.get(), setup->min_keycode, count);
    xcb_discard_reply(m_connection.get(), request.sequence);
    xcb_flush(m_connection.get());
}

void ServerInput::readEvents()
{
    for (;;) {
        const Xcb::Reply<xcb_generic_event_t> event(xcb_poll_for_event(m_connection.get()));
        if (!event) {
            return;
        }
        takeEvent(*event);
        wipe(*event);
    }
}

void ServerInput::takeEvent(const xcb_generic_event_t& event)
{
    switch (m_keyboard.news(event)) {
    case ServerKeyboard::News::State:
        if (m_interpreter) {
            m_interpreter->setState(ServerKeyboard::state(event));
            followCapsLock(m_interpreter->isCapsLocked());
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
    case XCB_INPUT_RAW_BUTTON_RELEASE:
        if (event.detail == firstButton) {
            m_drag.release();
            watchMotion();
        }
        break;
    case XCB_INPUT_RAW_MOTION:
        if (m_drag.move()) {
            Q_EMIT pointerDragged();
        }
        watchMotion();
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
        if (button == firstButton) {
            m_drag.press();
            watchMotion();
        }
        const bool isNamed = button >= 1 && button <= buttons.size();
        Q_EMIT buttonPressed({isNamed ? buttons[button - 1] : Button::Other, time});
    }
}

void ServerInput::watchMotion()
{
    if (m_drag.isWatching() != m_hearsMotion) {
        m_hearsMotion = m_drag.isWatching();
        selectRawEvents(m_connection.get(), m_hearsMotion);
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
        followCapsLock(m_interpreter->isCapsLocked());
    } else {
        qCWarning(log).noquote() << "The X server did not tell its keyboard layout";
    }
}
