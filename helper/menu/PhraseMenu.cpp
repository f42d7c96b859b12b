// SPDX-License-Identifier: MIT
#include "PhraseMenu.h"

#include <QMenu>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

/// Of the two ends of a range in a submenu's title, in characters.
constexpr qsizetype endLength = 16;

} // namespace

PhraseMenu::PhraseMenu(QMenu* menu, QAction* end)
    : QObject(menu)
    , m_menu(menu)
    , m_end(end)
{
}

PhraseMenu::~PhraseMenu() = default;

void PhraseMenu::fill(const std::shared_ptr<const PhraseListing>& listing, MenuTitle::Drawn drawn)
{
    clear();
    m_listing = listing;
    m_drawn = drawn;
    if (m_listing) {
        m_items = addItems(m_menu, m_end, {0, qsizetype(m_listing->entries().size())}, m_listing->initials());
    }
}

void PhraseMenu::clear()
{
    for (QAction* const item : std::exchange(m_items, {})) {
        m_menu->removeAction(item);
        // The menu may be open, with this very item chosen.
        if (QMenu* const submenu = item->menu()) {
            submenu->deleteLater();
        } else {
            item->deleteLater();
        }
    }
    m_listing = nullptr;
    ++m_generation;
}

/// By these initials where there are any.
std::vector<QAction*> PhraseMenu::addItems(
    QMenu* menu, QAction* before, Range range, const std::vector<Range>& initials)
{
    std::vector<QAction*> items;
    if (range.count <= PhraseGroups::mostItems) {
        for (qsizetype place = range.first; place < range.first + range.count; ++place) {
            items.push_back(addItem(menu, before, place));
        }
        return items;
    }
    for (const Range part : initials) {
        const QString initial = PhraseGroups::initialOf(m_listing->beginningAt(part.first));
        items.push_back(addSubmenu(menu, before, initial, part));
    }
    for (const Range part : initials.empty() ? PhraseGroups::evenly(range) : std::vector<Range>()) {
        const QString first = MenuTitle::shortened(m_listing->beginningAt(part.first), endLength);
        const QString last = MenuTitle::shortened(m_listing->beginningAt(part.first + part.count - 1), endLength);
        items.push_back(addSubmenu(menu, before, first + u" … "_s + last, part));
    }
    return items;
}

QAction* PhraseMenu::addItem(QMenu* menu, QAction* before, qsizetype place)
{
    auto* const item = new QAction(MenuTitle::plain(m_listing->titleAt(place), m_drawn), menu);
    // The list may be another one by the time that this is heard.
    connect(
        item, &QAction::triggered, this, [this, entry = m_listing->entries()[size_t(place)]] { Q_EMIT chosen(entry); });
    menu->insertAction(before, item);
    return item;
}

QAction* PhraseMenu::addSubmenu(QMenu* menu, QAction* before, const QString& title, Range range)
{
    auto* const submenu = new QMenu(MenuTitle::plain(title, m_drawn), menu);
    connect(submenu, &QMenu::aboutToShow, this, [this, submenu, range, generation = m_generation] {
        if (submenu->isEmpty() && generation == m_generation) {
            addItems(submenu, nullptr, range);
        }
    });
    return menu->insertMenu(before, submenu);
}
