// SPDX-License-Identifier: MIT
#include "BYController.h"

#include "ControlTitle.h"

#include <core/Settings.h>
#include <platform/desktop/Text.h>
#include <platform/keyboard/HotKeyGrabs.h>

#include <QEvent>
#include <QPushButton>
#include <QVariant>

#include <algorithm>

using namespace Qt::StringLiterals;

void BYController::setUpHotKeys()
{
    theHotButtons = {addHotKeyButton, editHotKeyButton, pauseHotKeyButton};
    theHotKeysNames = {Text::tr("Add a Clipping"), Text::tr("Edit Clippings"), Text::tr("Pause/Resume")};
    const bool canReserve = HotKeyGrabs::arePossible();
    for (size_t i = 0; i < hotKeyCount; ++i) {
        const QString& name = theHotKeysNames[i];
        const auto combo = PTKeyCombo::initWithPlistRepresentation(Settings::stored(name).dictionary());
        mHotKey[i] = std::make_shared<PTHotKey>(name, combo);
        mHotKey[i]->setName(name);
        if (QPushButton* const button = theHotButtons[i]) {
            m_buttonNameFormats[i] = button->accessibleName();
            m_buttonToolTips[i] =
                canReserve ? button->toolTip()
                           : Text::tr("Record another key combination. It is stored, but does nothing in this session, "
                                      "where no program can reserve keys for itself.");
            button->installEventFilter(this);
            showToolTip(i);
        }
        showCombination(i);
    }
}

void BYController::showCombination(size_t index)
{
    if (QPushButton* const button = theHotButtons[index]) {
        const QString combination = mHotKey[index]->keyCombo().description();
        button->setText(textForTitle(combination));
        button->setAccessibleName(QString(m_buttonNameFormats[index]).replace(u"%@"_s, combination));
    }
}

void BYController::showToolTip(size_t index)
{
    const QStringList refused = Settings::refusedHotKeys.value().value_or(QStringList());
    theHotButtons[index]->setToolTip(
        refused.contains(theHotKeysNames[index])
            ? Text::tr("Another program holds this key combination, so that it does nothing here. Record another one.")
            : m_buttonToolTips[index]);
}

bool BYController::eventFilter(QObject* watched, QEvent* event)
{
    const auto button = std::ranges::find(theHotButtons, watched);
    if (event->type() == QEvent::ToolTip && button != theHotButtons.end()) {
        showToolTip(size_t(button - theHotButtons.begin()));
    }
    return PTKeyComboPanelTarget::eventFilter(watched, event);
}

void BYController::hitSetAddHotKey(QPushButton* sender)
{
    const int index = sender->property("tag").toInt();
    PTKeyComboPanel& panel = PTKeyComboPanel::sharedPanel();
    if (index < 0 || index >= hotKeyCount || panel.isRunning()) {
        return;
    }
    tag = index;
    const PTHotKey::Pointer& hotKey = mHotKey[size_t(tag)];
    hotKey->setName(theHotKeysNames[size_t(tag)]);
    panel.setKeyCombo(hotKey->keyCombo());
    panel.setKeyBindingName(hotKey->name());
    panel.runSheeetForModalWindow_target(sender->window(), this);
}

void BYController::hotKeySheetDidEndWithReturnCode(int returnCode)
{
    if (returnCode != PTKeyComboPanel::okReturn) {
        return;
    }
    const auto index = size_t(tag);
    const PTKeyCombo combo = PTKeyComboPanel::sharedPanel().keyCombo();
    mHotKey[index]->setKeyCombo(combo);
    showCombination(index);
    Setting<PropertyList::DictionaryPointer>{theHotKeysNames[index]}.publish(combo.plistRepresentation());
}
