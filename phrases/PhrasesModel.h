// SPDX-License-Identifier: MIT
#pragma once

#include <sounds/SoundRowsModel.h>

class BYTableView;

/// The phrases, a row each. The table is its own controller.
class PhrasesModel final : public SoundRowsModel<BYTableView>
{
public:
    /// @p table owns the model.
    explicit PhrasesModel(BYTableView& table);

    QVariant data(const QModelIndex& index, int role) const override;
    /// By what the table's header shows.
    void sort(int column, Qt::SortOrder order) override;
    Qt::DropActions supportedDragActions() const override;
};
