// SPDX-License-Identifier: MIT
#pragma once

#include "CellDelegate.h"
#include "RowSelectionModel.h"
#include "TableModel.h"
#include "TableView.h"

#include <QLineEdit>
#include <QPersistentModelIndex>
#include <QPointer>

/// The parts that a TableView is made of, and what it has to remember between two events.
class TableView::Implementation final
{
public:
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

    /// Where the drop that is being validated would land.
    struct Drop
    {
        int row = -1;
        DropOperation operation = DropOperation::On;
        bool isAccepted = false;
    };

    explicit Implementation(TableView* view);

    void configureHeaders();
    void useColumns(const QStringList& declarations);
    void applyTitles();
    void sortByColumn(int column);
    void showSortIndicator() const;
    void updateRowHeight() const;
    void setNumberOfRows(int rows);

    void beginEditing(QLineEdit* editor, const QModelIndex& index);
    void textWasEdited();
    void endEditing(const QWidget* editor, bool givenUp);
    void giveUpEditingIfCellChanged(int rows);
    void commitEditing();

    bool pressCell(const QModelIndex& index, Qt::KeyboardModifiers modifiers);
    void activateCell(const QModelIndex& index);
    void openMenu(const QModelIndex& index);
    void setHovered(const QModelIndex& index);
    void setPressedOver(bool over);

    Drop proposedDrop(const QPoint& position) const;
    DragOperation validateDrop(const QDropEvent& event);
    void paintDropIndicator() const;
    void paintPlaceholder() const;

    TableView* table;
    TableModel* model;
    RowSelectionModel* selection;
    CellDelegate* delegate;

    QStringList columnDeclarations;
    QStringList columnTitles;
    QList<bool> iconColumns;
    QString placeholderText;
    QList<SortDescriptor> sortDescriptors;
    Edit edit;
    Drop drop;
    /// The button cell under the held mouse button.
    QPersistentModelIndex pressedCell;
    /// The view's own press handling has begun and waits for the release.
    bool viewHasPress = false;
    /// performKeyEquivalent() has handled the key press that follows the shortcut question.
    bool keyEquivalentPerformed = false;
};
