// SPDX-License-Identifier: MIT
#include "XkbHandles.h"

#include <xkbcommon/xkbcommon.h>

namespace Xkb {

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
