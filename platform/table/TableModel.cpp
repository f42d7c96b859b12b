// SPDX-License-Identifier: MIT
#include "TableModel.h"

#include "TableView.h"

#include <platform/controls/Pasteboard.h>

#include <QKeySequence>
#include <QMimeData>

#include <algorithm>

using namespace Qt::StringLiterals;

TableModel::TableModel(TableView* table)
    : QAbstractTableModel(table)
    , m_table(table)
{
}

void TableModel::setColumns(std::vector<std::unique_ptr<TableColumn>> columns)
{
    beginResetModel();
    m_columns = std::move(columns);
    endResetModel();
}

TableColumn* TableModel::column(const QModelIndex& index) const
{
    return m_columns.at(static_cast<size_t>(index.column())).get();
}

void TableModel::noteTitlesChanged()
{
    if (!m_columns.empty()) {
        Q_EMIT headerDataChanged(Qt::Horizontal, 0, columnCount() - 1);
    }
}

int TableModel::askForNumberOfRows() const
{
    return m_source ? std::max(0, m_source->numberOfRowsInTableView(m_table)) : 0;
}

void TableModel::setNumberOfRows(int rows)
{
    if (rows > m_rows) {
        beginInsertRows({}, m_rows, rows - 1);
        m_rows = rows;
        endInsertRows();
    } else if (rows < m_rows) {
        beginRemoveRows({}, rows, m_rows - 1);
        m_rows = rows;
        endRemoveRows();
    }
}

Cell* TableModel::cell(const QModelIndex& index) const
{
    return column(index)->dataCellForRow(index.row());
}

CellContent TableModel::content(const QModelIndex& index) const
{
    if (!m_source || index.row() >= m_rows) {
        return {};
    }
    const QVariant value = m_source->tableView_objectValueForTableColumn_row(m_table, column(index), index.row());
    CellContent content;
    content.cell = cell(index);
    if (value.userType() == QMetaType::QIcon) {
        content.image = value.value<QIcon>();
    } else if (dynamic_cast<const ButtonCell*>(content.cell) || dynamic_cast<const ImageCell*>(content.cell)) {
        content.image = content.cell->image();
    } else {
        content.text = value.toString();
    }
    return content;
}

int TableModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_rows;
}

int TableModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_columns.size());
}

Qt::ItemFlags TableModel::flags(const QModelIndex& index) const
{
    if (!index.isValid()) {
        return Qt::ItemIsDropEnabled;
    }
    Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDragEnabled | Qt::ItemIsDropEnabled |
                          Qt::ItemNeverHasChildren;
    const Cell* const textCell = dynamic_cast<const TextCell*>(cell(index));
    if (textCell && textCell->isEditable() && column(index)->isEditable()) {
        flags |= Qt::ItemIsEditable;
    }
    return flags;
}

QVariant TableModel::data(const QModelIndex& index, int role) const
{
    if (!m_source || !checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        return content(index).text;
    case Qt::DecorationRole: {
        const QIcon image = content(index).image;
        return image.isNull() ? QVariant() : QVariant(image);
    }
    case Qt::ToolTipRole:
    case Qt::AccessibleDescriptionRole:
        return toolTip(index);
    case Qt::AccessibleTextRole:
        return accessibleText(index);
    default:
        return {};
    }
}

bool TableModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (role != Qt::EditRole || !m_source || !checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return false;
    }
    const QPersistentModelIndex changed(index);
    m_source->tableView_setObjectValue_forTableColumn_row(m_table, value, column(index), index.row());
    // The source may have taken rows meanwhile.
    if (changed.isValid()) {
        Q_EMIT dataChanged(changed, changed);
    }
    return true;
}

QVariant TableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) {
        return QAbstractTableModel::headerData(section, orientation, role);
    }
    const bool isIconColumn = m_table->isIconColumn(section);
    const QString& title = m_columns.at(static_cast<size_t>(section))->title();
    switch (role) {
    case Qt::DisplayRole:
        return isIconColumn ? QString() : title;
    case Qt::ToolTipRole:
        return isIconColumn ? title : QString();
    case Qt::AccessibleTextRole:
        return title;
    case Qt::TextAlignmentRole:
        return QVariant::fromValue(Qt::Alignment(Qt::AlignLeft | Qt::AlignVCenter));
    default:
        return {};
    }
}

QMimeData* TableModel::mimeData(const QModelIndexList& indexes) const
{
    QList<int> rows;
    for (const QModelIndex& index : indexes) {
        if (!rows.contains(index.row())) {
            rows.append(index.row());
        }
    }
    Pasteboard pasteboard;
    if (!m_source || !m_source->tableView_writeRowsWithIndexes_toPasteboard(m_table, rows, pasteboard)) {
        return nullptr;
    }
    return pasteboard.takeData().release();
}

Qt::DropActions TableModel::supportedDragActions() const
{
    // Qt announces one set of actions to every target, so it is the one meant for other programs.
    switch (m_table->draggingSourceOperationMaskForLocal(false)) {
    case DragOperation::Copy:
        return Qt::CopyAction;
    case DragOperation::Link:
        return Qt::LinkAction;
    case DragOperation::None:
        break;
    }
    return Qt::IgnoreAction;
}

QString TableModel::toolTip(const QModelIndex& index) const
{
    const QString text = m_source->tableView_toolTipForTableColumn_row(m_table, column(index), index.row());
    const auto* const button = dynamic_cast<const ButtonCell*>(cell(index));
    if (text.isEmpty() || !button || button->keyEquivalent().isEmpty()) {
        return text;
    }
    const QKeySequence shortcut(u"Ctrl+"_s + button->keyEquivalent().toUpper());
    return u"%1 (%2)"_s.arg(text, shortcut.toString(QKeySequence::NativeText));
}

QString TableModel::accessibleText(const QModelIndex& index) const
{
    const QString text = m_source->tableView_accessibleTextForTableColumn_row(m_table, column(index), index.row());
    if (!text.isEmpty()) {
        return text;
    }
    const QString shown = content(index).text;
    return shown.isEmpty() ? column(index)->title() : shown;
}
