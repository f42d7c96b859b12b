// SPDX-License-Identifier: MIT
#include "TableView.h"

#include "TableView_Implementation.h"

#include <platform/controls/Pasteboard.h>

#include <QDropEvent>
#include <QPainter>

namespace {

Qt::DropAction dropAction(DragOperation operation)
{
    switch (operation) {
    case DragOperation::Copy:
        return Qt::CopyAction;
    case DragOperation::Link:
        return Qt::LinkAction;
    case DragOperation::None:
        break;
    }
    return Qt::IgnoreAction;
}

void answer(QDropEvent* event, DragOperation operation)
{
    const Qt::DropAction action = dropAction(operation);
    if (action != Qt::IgnoreAction && (event->possibleActions() & action)) {
        event->setDropAction(action);
        event->accept();
    } else {
        event->ignore();
    }
}

} // namespace

void TableView::registerForDraggedTypes()
{
    setAcceptDrops(true);
}

DragOperation TableView::draggingSourceOperationMaskForLocal(bool /*local*/) const
{
    return DragOperation::Copy;
}

void TableView::setDropRow_dropOperation(int row, DropOperation operation)
{
    m_implementation->drop.row = row;
    m_implementation->drop.operation = operation;
}

TableView::Implementation::Drop TableView::Implementation::proposedDrop(const QPoint& position) const
{
    const QModelIndex index = table->indexAt(QPoint(table->columnViewportPosition(0), position.y()));
    if (!index.isValid()) {
        return {model->rowCount(), DropOperation::Above};
    }
    const QRect row = table->visualRect(index);
    const int quarter = row.height() / 4;
    if (position.y() < row.top() + quarter) {
        return {index.row(), DropOperation::Above};
    }
    if (position.y() > row.bottom() - quarter) {
        return {index.row() + 1, DropOperation::Above};
    }
    return {index.row(), DropOperation::On};
}

DragOperation TableView::Implementation::validateDrop(const QDropEvent& event)
{
    drop = proposedDrop(event.position().toPoint());
    const Pasteboard pasteboard(event.mimeData());
    const DraggingInfo info(pasteboard, event.source() != nullptr);
    TableViewDataSource* const source = model->dataSource();
    const DragOperation operation =
        source ? source->tableView_validateDrop_proposedRow_proposedDropOperation(table, info, drop.row, drop.operation)
               : DragOperation::None;
    drop.isAccepted = operation != DragOperation::None;
    table->viewport()->update();
    return operation;
}

void TableView::dragEnterEvent(QDragEnterEvent* event)
{
    QTableView::dragEnterEvent(event);
    // A drag whose entering is refused is over for this widget, and it may enter where nothing can be dropped on its
    // way to a row. Each of its moves, the first of which follows at once, is answered by what is under it.
    event->acceptProposedAction();
}

void TableView::dragMoveEvent(QDragMoveEvent* event)
{
    // Qt's part scrolls the table at its edges.
    QTableView::dragMoveEvent(event);
    answer(event, m_implementation->validateDrop(*event));
}

void TableView::dragLeaveEvent(QDragLeaveEvent* event)
{
    QTableView::dragLeaveEvent(event);
    m_implementation->drop = {};
    viewport()->update();
}

void TableView::dropEvent(QDropEvent* event)
{
    answer(event, m_implementation->validateDrop(*event));
    const Implementation::Drop drop = m_implementation->drop;
    QDragLeaveEvent leave;
    dragLeaveEvent(&leave);
    if (!event->isAccepted()) {
        return;
    }
    const Pasteboard pasteboard(event->mimeData());
    const DraggingInfo info(pasteboard, event->source() != nullptr);
    if (!dataSource()->tableView_acceptDrop_row_dropOperation(this, info, drop.row, drop.operation)) {
        event->ignore();
    }
}

void TableView::Implementation::paintDropIndicator() const
{
    if (!drop.isAccepted || drop.row < 0) {
        return;
    }
    QPainter painter(table->viewport());
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor color = table->palette().color(QPalette::Highlight);
    painter.setPen(QPen(color, 2));
    const int width = table->viewport()->width();
    if (drop.operation == DropOperation::On) {
        QColor veil = color;
        veil.setAlphaF(0.2F);
        painter.setBrush(veil);
        const QRectF row(1, table->rowViewportPosition(drop.row) + 1, width - 2, table->rowHeight(drop.row) - 2);
        painter.drawRoundedRect(row, 3, 3);
        return;
    }
    const int y = drop.row < model->rowCount()
                      ? table->rowViewportPosition(drop.row)
                      : table->rowViewportPosition(drop.row - 1) + table->rowHeight(drop.row - 1);
    painter.drawLine(0, y, width, y);
}
