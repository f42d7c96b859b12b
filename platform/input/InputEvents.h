// SPDX-License-Identifier: MIT
#pragma once

#include <platform/keyboard/KeyInterpreter.h>

/// When something was typed or clicked, in milliseconds by the clock of its source. Only differences mean anything, and
/// those in unsigned arithmetic: the count begins anew every 49 days.
using InputTime = quint32;

/// A key that goes down, or is repeated while it is held.
struct KeyPress
{
    KeyMeaning meaning;
    InputTime time = 0;
    bool isRepeat = false;
};

/// A pointer button that goes down.
struct ButtonPress
{
    enum class Button { Left, Middle, Right, Other };

    Button button = Button::Other;
    InputTime time = 0;
};

/// A turn of a wheel, by a step or more.
struct WheelTurn
{
    enum class Direction { Up, Down, Left, Right };

    Direction direction = Direction::Up;
    InputTime time = 0;
};
