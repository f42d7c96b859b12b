// SPDX-License-Identifier: MIT
#include "BYTableView.h"

#include <core/BYGlobals.h>
#include <core/PhraseList.h>
#include <core/SharedNames.h>
#include <platform/controls/Matrix.h>
#include <platform/controls/Slider.h>
#include <platform/desktop/Text.h>

#include <QCheckBox>
#include <QLabel>

using PropertyList::Value;

namespace {

constexpr int phraseColumn = 1;

} // namespace

void BYTableView::selectCell(Matrix* matrix, int row, int column)
{
    if (matrix) {
        matrix->setState_atRow_column(true, row, column);
    }
}

void BYTableView::updateSettingsFromPrefs()
{
    BYGlobals::fillArray();
    if (playSoundOnDropPrefButton) {
        playSoundOnDropPrefButton->setChecked(Settings::playSoundOnDrop.value());
    }
    selectCell(menuPrefsMatrix, Settings::menuPref.value(), 0);
    selectCell(sortPrefsMatrix, 0, Settings::sortPref.value());
    selectCell(iTunesAnnouncerPrefMatrix, 0, Settings::announcerPref.value());
    updateClippingsPopUpButton();
    updateVolumeSlider();
}

void BYTableView::updateVolumeSlider()
{
    const PropertyList::DictionaryPointer root = BYGlobals::clippingsDictionary();
    const Value* volume = root ? root->find(DocumentKey::setVolume) : nullptr;
    if (myVolumeSlider) {
        myVolumeSlider->setFloatValue(volume ? float(volume->doubleValue()) : 0);
    }
    if (myVolumeSliderLabel) {
        myVolumeSliderLabel->setText(Text::tr("Set volume:"));
    }
}

void BYTableView::scrollToAbb(const QString& phrase)
{
    const int row = PhraseList::rowOfPhrase(BYGlobals::clippingsArray(), phrase);
    if (row >= 0) {
        selectRow_byExtendingSelection(row, false);
        scrollRowToVisible(row);
    }
}

void BYTableView::prefsChanged(const DistributedNotification& notification)
{
    m_listener.hear(notification);
}

void BYTableView::editNewRow()
{
    reloadInPreferredOrder(&BYGlobals::sortArray);
    scrollToAbb(Text::tr("newabb"));
    editColumn_row_withEvent_select(phraseColumn, selectedRow(), nullptr, true);
    Changes::saveDocument({});
}
