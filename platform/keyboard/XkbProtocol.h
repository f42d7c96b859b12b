// SPDX-License-Identifier: MIT
#pragma once

/// The requests and events of the X server's keyboard extension (XKB protocol, version 1.0). Their header is written
/// for C and calls a field "explicit": include it through this one, which gives the field another name.

#ifdef __clang__
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wkeyword-macro"
#endif
#define explicit explicitField
#include <xcb/xkb.h> // IWYU pragma: export
#undef explicit
#ifdef __clang__
#pragma clang diagnostic pop
#endif
