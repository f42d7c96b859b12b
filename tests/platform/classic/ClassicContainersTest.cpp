// SPDX-License-Identifier: MIT
#include <platform/bytes/FourCharCode.h>
#include <platform/bytes/MacRoman.h>
#include <platform/classic/AliasRecord.h>
#include <platform/classic/AppleDouble.h>
#include <platform/classic/Bookmark.h>
#include <platform/classic/MacBinary.h>
#include <platform/classic/ResourceFork.h>

#include <QTest>

#include <ClassicFixtures.h>
#include <DataTable.h>

using namespace ClassicFixtures;
using namespace Qt::StringLiterals;

class ClassicContainersTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void everyMacRomanByteSurvivesARoundTrip()
    {
        QByteArray all;
        for (int byte = 0; byte < 256; ++byte) {
            all.append(char(byte));
        }
        const QString text = MacRoman::decode(all);
        QCOMPARE(MacRoman::encode(text), all);
        QCOMPARE(text.mid(0x80, 3), u"ÄÅÇ"_s);
        QCOMPARE(text.mid(0xFD, 3), u"\u02DD\u02DB\u02C7"_s);
        QCOMPARE(text.at(0xC6), QChar(0x2206));
    }

    void macRomanRefusesWhatItCannotHold()
    {
        QCOMPARE(MacRoman::encode(u"e\u0301\u00A4"), QByteArray("\x8E\xDB"));
        QVERIFY(!MacRoman::encode(u"日本"));
        QCOMPARE(MacRoman::encodePascalString(u"btw"), QByteArray("\3btw"));
        QVERIFY(MacRoman::encodePascalString(QString(255, u'x')));
        QVERIFY(!MacRoman::encodePascalString(QString(256, u'x')));
    }

    void resourcesAreFoundByIndexIdAndName()
    {
        const auto parsed = ResourceFork::parse(resourceFork({{"snd ", 200, "Boing", "one"}, {"snd ", -5, {}, "two"},
            {"snd ", 200, "Boing", "again"}, {"STR ", 1, "b\x8Cr", {}}}));
        QVERIFY2(parsed, qPrintable(parsed.error()));
        const ResourceFork& fork = *parsed;
        constexpr auto sound = fourCharCode("snd ");
        QCOMPARE(fork.count(sound), 3);
        QCOMPARE(fork.data(*fork.atIndex(sound, 2)), QByteArray("two"));
        QCOMPARE(fork.data(*fork.withId(sound, -5)), QByteArray("two"));
        QCOMPARE(fork.data(*fork.withId(sound, 200)), QByteArray("one"));
        QCOMPARE(fork.data(*fork.withName(sound, "Boing")), QByteArray("one"));
        QCOMPARE(fork.data(*fork.withName(fourCharCode("STR "), "b\x8Cr")), QByteArray());
        QVERIFY(!fork.atIndex(sound, 0) && !fork.atIndex(sound, 4));
        QVERIFY(!fork.withName(sound, "") && !fork.withName(sound, "boing"));
    }

    void aLyingForkIsRefusedOrLosesOnlyTheLie_data()
    {
        const DataTable<qsizetype, QByteArray, bool, int> row("offset", "bytes", "isRefused", "readable");

        // Two resources, 'AAAA' 1 "first" and 2 "second", three bytes each: data at 256 to 270, the map from there.
        const qsizetype map = 270;
        row("untouched", 0, {}, false, 2);
        row("data behind the end", 0, big(quint32(0x7FFFFFFF)), true, 0);
        row("data wraps around", 8, big(quint32(0xFFFFFFFF)), true, 0);
        row("map behind the end", 4, big(quint32(0xFFFFFFF0)), true, 0);
        row("map inside the data", 4, big(quint32(258)), true, 0);
        row("map too short", 12, big(quint32(29)), true, 0);
        row("type list outside", map + 24, big(quint16(0xFFFF)), true, 0);
        row("no types", map + 28, big(quint16(0xFFFF)), false, 0);
        row("more types than fit", map + 28, big(quint16(0x7FFF)), false, 2);
        row("more resources than fit", map + 34, big(quint16(0x7FFF)), false, 2);
        row("references outside", map + 36, big(quint16(0xFFF0)), false, 0);
        row("name outside", map + 40, big(quint16(0x7000)), false, 2);
        row("data offset outside", map + 42, big(quint32(0x00FFFFFF)), false, 1);
        row("data length outside", 256, big(quint32(0xFFFFFFFF)), false, 1);
    }

    void aLyingForkIsRefusedOrLosesOnlyTheLie()
    {
        const auto [offset, bytes, isRefused, readable] = currentRow<qsizetype, QByteArray, bool, int>();

        QByteArray fork = resourceFork({{"AAAA", 1, "first", "abc"}, {"AAAA", 2, "second", "def"}});
        fork.replace(offset, bytes.size(), bytes);
        const auto parsed = ResourceFork::parse(fork);
        QCOMPARE(bool(parsed), !isRefused);
        QCOMPARE(parsed.error().isEmpty(), !isRefused);
        int found = 0;
        for (const qint16 id : {qint16(1), qint16(2)}) {
            const ResourceFork::Resource* resource = isRefused ? nullptr : parsed->withId(fourCharCode("AAAA"), id);
            const auto data = resource ? parsed->data(*resource) : std::nullopt;
            found += data == QByteArray(id == 1 ? "abc" : "def") ? 1 : 0;
        }
        QCOMPARE(found, readable);
    }

    void appleDoubleEntriesStayInTheFile()
    {
        const QByteArray whole = appleDouble(finderInfo("SFIL"), "fork");
        const auto container = AppleDouble::parse(whole, quint64(whole.size()));
        QVERIFY(container);
        QCOMPARE(container->entry(AppleDouble::resourceFork), (ByteRange{82, 4}));
        const auto cutOff = AppleDouble::parse(whole, 84);
        QCOMPARE(cutOff->entry(AppleDouble::resourceFork), (ByteRange{82, 2}));
        QVERIFY(!AppleDouble::parse(whole, 60)->entry(AppleDouble::resourceFork));

        QByteArray manyEntries = whole.first(26);
        manyEntries.replace(24, 2, "\xFF\xFF");
        QVERIFY(!AppleDouble::parse(manyEntries, 26)->entry(AppleDouble::finderInfo));
        QVERIFY(!AppleDouble::parse(QByteArray(whole).replace(0, 4, "RIFF"), quint64(whole.size())));
    }

    void macBinaryVersionsAreTold_data()
    {
        const DataTable<QByteArray, int> row("file", "version");

        row("I", macBinary(1, "SFIL", "data", "fork"), 1);
        row("II", macBinary(2, "SFIL", "data", "fork"), 2);
        row("III", macBinary(3, "SFIL", "data", "fork"), 3);
        row("wrong check sum", macBinary(2, "SFIL", "data", "fork").replace(66, 1, "X"), 0);
        row("I with forks beyond the end", macBinary(1, "SFIL", "data", "fork").replace(83, 1, "\x01"), 0);
        row("zeros", zeros(256), 0);
        row("short", macBinary(3, "SFIL", {}, {}).first(127), 0);
    }

    void macBinaryVersionsAreTold()
    {
        const auto [file, version] = currentRow<QByteArray, int>();

        const auto binary = MacBinary::parse(file, quint64(file.size()));
        QCOMPARE(binary ? binary->version : 0, version);
        if (binary) {
            QCOMPARE(binary->finderInfo.type, fourCharCode("SFIL"));
            QCOMPARE(binary->resourceFork, (ByteRange{256, 4}));
        }
    }

    void aliasRecordLeadsToItsTarget_data()
    {
        const DataTable<QByteArray, QString> row("record", "path");

        row("boot volume", aliasRecord("srv/a.wav"), u"/srv/a.wav"_s);
        row("other volume, odd lengths", aliasRecord("a/b", "/Volumes/X"), u"/Volumes/X/a/b"_s);
        row("leads upwards", aliasRecord("a/../../etc/passwd"), {});
        row("unknown version", aliasRecord("a").replace(6, 2, "\0\x07"_ba), {});
        row("cut off in an item", aliasRecord("srv/a.wav").first(70), u""_s);
        row("cut off in the header", aliasRecord("a").first(57), {});
    }

    void aliasRecordLeadsToItsTarget()
    {
        const auto [record, path] = currentRow<QByteArray, QString>();

        const auto target = AliasRecord::parse(record);
        QCOMPARE(target.has_value(), !path.isNull());
        QCOMPARE(target.value_or(AliasTarget()).path, path);
    }

    void bookmarkLeadsToItsTarget()
    {
        const auto target = Bookmark::parse(bookmarkFile({"Volumes", "X", "Töne", "a.wav"}, "/Volumes/X"));
        QVERIFY(target);
        QCOMPARE(target->path, u"/Volumes/X/Töne/a.wav"_s);
        QCOMPARE(target->pathOnVolume, u"Töne/a.wav"_s);
        QCOMPARE(target->name, u"a.wav"_s);
    }

    void bookmarkWithAStrangeComponentIsRefused()
    {
        for (const QByteArray& component : {".."_ba, "a/b"_ba, ""_ba, "a\0b"_ba}) {
            QVERIFY2(!Bookmark::parse(bookmarkFile({"srv", component})), component.constData());
        }
    }
};

QTEST_GUILESS_MAIN(ClassicContainersTest)

#include "ClassicContainersTest.moc"
