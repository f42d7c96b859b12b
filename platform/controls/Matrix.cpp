// SPDX-License-Identifier: MIT
#include "Matrix.h"

#include <QAbstractButton>
#include <QBoxLayout>
#include <QEvent>
#include <QGridLayout>
#include <QMetaMethod>

#include <algorithm>

Matrix::Matrix(QWidget* parent)
    : QWidget(parent)
{
}

Matrix::~Matrix() = default;

QPoint Matrix::positionOf(const QWidget* cell) const
{
    const int item = layout() ? layout()->indexOf(cell) : -1;
    if (item < 0) {
        return {-1, -1};
    }
    if (auto* const grid = qobject_cast<QGridLayout*>(layout())) {
        int row = 0;
        int column = 0;
        int rowSpan = 0;
        int columnSpan = 0;
        grid->getItemPosition(item, &row, &column, &rowSpan, &columnSpan);
        return {column, row};
    }
    const auto* const line = qobject_cast<const QBoxLayout*>(layout());
    const bool isColumn =
        line && (line->direction() == QBoxLayout::TopToBottom || line->direction() == QBoxLayout::BottomToTop);
    // Spacers in a line are no cells.
    int position = 0;
    for (int i = 0; i < item; ++i) {
        position += qobject_cast<QAbstractButton*>(layout()->itemAt(i)->widget()) ? 1 : 0;
    }
    return isColumn ? QPoint(0, position) : QPoint(position, 0);
}

QList<QAbstractButton*> Matrix::cells() const
{
    return findChildren<QAbstractButton*>(Qt::FindDirectChildrenOnly);
}

int Matrix::numberOfRows() const
{
    int rows = 0;
    for (const QAbstractButton* const cell : cells()) {
        rows = std::max(rows, positionOf(cell).y() + 1);
    }
    return rows;
}

int Matrix::numberOfColumns() const
{
    int columns = 0;
    for (const QAbstractButton* const cell : cells()) {
        columns = std::max(columns, positionOf(cell).x() + 1);
    }
    return columns;
}

QAbstractButton* Matrix::cellAtRow_column(int row, int column) const
{
    const QList<QAbstractButton*> all = cells();
    const auto found = std::find_if(
        all.begin(), all.end(), [&](const QAbstractButton* cell) { return positionOf(cell) == QPoint(column, row); });
    return found == all.end() || row < 0 ? nullptr : *found;
}

QAbstractButton* Matrix::selectedCell() const
{
    for (QAbstractButton* const cell : cells()) {
        if (cell->autoExclusive() && cell->isChecked()) {
            return cell;
        }
    }
    return m_clicked && !m_clicked->autoExclusive() ? m_clicked.data() : nullptr;
}

int Matrix::selectedRow() const
{
    return positionOf(selectedCell()).y();
}

int Matrix::selectedColumn() const
{
    return positionOf(selectedCell()).x();
}

void Matrix::setState_atRow_column(bool on, int row, int column)
{
    if (QAbstractButton* const cell = cellAtRow_column(row, column)) {
        setState(cell, on);
    }
}

void Matrix::setState(QAbstractButton* cell, bool on)
{
    // Qt keeps one button of an exclusive group checked, unless it is not exclusive for that moment.
    const bool exclusive = cell->autoExclusive();
    cell->setAutoExclusive(exclusive && on);
    cell->setChecked(on);
    cell->setAutoExclusive(exclusive);
}

void Matrix::selectAll()
{
    for (QAbstractButton* const cell : cells()) {
        if (!cell->autoExclusive()) {
            cell->setChecked(true);
        }
    }
}

void Matrix::deselectAllCells()
{
    for (QAbstractButton* const cell : cells()) {
        setState(cell, false);
    }
}

int Matrix::tagOf(const QAbstractButton* cell)
{
    return cell ? cell->property("tag").toInt() : 0;
}

bool Matrix::event(QEvent* event)
{
    if (event->type() == QEvent::ChildPolished || event->type() == QEvent::Polish) {
        adoptCells();
    }
    return QWidget::event(event);
}

void Matrix::connectNotify(const QMetaMethod& signal)
{
    // Whoever listens does so after the interface has been built: the cells are there.
    if (signal == QMetaMethod::fromSignal(&Matrix::acted)) {
        adoptCells();
    }
}

void Matrix::adoptCells()
{
    for (QAbstractButton* const cell : cells()) {
        connect(cell, &QAbstractButton::clicked, this, &Matrix::cellWasClicked, Qt::UniqueConnection);
    }
}

void Matrix::cellWasClicked()
{
    m_clicked = qobject_cast<QAbstractButton*>(sender());
    Q_EMIT acted(this);
}
