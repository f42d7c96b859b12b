// SPDX-License-Identifier: MIT
#include <core/SharedNames.h>
#include <helper/typing/PhraseMatcher.h>

#include <QTest>

#include <DataTable.h>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

using Key = KeyMeaning::Key;

const QString editor = u"/Applications/Editor.desktop"_s;

/// A phrase entry with a sound for each text: "phrase", "phrase|sound" or "phrase|sound|application".
PropertyList::ArrayPointer phraseList(const QStringList& texts)
{
    const auto phrases = PropertyList::Array::create();
    for (const QString& text : texts) {
        const QStringList parts = text.split(u'|');
        phrases->append(PropertyList::Dictionary::create({{PhraseKey::phrase, parts.first()},
            {PhraseKey::soundFilepath, parts.value(1, parts.first())}, {PhraseKey::app, parts.value(2)}}));
    }
    return phrases;
}

std::shared_ptr<const PhraseIndex> indexOf(const QStringList& texts)
{
    return std::make_shared<const PhraseIndex>(phraseList(texts));
}

KeyPress keyPress(Key key, const QString& text, InputTime time)
{
    KeyPress press;
    press.meaning.key = key;
    press.meaning.text = KeyText(text.toUtf8());
    press.time = time;
    return press;
}

/// Types a script of characters (with their combining marks each a press of its own) and of signs for what is no
/// character; answers the sounds of the completed phrases.
QStringList soundsOf(PhraseMatcher& matcher, const QString& script)
{
    QStringList sounds;
    InputTime time = std::numeric_limits<InputTime>::max() - 1'000;
    for (const char32_t sign : script.toStdU32String()) {
        KeyPress press = keyPress(Key::Character, QString::fromUcs4(&sign, 1), time += 100);
        switch (sign) {
        case U'\b':
            press = keyPress(Key::BackSpace, {}, time);
            break;
        case U'←':
            press = keyPress(Key::Left, {}, time);
            break;
        case U'⇧':
            press = keyPress(Key::Silent, {}, time);
            break;
        case U'⎋':
            press = keyPress(Key::Escape, u"\x1B"_s, time);
            break;
        case U'⏎':
            press = keyPress(Key::Return, u"\r"_s, time);
            break;
        case U'⌘':
            press = keyPress(Key::Character, {}, time);
            press.meaning.isShortcut = true;
            break;
        case U'④':
            press = keyPress(Key::Other, {}, time);
            break;
        case U'…':
            time += 29'000;
            continue;
        case U'⏸':
            time += 30'000;
            continue;
        case U'⊙':
            matcher.forget();
            continue;
        case U'⇄':
            matcher.enterApplication(editor);
            continue;
        default:
            break;
        }
        if (const auto phrase = matcher.press(press)) {
            sounds << phrase->entry->value(PhraseKey::soundFilepath).string();
        }
    }
    return sounds;
}

} // namespace

class PhraseMatcherTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void triggerCompletesThePhraseBeforeIt_data()
    {
        const DataTable<QStringList, QString, QStringList> row("phrases", "typed", "sounds");
        row("phrase", {u"brb"_s}, u"brb "_s, {u"brb"_s});
        row("no trigger", {u"brb"_s}, u"brb."_s, {});
        row("Return", {u"brb"_s}, u"brb⏎"_s, {u"brb"_s});
        row("end of a word", {u"brb"_s}, u"xxxbrb "_s, {u"brb"_s});
        row("longest", {u"b"_s, u"brb"_s, u"rb"_s, u"arb"_s, u"rrb"_s}, u"brb "_s, {u"brb"_s});
        row("shorter beside others of its end", {u"rb"_s, u"arb"_s, u"zrb"_s, u"ccrb"_s}, u"brb "_s, {u"rb"_s});
        row("case", {u"brb"_s}, u"Brb "_s, {});
        row("first of equals", {u"brb|1"_s, u"brb|2"_s}, u"brb "_s, {u"1"_s});
        row("with a trigger inside", {u"be right back"_s}, u"be right back "_s, {u"be right back"_s});
        row("not twice", {u"a"_s, u"a a"_s}, u"a  a "_s, {u"a"_s, u"a"_s});
        row("outside the basic plane", {u"😀b"_s, u"b"_s}, u"😁b 😀b "_s, {u"b"_s, u"😀b"_s});
        row("accents of their own", {u"e\u0301te\u0301"_s}, u"été e\u0301te\u0301 "_s,
            {u"e\u0301te\u0301"_s, u"e\u0301te\u0301"_s});
        row("letter before an accent", {u"e"_s}, u"e\u0301 "_s, {});
        row("taken back", {u"brb"_s}, u"brx\bb "_s, {u"brb"_s});
        row("pair taken back", {u"ab"_s, u"long"_s}, u"a😀\bb "_s, {u"ab"_s});
        row("accent taken back", {u"eb"_s, u"long"_s}, u"e\u0301\bb "_s, {u"eb"_s});
        row("all taken back", {u"brb"_s}, u"\b\bbrb "_s, {u"brb"_s});
        row("modifier", {u"brb"_s}, u"b⇧rb "_s, {u"brb"_s});
        row("short pause", {u"brb"_s}, u"br…b "_s, {u"brb"_s});
        row("long pause", {u"brb"_s}, u"br⏸b "_s, {});
        row("arrow", {u"brb"_s}, u"br←b "_s, {});
        row("Escape", {u"brb"_s}, u"br⎋b "_s, {});
        row("shortcut", {u"brb"_s}, u"br⌘b "_s, {});
        row("other key", {u"brb"_s}, u"br④b "_s, {});
        row("click", {u"brb"_s}, u"br⊙b "_s, {});
        row("other application", {u"brb"_s}, u"br⇄b "_s, {});
        row("no phrases", {}, u"brb "_s, {});
    }

    void triggerCompletesThePhraseBeforeIt()
    {
        const auto [phrases, typed, sounds] = currentRow<QStringList, QString, QStringList>();
        PhraseMatcher matcher;
        CharacterBitmap triggers;
        triggers.add(u" \t\r"_s);
        matcher.setTriggers(triggers, false);
        matcher.setPhrases(indexOf(phrases));
        QCOMPARE(soundsOf(matcher, typed), sounds);
    }

    void escapeMayBeATrigger()
    {
        PhraseMatcher matcher;
        CharacterBitmap triggers;
        triggers.add(u"\x1B"_s);
        matcher.setTriggers(triggers, false);
        matcher.setPhrases(indexOf({u"brb"_s}));
        QCOMPARE(soundsOf(matcher, u"brb brb⎋⎋"_s), QStringList{u"brb"_s});
    }

    void withoutTriggersTheLastCharacterCompletes()
    {
        PhraseMatcher matcher;
        matcher.setTriggers({}, true);
        matcher.setPhrases(indexOf({u"brb"_s, u"rb"_s, u"😀"_s}));
        QCOMPARE(soundsOf(matcher, u"brbb r\bb😀"_s), QStringList({u"brb"_s, u"😀"_s}));
    }

    void completedPhraseTellsWhatToTakeBack_data()
    {
        const DataTable<QString, QString, bool, int> row("phrase", "typed", "atOnce", "characters");
        row("letters", u"brb"_s, u"brb "_s, false, 3);
        row("pair", u"😀b"_s, u"😀b "_s, false, 2);
        row("accents typed apart", u"e\u0301"_s, u"e\u0301 "_s, false, 2);
        row("accents typed in one", u"e\u0301"_s, u"é "_s, false, 1);
        row("without a trigger", u"brb"_s, u"brb"_s, true, 3);
    }

    void completedPhraseTellsWhatToTakeBack()
    {
        const auto [phrase, typed, atOnce, characters] = currentRow<QString, QString, bool, int>();
        PhraseMatcher matcher;
        CharacterBitmap triggers;
        triggers.add(u" "_s);
        matcher.setTriggers(triggers, atOnce);
        matcher.setPhrases(indexOf({phrase}));
        std::optional<CompletedPhrase> completed;
        for (const char32_t sign : typed.toStdU32String()) {
            QVERIFY(!completed);
            completed = matcher.press(keyPress(Key::Character, QString::fromUcs4(&sign, 1), 0));
        }
        QVERIFY(completed);
        QCOMPARE(completed->characters, characters);
        QCOMPARE(completed->trigger, atOnce ? QString() : u" "_s);
    }

    void phraseOfAnApplicationCountsOnlyThere_data()
    {
        const DataTable<QStringList, QString, QStringList> row("phrases", "typed", "sounds");
        row("alone", {u"brb|1|"_s + editor}, u"brb ⇄brb "_s, {u"1"_s});
        row("before the general one", {u"brb|1"_s, u"brb|2|"_s + editor, u"brb|3"_s}, u"brb ⇄brb "_s, {u"1"_s, u"2"_s});
        row("shorter one where it does not count", {u"brb|1|"_s + editor, u"rb|2"_s}, u"brb ⇄brb "_s, {u"2"_s, u"1"_s});
    }

    void phraseOfAnApplicationCountsOnlyThere()
    {
        const auto [phrases, typed, sounds] = currentRow<QStringList, QString, QStringList>();
        PhraseMatcher matcher;
        CharacterBitmap triggers;
        triggers.add(u" "_s);
        matcher.setTriggers(triggers, false);
        matcher.setPhrases(indexOf(phrases));
        QCOMPARE(soundsOf(matcher, typed), sounds);
    }

    void everyPhraseOfALargeDocumentIsFound()
    {
        QStringList texts;
        for (int number = 0; number < 2'000; ++number) {
            texts << QString::number(number * 7919 % 46'656, 36);
        }
        const PhraseIndex index(phraseList(texts));
        for (const QString& text : std::as_const(texts)) {
            // The plain way to the same answer.
            const QString typed = u"-x"_s + text;
            const auto longest = std::ranges::max_element(
                texts, {}, [&typed](const QString& phrase) { return typed.endsWith(phrase) ? phrase.size() : 0; });
            const auto match = index.longestAtEndOf(typed, {});
            QVERIFY(match.entry);
            QCOMPARE(match.entry->value(PhraseKey::phrase).string(), *longest);
        }
    }

    void documentThatChangesUnderTheIndexMatchesNothingWrong()
    {
        const auto phrases = phraseList({u"one"_s, u"two"_s});
        phrases->append(u"no entry"_s);
        phrases->append(PropertyList::Dictionary::create());
        const PhraseIndex index(phrases);
        QCOMPARE(index.longest(), 3);
        phrases->at(1).dictionary()->insert(PhraseKey::phrase, u"six"_s);
        QVERIFY(!index.longestAtEndOf(u"two", {}).entry);
        phrases->clear();
        QVERIFY(!index.longestAtEndOf(u"one", {}).entry);
    }

    void whatIsDroppedIsOverwritten()
    {
        TypingBuffer buffer(4);
        buffer.append(u"secret");
        QCOMPARE(buffer.text(), u"cret");
        const QStringView memory = buffer.text();
        const auto left = [&memory] {
            return std::ranges::count_if(memory, [](QChar unit) { return !unit.isNull(); });
        };
        buffer.removeLast();
        QCOMPARE(left(), 3);
        buffer.clear();
        QCOMPARE(left(), 0);
    }
};

QTEST_APPLESS_MAIN(PhraseMatcherTest)
#include "PhraseMatcherTest.moc"
