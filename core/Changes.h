// SPDX-License-Identifier: MIT
#pragma once

#include "SharedNames.h"

#include <platform/plist/PropertyList.h>

#include <QStringList>

/// How every change ends: it is written, and then the others are told, in this order, so that who reads what it has
/// been told of finds it. A write that fails is logged, and told all the same.
namespace Changes {

/// Writes the document soon (SoundsDocument::saveSoon()), then posts the named notifications in their order.
void saveDocument(const QStringList& notifications = {NotificationName::refreshMenu});

/// Writes what has been set in the helper's domain, then posts the named notifications in their order.
void saveSettings(const QStringList& notifications);

/// Posts one notification with the helper's object, after what has been changed before is written. @p userInfo must
/// not be changed afterwards.
void tell(const QString& notification, const PropertyList::DictionaryPointer& userInfo = {});

/// Waits until everything that has been changed is written, and has it told.
void finish();

} // namespace Changes
