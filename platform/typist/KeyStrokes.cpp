// SPDX-License-Identifier: MIT
#include "KeyStrokes.h"

#include <xkbcommon/xkbcommon-keysyms.h>
#include <xkbcommon/xkbcommon.h>

#include <algorithm>
#include <limits>
#include <utility>

namespace {

/// Calls @p found for every keycode that a server can have.
template <typename Function>
void forEachKeycode(xkb_keymap* keymap, Function&& found)
{
    const auto last = std::min<xkb_keycode_t>(xkb_keymap_max_keycode(keymap), std::numeric_limits<quint8>::max());
    for (auto keycode = xkb_keymap_min_keycode(keymap); keycode <= last; ++keycode) {
        found(quint8(keycode));
    }
}

/// What the key gives in a group without modifiers; 0 for nothing, or for several symbols at once.
xkb_keysym_t plainSymbol(xkb_keymap* keymap, quint8 keycode, xkb_layout_index_t group)
{
    const xkb_keysym_t* symbols = nullptr;
    const int count = xkb_keymap_key_get_syms_by_level(keymap, keycode, group, 0, &symbols);
    return count == 1 ? symbols[0] : XKB_KEY_NoSymbol;
}

bool isModifier(xkb_keysym_t symbol)
{
    const bool isLock = symbol == XKB_KEY_Caps_Lock || symbol == XKB_KEY_Shift_Lock;
    return (symbol >= XKB_KEY_Shift_L && symbol <= XKB_KEY_Hyper_R && !isLock) || symbol == XKB_KEY_ISO_Level3_Shift ||
           symbol == XKB_KEY_ISO_Level5_Shift || symbol == XKB_KEY_Mode_switch;
}

} // namespace

KeyStrokes::KeyStrokes(Xkb::State state)
    : m_state(std::move(state))
{
    if (m_state) {
        m_now.lockedModifiers = xkb_state_serialize_mods(m_state.get(), XKB_STATE_MODS_LOCKED);
        m_now.lockedGroup = xkb_state_serialize_layout(m_state.get(), XKB_STATE_LAYOUT_EFFECTIVE);
        readKeys();
        readStrokes();
    }
}

void KeyStrokes::setState(const KeyboardState& state)
{
    const bool isSame = state.lockedModifiers == m_now.lockedModifiers && state.baseGroup == m_now.baseGroup &&
                        state.latchedGroup == m_now.latchedGroup && state.lockedGroup == m_now.lockedGroup;
    m_now = state;
    if (m_state && !isSame) {
        readStrokes();
    }
}

std::optional<KeyStrokes::Stroke> KeyStrokes::find(quint32 symbol) const
{
    const auto found = m_strokes.constFind(symbol);
    return found == m_strokes.cend() ? std::nullopt : std::optional(*found);
}

std::optional<quint8> KeyStrokes::keyInAnyGroup(quint32 symbol) const
{
    const auto found = m_keys.constFind(symbol);
    return found == m_keys.cend() ? std::nullopt : std::optional(*found);
}

void KeyStrokes::readKeys()
{
    xkb_keymap* const keymap = xkb_state_get_keymap(m_state.get());
    forEachKeycode(keymap, [&](quint8 keycode) {
        bool isSpare = true;
        for (xkb_layout_index_t group = 0; group < xkb_keymap_num_layouts_for_key(keymap, keycode); ++group) {
            const xkb_keysym_t symbol = plainSymbol(keymap, keycode, group);
            isSpare = false;
            if (!m_keys.contains(symbol)) {
                m_keys.insert(symbol, keycode);
            }
            if (isModifier(symbol) && !m_modifierKeys.contains(keycode)) {
                m_modifierKeys.append(keycode);
            }
        }
        if (isSpare) {
            m_spareKeycodes.append(keycode);
        }
    });
}

void KeyStrokes::readStrokes()
{
    xkb_keymap* const keymap = xkb_state_get_keymap(m_state.get());
    const xkb_mod_index_t shift = xkb_keymap_mod_get_index(keymap, XKB_MOD_NAME_SHIFT);
    const xkb_mod_mask_t shiftMask = shift == XKB_MOD_INVALID ? 0 : xkb_mod_mask_t(1) << shift;
    m_strokes.clear();
    for (const bool isShifted : {false, true}) {
        xkb_state_update_mask(m_state.get(), isShifted ? shiftMask : 0, 0, m_now.lockedModifiers, m_now.baseGroup,
            m_now.latchedGroup, m_now.lockedGroup);
        forEachKeycode(keymap, [&](quint8 keycode) {
            const xkb_keysym_t symbol = xkb_state_key_get_one_sym(m_state.get(), keycode);
            if (symbol != XKB_KEY_NoSymbol && !m_strokes.contains(symbol)) {
                m_strokes.insert(symbol, {keycode, isShifted});
            }
        });
    }
}
