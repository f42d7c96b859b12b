// SPDX-License-Identifier: MIT
#include "BYGlobals.h"

#include "SharedNames.h"

#include <platform/bus/DistributedNotificationCenter.h>

using namespace Qt::StringLiterals;

bool gConfirmRemove = true;
bool editEntryInProgress = false;

namespace {

int selectedRow = 0;
int previousRow = 0;
bool textIsDirty = false;
QString lastPhrase = u""_s;

} // namespace

const QString& BYGlobals::appID()
{
    static const QString identifier = u"com.blipsy.BlipsyMenu"_s;
    return identifier;
}

int BYGlobals::selectedClippingRowForEditing()
{
    return selectedRow;
}

void BYGlobals::setSelectedClippingRowForEditing(int row)
{
    selectedRow = row;
}

int BYGlobals::previouslySelectedClippingRow()
{
    return previousRow;
}

void BYGlobals::setPreviouslySelectedClippingRow(int row)
{
    previousRow = row;
}

bool BYGlobals::editEntryPaneTextIsDirty()
{
    return textIsDirty;
}

void BYGlobals::setEditEntryPaneTextIsDirty(bool dirty)
{
    textIsDirty = dirty;
}

QString BYGlobals::lastEditedAbb()
{
    return lastPhrase;
}

void BYGlobals::setLastEditedAbb(const QString& phrase)
{
    lastPhrase = phrase;
}

void BYGlobals::sendNotification(const QString& name)
{
    sendNotification(name, {});
}

void BYGlobals::sendNotification(const QString& name, const PropertyList::DictionaryPointer& userInfo)
{
    DistributedNotificationCenter::defaultCenter().postNotification(name, appID(), userInfo);
}

void BYGlobals::prefsChangedHere(const QString& name, const QString& object)
{
    if (object == appID() && name == NotificationName::preferencesChanged) {
        fillArray();
    }
}
