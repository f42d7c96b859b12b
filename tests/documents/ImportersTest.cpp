// SPDX-License-Identifier: MIT
#include <core/SharedNames.h>
#include <documents/FormattedText.h>
#include <documents/Importers.h>
#include <platform/richtext/Rtfd.h>

#include <QBuffer>
#include <QImage>
#include <QTest>
#include <QTextBlock>
#include <QTextDocument>

#include <TypedStreamArchiver.h>
#include <sys/resource.h>

using namespace Qt::StringLiterals;

using Importers::Conversion;
using Importers::Source;
using PropertyList::Array;
using PropertyList::ArrayPointer;
using PropertyList::Dictionary;
using PropertyList::DictionaryPointer;
using PropertyList::Value;

namespace {

Conversion convert(const Value& root, Source source)
{
    return Importers::convert(root, source, FormattedText::converters(), [](qsizetype, qsizetype) { return true; });
}

/// What one item with these values comes to.
DictionaryPointer converted(Source source, const QString& list, const DictionaryPointer& item)
{
    const Conversion conversion = convert(Dictionary::create({{list, Array::create({item})}}), source);
    return conversion.document->value(DocumentKey::clippings).array()->at(0).dictionary();
}

QByteArray tiff(QSize size)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::red);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "TIFF");
    return bytes;
}

/// A TIFF file of a few bytes that says that it has this many pixels, all in one compressed strip.
QByteArray hugeTiff(quint32 side)
{
    QByteArray file("II*\0\x08\0\0\0\x08\0", 10);
    const auto little = [](quint32 number, int width) {
        QByteArray bytes;
        for (int i = 0; i < width; ++i) {
            bytes.append(char(number >> (8 * i)));
        }
        return bytes;
    };
    const QList<std::pair<quint32, quint32>> entries{
        {256, side}, {257, side}, {258, 8}, {259, 32773}, {262, 1}, {273, 110}, {278, side}, {279, 4}};
    for (const auto& [tag, value] : entries) {
        file += little(tag, 2) + little(4, 2) + little(1, 4) + little(value, 4);
    }
    return file + QByteArray(4, '\0') + "\x81\x81\x81\x81";
}

/// The largest amount of memory that this process has had so far, in megabytes.
long peakMegabytes()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss / 1024;
}

QByteArray onlyRun(const QList<QPair<QByteArray, QByteArray>>& attributes, int length)
{
    const Archiver archiver;
    return archiver.run(1, length) + archiver.group("@", archiver.dictionary(attributes));
}

} // namespace

class ImportersTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void fileNamesTellTheTool_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<std::optional<Source>>("source");
        QTest::newRow("Typinator") << u"/a/com.macility.typinator2.plist"_s << std::optional(Source::Typinator);
        QTest::newRow("TextExpander") << u"a.b.textexpander"_s << std::optional(Source::TextExpander);
        QTest::newRow("Textpander") << u"a.textpander"_s << std::optional(Source::TextExpander);
        QTest::newRow("SpellCatcher") << u"a.xml"_s << std::optional(Source::SpellCatcher);
        QTest::newRow("other list") << u"typinator2.plist"_s << std::optional<Source>();
        QTest::newRow("other letter case") << u"a.XML"_s << std::optional<Source>();
    }

    void fileNamesTellTheTool()
    {
        QFETCH(QString, name);
        QTEST(Importers::sourceOf(name), "source");
    }

    void everyFormOfAFileIsRead_data()
    {
        QTest::addColumn<QByteArray>("file");
        const Value root(Dictionary::create({{u"entries"_s,
            Array::create({Dictionary::create(),
                Dictionary::create({{u"abbr"_s, u"brb"_s}, {u"exp"_s, u"be right"_s}, {u"supressSep"_s, true}})})}}));
        QTest::newRow("XML") << PropertyList::writeXml(root).value_or("");
        QTest::newRow("binary") << PropertyList::writeBinary(root);
        QTest::newRow("old-style") << QByteArray(
            R"({ entries = ( {}, { abbr = brb; exp = "be right"; supressSep = YES; } ); })");
    }

    void everyFormOfAFileIsRead()
    {
        QFETCH(QByteArray, file);
        const Conversion conversion = convert(*PropertyList::read(file), Source::SpellCatcher);
        const auto entry = [](const QString& phrase, const QString& text, const QString& order) {
            return Dictionary::create({{PhraseKey::phrase, phrase}, {PhraseKey::plainText, text},
                {PhraseKey::option, u""_s}, {PhraseKey::sortOrder, order}, {PhraseKey::service, u""_s}});
        };
        const Value expected(Dictionary::create({{DocumentKey::clippings,
            Array::create({entry(u"(0)"_s, u""_s, u"0"_s), entry(u"brb"_s, u"be right%-"_s, u"1"_s)})}}));
        QVERIFY(Value(conversion.document) == expected);
        QVERIFY(conversion.troubles.isEmpty());
    }

    void archivedTextBecomesRtfd_data()
    {
        QTest::addColumn<QByteArray>("attribute");
        QTest::addColumn<QByteArray>("value");
        QTest::addColumn<int>("property");
        QTest::addColumn<QVariant>("expected");
        const Archiver archiver;
        const QByteArray red = archiver.object({"NSColor", "NSObject"},
            archiver.group("c", "\x01") + archiver.group("ffff", archiver.real(1) + QByteArray("\0\0\1", 3)));
        const auto row = [](const char* name, const QByteArray& attribute, const QByteArray& value,
                             QTextFormat::Property property, const QVariant& expected) {
            QTest::newRow(name) << attribute << value << int(property) << expected;
        };
        const QByteArray font = archiver.font(u"Times-BoldItalic"_s, 12.5);
        row("family", "NSFont", font, QTextFormat::FontFamilies, QStringList{u"Times"_s});
        row("size", "NSFont", font, QTextFormat::FontPointSize, 12.5);
        row("bold", "NSFont", font, QTextFormat::FontWeight, int(QFont::Bold));
        row("italic", "NSFont", font, QTextFormat::FontItalic, true);
        row("underline", "NSUnderline", archiver.number(1), QTextFormat::TextUnderlineStyle,
            int(QTextCharFormat::SingleUnderline));
        row("strikethrough", "NSStrikethrough", archiver.number(1), QTextFormat::FontStrikeOut, true);
        row("subscript", "NSSuperScript", archiver.number(-1), QTextFormat::TextVerticalAlignment,
            int(QTextCharFormat::AlignSubScript));
        row("color", "NSColor", red, QTextFormat::ForegroundBrush, QBrush(Qt::red));
        row("background", "NSBackgroundColor", red, QTextFormat::BackgroundBrush, QBrush(Qt::red));
        row("link", "NSLink", archiver.string("http://a/"), QTextFormat::AnchorHref, u"http://a/"_s);
        const auto aligned = [&](char alignment, const char* name, const QVariant& expected) {
            row(name, "NSParagraphStyle",
                archiver.object({"NSParagraphStyle", "NSObject"}, archiver.group("C", QByteArray(1, alignment))),
                QTextFormat::BlockAlignment, expected);
        };
        aligned('\0', "left", int(Qt::AlignLeft | Qt::AlignAbsolute));
        aligned('\1', "right", int(Qt::AlignRight | Qt::AlignAbsolute));
        aligned('\2', "centered", int(Qt::AlignHCenter));
        aligned('\4', "natural", QVariant());
    }

    void archivedTextBecomesRtfd()
    {
        QFETCH(QByteArray, attribute);
        QFETCH(QByteArray, value);
        QFETCH(int, property);
        const QByteArray archive = Archiver().attributedString("ab\nc", onlyRun({{attribute, value}}, 4));
        const DictionaryPointer entry = converted(Source::TextExpander, u"Snippets"_s,
            Dictionary::create({{u"Plain Text"_s, u"plain"_s}, {u"Formatted Text"_s, archive}}));
        QCOMPARE(entry->value(PhraseKey::plainText).string(), u"plain"_s);
        QTextDocument document;
        QVERIFY(Rtfd::read(entry->value(PhraseKey::rtfd).data(), document));
        QCOMPARE(document.toPlainText(), u"ab\nc"_s);
        const QTextBlock block = document.lastBlock();
        const bool isOfBlock = property == QTextFormat::BlockAlignment;
        const QTextFormat format = isOfBlock ? QTextFormat(block.blockFormat()) : block.begin().fragment().charFormat();
        QTEST(format.property(property), "expected");
    }

    void filesComeAlong_data()
    {
        QTest::addColumn<Source>("source");
        QTest::addColumn<QString>("list");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QByteArray>("stored");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("name");
        const Archiver archiver;
        const QByteArray wrapper =
            Rtfd::writeWrapper({{u".."_s, tiff({3, 2}), false}, {u"__@UTF8PreferredName@__"_s, "note.tif", false}});
        QTest::newRow("attachment") << Source::TextExpander << u"Snippets"_s << u"Formatted Text"_s
                                    << archiver.attributedString("a\xEF\xBF\xBC\xEF\xBF\xBC",
                                           onlyRun({{"NSAttachment", archiver.attachment(wrapper)}}, 3))
                                    << u"a\uFFFC\uFFFC"_s << u"note.tif"_s;
        QTest::newRow("picture") << Source::Typinator << u"Abbreviations"_s << u"Picture"_s
                                 << archiver.image(tiff({3, 2})) << u"\uFFFC"_s << u"my_image.tif"_s;
    }

    void filesComeAlong()
    {
        QFETCH(Source, source);
        QFETCH(QString, list);
        QFETCH(QString, key);
        QFETCH(QByteArray, stored);
        QFETCH(QString, name);
        const DictionaryPointer entry = converted(source, list, Dictionary::create({{key, stored}}));
        QTextDocument document;
        QVERIFY(Rtfd::read(entry->value(PhraseKey::rtfd).data(), document));
        QTEST(document.toRawText(), "text");
        const std::optional<TextAttachment> file = TextAttachment::in(document, name);
        QCOMPARE(file ? file->contents : QByteArray(), tiff({3, 2}));
        QCOMPARE(entry->value(PhraseKey::rtfd).data().count(tiff({3, 2})), 1);
    }

    void formattedTextComesBeforeThePicture()
    {
        const QByteArray rtf = "{\\rtf1 x}";
        const DictionaryPointer entry = converted(Source::Typinator, u"Abbreviations"_s,
            Dictionary::create({{u"Formatted"_s, rtf}, {u"Picture"_s, Archiver().image(tiff({1, 1}))}}));
        QCOMPARE(entry->value(PhraseKey::rtfd).data(), rtf);
    }

    void formattedDataStaysAsItIs_data()
    {
        QTest::addColumn<QByteArray>("stored");
        QTest::addColumn<int>("complaints");
        const QByteArray whole = Rtfd::writeWrapper({{u"TXT.rtf"_s, "{\\rtf1 x}", false}});
        QTest::newRow("whole") << whole << 0;
        QTest::newRow("cut off") << whole.chopped(3) << 1;
        QTest::newRow("without text") << Rtfd::writeWrapper({{u"TXT.rtf"_s, "x", false}}) << 1;
        QTest::newRow("something else") << QByteArray("\0\1\2", 3) << 1;
    }

    void formattedDataStaysAsItIs()
    {
        QFETCH(QByteArray, stored);
        const ArrayPointer items = Array::create({Dictionary::create({{u"Formatted"_s, stored}})});
        const Conversion conversion = convert(Dictionary::create({{u"Abbreviations"_s, items}}), Source::Typinator);
        const Value entry = conversion.document->value(DocumentKey::clippings).array()->at(0);
        QCOMPARE(entry.dictionary()->value(PhraseKey::rtfd).data(), stored);
        QTEST(int(conversion.troubles.size()), "complaints");
    }

    void badFormattingComesInAsPlainText_data()
    {
        QTest::addColumn<Source>("source");
        QTest::addColumn<QString>("key");
        QTest::addColumn<Value>("stored");
        const Archiver archiver;
        const QByteArray good = archiver.attributedString("a", onlyRun({}, 1));
        const auto text = [](const char* name, const Value& stored) {
            QTest::newRow(name) << Source::TextExpander << u"Formatted Text"_s << stored;
        };
        text("no data", u"text"_s);
        text("cut off", good.chopped(3));
        text("no text inside", archiver.root(archiver.object({"Unknown", "NSObject"}, archiver.group("i", "\1"))));
        text("giant length", QByteArray(archiver.header() + archiver.group("[999999999c]", "a")));
        text("text that contains itself",
            archiver.root(archiver.object({"NSAttributedString", "NSObject"}, archiver.group("@", "\x92"))));
        const auto picture = [&archiver](const char* name, const QByteArray& file) {
            QTest::newRow(name) << Source::Typinator << u"Picture"_s << Value(archiver.image(file));
        };
        picture("no TIFF", "\x89PNG\r\n");
        picture("TIFF without pixels", tiff({3, 2}).first(8));
        picture("TIFF of 3.6 gigapixels", hugeTiff(60'000));
        picture("TIFF of all pixels there can be", hugeTiff(0xFFFF'FFFF));
        QTest::newRow("RTFD that is no data") << Source::Typinator << u"Formatted"_s << Value(u"{\\rtf1 x}"_s);
    }

    void badFormattingComesInAsPlainText()
    {
        QFETCH(Source, source);
        QFETCH(QString, key);
        QFETCH(Value, stored);
        const bool isTypinator = source == Source::Typinator;
        const QString textKey = isTypinator ? u"Expansion"_s : u"Plain Text"_s;
        const auto item = [&](const QString& text) { return Dictionary::create({{textKey, text}, {key, stored}}); };
        const ArrayPointer items = Array::create({item(u"one"_s), 7, item(u"two"_s), u"no item"_s});
        const long before = peakMegabytes();
        const Conversion conversion =
            convert(Dictionary::create({{isTypinator ? u"Abbreviations"_s : u"Snippets"_s, items}}), source);
        QVERIFY2(peakMegabytes() < before + 64, "bad data costs memory");
        QStringList orders;
        for (const Value& value : *conversion.document->value(DocumentKey::clippings).array()) {
            QVERIFY(!value.dictionary()->contains(PhraseKey::rtfd));
            orders.append(value.dictionary()->value(PhraseKey::sortOrder).string());
        }
        QCOMPARE(orders, (QStringList{u"0"_s, u"2"_s}));
        QCOMPARE(conversion.troubles.values(), (QList<int>{2, 2}));
    }

    void rootWithoutTheListGivesNoDocument()
    {
        for (const Value& root :
            {Value(), Value(u"text"_s), Value(Array::create()), Value(Dictionary::create({{u"Snippets"_s, 7}}))}) {
            QCOMPARE(convert(root, Source::TextExpander).outcome, Conversion::Outcome::NoList);
        }
    }
};

QTEST_MAIN(ImportersTest)
#include "ImportersTest.moc"
