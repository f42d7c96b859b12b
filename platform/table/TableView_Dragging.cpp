// SPDX-License-Identifier: MIT
#include "TableView.h"

#include <QDropEvent>
#include <QPainter>

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
    validateDrop(event);
}

void TableView::dragLeaveEvent(QDragLeaveEvent* event)
{
    QTableView::dragLeaveEvent(event);
    m_dropRow = -1;
    viewport()->update();
}

void TableView::dropEvent(QDropEvent* event)
{
    validateDrop(event);
    const QModelIndex target = m_model ? m_model->index(m_dropRow, 0) : QModelIndex();
    // The mark goes, and all rows are painted again when this event is over: one that has got a sound by the drop shows
    // it then, though its controller reloads nothing.
    QDragLeaveEvent leave;
    dragLeaveEvent(&leave);
    if (event->isAccepted() && !m_model->dropMimeData(event->mimeData(), event->dropAction(), -1, -1, target)) {
        event->ignore();
    }
}

/// Asks the model about the place under the pointer: on a row, or between two near a row's edge. A drop between two
/// rows lands on the lower one.
void TableView::validateDrop(QDropEvent* event)
{
    const int y = event->position().toPoint().y();
    const QModelIndex under = indexAt({columnViewportPosition(0), y});
    const QRect rect = visualRect(under);
    const int quarter = rect.height() / 4;
    const bool isOnRow = under.isValid() && y >= rect.top() + quarter && y <= rect.bottom() - quarter;
    const bool isBelow = under.isValid() && y > rect.bottom() - quarter;
    const int row = under.isValid() ? under.row() + (isBelow ? 1 : 0) : numberOfRows();
    const Qt::DropAction action = Qt::CopyAction;
    const bool isAccepted = m_model && (event->possibleActions() & action) &&
                            (isOnRow ? m_model->canDropMimeData(event->mimeData(), action, -1, -1, under)
                                     : m_model->canDropMimeData(event->mimeData(), action, row, 0, {}));
    m_dropRow = isAccepted ? row : -1;
    viewport()->update();
    if (isAccepted) {
        event->setDropAction(action);
    }
    event->setAccepted(isAccepted);
}

void TableView::paintDropIndicator()
{
    if (m_dropRow < 0) {
        return;
    }
    QPainter painter(viewport());
    painter.setRenderHint(QPainter::Antialiasing);
    QColor color = palette().color(QPalette::Highlight);
    painter.setPen(QPen(color, 2));
    color.setAlphaF(0.2F);
    painter.setBrush(color);
    const QRectF row(1, rowViewportPosition(m_dropRow) + 1, viewport()->width() - 2, rowHeight(m_dropRow) - 2);
    painter.drawRoundedRect(row, 3, 3);
}
