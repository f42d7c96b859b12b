// SPDX-License-Identifier: MIT
#include "BYTableView.h"

#include "DocumentCommands.h"
#include "PhrasesModel.h"
#include "PrintClippingsWindow.h"

#include <core/BYGlobals.h>
#include <core/PhraseList.h>
#include <core/SharedNames.h>
#include <platform/controls/Matrix.h>
#include <platform/controls/Slider.h>
#include <platform/desktop/Text.h>
#include <platform/desktop/Workspace.h>
#include <platform/richtext/TextView.h>
#include <platform/sound/Sound.h>
#include <sounds/RowButtons.h>
#include <texts/EditSession.h>

#include <QCheckBox>
#include <QLabel>

using namespace Qt::StringLiterals;

namespace {

constexpr int phraseColumn = 1;

void selectCell(Matrix* matrix, int row, int column)
{
    if (matrix) {
        matrix->setState_atRow_column(true, row, column);
    }
}

} // namespace

BYTableView::BYTableView(QWidget* parent)
    : TableView(parent)
    , m_listener({
          .reloadDocument = [this](const std::function<void()>& load) { reloadDocument(load); },
          .showPhrase = [this](const QString& phrase) { scrollToAbb(phrase); },
          .editNewRow = [this] { editNewRow(); },
          .keepRich = [this] { selectCell(plainOrRichRadioButton, 0, 1); },
          .showHelperOff = [this] { selectCell(onOffRadioButton, 0, 1); },
      })
    , m_editSession(new EditSession({}, this))
{
}

BYTableView::~BYTableView()
{
    // The base class lives longer than what it would ask and tell.
    disconnect(this, nullptr, this, nullptr);
    setModel(nullptr);
}

void BYTableView::awakeFromNib()
{
    appID = BYGlobals::appID();
    attachChar = QString(QChar::ObjectReplacementCharacter);
    Workspace::unmountAndEject(u"/Volumes/BlipsyInstaller"_s);
    gConfirmRemove = true;
    genericAppIcon = Workspace::genericApplicationIcon();
    m_typeAhead = {};
    BYGlobals::init();
    BYGlobals::setLastEditedAbb(u""_s);
    observeNotifications();
    setModel(new PhrasesModel(*this));
    loadIcons();
    DocumentCommands::useDefaultOnFirstStart();
    makeDocumentCommands();
    updateSettingsFromPrefs();
    BYGlobals::setSelectedClippingRowForEditing(selectedRow());
    reloadData();
    loadEditPane(selectedRow());
    if (mySoundEventsTable) {
        mySoundEventsTable->reloadData();
    }
}

void BYTableView::observeNotifications()
{
    DistributedNotificationCenter::defaultCenter().addObserver(
        this, {}, appID, [this](const DistributedNotification& notification) { prefsChanged(notification); });
    connect(this, &TableView::selectionDidChange, this, &BYTableView::tableViewSelectionDidChange);
    connect(this, &TableView::selectionIsChanging, this, &BYTableView::tableViewSelectionIsChanging);
    if (editEntryPane) {
        connect(editEntryPane, &TextView::textDidChange, this, &BYTableView::editEntryPaneTextDidChange);
        connect(editEntryPane, &TextView::typingAttributesDidChange, this,
            &BYTableView::editEntryPaneTypingAttributesChanged);
    }
}

void BYTableView::loadIcons()
{
    const RowButtons::Icons icons = RowButtons::loadIcons();
    revealIcon = icons.reveal;
    playIcon = icons.play;
    trashIcon = icons.remove;
    addIcon = icons.add;
}

void BYTableView::makeDocumentCommands()
{
    m_documents = std::make_unique<DocumentCommands>(defaultClippingsFileNSPopUpButton);
    connect(m_documents.get(), &DocumentCommands::leaving, this, [this] {
        askAboutUnsavedText();
        m_editSession->setDirty(false);
    });
    connect(m_documents.get(), &DocumentCommands::chosen, this, [this] { reloadDocument(&BYGlobals::fillArray); });
    connect(m_documents.get(), &DocumentCommands::printRequested, this, [this] { showPrintClippingsWindow(this); });
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
    const PropertyList::Value* volume = root ? root->find(DocumentKey::setVolume) : nullptr;
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

void BYTableView::openDoc(QObject*)
{
    const RowHold hold(m_listener);
    m_documents->carryOutChosenItem();
    updateVolumeSlider();
}

void BYTableView::useDocument(const QString& path)
{
    m_documents->use(path);
    updateVolumeSlider();
}

void BYTableView::updateClippingsPopUpButton()
{
    m_documents->updatePopUp();
}

void BYTableView::showPrintClippingsWindow(QObject*)
{
    if (printClippingsWindow) {
        printClippingsWindow->present();
    }
}
