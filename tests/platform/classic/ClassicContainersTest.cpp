#include <platform/bytes/FourCharCode.h>
#include <platform/bytes/MacRoman.h>
#include <platform/classic/AliasRecord.h>
#include <platform/classic/AppleDouble.h>
#include <platform/classic/Bookmark.h>
#include <platform/classic/MacBinary.h>
#include <platform/classic/ResourceFork.h>

#include <QTest>

#include <ClassicFixtures.h>

using namespace ClassicFixtures;
using namespace Qt::StringLiterals;

class ClassicContainersTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyMacRomanByteSurvivesARoundTrip();
    void macRomanRefusesWhatItCannotHold();
    void resourcesAreFoundByIndexIdAndName();
    void aLyingForkIsRefusedOrLosesOnlyTheLie_data();
    void aLyingForkIsRefusedOrLosesOnlyTheLie();
    void appleDoubleEntriesStayInTheFile();
    void macBinaryVersionsAreTold_data();
    void macBinaryVersionsAreTold();
    void aliasRecordLeadsToItsTarget_data();
    void aliasRecordLeadsToItsTarget();
    void bookmarkLeadsToItsTarget();
    void bookmarkWithAStrangeComponentIsRefused_data();
    void bookmarkWithAStrangeComponentIsRefused();
};

void ClassicContainersTest::everyMacRomanByteSurvivesARoundTrip()
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

void ClassicContainersTest::macRomanRefusesWhatItCannotHold()
{
    QCOMPARE(MacRoman::encode(u"e\u0301\u00A4"), QByteArray("\x8E\xDB"));
    QVERIFY(!MacRoman::encode(u"日本"));
    QCOMPARE(MacRoman::encodePascalString(u"btw"), QByteArray("\x03"
                                                              "btw"));
    QVERIFY(MacRoman::encodePascalString(QString(255, u'x')));
    QVERIFY(!MacRoman::encodePascalString(QString(256, u'x')));
}

void ClassicContainersTest::resourcesAreFoundByIndexIdAndName()
{
    const auto parsed = ResourceFork::parse(resourceFork({{"snd ", 200, "Boing", "one"}, {"snd ", -5, {}, "two"},
        {"snd ", 200, "Boing", "again"}, {"STR ", 1, "b\x8Cr", {}}}));
    QVERIFY2(parsed, qPrintable(parsed.error()));
    const ResourceFork& fork = *parsed;
    constexpr auto sound = fourCharCode("snd ");
    QCOMPARE(fork.types(), QList<quint32>({sound, fourCharCode("STR ")}));
    QCOMPARE(fork.count(sound), 3);
    QCOMPARE(fork.data(*fork.atIndex(sound, 2)), QByteArray("two"));
    QCOMPARE(fork.data(*fork.withId(sound, -5)), QByteArray("two"));
    QCOMPARE(fork.data(*fork.withId(sound, 200)), QByteArray("one"));
    QCOMPARE(fork.data(*fork.withName(sound, "Boing")), QByteArray("one"));
    QCOMPARE(fork.data(*fork.withName(fourCharCode("STR "), "b\x8Cr")), QByteArray());
    QVERIFY(!fork.atIndex(sound, 0) && !fork.atIndex(sound, 4));
    QVERIFY(!fork.withName(sound, "") && !fork.withName(sound, "boing"));
}

void ClassicContainersTest::aLyingForkIsRefusedOrLosesOnlyTheLie_data()
{
    QTest::addColumn<qsizetype>("offset");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("isRefused");
    QTest::addColumn<int>("readable");

    // Two resources, 'AAAA' 1 "first" and 2 "second", three bytes each: data at 256 to 270, the map from there.
    const qsizetype map = 270;
    QTest::newRow("untouched") << qsizetype(0) << QByteArray() << false << 2;
    QTest::newRow("data behind the end") << qsizetype(0) << big(quint32(0x7FFFFFFF)) << true << 0;
    QTest::newRow("data wraps around") << qsizetype(8) << big(quint32(0xFFFFFFFF)) << true << 0;
    QTest::newRow("map behind the end") << qsizetype(4) << big(quint32(0xFFFFFFF0)) << true << 0;
    QTest::newRow("map inside the data") << qsizetype(4) << big(quint32(258)) << true << 0;
    QTest::newRow("map too short") << qsizetype(12) << big(quint32(29)) << true << 0;
    QTest::newRow("type list outside") << map + 24 << big(quint16(0xFFFF)) << true << 0;
    QTest::newRow("no types") << map + 28 << big(quint16(0xFFFF)) << false << 0;
    QTest::newRow("more types than fit") << map + 28 << big(quint16(0x7FFF)) << false << 2;
    QTest::newRow("more resources than fit") << map + 34 << big(quint16(0x7FFF)) << false << 2;
    QTest::newRow("references outside") << map + 36 << big(quint16(0xFFF0)) << false << 0;
    QTest::newRow("name outside") << map + 40 << big(quint16(0x7000)) << false << 2;
    QTest::newRow("data offset outside") << map + 42 << big(quint32(0x00FFFFFF)) << false << 1;
    QTest::newRow("data length outside") << qsizetype(256) << big(quint32(0xFFFFFFFF)) << false << 1;
}

void ClassicContainersTest::aLyingForkIsRefusedOrLosesOnlyTheLie()
{
    QFETCH(qsizetype, offset);
    QFETCH(QByteArray, bytes);
    QFETCH(bool, isRefused);
    QFETCH(int, readable);

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

void ClassicContainersTest::appleDoubleEntriesStayInTheFile()
{
    const QByteArray whole = appleDouble(finderInfo("SFIL"), "fork");
    const auto container = AppleDouble::parse(whole, quint64(whole.size()));
    QVERIFY(container);
    QCOMPARE(container->entry(AppleDouble::resourceFork), (ByteRange{82, 4}));
    const auto cutOff = AppleDouble::parse(whole, 84);
    QCOMPARE(cutOff->entry(AppleDouble::resourceFork), (ByteRange{82, 2}));
    QCOMPARE(cutOff->warnings().size(), 1);
    QVERIFY(!AppleDouble::parse(whole, 60)->entry(AppleDouble::resourceFork));

    QByteArray manyEntries = whole.first(26);
    manyEntries.replace(24, 2, "\xFF\xFF");
    QVERIFY(!AppleDouble::parse(manyEntries, 26)->entry(AppleDouble::finderInfo));
    QVERIFY(!AppleDouble::parse(QByteArray(whole).replace(0, 4, "RIFF"), quint64(whole.size())));
}

void ClassicContainersTest::macBinaryVersionsAreTold_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<int>("version");

    QTest::newRow("I") << macBinary(1, "SFIL", "data", "fork") << 1;
    QTest::newRow("II") << macBinary(2, "SFIL", "data", "fork") << 2;
    QTest::newRow("III") << macBinary(3, "SFIL", "data", "fork") << 3;
    QTest::newRow("wrong check sum") << macBinary(2, "SFIL", "data", "fork").replace(66, 1, "X") << 0;
    QTest::newRow("I with forks beyond the end") << macBinary(1, "SFIL", "data", "fork").replace(83, 1, "\x01") << 0;
    QTest::newRow("zeros") << zeros(256) << 0;
    QTest::newRow("short") << macBinary(3, "SFIL", {}, {}).first(127) << 0;
}

void ClassicContainersTest::macBinaryVersionsAreTold()
{
    QFETCH(QByteArray, file);
    QFETCH(int, version);

    const auto binary = MacBinary::parse(file, quint64(file.size()));
    QCOMPARE(binary ? binary->version : 0, version);
    if (binary) {
        QCOMPARE(binary->finderInfo.type, fourCharCode("SFIL"));
        QCOMPARE(binary->resourceFork, (ByteRange{256, 4}));
        QCOMPARE(binary->dataFork, (ByteRange{128, 4}));
    }
}

void ClassicContainersTest::aliasRecordLeadsToItsTarget_data()
{
    QTest::addColumn<QByteArray>("record");
    QTest::addColumn<QString>("path");

    QTest::newRow("boot volume") << aliasRecord("srv/a.wav") << u"/srv/a.wav"_s;
    QTest::newRow("other volume, odd lengths") << aliasRecord("a/b", "/Volumes/X") << u"/Volumes/X/a/b"_s;
    QTest::newRow("leads upwards") << aliasRecord("a/../../etc/passwd") << QString();
    QTest::newRow("unknown version") << aliasRecord("a").replace(6, 2, "\0\x07"_ba) << QString();
    QTest::newRow("cut off in an item") << aliasRecord("srv/a.wav").first(70) << u""_s;
    QTest::newRow("cut off in the header") << aliasRecord("a").first(57) << QString();
}

void ClassicContainersTest::aliasRecordLeadsToItsTarget()
{
    QFETCH(QByteArray, record);
    QFETCH(QString, path);

    const auto target = AliasRecord::parse(record);
    QCOMPARE(target.has_value(), !path.isNull());
    QCOMPARE(target.value_or(AliasTarget()).path, path);
}

void ClassicContainersTest::bookmarkLeadsToItsTarget()
{
    const auto target = Bookmark::parse(bookmarkFile({"Volumes", "X", "Töne", "a.wav"}, "/Volumes/X"));
    QVERIFY(target);
    QCOMPARE(target->path, u"/Volumes/X/Töne/a.wav"_s);
    QCOMPARE(target->pathOnVolume, u"Töne/a.wav"_s);
    QCOMPARE(target->name, u"a.wav"_s);
}

void ClassicContainersTest::bookmarkWithAStrangeComponentIsRefused_data()
{
    QTest::addColumn<QByteArray>("component");

    QTest::newRow("up") << QByteArray("..");
    QTest::newRow("slash") << QByteArray("a/b");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("NUL") << QByteArray("a\0b", 3);
}

void ClassicContainersTest::bookmarkWithAStrangeComponentIsRefused()
{
    QFETCH(QByteArray, component);
    QVERIFY(!Bookmark::parse(bookmarkFile({"srv", component})));
}

QTEST_GUILESS_MAIN(ClassicContainersTest)

#include "ClassicContainersTest.moc"
