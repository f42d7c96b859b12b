// SPDX-License-Identifier: MIT
#pragma once

#include <platform/input/InputWatcher.h>

#include <QString>

/// What the session keeps from the helper, in words for the user.
struct SessionLimits
{
    /// A title, and what it means with what the user can do about it. Both empty where there is nothing to say.
    struct Explanation
    {
        QString title;
        QString text;
    };

    InputWatcher::Obstacle typing = InputWatcher::Obstacle::None;
    bool takesTexts = true;

    Explanation ofTyping() const;
    Explanation ofTexts() const;
    /// All of it in one.
    Explanation together() const;
};
