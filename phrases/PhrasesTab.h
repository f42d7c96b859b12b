// SPDX-License-Identifier: MIT
#pragma once

#include "ui_PhrasesTab.h"

#include <QWidget>

class SoundPanelAccessory;

/// The tab "Phrases": the form with the phrase table, which is its own controller, the print window, and a place for
/// the edit pane. Of the table's outlets those are connected that belong to the tab.
class PhrasesTab final : public QWidget
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(PhrasesTab)

public:
    /// @p soundPanel belongs to the caller and outlives the tab.
    explicit PhrasesTab(SoundPanelAccessory& soundPanel, QWidget* parent = nullptr);

    /// Its set-up is still to be run.
    BYTableView& table() { return *m_form.abbsTableView; }

    /// Fills the place below the list: with @p editPane, which the tab takes over, while a phrase is selected,
    /// otherwise with a hint. Once.
    void setEditPane(QWidget* editPane);

private:
    void makePrintWindow();

    Ui::PhrasesTab m_form;
};
