// SPDX-License-Identifier: MIT
#include <phrases/abbs/Abbs.h>
#include <platform/bytes/FourCharCode.h>
#include <platform/desktop/FrontmostWindow.h>
#include <platform/storage/Preferences.h>

#include <QDialog>
#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QTemporaryFile>
#include <QTest>
#include <QWidget>

#include <ClassicFixtures.h>
#include <DataTable.h>
#include <Files.h>
#include <unistd.h>

#include <cstdio>

using namespace ClassicFixtures;
using namespace Qt::StringLiterals;
using Files::openDescriptors;

namespace {

/// What a function writes to a stream of the process.
template <typename Function>
QByteArray writtenTo(FILE* stream, Function function)
{
    QTemporaryFile file;
    if (!file.open()) {
        return "no temporary file";
    }
    std::fflush(stream);
    const int saved = dup(fileno(stream));
    dup2(file.handle(), fileno(stream));
    function();
    std::fflush(stream);
    dup2(saved, fileno(stream));
    close(saved);
    file.seek(0);
    return file.readAll();
}

QByteArray storedRecord(const QString& path)
{
    ClassicFiles::FileRecord file;
    posixStringToFSSpec(file, path, false);
    const QByteArray record =
        big(file.folder.volume) + big(file.folder.identifier) + char(file.name.size()) + file.name;
    return record.leftJustified(ClassicFiles::FileRecord::storedSize, '\0');
}

} // namespace

class AbbsTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        QFile::remove(m_preferences);
        Files::write(at(u"default.abbs"_s), resourceFork({{"STMP", 128, "btw", "by the way\0"_ba}}));
        Files::write(at(u"own.abbs"_s), resourceFork({{"STMP", 128, "btw", "own text\0"_ba}}));
    }

    void specificationLeadsBackToItsPath_data()
    {
        const DataTable<QString> row("name");

        row("plain", u"a file"_s);
        row("accents", u"Töne é"_s);
        row("colon", u"12:30"_s);
        row("longer than 63 bytes", QString(200, u'x') + u".abbs"_s);
        row("not Mac OS Roman", u"日本語.abbs"_s);
        row("in a folder that is not Mac OS Roman", u"日本/абв"_s);
    }

    void specificationLeadsBackToItsPath()
    {
        QFETCH(QString, name);

        const QString path = QDir(m_folder->path()).canonicalPath() + u'/' + name;
        Files::write(path, "x");
        const QByteArray stored = storedRecord(path);
        QCOMPARE(stored.size(), 70);
        const auto record = ClassicFiles::FileRecord::fromStored(stored);
        QVERIFY(record);
        QCOMPARE(ClassicFiles::pathOf(*record), path);
        QVERIFY(QDir(QFileInfo(path).path()).removeRecursively());
        QVERIFY(!ClassicFiles::pathOf(*record));
    }

    void specificationThatCannotBeMadeIsEmpty_data()
    {
        const DataTable<QString, bool, QByteArray> row("path", "isDirectory", "message");

        row("no path", u""_s, false, "Can't get URL");
        row("missing", u"/no/such/file"_s, false, "Can't get FSRef.\n");
        row("file as folder", u"/proc/self/exe"_s, true, "Can't get FSRef.\n");
        row("folder", u"/usr"_s, true, {});
    }

    void specificationThatCannotBeMadeIsEmpty()
    {
        const auto [path, isDirectory, message] = currentRow<QString, bool, QByteArray>();

        ClassicFiles::FileRecord record{{1, 2}, "old"};
        const auto make = [&record, path = path, isDirectory = isDirectory] {
            posixStringToFSSpec(record, path, isDirectory);
        };
        QCOMPARE(writtenTo(stdout, make), message);
        QCOMPARE(record == ClassicFiles::FileRecord(), !message.isEmpty());
    }

    void expansionIsTheTextWithoutZeroBytes_data()
    {
        const DataTable<QByteArray, QString> row("data", "expansion");

        row("five letters", "hello\0"_ba, u"hello"_s);
        row("zero bytes inside", "h\0e\0\0llo\0"_ba, u"hello"_s);
        row("last byte is no zero", "hello"_ba, u"hell"_s);
        row("8-bit text", "\x9F\0"_ba, u"ü"_s);
        row("empty", {}, u""_s);
    }

    void expansionIsTheTextWithoutZeroBytes()
    {
        const auto [data, expansion] = currentRow<QByteArray, QString>();

        Files::write(at(u"abbs"_s), resourceFork({{"STMP", 1, "other", "x\0"_ba}, {"STMP", 2, "abb", data}}));
        ClassicFiles::FileRecord file;
        posixStringToFSSpec(file, at(u"abbs"_s), false);
        QCOMPARE(abbExists(u"abb"_s, &file), expansion);
        QCOMPARE(abbExists(u"ABB"_s, &file), std::nullopt);
        QCOMPARE(ResourceFile::current(), qint16(0));
    }

    void abbreviationThatIsNotMacRomanIsReported()
    {
        ClassicFiles::FileRecord file;
        posixStringToFSSpec(file, at(u"own.abbs"_s), false);
        const QByteArray message = writtenTo(stderr, [&] { QVERIFY(!abbExists(u"日本"_s, &file)); });
        QCOMPARE(message, QByteArray("Blipsy: CFStringGetPascalString failed. abbNameP length = 0.\n"));
    }

    void missingPreferencesAreReported()
    {
        const QByteArray message = writtenTo(stderr, [] {
            QCOMPARE(openAbbsFile(), qint16(-1));
            QCOMPARE(abbExists(u"btw"_s), std::nullopt);
        });
        QVERIFY(message.endsWith("Blipsy: Prefs file needs to be created.\n"));
        QCOMPARE(message.count("Blipsy: Prefs file needs to be created.\n"), 2);
    }

    void windowTitleChoosesTheAbbsFile()
    {
        QByteArray record = storedRecord(at(u"own.abbs"_s));
        writePreferences({{"FSAp", 128, "My Editor", record}});
        QWidget window;
        window.setWindowTitle(u"My Editor"_s);
        window.setProperty(FrontmostWindow::referenceConstantProperty, fourCharCode("XPND"));
        window.show();
        QCOMPARE(abbExists(u"btw"_s), u"own text"_s);

        record.replace(0, 2, "\x80\x05");
        writePreferences({{"FSAp", 128, "My Editor", record}});
        QCOMPARE(abbExists(u"btw"_s), u"own text"_s);

        const qint16 reference = openAbbsFile();
        QVERIFY(reference > 0);
        QCOMPARE(ResourceFile::current(), reference);
        ResourceFile::close(reference);

        window.setWindowTitle(u"日本"_s);
        const QByteArray message = writtenTo(stderr, [] { openAbbsFile(); });
        QVERIFY(message.startsWith("Blipsy: theFrontMostWindowRef name in openAbbsFile failed!  =.\n"));
    }

    void everyOtherProgramUsesTheDefaultFile()
    {
        writePreferences({{"FSAp", 128, "My Editor", storedRecord(at(u"own.abbs"_s))},
            {"cnfG", 142, {}, QByteArray::fromHex("FFFB0000")}, {"FSSp", 3, {}, zeros(70)},
            {"FSSp", -5, {}, storedRecord(at(u"default.abbs"_s))}});
        const qsizetype before = openDescriptors();
        QCOMPARE(abbExists(u"btw"_s), u"by the way"_s);
        QCOMPARE(abbExists(u"none"_s), std::nullopt);
        QCOMPARE(openDescriptors(), before);
    }

    void sheetStandsForItsWindow()
    {
        QWidget window;
        window.setProperty(FrontmostWindow::referenceConstantProperty, fourCharCode("XPND"));
        window.show();
        QDialog sheet(&window);
        sheet.setWindowModality(Qt::WindowModal);
        sheet.show();
        sheet.activateWindow();
        QTRY_COMPARE(QApplication::activeWindow(), &sheet);
        QCOMPARE(FrontmostWindow::documentWindow(), &window);
        QCOMPARE(FrontmostWindow::referenceConstant(FrontmostWindow::documentWindow()), fourCharCode("XPND"));
    }

    void brokenFilesAreReportedAndClosed_data()
    {
        const DataTable<QByteArray, QByteArray> row("preferences", "messages");

        const QByteArray record = storedRecord(u"/usr"_s);
        const auto defaultFile = [](const QByteArray& chosen) {
            return resourceFork({{"cnfG", 142, {}, "\0\1"_ba}, {"FSSp", 1, {}, chosen}});
        };
        const QByteArray notChosen = "Blipsy: openAbbsFile FSpOpenResFile ResError = -43.\n"
                                     "Blipsy: cannot find abbs file called: .\n";
        row("preferences are no resource file", "text",
            "Blipsy: thePrefsResFile = FSpOpenResFile error  = -39.\n"
            "Blipsy: thePrefsResFile = FSpOpenResFile failed with ResError = -39.\n" +
                notChosen);
        row("type list lies", resourceFork({{"cnfG", 142, {}, "\0\1"_ba}}).replace(262 + 24, 2, "\xFF\xFF"),
            "Blipsy: thePrefsResFile = FSpOpenResFile error  = -199.\n"
            "Blipsy: thePrefsResFile = FSpOpenResFile failed with ResError = -199.\n" +
                notChosen);
        row("nothing in the preferences", resourceFork({{"STR ", 1, {}, "x"}}), notChosen);
        row("empty configuration", resourceFork({{"cnfG", 142, {}, {}}}), notChosen);
        row("short record", defaultFile(record.chopped(1)), notChosen);
        row("name longer than its field", defaultFile(QByteArray(record).replace(6, 1, "\x40")), notChosen);
        row("folder that never was", defaultFile(zeros(2) + "\x7F\xFF\xFF\xFF\x04gone" + zeros(60)),
            "Blipsy: openAbbsFile FSpOpenResFile ResError = -43.\nBlipsy: cannot find abbs file called: gone.\n"_ba);
        row("a folder instead of a file", defaultFile(record),
            "Blipsy: openAbbsFile FSpOpenResFile ResError = -43.\nBlipsy: cannot find abbs file called: usr.\n"_ba);
    }

    void brokenFilesAreReportedAndClosed()
    {
        const auto [preferences, messages] = currentRow<QByteArray, QByteArray>();

        Files::write(m_preferences, preferences);
        const qsizetype before = openDescriptors();
        const QByteArray written = writtenTo(stderr, [] { QVERIFY(openAbbsFile() < 1); });
        QVERIFY2(written.endsWith(messages), written.constData());
        QCOMPARE(openDescriptors(), before);
        QCOMPARE(ResourceFile::current(), qint16(0));
    }

    void commandFindsAnAbbreviationInAnotherProcess()
    {
        writePreferences({{"cnfG", 142, {}, "\0\1"_ba}, {"FSSp", 1, {}, storedRecord(at(u"default.abbs"_s))}});
        QByteArray message;
        const auto run = [&message](const QStringList& arguments) {
            QProcess process;
            process.start(QStringLiteral(BLIPSY_ABBS), arguments);
            process.waitForFinished();
            message = process.readAllStandardError();
            return std::pair(process.exitCode(), process.readAllStandardOutput());
        };
        QCOMPARE(run({u"btw"_s}), std::pair(0, "by the way\n"_ba));
        QCOMPARE(run({u"none"_s}), std::pair(1, QByteArray()));
        QCOMPARE(run({u"--file"_s, at(u"own.abbs"_s), u"btw"_s}), std::pair(0, "own text\n"_ba));
        QCOMPARE(run({u"--file"_s, at(u"own.abbs"_s), u"--list"_s}), std::pair(0, "STMP\t128\tbtw\n"_ba));
        QCOMPARE(run({u"--file"_s, u"/proc/version"_s, u"btw"_s}), std::pair(1, QByteArray()));
        QCOMPARE(run({u"--file"_s, at(u"missing"_s), u"btw"_s}), std::pair(1, QByteArray()));
        QVERIFY2(message.contains("missing: no such file"), message.constData());
        QCOMPARE(run({}).first, 2);
    }

private:
    QString at(const QString& name) const { return m_folder->filePath(name); }

    void writePreferences(const QList<Resource>& resources) const
    {
        Files::write(m_preferences, resourceFork(resources));
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_preferences = QFileInfo(Preferences::filePath(u"any"_s)).path() + u"/Blipsy Prefs"_s;
};

QTEST_MAIN(AbbsTest)

#include "AbbsTest.moc"
