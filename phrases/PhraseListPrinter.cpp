#include "PhraseListPrinter.h"

#include <QFontMetricsF>
#include <QGuiApplication>
#include <QPainter>
#include <QPrinter>

#include <algorithm>
#include <vector>

namespace {

constexpr std::array<double, PhraseListPrinter::columnCount> columnShares{0.4, 0.25, 0.35};
constexpr int fontPoints = 9;
constexpr int wrapFlags = Qt::AlignLeft | Qt::AlignTop | Qt::TextWrapAnywhere;

} // namespace

/// Where things stand on a page of one printer, in its dots.
class PhraseListPrinter::Page final
{
public:
    explicit Page(QPrinter& printer)
        : m_area(QPointF(0, 0), printer.pageRect(QPrinter::DevicePixel).size())
        , font(QGuiApplication::font().family(), fontPoints)
        , boldFont(font)
        , m_metrics(font, &printer)
    {
        boldFont.setBold(true);
    }

    double lineHeight() const { return m_metrics.lineSpacing(); }

    /// Space between the columns and between the rows.
    double gap() const { return lineHeight() / 3; }

    QRectF header() const { return {0, 0, m_area.width(), lineHeight()}; }

    QRectF footer() const { return {0, m_area.height() - lineHeight(), m_area.width(), lineHeight()}; }

    double titlesTop() const { return 2 * lineHeight(); }

    double rowsTop() const { return titlesTop() + 1.5 * lineHeight(); }

    double rowsBottom() const { return footer().top() - lineHeight(); }

    QRectF cell(int column, double top, double height) const
    {
        double left = 0;
        for (int before = 0; before < column; ++before) {
            left += columnShares[size_t(before)] * m_area.width();
        }
        return {left, top, columnShares[size_t(column)] * m_area.width() - gap(), height};
    }

    /// A row is as high as its longest text, but never higher than a page.
    double rowHeight(const Row& row) const
    {
        const double most = rowsBottom() - rowsTop();
        double height = lineHeight();
        for (int column = 0; column < columnCount; ++column) {
            const QRectF wrapped = m_metrics.boundingRect(cell(column, 0, most), wrapFlags, row[size_t(column)]);
            height = std::max(height, wrapped.height());
        }
        return std::min(height, most);
    }

    /// The index of the first row of each page; one page at least.
    std::vector<qsizetype> breakIntoPages(const QList<Row>& rows) const
    {
        std::vector<qsizetype> firstRows{0};
        double top = rowsTop();
        for (qsizetype index = 0; index < rows.size(); ++index) {
            const double height = rowHeight(rows.at(index));
            if (top + height > rowsBottom() && index > firstRows.back()) {
                firstRows.push_back(index);
                top = rowsTop();
            }
            top += height + gap();
        }
        return firstRows;
    }

    void paintRow(QPainter& painter, const Row& row, double top, double height) const
    {
        for (int column = 0; column < columnCount; ++column) {
            const QRectF rect = cell(column, top, height);
            painter.save();
            painter.setClipRect(rect);
            painter.drawText(rect, wrapFlags, row[size_t(column)]);
            painter.restore();
        }
    }

private:
    QRectF m_area;

public:
    QFont font;
    QFont boldFont;

private:
    QFontMetricsF m_metrics;
};

PhraseListPrinter::PhraseListPrinter(QString documentName, Row titles, QString pageFormat, QList<Row> rows)
    : m_documentName(std::move(documentName))
    , m_titles(std::move(titles))
    , m_pageFormat(std::move(pageFormat))
    , m_rows(std::move(rows))
{
}

bool PhraseListPrinter::print(QPrinter& printer) const
{
    QPainter painter;
    if (!painter.begin(&printer)) {
        return false;
    }
    const Page page(printer);
    const std::vector<qsizetype> firstRows = page.breakIntoPages(m_rows);
    for (size_t number = 0; number < firstRows.size(); ++number) {
        if (number > 0) {
            printer.newPage();
        }
        painter.setFont(page.boldFont);
        painter.drawText(page.header(), Qt::AlignLeft | Qt::AlignVCenter, m_documentName);
        page.paintRow(painter, m_titles, page.titlesTop(), page.lineHeight());
        painter.setFont(page.font);
        painter.drawText(
            page.footer(), Qt::AlignRight | Qt::AlignVCenter, m_pageFormat.arg(number + 1).arg(firstRows.size()));

        const qsizetype end = number + 1 < firstRows.size() ? firstRows[number + 1] : m_rows.size();
        double top = page.rowsTop();
        for (qsizetype index = firstRows[number]; index < end; ++index) {
            const double height = page.rowHeight(m_rows.at(index));
            page.paintRow(painter, m_rows.at(index), top, height);
            top += height + page.gap();
        }
    }
    return painter.end() && printer.printerState() != QPrinter::Error;
}
