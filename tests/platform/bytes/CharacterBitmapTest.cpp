// SPDX-License-Identifier: MIT
#include <platform/bytes/CharacterBitmap.h>

#include <QTest>

class CharacterBitmapTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:

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
        QCOMPARE(set.bytes().size(), 8192);
        QTEST(set.contains(u'A'), "hasLetter");
        QVERIFY(!set.contains(QChar(0xD800)));
    }
};

QTEST_APPLESS_MAIN(CharacterBitmapTest)
#include "CharacterBitmapTest.moc"
