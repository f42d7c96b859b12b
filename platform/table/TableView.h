// SPDX-License-Identifier: MIT
#pragma once

#include "TableViewDataSource.h"

#include <QPointer>
#include <QTableView>

#include <memory>
#include <optional>
#include <vector>

class QKeyEvent;

/// A table whose rows come from a data source when they are drawn, with columns found by identifier and cells that the
/// columns share. At most one row is selected.
///
/// The selection is announced whatever moved it (mouse, keyboard, code, the removal of rows). A slot may run a modal
/// dialog before the move: further moves meanwhile are ignored, and the move is made afterwards if its row still
/// exists.
class TableView : public QTableView
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(TableView)
    /// The columns, one "identifier" or "identifier:option,option" each. Options: `editable`, `sort` (a header click
    /// sorts by the identifier), `stretch`, `width=N` (in pixels at 96 dpi), `icon` (as narrow as a 16 pixel image).
    Q_PROPERTY(QStringList columns READ columns WRITE setColumns)
    /// The columns' titles, in the same order. The title of an icon column is not drawn: it is its header's tool tip.
    Q_PROPERTY(QStringList columnTitles READ columnTitles WRITE setColumnTitles)
    /// Shown in the middle of the table while it has no rows.
    Q_PROPERTY(QString placeholderText READ placeholderText WRITE setPlaceholderText)

public:
    explicit TableView(QWidget* parent = nullptr);
    ~TableView() override;

    QStringList columns() const;
    void setColumns(const QStringList& columns);
    QStringList columnTitles() const;
    void setColumnTitles(const QStringList& titles);
    QString placeholderText() const;
    void setPlaceholderText(const QString& text);

    /// The data source stays its owner's; null takes it away. It may be the table itself.
    void setDataSource(TableViewDataSource* source);
    TableViewDataSource* dataSource() const;

    /// Whether a column was declared with the option `icon`.
    bool isIconColumn(int column) const;
    /// The column with this identifier, or null.
    TableColumn* tableColumnWithIdentifier(const QString& identifier) const;
    const std::vector<std::unique_ptr<TableColumn>>& tableColumns() const;

    /// The number of rows that the data source gave last.
    int numberOfRows() const;
    /// Asks the data source for the number of rows again. Rows are added or taken at the end; a selected row that is
    /// gone is deselected.
    void noteNumberOfRowsChanged();
    /// Asks for everything again: the number of rows now, the cells as they are drawn. The selected row stays selected.
    /// Editing goes on unless its cell now holds another text.
    void reloadData();
    /// Gives the last column the width that is left; it keeps its least width where nothing is.
    void sizeLastColumnToFit();

    /// -1 when no row is selected.
    int selectedRow() const;
    /// Selects @p row alone; -1 deselects. At most one row is ever selected, so @p extend changes nothing.
    void selectRow_byExtendingSelection(int row, bool extend);
    void scrollRowToVisible(int row);
    /// Starts editing the text of a cell, all of it selected when @p select is set. Does nothing for row -1.
    void editColumn_row_withEvent_select(int column, int row, const QKeyEvent* event, bool select);
    /// Whether a cell's text is being edited.
    bool isEditing() const;

    QList<SortDescriptor> sortDescriptors() const;
    /// The rows are no longer in the order that the user chose: the header shows none until it is clicked again.
    void clearSortDescriptors();

    /// Accepts drops; what may be dropped is the data source's decision.
    void registerForDraggedTypes();
    /// Called while a drop is validated: where it is to land.
    void setDropRow_dropOperation(int row, DropOperation operation);
    /// What a drag of rows offers outside (@p local false) or inside this program.
    virtual DragOperation draggingSourceOperationMaskForLocal(bool local) const;

    /// A key typed while the table has the focus; the default is the table's own handling.
    virtual void keyDown(QKeyEvent* event);
    /// A key pressed with the command modifier (Control), offered before menus and shortcuts; true when it was handled.
    virtual bool performKeyEquivalent(QKeyEvent* event);
    /// The user is about to change the text of a cell: called at the first change. False refuses.
    virtual bool textShouldBeginEditing(QWidget* fieldEditor);
    /// The editing of a cell ends: the default commits the text through the data source. Also called, without a commit,
    /// when the user gives up with Escape after a change.
    virtual void textDidEndEditing(QWidget* fieldEditor);

    /// Does nothing: typing ahead is up to keyDown(), which knows the rows without asking the data source for each.
    void keyboardSearch(const QString& search) override;

Q_SIGNALS:
    /// The selection is about to move; selectedRow() still answers the old row.
    void selectionIsChanging();
    /// The selection has moved.
    void selectionDidChange();

protected:
    bool event(QEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    /// Composed characters (dead keys, input methods) are typed like any other.
    void inputMethodEvent(QInputMethodEvent* event) override;
    /// Characters are composed whatever column the keyboard is in; Qt wants an editable one.
    QVariant inputMethodQuery(Qt::InputMethodQuery query) const override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void changeEvent(QEvent* event) override;
    void commitData(QWidget* editor) override;
    void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;

private:
    class Implementation;

    std::unique_ptr<Implementation> m_implementation;
};
