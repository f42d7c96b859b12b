// SPDX-License-Identifier: MIT
#pragma once

#include "MenuTitle.h"
#include "PhraseGroups.h"

#include <platform/plist/PropertyList.h>

#include <QObject>

#include <vector>

class QAction;
class QMenu;

/// The phrases of a document as items of a menu. Many are divided into submenus, by initial where the list is sorted by
/// what the items show; a submenu is filled when it is about to be shown, so that a menu of 100 000 phrases holds only
/// what somebody has looked at. Main thread only.
class PhraseMenu final : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(PhraseMenu)

public:
    /// What an item shows: the values of "MenuPref" from 1 to 3.
    enum class Show {
        /// The name of the sound file. Phrases without a sound are left out.
        Sounds = 1,
        Phrases,
        PhrasesAndSounds,
    };

    struct Manner
    {
        Show show = Show::PhrasesAndSounds;
        /// The list is sorted by what the items begin with.
        bool isSorted = false;
        MenuTitle::Drawn drawn = MenuTitle::Drawn::ByToolkit;
    };

    /// Items go into @p menu, which owns this object, before the item @p end of it.
    PhraseMenu(QMenu* menu, QAction* end);
    ~PhraseMenu() override;

    /// Shows the entries of @p phrases, in their order, in place of those shown before. The entries are shared with the
    /// document until the next call. A null list shows nothing.
    void fill(const PropertyList::ArrayPointer& phrases, Manner manner);

    /// Takes all items out.
    void clear();

    bool isEmpty() const { return m_entries.empty(); }

Q_SIGNALS:
    void chosen(const PropertyList::DictionaryPointer& entry);

private:
    using Range = PhraseGroups::Range;

    QString beginningAt(qsizetype place) const;
    QString titleAt(qsizetype place) const;
    std::vector<QAction*> addItems(QMenu* menu, QAction* before, Range range, bool mayGoByInitial);
    QAction* addItem(QMenu* menu, QAction* before, qsizetype place);
    QAction* addSubmenu(QMenu* menu, QAction* before, const QString& title, Range range);

    QMenu* m_menu;
    QAction* m_end;
    Manner m_manner;
    std::vector<PropertyList::DictionaryPointer> m_entries;
    /// Counts the lists: a submenu of an earlier one may be open still, and is not filled any more.
    int m_generation = 0;
    /// The items in the menu itself; those in submenus go with these.
    std::vector<QAction*> m_items;
};
