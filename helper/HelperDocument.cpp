// SPDX-License-Identifier: MIT
#include "HelperDocument.h"

#include "HelperSounds.h"

#include <core/BYGlobals.h>
#include <platform/desktop/Bundle.h>

using namespace Qt::StringLiterals;

void HelperDocument::reload()
{
    BYGlobals::init();
    if (BYGlobals::defaultFilePath().isEmpty()) {
        // The pane names it when it is opened for the first time.
        BYGlobals::setDefaultFilePath(Bundle::resourcePath() + u"/default.blipsy"_s);
    }
    SoundsDocument& document = SoundsDocument::shared();
    document.load();
    if (!document.root()) {
        return;
    }
    m_phrases = document.phrases();
    m_events = document.events();
    m_volume = HelperSounds::volumeFrom(document.root()->value(DocumentKey::setVolume));
    Q_EMIT reloaded();
}
