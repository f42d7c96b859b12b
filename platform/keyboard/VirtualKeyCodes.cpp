// SPDX-License-Identifier: MIT
#include "VirtualKeyCodes.h"

#include <algorithm>
#include <array>

namespace VirtualKeyCodes {

namespace {

/// XKB keycodes are evdev codes moved up, since X11 reserves the first eight.
constexpr quint32 evdevOffset = 8;

/// The evdev code of each virtual key code; 0 where no key has the code.
// clang-format off
constexpr std::array<quint16, count> evdevCodes{
    30, 31, 32, 33, 35, 34, 44, 45, // 0x00
    46, 47, 86, 48, 16, 17, 18, 19, // 0x08
    21, 20, 2, 3, 4, 5, 7, 6, // 0x10
    13, 10, 8, 12, 9, 11, 27, 24, // 0x18
    22, 26, 23, 25, 28, 38, 36, 40, // 0x20
    37, 39, 43, 51, 53, 49, 50, 52, // 0x28
    15, 57, 41, 14, 0, 1, 126, 125, // 0x30
    42, 58, 56, 29, 54, 100, 97, 464, // 0x38
    187, 83, 0, 55, 0, 78, 0, 69, // 0x40
    115, 114, 113, 98, 96, 0, 74, 188, // 0x48
    189, 117, 82, 79, 80, 81, 75, 76, // 0x50
    77, 71, 190, 72, 73, 124, 89, 121, // 0x58
    63, 64, 65, 61, 66, 67, 123, 87, // 0x60
    122, 183, 186, 184, 0, 68, 127, 88, // 0x68
    0, 185, 110, 102, 104, 111, 62, 107, // 0x70
    60, 109, 59, 105, 106, 108, 103, 116, // 0x78
};

// clang-format on

struct Alias
{
    quint16 evdevCode;
    int virtualKeyCode;
};

/// Keys of PC keyboards that stand where the classic keyboards have another one, by evdev code.
constexpr std::array aliases{
    Alias{138, help}, // KEY_HELP
    Alias{99, 0x69},  // KEY_SYSRQ (Print) is F13
    Alias{70, 0x6B},  // KEY_SCROLLLOCK is F14
    Alias{119, 0x71}, // KEY_PAUSE is F15
    Alias{95, 0x5F},  // KEY_KPJPCOMMA
    Alias{93, 0x68},  // KEY_KATAKANAHIRAGANA
    Alias{94, 0x66},  // KEY_MUHENKAN
};

constexpr std::array functionKeys{0x7A, 0x78, 0x63, 0x76, 0x60, 0x61, 0x62, 0x64, 0x65, 0x6D, 0x67, 0x6F, 0x69, 0x6B,
    0x71, 0x6A, 0x40, 0x4F, 0x50, 0x5A};

constexpr std::array navigationKeys{
    help, home, pageUp, forwardDelete, end, pageDown, leftArrow, rightArrow, downArrow, upArrow};

constexpr int firstModifierKey = 0x36;
constexpr int lastModifierKey = 0x3F;

template <typename Codes>
bool contains(const Codes& codes, int code)
{
    return std::find(codes.begin(), codes.end(), code) != codes.end();
}

} // namespace

std::optional<quint32> xkbKeycode(int virtualKeyCode)
{
    if (virtualKeyCode < 0 || virtualKeyCode >= count) {
        return {};
    }
    const quint32 evdevCode = evdevCodes[size_t(virtualKeyCode)];
    if (evdevCode == 0) {
        return {};
    }
    return evdevCode + evdevOffset;
}

QList<quint32> xkbKeycodes(int virtualKeyCode)
{
    QList<quint32> keycodes;
    if (const std::optional<quint32> keycode = xkbKeycode(virtualKeyCode)) {
        keycodes.append(*keycode);
    }
    for (const Alias& alias : aliases) {
        if (alias.virtualKeyCode == virtualKeyCode) {
            keycodes.append(alias.evdevCode + evdevOffset);
        }
    }
    return keycodes;
}

std::optional<int> fromXkbKeycode(quint32 keycode)
{
    if (keycode <= evdevOffset) {
        return {};
    }
    const quint32 evdevCode = keycode - evdevOffset;
    const auto* const found = std::find(evdevCodes.begin(), evdevCodes.end(), evdevCode);
    if (found != evdevCodes.end()) {
        return int(found - evdevCodes.begin());
    }
    const auto* const alias = std::find_if(aliases.begin(), aliases.end(),
        [evdevCode](const Alias& candidate) { return candidate.evdevCode == evdevCode; });
    if (alias == aliases.end()) {
        return {};
    }
    return alias->virtualKeyCode;
}

std::optional<int> functionKey(int number)
{
    if (number < 1 || number > int(functionKeys.size())) {
        return {};
    }
    return functionKeys[size_t(number - 1)];
}

bool isFunctionKey(int virtualKeyCode)
{
    return contains(functionKeys, virtualKeyCode) || contains(navigationKeys, virtualKeyCode);
}

bool isModifierKey(int virtualKeyCode)
{
    return virtualKeyCode >= firstModifierKey && virtualKeyCode <= lastModifierKey;
}

} // namespace VirtualKeyCodes
