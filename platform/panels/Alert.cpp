// SPDX-License-Identifier: MIT
#include "Alert.h"

#include <QApplication>
#include <QGridLayout>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr int leastTextWidth = 320;

/// The first button is the default; an empty @p secondButton leaves that one out.
void fillAlert(QMessageBox& box, const QString& title, const QString& message, const QString& firstButton,
    const QString& secondButton, Alert::Dismissal dismissal)
{
    box.setObjectName(u"AlertPanel"_s);
    box.setIcon(QMessageBox::Warning);
    box.setWindowTitle(title);
    // Names that users gave to things are shown as they are, never as markup.
    box.setTextFormat(Qt::PlainText);
    box.setText(title);
    box.setInformativeText(message);
    if (auto* const label = box.findChild<QLabel*>(u"qt_msgbox_label"_s)) {
        QFont bold = label->font();
        bold.setBold(true);
        label->setFont(bold);
    }
    // Left to itself, the box breaks a sentence into lines of a few words.
    if (auto* const grid = qobject_cast<QGridLayout*>(box.layout())) {
        grid->addItem(new QSpacerItem(leastTextWidth, 0), grid->rowCount(), 0, 1, grid->columnCount());
    }
    box.setDefaultButton(box.addButton(firstButton, QMessageBox::AcceptRole));
    if (!secondButton.isEmpty()) {
        // Escape presses the button that rejects; without one the box cannot be closed.
        const bool rejects = dismissal == Alert::Dismissal::AnswersAlternate;
        box.addButton(secondButton, rejects ? QMessageBox::RejectRole : QMessageBox::DestructiveRole);
    }
}

bool isFirstButton(const QMessageBox& box)
{
    return box.clickedButton() && box.clickedButton() == box.defaultButton();
}

} // namespace

int Alert::runAlertPanel(QWidget* parent, const QString& title, const QString& message, const QString& defaultButton,
    const QString& alternateButton, Dismissal dismissal)
{
    QMessageBox box(parent);
    fillAlert(box, title, message, defaultButton, alternateButton, dismissal);
    box.setWindowModality(Qt::ApplicationModal);
    box.exec();
    return isFirstButton(box) ? defaultReturn : alternateReturn;
}

void Alert::beginSheet(QWidget* window, const QString& messageText, const QString& informativeText,
    const QString& firstButton, const QString& secondButton, std::function<void(int)> didEnd)
{
    auto* const box = new QMessageBox(window);
    box->setAttribute(Qt::WA_DeleteOnClose);
    fillAlert(*box, messageText, informativeText, firstButton, secondButton, Dismissal::AnswersAlternate);
    QObject::connect(box, &QMessageBox::finished, box,
        [box, didEnd = std::move(didEnd)] { didEnd(isFirstButton(*box) ? firstButtonReturn : secondButtonReturn); });
    // A window-modal sheet on the window, whatever widget of it was given.
    box->open();
}

void Alert::beep()
{
    QApplication::beep();
}
