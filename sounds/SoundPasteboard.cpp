// SPDX-License-Identifier: MIT
#include "SoundPasteboard.h"

#include <platform/controls/Pasteboard.h>

using namespace Qt::StringLiterals;

const QString SoundPasteboard::clippingType = u"com.Blipsy.clipping"_s;

void SoundPasteboard::copy(const QString& path)
{
    Pasteboard pasteboard = Pasteboard::generalPasteboard();
    pasteboard.declareTypes({Pasteboard::stringType, clippingType});
    pasteboard.setString_forType(path, Pasteboard::stringType);
    pasteboard.setString_forType(path, clippingType);
}

std::optional<QString> SoundPasteboard::paste()
{
    const Pasteboard pasteboard = Pasteboard::generalPasteboard();
    return pasteboard.hasType(Pasteboard::stringType) ? pasteboard.stringForType(clippingType) : std::nullopt;
}
