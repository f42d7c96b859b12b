// SPDX-License-Identifier: MIT
#include "PasteWays.h"

#include <core/Settings.h>
#include <platform/plist/PropertyList.h>

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

using Name = std::pair<QLatin1StringView, PasteWay>;

constexpr std::array wayNames{Name{"Control-V"_L1, PasteWay::ControlV},
    Name{"Control-Shift-V"_L1, PasteWay::ControlShiftV}, Name{"Shift-Insert"_L1, PasteWay::ShiftInsert},
    Name{"Typed"_L1, PasteWay::Typed}};

/// Classes of windows that do not take Control-V.
constexpr std::array knownClasses{Name{"alacritty"_L1, PasteWay::ControlShiftV},
    Name{"com.raggesilver.blackbox"_L1, PasteWay::ControlShiftV}, Name{"deepin-terminal"_L1, PasteWay::ControlShiftV},
    Name{"emacs"_L1, PasteWay::ShiftInsert}, Name{"gnome-terminal"_L1, PasteWay::ControlShiftV},
    Name{"gnome-terminal-server"_L1, PasteWay::ControlShiftV}, Name{"guake"_L1, PasteWay::ControlShiftV},
    Name{"gvim"_L1, PasteWay::ShiftInsert}, Name{"kgx"_L1, PasteWay::ControlShiftV},
    Name{"kitty"_L1, PasteWay::ControlShiftV}, Name{"konsole"_L1, PasteWay::ControlShiftV},
    Name{"lxterminal"_L1, PasteWay::ControlShiftV}, Name{"mate-terminal"_L1, PasteWay::ControlShiftV},
    Name{"mlterm"_L1, PasteWay::ShiftInsert}, Name{"org.gnome.console"_L1, PasteWay::ControlShiftV},
    Name{"org.wezfurlong.wezterm"_L1, PasteWay::ControlShiftV}, Name{"qterminal"_L1, PasteWay::ControlShiftV},
    Name{"sakura"_L1, PasteWay::ControlShiftV}, Name{"st-256color"_L1, PasteWay::ShiftInsert},
    Name{"terminator"_L1, PasteWay::ControlShiftV}, Name{"terminology"_L1, PasteWay::ControlShiftV},
    Name{"tilix"_L1, PasteWay::ControlShiftV}, Name{"urxvt"_L1, PasteWay::ShiftInsert},
    Name{"uxterm"_L1, PasteWay::ShiftInsert}, Name{"xfce4-terminal"_L1, PasteWay::ControlShiftV},
    Name{"xterm"_L1, PasteWay::ShiftInsert}, Name{"yakuake"_L1, PasteWay::ControlShiftV}};

template <size_t Size>
std::optional<PasteWay> find(const std::array<Name, Size>& names, QStringView wanted)
{
    const auto* const found = std::ranges::find_if(
        names, [wanted](const Name& name) { return wanted.compare(name.first, Qt::CaseInsensitive) == 0; });
    return found == names.end() ? std::nullopt : std::optional(found->second);
}

std::optional<PasteWay> setByUser(const QString& windowClass)
{
    const PropertyList::DictionaryPointer ways = Settings::pasteWays.value();
    if (!ways) {
        return {};
    }
    for (const PropertyList::Dictionary::Entry& entry : std::as_const(*ways)) {
        if (entry.key.compare(windowClass, Qt::CaseInsensitive) == 0) {
            return find(wayNames, entry.value.stringView());
        }
    }
    return {};
}

} // namespace

PasteWay PasteWays::of(const QString& windowClass)
{
    if (const auto way = setByUser(windowClass)) {
        return *way;
    }
    return find(knownClasses, windowClass).value_or(PasteWay::ControlV);
}
