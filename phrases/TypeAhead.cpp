// SPDX-License-Identifier: MIT
#include "TypeAhead.h"

namespace {

constexpr double runSeconds = 1.0;

} // namespace

void TypeAhead::beginRunIfOver(double now)
{
    if (now - lastTime > runSeconds) {
        lastTime = now;
        abbFrag.clear();
    }
}
