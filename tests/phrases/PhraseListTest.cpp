// SPDX-License-Identifier: MIT
#include <core/Phrase.h>
#include <core/PhraseList.h>
#include <core/PhraseOrder.h>
#include <core/SharedNames.h>
#include <phrases/TypeAhead.h>

#include <QTest>

#include <algorithm>
#include <random>

using namespace Qt::StringLiterals;

using PropertyList::Array;
using PropertyList::ArrayPointer;
using PropertyList::Dictionary;
using PropertyList::DictionaryPointer;
using PropertyList::Value;

namespace {

ArrayPointer phrases(const QStringList& texts)
{
    const ArrayPointer result = Array::create();
    for (const QString& text : texts) {
        result->append(Dictionary::create({{PhraseKey::phrase, text}}));
    }
    return result;
}

} // namespace

class PhraseListTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void typedKeysFindTheFirstPhrase_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<int>("row");
        QTest::newRow("either case") << u"AP"_s << 1;
        QTest::newRow("first in list order") << u"b"_s << 2;
        QTest::newRow("whole phrase") << u"berry"_s << 3;
        QTest::newRow("longer than the phrase") << u"berryx"_s << -1;
        QTest::newRow("beyond Latin") << u"ÄR"_s << 4;
    }

    void typedKeysFindTheFirstPhrase()
    {
        QFETCH(QString, typed);
        const ArrayPointer list = phrases({u"apple"_s, u"banana"_s, u"berry"_s, u"ärger"_s});
        list->append(u"no entry"_s);
        list->reorder({4, 0, 1, 2, 3});
        QTEST(PhraseList::rowOfPhraseStartingWith(list, typed), "row");
    }

    void noPhraseIsNotTheEmptyPhrase()
    {
        QCOMPARE(PhraseList::rowOfPhrase(phrases({u"a"_s, u""_s}), u""_s), 1);
        QCOMPARE(PhraseList::rowOfPhrase(phrases({u"a"_s, u""_s}), QString()), -1);
    }

    void entryIsFoundAgainAmongOthersOfItsPhrase_data()
    {
        QTest::addColumn<QStringList>("before");
        QTest::addColumn<int>("row");
        QTest::addColumn<QStringList>("after");
        QTest::addColumn<int>("found");
        const auto row = [](const char* name, const QStringList& before, int chosen, const QStringList& after,
                             int found) { QTest::newRow(name) << before << chosen << after << found; };
        row("one more before it", {u"b 1"_s, u"b 2"_s}, 1, {u"a 2"_s, u"b 1"_s, u"b 2"_s}, 2);
        row("in another order", {u"b 2"_s, u"b 1"_s}, 0, {u"b 1"_s, u"b 2"_s}, 1);
        row("with another sound", {u"b 1"_s, u"b 2"_s}, 1, {u"b 1"_s, u"b 3"_s}, 1);
        row("all alike", {u"b 1"_s, u"b 1"_s, u"b 1"_s}, 2, {u"b 1"_s, u"b 1"_s, u"b 1"_s}, 2);
        row("gone", {u"b 1"_s, u"b 2"_s}, 1, {u"b 1"_s, u"c 2"_s}, -1);
    }

    void entryIsFoundAgainAmongOthersOfItsPhrase()
    {
        const auto list = [](const QStringList& entries) {
            const ArrayPointer result = Array::create();
            for (const QString& entry : entries) {
                result->append(
                    Dictionary::create({{PhraseKey::phrase, entry.left(1)}, {PhraseKey::soundFilepath, entry.mid(2)}}));
            }
            return result;
        };
        QFETCH(QStringList, before);
        QFETCH(int, row);
        QFETCH(QStringList, after);
        const ArrayPointer old = list(before);
        QTEST(PhraseList::rowOfCounterpart(list(after), old, DocumentEntry::at(old, row)), "found");
        QCOMPARE(PhraseList::rowOfCounterpart(old, old, DocumentEntry::at(old, row)), row);
    }

    void aRunOfKeysLastsOneSecondFromItsFirstKey()
    {
        TypeAhead typeAhead;
        const auto type = [&typeAhead](const QString& key, double now) {
            typeAhead.beginRunIfOver(now);
            return typeAhead.abbFrag += key;
        };
        QCOMPARE(type(u"a"_s, 100.0), u"a"_s);
        QCOMPARE(type(u"b"_s, 100.9), u"ab"_s);
        QCOMPARE(type(u"c"_s, 101.0), u"abc"_s);
        QCOMPARE(type(u"d"_s, 101.1), u"d"_s);
    }

    // Texts that begin alike, differ in case only, or in what takes two units.
    void sortingIsThatOfAStableSort()
    {
        std::mt19937 random(1);
        const QStringList characters{u"a"_s, u"A"_s, u"b"_s, u"é"_s, u"É"_s, u"\uFF21"_s, u"😀"_s};
        QStringList texts;
        for (int i = 0; i < 2000; ++i) {
            QString text = u"the same "_s;
            for (auto length = random() % 8; length > 0; --length) {
                text += characters.at(qsizetype(random()) % characters.size());
            }
            texts.append(text);
        }
        for (const Qt::SortOrder order : {Qt::AscendingOrder, Qt::DescendingOrder}) {
            const ArrayPointer list = phrases(texts);
            PhraseOrder::sort(*list, PhraseKey::phrase, PhraseOrder::Comparison::CaseInsensitiveText, order);
            std::ranges::stable_sort(texts, [order](const QString& left, const QString& right) {
                const int ascending = left.compare(right, Qt::CaseInsensitive);
                return order == Qt::AscendingOrder ? ascending < 0 : ascending > 0;
            });
            for (qsizetype row = 0; row < texts.size(); ++row) {
                QCOMPARE(list->at(row).dictionary()->value(PhraseKey::phrase).string(), texts[row]);
            }
        }
    }
};

QTEST_APPLESS_MAIN(PhraseListTest)
#include "PhraseListTest.moc"
