// SPDX-License-Identifier: MIT
#include "PhraseMenu.h"

#include <core/Phrase.h>

#include <QMenu>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

/// Of the two ends of a range in a submenu's title, in characters.
constexpr qsizetype endLength = 16;

QString soundName(const Phrase& phrase)
{
    const QString path = phrase.soundFilepath();
    return path.sliced(path.lastIndexOf(u'/') + 1);
}

} // namespace

PhraseMenu::PhraseMenu(QMenu* menu, QAction* end)
    : QObject(menu)
    , m_menu(menu)
    , m_end(end)
{
}

PhraseMenu::~PhraseMenu() = default;

void PhraseMenu::fill(const PropertyList::ArrayPointer& phrases, Manner manner)
{
    clear();
    if (!phrases) {
        return;
    }
    m_manner = manner;
    m_entries.reserve(size_t(phrases->size()));
    for (const PropertyList::Value& value : std::as_const(*phrases)) {
        const Phrase phrase = value.dictionary();
        if (phrase && (manner.show != Show::Sounds || !phrase.soundFilepath().isEmpty())) {
            m_entries.push_back(phrase.dictionary());
        }
    }
    m_items = addItems(m_menu, m_end, {0, qsizetype(m_entries.size())}, manner.isSorted);
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
    m_entries.clear();
    ++m_generation;
}

QString PhraseMenu::beginningAt(qsizetype place) const
{
    const Phrase phrase = m_entries[size_t(place)];
    return m_manner.show == Show::Sounds ? soundName(phrase) : phrase.phrase();
}

QString PhraseMenu::titleAt(qsizetype place) const
{
    const Phrase phrase = m_entries[size_t(place)];
    const bool hasBoth = m_manner.show == Show::PhrasesAndSounds && !phrase.soundFilepath().isEmpty();
    return hasBoth ? phrase.phrase() + u" – "_s + soundName(phrase) : beginningAt(place);
}

std::vector<QAction*> PhraseMenu::addItems(QMenu* menu, QAction* before, Range range, bool mayGoByInitial)
{
    std::vector<QAction*> items;
    if (range.count <= PhraseGroups::mostItems) {
        for (qsizetype place = range.first; place < range.first + range.count; ++place) {
            items.push_back(addItem(menu, before, place));
        }
        return items;
    }
    const auto beginning = [this](qsizetype place) { return beginningAt(place); };
    const std::vector<Range> initials =
        mayGoByInitial ? PhraseGroups::byInitial(range, beginning) : decltype(initials)();
    for (const Range part : initials) {
        items.push_back(addSubmenu(menu, before, PhraseGroups::initialOf(beginning(part.first)), part));
    }
    for (const Range part : initials.empty() ? PhraseGroups::evenly(range) : decltype(initials)()) {
        const QString first = MenuTitle::shortened(beginning(part.first), endLength);
        const QString last = MenuTitle::shortened(beginning(part.first + part.count - 1), endLength);
        items.push_back(addSubmenu(menu, before, first + u" … "_s + last, part));
    }
    return items;
}

QAction* PhraseMenu::addItem(QMenu* menu, QAction* before, qsizetype place)
{
    auto* const item = new QAction(MenuTitle::plain(titleAt(place), m_manner.drawn), menu);
    // The list may be another one by the time that this is heard.
    connect(item, &QAction::triggered, this, [this, entry = m_entries[size_t(place)]] { Q_EMIT chosen(entry); });
    menu->insertAction(before, item);
    return item;
}

QAction* PhraseMenu::addSubmenu(QMenu* menu, QAction* before, const QString& title, Range range)
{
    auto* const submenu = new QMenu(MenuTitle::plain(title, m_manner.drawn), menu);
    connect(submenu, &QMenu::aboutToShow, this, [this, submenu, range, generation = m_generation] {
        if (submenu->isEmpty() && generation == m_generation) {
            addItems(submenu, nullptr, range, false);
        }
    });
    return menu->insertMenu(before, submenu);
}
