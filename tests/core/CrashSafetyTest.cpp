// SPDX-License-Identifier: MIT
#include <platform/plist/PropertyList.h>

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <DataTable.h>
#include <Files.h>

#include <chrono>
#include <memory>
#include <random>
#include <thread>

using namespace Qt::StringLiterals;

namespace {

constexpr int timeout = 60'000;

/// Several saves long.
constexpr int longestLifeMicroseconds = 20'000;

} // namespace

/// Programs that are killed while they save, that save at the same time, or that have no room to save.
class CrashSafetyTest final : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_folder;

    QString settingsFolder() const { return m_folder->filePath(u"blipsy/preferences"_s); }

    QString pathOf(const QString& store) const
    {
        return store == u"document" ? m_folder->filePath(u"test.blipsy"_s)
                                    : settingsFolder() + u"/com.example.victim.plist"_s;
    }

    /// A victim whose files are all in the folder.
    std::unique_ptr<QProcess> start(const QStringList& arguments, const QStringList& runner = {}) const
    {
        auto victim = std::make_unique<QProcess>();
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"XDG_CONFIG_HOME"_s, m_folder->path());
        victim->setProcessEnvironment(environment);
        victim->setStandardErrorFile(QProcess::nullDevice());
        QStringList command = runner + QStringList{QStringLiteral(SAVE_VICTIM)} + arguments;
        const QString program = command.takeFirst();
        victim->start(program, command);
        return victim;
    }

    static void addStores()
    {
        const DataTable<QString> row("store");
        row("document", u"document"_s);
        row("settings", u"settings"_s);
    }

private Q_SLOTS:

    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    void killedSaveLeavesTheOldVersionOrTheNew_data() { addStores(); }

    /// The next victim says what it finds.
    void killedSaveLeavesTheOldVersionOrTheNew()
    {
        QFETCH(const QString, store);
        std::minstd_rand random(1);
        std::uniform_int_distribution moments(0, longestLifeMicroseconds);
        int saved = 0;
        int leftovers = 0;
        for (int kills = 0; kills < 200; ++kills) {
            const auto victim = start({u"save"_s, store, m_folder->path(), u"1000000"_s});
            QVERIFY(victim->waitForReadyRead(timeout));
            const QByteArray line = victim->readLine().trimmed();
            bool isNumber = false;
            const int found = line.toInt(&isNumber);
            QVERIFY2(isNumber && (kills == 0 || found == saved || found == saved + 1), line.constData());
            std::this_thread::sleep_for(std::chrono::microseconds(moments(random)));
            victim->kill();
            QVERIFY(victim->waitForFinished(timeout));
            QCOMPARE(victim->exitStatus(), QProcess::CrashExit);
            const QByteArrayList lines = victim->readAll().split('\n');
            saved = lines.size() > 1 ? lines.at(lines.size() - 2).toInt() : found;
            const QDir folder = QFileInfo(pathOf(store)).dir();
            leftovers += int(folder.entryList({u".blipsy-*"_s}, QDir::Files | QDir::Hidden).size());
        }
        QVERIFY2(leftovers > 0, "no victim was killed in the middle of a save");
        const auto last = start({u"save"_s, store, m_folder->path(), u"1"_s});
        QVERIFY(last->waitForFinished(timeout));
        QCOMPARE(last->exitCode(), 0);
    }

    void readerSeesAWholeVersionAtEveryInstant_data() { addStores(); }

    void readerSeesAWholeVersionAtEveryInstant()
    {
        QFETCH(const QString, store);
        const auto victim = start({u"save"_s, store, m_folder->path(), u"1000"_s});
        QVERIFY(victim->waitForReadyRead(timeout));
        int looks = 0;
        while (!victim->waitForFinished(0) && victim->state() == QProcess::Running) {
            const QByteArray bytes = Files::contents(pathOf(store));
            QVERIFY2(bytes.endsWith("</plist>\n"), "the end is missing");
            const qsizetype from = bytes.indexOf("<string>");
            const QByteArray first = bytes.sliced(from, bytes.indexOf("</string>", from) + 9 - from);
            QCOMPARE(bytes.count(first), 2'000);
            ++looks;
        }
        QCOMPARE(victim->exitCode(), 0);
        QVERIFY(looks > 100);
    }

    void settingsOfTwoProgramsAreAllStored()
    {
        const auto ours = start({u"keys"_s, u"ours"_s, {}, u"1000"_s});
        const auto theirs = start({u"keys"_s, u"theirs"_s, {}, u"1000"_s});
        QVERIFY(ours->waitForFinished(2 * timeout) && ours->exitCode() == 0);
        QVERIFY(theirs->waitForFinished(timeout) && theirs->exitCode() == 0);
        const auto stored = PropertyList::readFile(pathOf(u"settings"_s), 1 << 20);
        QVERIFY(stored);
        QCOMPARE((*stored)->size(), 2'000);
    }

    void fullOrReadOnlyFileSystemLeavesTheOldVersion_data() { addStores(); }

    void fullOrReadOnlyFileSystemLeavesTheOldVersion()
    {
        QFETCH(const QString, store);
        const QStringList runner{u"unshare"_s, u"--user"_s, u"--map-root-user"_s, u"--mount"_s};
        if (QProcess::execute(runner.first(), runner.sliced(1) + QStringList{u"true"_s}) != 0) {
            QSKIP("no file systems of its own for a process on this machine");
        }
        const auto victim = start({u"full"_s, store, m_folder->path()}, runner);
        QVERIFY(victim->waitForFinished(timeout));
        QCOMPARE(victim->exitCode(), 0);
    }
};

QTEST_GUILESS_MAIN(CrashSafetyTest)
#include "CrashSafetyTest.moc"
