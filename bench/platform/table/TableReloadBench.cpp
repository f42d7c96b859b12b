// SPDX-License-Identifier: MIT
#include <platform/table/TableView.h>

#include <QApplication>
#include <QScrollBar>

#include <Bench.h>

using namespace Qt::StringLiterals;

namespace {

class NumberedRows final : public TableModel
{
public:
    explicit NumberedRows(int rows)
        : TableModel({{.identifier = u"App"_s, .title = {}, .width = 120},
                         {.identifier = u"Phrase"_s, .title = {}, .kind = Kind::EditableText, .sorts = true},
                         {.identifier = u"Sound"_s, .title = {}, .width = 120},
                         {.identifier = u"Play"_s, .title = {}, .kind = Kind::Button}},
              nullptr)
        , m_rows(rows)
    {
    }

    int countRows() const override { return m_rows; }

    void setRows(int rows) { m_rows = rows; }

protected:
    QVariant objectValue(const QString&, int row) const override { return u"row %1"_s.arg(row); }

    QString toolTip(const QString&, int) const override { return {}; }

    QString accessibleText(const QString&, int) const override { return {}; }

private:
    int m_rows;
};

/// A table of the given length, scrolled to its middle.
class ShownTable
{
public:
    explicit ShownTable(int rows)
        : m_rows(rows)
        , m_source(rows)
    {
        m_table.setModel(&m_source);
        m_table.resize(700, 700);
        m_table.show();
        QApplication::processEvents();
        m_table.scrollRowToVisible(rows / 2);
    }

    void reload()
    {
        m_table.reloadData();
        m_table.viewport()->repaint();
    }

    /// One row more, then one row less.
    void changeLength()
    {
        for (const int rows : {m_rows + 1, m_rows}) {
            m_source.setRows(rows);
            m_table.noteNumberOfRowsChanged();
            m_table.reloadData();
            m_table.viewport()->repaint();
        }
    }

private:
    int m_rows;
    NumberedRows m_source;
    TableView m_table;
};

} // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    ShownTable large(100'000);
    ShownTable small(100);
    const auto reload = Bench::millisecondsInTurn(
        50, [&] { large.reload(); }, [&] { small.reload(); });
    Bench::report("table-reload-100k", reload.first, reload.second, 2);
    const auto length = Bench::millisecondsInTurn(
        50, [&] { large.changeLength(); }, [&] { small.changeLength(); });
    // Two changes, each of which has a frame's time.
    Bench::reportAbsolute("table-add-remove-row-100k-ms", length.first, length.second, 32);
}
