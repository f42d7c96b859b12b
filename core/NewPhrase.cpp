// SPDX-License-Identifier: MIT
#include "NewPhrase.h"

#include <platform/desktop/Bundle.h>
#include <platform/desktop/Text.h>

using namespace Qt::StringLiterals;

Phrase newPhrase(const QString& phrase)
{
    const QString defaultSound = Bundle::resourcePath() + u"/defaultPhraseSound.aif"_s;
    const Phrase entry = PropertyList::Dictionary::create();
    entry.setPhrase(phrase);
    entry.setSoundFilepath(Text::tr(defaultSound.toUtf8().constData()));
    return entry;
}
