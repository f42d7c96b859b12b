// SPDX-License-Identifier: MIT
#include "TableModel.h"

#include <platform/controls/Pasteboard.h>

#include <QKeySequence>
#include <QMimeData>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

/// The row that a drop on @p parent, or above @p row, is about.
int dropRow(int row, const QModelIndex& parent)
{
    return parent.isValid() ? parent.row() : row;
}

DropOperation dropOperation(const QModelIndex& parent)
{
    return parent.isValid() ? DropOperation::On : DropOperation::Above;
}

} // namespace

TableModel::TableModel(std::vector<Column> columns, QObject* parent)
    : QAbstractTableModel(parent)
    , m_columns(std::move(columns))
{
}

int TableModel::columnWithIdentifier(const QString& identifier) const
{
    const auto found = std::ranges::find(m_columns, identifier, &Column::identifier);
    return found == m_columns.end() ? -1 : static_cast<int>(found - m_columns.begin());
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
    Qt::ItemFlags flags = QAbstractTableModel::flags(index) | Qt::ItemIsDropEnabled;
    if (index.isValid()) {
        flags |= Qt::ItemIsDragEnabled;
        flags.setFlag(Qt::ItemIsEditable, columnAt(index.column()).kind == Kind::EditableText);
    }
    return flags;
}

QVariant TableModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    const Column& column = columnAt(index.column());
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        return column.hasText() ? objectValue(column.identifier, index.row()).toString() : QString();
    case Qt::DecorationRole:
        return column.hasText() ? QVariant() : objectValue(column.identifier, index.row());
    case Qt::ToolTipRole:
    case Qt::AccessibleDescriptionRole: {
        const QString text = toolTip(column.identifier, index.row());
        if (text.isEmpty() || column.keyEquivalent.isEmpty()) {
            return text;
        }
        const QKeySequence shortcut(u"Ctrl+"_s + column.keyEquivalent.toUpper());
        return u"%1 (%2)"_s.arg(text, shortcut.toString(QKeySequence::NativeText));
    }
    case Qt::AccessibleTextRole: {
        const QString text = accessibleText(column.identifier, index.row());
        const QString shown = text.isEmpty() ? data(index, Qt::DisplayRole).toString() : text;
        return shown.isEmpty() ? column.title : shown;
    }
    case kindRole:
        return QVariant::fromValue(column.kind);
    default:
        return {};
    }
}

bool TableModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (role != Qt::EditRole || !checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return false;
    }
    const QPersistentModelIndex changed(index);
    setObjectValue(value, columnAt(index.column()).identifier, index.row());
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
    const Column& column = columnAt(section);
    switch (role) {
    case Qt::DisplayRole:
        return column.hasText() ? column.title : QString();
    case Qt::ToolTipRole:
        return column.hasText() ? QString() : column.title;
    case Qt::AccessibleTextRole:
        return column.title;
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
    return writeRows(rows, pasteboard) ? pasteboard.takeData().release() : nullptr;
}

bool TableModel::canDropMimeData(
    const QMimeData* data, Qt::DropAction action, int row, int /*column*/, const QModelIndex& parent) const
{
    return validateDrop(Pasteboard(data), dropRow(row, parent), dropOperation(parent)) == action;
}

bool TableModel::dropMimeData(
    const QMimeData* data, Qt::DropAction /*action*/, int row, int /*column*/, const QModelIndex& parent)
{
    return acceptDrop(Pasteboard(data), dropRow(row, parent), dropOperation(parent));
}

void TableModel::setObjectValue(const QVariant& /*value*/, const QString& /*column*/, int /*row*/) {}

bool TableModel::writeRows(const QList<int>& /*rows*/, Pasteboard& /*pasteboard*/) const
{
    return false;
}

Qt::DropAction TableModel::validateDrop(const Pasteboard& /*dragged*/, int /*row*/, DropOperation /*operation*/) const
{
    return Qt::IgnoreAction;
}

bool TableModel::acceptDrop(const Pasteboard& /*dragged*/, int /*row*/, DropOperation /*operation*/)
{
    return false;
}
