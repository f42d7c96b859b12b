// SPDX-License-Identifier: MIT
#include "Typist.h"

#include "WindowClass.h"

#include <product/Product.h>

#include <QLoggingCategory>

#include <xcb/xcb.h>
#include <xcb/xtest.h>
#include <xkbcommon/xkbcommon-keysyms.h>
#include <xkbcommon/xkbcommon.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <iterator>
#include <utility>

using namespace std::chrono_literals;

namespace {

Q_LOGGING_CATEGORY(log, PRODUCT_NAME ".typist")

/// Programs read the key's new meaning from the server when they come to the event; before that it must not change.
constexpr auto restBeforeReuse = 50ms;

/// In characters. Between two parts the server catches up.
constexpr qsizetype longestPart = 256;

constexpr std::array<quint32, 9> keySymbols{XKB_KEY_BackSpace, XKB_KEY_Return, XKB_KEY_Tab, XKB_KEY_Left, XKB_KEY_Up,
    XKB_KEY_Right, XKB_KEY_Down, XKB_KEY_Insert, XKB_KEY_v};

/// The key on which V is on Latin keyboards, for a layout without one.
constexpr quint8 keycodeOfV = 55;

bool hasTestExtension(xcb_connection_t* connection)
{
    const xcb_query_extension_reply_t* const extension = xcb_get_extension_data(connection, &xcb_test_id);
    return extension != nullptr && extension->present != 0;
}

QList<quint32> symbolsOf(const QString& text)
{
    QList<quint32> symbols;
    for (const char32_t character : text.toUcs4()) {
        const quint32 symbol = character == U'\n'   ? XKB_KEY_Return
                               : character == U'\t' ? XKB_KEY_Tab
                                                    : xkb_utf32_to_keysym(character);
        if (symbol != XKB_KEY_NoSymbol) {
            symbols.append(symbol);
        }
    }
    return symbols;
}

} // namespace

std::unique_ptr<Typist> Typist::ofSession()
{
    Xcb::Connection connection = Xcb::connectToServer();
    if (!connection) {
        return nullptr;
    }
    const auto keyboard = ServerKeyboard::of(connection.get(), ServerKeyboard::Follow::State);
    if (!keyboard || !hasTestExtension(connection.get())) {
        qCWarning(log).noquote() << "The X server lacks an extension that presses keys";
        return nullptr;
    }
    return std::unique_ptr<Typist>(new Typist(std::move(connection), *keyboard));
}

Typist::Typist(Xcb::Connection connection, ServerKeyboard keyboard)
    : m_connection(std::move(connection))
    , m_keyboard(keyboard)
    , m_strokes(m_keyboard.readState())
{
    m_rest.setSingleShot(true);
    connect(&m_rest, &QTimer::timeout, this, &Typist::typeNextPart);
    Xcb::whenReadable(m_connection, this, [this] { readEvents(); });
}

Typist::~Typist()
{
    takeMeaningsBack();
}

void Typist::readEvents()
{
    bool isLayoutNew = false;
    while (const Xcb::Reply<xcb_generic_event_t> event{xcb_poll_for_event(m_connection.get())}) {
        const ServerKeyboard::News news = m_keyboard.news(*event);
        isLayoutNew = isLayoutNew || news == ServerKeyboard::News::Layout;
        if (news == ServerKeyboard::News::State) {
            m_strokes.setState(ServerKeyboard::state(*event));
        }
    }
    // The meanings that we give ourselves are news, too, but no other layout.
    if (isLayoutNew && m_lent.isEmpty()) {
        m_strokes = KeyStrokes(m_keyboard.readState());
    }
}

void Typist::strike(const std::vector<Stroke>& strokes)
{
    readEvents();
    std::vector<Chord> chords;
    for (const Stroke& stroke : strokes) {
        if (const auto chord = chordOf(stroke)) {
            chords.push_back(*chord);
        }
    }
    send(chords);
}

void Typist::type(const QString& text)
{
    readEvents();
    m_symbols = symbolsOf(text);
    QMetaObject::invokeMethod(this, &Typist::typeNextPart, Qt::QueuedConnection);
}

quint32 Typist::focus() const
{
    const Xcb::Reply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(m_connection.get(), xcb_get_input_focus(m_connection.get()), nullptr));
    return reply && reply->focus > XCB_INPUT_FOCUS_POINTER_ROOT ? reply->focus : 0;
}

QString Typist::focusClass() const
{
    return WindowClass::around(m_connection.get(), focus());
}

bool Typist::areOfOneProgram(quint32 window, quint32 other) const
{
    // The server gives each of its clients a range of numbers of its own.
    const quint32 within = xcb_get_setup(m_connection.get())->resource_id_mask;
    return ((window ^ other) & ~within) == 0;
}

std::optional<Typist::Chord> Typist::chordOf(const Stroke& stroke) const
{
    const auto keycode = m_strokes.keyInAnyGroup(keySymbols[size_t(stroke.key)]);
    if (!keycode && stroke.key != Key::V) {
        return {};
    }
    Chord chord{keycode.value_or(keycodeOfV), {}, stroke.times};
    for (const auto& [isHeld, symbol] : {std::pair(stroke.withControl, quint32(XKB_KEY_Control_L)),
             std::pair(stroke.withShift, quint32(XKB_KEY_Shift_L))}) {
        if (const auto modifier = isHeld ? m_strokes.keyInAnyGroup(symbol) : std::nullopt) {
            chord.modifiers.push_back(*modifier);
        }
    }
    return chord;
}

/// Nothing when all spare keycodes are in use.
std::optional<Typist::Chord> Typist::chordOfSymbol(quint32 symbol)
{
    if (const auto stroke = m_strokes.find(symbol)) {
        const auto shift = m_strokes.keyInAnyGroup(XKB_KEY_Shift_L);
        return Chord{stroke->keycode, stroke->isShifted && shift ? std::vector{*shift} : std::vector<quint8>(), 1};
    }
    if (const auto given = m_given.constFind(symbol); given != m_given.cend()) {
        return Chord{*given, {}, 1};
    }
    const QList<quint8>& spare = m_strokes.spareKeycodes();
    if (m_given.size() == spare.size()) {
        return {};
    }
    const quint8 keycode = spare[m_given.size()];
    m_given.insert(symbol, keycode);
    m_lent.insert(keycode);
    giveMeaning(keycode, symbol);
    return Chord{keycode, {}, 1};
}

void Typist::send(const std::vector<Chord>& chords)
{
    if (chords.empty()) {
        return;
    }
    const std::vector<quint8> held = heldModifiers();
    for (const quint8 keycode : held) {
        sendKey(keycode, false);
    }
    for (const Chord& chord : chords) {
        for (const quint8 modifier : chord.modifiers) {
            sendKey(modifier, true);
        }
        for (qsizetype count = 0; count < chord.times; ++count) {
            sendKey(chord.keycode, true);
            sendKey(chord.keycode, false);
        }
        for (const quint8 modifier : chord.modifiers) {
            sendKey(modifier, false);
        }
    }
    for (const quint8 keycode : held) {
        sendKey(keycode, true);
    }
    xcb_flush(m_connection.get());
}

void Typist::sendKey(quint8 keycode, bool isDown)
{
    if (isDown) {
        Q_EMIT keyIsPressed(keycode);
    }
    xcb_test_fake_input(
        m_connection.get(), isDown ? XCB_KEY_PRESS : XCB_KEY_RELEASE, keycode, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
}

std::vector<quint8> Typist::heldModifiers() const
{
    const Xcb::Reply<xcb_query_keymap_reply_t> keys(
        xcb_query_keymap_reply(m_connection.get(), xcb_query_keymap(m_connection.get()), nullptr));
    std::vector<quint8> held;
    if (keys) {
        std::ranges::copy_if(m_strokes.modifierKeys(), std::back_inserter(held),
            [&keys](quint8 keycode) { return (keys->keys[keycode / 8] >> (keycode % 8) & 1) != 0; });
    }
    return held;
}

/// As much as there are spare keycodes for; then, after a rest, they get other meanings.
void Typist::typeNextPart()
{
    if (m_symbols.isEmpty()) {
        takeMeaningsBack();
        Q_EMIT typed();
        return;
    }
    m_given.clear();
    std::vector<Chord> chords;
    qsizetype count = 0;
    for (; count < std::min(m_symbols.size(), longestPart); ++count) {
        if (const auto chord = chordOfSymbol(m_symbols[count])) {
            chords.push_back(*chord);
        } else if (!m_given.isEmpty()) {
            break;
        }
    }
    m_symbols.remove(0, count);
    send(chords);
    m_rest.start(m_lent.isEmpty() ? 0ms : restBeforeReuse);
}

/// The meaning counts without modifiers and with Shift.
void Typist::giveMeaning(quint8 keycode, quint32 symbol)
{
    const std::array<xcb_keysym_t, 2> symbols{symbol, symbol};
    xcb_change_keyboard_mapping(m_connection.get(), 1, keycode, quint8(symbols.size()), symbols.data());
}

void Typist::takeMeaningsBack()
{
    for (const quint8 keycode : std::as_const(m_lent)) {
        giveMeaning(keycode, XKB_KEY_NoSymbol);
    }
    m_lent.clear();
    m_given.clear();
    xcb_flush(m_connection.get());
}
