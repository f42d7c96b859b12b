// SPDX-License-Identifier: MIT
#include <platform/storage/AtomicFile.h>

#include <QDir>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTest>

#include <DataTable.h>
#include <Files.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <tuple>

using namespace Qt::StringLiterals;
using Files::contents;
using Files::write;

namespace {

/// Another process that writes the file over and over, and ends with 1 when it cannot.
pid_t startWriting(const QString& path, qsizetype size)
{
    const pid_t child = ::fork();
    if (child == 0) {
        const QByteArray bytes(size, 'x');
        while (AtomicFile::write(path, bytes)) {
        }
        ::_exit(1);
    }
    return child;
}

/// Whether the process was alive until now.
bool kill(pid_t process)
{
    int status = 0;
    return ::kill(process, SIGKILL) == 0 && ::waitpid(process, &status, 0) == process && WIFSIGNALED(status);
}

struct stat statusOf(const QString& path)
{
    struct stat status = {};
    ::stat(QFile::encodeName(path).constData(), &status);
    return status;
}

mode_t mode(const QString& path)
{
    return statusOf(path).st_mode & 07777;
}

} // namespace

class AtomicFileTest final : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_folder;
    QString m_path = m_folder.filePath(u"document"_s);

private Q_SLOTS:

    void cleanup()
    {
        QDir(m_folder.path()).removeRecursively();
        QDir().mkpath(m_folder.path());
    }

    void newFileFollowsTheUmask()
    {
        const mode_t old = ::umask(027);
        QVERIFY(AtomicFile::write(m_path, "new"));
        ::umask(old);
        QCOMPARE(contents(m_path), "new");
        QCOMPARE(mode(m_path), mode_t(0640));
    }

    void replacedFileKeepsOwnerPermissionsAndLink()
    {
        write(m_path, "old and longer");
        // Only the system's administrator may; for others it is their own file.
        std::ignore = ::chown(QFile::encodeName(m_path).constData(), 4'321, 1'234);
        const struct stat before = statusOf(m_path);
        ::chmod(QFile::encodeName(m_path).constData(), 0604);
        const QString link = m_folder.filePath(u"link"_s);
        QVERIFY(QFile::link(u"document"_s, link));
        QVERIFY(AtomicFile::write(link, "new"));
        QCOMPARE(contents(m_path), "new");
        QCOMPARE(mode(m_path), mode_t(0604));
        QCOMPARE(statusOf(m_path).st_uid, before.st_uid);
        QCOMPARE(statusOf(m_path).st_gid, before.st_gid);
        QVERIFY(QFileInfo(link).isSymLink());
    }

    void failureLeavesEverythingAsItWas_data()
    {
        const DataTable<QString> row("name");
        row("folder in the file's place", u"folder"_s);
        row("no folder", u"missing/document"_s);
        row("file as folder", u"document/document"_s);
        row("links in a circle", u"circle"_s);
        row("pipe", u"pipe"_s);
    }

    void failureLeavesEverythingAsItWas()
    {
        QFETCH(const QString, name);
        write(m_path, "old");
        QDir(m_folder.path()).mkdir(u"folder"_s);
        QFile::link(u"circle"_s, m_folder.filePath(u"circle"_s));
        ::mkfifo(QFile::encodeName(m_folder.filePath(u"pipe"_s)).constData(), 0600);
        const auto everything = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;
        const QStringList before = QDir(m_folder.path()).entryList(everything);
        const auto written = AtomicFile::write(m_folder.filePath(name), "new");
        QVERIFY(!written);
        QVERIFY2(written.error().contains(m_folder.filePath(name)), qPrintable(written.error()));
        QCOMPARE(QDir(m_folder.path()).entryList(everything), before);
        QCOMPARE(contents(m_path), "old");
    }

    void fullDiskLeavesTheOldFile()
    {
        write(m_path, "old");
        rlimit limit = {};
        ::getrlimit(RLIMIT_FSIZE, &limit);
        const rlimit tight{.rlim_cur = 4096, .rlim_max = limit.rlim_max};
        std::signal(SIGXFSZ, SIG_IGN);
        ::setrlimit(RLIMIT_FSIZE, &tight);
        const auto written = AtomicFile::write(m_path, QByteArray(10'000, 'x'));
        ::setrlimit(RLIMIT_FSIZE, &limit);
        QVERIFY(!written);
        QCOMPARE(contents(m_path), "old");
        QCOMPARE(QDir(m_folder.path()).entryList(QDir::Files | QDir::Hidden), QStringList{u"document"_s});
    }

    void leftoversOfKilledProcessesAreRemoved()
    {
        const QString similar = m_folder.filePath(u".blipsy-notes.tmp"_s);
        write(similar, "the user's own");
        const QStringList filter{u".blipsy-*"_s};
        const auto leftovers = [&] { return QDir(m_folder.path()).entryList(filter, QDir::Files | QDir::Hidden); };
        // When the writer is in the middle of its work depends on the machine's speed.
        int wait = 5;
        QTRY_VERIFY(leftovers().size() > 2 || [&] {
            const pid_t writer = startWriting(m_path, 20'000'000);
            QTest::qSleep(wait += 5);
            return !kill(writer);
        }());
        AtomicFile::removeLeftovers(m_path);
        QCOMPARE(leftovers(), QStringList{u".blipsy-notes.tmp"_s});
    }

    void filesOfALivingProcessAreLeftAlone()
    {
        const pid_t writer = startWriting(m_path, 1'000);
        QElapsedTimer timer;
        for (timer.start(); timer.elapsed() < 300;) {
            AtomicFile::removeLeftovers(m_path);
        }
        QVERIFY(kill(writer));
        QCOMPARE(contents(m_path).size(), 1'000);
    }
};

QTEST_GUILESS_MAIN(AtomicFileTest)
#include "AtomicFileTest.moc"
