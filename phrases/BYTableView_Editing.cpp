// SPDX-License-Identifier: MIT
#include "BYTableView.h"

#include <core/BYGlobals.h>
#include <core/Changes.h>
#include <core/Phrase.h>
#include <platform/classic/FileTypes.h>
#include <platform/desktop/Text.h>
#include <platform/desktop/Workspace.h>
#include <platform/panels/Alert.h>
#include <platform/panels/OpenPanel.h>
#include <sounds/RowButtons.h>

#include <QFileInfo>

using namespace Qt::StringLiterals;

void BYTableView::tableView_setObjectValue_forTableColumn_row(
    TableView*, const QVariant& value, const QString& column, int row)
{
    const Phrase entry = entryAt(row);
    if (!entry) {
        return;
    }
    if (column == RowButtons::playColumn || column == RowButtons::revealColumn) {
        playOrReveal(column, entry);
    } else if (column == PhraseKey::app) {
        setOrClearApplication(entry);
    } else if (column != RowButtons::trashColumn) {
        storeText(m_listener.upToDateEntry(entry), column, value.toString());
    }
}

void BYTableView::storeText(const Phrase& entry, const QString& key, const QString& text)
{
    if (!entry) {
        return;
    }
    entry.setText(key, text);
    BYGlobals::setLastEditedAbb(text);
    Changes::saveDocument({NotificationName::preferencesChanged});
}

void BYTableView::playOrReveal(const QString& column, const Phrase& entry)
{
    const QString path = entry.soundFilepath();
    if (path.isEmpty()) {
        return;
    }
    if (column == RowButtons::playColumn) {
        BYGlobals::playSoundForPhrase(path);
    } else {
        Workspace::selectFile(path);
    }
}

void BYTableView::setOrClearApplication(const Phrase& entry)
{
    if (entry.hasApp()) {
        askToClearApplication(entry);
    } else {
        chooseApplication(entry);
    }
    Changes::tell(NotificationName::refreshAppsArray);
    Changes::tell(NotificationName::preferencesChanged);
}

void BYTableView::chooseApplication(const Phrase& entry)
{
    const RowHold hold(m_listener);
    OpenPanel panel(window());
    panel.setAllowsMultipleSelection(false);
    const QStringList types{u"app"_s, FileTypes::fileTypeForHFSTypeCode(fourCharCode("APPL"))};
    const int result = panel.runModalForDirectory_file_types(u"/Applications"_s, {}, types);
    const Phrase asked = m_listener.upToDateEntry(entry);
    if (result == okButton && asked && !panel.filenames().isEmpty()) {
        asked.setApp(panel.filenames().constFirst());
    }
    Changes::saveDocument({});
}

void BYTableView::askToClearApplication(const Phrase& entry)
{
    const RowHold hold(m_listener);
    Alert::beep();
    const QString name = QFileInfo(entry.app()).completeBaseName();
    const QString message = Text::tr("This abbreviation is associated with '") + name +
                            Text::tr("' and will only expand in that application.") +
                            Text::tr("\nDo you wish to clear the association?");
    const int result =
        Alert::runAlertPanel(window(), Text::tr("Blipsy"), message, Text::tr("Clear"), Text::tr("Cancel"));
    const Phrase asked = m_listener.upToDateEntry(entry);
    if (result == Alert::defaultReturn && asked) {
        asked.clearApp();
        Changes::saveDocument({});
    }
}

bool BYTableView::textShouldBeginEditing(QWidget* fieldEditor)
{
    Changes::tell(NotificationName::turnExpansionOff);
    const bool shouldBegin = TableView::textShouldBeginEditing(fieldEditor);
    if (shouldBegin) {
        m_editingHold.emplace(m_listener);
    }
    return shouldBegin;
}

void BYTableView::textDidEndEditing(QWidget* fieldEditor)
{
    Changes::tell(NotificationName::turnExpansionOn);
    TableView::textDidEndEditing(fieldEditor);
    m_editingHold.reset();
}
