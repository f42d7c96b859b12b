// SPDX-License-Identifier: MIT
#pragma once

#include <platform/controls/Pasteboard.h>
#include <platform/table/TableModel.h>

#include <QStringList>

/// Rows of one text and a button each, and a record of what the table asked for.
class RowSource final : public TableModel
{
public:
    explicit RowSource(std::vector<Column> columns)
        : TableModel(std::move(columns), nullptr)
    {
    }

    int countRows() const override { return static_cast<int>(texts.size()); }

    void sort(int column, Qt::SortOrder order) override
    {
        const bool ascending = order == Qt::AscendingOrder;
        journal.append(QStringLiteral("sort %1 %2").arg(columnAt(column).identifier).arg(ascending));
    }

    QStringList texts;
    mutable QStringList journal;
    mutable int proposedRow = -1;
    mutable bool isAskedBeyondEnd = false;

protected:
    QVariant objectValue(const QString& column, int row) const override
    {
        isAskedBeyondEnd = isAskedBeyondEnd || row >= texts.size();
        return column == u"Text" ? QVariant(texts.value(row)) : QVariant();
    }

    QString toolTip(const QString& column, int) const override { return column == u"Button" ? column : QString(); }

    QString accessibleText(const QString&, int) const override { return {}; }

    void setObjectValue(const QVariant& value, const QString& column, int row) override
    {
        journal.append(QStringLiteral("set %1 %2 %3").arg(column).arg(row).arg(value.toString()));
        if (value.isValid()) {
            texts[row] = value.toString();
        }
    }

    bool writeRows(const QList<int>& rows, Pasteboard& pasteboard) const override
    {
        pasteboard.declareTypes({QStringLiteral("Row")});
        pasteboard.setString_forType(QString::number(rows.constFirst()), QStringLiteral("Row"));
        return true;
    }

    Qt::DropAction validateDrop(const Pasteboard&, int row, DropOperation) const override
    {
        proposedRow = row;
        return row < rowCount() ? Qt::CopyAction : Qt::IgnoreAction;
    }

    bool acceptDrop(const Pasteboard& dragged, int row, DropOperation position) override
    {
        const QString where = position == DropOperation::On ? QStringLiteral("on") : QStringLiteral("above");
        journal.append(QStringLiteral("drop %1 %2 %3").arg(where).arg(row).arg(dragged.filenames().join(u',')));
        return true;
    }
};
