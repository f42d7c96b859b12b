// SPDX-License-Identifier: MIT
#include "Changes.h"

#include "SoundsDocument.h"

#include <platform/bus/DistributedNotificationCenter.h>
#include <platform/storage/Preferences.h>

namespace {

void tellAll(const QStringList& notifications)
{
    for (const QString& notification : notifications) {
        Changes::tell(notification);
    }
}

} // namespace

void Changes::saveDocument(const QStringList& notifications)
{
    SoundsDocument::shared().saveSoon();
    tellAll(notifications);
}

void Changes::saveSettings(const QStringList& notifications)
{
    Preferences::synchronize(helperIdentifier);
    tellAll(notifications);
}

void Changes::tell(const QString& notification, const PropertyList::DictionaryPointer& userInfo)
{
    SoundsDocument::shared().afterSaving([notification, userInfo] {
        DistributedNotificationCenter::defaultCenter().postNotification(notification, helperIdentifier, userInfo);
    });
}

void Changes::finish()
{
    SoundsDocument::shared().finishSaving();
}
