// SPDX-License-Identifier: MIT
#include "ModifierMapping.h"

#include "XcbHandles.h"

#include <xcb/xcb.h>
#include <xcb/xcb_keysyms.h>
#include <xkbcommon/xkbcommon-keysyms.h>

namespace {

struct FreeSymbols
{
    void operator()(xcb_key_symbols_t* symbols) const { xcb_key_symbols_free(symbols); }
};

/// The bit of the first of the eight modifiers that has @p keycode among its keys.
quint16 modifierOfKey(xcb_get_modifier_mapping_reply_t* mapping, xcb_keycode_t keycode)
{
    const xcb_keycode_t* const keys = xcb_get_modifier_mapping_keycodes(mapping);
    const int length = xcb_get_modifier_mapping_keycodes_length(mapping);
    for (int i = 0; i < length; ++i) {
        if (keys[i] == keycode) {
            return quint16(1U << (i / mapping->keycodes_per_modifier));
        }
    }
    return 0;
}

quint16 modifierOfSymbol(xcb_get_modifier_mapping_reply_t* mapping, xcb_key_symbols_t* symbols, xcb_keysym_t symbol)
{
    const Xcb::Reply<xcb_keycode_t> keycodes(xcb_key_symbols_get_keycode(symbols, symbol));
    if (!keycodes) {
        return 0;
    }
    for (const xcb_keycode_t* keycode = keycodes.get(); *keycode != XCB_NO_SYMBOL; ++keycode) {
        if (const quint16 modifier = modifierOfKey(mapping, *keycode); modifier != 0) {
            return modifier;
        }
    }
    return 0;
}

} // namespace

ModifierMapping ModifierMapping::ofServer(xcb_connection_t* connection)
{
    const Xcb::Reply<xcb_get_modifier_mapping_reply_t> mapping(
        xcb_get_modifier_mapping_reply(connection, xcb_get_modifier_mapping(connection), nullptr));
    const std::unique_ptr<xcb_key_symbols_t, FreeSymbols> symbols(xcb_key_symbols_alloc(connection));
    if (!mapping || !symbols || mapping->keycodes_per_modifier == 0) {
        return {};
    }
    return {modifierOfSymbol(mapping.get(), symbols.get(), XKB_KEY_Super_L),
        modifierOfSymbol(mapping.get(), symbols.get(), XKB_KEY_Alt_L),
        modifierOfSymbol(mapping.get(), symbols.get(), XKB_KEY_Num_Lock)};
}
