// SPDX-License-Identifier: MIT
#include "TableView.h"

#include "TableView_Implementation.h"

#include <QHoverEvent>
#include <QMenu>
#include <QMouseEvent>

#include <utility>

void TableView::mousePressEvent(QMouseEvent* event)
{
    m_implementation->viewHasPress = false;
    const QModelIndex index = indexAt(event->position().toPoint());
    if (event->button() == Qt::LeftButton && m_implementation->pressCell(index, event->modifiers())) {
        event->accept();
        return;
    }
    m_implementation->viewHasPress = true;
    QTableView::mousePressEvent(event);
}

/// True when the press needs nothing more of the view.
bool TableView::Implementation::pressCell(const QModelIndex& index, Qt::KeyboardModifiers modifiers)
{
    if (!index.isValid()) {
        selection->moveTo(-1);
        return true;
    }
    if (modifiers & Qt::ControlModifier) {
        return false;
    }
    const QPersistentModelIndex pressed(index);
    if (selection->moveTo(index.row()) == RowSelectionModel::Move::Interrupted) {
        // The mouse button has long been released, over a dialog: there is no press left to go on with.
        return true;
    }
    if (!pressed.isValid() || selection->selectedRow() != pressed.row()) {
        return true;
    }
    const Cell* const cell = model->cell(pressed);
    if (dynamic_cast<const ButtonCell*>(cell)) {
        selection->setCurrentIndex(pressed, QItemSelectionModel::NoUpdate);
        pressedCell = pressed;
        setPressedOver(true);
        return true;
    }
    if (dynamic_cast<const PopUpButtonCell*>(cell)) {
        selection->setCurrentIndex(pressed, QItemSelectionModel::NoUpdate);
        openMenu(pressed);
        return true;
    }
    return false;
}

void TableView::mouseMoveEvent(QMouseEvent* event)
{
    if (m_implementation->pressedCell.isValid()) {
        m_implementation->setPressedOver(indexAt(event->position().toPoint()) == m_implementation->pressedCell);
        return;
    }
    // A move with a button held belongs to a press; without the press, it would select and drag.
    if (m_implementation->viewHasPress || event->buttons() == Qt::NoButton) {
        QTableView::mouseMoveEvent(event);
    }
}

void TableView::mouseReleaseEvent(QMouseEvent* event)
{
    const QPersistentModelIndex pressed = std::exchange(m_implementation->pressedCell, {});
    if (pressed.isValid() && event->button() == Qt::LeftButton) {
        m_implementation->setPressedOver(false);
        if (indexAt(event->position().toPoint()) == pressed) {
            m_implementation->activateCell(pressed);
        }
        return;
    }
    if (std::exchange(m_implementation->viewHasPress, false)) {
        QTableView::mouseReleaseEvent(event);
    }
}

void TableView::mouseDoubleClickEvent(QMouseEvent* event)
{
    // The second press of two quick clicks: a button cell is to hear both.
    const QModelIndex index = indexAt(event->position().toPoint());
    if (!index.isValid() || !dynamic_cast<const TextCell*>(m_implementation->model->cell(index))) {
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
        m_implementation->setHovered(indexAt(static_cast<const QHoverEvent*>(event)->position().toPoint()));
        break;
    case QEvent::HoverLeave:
        m_implementation->setHovered({});
        break;
    default:
        break;
    }
    return QTableView::viewportEvent(event);
}

void TableView::Implementation::setHovered(const QModelIndex& index)
{
    const QPersistentModelIndex old = delegate->hoveredCell();
    if (old != index) {
        delegate->setHoveredCell(index);
        table->update(old);
        table->update(index);
    }
}

void TableView::Implementation::setPressedOver(bool over)
{
    const QPersistentModelIndex old = delegate->pressedCell();
    delegate->setPressedCell(over ? QModelIndex(pressedCell) : QModelIndex());
    table->update(old);
    table->update(pressedCell);
}

void TableView::Implementation::activateCell(const QModelIndex& index)
{
    const QPersistentModelIndex activated(index);
    if (index.row() != selection->selectedRow()) {
        selection->moveTo(index.row());
    }
    if (!activated.isValid() || selection->selectedRow() != activated.row()) {
        return;
    }
    if (const auto* const button = dynamic_cast<const ButtonCell*>(model->cell(activated))) {
        button->performClick(table);
        model->setData(activated, {}, Qt::EditRole);
    } else if (dynamic_cast<const PopUpButtonCell*>(model->cell(activated))) {
        openMenu(activated);
    }
}

void TableView::Implementation::openMenu(const QModelIndex& index)
{
    const auto* const cell = dynamic_cast<const PopUpButtonCell*>(model->cell(index));
    if (cell && cell->menu()) {
        cell->menu()->popup(table->viewport()->mapToGlobal(table->visualRect(index).bottomLeft()));
    }
}
