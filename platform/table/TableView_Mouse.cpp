// SPDX-License-Identifier: MIT
#include "TableView.h"

#include "CellDelegate.h"
#include "RowSelectionModel.h"

#include <QHoverEvent>
#include <QMenu>
#include <QMouseEvent>

#include <utility>

void TableView::mousePressEvent(QMouseEvent* event)
{
    m_viewHasPress = false;
    const QModelIndex index = indexAt(event->position().toPoint());
    if (event->button() == Qt::LeftButton && pressCell(index, event->modifiers())) {
        event->accept();
        return;
    }
    m_viewHasPress = true;
    QTableView::mousePressEvent(event);
}

/// True when the press needs nothing more of the view.
bool TableView::pressCell(const QModelIndex& index, Qt::KeyboardModifiers modifiers)
{
    if (!index.isValid()) {
        selectRow_byExtendingSelection(-1, false);
        return true;
    }
    if (modifiers & Qt::ControlModifier) {
        return false;
    }
    const QPersistentModelIndex pressed(index);
    if (m_selection->moveTo(index.row()) == RowSelectionModel::Move::Interrupted) {
        // The mouse button has long been released, over a dialog: there is no press left to go on with.
        return true;
    }
    if (!pressed.isValid() || m_selection->selectedRow() != pressed.row()) {
        return true;
    }
    switch (m_model->columnAt(pressed.column()).kind) {
    case TableModel::Kind::Button:
        m_selection->setCurrentIndex(pressed, QItemSelectionModel::NoUpdate);
        m_pressedCell = pressed;
        setPressedOver(true);
        return true;
    case TableModel::Kind::Menu:
        m_selection->setCurrentIndex(pressed, QItemSelectionModel::NoUpdate);
        openMenu(pressed);
        return true;
    default:
        return false;
    }
}

void TableView::mouseMoveEvent(QMouseEvent* event)
{
    if (m_pressedCell.isValid()) {
        setPressedOver(indexAt(event->position().toPoint()) == m_pressedCell);
        return;
    }
    // A move with a button held belongs to a press; without the press, it would select and drag.
    if (m_viewHasPress || event->buttons() == Qt::NoButton) {
        QTableView::mouseMoveEvent(event);
    }
}

void TableView::mouseReleaseEvent(QMouseEvent* event)
{
    const QPersistentModelIndex pressed = std::exchange(m_pressedCell, {});
    if (pressed.isValid() && event->button() == Qt::LeftButton) {
        setPressedOver(false);
        if (indexAt(event->position().toPoint()) == pressed) {
            activateCell(pressed);
        }
        return;
    }
    if (std::exchange(m_viewHasPress, false)) {
        QTableView::mouseReleaseEvent(event);
    }
}

void TableView::mouseDoubleClickEvent(QMouseEvent* event)
{
    // The second press of two quick clicks: a button cell is to hear both.
    const QModelIndex index = indexAt(event->position().toPoint());
    if (!index.isValid() || !m_model->columnAt(index.column()).hasText()) {
        mousePressEvent(event);
        return;
    }
    QTableView::mouseDoubleClickEvent(event);
}

bool TableView::viewportEvent(QEvent* event)
{
    switch (event->type()) {
    case QEvent::HoverEnter:
    case QEvent::HoverMove:
        setHovered(indexAt(static_cast<const QHoverEvent*>(event)->position().toPoint()));
        break;
    case QEvent::HoverLeave:
        setHovered({});
        break;
    default:
        break;
    }
    return QTableView::viewportEvent(event);
}

void TableView::setHovered(const QModelIndex& index)
{
    const QPersistentModelIndex old = m_delegate->hoveredCell();
    if (old != index) {
        m_delegate->setHoveredCell(index);
        update(old);
        update(index);
    }
}

void TableView::setPressedOver(bool over)
{
    const QPersistentModelIndex old = m_delegate->pressedCell();
    m_delegate->setPressedCell(over ? QModelIndex(m_pressedCell) : QModelIndex());
    update(old);
    update(m_pressedCell);
}

void TableView::activateCell(const QModelIndex& index)
{
    const QPersistentModelIndex activated(index);
    if (index.row() != m_selection->selectedRow()) {
        m_selection->moveTo(index.row());
    }
    if (!activated.isValid() || m_selection->selectedRow() != activated.row()) {
        return;
    }
    if (m_model->columnAt(activated.column()).kind == TableModel::Kind::Button) {
        m_model->setData(activated, {}, Qt::EditRole);
    } else {
        openMenu(activated);
    }
}

void TableView::clickButton(const QString& column)
{
    const int index = m_model ? m_model->columnWithIdentifier(column) : -1;
    if (index >= 0 && selectedRow() >= 0) {
        m_model->setData(m_model->index(selectedRow(), index), {}, Qt::EditRole);
    }
}

void TableView::openMenu(const QModelIndex& index)
{
    if (QMenu* const menu = m_model->columnAt(index.column()).menu) {
        menu->popup(viewport()->mapToGlobal(visualRect(index).bottomLeft()));
    }
}
