// SPDX-License-Identifier: MIT
#pragma once

#include "TableModel.h"

#include <QLineEdit>
#include <QPersistentModelIndex>
#include <QPointer>
#include <QTableView>

class CellDelegate;
class QKeyEvent;
class RowSelectionModel;

/// A view of a TableModel with what Qt's lacks: a selection of at most one row that asks before it moves, buttons in
/// cells, keys that come before shortcuts, drops that land on rows, and a text for the empty table.
///
/// The selection is announced whatever moved it (mouse, keyboard, code, the removal of rows). A slot may run a modal
/// dialog before the move: further moves meanwhile are ignored, and the move is made afterwards if its row still
/// exists.
class TableView : public QTableView
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(TableView)
    /// Shown in the middle of the table while it has no rows.
    Q_PROPERTY(QString placeholderText READ placeholderText WRITE setPlaceholderText)

public:
    explicit TableView(QWidget* parent = nullptr);
    ~TableView() override;

    /// Shows @p model, a TableModel, with no row selected and without announcing that. It stays its owner's; a null
    /// one, or the end of the model, leaves the table empty.
    void setModel(QAbstractItemModel* model) override;

    QString placeholderText() const { return m_placeholderText; }

    void setPlaceholderText(const QString& text);

    /// The number of rows that the model counted last.
    int numberOfRows() const;
    /// Counts the rows again. Rows are added or taken at the end; a selected row that is gone is deselected.
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
    bool isEditing() const { return !m_edit.editor.isNull(); }

    /// Does what a click on the selected row's button in @p column does; nothing when no row is selected.
    void clickButton(const QString& column);

    /// The identifier of the column that the user has sorted by, or an empty one, and how.
    QString sortColumn() const;

    Qt::SortOrder sortOrder() const { return m_sortOrder; }

    /// The rows are no longer in the order that the user chose: the header shows none until it is clicked again.
    void clearSortDescriptors();

    /// A key typed while the table has the focus; the default is the table's own handling.
    virtual void keyDown(QKeyEvent* event);
    /// A key pressed with the command modifier (Control), offered before menus and shortcuts; true when it was handled.
    virtual bool performKeyEquivalent(QKeyEvent* event);
    /// The user is about to change the text of a cell: called at the first change. False refuses.
    virtual bool textShouldBeginEditing(QWidget* fieldEditor);
    /// The editing of a cell ends: the default commits the text to the model. Also called, without a commit, when the
    /// user gives up with Escape after a change.
    virtual void textDidEndEditing(QWidget* fieldEditor);

    /// Does nothing: typing ahead is up to keyDown(), which knows the rows without asking the model for each.
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
    /// A cell's text being edited.
    struct Edit
    {
        QPointer<QLineEdit> editor;
        QPersistentModelIndex index;
        QString originalText;
        /// textShouldBeginEditing() has agreed to a change.
        bool hasBegun = false;
        bool isGivenUp = false;
        /// textDidEndEditing() has been called.
        bool hasEnded = false;
    };

    void layOutColumns();
    void updateRowHeight();
    void sort(int column, Qt::SortOrder order);
    void setNumberOfRows(int rows);

    void beginEditing(QLineEdit* editor, const QModelIndex& index);
    void textWasEdited();
    void endEditing(const QWidget* editor, bool givenUp);
    void giveUpEditingIfCellChanged(int rows);

    bool pressCell(const QModelIndex& index, Qt::KeyboardModifiers modifiers);
    void activateCell(const QModelIndex& index);
    void openMenu(const QModelIndex& index);
    void setHovered(const QModelIndex& index);
    void setPressedOver(bool over);

    void validateDrop(QDropEvent* event);
    void paintDropIndicator();
    void paintPlaceholder();

    TableModel* m_model = nullptr;
    /// Tells that the model has been destroyed.
    QMetaObject::Connection m_modelGone;
    RowSelectionModel* m_selection = nullptr;
    CellDelegate* m_delegate;
    QString m_placeholderText;
    /// The column that the rows are sorted by, or -1, and how.
    int m_sortColumn = -1;
    Qt::SortOrder m_sortOrder = Qt::AscendingOrder;
    Edit m_edit;
    /// The row on which the drop that is being validated would land; -1 where it is refused.
    int m_dropRow = -1;
    /// The button cell under the held mouse button.
    QPersistentModelIndex m_pressedCell;
    /// The view's own press handling has begun and waits for the release.
    bool m_viewHasPress = false;
    /// performKeyEquivalent() has handled the key press that follows the shortcut question.
    bool m_keyEquivalentPerformed = false;
};
