// SPDX-License-Identifier: MIT
#pragma once

#include <QItemSelectionModel>

/// The selection of a TableView: at most one row, and the current cell always in it.
///
/// Every road to a new selection (mouse, keyboard, code, the removal of rows) leads through moveTo(), which announces
/// the move before and after.
class RowSelectionModel final : public QItemSelectionModel
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(RowSelectionModel)

public:
    /// Whether an observer ran an event loop (a modal dialog) while the move was announced. The mouse press or key
    /// press that caused an interrupted move is over.
    enum class Move { Uninterrupted, Interrupted };

    RowSelectionModel(QAbstractItemModel* model, QObject* parent);

    /// The selected row; -1 for none. While a move is being announced this is the old row still.
    int selectedRow() const { return m_row; }

    /// The column in which the keyboard is, kept from row to row.
    int column() const { return m_column; }

    /// Puts the keyboard into @p column from the next move on.
    void setColumn(int column) { m_column = column; }

    /// Selects @p row, or nothing when it is -1. Ignored while another move is being announced.
    Move moveTo(int row);

    /// Lets go of rows from @p rows on, which are about to be removed, without announcing anything yet.
    void releaseRowsFrom(int rows);
    /// Announces that the selected row has been removed, if it has.
    void settleAfterRemoval();

    using QItemSelectionModel::select;
    void select(const QItemSelection& selection, SelectionFlags command) override;
    void setCurrentIndex(const QModelIndex& index, SelectionFlags command) override;
    void clear() override;
    void clearCurrentIndex() override;

Q_SIGNALS:
    /// The selection is about to move; selectedRow() still answers the old row.
    void selectionIsChanging();
    /// The selection has moved.
    void selectionDidChange();

private:
    bool announceMove();
    void apply(int row);

    int m_row = -1;
    int m_column = 0;
    bool m_isMoving = false;
};
