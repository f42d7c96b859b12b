// SPDX-License-Identifier: MIT
#include "TableView.h"

#include "TableView_Implementation.h"

void TableView::editColumn_row_withEvent_select(int column, int row, const QKeyEvent* /*event*/, bool select)
{
    if (row < 0 || row >= numberOfRows() || column < 0 || column >= model()->columnCount()) {
        return;
    }
    selectRow_byExtendingSelection(row, false);
    const QModelIndex index = model()->index(row, column);
    if (selectedRow() != row || !edit(index, AllEditTriggers, nullptr)) {
        return;
    }
    scrollTo(index);
    QLineEdit* const editor = m_implementation->edit.editor;
    if (editor && !select) {
        editor->deselect();
    }
}

bool TableView::isEditing() const
{
    return !m_implementation->edit.editor.isNull();
}

void TableView::Implementation::beginEditing(QLineEdit* editor, const QModelIndex& index)
{
    edit = Edit{editor, index, editor->text()};
    connect(editor, &QLineEdit::textEdited, table, [this] { textWasEdited(); });
}

void TableView::Implementation::textWasEdited()
{
    if (edit.hasBegun || !edit.editor) {
        return;
    }
    if (table->textShouldBeginEditing(edit.editor)) {
        edit.hasBegun = true;
    } else if (edit.editor) {
        edit.editor->setText(edit.originalText);
    }
}

bool TableView::textShouldBeginEditing(QWidget* /*fieldEditor*/)
{
    return true;
}

void TableView::textDidEndEditing(QWidget* /*fieldEditor*/)
{
    m_implementation->commitEditing();
}

void TableView::Implementation::commitEditing()
{
    if (!edit.isGivenUp && edit.editor) {
        model->setData(edit.index, edit.editor->text(), Qt::EditRole);
    }
}

void TableView::Implementation::endEditing(const QWidget* editor, bool givenUp)
{
    if (editor != edit.editor || !edit.hasBegun || edit.hasEnded) {
        return;
    }
    edit.hasEnded = true;
    edit.isGivenUp = givenUp;
    table->textDidEndEditing(edit.editor);
}

void TableView::Implementation::giveUpEditingIfCellChanged(int rows)
{
    if (!edit.editor || edit.hasEnded) {
        return;
    }
    // Another text in the cell means that another row has come to stand here: what was typed is not meant for it.
    if (edit.index.row() >= rows || model->content(edit.index).text != edit.originalText) {
        table->closeEditor(edit.editor, QAbstractItemDelegate::RevertModelCache);
    }
}

void TableView::commitData(QWidget* editor)
{
    m_implementation->endEditing(editor, false);
}

void TableView::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint)
{
    m_implementation->endEditing(editor, hint == QAbstractItemDelegate::RevertModelCache);
    if (m_implementation->edit.editor == editor) {
        m_implementation->edit.editor = nullptr;
    }
    QTableView::closeEditor(editor, QAbstractItemDelegate::NoHint);
}
