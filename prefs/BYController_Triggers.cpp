// SPDX-License-Identifier: MIT
#include "BYController.h"

#include "ControlTitle.h"
#include "TriggerCells.h"

#include <core/Settings.h>
#include <core/TriggerCharacters.h>
#include <platform/bytes/CharacterBitmap.h>
#include <platform/controls/Matrix.h>

#include <QAbstractButton>

using namespace Qt::StringLiterals;

namespace {

QString charactersOfTitle(const QAbstractButton* cell)
{
    return cell ? titleWithoutMnemonic(cell->text()) : QString();
}

QString charactersOf(const QAbstractButton* cell)
{
    switch (Matrix::tagOf(cell)) {
    case 20:
        return u"\t"_s;
    case 21:
        return u" "_s;
    case 22:
        return u"\r"_s;
    case 23:
        return u"\u00A0"_s;
    case 24:
        return u"\u001B"_s;
    default:
        return charactersOfTitle(cell);
    }
}

void saveTriggers(const CharacterBitmap& triggers, bool none)
{
    Settings::triggersSet.publish(triggers.bytes());
    Settings::noTriggers.publish(none);
}

} // namespace

void BYController::enterTriggerPref(Matrix* sender)
{
    const QAbstractButton* const cell = sender->selectedCell();
    if (!cell) {
        return;
    }
    CharacterBitmap triggers = TriggerCharacters::chosen();
    if (isOn(cell)) {
        triggers.add(charactersOf(cell));
    } else {
        triggers.remove(charactersOf(cell));
    }
    saveTriggers(triggers, triggers.isEmpty());
}

void BYController::selectAllTriggers(QWidget* /*sender*/)
{
    if (!triggersPrefsMatrix) {
        return;
    }
    triggersPrefsMatrix->selectAll();
    CharacterBitmap triggers = TriggerCharacters::defaults();
    for (int row = 0; row < TriggerCells::rowCount; ++row) {
        for (int column = 0; column < TriggerCells::columnCount; ++column) {
            triggers.add(charactersOfTitle(triggersPrefsMatrix->cellAtRow_column(row, column)));
        }
    }
    saveTriggers(triggers, false);
}

void BYController::deSelectAllTriggers(QWidget* /*sender*/)
{
    if (!triggersPrefsMatrix) {
        return;
    }
    triggersPrefsMatrix->deselectAllCells();
    saveTriggers(CharacterBitmap(), true);
}
