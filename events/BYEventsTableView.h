// SPDX-License-Identifier: MIT
#pragma once

#include <platform/table/TableView.h>

/// The table of sound events: adds keyboard commands for the selected row to a table view.
///
/// Removing a row takes its sound away; the event stays, since the events come with the document. The command keys act
/// on their character whatever the other modifiers are.
class BYEventsTableView final : public TableView
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(BYEventsTableView)

public:
    explicit BYEventsTableView(QWidget* parent = nullptr);

    /// Clears the selected row's sound, writes the document and tells the helper; asks first when `gConfirmRemove` is
    /// set.
    void removeRow(QObject* sender);

    /// Delete removes the row's sound.
    void keyDown(QKeyEvent* event) override;
    /// c copies and v pastes the sound's path, a toggles the sound, delete clears it without asking, the left arrow
    /// reveals the file, the right arrow plays the event.
    bool performKeyEquivalent(QKeyEvent* event) override;

private:
    void copySound();
    void pasteSound();
};
