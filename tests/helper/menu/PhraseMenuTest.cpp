// SPDX-License-Identifier: MIT
#include <core/SharedNames.h>
#include <helper/menu/PhraseMenu.h>

#include <QMenu>
#include <QSignalSpy>
#include <QTest>

#include <DataTable.h>

using namespace Qt::StringLiterals;
using PropertyList::Array;
using PropertyList::ArrayPointer;
using PropertyList::Dictionary;
using Drawn = MenuTitle::Drawn;

namespace {

ArrayPointer listOf(const QStringList& phrases, const QString& sound = u"/sounds/Pop.aif"_s)
{
    const ArrayPointer list = Array::create();
    for (const QString& phrase : phrases) {
        list->append(Dictionary::create({{PhraseKey::phrase, phrase}, {PhraseKey::soundFilepath, sound}}));
    }
    return list;
}

QStringList numbered(int count, const QString& letters = u"abc"_s)
{
    QStringList phrases;
    for (int i = 0; i < count; ++i) {
        phrases.append(letters[i * letters.size() / count] + QString::number(i).rightJustified(6, u'0'));
    }
    return phrases;
}

/// Listed with phrases as titles.
std::shared_ptr<const PhraseListing> listingOf(const ArrayPointer& list, bool isSorted = true)
{
    return std::make_shared<const PhraseListing>(list, int(PhraseListing::Show::Phrases), isSorted ? 0 : 2);
}

QStringList titles(const QMenu& menu)
{
    QStringList result;
    for (const QAction* const item : menu.actions()) {
        result.append(item->text());
    }
    return result;
}

/// Opens every submenu as a person would; answers the items at the ends, or nothing where a menu is too long.
QStringList opened(QMenu& menu)
{
    QStringList leaves;
    const QList<QAction*> items = menu.actions();
    for (QAction* const item : items.size() <= PhraseGroups::mostItems + 1 ? items : QList<QAction*>()) {
        if (QMenu* const submenu = item->menu()) {
            Q_EMIT submenu->aboutToShow();
            leaves += opened(*submenu);
        } else if (!item->text().isEmpty()) {
            leaves.append(item->text());
        }
    }
    return leaves;
}

} // namespace

class PhraseMenuTest final : public QObject
{
    Q_OBJECT

private:
    QMenu m_menu;
    QAction* m_end = m_menu.addSeparator();
    PhraseMenu* m_phrases = new PhraseMenu(&m_menu, m_end);

private Q_SLOTS:

    void titlesShowWhatTheSettingSays_data()
    {
        const DataTable<int, Drawn, QString, QString, QString> row("show", "drawn", "phrase", "sound", "title");
        const auto toolkit = Drawn::ByToolkit;
        const auto desktop = Drawn::ByDesktop;
        row("sounds", 1, toolkit, u"brb"_s, u"/s/Pop.aif"_s, u"Pop.aif"_s);
        row("sounds, none", 1, toolkit, u"brb"_s, u""_s, {});
        row("phrases", 2, toolkit, u"brb"_s, u"/s/Pop.aif"_s, u"brb"_s);
        row("both", 3, toolkit, u"brb"_s, u"/s/Pop.aif"_s, u"brb – Pop.aif"_s);
        row("neither", 0, toolkit, u"brb"_s, u"/s/Pop.aif"_s, {});
        row("both, no sound", 3, toolkit, u"brb"_s, u""_s, u"brb"_s);
        row("marks", 2, toolkit, u"a_b&c&d"_s, u""_s, u"a_b&&c&&d"_s);
        row("marks of the desktop", 2, desktop, u"a_b&c&d"_s, u""_s, u"a__b&&c&d"_s);
        row("lines and tabs", 2, toolkit, u"a\tb\nc"_s, u""_s, u"a b c"_s);
        row("long", 2, toolkit, QString(500, u'x'), u""_s, QString(59, u'x') + u'…');
    }

    void titlesShowWhatTheSettingSays()
    {
        const auto [show, drawn, phrase, sound, title] = currentRow<int, Drawn, QString, QString, QString>();
        m_phrases->fill(std::make_shared<const PhraseListing>(listOf({phrase}, sound), show, 0), drawn);
        QCOMPARE(titles(m_menu), title.isNull() ? QStringList{u""_s} : QStringList({title, u""_s}));
    }

    void longListsAreDivided_data()
    {
        const DataTable<QStringList, bool, QStringList> row("phrases", "isSorted", "titles");
        row("few", {u"b"_s, u"a"_s}, true, {u"b"_s, u"a"_s});
        row("by initial", numbered(90), true, {u"A"_s, u"B"_s, u"C"_s});
        row("by kind of character", QStringList(20, u"!"_s) + QStringList(20, u"7"_s) + QStringList(20, u"é"_s), true,
            {u"#"_s, u"0–9"_s, u"É"_s});
        row("unsorted", numbered(49), false,
            {u"a000000 … a000006"_s, u"a000007 … a000013"_s, u"a000014 … b000020"_s, u"b000021 … b000027"_s,
                u"b000028 … c000034"_s, u"c000035 … c000041"_s, u"c000042 … c000048"_s});
    }

    void longListsAreDivided()
    {
        const auto [phrases, isSorted] = currentRow<QStringList, bool>();
        m_phrases->fill(listingOf(listOf(phrases), isSorted), Drawn::ByToolkit);
        QStringList found = titles(m_menu);
        QVERIFY(found.takeLast().isEmpty());
        QTEST(found, "titles");
        QCOMPARE(opened(m_menu), phrases);
    }

    void hundredThousandAreOpenedLazily()
    {
        const QStringList phrases = numbered(100'000, u"abcdefghijklmnopqrstuvwxyz"_s);
        m_phrases->fill(listingOf(listOf(phrases)), Drawn::ByToolkit);
        constexpr qsizetype few = 200;
        QVERIFY(m_menu.findChildren<QAction*>().size() < few);
        QCOMPARE(opened(m_menu), phrases);
    }

    void choiceOutlivesTheList()
    {
        const ArrayPointer list = listOf(numbered(60));
        m_phrases->fill(listingOf(list), Drawn::ByToolkit);
        QMenu* const submenu = m_menu.actions().at(0)->menu();
        Q_EMIT submenu->aboutToShow();
        const QSignalSpy chosen(m_phrases, &PhraseMenu::chosen);
        m_phrases->fill(listingOf(listOf({u"other"_s})), Drawn::ByToolkit);
        submenu->actions().at(3)->trigger();
        QCOMPARE(chosen.size(), 1);
        QVERIFY(chosen.at(0).at(0).value<PropertyList::DictionaryPointer>() == list->at(3).dictionary());
        QCOMPARE(titles(m_menu), QStringList({u"other"_s, u""_s}));
    }
};

QTEST_MAIN(PhraseMenuTest)
#include "PhraseMenuTest.moc"
