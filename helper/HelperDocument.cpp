// SPDX-License-Identifier: MIT
#include "HelperDocument.h"

#include "HelperSounds.h"

#include <core/BYGlobals.h>
#include <platform/desktop/Bundle.h>

using namespace Qt::StringLiterals;

void HelperDocument::reload()
{
    const QString before = BYGlobals::defaultFilePath();
    BYGlobals::init();
    if (BYGlobals::defaultFilePath().isEmpty()) {
        // The pane names it when it is opened for the first time. Settings that cannot be read name none.
        BYGlobals::setDefaultFilePath(before.isEmpty() ? Bundle::resourcePath() + u"/default.blipsy"_s : before);
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
