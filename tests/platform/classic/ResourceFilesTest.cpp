// SPDX-License-Identifier: MIT
#include <platform/classic/FileTypes.h>
#include <platform/classic/ResourceFile.h>

#include <QDir>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTest>

#include <ClassicFixtures.h>
#include <DataTable.h>
#include <Files.h>
#include <sys/stat.h>
#include <sys/xattr.h>

using namespace ClassicFixtures;
using namespace Qt::StringLiterals;
using Files::contents;
using Files::openDescriptors;

namespace {

constexpr auto soundType = fourCharCode("snd ");

} // namespace

class ResourceFilesTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    void forkAndTypeAreFoundWhereverTheyAre_data()
    {
        const DataTable<QString, QByteArray, bool> row("container", "bytes", "hasType");

        const QByteArray companion = appleDouble(finderInfo("SFIL"), m_fork);
        row("companion", u"folder/._beeps"_s, companion, true);
        row("server's companion", u"folder/.AppleDouble/beeps"_s, companion, true);
        row("archive's companion", u"__MACOSX/folder/._beeps"_s, companion, true);
        row("archive of the folder", u"folder/__MACOSX/._beeps"_s, companion, true);
        row("AppleSingle", u"folder/beeps"_s, appleDouble(finderInfo("SFIL"), m_fork, true), true);
        row("MacBinary II", u"folder/beeps"_s, macBinary(2, "SFIL", "data", m_fork), true);
        row("MacBinary I", u"folder/beeps"_s, macBinary(1, "SFIL", {}, m_fork), true);
        row("plain fork", u"folder/beeps"_s, m_fork, false);
        row("plain fork, trailing garbage", u"folder/beeps"_s, m_fork + "garbage", false);
        row("fork beside", u"folder/beeps.rsrc"_s, m_fork, false);
        row("visible companion", u"folder/beeps.rsrc"_s, companion, false);
    }

    void forkAndTypeAreFoundWhereverTheyAre()
    {
        const auto [container, bytes, hasType] = currentRow<QString, QByteArray, bool>();

        write(u"folder/beeps"_s, "just data");
        write(container, bytes);
        QVERIFY(QFile::link(at(u"folder/beeps"_s), at(u"link"_s)));
        for (const QString& path : {at(u"folder/beeps"_s), at(u"link"_s)}) {
            const qint16 reference = ResourceFile::open(path);
            QVERIFY(reference > 0);
            QCOMPARE(ResourceFile::countInCurrentFile(soundType), 2);
            QCOMPARE(ResourceFile::inCurrentFileAtIndex(soundType, 2), QByteArray("second"));
            ResourceFile::close(reference);
            QCOMPARE(FileTypes::hfsTypeCode(path).has_value(), hasType);
            QCOMPARE(FileTypes::hfsTypeCode(path).value_or(fourCharCode("SFIL")), fourCharCode("SFIL"));
        }
        QCOMPARE(FileTypes::fileTypeForHFSTypeCode(fourCharCode("SFIL")), u"'SFIL'"_s);
    }

    void extendedAttributesAreRead()
    {
        write(u"beeps"_s, "data");
        const QByteArray path = QFile::encodeName(at(u"beeps"_s));
        const QByteArray info = finderInfo("sfil");
        if (setxattr(path.constData(), "user.com.apple.FinderInfo", info.constData(), size_t(info.size()), 0) != 0) {
            QSKIP("the temporary folder's file system has no extended attributes");
        }
        QCOMPARE(FileTypes::hfsTypeCode(at(u"beeps"_s)), fourCharCode("sfil"));
        QCOMPARE(
            setxattr(path.constData(), "user.com.apple.ResourceFork", m_fork.constData(), size_t(m_fork.size()), 0), 0);
        const qint16 reference = ResourceFile::open(at(u"beeps"_s));
        QCOMPARE(ResourceFile::countInCurrentFile(soundType), 2);
        ResourceFile::close(reference);
    }

    void companionThatIsALinkIsNotFollowed()
    {
        write(u"elsewhere/secret"_s, appleDouble(finderInfo("SFIL"), m_fork));
        write(u"folder/beeps"_s, "data");
        QVERIFY(QFile::link(at(u"elsewhere/secret"_s), at(u"folder/._beeps"_s)));
        QVERIFY(!FileTypes::hfsTypeCode(at(u"folder/beeps"_s)));
        QCOMPARE(ResourceFile::open(at(u"folder/beeps"_s)), qint16(-1));
    }

    void emptyCompanionForkGivesWayToAFullOne()
    {
        write(u"beeps"_s, m_fork);
        write(u"._beeps"_s, appleDouble(finderInfo("SFIL"), resourceFork({})));
        const qint16 reference = ResourceFile::open(at(u"beeps"_s));
        QCOMPARE(ResourceFile::countInCurrentFile(soundType), 2);
        ResourceFile::close(reference);
    }

    void whatIsNoResourceFileDoesNotOpen_data()
    {
        const DataTable<QByteArray, qint16> row("bytes", "error");

        row("no file", {}, ResourceFile::fileNotFoundError);
        row("text", "hello", ResourceFile::endOfFileError);
        row("map behind the end", QByteArray(m_fork).replace(4, 4, "\x7F\xFF\xFF\xFF"), ResourceFile::endOfFileError);
        row("type list outside the map", QByteArray(m_fork).replace(m_fork.indexOf("\0\x1C"_ba), 2, "\xFF\xFF"),
            ResourceFile::badMapError);
        row("AppleSingle, cut off", appleDouble(finderInfo("SFIL"), m_fork, true).chopped(1),
            ResourceFile::badMapError);
    }

    void whatIsNoResourceFileDoesNotOpen()
    {
        const auto [bytes, error] = currentRow<QByteArray, qint16>();

        if (!bytes.isEmpty()) {
            write(u"file"_s, bytes);
        }
        const qsizetype before = openDescriptors();
        QCOMPARE(ResourceFile::open(at(u"file"_s)), qint16(-1));
        QCOMPARE(ResourceFile::lastError(), error);
        QCOMPARE(ResourceFile::current(), qint16(0));
        QCOMPARE(openDescriptors(), before);
    }

    void hugeFileIsLookedAtAndLeftAlone()
    {
        QFile file(at(u"huge"_s));
        QVERIFY(file.open(QIODevice::ReadWrite) && file.resize(qint64(3) << 30));
        const QList<QByteArray> beginnings = {"RIFF", m_fork.first(16),
            QByteArray::fromHex("00000100 7FFFFF00 7FFFFE00 000000FF"),
            macBinary(3, "SFIL", {}, {}).replace(87, 4, "\x7F\xFF\xFF\x00"_ba)};
        for (const QByteArray& beginning : beginnings) {
            QVERIFY(file.seek(0) && file.write(beginning.leftJustified(512, '\0')) == 512 && file.flush());
            QElapsedTimer timer;
            timer.start();
            QCOMPARE(ResourceFile::open(file.fileName()), qint16(-1));
            QVERIFY(!FileTypes::isAliasFile(file.fileName()));
            QCOMPARE_LT(timer.elapsed(), 1500);
        }
        QCOMPARE(mkfifo(QFile::encodeName(at(u"pipe"_s)).constData(), 0600), 0);
        QCOMPARE(ResourceFile::open(at(u"pipe"_s)), qint16(-1));
        QVERIFY(!FileTypes::isAliasFile(at(u"pipe"_s)));
    }

    void chainSearchesFromTheCurrentFileToOlderOnes()
    {
        write(u"old"_s, resourceFork({{"STMP", 1, "a", "old a"}, {"STMP", 2, "b", "old b"}}));
        write(u"new"_s, resourceFork({{"STMP", 1, "a", "new a"}}));
        constexpr auto type = fourCharCode("STMP");
        const qsizetype before = openDescriptors();
        const qint16 older = ResourceFile::open(at(u"old"_s));
        const qint16 newer = ResourceFile::open(at(u"new"_s));
        QVERIFY(older > 0 && newer > 0 && older != newer);
        QCOMPARE(ResourceFile::current(), newer);
        QCOMPARE(ResourceFile::inChainWithName(type, "a"), QByteArray("new a"));
        QCOMPARE(ResourceFile::inChainWithName(type, "b"), QByteArray("old b"));
        QVERIFY(!ResourceFile::inCurrentFileWithName(type, "b"));
        QCOMPARE(ResourceFile::lastError(), ResourceFile::resourceNotFoundError);
        ResourceFile::setCurrent(older);
        QCOMPARE(ResourceFile::inChainWithName(type, "a"), QByteArray("old a"));
        ResourceFile::setCurrent(99);
        QCOMPARE(ResourceFile::lastError(), ResourceFile::resourceFileNotFoundError);
        ResourceFile::close(older);
        QCOMPARE(ResourceFile::current(), newer);
        ResourceFile::close(newer);
        QCOMPARE(ResourceFile::current(), qint16(0));
        QVERIFY(!ResourceFile::inChainWithName(type, "a"));
        QCOMPARE(openDescriptors(), before);
    }

    void openingForWritingChangesNoByte()
    {
        write(u"abbs"_s, m_fork);
        write(u"other"_s, "data");
        write(u"._other"_s, appleDouble(finderInfo("SFIL"), m_fork));
        for (const QString& name : {u"abbs"_s, u"other"_s, u"._other"_s}) {
            const QByteArray before = contents(at(name));
            const QDateTime changed = QFileInfo(at(name)).lastModified();
            const qint16 reference = ResourceFile::open(at(name), ResourceFile::Access::ReadWrite);
            QVERIFY(reference > 0 || name.startsWith(u'.'));
            ResourceFile::close(reference);
            QCOMPARE(contents(at(name)), before);
            QCOMPARE(QFileInfo(at(name)).lastModified(), changed);
        }
    }

    void aliasesAndLinksLeadToTheTarget_data()
    {
        const DataTable<bool> row("isBookmark");

        row("alias record", false);
        row("bookmark", true);
    }

    void aliasesAndLinksLeadToTheTarget()
    {
        QFETCH(bool, isBookmark);

        write(u"target"_s, "x");
        const QByteArray target = at(u"target"_s).toUtf8().sliced(1);
        write(u"alias"_s, isBookmark ? bookmarkFile(target.split('/')) : QByteArray());
        const QByteArray fork = resourceFork({{"alis", 0, {}, aliasRecord(target)}});
        if (!isBookmark) {
            write(u"._alias"_s, appleDouble(finderInfo("SFIL", 0x8000), fork));
        }
        QVERIFY(QFile::link(at(u"alias"_s), at(u"link"_s)));
        QVERIFY(FileTypes::isAliasFile(at(u"alias"_s)));
        QVERIFY(!FileTypes::isAliasFile(at(u"link"_s)) && !FileTypes::isAliasFile(at(u"target"_s)));
        QCOMPARE(FileTypes::resolveAliases(at(u"alias"_s)), at(u"target"_s));
        QCOMPARE(FileTypes::resolveAliases(at(u"link"_s)), at(u"target"_s));
        QCOMPARE(FileTypes::resolveAliases(at(u"target"_s)), at(u"target"_s));
        QCOMPARE(FileTypes::resolveAliases(u"/no/such"_s), u"/no/such"_s);
        QVERIFY(QFile::remove(at(u"target"_s)));
        QVERIFY(!FileTypes::resolveAliases(at(u"link"_s)));
    }

    void endlessAliasChainLeadsNowhere()
    {
        const QList<QByteArray> folder = m_folder->path().toUtf8().sliced(1).split('/');
        write(u"a"_s, bookmarkFile(folder + QList<QByteArray>{"b"}));
        write(u"b"_s, bookmarkFile(folder + QList<QByteArray>{"a"}));
        QVERIFY(QFile::link(at(u"l2"_s), at(u"l1"_s)) && QFile::link(at(u"l1"_s), at(u"l2"_s)));
        QVERIFY(!FileTypes::resolveAliases(at(u"a"_s)));
        QVERIFY(!FileTypes::resolveAliases(at(u"l1"_s)));
    }

    void aliasFallsBackToItsOwnFolder()
    {
        write(u"Töne.aif"_s, "x");
        write(u"alias"_s, bookmarkFile({"Volumes", "Gone", u"To\u0308ne.aif"_s.toUtf8()}, "/Volumes/Gone"));
        QCOMPARE(FileTypes::resolveAliases(at(u"alias"_s)), at(u"Töne.aif"_s));
    }

private:
    QString at(const QString& name) const { return m_folder->filePath(name); }

    void write(const QString& name, const QByteArray& bytes) const { Files::write(at(name), bytes); }

    std::unique_ptr<QTemporaryDir> m_folder;
    QByteArray m_fork = resourceFork({{"snd ", 1, "one", "first"}, {"snd ", 2, "two", "second"}});
};

QTEST_GUILESS_MAIN(ResourceFilesTest)

#include "ResourceFilesTest.moc"
