// SPDX-License-Identifier: MIT
#include "BYGlobals.h"

#include "Phrase.h"
#include "PhraseList.h"

#include <platform/storage/Preferences.h>

using PropertyList::Value;

void BYGlobals::init()
{
    setDefaultFilePath(Settings::defaultFilePath.value());
    if (!applicationDocuments) {
        applicationDocuments = Settings::file4App.value();
    }
    if (!applicationDocuments) {
        applicationDocuments = PropertyList::Dictionary::create();
    }
}

QString BYGlobals::fullTextFor(const QString& phrase)
{
    const Phrase found = DocumentEntry::at(clippingsArray(), PhraseList::rowOfPhrase(clippingsArray(), phrase));
    return found ? found->value(PhraseKey::soundFilepath).string() : QString();
}

void BYGlobals::saveToUserDefaults_forKey(const Value& value, const QString& key)
{
    Setting<Value>{key}.publish(value);
}

void BYGlobals::storeSetting(const Value& value, const QString& key)
{
    Setting<Value>{key}.store(value);
}

Value BYGlobals::retrieveFromUserDefaults(const QString& key)
{
    return Setting<Value>{key, QStringLiteral("")}.value();
}

Value BYGlobals::retrieveArrayFromUserDefaults(const QString& key)
{
    UserDefaults& defaults = UserDefaults::standardUserDefaults();
    defaults.synchronize();
    return defaults.objectForKey(key);
}

void BYGlobals::prefsChangedHere(const QString& name, const QString& object)
{
    if (object == appID() && name == NotificationName::preferencesChanged) {
        fillArray();
    }
}
