// SPDX-License-Identifier: MIT
#pragma once

#include <QTest>

#include <tuple>
#include <vector>

/// The names of the columns of the test that runs, in order.
inline std::vector<const char*> dataTableColumns;

/// What a `_data` function fills: columns and rows whose types the compiler checks.
template <typename... Types>
class DataTable final
{
public:
    template <typename... Names>
    explicit DataTable(Names... names)
    {
        static_assert(sizeof...(Names) == sizeof...(Types));
        dataTableColumns = {names...};
        (QTest::addColumn<Types>(names), ...);
    }

    /// Adds a row.
    void operator()(const char* name, const Types&... values) const
    {
        QTestData& row = QTest::newRow(name);
        ((row << values), ...);
    }
};

/// The values of the row that runs: those of the first columns, as many as @p Types there are.
template <typename... Types>
std::tuple<Types...> currentRow()
{
    auto name = dataTableColumns.cbegin();
    return {*static_cast<const Types*>(QTest::qData(*name++, qMetaTypeId<Types>()))...};
}
