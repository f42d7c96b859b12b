// SPDX-License-Identifier: MIT
#include "BYGlobals.h"

#include "SharedNames.h"

#include <platform/storage/Preferences.h>

using namespace Qt::StringLiterals;
using PropertyList::Value;

namespace {

Value refreshedValue(const QString& key)
{
    UserDefaults& defaults = UserDefaults::standardUserDefaults();
    defaults.synchronize();
    return defaults.objectForKey(key);
}

Value valueOfHelper(const QString& key)
{
    UserDefaults::standardUserDefaults().addSuiteNamed(BYGlobals::appID());
    return refreshedValue(key);
}

} // namespace

void BYGlobals::saveToUserDefaults_forKey(const Value& value, const QString& key)
{
    storeSetting(value, key);
    sendNotification(NotificationName::preferencesChanged);
}

void BYGlobals::storeSetting(const Value& value, const QString& key)
{
    Preferences::setValue(key, value, appID());
    Preferences::synchronize(appID());
}

Value BYGlobals::retrieveFromUserDefaults(const QString& key)
{
    const Value value = valueOfHelper(key);
    return value.isNull() ? Value(u""_s) : value;
}

Value BYGlobals::retrieveDateFromUserDefaults(const QString& key)
{
    return valueOfHelper(key);
}

Value BYGlobals::retrieveUntypedObjectFromUserDefaults(const QString& key)
{
    return valueOfHelper(key);
}

Value BYGlobals::retrieveDataFromUserDefaults(const QString& key)
{
    return valueOfHelper(key);
}

Value BYGlobals::retrieveArrayFromUserDefaults(const QString& key)
{
    return refreshedValue(key);
}
