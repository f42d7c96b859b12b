#include "Importers.h"
#include "PhraseList.h"

#include <QTest>

#include <SharedNames.h>
#include <TableColumn.h>

using namespace Qt::StringLiterals;

using Importers::Conversion;
using Importers::Source;
using PropertyList::Array;
using PropertyList::ArrayPointer;
using PropertyList::Dictionary;
using PropertyList::DictionaryPointer;
using PropertyList::Value;

namespace {

DictionaryPointer dictionary(std::initializer_list<std::pair<QString, Value>> entries)
{
    const DictionaryPointer result = Dictionary::create();
    for (const auto& [key, value] : entries) {
        result->insert(key, value);
    }
    return result;
}

ArrayPointer array(std::initializer_list<Value> values)
{
    const ArrayPointer result = Array::create();
    for (const Value& value : values) {
        result->append(value);
    }
    return result;
}

ArrayPointer phrases(const QStringList& texts)
{
    const ArrayPointer result = Array::create();
    for (const QString& text : texts) {
        result->append(dictionary({{u"Phrase"_s, text}}));
    }
    return result;
}

/// Converts everything whose bytes are not "bad".
const Importers::RtfdConverter converter = [](const QByteArray& archive) {
    return archive == "bad" ? std::nullopt : std::optional(QByteArray("rtfd of " + archive));
};

Conversion convert(const Value& root, Source source)
{
    return Importers::convert(root, source, {converter, converter}, [](qsizetype, qsizetype) { return true; });
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
        std::rotate(list->begin(), list->end() - 1, list->end());
        QTEST(PhraseList::rowOfPhraseStartingWith(list, typed), "row");
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

    void descendingSortIsStable()
    {
        const ArrayPointer list = phrases({u"b"_s, u"A"_s, u"B"_s, u"c"_s});
        PhraseList::sort(list, {u"Phrase"_s, false});
        QStringList sorted;
        for (const Value& value : *list) {
            sorted.append(value.dictionary()->value(PhraseKey::phrase).string());
        }
        QCOMPARE(sorted, (QStringList{u"c"_s, u"b"_s, u"B"_s, u"A"_s}));
    }

    void itemsBecomePhrases_data()
    {
        QTest::addColumn<Source>("source");
        QTest::addColumn<QString>("list");
        QTest::addColumn<Value>("item");
        QTest::addColumn<QString>("phrase");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QByteArray>("rtfd");
        const auto row = [](const char* name, Source source, const QString& list, const DictionaryPointer& item,
                             const QString& phrase, const QString& text, const QByteArray& rtfd) {
            QTest::newRow(name) << source << list << Value(item) << phrase << text << rtfd;
        };
        const Value data(QByteArray("x"));
        row("Typinator, formatted data unchanged", Source::Typinator, u"Abbreviations"_s,
            dictionary({{u"Phrase"_s, u"p"_s}, {u"Expansion"_s, u"t"_s}, {u"Formatted"_s, data}, {u"Picture"_s, data}}),
            u"p"_s, u"t"_s, "x");
        row("Typinator, picture", Source::Typinator, u"Abbreviations"_s, dictionary({{u"Picture"_s, data}}), u"(1)"_s,
            u""_s, "rtfd of x");
        row("TextExpander", Source::TextExpander, u"Snippets"_s,
            dictionary({{u"Phrase"_s, u"p"_s}, {u"Plain Text"_s, u"t"_s}, {u"Formatted Text"_s, data}}), u"p"_s, u"t"_s,
            "rtfd of x");
        row("SpellCatcher", Source::SpellCatcher, u"entries"_s,
            dictionary({{u"abbr"_s, u"p"_s}, {u"exp"_s, u"t"_s}, {u"supressSep"_s, true}}), u"p"_s, u"t%-"_s, {});
    }

    void itemsBecomePhrases()
    {
        QFETCH(Source, source);
        QFETCH(QString, list);
        QFETCH(Value, item);
        const Conversion conversion = convert(dictionary({{list, array({dictionary({}), item})}}), source);
        QCOMPARE(conversion.document->keys(), QStringList{u"Clippings"_s});
        const DictionaryPointer entry = PhraseList::entryAt(conversion.document->value(u"Clippings").array(), 1);
        QTEST(entry->value(PhraseKey::phrase).string(), "phrase");
        QTEST(entry->value(PhraseKey::plainText).string(), "text");
        QTEST(entry->value(PhraseKey::rtfd).data(), "rtfd");
        QCOMPARE(entry->value(PhraseKey::sortOrder).string(), u"1"_s);
        QCOMPARE(entry->value(PhraseKey::option), Value(u""_s));
        QCOMPARE(entry->value(PhraseKey::service), Value(u""_s));
    }

    void badItemsCostOnlyThemselves()
    {
        const auto item = [](const Value& formatted) { return dictionary({{u"Formatted Text"_s, formatted}}); };
        const Conversion conversion =
            convert(dictionary({{u"Snippets"_s,
                        array({7, item(QByteArray("bad")), item(u"no data"_s), item(QByteArray("good")), u"text"_s})}}),
                Source::TextExpander);
        const ArrayPointer converted = conversion.document->value(u"Clippings").array();
        QCOMPARE(converted->size(), 3);
        QVERIFY(!PhraseList::entryAt(converted, 0)->contains(PhraseKey::rtfd));
        QVERIFY(!PhraseList::entryAt(converted, 1)->contains(PhraseKey::rtfd));
        QVERIFY(PhraseList::entryAt(converted, 2)->contains(PhraseKey::rtfd));
        QCOMPARE(PhraseList::entryAt(converted, 2)->value(PhraseKey::phrase).string(), u"(3)"_s);
        QCOMPARE(conversion.troubles.size(), 2);
        QVERIFY(std::ranges::all_of(conversion.troubles, [](int count) { return count == 2; }));
    }

    void rootWithoutTheListGivesNoDocument()
    {
        for (const Value& root : {Value(), Value(u"text"_s), Value(dictionary({{u"Snippets"_s, u"text"_s}}))}) {
            QCOMPARE(convert(root, Source::TextExpander).outcome, Conversion::Outcome::NoList);
        }
    }

    void conversionStopsWhenTheUserCancels()
    {
        const Conversion conversion = Importers::convert(dictionary({{u"entries"_s, phrases({u"a"_s, u"b"_s})}}),
            Source::SpellCatcher, {converter, converter}, [](qsizetype done, qsizetype) { return done < 1; });
        QCOMPARE(conversion.outcome, Conversion::Outcome::Cancelled);
        QVERIFY(!conversion.document);
    }
};

QTEST_APPLESS_MAIN(PhraseListTest)
#include "PhraseListTest.moc"
