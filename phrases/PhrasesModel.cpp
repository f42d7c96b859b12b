// SPDX-License-Identifier: MIT
#include "PhrasesModel.h"

#include "BYTableView.h"

#include <core/SharedNames.h>
#include <platform/desktop/Text.h>

#include <QGuiApplication>
#include <QPalette>

#include <algorithm>
#include <iterator>

namespace {

std::vector<TableModel::Column> columns()
{
    using Kind = TableModel::Kind;
    std::vector<TableModel::Column> columns{
        {.identifier = PhraseKey::app, .title = Text::tr("Application"), .kind = Kind::Button},
        {.identifier = PhraseKey::phrase,
            .title = Text::tr("Phrase"),
            .kind = Kind::EditableText,
            .width = 220,
            .sorts = true},
        {.identifier = PhraseKey::soundFilepath, .title = Text::tr("Sound"), .sorts = true},
    };
    std::ranges::move(RowButtons::columns(), std::back_inserter(columns));
    return columns;
}

} // namespace

PhrasesModel::PhrasesModel(BYTableView& table)
    : SoundRowsModel(table, &table, columns())
{
}

QVariant PhrasesModel::data(const QModelIndex& index, int role) const
{
    if (role == Qt::ForegroundRole && checkIndex(index, CheckIndexOption::IndexIsValid) &&
        columnAt(index.column()).identifier == PhraseKey::soundFilepath && controller().isSoundMissing(index.row())) {
        return QGuiApplication::palette().placeholderText();
    }
    return TableModel::data(index, role);
}

void PhrasesModel::sort(int /*column*/, Qt::SortOrder /*order*/)
{
    controller().tableView_sortDescriptorsDidChange(table());
}

Qt::DropActions PhrasesModel::supportedDragActions() const
{
    // Qt announces one set of actions to every target, so it is the one meant for other programs.
    return controller().draggingSourceOperationMaskForLocal(false);
}
