// SPDX-License-Identifier: MIT
#include "SoundDocument.h"

#include <core/BYGlobals.h>
#include <core/SharedNames.h>

void SoundDocument::saveAndRefreshMenu()
{
    BYGlobals::writeDocument();
    BYGlobals::sendNotification(NotificationName::refreshMenu);
}
