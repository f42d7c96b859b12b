// SPDX-License-Identifier: MIT
#include "TableView.h"

#include "TableView_Implementation.h"

#include <QHeaderView>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int textColumnWidth = 120;
constexpr int iconColumnWidth = 30;
constexpr int leastRowHeight = 24;
constexpr int rowPadding = 8;

/// What one entry of the property `columns` declares.
struct ColumnDeclaration
{
    QString identifier;
    int width = textColumnWidth;
    bool isEditable = false;
    bool sorts = false;
    bool stretches = false;
    bool isIcon = false;
};

ColumnDeclaration parseColumn(const QString& text)
{
    ColumnDeclaration declaration;
    const qsizetype colon = text.indexOf(u':');
    declaration.identifier = text.left(colon).trimmed();
    const QStringList options = colon < 0 ? QStringList() : text.mid(colon + 1).split(u',', Qt::SkipEmptyParts);
    for (const QString& spacedOption : options) {
        const QString option = spacedOption.trimmed();
        declaration.isEditable = declaration.isEditable || option == "editable"_L1;
        declaration.sorts = declaration.sorts || option == "sort"_L1;
        declaration.stretches = declaration.stretches || option == "stretch"_L1;
        if (option == "icon"_L1) {
            declaration.isIcon = true;
            declaration.width = iconColumnWidth;
        }
        if (option.startsWith("width="_L1)) {
            declaration.width = std::max(1, option.mid(6).toInt());
        }
    }
    return declaration;
}

} // namespace

void TableView::Implementation::configureHeaders()
{
    QHeaderView* const columnHeader = table->horizontalHeader();
    columnHeader->setHighlightSections(false);
    columnHeader->setMinimumSectionSize(iconColumnWidth - 8);
    columnHeader->setSortIndicatorShown(true);
    columnHeader->setSortIndicator(-1, Qt::AscendingOrder);
    connect(columnHeader, &QHeaderView::sectionClicked, table, [this](int column) { sortByColumn(column); });

    table->verticalHeader()->hide();
    table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    updateRowHeight();
}

void TableView::Implementation::updateRowHeight() const
{
    table->verticalHeader()->setMinimumSectionSize(0);
    table->verticalHeader()->setDefaultSectionSize(
        std::max(leastRowHeight, table->fontMetrics().height() + rowPadding));
}

QStringList TableView::columns() const
{
    return m_implementation->columnDeclarations;
}

void TableView::setColumns(const QStringList& columns)
{
    m_implementation->useColumns(columns);
}

void TableView::Implementation::useColumns(const QStringList& declarations)
{
    if (edit.editor) {
        table->closeEditor(edit.editor, QAbstractItemDelegate::RevertModelCache);
    }
    selection->moveTo(-1);
    columnDeclarations = declarations;
    iconColumns.clear();
    std::vector<std::unique_ptr<TableColumn>> columns;
    for (const QString& text : declarations) {
        const ColumnDeclaration declaration = parseColumn(text);
        auto column = std::make_unique<TableColumn>(declaration.identifier, declaration.identifier);
        column->setEditable(declaration.isEditable);
        if (declaration.sorts) {
            column->setSortDescriptorPrototype(SortDescriptor{declaration.identifier, true});
        }
        columns.push_back(std::move(column));
        iconColumns.append(declaration.isIcon);
    }
    model->setColumns(std::move(columns));
    // Not on a button, which Return would press.
    selection->setColumn(int(std::max<qsizetype>(iconColumns.indexOf(false), 0)));
    QHeaderView* const header = table->horizontalHeader();
    for (int i = 0; i < declarations.size(); ++i) {
        const ColumnDeclaration declaration = parseColumn(declarations.at(i));
        const auto fixedOrFree = declaration.isIcon ? QHeaderView::Fixed : QHeaderView::Interactive;
        header->setSectionResizeMode(i, declaration.stretches ? QHeaderView::Stretch : fixedOrFree);
        header->resizeSection(i, declaration.width);
    }
    applyTitles();
}

QStringList TableView::columnTitles() const
{
    return m_implementation->columnTitles;
}

void TableView::setColumnTitles(const QStringList& titles)
{
    m_implementation->columnTitles = titles;
    m_implementation->applyTitles();
}

void TableView::Implementation::applyTitles()
{
    const auto& columns = model->columns();
    for (size_t i = 0; i < columns.size() && static_cast<qsizetype>(i) < columnTitles.size(); ++i) {
        columns[i]->setTitle(columnTitles.at(static_cast<qsizetype>(i)));
    }
    model->noteTitlesChanged();
}

bool TableView::isIconColumn(int column) const
{
    return m_implementation->iconColumns.value(column);
}

TableColumn* TableView::tableColumnWithIdentifier(const QString& identifier) const
{
    const auto& columns = tableColumns();
    const auto found = std::find_if(columns.begin(), columns.end(),
        [&identifier](const auto& column) { return column->identifier() == identifier; });
    return found == columns.end() ? nullptr : found->get();
}

const std::vector<std::unique_ptr<TableColumn>>& TableView::tableColumns() const
{
    return m_implementation->model->columns();
}

void TableView::sizeLastColumnToFit()
{
    QHeaderView* const header = horizontalHeader();
    const int last = header->logicalIndex(header->count() - 1);
    if (last < 0 || header->sectionResizeMode(last) == QHeaderView::Stretch) {
        return;
    }
    const int left = viewport()->width() - (header->length() - header->sectionSize(last));
    const int width = std::max(left, isIconColumn(last) ? iconColumnWidth : header->minimumSectionSize());
    if (width != header->sectionSize(last)) {
        header->resizeSection(last, width);
    }
}

QList<SortDescriptor> TableView::sortDescriptors() const
{
    return m_implementation->sortDescriptors;
}

void TableView::clearSortDescriptors()
{
    m_implementation->sortDescriptors.clear();
    m_implementation->showSortIndicator();
}

void TableView::Implementation::sortByColumn(int column)
{
    const std::optional<SortDescriptor>& prototype =
        model->columns().at(static_cast<size_t>(column))->sortDescriptorPrototype();
    if (!prototype) {
        // Qt has moved its indicator to the column that was clicked.
        showSortIndicator();
        return;
    }
    const QList<SortDescriptor> oldDescriptors = sortDescriptors;
    SortDescriptor descriptor = *prototype;
    if (!oldDescriptors.isEmpty() && oldDescriptors.first().key == descriptor.key) {
        descriptor.ascending = !oldDescriptors.first().ascending;
    }
    sortDescriptors = {descriptor};
    showSortIndicator();
    if (model->dataSource()) {
        model->dataSource()->tableView_sortDescriptorsDidChange(table, oldDescriptors);
    }
}

void TableView::Implementation::showSortIndicator() const
{
    int shownColumn = -1;
    bool ascending = true;
    for (size_t i = 0; i < model->columns().size() && !sortDescriptors.isEmpty(); ++i) {
        const auto& prototype = model->columns()[i]->sortDescriptorPrototype();
        if (prototype && prototype->key == sortDescriptors.first().key) {
            shownColumn = static_cast<int>(i);
            ascending = sortDescriptors.first().ascending;
        }
    }
    table->horizontalHeader()->setSortIndicator(shownColumn, ascending ? Qt::AscendingOrder : Qt::DescendingOrder);
}
