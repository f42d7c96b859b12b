// SPDX-License-Identifier: MIT
#include "TableView.h"

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
    QLineEdit* const editor = m_edit.editor;
    if (editor && !select) {
        editor->deselect();
    }
}

void TableView::beginEditing(QLineEdit* editor, const QModelIndex& index)
{
    m_edit = Edit{editor, index, editor->text()};
    connect(editor, &QLineEdit::textEdited, this, &TableView::textWasEdited);
}

void TableView::textWasEdited()
{
    if (m_edit.hasBegun || !m_edit.editor) {
        return;
    }
    if (textShouldBeginEditing(m_edit.editor)) {
        m_edit.hasBegun = true;
    } else if (m_edit.editor) {
        m_edit.editor->setText(m_edit.originalText);
    }
}

bool TableView::textShouldBeginEditing(QWidget* /*fieldEditor*/)
{
    return true;
}

void TableView::textDidEndEditing(QWidget* /*fieldEditor*/)
{
    if (!m_edit.isGivenUp && m_edit.editor) {
        m_model->setData(m_edit.index, m_edit.editor->text(), Qt::EditRole);
    }
}

void TableView::endEditing(const QWidget* editor, bool givenUp)
{
    if (editor != m_edit.editor || !m_edit.hasBegun || m_edit.hasEnded) {
        return;
    }
    m_edit.hasEnded = true;
    m_edit.isGivenUp = givenUp;
    textDidEndEditing(m_edit.editor);
}

void TableView::giveUpEditingIfCellChanged(int rows)
{
    if (!m_edit.editor || m_edit.hasEnded) {
        return;
    }
    // Another text in the cell means that another row has come to stand here: what was typed is not meant for it.
    if (m_edit.index.row() >= rows || m_edit.index.data(Qt::EditRole).toString() != m_edit.originalText) {
        closeEditor(m_edit.editor, QAbstractItemDelegate::RevertModelCache);
    }
}

void TableView::commitData(QWidget* editor)
{
    endEditing(editor, false);
}

void TableView::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint)
{
    endEditing(editor, hint == QAbstractItemDelegate::RevertModelCache);
    if (m_edit.editor == editor) {
        m_edit.editor = nullptr;
    }
    QTableView::closeEditor(editor, QAbstractItemDelegate::NoHint);
}
