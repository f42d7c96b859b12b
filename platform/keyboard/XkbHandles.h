// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

struct xkb_context;
struct xkb_keymap;
struct xkb_state;

/// Owners of the keyboard library's objects.
namespace Xkb {

struct Unref
{
    void operator()(xkb_context* context) const;
    void operator()(xkb_keymap* keymap) const;
    void operator()(xkb_state* state) const;
};

using Context = std::unique_ptr<xkb_context, Unref>;
using Keymap = std::unique_ptr<xkb_keymap, Unref>;
using State = std::unique_ptr<xkb_state, Unref>;

/// A context for keymaps that are complete in themselves. It needs no keyboard data folder, without which there is no
/// context of the usual kind. Null only when memory runs out.
Context contextWithoutFiles();

} // namespace Xkb
