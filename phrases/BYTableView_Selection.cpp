// SPDX-License-Identifier: MIT
#include "BYTableView.h"

#include <core/BYGlobals.h>
#include <core/Phrase.h>
#include <platform/controls/Matrix.h>
#include <platform/panels/Alert.h>
#include <platform/richtext/Rtfd.h>
#include <platform/richtext/TextView.h>

#include <QLoggingCategory>
#include <QPushButton>

#include <cstdio>

using namespace Qt::StringLiterals;

using PropertyList::DictionaryPointer;

namespace {

Q_LOGGING_CATEGORY(log, "blipsy.phrases")

constexpr int plainColumn = 0;
constexpr int richColumn = 1;

void enable(QWidget* control, bool enabled)
{
    if (control) {
        control->setEnabled(enabled);
    }
}

void setShown(QWidget* view, bool visible)
{
    if (view) {
        view->setVisible(visible);
    }
}

} // namespace

void BYTableView::tableViewSelectionIsChanging()
{
    if (m_isFollowingSelection) {
        return;
    }
    BYGlobals::setPreviouslySelectedClippingRow(BYGlobals::selectedClippingRowForEditing());
    askAboutUnsavedText();
}

void BYTableView::askAboutUnsavedText()
{
    if (!BYGlobals::editEntryPaneTextIsDirty() || !editEntryPane) {
        return;
    }
    const DictionaryPointer entry = entryAt(BYGlobals::selectedClippingRowForEditing());
    if (!entry) {
        return;
    }
    qCInfo(log).noquote() << u"do you wish to remove? "_s;
    const RowHold hold(m_listener);
    const QString message = localized(u"Do you wish to save the changes you made to '"_s) +
                            entry->value(PhraseKey::phrase).textValue() + localized(u"'?"_s);
    const int result = Alert::runAlertPanel(window(), localized(u"Blipsy"_s), message, localized(u"Save"_s),
        localized(u"Discard"_s), Alert::Dismissal::IsRefused);
    std::fprintf(stderr, "NSRunAlertPanel result = %d.\n", result);
    const DictionaryPointer edited =
        result == Alert::defaultReturn ? m_listener.upToDateEntry(entry) : DictionaryPointer();
    if (edited) {
        saveEditedText(edited);
    }
}

void BYTableView::willUnselect()
{
    if (BYGlobals::editEntryPaneTextIsDirty()) {
        askAboutUnsavedText();
        // A host may show the pane again: then it shows what is stored.
        loadEditPane(selectedRow());
    }
}

void BYTableView::saveEditedText(const DictionaryPointer& entry)
{
    const Phrase phrase(entry);
    phrase.setSoundFilepath(editEntryPane->string());
    phrase.setRtfd(editEntryPane->isRichText() ? std::optional(editEntryPane->RTFDFromAll()) : std::nullopt);
    Changes::saveDocument({NotificationName::preferencesChanged});
}

void BYTableView::tableViewSelectionDidChange()
{
    if (m_isFollowingSelection) {
        return;
    }
    const int row = selectedRow();
    BYGlobals::setSelectedClippingRowForEditing(row);
    loadEditPane(row);
}

// Shows the text of the phrase at this row, or hides the pane for row -1; either way there is nothing to save.
void BYTableView::loadEditPane(int row)
{
    enable(removeAbb, row != -1);
    showEditPane(row != -1);
    const DictionaryPointer entry = entryAt(row);
    if (entry && editEntryPane) {
        loadText(*entry);
    } else {
        clearEditPane();
    }
    setEditPaneDirty(false);
}

void BYTableView::loadText(const PropertyList::Dictionary& entry)
{
    const QString phrase = entry.value(PhraseKey::phrase).string();
    const QString text = phrase.isNull() ? QString() : BYGlobals::fullTextFor(phrase);
    if (!text.isNull()) {
        editEntryPane->setString(text);
        editEntryPane->resetAttributes();
        editEntryPane->setReadOnly(false);
        editEntryPane->moveCursor(QTextCursor::Start);
    }
    const PropertyList::Value* rtfd = entry.find(PhraseKey::rtfd);
    const bool isRich = rtfd && rtfd->type() == PropertyList::Type::Data;
    if (isRich) {
        const QStringList warnings = editEntryPane->replaceAllWithRTFD(rtfd->data()).warnings;
        if (!warnings.isEmpty()) {
            qCWarning(log).noquote() << u"rich text of \"%1\": %2"_s.arg(phrase, warnings.join(u"; "_s));
        }
        editEntryPane->setReadOnly(false);
    }
    editEntryPane->setRichText(isRich);
    editEntryPane->setImportsGraphics(isRich);
    enable(textFormattingPopUpButton, isRich);
    if (plainOrRichRadioButton) {
        plainOrRichRadioButton->setState_atRow_column(true, 0, isRich ? richColumn : plainColumn);
    }
}

void BYTableView::showEditPane(bool visible)
{
    for (QWidget* view : std::initializer_list<QWidget*>{editEntryPane, dateTimePopUpButton, textFormattingPopUpButton,
             plainOrRichRadioButton, saveEditedAbbButton}) {
        setShown(view, visible);
    }
}

void BYTableView::clearEditPane()
{
    if (editEntryPane) {
        editEntryPane->setString(u""_s);
        editEntryPane->setReadOnly(true);
    }
    setEditPaneDirty(false);
}

void BYTableView::setEditPaneDirty(bool dirty)
{
    BYGlobals::setEditEntryPaneTextIsDirty(dirty);
    enable(saveEditedAbbButton, dirty);
}

void BYTableView::editEntryPaneTextDidChange()
{
    setEditPaneDirty(true);
}

void BYTableView::editEntryPaneTypingAttributesChanged()
{
    if (plainOrRichRadioButton && plainOrRichRadioButton->selectedColumn() == richColumn) {
        setEditPaneDirty(true);
    }
}
