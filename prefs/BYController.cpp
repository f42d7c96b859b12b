// SPDX-License-Identifier: MIT
#include "BYController.h"

#include "ControlTitle.h"

#include <core/HelperProcess.h>
#include <core/Settings.h>
#include <platform/controls/Matrix.h>
#include <platform/desktop/Bundle.h>
#include <platform/desktop/HelpViewer.h>
#include <platform/desktop/Text.h>

#include <QAbstractButton>
#include <QCheckBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QLoggingCategory>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QTimer>
#include <QVariant>

using namespace Qt::StringLiterals;

namespace {

Q_LOGGING_CATEGORY(log, "blipsy.options")

/// The menu option that the helper heeds only when it starts.
constexpr int menuOptionNeedingRestart = 4;
constexpr qsizetype arrowPosition = 4;

qint32 intValueOf(const QWidget* control)
{
    if (const auto* const stepper = qobject_cast<const QSpinBox*>(control)) {
        return stepper->value();
    }
    const auto* const field = qobject_cast<const QLineEdit*>(control);
    return field ? PropertyList::Value(field->text()).intValue() : 0;
}

/// Check boxes come alone or in a matrix; a lone one is its own selected cell.
const QAbstractButton* selectedCellOf(const QWidget* control)
{
    const auto* const matrix = qobject_cast<const Matrix*>(control);
    return matrix ? matrix->selectedCell() : qobject_cast<const QAbstractButton*>(control);
}

/// The title of a check box is its settings key. Its readers know the untranslated one, which the interface keeps
/// beside a title that it translates.
QString settingKeyOf(const QAbstractButton* cell)
{
    const QString untranslated = cell->property("settingKey").toString();
    return untranslated.isEmpty() ? titleWithoutMnemonic(cell->text()) : untranslated;
}

} // namespace

BYController::BYController(QObject* parent)
    : PTKeyComboPanelTarget(parent)
{
}

BYController::~BYController() = default;

void BYController::awakeFromNib()
{
    showIdleTalkInterval();
    setUpHotKeys();
    showArrow();
}

void BYController::showIdleTalkInterval()
{
    const QString interval = Settings::idleTalkIntervalPref.value();
    if (idleTalkIntervalText) {
        idleTalkIntervalText->setText(interval);
    }
    if (idleTalkIntervalStepper) {
        const QSignalBlocker quiet(idleTalkIntervalStepper);
        idleTalkIntervalStepper->setValue(PropertyList::Value(interval).intValue());
    }
}

void BYController::showArrow()
{
    const QString arrow = Settings::arrowPref.value();
    if (!menuPref || arrow.isEmpty() || menuPref->title().size() <= arrowPosition) {
        return;
    }
    menuPref->setTitle(menuPref->title().replace(arrowPosition, 1, arrow));
}

void BYController::enterIdleTalkIntervalPref(QWidget* sender)
{
    const QString interval = QString::number(intValueOf(sender));
    if (idleTalkIntervalText) {
        idleTalkIntervalText->setText(interval);
    }
    Settings::idleTalkIntervalPref.publish(interval);
}

bool BYController::isOn(const QAbstractButton* cell)
{
    // To a button in the mixed state isChecked() is true.
    const auto* const checkBox = qobject_cast<const QCheckBox*>(cell);
    return checkBox ? checkBox->checkState() == Qt::Checked : cell->isChecked();
}

void BYController::enterExpansionPref(QWidget* sender)
{
    const QAbstractButton* const cell = selectedCellOf(sender);
    if (!cell) {
        return;
    }
    const QString key = settingKeyOf(cell);
    qCInfo(log).noquote() << key;
    Setting<bool>{key}.publish(isOn(cell));
}

void BYController::enterMenuPref(Matrix* sender)
{
    const int chosen = Matrix::tagOf(sender->selectedCell());
    const int before = Settings::menuPref.value();
    Settings::menuPref.publish(chosen);
    if (chosen == before || (chosen != menuOptionNeedingRestart && before != menuOptionNeedingRestart)) {
        return;
    }
    HelperProcess::isRunning(this, [this](bool running) {
        if (running) {
            restartHelper();
        }
    });
}

void BYController::restartHelper()
{
    HelperProcess::stop();
    QTimer::singleShot(HelperProcess::restartDelay, this, &BYController::handleTimer);
}

void BYController::handleTimer()
{
    HelperProcess::isRunning(this, [this](bool running) {
        if (running) {
            return;
        }
        HelperProcess::start();
        if (onOffRadioButton) {
            onOffRadioButton->setState_atRow_column(true, 0, 0);
        }
    });
}

void BYController::enterTriggerDelimitersPref(Matrix* sender)
{
    Settings::triggerInhibPref.publish(Matrix::tagOf(sender->selectedCell()));
}

void BYController::iTunesAnnouncerPref(Matrix* sender)
{
    Settings::announcerPref.publish(Matrix::tagOf(sender->selectedCell()));
}

void BYController::enterSortPref(Matrix* sender)
{
    Settings::sortPref.publish(Matrix::tagOf(sender->selectedCell()));
}

void BYController::showHelp(QWidget* /*sender*/)
{
    const QString bookName = Text::tr("Blipsy 1.x Help");
    const int error = HelpViewer::openBook(bookName, Bundle::resourcePath() + u"/Help"_s);
    if (error != 0) {
        qCWarning(log, "AHGotoPage returned error: %d", error);
    }
}

void BYController::textDidBeginEditing()
{
    qCInfo(log).noquote() << "Blipsy: textDidBeginEditing called";
}
