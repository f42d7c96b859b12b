// SPDX-License-Identifier: MIT
#include "BYTableView.h"

#include "DocumentCommands.h"
#include "PrintClippingsWindow.h"

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
