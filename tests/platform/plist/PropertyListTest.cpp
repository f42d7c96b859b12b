// SPDX-License-Identifier: MIT
#include <platform/plist/PropertyList.h>

#include <QTest>

#include <DataTable.h>
#include <plist/plist.h>

#include <limits>

using namespace Qt::StringLiterals;

namespace {

using PropertyList::Array;
using PropertyList::Dictionary;
using PropertyList::DictionaryPointer;
using PropertyList::Type;
using PropertyList::Uid;
using PropertyList::Value;

constexpr const char* xmlHeader =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" \"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
    "<plist version=\"1.0\">\n";

QByteArray document(const QByteArray& body)
{
    return xmlHeader + body + "</plist>\n";
}

QByteArray nestedArrays(int depth)
{
    return "<plist>" + QByteArray("<array>").repeated(depth) + QByteArray("</array>").repeated(depth) + "</plist>";
}

/// A binary file of @p objects (each with its bytes) with one-byte offsets and references; object 0 is the root.
QByteArray binaryFile(const QList<QByteArray>& objects)
{
    QByteArray bytes = "bplist00";
    QByteArray table;
    for (const QByteArray& object : objects) {
        table.append(char(bytes.size()));
        bytes.append(object);
    }
    const QByteArray tableOffset(1, char(bytes.size()));
    const QByteArray seven(7, '\0');
    return bytes + table + QByteArray(6, '\0') + "\x01\x01" + seven + char(objects.size()) + seven + '\0' + seven +
           tableOffset;
}

} // namespace

class PropertyListTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void xmlOfThePlatformSurvivesUnchanged_data()
    {
        const DataTable<QByteArray> row("body");
        row("containers, empty and full",
            "<dict>\n\t<key>A</key>\n\t<dict/>\n\t<key>B</key>\n\t<array/>\n\t<key>a</key>\n\t<array>\n"
            "\t\t<string></string>\n\t\t<true/>\n\t\t<false/>\n\t</array>\n</dict>\n");
        row("text with every escape",
            "<string>&lt;a&gt; &amp; \"b\" 'c'\ttab\nline \xC3\xA9 \xF0\x9F\x98\x80 \xEF\xBB\xBF&#13;</string>\n");
        row("text that begins with a byte order mark", "<string>\xEF\xBB\xBFx</string>\n");
        row("integers", "<array>\n\t<integer>0</integer>\n\t<integer>-9223372036854775808</integer>\n"
                        "\t<integer>18446744073709551615</integer>\n</array>\n");
        row("reals of both spellings",
            "<array>\n\t<real>1</real>\n\t<real>0.20000000000000001</real>\n\t<real>0.2</real>\n\t<real>-1.5</real>\n"
            "\t<real>nan</real>\n\t<real>+infinity</real>\n\t<real>-infinity</real>\n\t<real>1e-10</real>\n</array>\n");
        row("dates", "<array>\n\t<date>2001-02-03T04:05:06Z</date>\n\t<date>0000-12-30T00:00:00Z</date>\n"
                     "\t<date>9999-12-31T23:59:59Z</date>\n\t<date>1969-12-31T23:59:59Z</date>\n</array>\n");
        row("reference", "<dict>\n\t<key>CF$UID</key>\n\t<integer>7</integer>\n</dict>\n");
        row("data at the root", "<data>\n" + QByteArray(76, 'A') + "\nAAAA\n</data>\n");
        row("data in a dictionary", "<dict>\n\t<key>k</key>\n\t<data>\n\t" + QByteArray(68, 'A') +
                                        "\n\tAA==\n\t</data>\n"
                                        "\t<key>l</key>\n\t<data>\n\t</data>\n</dict>\n");
        const QByteArray tabs(9, '\t');
        QByteArray deep = tabs + "<data>\n" + tabs + "AAAAAAAAAAAA\n" + tabs + "AAAA\n" + tabs + "</data>\n";
        for (int level = 8; level >= 0; --level) {
            deep = tabs.left(level) + "<array>\n" + deep + tabs.left(level) + "</array>\n";
        }
        row("data far to the right", deep);
    }

    void xmlOfThePlatformSurvivesUnchanged()
    {
        QFETCH(QByteArray, body);
        const Result<Value> result = PropertyList::read(document(body));
        QCOMPARE(result.error(), QString());
        QCOMPARE(PropertyList::writeXml(*result).value_or(QByteArray()), document(body));
    }

    void readsOneValue_data()
    {
        const DataTable<QByteArray, QByteArray> row("bytes", "body");
        row("plain integer with space and sign", "<plist><integer> +5 </integer></plist>", "<integer>5</integer>");
        row("hexadecimal integer", "<plist><integer>0X1f</integer></plist>", "<integer>31</integer>");
        row("boolean with an end tag", "<plist><true></true></plist>", "<true/>");
        row("attributes", "<plist a='>'><string b=\"1\">x</string ></plist>", "<string>x</string>");
        row("comments and sections",
            "<!--<--><plist><!-- --><string>a<![CDATA[<&>]]><!-- x -->b</string></plist><!-- -->",
            "<string>a&lt;&amp;&gt;b</string>");
        row("character references", "<plist><string>&#x41;&#233;&#x1F600;&quot;&apos;</string></plist>",
            "<string>A\xC3\xA9\xF0\x9F\x98\x80\"'</string>");
        row("document type with an internal subset",
            "<!DOCTYPE plist [ <!ENTITY a '>]'> <!-- it is --> ]><plist><string/></plist>", "<string></string>");
        row("data with space inside", "<plist><data>A A\n=\t=</data></plist>", "<data>AA==</data>");
        row("real with exponent and capitals", "<plist><array><real>+1.5E3</real><real>-INF</real></array></plist>",
            "<array><real>1500</real><real>-infinity</real></array>");
        row("declared encoding", "<?xml version='1.0' encoding='ISO-8859-1'?><plist><string>\xE9</string></plist>",
            "<string>\xC3\xA9</string>");
        row("UTF-8 with a byte order mark", "\xEF\xBB\xBF<plist><string>a</string></plist>", "<string>a</string>");
        row("line ends of another system", "<plist>\r\n<dict>\r\n<key>a</key>\r\n<string>b\r\n</string></dict></plist>",
            "<dict><key>a</key><string>b&#13;\n</string></dict>");
        row("old style: dictionary", "{ a = b; \"c d\" = ( 1, (), {}, ); /* x */ e = <0aF f>; // y\n }",
            "<dict><key>a</key><string>b</string><key>c d</key><array><string>1</string><array/><dict/></array>"
            "<key>e</key><data>Cv8=</data></dict>");
        row("old style: escapes", R"('\U00e9\351\n\101\q\Ud83d\Ude00\"')",
            "<string>\xC3\xA9\xC3\x98\nAq\xF0\x9F\x98\x80\"</string>");
        row("old style: pairs without braces", "k = v;\nl;",
            "<dict><key>k</key><string>v</string><key>l</key><string>l</string></dict>");
        row("old style: bare path", "/a/b:c.d_$-e", "<string>/a/b:c.d_$-e</string>");
        row("old style: Mac OS Roman", "'\x8E'", "<string>\xC3\xA9</string>");
        row("old style: UTF-16", QByteArray("\xFE\xFF\0(\0)", 6), "<array/>");
        row("binary: one pair", binaryFile({"\xD1\x01\x02", "\x51\x61", "\x10\xFF"}),
            "<dict><key>a</key><integer>255</integer></dict>");
        row("binary: float, UTF-16 and UTF-8",
            binaryFile(
                {"\xA3\x01\x02\x03", QByteArray("\x22\x3F\xC0\0\0", 5), QByteArray("\x61\0\xE9", 3), "\x72\xC3\xA9"}),
            "<array><real>1.5</real><string>\xC3\xA9</string><string>\xC3\xA9</string></array>");
        row("binary: integers of 64 and 128 bits",
            binaryFile({"\xA2\x01\x02", "\x13" + QByteArray(8, '\xFF'),
                QByteArray("\x14") + QByteArray(8, '\0') + QByteArray(8, '\xFF')}),
            "<array><integer>-1</integer><integer>18446744073709551615</integer></array>");
    }

    void readsOneValue()
    {
        const auto [bytes, body] = currentRow<QByteArray, QByteArray>();
        const Result<Value> result = PropertyList::read(bytes);
        QCOMPARE(result.error(), QString());
        QCOMPARE(PropertyList::writeXml(*result), PropertyList::writeXml(*PropertyList::read(document(body))));
    }

    void refusesBadInput_data()
    {
        const DataTable<QByteArray> row("bytes");
        row("nothing", {});
        row("white space only", " \n");
        row("garbage", "\x01\x02\xFF\xFE");
        row("no plist element", "<?xml version=\"1.0\"?><dict/>");
        row("no value", "<plist></plist>");
        row("two values", "<plist><true/><true/></plist>");
        row("cut off in a tag", "<plist><dict><key>a</ke");
        row("cut off in text", "<plist><string>abc");
        row("cut off before the end", "<plist><dict></dict>");
        row("something behind", "<plist><dict/></plist><plist/>");
        row("key without a value", "<plist><dict><key>a</key></dict></plist>");
        row("value without a key", "<plist><dict><true/></dict></plist>");
        row("two keys in a row", "<plist><dict><key>a</key><key>b</key></dict></plist>");
        row("key in an array", "<plist><array><key>a</key></array></plist>");
        row("wrong end tag", "<plist><array></dict></plist>");
        row("element in text", "<plist><string>a<b/></string></plist>");
        row("unknown element", "<plist><float>1</float></plist>");
        row("integer without digits", "<plist><integer>-</integer></plist>");
        row("integer beyond 64 bits", "<plist><integer>18446744073709551616</integer></plist>");
        row("real with a rest", "<plist><real>1.5x</real></plist>");
        row("thirtieth of February", "<plist><date>2001-02-30T00:00:00Z</date></plist>");
        row("date with a zone", "<plist><date>2001-02-03T04:05:06+01</date></plist>");
        row("bad base64", "<plist><data>A*==</data></plist>");
        row("invalid UTF-8", "<plist><string>\xC3(</string></plist>");
        row("NUL in text", QByteArray("<plist><string>a\0b</string></plist>", 34));
        row("unknown entity", "<plist><string>&nbsp;</string></plist>");
        row("reference to a surrogate", "<plist><string>&#xD800;</string></plist>");
        row("unknown encoding", "<?xml version='1.0' encoding='x-none'?><plist><true/></plist>");
        row("comment without an end", "<!-- <plist/>");
        row("nested too deeply", nestedArrays(65));
        row("nested absurdly", nestedArrays(100'000));
        row("old style: nested absurdly", QByteArray(100'000, '('));
        row("old style: odd digits", "<abc>");
        row("old style: no end", "{ a = 'b");
        row("old style: no semicolon", "{ a = b c = d; }");
        row("old style: comment without an end", "{ /* }");
        row("old style: rest", "{} {}");
        row("old style: backslash at the end", "'\\");
        row("old style: data without an end", "<00");
        row("binary: header only", "bplist00");
        row("binary: other version", binaryFile({"\x09"}).replace("bplist00", "bplist15"));
        row("binary: reference to nothing", binaryFile({"\xA1\x05"}));
        row("binary: array that contains itself", binaryFile({QByteArray("\xA1\0", 2)}));
        row("binary: number as a key", binaryFile({"\xD1\x01\x01", "\x10\x01"}));
        row("binary: text beyond the end", binaryFile({"\x5E\x61"}));
        row("binary: giant count", binaryFile({"\xAF\x13\x7F" + QByteArray(7, '\xFF')}));
        row("binary: giant UTF-16 text", binaryFile({"\x6F\x13\x80" + QByteArray(7, '\0')}));
        row("binary: date that is no number", binaryFile({QByteArray("\x33\x7F\xF8\0\0\0\0\0\0", 9)}));
        row("binary: null root", binaryFile({QByteArray(1, '\0')}));
        row("binary: table beyond the end", binaryFile({"\x09"}).replace(48 - 1, 1, "\xFF"));
        row("binary: offsets of no width", binaryFile({"\x09"}).replace(16, 1, QByteArray(1, '\0')));
        row("binary: exponential growth", [] {
            QList<QByteArray> objects;
            for (char level = 1; level < 40; ++level) {
                objects.append(QByteArray("\xA2") + level + level);
            }
            return binaryFile(objects << "\x09");
        }());
    }

    void refusesBadInput()
    {
        QFETCH(QByteArray, bytes);
        const Result<Value> result = PropertyList::read(bytes);
        QVERIFY(!result);
        QVERIFY2(result.error().startsWith(u"byte "_s), qPrintable(result.error()));
    }

    void takesWhatIsOddButHarmless_data()
    {
        const DataTable<QByteArray, QByteArray> row("bytes", "sameAs");
        row("duplicate key, the last counts",
            "<plist><dict><key>b</key><true/><key>a</key><true/><key>b</key><false/></dict></plist>",
            "<plist><dict><key>a</key><true/><key>b</key><false/></dict></plist>");
        row("no semicolon at the end", "{ a = b }", "{ a = b; }");
        row("set and null", binaryFile({"\xC2\x01\x02", "\x09", QByteArray(1, '\0')}),
            "<plist><array><true/></array></plist>");
    }

    void takesWhatIsOddButHarmless()
    {
        const auto [bytes, sameAs] = currentRow<QByteArray, QByteArray>();
        const Result<Value> result = PropertyList::read(bytes);
        QCOMPARE(result.error(), QString());
        QVERIFY(*result == *PropertyList::read(sameAs));
    }

    void fallsBackToTheBinaryForm_data()
    {
        const DataTable<QString> row("text");
        row("control character", u"a\x01"_s);
        row("NUL", QString(QChar(0)));
        row("lone high surrogate", QString(QChar(0xD800)));
        row("lone low surrogate", QString(QChar(0xDC00)) + u"a"_s);
        row("no character", QString(QChar(0xFFFF)));
    }

    void fallsBackToTheBinaryForm()
    {
        QFETCH(QString, text);
        for (const Value& root : {Value(text), Value(Dictionary::create({{text, true}}))}) {
            QVERIFY(!PropertyList::writeXml(root));
            const QByteArray bytes = PropertyList::write(root);
            QVERIFY(bytes.startsWith("bplist00"));
            QVERIFY(*PropertyList::read(bytes) == root);
        }
    }

    void binaryFormKeepsEveryType()
    {
        std::vector<Value> items{true, false, 0, 255, 65536, qint64(-1), std::numeric_limits<quint64>::max(), 0.1,
            std::numeric_limits<double>::quiet_NaN(), u""_s, u"a"_s, QString(300, u'\u00E9'), QByteArray(20, 'x'),
            Uid{70000}, QDateTime::fromMSecsSinceEpoch(1'234'567'890'123, Qt::UTC), Array::create(),
            Dictionary::create({{u"k"_s, Dictionary::create({{u"a"_s, 1}})}})};
        for (int i = 0; i < 300; ++i) {
            items.emplace_back(i * 1000);
        }
        const Value root = Array::create(std::move(items));
        const Result<Value> result = PropertyList::read(PropertyList::writeBinary(root));
        QCOMPARE(result.error(), QString());
        QVERIFY(*result == root);
    }

    void anotherLibraryReadsWhatIsWritten()
    {
        const DictionaryPointer root = Dictionary::create({{u"text"_s, u"a<\u00E9\r\U0001F600"_s}});
        root->insert(u"data"_s, QByteArray(100, 'x'));
        root->insert(u"date"_s, QDateTime::fromMSecsSinceEpoch(0, Qt::UTC));
        root->insert(u"list"_s, Array::create({1, 0.5, true}));
        plist_t fromXml = nullptr;
        plist_t fromBinary = nullptr;
        const QByteArray xml = PropertyList::write(root);
        const QByteArray binary = PropertyList::writeBinary(root);
        plist_from_xml(xml.constData(), quint32(xml.size()), &fromXml);
        plist_from_bin(binary.constData(), quint32(binary.size()), &fromBinary);
        for (plist_t theirs : {fromXml, fromBinary}) {
            QVERIFY(theirs != nullptr);
            char* bytes = nullptr;
            quint32 length = 0;
            plist_to_bin(theirs, &bytes, &length);
            const Result<Value> back = PropertyList::read(QByteArrayView(bytes, qsizetype(length)));
            plist_to_bin_free(bytes);
            plist_free(theirs);
            QVERIFY(back && *back == Value(root));
        }
    }

    void nothingIsWrittenOfWhatCannotBe()
    {
        QCOMPARE(PropertyList::write(Value()), QByteArray());
        Value root = Array::create();
        for (int depth = 1; depth < PropertyList::maximumDepth; ++depth) {
            root = Array::create({root});
        }
        QVERIFY(PropertyList::writeXml(root));
        QVERIFY(*PropertyList::read(PropertyList::writeBinary(root)) == root);
        QCOMPARE(PropertyList::write(Array::create({root})), QByteArray());
        const Value beyondTheCalendar =
            QDateTime::fromMSecsSinceEpoch(std::numeric_limits<qint64>::max() / 1000, Qt::UTC);
        QVERIFY(!PropertyList::writeXml(beyondTheCalendar));
        QVERIFY(PropertyList::writeXml(Array::create({Value()})) == PropertyList::writeXml(Array::create()));
    }

    void convertsNumbersAndText_data()
    {
        const DataTable<Value, qint64, double, QString> row("value", "integer", "real", "text");
        const qint64 most = std::numeric_limits<qint64>::max();
        row("null", {}, 0, 0.0, {});
        row("boolean", Value(true), 1, 1.0, u"1"_s);
        row("real", Value(-2.75), -2, -2.75, u"-2.75"_s);
        row("huge real", Value(1e300), most, 1e300, u"1e+300"_s);
        row("decimal text", Value(u" \n-12abc"_s), -12, -12.0, u" \n-12abc"_s);
        row("fraction", Value(u"0.5abc"_s), 0, 0.5, u"0.5abc"_s);
        row("words", Value(u"infinity"_s), 0, 0.0, u"infinity"_s);
        row("too many digits", Value(u"99999999999999999999999"_s), most, 1e23, u"99999999999999999999999"_s);
        row("large unsigned", Value(std::numeric_limits<quint64>::max()), most, 18446744073709551615.0,
            u"18446744073709551615"_s);
        row("container", Value(Array::create()), 0, 0.0, {});
    }

    void convertsNumbersAndText()
    {
        QFETCH(Value, value);
        QTEST(value.integerValue(), "integer");
        QTEST(value.doubleValue(), "real");
        QTEST(value.textValue(), "text");
    }

    void containersAreShared()
    {
        const DictionaryPointer entry = Dictionary::create({{u"Phrase"_s, u"a"_s}});
        const auto first = Array::create({entry});
        const auto second = Array::create({entry});
        first->at(0).dictionary()->insert(u"Phrase"_s, u"b"_s);
        QCOMPARE(second->at(0).dictionary()->value(u"Phrase").string(), u"b"_s);
        entry->insert(u"Phrase"_s, Value());
        QVERIFY(entry->isEmpty());
    }

    void largeDictionaryKeepsItsOrder()
    {
        const DictionaryPointer dictionary = Dictionary::create();
        for (int i = 0; i < 100; ++i) {
            dictionary->insert(QString::number(i * 37 % 100), i * 37 % 100);
        }
        QStringList sorted = dictionary->keys();
        sorted.sort();
        QCOMPARE(dictionary->keys(), sorted);
        QCOMPARE(dictionary->value(u"55").integerValue(), 55);
        QVERIFY(dictionary->remove(u"55"));
        QVERIFY(!dictionary->contains(u"55"));
        QVERIFY(!dictionary->remove(u"55"));
    }

    /// Whose second half is read on another thread, from a place that is only guessed.
    void largeListIsReadWhole_data()
    {
        const DataTable<QByteArray, QByteArray> row("middle", "end");
        row("entries only", "", "");
        row("the guess is in a comment", "<!-- <dict> <key> </array> -->", "");
        row("the guess is in a text", "<string><![CDATA[<dict><key>]]></string>", "");
        row("the guess is deeper", "<array><dict></dict></array>", "");
        row("a fault behind the guess", "", "<dict><key>x</key></dict>");
    }

    void largeListIsReadWhole()
    {
        const auto [middle, end] = currentRow<QByteArray, QByteArray>();
        // The half of the bytes ends in the blanks before the middle.
        const QByteArray entries = QByteArray("<dict><key>k</key><integer>1</integer></dict>").repeated(30'000);
        const QByteArray before = "<plist><dict><key>list</key><array>" + entries + QByteArray(1000, ' ') + middle;
        const QByteArray all = before + entries + end + "</array></dict></plist>";
        const Result<Value> read = PropertyList::read(all);
        if (!end.isEmpty()) {
            const QString fault = QString::number(all.indexOf("</dict></array>") + 7);
            QVERIFY2(!read && read.error().contains(fault), qPrintable(read.error()));
            return;
        }
        QVERIFY2(read, qPrintable(read.error()));
        const PropertyList::ArrayPointer list = read->dictionary()->value(u"list").array();
        QCOMPARE(list->size(), 60'000 + (middle.isEmpty() || middle.startsWith("<!--") ? 0 : 1));
        for (const Value& entry : *list) {
            QVERIFY(!entry.dictionaryInPlace() || entry.dictionaryInPlace()->size() == 1);
        }
    }
};

QTEST_APPLESS_MAIN(PropertyListTest)
#include "PropertyListTest.moc"
