// SPDX-License-Identifier: MIT
#include <platform/archive/ArchivedText.h>
#include <platform/archive/TypedStream.h>
#include <platform/richtext/Rtfd.h>

#include <QTest>

#include <TypedStreamArchiver.h>

using namespace Qt::StringLiterals;

namespace {

// As other programs write them: class, string and type references included.
const QByteArray hiArchive = QByteArray::fromHex(
    "040B73747265616D747970656481E803840140848484124E5341747472696275746564537472696E67008484084E534F626A656374008592"
    "848484084E53537472696E67019484012B0248698684026949010292848484"
    "0C4E5344696374696F6E6172790094840169008686");
const QByteArray colorArchive = QByteArray::fromHex("040B73747265616D747970656481E803840140848484074E53436F6C6F7200"
                                                    "8484084E534F626A65637400858401630184046666666683B24D213D83"
                                                    "92F5233E83BE174B3E0186");

const AttributedText::Attributes& attributesOf(const Result<ArchivedText>& archived, qsizetype run)
{
    return archived->text.styles.at(archived->text.runs.at(run).style);
}

} // namespace

class TypedStreamTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void readsGenuineArchives()
    {
        const Result<ArchivedText> hi = unarchivedText(hiArchive);
        QCOMPARE(hi.error(), QString());
        QCOMPARE(hi->warnings, QStringList());
        QCOMPARE(hi->text.text, u"Hi"_s);
        QCOMPARE(hi->text.runs.size(), 1);
        QCOMPARE(hi->text.runs.at(0).length, 2);
        QVERIFY(attributesOf(hi, 0) == AttributedText::Attributes());

        const Result<TypedStream::Archive> color = TypedStream::read(colorArchive);
        const TypedStream::Entry* root = color ? color->rootObject() : nullptr;
        QVERIFY(root != nullptr && color->isKindOf(*root, "NSColor"));
        QList<int> components;
        // The first item is the kind of color.
        for (size_t i = 1; i < root->items.size(); ++i) {
            components.append(qRound(std::get<double>(root->items[i]) * 100'000));
        }
        QCOMPARE(components, (QList<int>{3938, 16012, 19833, 100'000}));
    }

    void readsEveryAttribute_data()
    {
        using Attributes = AttributedText::Attributes;
        QTest::addColumn<bool>("isLittleEndian");
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<QByteArray>("value");
        QTest::addColumn<Attributes>("expected");
        for (const bool isLittle : {true, false}) {
            const Archiver archiver(isLittle);
            const auto row = [isLittle](const char* what, const QByteArray& name, const QByteArray& value, auto set) {
                Attributes expected;
                set(expected);
                QTest::addRow("%s, %s", what, isLittle ? "little-endian" : "big-endian")
                    << isLittle << name << value << expected;
            };
            const auto colorObject = [&archiver](const QByteArray& groups) {
                return archiver.object({"NSColor", "NSObject"}, groups);
            };
            const QByteArray red = colorObject(
                archiver.group("c", "\x01") + archiver.group("ffff", archiver.real(1) + archiver.integer(0) +
                                                                         archiver.integer(0) + archiver.integer(1)));
            row("font", "NSFont", archiver.font(u"Times-BoldItalic"_s, 12.5), [](Attributes& a) {
                a.fontFamily = u"Times"_s;
                a.fontSize = 12.5;
                a.isBold = a.isItalic = true;
            });
            row("color", "NSColor", red, [](Attributes& a) { a.color = QColor::fromRgbF(1, 0, 0); });
            row("named color", "NSBackgroundColor",
                colorObject(archiver.group("c", "\x06") +
                            archiver.group("@@@", archiver.string("System") + archiver.string("textColor") + red)),
                [](Attributes& a) { a.backgroundColor = QColor::fromRgbF(1, 0, 0); });
            row("white", "NSColor", colorObject(archiver.group("c", "\x03") + archiver.group("ff", "\x01\x01")),
                [](Attributes& a) { a.color = QColor::fromRgbF(1, 1, 1); });
            row("underline", "NSUnderline", archiver.number(1), [](Attributes& a) { a.isUnderlined = true; });
            row("strikethrough", "NSStrikethrough", archiver.number(2), [](Attributes& a) { a.isStruckOut = true; });
            row("subscript", "NSSuperScript", archiver.number(-1), [](Attributes& a) { a.superscript = -1; });
            row("paragraph", "NSParagraphStyle",
                archiver.object(
                    {"NSParagraphStyle", "NSObject"}, archiver.group("CC@S", QByteArray("\x02\0\x85\0", 4))),
                [](Attributes& a) { a.paragraph.side = Qt::AlignHCenter; });
            row("text link", "NSLink", archiver.string("http://a/"), [](Attributes& a) { a.link = u"http://a/"_s; });
            const auto url = [&archiver](const QByteArray& groups) {
                return archiver.object({"NSURL", "NSObject"}, groups);
            };
            const QByteArray base =
                url(archiver.group("c", QByteArray(1, '\0')) + archiver.group("@", archiver.string("http://a/b")));
            row("relative link", "NSLink",
                url(archiver.group("c", "\x01") + archiver.group("@", base) +
                    archiver.group("@", archiver.string("c"))),
                [](Attributes& a) { a.link = u"http://a/c"_s; });
            row("unknown attribute", "Unknown",
                archiver.object({"Some", "NSObject"}, archiver.group("{s=[2s]!#:}", "\x01\x02\x85\x85")),
                [](Attributes&) {});
        }
    }

    void readsEveryAttribute()
    {
        QFETCH(bool, isLittleEndian);
        QFETCH(QByteArray, name);
        QFETCH(QByteArray, value);
        const Archiver archiver(isLittleEndian);
        const QByteArray attributes = archiver.dictionary({{name, value}});
        const Result<ArchivedText> result =
            unarchivedText(archiver.attributedString("ab", archiver.run(1, 2) + archiver.group("@", attributes)));
        QCOMPARE(result.error(), QString());
        QCOMPARE(result->warnings, QStringList());
        QCOMPARE(result->text.runs.size(), 1);
        QTEST(attributesOf(result, 0), "expected");
    }

    void runsRepeatTheirAttributes()
    {
        const Archiver archiver;
        const QByteArray bold =
            archiver.group("@", archiver.dictionary({{"NSFont", archiver.font(u"Menlo-Bold"_s, 11)}}));
        const QByteArray plain = archiver.group("@", archiver.dictionary({}));
        const Result<ArchivedText> result = unarchivedText(archiver.attributedString("a\xF0\x9F\x98\x80"
                                                                                     "b",
            archiver.run(1, 1) + bold + archiver.run(2, 2) + plain + archiver.run(1, 1)));
        QCOMPARE(result->warnings, QStringList());
        QCOMPARE(result->text.runs.size(), 3);
        QCOMPARE(result->text.runs.at(1).length, 2);
        QVERIFY(!attributesOf(result, 1).isBold);
        QVERIFY(attributesOf(result, 0) == attributesOf(result, 2));
        QVERIFY(attributesOf(result, 2).isBold);
    }

    void readsTheAttachedFile()
    {
        const Archiver archiver;
        const QByteArray wrapper =
            Rtfd::writeWrapper({{u".."_s, "content", false}, {u"__@UTF8PreferredName@__"_s, "note.txt", false}});
        const QByteArray attachment = archiver.attachment(wrapper);
        const Result<ArchivedText> result = unarchivedText(archiver.attributedString("\xEF\xBF\xBC",
            archiver.run(1, 1) + archiver.group("@", archiver.dictionary({{"NSAttachment", attachment}}))));
        QCOMPARE(result->warnings, QStringList());
        const auto file = attributesOf(result, 0).attachment;
        QVERIFY(file);
        QCOMPARE(file->name, u"note.txt"_s);
        QCOMPARE(file->contents, QByteArray("content"));
    }

    void readsTheImageFile()
    {
        const Archiver archiver;
        const QByteArray tiff("II*\0\x08\0\0\0", 8);
        QCOMPARE(unarchivedImageFile(archiver.image(tiff)).value_or("none"), tiff);
        QVERIFY(!unarchivedImageFile(archiver.image("\x89PNG\r\n")));
        QVERIFY(!unarchivedImageFile(hiArchive));
    }

    void refusesBadArchives_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        const Archiver archiver;
        const auto row = [](const char* name, const QByteArray& bytes) { QTest::newRow(name) << bytes; };
        const auto value = [&archiver](const QByteArray& encoding, const QByteArray& values) {
            return QByteArray(archiver.header() + archiver.group(encoding, values));
        };
        row("nothing", {});
        row("another format", "bplist00");
        row("no group", archiver.header());
        row("another root", colorArchive);
        row("text that is the string itself",
            archiver.root(archiver.object({"NSAttributedString", "NSObject"}, archiver.group("@", "\x92"))));
        row("nil root", archiver.root("\x85"));
        row("reference before anything", archiver.root("\x92"));
        row("reserved head", value("i", "\x88"));
        row("unknown type", value("?", "a"));
        row("bracket without an end", value("[2", "ab"));
        row("data beyond the end", value("[999999999999999999999c]", "a"));
        row("giant array", value("[2000000000s]", "a"));
        row("arrays of nothing", value("[100[100[100[100[100!]]]]]", QByteArray(200, '\1')));
        row("negative length", value("+", "\xFFz"));
        row("structures without end", value(QByteArray("{=").repeated(5000) + QByteArray("}").repeated(5000), {}));
        row("endless nesting", archiver.root(QByteArray("\x84\x85\x84\x01@").repeated(20'000)));
        row("endless class", archiver.root("\x84" + QByteArray("\x84\x84\x01"
                                                               "A\x01")
                                                        .repeated(20'000)));
        for (const qsizetype length : {20, 50, 80, 107}) {
            QTest::addRow("cut off at %d", int(length)) << hiArchive.first(length);
        }
    }

    void refusesBadArchives()
    {
        QFETCH(QByteArray, bytes);
        const Result<ArchivedText> result = unarchivedText(bytes);
        QVERIFY(!result);
        QVERIFY(!result.error().isEmpty());
    }

    void refusesDamagedRuns_data()
    {
        QTest::addColumn<QByteArray>("runs");
        const Archiver archiver;
        const QByteArray plain = archiver.group("@", archiver.dictionary({}));
        const auto row = [](const char* name, const QByteArray& runs) { QTest::newRow(name) << runs; };
        row("no runs", {});
        row("too short", archiver.run(1, 1) + plain);
        row("too long", archiver.run(1, 2'000'000'000) + plain);
        row("unknown number", archiver.run(2, 4) + plain);
        row("negative length", archiver.run(1, -1) + plain);
        row("no dictionary", archiver.run(1, 4) + archiver.group("@", "\x85"));
        // Object 0 is the attributed string itself.
        row("dictionary that is the text", archiver.run(1, 4) + archiver.group("@", "\x92"));
    }

    void refusesDamagedRuns()
    {
        QFETCH(QByteArray, runs);
        QVERIFY(!unarchivedText(Archiver().attributedString("abcd", runs)));
    }

    void leavesOutWhatCannotBeRead_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<QByteArray>("value");
        const Archiver archiver;
        QTest::newRow("font without a name") << QByteArray("NSFont") << archiver.font({}, 12);
        QTest::newRow("attachment that contains the text")
            << QByteArray("NSAttachment")
            << archiver.object({"NSTextAttachment", "NSObject"}, archiver.group("@", "\x92"));
    }

    void leavesOutWhatCannotBeRead()
    {
        QFETCH(QByteArray, name);
        QFETCH(QByteArray, value);
        const Archiver archiver;
        const QByteArray attributes = archiver.dictionary({{name, value}, {"NSUnderline", archiver.number(1)}});
        const Result<ArchivedText> result =
            unarchivedText(archiver.attributedString("abcd", archiver.run(1, 4) + archiver.group("@", attributes)));
        QCOMPARE(result->warnings.size(), 1);
        AttributedText::Attributes underlined;
        underlined.isUnderlined = true;
        QVERIFY(attributesOf(result, 0) == underlined);
    }
};

QTEST_GUILESS_MAIN(TypedStreamTest)
#include "TypedStreamTest.moc"
