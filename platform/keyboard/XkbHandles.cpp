// SPDX-License-Identifier: MIT
#include "XkbHandles.h"

#include <xkbcommon/xkbcommon-compose.h>
#include <xkbcommon/xkbcommon.h>

namespace Xkb {

void Unref::operator()(xkb_compose_state* state) const
{
    xkb_compose_state_unref(state);
}

void Unref::operator()(xkb_compose_table* table) const
{
    xkb_compose_table_unref(table);
}

void Unref::operator()(xkb_context* context) const
{
    xkb_context_unref(context);
}

void Unref::operator()(xkb_keymap* keymap) const
{
    xkb_keymap_unref(keymap);
}

void Unref::operator()(xkb_state* state) const
{
    xkb_state_unref(state);
}

Context contextWithoutFiles()
{
    return Context(xkb_context_new(XKB_CONTEXT_NO_DEFAULT_INCLUDES));
}

} // namespace Xkb
