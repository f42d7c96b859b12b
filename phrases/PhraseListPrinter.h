// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QString>

#include <array>
#include <limits>

class QPrinter;

/// Prints a list of phrases: a table of three columns that wraps long texts, on every page with the document's name
/// above it, the columns' titles, and the page number below.
class PhraseListPrinter final
{
public:
    static constexpr int columnCount = 3;
    /// Phrase, application, sound.
    using Row = std::array<QString, columnCount>;

    /// @p pageFormat is the text of the page number: "%1" stands for the page, "%2" for the number of pages.
    PhraseListPrinter(QString documentName, Row titles, QString pageFormat, QList<Row> rows);

    /// Prints the pages, or the first @p mostPages of them, with the page layout of @p printer; false when it cannot
    /// print.
    bool print(QPrinter& printer, size_t mostPages = std::numeric_limits<size_t>::max()) const;

private:
    class Page;

    QString m_documentName;
    Row m_titles;
    QString m_pageFormat;
    QList<Row> m_rows;
};
