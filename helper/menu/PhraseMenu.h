// SPDX-License-Identifier: MIT
#pragma once

#include "MenuTitle.h"
#include "PhraseListing.h"

#include <platform/plist/PropertyList.h>

#include <QObject>

#include <memory>
#include <vector>

class QAction;
class QMenu;

/// A listing of phrases as items of a menu. Many are divided into submenus, which are filled when they are about to be
/// shown, so that a menu of 100 000 phrases holds only what somebody has looked at. Main thread only.
class PhraseMenu final : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(PhraseMenu)

public:
    /// Items go into @p menu, which owns this object, before the item @p end of it.
    PhraseMenu(QMenu* menu, QAction* end);
    ~PhraseMenu() override;

    /// Shows @p listing in place of what was shown before; null shows nothing.
    void fill(const std::shared_ptr<const PhraseListing>& listing, MenuTitle::Drawn drawn);

    bool isEmpty() const { return m_items.empty(); }

Q_SIGNALS:
    void chosen(const PropertyList::DictionaryPointer& entry);

private:
    using Range = PhraseGroups::Range;

    void clear();
    std::vector<QAction*> addItems(QMenu* menu, QAction* before, Range range, const std::vector<Range>& initials = {});
    QAction* addItem(QMenu* menu, QAction* before, qsizetype place);
    QAction* addSubmenu(QMenu* menu, QAction* before, const QString& title, Range range);

    QMenu* m_menu;
    QAction* m_end;
    std::shared_ptr<const PhraseListing> m_listing;
    MenuTitle::Drawn m_drawn = MenuTitle::Drawn::ByToolkit;
    /// Counts the lists: a submenu of an earlier one may be open still, and is not filled any more.
    int m_generation = 0;
    /// The items in the menu itself; those in submenus go with these.
    std::vector<QAction*> m_items;
};
