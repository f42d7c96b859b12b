// SPDX-License-Identifier: MIT
#include <platform/archive/KeyedArchive.h>
#include <platform/bytes/CharacterBitmap.h>
#include <platform/plist/PropertyList.h>

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

using PropertyList::Dictionary;
using PropertyList::DictionaryPointer;
using PropertyList::Value;

/// An archive of a set whose ranges are the raw bytes @p ranges.
QByteArray archiveWithRanges(const QByteArray& ranges)
{
    const PropertyList::ReadResult archive = PropertyList::read(KeyedArchive::archivedIndexSet({1, 3}));
    const auto objects = archive.root.dictionary()->value(u"$objects").array();
    objects->at(3).dictionary()->insert(u"NS.data"_s, ranges);
    return PropertyList::write(archive.root);
}

/// The archive of row 1 with @p key of its set replaced.
QByteArray archiveWith(const QString& key, const Value& value)
{
    const PropertyList::ReadResult archive = PropertyList::read(KeyedArchive::archivedIndexSet({1}));
    archive.root.dictionary()->value(u"$objects").array()->at(1).dictionary()->insert(key, value);
    return PropertyList::write(archive.root);
}

} // namespace

class KeyedArchiveTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void indexSetSurvives_data()
    {
        QTest::addColumn<QList<int>>("rows");
        QTest::addColumn<QList<int>>("members");
        QTest::newRow("no rows") << QList<int>{} << QList<int>{};
        QTest::newRow("one row") << QList<int>{0} << QList<int>{0};
        QTest::newRow("one range, unordered") << QList<int>{4, 3, 4, 5} << QList<int>{3, 4, 5};
        QTest::newRow("several ranges") << QList<int>{-1, 8192, 3, 99'999, 4} << QList<int>{3, 4, 8192, 99'999};
    }

    void indexSetSurvives()
    {
        QFETCH(QList<int>, rows);
        const QByteArray archive = KeyedArchive::archivedIndexSet(rows);
        QVERIFY(archive.startsWith("bplist00"));
        QTEST(KeyedArchive::unarchivedIndexSet(archive).value_or(QList<int>{-1}), "members");
    }

    void readsForeignIndexSets_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QList<int>>("members");
        QTest::newRow("genuine ranges") << archiveWithRanges("\x8D\x01\x02\x80\x40\x01") << QList<int>{141, 142, 8192};
        QTest::newRow("raw range data") << archiveWith(u"NSRangeData"_s, QByteArray("\x05\x01")) << QList<int>{5};
        QTest::newRow("made with Python's plistlib")
            << QByteArray::fromBase64(
                   "YnBsaXN0MDDUAQIDBAUGFxpZJGFyY2hpdmVyWCRvYmplY3RzVCR0b3BYJHZlcnNpb25fEA9OU0tleWVkQXJj"
                   "aGl2ZXKjBwgRVSRudWxs1AkKCwwNDg8QViRjbGFzc1hOU0xlbmd0aFpOU0xvY2F0aW9uXE5TUmFuZ2VDb3Vu"
                   "dIACEAIQAxAB0hITFBVYJGNsYXNzZXNaJGNsYXNzbmFtZaIVFlpOU0luZGV4U2V0WE5TT2JqZWN00RgZVHJv"
                   "b3SAARIAAYagCBEbJCkyREhOV15ncn+Bg4WHjJWgo663ur/BAAAAAAAAAQEAAAAAAAAAGwAAAAAAAAAAAAAA"
                   "AAAAAMY=")
            << QList<int>{3, 4};
    }

    void readsForeignIndexSets()
    {
        QFETCH(QByteArray, bytes);
        QTEST(KeyedArchive::unarchivedIndexSet(bytes).value_or(QList<int>{-1}), "members");
    }

    void refusesDamagedIndexSets_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("no archive") << QByteArray("<plist><dict/></plist>");
        QTest::newRow("unfinished number") << archiveWithRanges("\x01\x80");
        QTest::newRow("endless number") << archiveWithRanges(QByteArray(20, '\xFF'));
        QTest::newRow("location without a length") << archiveWithRanges("\x01");
        QTest::newRow("empty range") << archiveWithRanges(QByteArray("\x01\0", 2));
        QTest::newRow("descending ranges") << archiveWithRanges("\x05\x01\x03\x01");
        QTest::newRow("more than a million") << archiveWith(u"NSLength"_s, 1'000'001);
        QTest::newRow("beyond the range of rows") << archiveWith(u"NSLocation"_s, qint64(1) << 31);
        QTest::newRow("another class") << archiveWith(u"$class"_s, PropertyList::Uid{0});
        QTest::newRow("reference to nothing") << archiveWith(u"$class"_s, PropertyList::Uid{99});
    }

    void refusesDamagedIndexSets()
    {
        QFETCH(QByteArray, bytes);
        QVERIFY(!KeyedArchive::unarchivedIndexSet(bytes));
    }

    void bitmapHoldsExactlyItsCharacters()
    {
        CharacterBitmap set;
        QVERIFY(set.isEmpty());
        set.add(u"A\u20AC\uFFFF\U0001F600");
        QCOMPARE(set.bytes().at(8), char(0x02));
        QVERIFY(set.contains(u'\u20AC') && set.contains(QChar(0xFFFF)) && !set.contains(u'B'));
        set.remove(u"AB\uFFFF");
        CharacterBitmap euro;
        euro.add(u"\u20AC");
        QVERIFY(set == euro);
        euro.remove(u"\u20AC");
        QVERIFY(euro.isEmpty());
    }

    void bitmapKeepsItsSize_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<bool>("hasLetter");
        QTest::newRow("nothing") << QByteArray() << false;
        QTest::newRow("cut off") << QByteArray(9, '\x02') << true;
        QTest::newRow("further planes") << QByteArray(8192 + 8193, '\xFF') << true;
    }

    void bitmapKeepsItsSize()
    {
        QFETCH(QByteArray, bytes);
        const CharacterBitmap set(bytes);
        QCOMPARE(set.bytes().size(), CharacterBitmap::byteCount);
        QTEST(set.contains(u'A'), "hasLetter");
        QVERIFY(!set.contains(QChar(0xD800)));
    }
};

QTEST_APPLESS_MAIN(KeyedArchiveTest)
#include "KeyedArchiveTest.moc"
