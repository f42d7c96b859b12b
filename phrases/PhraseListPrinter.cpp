// SPDX-License-Identifier: MIT
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

    QRectF rows() const { return {0, rowsTop(), m_area.width(), rowsBottom() - rowsTop()}; }

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
            const QString& text = row[size_t(column)];
            const QRectF rect = cell(column, 0, most);
            // Most texts are one line, which costs less to find out than where they would wrap.
            if (text.contains(u'\n') || m_metrics.horizontalAdvance(text) > rect.width()) {
                height = std::max(height, m_metrics.boundingRect(rect, wrapFlags, text).height());
            }
        }
        return std::min(height, most);
    }

    /// Where each row stands on its page.
    struct Layout
    {
        std::vector<double> tops;
        /// The index of the first row of each page; one page at least.
        std::vector<size_t> firstRows{0};
    };

    Layout layOut(const QList<Row>& rows) const
    {
        Layout layout;
        layout.tops.reserve(size_t(rows.size()));
        double top = rowsTop();
        for (const Row& row : rows) {
            const double height = rowHeight(row);
            if (top + height > rowsBottom() && layout.tops.size() > layout.firstRows.back()) {
                layout.firstRows.push_back(layout.tops.size());
                top = rowsTop();
            }
            layout.tops.push_back(top);
            top += height + gap();
        }
        return layout;
    }

    void paintRow(QPainter& painter, const Row& row, double top) const
    {
        for (int column = 0; column < columnCount; ++column) {
            painter.drawText(cell(column, top, rowsBottom() - top), wrapFlags, row[size_t(column)]);
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

bool PhraseListPrinter::print(QPrinter& printer, size_t mostPages) const
{
    QPainter painter;
    if (!painter.begin(&printer)) {
        return false;
    }
    const Page page(printer);
    const auto [tops, firstRows] = page.layOut(m_rows);
    for (size_t number = 0; number < std::min(firstRows.size(), mostPages); ++number) {
        if (number > 0) {
            printer.newPage();
        }
        painter.setFont(page.boldFont);
        painter.drawText(page.header(), Qt::AlignLeft | Qt::AlignVCenter, m_documentName);
        page.paintRow(painter, m_titles, page.titlesTop());
        painter.setFont(page.font);
        painter.drawText(
            page.footer(), Qt::AlignRight | Qt::AlignVCenter, m_pageFormat.arg(number + 1).arg(firstRows.size()));

        const size_t end = number + 1 < firstRows.size() ? firstRows[number + 1] : tops.size();
        // Only a row that is higher than a page would reach beyond it.
        painter.setClipRect(page.rows());
        for (size_t index = firstRows[number]; index < end; ++index) {
            page.paintRow(painter, m_rows.at(qsizetype(index)), tops[index]);
        }
        painter.setClipping(false);
    }
    return painter.end() && printer.printerState() != QPrinter::Error;
}
