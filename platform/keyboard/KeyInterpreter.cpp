// SPDX-License-Identifier: MIT
#include "KeyInterpreter.h"

#include <QStringDecoder>

#include <xkbcommon/xkbcommon-compose.h>
#include <xkbcommon/xkbcommon-keysyms.h>
#include <xkbcommon/xkbcommon.h>

#include <algorithm>
#include <cstdlib>

namespace {

using Key = KeyMeaning::Key;

/// The locale by which programs compose: the first of the variables that is set.
const char* localeOfText()
{
    for (const char* name : {"LC_ALL", "LC_CTYPE", "LANG"}) {
        const char* const value = std::getenv(name);
        if (value && *value != '\0') {
            return value;
        }
    }
    return "C";
}

bool isSilent(xkb_keysym_t symbol)
{
    const bool isModifier = symbol >= XKB_KEY_Shift_L && symbol <= XKB_KEY_Hyper_R;
    const bool isLevelOrLock = symbol >= XKB_KEY_ISO_Lock && symbol < XKB_KEY_ISO_Left_Tab;
    const bool isDeadKey = symbol >= XKB_KEY_dead_grave && symbol < XKB_KEY_First_Virtual_Screen;
    const bool isMediaKey = symbol >= 0x10080000 && symbol <= 0x1008FFFF;
    return isModifier || isLevelOrLock || isDeadKey || isMediaKey || symbol == XKB_KEY_NoSymbol ||
           symbol == XKB_KEY_Multi_key || symbol == XKB_KEY_Mode_switch || symbol == XKB_KEY_Num_Lock ||
           symbol == XKB_KEY_Scroll_Lock;
}

/// Of a key that is no character.
Key keyOf(xkb_keysym_t symbol)
{
    switch (symbol) {
    case XKB_KEY_BackSpace:
        return Key::BackSpace;
    case XKB_KEY_Delete:
    case XKB_KEY_KP_Delete:
        return Key::Delete;
    case XKB_KEY_Return:
    case XKB_KEY_KP_Enter:
        return Key::Return;
    case XKB_KEY_Tab:
    case XKB_KEY_KP_Tab:
    case XKB_KEY_ISO_Left_Tab:
        return Key::Tab;
    case XKB_KEY_Escape:
        return Key::Escape;
    case XKB_KEY_Left:
    case XKB_KEY_KP_Left:
        return Key::Left;
    case XKB_KEY_Right:
    case XKB_KEY_KP_Right:
        return Key::Right;
    case XKB_KEY_Up:
    case XKB_KEY_KP_Up:
        return Key::Up;
    case XKB_KEY_Down:
    case XKB_KEY_KP_Down:
        return Key::Down;
    default:
        return isSilent(symbol) ? Key::Silent : Key::Other;
    }
}

bool hasText(Key key)
{
    return key == Key::Character || key == Key::Return || key == Key::Tab || key == Key::Escape;
}

/// The text that @p fill puts into a buffer, whose length it answers.
template <typename Fill>
KeyText textOf(Fill&& fill)
{
    std::array<char, KeyText::maximum + 1> utf8{};
    const int size = fill(utf8.data(), utf8.size());
    return KeyText(QByteArrayView(utf8.data(), std::clamp<qsizetype>(size, 0, KeyText::maximum)));
}

} // namespace

KeyText::KeyText(QByteArrayView utf8)
{
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QByteArrayView taken = utf8.first(std::min<qsizetype>(utf8.size(), maximum));
    m_size = decoder.appendToBuffer(m_units.data(), taken) - m_units.data();
}

KeyInterpreter::KeyInterpreter(Xkb::State state)
    : m_state(std::move(state))
{
    const Xkb::Context context = Xkb::contextWithoutFiles();
    const Xkb::ComposeTable table(
        context ? xkb_compose_table_new_from_locale(context.get(), localeOfText(), XKB_COMPOSE_COMPILE_NO_FLAGS)
                : nullptr);
    m_composition.reset(table ? xkb_compose_state_new(table.get(), XKB_COMPOSE_STATE_NO_FLAGS) : nullptr);
}

void KeyInterpreter::setState(const KeyboardState& state)
{
    xkb_state_update_mask(m_state.get(), state.baseModifiers, state.latchedModifiers, state.lockedModifiers,
        state.baseGroup, state.latchedGroup, state.lockedGroup);
}

void KeyInterpreter::follow(quint32 xkbKeycode, bool isDown)
{
    xkb_state_update_key(m_state.get(), xkbKeycode, isDown ? XKB_KEY_DOWN : XKB_KEY_UP);
}

KeyMeaning KeyInterpreter::press(quint32 xkbKeycode)
{
    const xkb_keysym_t symbol = xkb_state_key_get_one_sym(m_state.get(), xkbKeycode);
    KeyMeaning meaning;
    meaning.key = keyOf(symbol);
    meaning.isShortcut = meaning.key != Key::Silent && isShortcut(xkbKeycode);
    if (meaning.isShortcut) {
        abandonComposition();
        return meaning;
    }
    if (m_composition && xkb_compose_state_feed(m_composition.get(), symbol) == XKB_COMPOSE_FEED_ACCEPTED) {
        switch (xkb_compose_state_get_status(m_composition.get())) {
        case XKB_COMPOSE_COMPOSED:
            return {Key::Character, false, textOf([this](char* buffer, size_t size) {
                        return xkb_compose_state_get_utf8(m_composition.get(), buffer, size);
                    })};
        case XKB_COMPOSE_COMPOSING:
        case XKB_COMPOSE_CANCELLED:
            // The key that no sequence goes on with is swallowed, too.
            return {Key::Silent, false, {}};
        case XKB_COMPOSE_NOTHING:
            break;
        }
    }
    const KeyText text = textOf([this, xkbKeycode](char* buffer, size_t size) {
        return xkb_state_key_get_utf8(m_state.get(), xkbKeycode, buffer, size);
    });
    if (meaning.key == Key::Other && !text.view().isEmpty()) {
        meaning.key = Key::Character;
    }
    if (hasText(meaning.key)) {
        meaning.text = text;
    }
    return meaning;
}

bool KeyInterpreter::isCapsLocked() const
{
    return xkb_state_mod_name_is_active(m_state.get(), XKB_MOD_NAME_CAPS, XKB_STATE_MODS_LOCKED) > 0;
}

void KeyInterpreter::abandonComposition()
{
    if (m_composition) {
        xkb_compose_state_reset(m_composition.get());
    }
}

bool KeyInterpreter::isShortcut(quint32 xkbKeycode) const
{
    xkb_keymap* const keymap = xkb_state_get_keymap(m_state.get());
    constexpr std::array names{XKB_MOD_NAME_CTRL, XKB_MOD_NAME_ALT, XKB_MOD_NAME_LOGO};
    return std::ranges::any_of(names, [&](const char* name) {
        const xkb_mod_index_t modifier = xkb_keymap_mod_get_index(keymap, name);
        // A modifier that the key's level depends on has done its work with the choice of the character.
        return xkb_state_mod_index_is_active(m_state.get(), modifier, XKB_STATE_MODS_EFFECTIVE) > 0 &&
               xkb_state_mod_index_is_consumed(m_state.get(), xkbKeycode, modifier) == 0;
    });
}
