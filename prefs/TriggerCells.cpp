// SPDX-License-Identifier: MIT
#include "TriggerCells.h"

#include <platform/controls/Matrix.h>
#include <platform/desktop/Text.h>

#include <QCheckBox>
#include <QGridLayout>

#include <array>

namespace {

struct TriggerCell
{
    const char* title;
    const char* name;
    /// Of a character that no title can show; 0 for the title's own.
    int tag = 0;
    bool isDefault = false;
};

/// Row by row.
constexpr auto cells = std::to_array<TriggerCell>({
    {"⇥", QT_TRANSLATE_NOOP("Text", "Tab"), 20, true},
    {"␣", QT_TRANSLATE_NOOP("Text", "Space"), 21, true},
    {"↩", QT_TRANSLATE_NOOP("Text", "Return"), 22, true},
    {"⍽", QT_TRANSLATE_NOOP("Text", "No-break space"), 23},
    {"⎋", QT_TRANSLATE_NOOP("Text", "Escape"), 24},
    {".", QT_TRANSLATE_NOOP("Text", "Period")},
    {",", QT_TRANSLATE_NOOP("Text", "Comma")},
    {";", QT_TRANSLATE_NOOP("Text", "Semicolon")},
    {":", QT_TRANSLATE_NOOP("Text", "Colon")},
    {"!", QT_TRANSLATE_NOOP("Text", "Exclamation mark")},
    {"?", QT_TRANSLATE_NOOP("Text", "Question mark")},
    {"'", QT_TRANSLATE_NOOP("Text", "Apostrophe")},
    {"\"", QT_TRANSLATE_NOOP("Text", "Quotation mark")},
    {"@", QT_TRANSLATE_NOOP("Text", "At sign")},
    {"(", QT_TRANSLATE_NOOP("Text", "Left parenthesis")},
    {")", QT_TRANSLATE_NOOP("Text", "Right parenthesis")},
    {"[", QT_TRANSLATE_NOOP("Text", "Left bracket")},
    {"]", QT_TRANSLATE_NOOP("Text", "Right bracket")},
    {"{", QT_TRANSLATE_NOOP("Text", "Left brace")},
    {"}", QT_TRANSLATE_NOOP("Text", "Right brace")},
    {"/", QT_TRANSLATE_NOOP("Text", "Slash")},
    {"<", QT_TRANSLATE_NOOP("Text", "Less-than sign")},
    {">", QT_TRANSLATE_NOOP("Text", "Greater-than sign")},
    {"-", QT_TRANSLATE_NOOP("Text", "Hyphen")},
    {"_", QT_TRANSLATE_NOOP("Text", "Underscore")},
    {"+", QT_TRANSLATE_NOOP("Text", "Plus sign")},
    {"=", QT_TRANSLATE_NOOP("Text", "Equals sign")},
    {"\\", QT_TRANSLATE_NOOP("Text", "Backslash")},
});
static_assert(int(cells.size()) == TriggerCells::rowCount * TriggerCells::columnCount);

} // namespace

void TriggerCells::fill(Matrix& matrix, QWidget* previous)
{
    auto* const grid = qobject_cast<QGridLayout*>(matrix.layout());
    for (int i = 0; i < int(cells.size()); ++i) {
        const TriggerCell& description = cells[size_t(i)];
        auto* const cell = new QCheckBox(QString::fromUtf8(description.title), &matrix);
        cell->setToolTip(Text::tr(description.name));
        cell->setAccessibleName(cell->toolTip());
        cell->setChecked(description.isDefault);
        cell->setProperty("tag", description.tag);
        grid->addWidget(cell, i / columnCount, i % columnCount);
        QWidget::setTabOrder(previous, cell);
        previous = cell;
    }
}
