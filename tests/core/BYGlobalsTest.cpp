// SPDX-License-Identifier: MIT
#include <core/BYGlobals.h>
#include <core/DocumentBackups.h>
#include <core/SharedNames.h>

#include <QDir>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <QThreadPool>

#include <DataTable.h>
#include <Files.h>
#include <NotificationRecorder.h>

#include <functional>

using namespace Qt::StringLiterals;
using PropertyList::Array;
using PropertyList::Dictionary;
using PropertyList::DictionaryPointer;
using PropertyList::Value;

namespace {

Value phrase(const QString& text, const QString& sound = u""_s, const QString& order = u""_s)
{
    return Dictionary::create(
        {{PhraseKey::phrase, text}, {PhraseKey::soundFilepath, sound}, {PhraseKey::sortOrder, order}});
}

/// The root of a document with these phrases.
Value document(const std::vector<Value>& phrases)
{
    return Dictionary::create({{DocumentKey::clippings, Array::create(phrases)}});
}

QStringList column(const QString& key)
{
    QStringList result;
    for (const Value& entry : *BYGlobals::clippingsArray()) {
        result << (entry.dictionary() ? entry.dictionary()->value(key).textValue() : QString());
    }
    return result;
}

} // namespace

Q_DECLARE_METATYPE(std::function<void()>)

class BYGlobalsTest final : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_folder;
    QString m_path;

    void put(const QByteArray& bytes) { Files::write(m_path, bytes); }

    static QStringList kept() { return QDir(DocumentBackups::folder()).entryList(QDir::Files, QDir::Name); }

    QByteArray stored() const { return Files::contents(m_path); }

    void load(const Value& root)
    {
        put(PropertyList::write(root));
        BYGlobals::setDefaultFilePath(m_path);
        BYGlobals::fillArray();
    }

private Q_SLOTS:

    void init()
    {
        m_path = m_folder.filePath(u"test.blipsy"_s);
        BYGlobals::storeSetting({}, Settings::sortPref.key);
    }

    void initReadsThePathAndMakesTheMapOnce()
    {
        BYGlobals::storeSetting(m_path, Settings::defaultFilePath.key);
        BYGlobals::storeSetting(Dictionary::create({{u"/app"_s, u"/document"_s}}), Settings::file4App.key);
        BYGlobals::init();
        QCOMPARE(BYGlobals::defaultFilePath(), m_path);
        BYGlobals::file4app()->insert(u"/app"_s, u"changed"_s);
        BYGlobals::storeSetting({}, Settings::defaultFilePath.key);
        BYGlobals::init();
        QCOMPARE(BYGlobals::defaultFilePath(), u"");
        QCOMPARE(BYGlobals::file4app()->value(u"/app").string(), u"changed");
    }

    void sortingFollowsTheSetting_data()
    {
        const DataTable<Value, QStringList> row("setting", "phrases");
        row("unset: phrase", {}, {u"apple"_s, u"Banana"_s, u"BANANA"_s, u"cherry"_s});
        row("number 1: sound", Value(1), {u"cherry"_s, u"Banana"_s, u"apple"_s, u"BANANA"_s});
        row("2: order as text", Value(u"2"_s), {u"Banana"_s, u"cherry"_s, u"apple"_s, u"BANANA"_s});
        row("unknown", Value(u"3"_s), {u"cherry"_s, u"Banana"_s, u"apple"_s, u"BANANA"_s});
    }

    void sortingFollowsTheSetting()
    {
        const auto [setting, phrases] = currentRow<Value, QStringList>();
        BYGlobals::storeSetting(setting, Settings::sortPref.key);
        load(document({phrase(u"cherry"_s, u"/A"_s, u"1"_s), phrase(u"Banana"_s, u"/b"_s, u"0"_s),
            phrase(u"apple"_s, u"/c"_s, u"10"_s), phrase(u"BANANA"_s, u"/C"_s, u"2"_s)}));
        QCOMPARE(column(PhraseKey::phrase), phrases);
    }

    void phraseListComesFromClippingsOrElseSnippets()
    {
        const Value snippets = Array::create({phrase(u"snippet"_s, u"/s"_s)});
        load(Dictionary::create({{DocumentKey::snippets, snippets}}));
        QCOMPARE(BYGlobals::fullTextFor(u"snippet"_s), u"/s");
        QVERIFY(BYGlobals::fullTextFor(u"Snippet"_s).isNull());
        BYGlobals::clippingsArray()->at(0).dictionary()->insert(PhraseKey::phrase, u"edited"_s);
        BYGlobals::writeDocument();
        QCOMPARE(PropertyList::read(stored())->dictionary()->keys(), QStringList{DocumentKey::snippets});
        QVERIFY(stored().contains("edited"));

        load(Dictionary::create(
            {{DocumentKey::snippets, snippets}, {DocumentKey::clippings, Array::create({phrase(u"clip"_s)})}}));
        QCOMPARE(column(PhraseKey::phrase), QStringList{u"clip"_s});
    }

    void unchangedDocumentIsReadOnce_data()
    {
        const DataTable<std::function<void()>, bool> row("change", "isReadAgain");
        row(
            "nothing", [] {}, false);
        row(
            "an entry", [] { BYGlobals::clippingsArray()->at(0).dictionary()->insert(PhraseKey::phrase, u"x"_s); },
            true);
        row(
            "the list", [] { BYGlobals::clippingsArray()->removeAt(1); }, true);
        row(
            "the root", [] { BYGlobals::clippingsDictionary()->remove(DocumentKey::clippings); }, true);
        row(
            "the file", [this] { put(stored() + ' '); }, true);
        row(
            "the order", [] { BYGlobals::storeSetting(u"3"_s, Settings::sortPref.key); }, true);
    }

    void unchangedDocumentIsReadOnce()
    {
        const auto [change, isReadAgain] = currentRow<std::function<void()>, bool>();
        load(document({phrase(u"a"_s), phrase(u"b"_s)}));
        const DictionaryPointer before = BYGlobals::clippingsDictionary();
        change();
        BYGlobals::fillArray();
        QCOMPARE(BYGlobals::clippingsDictionary() != before, isReadAgain);
        QCOMPARE(column(PhraseKey::phrase), (QStringList{u"a"_s, u"b"_s}));
    }

    void emptyPathKeepsTheDocumentButSortsAndFiltersAnew()
    {
        load(Dictionary::create({{DocumentKey::clippings, Array::create({phrase(u"b"_s)})},
            {DocumentKey::sounds,
                Array::create({Dictionary::create({{EventKey::event, u"1"_s}}), Dictionary::create()})}}));
        BYGlobals::clippingsArray()->append(phrase(u"a"_s));
        BYGlobals::soundsPrefsArrayFiltered()->clear();
        BYGlobals::setDefaultFilePath({});
        BYGlobals::fillArray();
        QCOMPARE(column(PhraseKey::phrase), (QStringList{u"a"_s, u"b"_s}));
        QCOMPARE(BYGlobals::soundsPrefsArrayFiltered()->size(), 2);
        QCOMPARE(BYGlobals::soundsPrefsArrayFiltered()->at(0).dictionary(),
            BYGlobals::soundsPrefsArray()->at(0).dictionary());
    }

    void unreadableDocumentIsNoneAndStays_data()
    {
        const DataTable<QByteArray> row("bytes");
        row("empty", {});
        row("garbage", QByteArray("\xff\xfe\0\x01 what", 9));
        row("truncated", PropertyList::write(document({})).chopped(12));
        row("root is a list", PropertyList::write(Array::create()));
    }

    void unreadableDocumentIsNoneAndStays()
    {
        QFETCH(const QByteArray, bytes);
        put(bytes);
        BYGlobals::setDefaultFilePath(m_path);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^cannot read document .*test\\.blipsy: .+"_s));
        BYGlobals::fillArray();
        QVERIFY(!BYGlobals::clippingsDictionary());
        QVERIFY(!BYGlobals::clippingsArray());
        QVERIFY(!BYGlobals::soundsPrefsArrayFiltered());
        BYGlobals::writeDocument();
        QCOMPARE(stored(), bytes);
    }

    void documentOfNoDocumentsSizeIsRefused()
    {
        put({});
        QVERIFY(QFile::resize(m_path, (qint64(1) << 28) + 1));
        BYGlobals::setDefaultFilePath(m_path);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^cannot read document .*: it has more than"_s));
        BYGlobals::fillArray();
        QVERIFY(!BYGlobals::clippingsDictionary());
    }

    void versionOfAnotherProgramIsKept()
    {
        const QDir backups(DocumentBackups::folder());
        load(document({phrase(u"ours"_s)}));
        BYGlobals::writeDocument();
        QThreadPool::globalInstance()->waitForDone();
        QDir(backups).removeRecursively();
        BYGlobals::writeDocument();
        QCOMPARE(kept(), QStringList());
        const QRegularExpression line(u"changed by another program; that version is kept as .*/blipsy/backups/test-"_s);
        for (const char* theirs : {"their first version", "their second"}) {
            put(theirs);
            QTest::ignoreMessage(QtWarningMsg, line);
            BYGlobals::writeDocument();
            BYGlobals::writeDocument();
            QVERIFY(stored().contains("ours"));
            QCOMPARE(Files::contents(backups.filePath(kept().constLast())), theirs);
        }
        QCOMPARE(kept().size(), 2);

        const QString unread = m_folder.filePath(u"unread.blipsy"_s);
        QVERIFY(QFile::copy(m_path, unread));
        BYGlobals::setDefaultFilePath(unread);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"kept as .*/unread-"_s));
        BYGlobals::writeDocument();
        QCOMPARE(kept().size(), 3);
    }

    void firstWriteKeepsWhatTheProgramFound()
    {
        QDir(DocumentBackups::folder()).removeRecursively();
        for (const QString& name : {u"one/same name.blipsy"_s, u"other/same name.blipsy"_s}) {
            m_path = m_folder.filePath(name);
            load(document({phrase(name)}));
            const QByteArray found = stored();
            for (const QString& change : {u"first"_s, u"second"_s}) {
                BYGlobals::clippingsArray()->append(phrase(change));
                BYGlobals::writeDocument();
            }
            QThreadPool::globalInstance()->waitForDone();
            QVERIFY(stored().contains("second"));
            QStringList copies = kept();
            copies.removeIf([this](const QString& copy) {
                return DocumentBackups::documentAmong({u"/another"_s, m_path}, copy) != m_path;
            });
            QCOMPARE(copies.size(), 1);
            QCOMPARE(DocumentBackups::documentName(copies.constFirst()), u"same name");
            QCOMPARE(Files::contents(DocumentBackups::folder() + u'/' + copies.constFirst()), found);
        }
        QCOMPARE(kept().size(), 2);
        for (int copies = 0; copies < 12; ++copies) {
            put(QByteArray::number(copies));
            QVERIFY(DocumentBackups::keep(m_path, 1'000));
        }
        QCOMPARE(kept().size(), 11);
        const auto newest = DocumentBackups::keep(m_path, 1'000);
        QVERIFY(newest && QFile::exists(*newest));
        QVERIFY(qAbs(DocumentBackups::moment(*newest).secsTo(QDateTime::currentDateTime())) < 60);
    }

    void failedBackupHindersNoSave()
    {
        const QByteArray state = qgetenv("XDG_STATE_HOME");
        const auto restore = qScopeGuard([&state] { qputenv("XDG_STATE_HOME", state); });
        m_path = m_folder.filePath(u"not kept.blipsy"_s);
        load(document({}));
        qputenv("XDG_STATE_HOME", m_path.toUtf8());
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"no backup of .*not kept\\.blipsy: cannot make"_s));
        BYGlobals::clippingsArray()->append(phrase(u"saved"_s));
        BYGlobals::writeDocument();
        BYGlobals::writeDocument();
        QThreadPool::globalInstance()->waitForDone();
        QVERIFY(stored().contains("saved"));
    }

    void versionThatCannotBeKeptIsNotOverwritten()
    {
        const QByteArray state = qgetenv("XDG_STATE_HOME");
        const auto restore = qScopeGuard([&state] { qputenv("XDG_STATE_HOME", state); });
        load(document({}));
        put("theirs");
        qputenv("XDG_STATE_HOME", m_path.toUtf8());
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"is not overwritten: cannot make the folder"_s));
        BYGlobals::writeDocument();
        QCOMPARE(stored(), "theirs");
    }

    void wrongTypesShowWhatIsSoundAndTravelThroughASave()
    {
        const Value root = Dictionary::create(
            {{DocumentKey::clippings, Array::create({u"text"_s, phrase(u"sound"_s), 5, Array::create()})},
                {DocumentKey::sounds,
                    Array::create({QByteArray("data"), Dictionary::create({{EventKey::event, QByteArray("x")}})})},
                {DocumentKey::setVolume, Array::create()}});
        load(root);
        QCOMPARE(column(PhraseKey::phrase), (QStringList{u""_s, u""_s, u""_s, u"sound"_s}));
        QCOMPARE(BYGlobals::fullTextFor(u"sound"_s), u"");
        QCOMPARE(BYGlobals::soundsPrefsArrayFiltered()->size(), 1);
        BYGlobals::writeDocument();
        const DictionaryPointer saved = PropertyList::read(stored())->dictionary();
        QCOMPARE(saved->value(DocumentKey::clippings).array()->size(), 4);
        QCOMPARE(saved->value(DocumentKey::sounds), root.dictionary()->value(DocumentKey::sounds));

        load(Dictionary::create({{DocumentKey::clippings, u"text"_s}, {DocumentKey::sounds, 3}}));
        QVERIFY(!BYGlobals::clippingsArray() && !BYGlobals::soundsPrefsArray());
    }

    void absentSettingsReadAsEmptyTextOrNothing()
    {
        QCOMPARE(BYGlobals::retrieveFromUserDefaults(u"absent"_s), Value(u""_s));
        QVERIFY(BYGlobals::retrieveDateFromUserDefaults(u"absent"_s).isNull());
        BYGlobals::storeSetting(7, u"number"_s);
        QCOMPARE(BYGlobals::retrieveFromUserDefaults(u"number"_s), Value(7));
        QCOMPARE(BYGlobals::retrieveArrayFromUserDefaults(u"number"_s), Value(7));
    }

    void savedSettingIsAnnouncedOnceAndReloadsForThoseWhoAsk()
    {
        NotificationRecorder heard;
        BYGlobals::storeSetting(u"quiet"_s, u"key"_s);
        BYGlobals::saveToUserDefaults_forKey(u"loud"_s, u"key"_s);
        BYGlobals::sendNotification(u"end"_s, Dictionary::create({{u"Event"_s, u"28"_s}}));
        QTRY_COMPARE(heard.names(), (QStringList{NotificationName::preferencesChanged, u"end"_s}));
        QCOMPARE(heard.last(u"end"_s).userInfo->value(u"Event").string(), u"28");

        load(document({}));
        put(PropertyList::write(document({phrase(u"new"_s)})));
        BYGlobals::prefsChangedHere(NotificationName::preferencesChanged, u"another object"_s);
        QVERIFY(BYGlobals::clippingsArray()->isEmpty());
        BYGlobals::prefsChangedHere(NotificationName::preferencesChanged, BYGlobals::appID());
        QCOMPARE(BYGlobals::clippingsArray()->size(), 1);
    }
};

QTEST_GUILESS_MAIN(BYGlobalsTest)
#include "BYGlobalsTest.moc"
