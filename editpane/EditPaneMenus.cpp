// SPDX-License-Identifier: MIT
#include "EditPaneMenus.h"

#include <platform/desktop/Text.h>

#include <QMenu>

#include <array>
#include <span>

namespace EditPaneMenus {

namespace {

constexpr int firstMarkerTag = 1000;
constexpr int firstSymbolTag = 1007;
constexpr int firstTimeTag = 100;
constexpr int firstUserTag = 200;

constexpr auto dates = std::to_array<const char*>({"%Y-%m-%d", "%Y%m%d", "%Y-%j", "%A, %B %e, %Y", "%a, %b %e, %Y",
    "%B %e, %Y", "%b %e, %Y", "%A, %e %B %Y", "%a %e %b %Y", "%e %B %Y", "%e %b %Y", "%d-%b-%Y", "%m/%d/%Y",
    "%1m/%e/%y", "%d/%m/%Y", "%d/%m/%y", "%d.%m.%Y", "%e.%1m.%Y", "%d-%m-%Y", "%Y/%m/%d", "%y%m%d", "%y-%m-%d"});
constexpr auto times = std::to_array<const char*>(
    {"%H:%M", "%H:%M:%S", "%1H:%M", "%H.%M", "%Hh%M", "%H%M", "%H%M%S", "%1I:%M %p", "%1I:%M:%S %p", "%I:%M %p",
        "%I:%M:%S %p", "%H:%M:%S%z", "%H:%M:%S %Z", "%Y-%m-%dT%H:%M:%S%z", "%Y%m%dT%H%M%S"});

struct Item
{
    const char* title;
    const char* inserted;
};

constexpr auto userFormats = std::to_array<Item>({{QT_TRANSLATE_NOOP("Text", "Short date as in the settings"), "[[0]]"},
    {QT_TRANSLATE_NOOP("Text", "Long date as in the settings"), "[[1]]"},
    {QT_TRANSLATE_NOOP("Text", "Time as in the settings"), "[[4]]"}});
constexpr auto markers = std::to_array<Item>(
    {{QT_TRANSLATE_NOOP("Text", "Insertion point"), "%|"}, {QT_TRANSLATE_NOOP("Text", "Move left"), "%<"},
        {QT_TRANSLATE_NOOP("Text", "Move up"), "%^"}, {QT_TRANSLATE_NOOP("Text", "Move right"), "%>"},
        {QT_TRANSLATE_NOOP("Text", "Move down"), "%v"}, {QT_TRANSLATE_NOOP("Text", "Keep the trigger character"), "%+"},
        {QT_TRANSLATE_NOOP("Text", "Leave out the trigger character"), "%-"}});
constexpr auto symbols =
    std::to_array<const char*>({QT_TRANSLATE_NOOP("Text", "– Dash"), QT_TRANSLATE_NOOP("Text", "• Bullet"),
        QT_TRANSLATE_NOOP("Text", "… Ellipsis"), QT_TRANSLATE_NOOP("Text", "→ Arrow")});

void addItem(QMenu& menu, const QString& title, const QString& toolTip, int tag)
{
    QAction* const action = menu.addAction(title);
    action->setData(tag);
    action->setToolTip(toolTip);
}

void addFormats(QMenu& menu, std::span<const char* const> formats, int firstTag)
{
    menu.setToolTipsVisible(true);
    for (int index = 0; const char* const format : formats) {
        addItem(menu, QString(), QString::fromLatin1(format), firstTag + index++);
    }
}

} // namespace

QMenu* makeDateFormats(QWidget* parent)
{
    auto* const menu = new QMenu(Text::tr("Date and Time"), parent);
    menu->setToolTipsVisible(true);
    addFormats(*menu->addMenu(Text::tr("Date")), dates, 0);
    addFormats(*menu->addMenu(Text::tr("Time")), times, firstTimeTag);
    for (int tag = firstUserTag; const Item& item : userFormats) {
        addItem(*menu, Text::tr(item.title), QString::fromLatin1(item.inserted), tag++);
    }
    menu->addMenu(Text::tr("Phrase"))->setToolTipsVisible(true);
    return menu;
}

QMenu* makeTextFormats(QWidget* parent)
{
    auto* const menu = new QMenu(Text::tr("Formatting"), parent);
    menu->setToolTipsVisible(true);
    for (int tag = firstMarkerTag; const Item& item : markers) {
        addItem(*menu, Text::tr(item.title), QString::fromLatin1(item.inserted), tag++);
    }
    for (int tag = firstSymbolTag; const char* const symbol : symbols) {
        const QString title = Text::tr(symbol);
        addItem(*menu, title, title.first(1), tag++);
    }
    return menu;
}

} // namespace EditPaneMenus
