// SPDX-License-Identifier: MIT
#include "SoundEventsController.h"

#include "EventEntries.h"

#include <core/SharedNames.h>
#include <platform/desktop/Bundle.h>
#include <platform/table/TableView.h>

#include <QLineEdit>
#include <QMenu>

using namespace Qt::StringLiterals;

void SoundEventsController::fillVolumePopUp()
{
    if (myVolumePopUp == nullptr) {
        return;
    }
    const Bundle bundle = Bundle::bundleWithIdentifier(paneBundleIdentifier);
    const auto add = [this](const QString& title, const QString& key) {
        connect(myVolumePopUp->addAction(title), &QAction::triggered, this, [this, key] { searchForValue(key); });
    };
    add(bundle.localizedString(u"Show Only This Category"_s), EventKey::eventCatName);
    add(bundle.localizedString(u"Show Events with This Sound"_s), EventKey::soundFilepath);
    myVolumePopUp->addSeparator();
    add(bundle.localizedString(u"Show All Events"_s), {});
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
