// SPDX-License-Identifier: MIT
#include "RowSelectionModel.h"

#include <QPointer>

RowSelectionModel::RowSelectionModel(QAbstractItemModel* model, QObject* parent)
    : QItemSelectionModel(model, parent)
{
}

RowSelectionModel::Move RowSelectionModel::moveTo(int row)
{
    if (m_isMoving || row == m_row) {
        return Move::Uninterrupted;
    }
    const QPointer<RowSelectionModel> self(this);
    const bool interrupted = announceMove();
    if (self) {
        apply(row);
    }
    return interrupted ? Move::Interrupted : Move::Uninterrupted;
}

bool RowSelectionModel::announceMove()
{
    const QPointer<RowSelectionModel> self(this);
    // A queued call is delivered only if somebody runs an event loop before the observers return.
    bool interrupted = false;
    QObject marker;
    QMetaObject::invokeMethod(
        &marker, [&interrupted] { interrupted = true; }, Qt::QueuedConnection);

    m_isMoving = true;
    Q_EMIT selectionIsChanging();
    if (self) {
        m_isMoving = false;
    }
    return interrupted;
}

void RowSelectionModel::apply(int row)
{
    const int rows = model()->rowCount();
    if (row >= rows) {
        row = m_row < rows ? m_row : -1;
    }
    const bool hasMoved = row != m_row;
    m_row = row;
    if (row < 0) {
        QItemSelectionModel::select(QItemSelection(), Clear);
        QItemSelectionModel::setCurrentIndex({}, NoUpdate);
    } else {
        const QModelIndex current = model()->index(row, m_column);
        QItemSelectionModel::select(QItemSelection(current, current), ClearAndSelect | Rows);
        QItemSelectionModel::setCurrentIndex(current, NoUpdate);
    }
    if (hasMoved) {
        Q_EMIT selectionDidChange();
    }
}

void RowSelectionModel::releaseRowsFrom(int rows)
{
    if (m_row >= rows) {
        QItemSelectionModel::select(QItemSelection(), Clear);
        QItemSelectionModel::setCurrentIndex({}, NoUpdate);
    }
}

void RowSelectionModel::settleAfterRemoval()
{
    // A removal inside an observer is settled when the move that is being announced is made.
    if (m_row >= model()->rowCount()) {
        moveTo(-1);
    }
}

void RowSelectionModel::select(const QItemSelection& selection, SelectionFlags command)
{
    const int row = selection.isEmpty() ? -1 : selection.first().top();
    if (command & Toggle) {
        moveTo(row == m_row ? -1 : row);
    } else if (command & Deselect) {
        moveTo(row == m_row ? -1 : m_row);
    } else if ((command & Select) && row >= 0) {
        moveTo(row);
    } else if (command & Clear) {
        moveTo(-1);
    }
}

void RowSelectionModel::setCurrentIndex(const QModelIndex& index, SelectionFlags command)
{
    const QPersistentModelIndex target(index);
    if (index.isValid() && (command & (Select | Toggle))) {
        m_column = index.column();
    }
    select(index, command);
    if (target.isValid() && target.row() == m_row) {
        m_column = target.column();
        QItemSelectionModel::setCurrentIndex(target, NoUpdate);
    }
}

void RowSelectionModel::clear()
{
    moveTo(-1);
}

void RowSelectionModel::clearCurrentIndex()
{
    moveTo(-1);
}
