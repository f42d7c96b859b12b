// SPDX-License-Identifier: MIT
#include "SoundEventsController.h"

#include "EventEntries.h"

#include <core/SharedNames.h>
#include <platform/desktop/Text.h>
#include <platform/table/TableView.h>

#include <QLineEdit>
#include <QMenu>

void SoundEventsController::fillVolumePopUp()
{
    if (myVolumePopUp == nullptr) {
        return;
    }
    const auto add = [this](const QString& title, const QString& key) {
        connect(myVolumePopUp->addAction(title), &QAction::triggered, this, [this, key] { searchForValue(key); });
    };
    add(Text::tr("Show Only This Category"), EventKey::eventCatName);
    add(Text::tr("Show Events with This Sound"), EventKey::soundFilepath);
    myVolumePopUp->addSeparator();
    add(Text::tr("Show All Events"), {});
}

/// Searches for what the selected entry holds under @p key; for everything when it holds nothing.
void SoundEventsController::searchForValue(const QString& key)
{
    const SoundEvent event = EventEntries::shownAt(selectedRow());
    if (mySearchField == nullptr) {
        return;
    }
    mySearchField->setText(event ? event->value(key).string() : QString());
    // The field tells of a new text only.
    volumePopUpAction(myVolumePopUp);
}
