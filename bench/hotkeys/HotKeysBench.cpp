// SPDX-License-Identifier: MIT
#include "Bench.h"

#include <PTHotKeysLib/src/PTKeyCombo.h>
#include <platform/desktop/Bundle.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <xkbcommon/xkbcommon.h>

#include <array>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

constexpr int combinations = 1'000;
constexpr int rounds = 50;
/// The letter keys of the home row and above, as virtual key codes and as XKB keycodes.
constexpr std::array virtualKeyCodes{0x00, 0x01, 0x02, 0x03, 0x04, 0x05, 0x0C, 0x0D, 0x0E, 0x0F};
constexpr std::array xkbKeycodes{38U, 39U, 40U, 41U, 43U, 42U, 24U, 25U, 26U, 27U};

} // namespace

/// The display text of a thousand key combinations, against the library call that gives the characters alone.
int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    const QTemporaryDir bundle;
    const QString resources = bundle.path() + u"/Contents/Resources"_s;
    QDir().mkpath(resources);
    QFile::copy(QStringLiteral(KEY_CODES), resources + u"/PTKeyCodes.plist"_s);
    Bundle::registerBundle(bundle.path());

    std::vector<PTKeyCombo> combos;
    for (int i = 0; i < combinations; ++i) {
        const int modifiers = (i % 2 == 0 ? 0x100 : 0x1000) | (i % 3 == 0 ? 0x800 : 0) | (i % 5 == 0 ? 0x200 : 0);
        combos.emplace_back(virtualKeyCodes[size_t(i) % virtualKeyCodes.size()], modifiers);
    }
    xkb_context* const context = xkb_context_new(XKB_CONTEXT_NO_FLAGS);
    xkb_keymap* const keymap = xkb_keymap_new_from_names(context, nullptr, XKB_KEYMAP_COMPILE_NO_FLAGS);
    xkb_state* const state = xkb_state_new(keymap);

    qsizetype length = 0;
    const auto [ours, peer] = Bench::millisecondsInTurn(
        rounds,
        [&] {
            for (const PTKeyCombo& combo : combos) {
                length += combo.description().size();
            }
        },
        [&] {
            std::array<char, 16> utf8{};
            for (int i = 0; i < combinations; ++i) {
                const quint32 keycode = xkbKeycodes[size_t(i) % xkbKeycodes.size()];
                length += xkb_state_key_get_utf8(state, keycode, utf8.data(), utf8.size());
            }
        });
    Bench::report("hotkeys.display-text-1000", ours, peer, 2);

    xkb_state_unref(state);
    xkb_keymap_unref(keymap);
    xkb_context_unref(context);
    return length > 0 ? 0 : 1;
}
