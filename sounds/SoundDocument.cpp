#include "SoundDocument.h"

#include <BYGlobals.h>
#include <SharedNames.h>

void SoundDocument::saveAndRefreshMenu()
{
    BYGlobals::writeDocument();
    BYGlobals::sendNotification(NotificationName::refreshMenu);
}
