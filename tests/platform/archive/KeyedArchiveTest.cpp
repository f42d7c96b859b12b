// SPDX-License-Identifier: MIT
#include <platform/archive/KeyedArchive.h>
#include <platform/plist/PropertyList.h>

#include <QTest>

using namespace Qt::StringLiterals;

using PropertyList::Value;

class KeyedArchiveTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void indexSetHoldsItsRows_data()
    {
        QTest::addColumn<QList<int>>("rows");
        QTest::addColumn<int>("rangeCount");
        QTest::addColumn<int>("location");
        QTest::addColumn<int>("length");
        QTest::addColumn<QByteArray>("ranges");
        QTest::newRow("no rows") << QList<int>{} << 0 << 0 << 0 << QByteArray();
        QTest::newRow("one row") << QList<int>{7} << 1 << 7 << 1 << QByteArray();
        QTest::newRow("one range, unordered") << QList<int>{4, 3, 4, 5} << 1 << 3 << 3 << QByteArray();
        QTest::newRow("several ranges") << QList<int>{-1, 8192, 141, 142} << 2 << 0 << 0
                                        << QByteArray("\x8D\x01\x02\x80\x40\x01");
    }

    void indexSetHoldsItsRows()
    {
        QFETCH(QList<int>, rows);
        const auto archive = PropertyList::read(KeyedArchive::archivedIndexSet(rows))->dictionary();
        const auto objects = archive->value(u"$objects").array();
        const auto object = [&objects](const Value& reference) {
            return objects->at(qsizetype(reference.uid()->index)).dictionary();
        };
        const auto set = object(archive->value(u"$top").dictionary()->value(u"root"));
        QTEST(set->value(u"NSRangeCount").intValue(), "rangeCount");
        QTEST(set->value(u"NSLocation").intValue(), "location");
        QTEST(set->value(u"NSLength").intValue(), "length");
        const Value ranges = set->value(u"NSRangeData");
        QTEST(ranges.isNull() ? QByteArray() : object(ranges)->value(u"NS.data").data(), "ranges");
    }

    void archiveIsThatOfAnotherWriter()
    {
        // Made with Python's plistlib.
        const QByteArray rowsThreeAndFour = QByteArray::fromBase64(
            "YnBsaXN0MDDUAQIDBAUGFxpZJGFyY2hpdmVyWCRvYmplY3RzVCR0b3BYJHZlcnNpb25fEA9OU0tleWVkQXJj"
            "aGl2ZXKjBwgRVSRudWxs1AkKCwwNDg8QViRjbGFzc1hOU0xlbmd0aFpOU0xvY2F0aW9uXE5TUmFuZ2VDb3Vu"
            "dIACEAIQAxAB0hITFBVYJGNsYXNzZXNaJGNsYXNzbmFtZaIVFlpOU0luZGV4U2V0WE5TT2JqZWN00RgZVHJv"
            "b3SAARIAAYagCBEbJCkyREhOV15ncn+Bg4WHjJWgo663ur/BAAAAAAAAAQEAAAAAAAAAGwAAAAAAAAAAAAAA"
            "AAAAAMY=");
        QVERIFY(*PropertyList::read(KeyedArchive::archivedIndexSet({4, 3})) == *PropertyList::read(rowsThreeAndFour));
    }
};

QTEST_APPLESS_MAIN(KeyedArchiveTest)
#include "KeyedArchiveTest.moc"
