// SPDX-License-Identifier: MIT
#include "TableView.h"

#include "TableView_Implementation.h"

#include <QEvent>
#include <QHeaderView>
#include <QPainter>
#include <QScrollBar>

#include <algorithm>

TableView::TableView(QWidget* parent)
    : QTableView(parent)
    , m_implementation(std::make_unique<Implementation>(this))
{
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setEditTriggers(DoubleClicked | EditKeyPressed);
    setTabKeyNavigation(false);
    setShowGrid(false);
    setAlternatingRowColors(true);
    setWordWrap(false);
    setCornerButtonEnabled(false);
    setHorizontalScrollMode(ScrollPerPixel);
    setDragEnabled(true);
    // Drops are shown where the data source wants them, not where Qt guesses.
    setDropIndicatorShown(false);
    viewport()->setAttribute(Qt::WA_Hover);
    m_implementation->configureHeaders();
}

TableView::~TableView() = default;

TableView::Implementation::Implementation(TableView* view)
    : table(view)
    , model(new TableModel(view))
    , selection(new RowSelectionModel(model, view))
    , delegate(new CellDelegate(model, view))
{
    view->setModel(model);
    delete view->selectionModel();
    view->setSelectionModel(selection);
    view->setItemDelegate(delegate);
    connect(delegate, &CellDelegate::editorOpened, view,
        [this](QLineEdit* editor, const QModelIndex& index) { beginEditing(editor, index); });
}

void TableView::setDataSource(TableViewDataSource* source)
{
    m_implementation->model->setDataSource(source);
    reloadData();
}

TableViewDataSource* TableView::dataSource() const
{
    return m_implementation->model->dataSource();
}

int TableView::numberOfRows() const
{
    return m_implementation->model->rowCount();
}

void TableView::noteNumberOfRowsChanged()
{
    m_implementation->setNumberOfRows(m_implementation->model->askForNumberOfRows());
}

void TableView::reloadData()
{
    const int rows = m_implementation->model->askForNumberOfRows();
    m_implementation->giveUpEditingIfCellChanged(rows);
    m_implementation->setNumberOfRows(rows);
    viewport()->update();
}

void TableView::Implementation::setNumberOfRows(int rows)
{
    giveUpEditingIfCellChanged(rows);
    const bool wasEmpty = model->rowCount() == 0;
    selection->releaseRowsFrom(rows);
    model->setNumberOfRows(rows);
    selection->settleAfterRemoval();
    if (wasEmpty != (rows == 0)) {
        table->viewport()->update();
    }
}

int TableView::selectedRow() const
{
    return m_implementation->selection->selectedRow();
}

void TableView::selectRow_byExtendingSelection(int row, bool /*extend*/)
{
    if (row < numberOfRows()) {
        m_implementation->selection->moveTo(std::max(row, -1));
    }
}

void TableView::scrollRowToVisible(int row)
{
    if (row >= 0 && row < numberOfRows()) {
        // Only the row counts: the columns stay where they are scrolled to.
        const int position = horizontalScrollBar()->value();
        scrollTo(model()->index(row, 0));
        horizontalScrollBar()->setValue(position);
    }
}

QString TableView::placeholderText() const
{
    return m_implementation->placeholderText;
}

void TableView::setPlaceholderText(const QString& text)
{
    m_implementation->placeholderText = text;
    viewport()->update();
}

void TableView::paintEvent(QPaintEvent* event)
{
    QTableView::paintEvent(event);
    if (numberOfRows() == 0) {
        m_implementation->paintPlaceholder();
    }
    m_implementation->paintDropIndicator();
}

void TableView::Implementation::paintPlaceholder() const
{
    QPainter painter(table->viewport());
    painter.setPen(table->palette().color(QPalette::PlaceholderText));
    const QRect area = table->viewport()->rect().adjusted(16, 16, -16, -16);
    painter.drawText(area, Qt::AlignCenter | Qt::TextWordWrap, placeholderText);
}

void TableView::changeEvent(QEvent* event)
{
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        m_implementation->updateRowHeight();
    }
}

void TableView::hideEvent(QHideEvent* event)
{
    if (QLineEdit* const editor = m_implementation->edit.editor) {
        commitData(editor);
        closeEditor(editor, QAbstractItemDelegate::SubmitModelCache);
    }
    QTableView::hideEvent(event);
}
