// SPDX-License-Identifier: MIT
#include <core/SharedNames.h>
#include <platform/plist/PropertyList.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <DataTable.h>
#include <Files.h>
#include <SoundFixtures.h>

using namespace Qt::StringLiterals;
using PropertyList::Array;
using PropertyList::Dictionary;
using PropertyList::Value;

class DocumentTasksTest final : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_folder;
    const QString m_sound = m_folder.filePath(u"a.wav"_s);
    const QString m_good = m_folder.filePath(u"good.blipsy"_s);
    const QString m_bad = m_folder.filePath(u"bad.blipsy"_s);
    const QString m_broken = m_folder.filePath(u"broken.blipsy"_s);
    const QString m_source = m_folder.filePath(u"words.textexpander"_s);
    const QString m_saved = m_folder.filePath(u"saved"_s);

    /// Runs the program as a script does, where there is no display and no bus.
    static std::unique_ptr<QProcess> run(const QStringList& arguments)
    {
        auto program = std::make_unique<QProcess>();
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const auto* const name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "DBUS_SESSION_BUS_ADDRESS"}) {
            environment.remove(QString::fromLatin1(name));
        }
        program->setProcessEnvironment(environment);
        program->start(QStringLiteral(BLIPSY_HOST), arguments);
        program->waitForFinished();
        return program;
    }

    static void writeDocument(const QString& path, const QList<Value>& phrases, const QList<Value>& events)
    {
        Files::write(path, PropertyList::write(Dictionary::create(
                               {{DocumentKey::clippings, Array::create({phrases.cbegin(), phrases.cend()})},
                                   {DocumentKey::sounds, Array::create({events.cbegin(), events.cend()})}})));
    }

private Q_SLOTS:

    void init()
    {
        Files::write(m_sound, SoundFixtures::wave(440, 0.1));
        Files::write(m_broken, "<plist><dict>");
        const auto brb = Dictionary::create({{PhraseKey::phrase, u"brb"_s}, {PhraseKey::soundFilepath, m_sound},
            {PhraseKey::plainText, u"Be, \"right\"\nback"_s}});
        const auto event = [](const QString& code, const QString& volume) {
            return Dictionary::create(
                {{EventKey::event, code}, {EventKey::eventName, u"Bell"_s}, {EventKey::volume, volume}});
        };
        writeDocument(m_good, {brb}, {event(u"79"_s, u"0.5"_s)});
        writeDocument(m_bad,
            {brb, brb, 7,
                Dictionary::create({{u"Colour"_s, u"red"_s}, {PhraseKey::soundFilepath, u"/gone.wav"_s},
                    {PhraseKey::app, u"/gone.app"_s}, {PhraseKey::rtfd, QByteArray("rtfd")}}),
                Dictionary::create({{PhraseKey::phrase, u"x"_s}, {PhraseKey::soundFilepath, m_broken}})},
            {event(u"80"_s, u"2"_s)});
        Files::write(m_source,
            PropertyList::write(Dictionary::create(
                {{u"Snippets"_s, Array::create({Dictionary::create({{u"Phrase"_s, u"a"_s}, {u"Plain Text"_s, u"b"_s}}),
                                     Dictionary::create({{u"Formatted Text"_s, QByteArray("?")}})})}})));
        QFile::remove(m_saved);
    }

    void checkTellsEntryByEntry()
    {
        const auto good = run({u"--check"_s, m_good});
        QCOMPARE(good->exitCode(), 0);
        QCOMPARE(good->readAllStandardOutput() + good->readAllStandardError(), "");

        const auto bad = run({u"--check"_s, m_bad});
        QCOMPARE(bad->exitCode(), 2);
        const QStringList lines = QString::fromUtf8(bad->readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts);
        const QStringList wanted{u"Clippings 2 (brb): \"Phrase\" is that of entry 1, which alone counts"_s,
            u"Clippings 3: is no dictionary"_s, u"Clippings 4: \"Colour\" is unknown"_s,
            u"Clippings 4: \"Phrase\" is missing or empty"_s,
            u"Clippings 4: \"SoundFilepath\" cannot be played: /gone.wav: there is no such file"_s,
            u"Clippings 4: \"App\" names /gone.app, which is not there"_s, u"Clippings 4: \"RTFD\" looks damaged"_s,
            u"Clippings 5 (x): \"SoundFilepath\" cannot be played: %1: "_s.arg(m_broken),
            u"Sounds 1 (Bell): \"Event\" is \"80\", which is no event's code"_s,
            u"Sounds 1 (Bell): \"Volume\" is \"2\", which is no number from 0 to 1"_s};
        QCOMPARE(lines.size(), wanted.size());
        for (qsizetype line = 0; line < wanted.size(); ++line) {
            QVERIFY2(lines[line].startsWith(wanted[line]), qPrintable(lines[line]));
        }
        const auto json = run({u"--check"_s, m_bad, u"--json"_s});
        const QJsonObject object = QJsonDocument::fromJson(json->readAllStandardOutput()).object();
        QCOMPARE(object[u"phrases"].toInt(), 5);
        QCOMPARE(object[u"findings"].toArray().size(), wanted.size());
        QCOMPARE(object[u"findings"].toArray()[0].toObject()[u"entry"].toInt(), 2);
    }

    void exportsInEveryForm()
    {
        const QByteArray sound = m_sound.toUtf8();
        const auto csv = run({u"--export"_s, m_good});
        QCOMPARE(csv->readAllStandardOutput(),
            "Phrase,Sound,Application,Text\r\nbrb," + sound + ",,\"Be, \"\"right\"\"\nback\"\r\n");
        QCOMPARE(run({u"--export"_s, m_good, u"--text"_s, u"--save"_s, m_saved})->exitCode(), 0);
        QCOMPARE(Files::contents(m_saved), "brb\n\tBe, \"right\"\n\tback\n");
        const auto json = run({u"--export"_s, m_good, u"--json"_s});
        const QJsonObject phrase = QJsonDocument::fromJson(json->readAllStandardOutput())[0].toObject();
        QCOMPARE(phrase[u"text"].toString(), u"Be, \"right\"\nback"_s);
        QCOMPARE(phrase[u"isFormatted"].toBool(), false);
    }

    void importSumsUpWhatCameOver()
    {
        const auto program = run({u"--import"_s, m_source, u"--save"_s, m_saved, u"--json"_s});
        QCOMPARE(program->exitCode(), 0);
        const QJsonObject object = QJsonDocument::fromJson(program->readAllStandardOutput()).object();
        QCOMPARE(object[u"phrases"].toInt(), 2);
        QCOMPARE(object[u"troubles"].toArray().size(), 1);
        const auto saved = PropertyList::read(Files::contents(m_saved));
        QVERIFY(saved);
        QCOMPARE(saved->dictionary()->value(DocumentKey::clippings).array()->size(), 2);
    }

    void failuresAreOneLine_data()
    {
        const DataTable<QStringList> row("arguments");
        row("no file", {u"--check"_s, u"/gone"_s});
        row("no document", {u"--export"_s, m_broken});
        row("no known tool", {u"--import"_s, m_good, u"--save"_s, m_saved});
        row("no such folder", {u"--export"_s, m_good, u"--save"_s, u"/gone/a.csv"_s});
        row("nothing to save to", {u"--import"_s, m_source});
        row("two at once", {u"--check"_s, m_good, u"--export"_s, m_good});
        row("nothing at all", {u"--json"_s});
    }

    void failuresAreOneLine()
    {
        QFETCH(const QStringList, arguments);
        const auto program = run(arguments);
        QCOMPARE(program->exitStatus(), QProcess::NormalExit);
        QCOMPARE(program->exitCode(), 1);
        QCOMPARE(program->readAllStandardOutput(), "");
        const QByteArray errors = program->readAllStandardError();
        QVERIFY2(errors.startsWith("blipsy-settings: ") && errors.count('\n') == 1, errors.constData());
        QVERIFY(!QFile::exists(m_saved));
    }
};

QTEST_GUILESS_MAIN(DocumentTasksTest)
#include "DocumentTasksTest.moc"
