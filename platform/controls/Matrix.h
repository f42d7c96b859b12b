// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractButton>
#include <QPointer>
#include <QWidget>

/// A grid of radio buttons or check boxes that acts as one control. The cells are the buttons in the widget's grid
/// layout; their rows and columns are those of the layout, counted from 0 (a layout of one line counts as a row or a
/// column). A cell's tag is its dynamic property "tag".
class Matrix : public QWidget
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(Matrix)

public:
    explicit Matrix(QWidget* parent = nullptr);
    ~Matrix() override;

    int numberOfRows() const;
    int numberOfColumns() const;
    /// The cell at a position, or null.
    QAbstractButton* cellAtRow_column(int row, int column) const;
    /// The cell that the user chose last: the checked one of radio buttons, the one just clicked of check boxes. Null
    /// when there is none.
    QAbstractButton* selectedCell() const;
    /// Position of the selected cell; -1 when there is none.
    int selectedRow() const;
    int selectedColumn() const;
    /// Turns a cell on or off without sending the action; of radio buttons the others go off. No cell there: nothing.
    void setState_atRow_column(bool on, int row, int column);
    /// Turns every check box on, or every cell off, without sending the action.
    void selectAll();
    void deselectAllCells();
    /// The tag of a cell; 0 when it has none or @p cell is null.
    static int tagOf(const QAbstractButton* cell);

Q_SIGNALS:
    /// The user has clicked @p sender's selectedCell().
    void acted(Matrix* sender);

protected:
    bool event(QEvent* event) override;
    void connectNotify(const QMetaMethod& signal) override;

private:
    QList<QAbstractButton*> cells() const;
    /// Column and row of a cell; -1, -1 when it is none of the layout's.
    QPoint positionOf(const QWidget* cell) const;
    void adoptCells();
    void cellWasClicked();
    static void setState(QAbstractButton* cell, bool on);

    QPointer<QAbstractButton> m_clicked;
};
