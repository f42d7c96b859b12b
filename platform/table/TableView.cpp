// SPDX-License-Identifier: MIT
#include "TableView.h"

#include "CellDelegate.h"
#include "RowSelectionModel.h"

#include <QEvent>
#include <QHeaderView>
#include <QPainter>
#include <QScrollBar>

#include <algorithm>
#include <utility>

namespace {

constexpr int pictureColumnWidth = 30;
constexpr int leastRowHeight = 24;
constexpr int rowPadding = 8;

} // namespace

TableView::TableView(QWidget* parent)
    : QTableView(parent)
    , m_delegate(new CellDelegate(this))
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
    setAcceptDrops(true);
    // Drops are shown where they land, not where Qt guesses.
    setDropIndicatorShown(false);
    viewport()->setAttribute(Qt::WA_Hover);
    setItemDelegate(m_delegate);
    connect(m_delegate, &CellDelegate::editorOpened, this, &TableView::beginEditing);

    QHeaderView* const columnHeader = horizontalHeader();
    columnHeader->setHighlightSections(false);
    columnHeader->setMinimumSectionSize(pictureColumnWidth - 8);
    columnHeader->setSortIndicatorShown(true);
    clearSortDescriptors();
    connect(columnHeader, &QHeaderView::sortIndicatorChanged, this, &TableView::sort);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setMinimumSectionSize(0);
    updateRowHeight();
}

TableView::~TableView()
{
    // A model that is a child outlives this part of the table, and need not say so.
    disconnect(m_modelGone);
}

void TableView::setModel(QAbstractItemModel* model)
{
    if (m_edit.editor) {
        closeEditor(m_edit.editor, QAbstractItemDelegate::RevertModelCache);
    }
    disconnect(m_modelGone);
    m_model = qobject_cast<TableModel*>(model);
    QTableView::setModel(m_model);
    delete std::exchange(m_selection, nullptr);
    if (!m_model) {
        return;
    }
    m_modelGone = connect(m_model, &QObject::destroyed, this, [this] { setModel(nullptr); });
    const QItemSelectionModel* const plainSelection = selectionModel();
    m_selection = new RowSelectionModel(m_model, this);
    connect(m_selection, &RowSelectionModel::selectionIsChanging, this, &TableView::selectionIsChanging);
    connect(m_selection, &RowSelectionModel::selectionDidChange, this, &TableView::selectionDidChange);
    setSelectionModel(m_selection);
    delete plainSelection;
    layOutColumns();
    reloadData();
}

void TableView::layOutColumns()
{
    QHeaderView* const header = horizontalHeader();
    for (int i = 0; i < m_model->columnCount(); ++i) {
        const TableModel::Column& column = m_model->columnAt(i);
        const auto textMode = column.width > 0 ? QHeaderView::Interactive : QHeaderView::Stretch;
        header->setSectionResizeMode(i, column.hasText() ? textMode : QHeaderView::Fixed);
        header->resizeSection(i, column.hasText() ? column.width : pictureColumnWidth);
        if (column.hasText() && !m_model->columnAt(m_selection->column()).hasText()) {
            // The keyboard begins beside the buttons, which Return would press.
            m_selection->setColumn(i);
        }
    }
}

void TableView::updateRowHeight()
{
    verticalHeader()->setDefaultSectionSize(std::max(leastRowHeight, fontMetrics().height() + rowPadding));
}

void TableView::sizeLastColumnToFit()
{
    QHeaderView* const header = horizontalHeader();
    const int last = header->logicalIndex(header->count() - 1);
    if (last < 0 || header->sectionResizeMode(last) == QHeaderView::Stretch) {
        return;
    }
    const int left = viewport()->width() - (header->length() - header->sectionSize(last));
    const int least = m_model->columnAt(last).hasText() ? header->minimumSectionSize() : pictureColumnWidth;
    if (const int width = std::max(left, least); width != header->sectionSize(last)) {
        header->resizeSection(last, width);
    }
}

QString TableView::sortColumn() const
{
    return m_sortColumn >= 0 ? m_model->columnAt(m_sortColumn).identifier : QString();
}

void TableView::clearSortDescriptors()
{
    horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
}

void TableView::sort(int column, Qt::SortOrder order)
{
    if (column >= 0 && !m_model->columnAt(column).sorts) {
        // Qt has moved its indicator to the column that was clicked.
        horizontalHeader()->setSortIndicator(m_sortColumn, m_sortOrder);
        return;
    }
    const bool isNew = column != m_sortColumn || order != m_sortOrder;
    m_sortColumn = column;
    m_sortOrder = order;
    if (column >= 0 && isNew) {
        m_model->sort(column, order);
    }
}

int TableView::numberOfRows() const
{
    return m_model ? m_model->rowCount() : 0;
}

void TableView::noteNumberOfRowsChanged()
{
    if (m_model) {
        setNumberOfRows(m_model->countRows());
    }
}

void TableView::reloadData()
{
    noteNumberOfRowsChanged();
    viewport()->update();
}

void TableView::setNumberOfRows(int rows)
{
    giveUpEditingIfCellChanged(rows);
    const bool wasEmpty = numberOfRows() == 0;
    m_selection->releaseRowsFrom(rows);
    m_model->setNumberOfRows(rows);
    m_selection->settleAfterRemoval();
    if (wasEmpty != (rows == 0)) {
        viewport()->update();
    }
}

int TableView::selectedRow() const
{
    return m_selection ? m_selection->selectedRow() : -1;
}

void TableView::selectRow_byExtendingSelection(int row, bool /*extend*/)
{
    if (m_selection && row < numberOfRows()) {
        m_selection->moveTo(std::max(row, -1));
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

void TableView::setPlaceholderText(const QString& text)
{
    m_placeholderText = text;
    viewport()->update();
}

void TableView::paintEvent(QPaintEvent* event)
{
    QTableView::paintEvent(event);
    if (numberOfRows() == 0) {
        paintPlaceholder();
    }
    paintDropIndicator();
}

void TableView::paintPlaceholder()
{
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::PlaceholderText));
    const QRect area = viewport()->rect().adjusted(16, 16, -16, -16);
    painter.drawText(area, Qt::AlignCenter | Qt::TextWordWrap, m_placeholderText);
}

void TableView::changeEvent(QEvent* event)
{
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        updateRowHeight();
    }
}

void TableView::hideEvent(QHideEvent* event)
{
    if (QLineEdit* const editor = m_edit.editor) {
        commitData(editor);
        closeEditor(editor, QAbstractItemDelegate::SubmitModelCache);
    }
    QTableView::hideEvent(event);
}
