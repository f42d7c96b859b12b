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
    char16_t accent;
};

/// The accents of the dead keys that layouts have without modifiers, as characters of their own.
constexpr std::array deadKeys{
    DeadKey{XKB_KEY_dead_grave, u'`'},
    DeadKey{XKB_KEY_dead_acute, u'\u00B4'},
    DeadKey{XKB_KEY_dead_circumflex, u'^'},
    DeadKey{XKB_KEY_dead_tilde, u'~'},
    DeadKey{XKB_KEY_dead_macron, u'\u00AF'},
    DeadKey{XKB_KEY_dead_breve, u'\u02D8'},
    DeadKey{XKB_KEY_dead_abovedot, u'\u02D9'},
    DeadKey{XKB_KEY_dead_diaeresis, u'\u00A8'},
    DeadKey{XKB_KEY_dead_abovering, u'\u02DA'},
    DeadKey{XKB_KEY_dead_doubleacute, u'\u02DD'},
    DeadKey{XKB_KEY_dead_caron, u'\u02C7'},
    DeadKey{XKB_KEY_dead_cedilla, u'\u00B8'},
    DeadKey{XKB_KEY_dead_ogonek, u'\u02DB'},
};

QString accentOfDeadKey(xkb_keysym_t keysym)
{
    const auto* const found = std::find_if(
        deadKeys.begin(), deadKeys.end(), [keysym](const DeadKey& deadKey) { return deadKey.keysym == keysym; });
    return found == deadKeys.end() ? QString() : QString(QChar(found->accent));
}

} // namespace

void KeyboardLayout::Release::operator()(xkb_keymap* keymap) const
{
    xkb_keymap_unref(keymap);
}

void KeyboardLayout::Release::operator()(xkb_state* state) const
{
    xkb_state_unref(state);
}

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

KeyboardLayout::~KeyboardLayout() = default;

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
    return accentOfDeadKey(xkb_state_key_get_one_sym(m_state.get(), *keycode));
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
