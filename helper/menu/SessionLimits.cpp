// SPDX-License-Identifier: MIT
#include "SessionLimits.h"

#include <platform/desktop/Text.h>

using namespace Qt::StringLiterals;

SessionLimits::Explanation SessionLimits::ofTyping() const
{
    using Obstacle = InputWatcher::Obstacle;
    if (typing == Obstacle::None) {
        return {};
    }
    const QString reason =
        typing == Obstacle::NoDisplay
            ? Text::tr("Blipsy runs outside a desktop session, and your user may not read the keyboards, so phrases "
                       "and keys set nothing off.")
            : Text::tr("In this session programs do not see what is typed into others, so phrases and keys set nothing "
                       "off.");
    return {Text::tr("Blipsy does not see what you type"),
        reason + u' ' +
            Text::tr("Log in to an X11 session, or let your user read the input devices (on most systems: add it to "
                     "the group \"input\", and log in again). Other events are heard all the same.")};
}

SessionLimits::Explanation SessionLimits::ofTexts() const
{
    if (takesTexts) {
        return {};
    }
    return {Text::tr("Blipsy cannot put texts into programs"),
        Text::tr("Only X11 sessions let one program type into others. Here phrases are not replaced by their texts, "
                 "and those chosen in the menu are just heard. Log in to an X11 session to have them inserted.")};
}

SessionLimits::Explanation SessionLimits::together() const
{
    const Explanation unseen = ofTyping();
    const Explanation untaken = ofTexts();
    if (unseen.title.isEmpty() || untaken.title.isEmpty()) {
        return unseen.title.isEmpty() ? untaken : unseen;
    }
    return {unseen.title, unseen.text + u"\n\n"_s + untaken.title + u". "_s + untaken.text};
}
