// SPDX-License-Identifier: MIT
#include "KeyboardLayout.h"

#include "SessionKeyboard.h"
#include "VirtualKeyCodes.h"

#include <QCoreApplication>
#include <QPointer>

#include <xkbcommon/xkbcommon-keysyms.h>
#include <xkbcommon/xkbcommon.h>

#include <algorithm>
#include <array>

namespace {

struct DeadKey
{
    xkb_keysym_t keysym;
    /// The accent as a character of its own, where there is one.
    char16_t accent;
    /// The same as a mark that combines with the letter before it.
    char16_t mark;
};

/// The dead keys that layouts have without modifiers.
constexpr std::array deadKeys{
    DeadKey{XKB_KEY_dead_grave, u'`', u'\u0300'},
    DeadKey{XKB_KEY_dead_acute, u'\u00B4', u'\u0301'},
    DeadKey{XKB_KEY_dead_circumflex, u'^', u'\u0302'},
    DeadKey{XKB_KEY_dead_tilde, u'~', u'\u0303'},
    DeadKey{XKB_KEY_dead_macron, u'\u00AF', u'\u0304'},
    DeadKey{XKB_KEY_dead_breve, u'\u02D8', u'\u0306'},
    DeadKey{XKB_KEY_dead_abovedot, u'\u02D9', u'\u0307'},
    DeadKey{XKB_KEY_dead_diaeresis, u'\u00A8', u'\u0308'},
    DeadKey{XKB_KEY_dead_hook, u'\u0309', u'\u0309'},
    DeadKey{XKB_KEY_dead_abovering, u'\u02DA', u'\u030A'},
    DeadKey{XKB_KEY_dead_doubleacute, u'\u02DD', u'\u030B'},
    DeadKey{XKB_KEY_dead_caron, u'\u02C7', u'\u030C'},
    DeadKey{XKB_KEY_dead_belowdot, u'\u0323', u'\u0323'},
    DeadKey{XKB_KEY_dead_cedilla, u'\u00B8', u'\u0327'},
    DeadKey{XKB_KEY_dead_ogonek, u'\u02DB', u'\u0328'},
    DeadKey{XKB_KEY_dead_iota, u'\u037A', u'\u0345'},
};

/// Null for a symbol that is no dead key's.
const DeadKey* deadKeyOf(xkb_keysym_t keysym)
{
    const auto* const found = std::find_if(
        deadKeys.begin(), deadKeys.end(), [keysym](const DeadKey& deadKey) { return deadKey.keysym == keysym; });
    return found == deadKeys.end() ? nullptr : found;
}

} // namespace

KeyboardLayout::Pointer KeyboardLayout::current()
{
    static QPointer<SessionKeyboard> keyboard;
    if (keyboard.isNull()) {
        keyboard = new SessionKeyboard(QCoreApplication::instance());
    }
    return keyboard->layout();
}

KeyboardLayout::KeyboardLayout(xkb_keymap* keymap, quint32 group)
    : m_keymap(xkb_keymap_ref(keymap))
    , m_state(xkb_state_new(keymap))
    , m_group(group)
{
    // The keypad shows its digits, which it types only with Num Lock; no other key cares.
    const xkb_mod_index_t numLock = xkb_keymap_mod_get_index(keymap, XKB_MOD_NAME_NUM);
    const xkb_mod_mask_t locked = numLock == XKB_MOD_INVALID ? 0 : 1U << numLock;
    xkb_state_update_mask(m_state.get(), 0, 0, locked, 0, 0, group);
}

Xkb::State KeyboardLayout::newState() const
{
    Xkb::State state(xkb_state_new(m_keymap.get()));
    xkb_state_update_mask(state.get(), 0, 0, 0, 0, 0, m_group);
    return state;
}

QString KeyboardLayout::localizedName() const
{
    return QString::fromUtf8(xkb_keymap_layout_get_name(m_keymap.get(), m_group));
}

QString KeyboardLayout::characterOnKey(int virtualKeyCode) const
{
    const std::optional<quint32> keycode = VirtualKeyCodes::xkbKeycode(virtualKeyCode);
    if (!keycode) {
        return {};
    }
    std::array<char, 16> utf8{};
    if (xkb_state_key_get_utf8(m_state.get(), *keycode, utf8.data(), utf8.size()) > 0) {
        return QString::fromUtf8(utf8.data()).left(1);
    }
    const DeadKey* const deadKey = deadKeyOf(xkb_state_key_get_one_sym(m_state.get(), *keycode));
    return deadKey == nullptr ? QString() : QString(QChar(deadKey->accent));
}

QString KeyboardLayout::translate(int virtualKeyCode, quint32& deadKeyState) const
{
    const QString character = characterOnKey(virtualKeyCode);
    if (character.isEmpty()) {
        return {};
    }
    const DeadKey* const pending = deadKeyOf(deadKeyState);
    const DeadKey* const pressed =
        deadKeyOf(xkb_state_key_get_one_sym(m_state.get(), *VirtualKeyCodes::xkbKeycode(virtualKeyCode)));
    // A dead key pressed twice gives its accent, and nothing is pending any more.
    deadKeyState = pressed == nullptr || pressed == pending ? 0 : pressed->keysym;
    if (pending == nullptr) {
        return pressed == nullptr ? character : QString();
    }
    const QString accent = QString(QChar(pending->accent));
    if (pressed != nullptr) {
        return accent;
    }
    const QString composed = QString(character + QChar(pending->mark)).normalized(QString::NormalizationForm_C);
    return composed.size() == 1 ? composed : accent + character;
}

std::optional<int> KeyboardLayout::keyWithCharacter(QChar character) const
{
    for (int code = 0; code < VirtualKeyCodes::count; ++code) {
        if (characterOnKey(code).compare(QString(character), Qt::CaseInsensitive) == 0) {
            return code;
        }
    }
    return {};
}
