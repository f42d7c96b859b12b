// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

struct xkb_compose_state;
struct xkb_compose_table;
struct xkb_context;
struct xkb_keymap;
struct xkb_state;

/// Owners of the keyboard library's objects.
namespace Xkb {

struct Unref
{
    void operator()(xkb_compose_state* state) const;
    void operator()(xkb_compose_table* table) const;
    void operator()(xkb_context* context) const;
    void operator()(xkb_keymap* keymap) const;
    void operator()(xkb_state* state) const;
};

using ComposeState = std::unique_ptr<xkb_compose_state, Unref>;
using ComposeTable = std::unique_ptr<xkb_compose_table, Unref>;
using Context = std::unique_ptr<xkb_context, Unref>;
using Keymap = std::unique_ptr<xkb_keymap, Unref>;
using State = std::unique_ptr<xkb_state, Unref>;

/// A context for keymaps that are complete in themselves. It needs no keyboard data folder, without which there is no
/// context of the usual kind. Null only when memory runs out.
Context contextWithoutFiles();

} // namespace Xkb
