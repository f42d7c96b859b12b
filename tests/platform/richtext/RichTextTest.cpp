// SPDX-License-Identifier: MIT
#include <platform/richtext/ParagraphSide.h>
#include <platform/richtext/Rtf.h>
#include <platform/richtext/Rtfd.h>

#include <QBuffer>
#include <QRandomGenerator>
#include <QTest>
#include <QTextBlock>
#include <QTextDocument>

#include <array>

using namespace Qt::StringLiterals;

namespace {

QString textOf(const QTextDocument& document)
{
    return document.toRawText().replace(QChar::ParagraphSeparator, u'\n');
}

/// Everything about a document that is stored, one line per paragraph and per run, so that a difference shows where it
/// is.
QString described(const QTextDocument& document)
{
    QString text;
    QDebug out(&text);
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        out << block.blockFormat().properties() << Qt::endl;
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextFormat format = it.fragment().charFormat();
            out << it.fragment().text() << format.properties() << Qt::endl;
            if (const auto name = TextAttachment::nameOf(QUrl(format.toImageFormat().name()))) {
                const auto file = TextAttachment::in(document, *name);
                out << *name << (file ? file->contents : "none") << (file && file->isPackage) << Qt::endl;
            }
        }
    }
    return text;
}

QByteArray pngOf(QSize size)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::red);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

QString randomText(QRandomGenerator& random)
{
    static const QStringList pieces{u"plain text "_s, u"\\{}; "_s, u"äöü€– "_s, u"日本語"_s, u"\U0001F600\U0001D11E"_s,
        u"\t"_s, u"\u2028"_s, u"\u00A0\u00AD\u2011"_s, u"\f"_s, u"4"_s, u"- ?"_s, u"\u270Dname\u270D"_s,
        u"%Y [[1]] "_s};
    QString text;
    for (int count = random.bounded(1, 6); count > 0; --count) {
        text += pieces[random.bounded(int(pieces.size()))];
    }
    return text;
}

QTextCharFormat randomFormat(QRandomGenerator& random)
{
    QTextCharFormat format;
    format.setFontFamilies({QStringList{u"Helvetica"_s, u"DejaVu Sans"_s, u"ヒラギノ角ゴ"_s}[random.bounded(3)]});
    format.setFontPointSize(random.bounded(12, 60) / 2.0);
    if (random.bounded(3) == 0) {
        format.setFontWeight(QFont::Bold);
    }
    if (random.bounded(3) == 0) {
        format.setFontItalic(true);
    }
    if (random.bounded(3) == 0) {
        format.setFontUnderline(true);
    }
    if (random.bounded(3) == 0) {
        format.setFontStrikeOut(true);
    }
    if (random.bounded(3) == 0) {
        format.setVerticalAlignment(
            random.bounded(2) == 0 ? QTextCharFormat::AlignSuperScript : QTextCharFormat::AlignSubScript);
    }
    if (random.bounded(2) == 0) {
        format.setForeground(QColor::fromRgb(random.bounded(256), random.bounded(256), random.bounded(256)));
    }
    if (random.bounded(4) == 0) {
        format.setBackground(QColor(random.bounded(256), 10, 20, random.bounded(1, 255)));
    }
    if (random.bounded(5) == 0) {
        format.setAnchor(true);
        format.setAnchorHref(u"https://example.org/?a={b}&c=\\%20ü"_s);
    }
    return format;
}

QTextBlockFormat randomBlockFormat(QRandomGenerator& random)
{
    QTextBlockFormat format;
    const std::array<Qt::Alignment, 4> sides{Qt::AlignLeft, Qt::AlignRight, Qt::AlignHCenter, Qt::AlignJustify};
    if (random.bounded(2) == 0) {
        format.setAlignment(ParagraphSide::alignmentTo(sides[random.bounded(quint32(sides.size()))]));
    }
    if (random.bounded(2) == 0) {
        format.setLeftMargin(random.bounded(1, 900) / 15.0);
        format.setTextIndent(random.bounded(1, 900) / -15.0);
        format.setBottomMargin(12);
    }
    if (random.bounded(3) == 0) {
        format.setTabPositions({{40, QTextOption::LeftTab}, {90.2, QTextOption::RightTab},
            {200, QTextOption::CenterTab}, {300, QTextOption::DelimiterTab, u'.'}});
    }
    if (random.bounded(3) == 0) {
        format.setLineHeight(20, QTextBlockFormat::MinimumHeight);
    }
    return format;
}

void fill(QTextDocument& document, QRandomGenerator& random)
{
    const QList<TextAttachment> files{{u"Pasted Graphic.png"_s, pngOf({7, 5}), false},
        {u"Übersicht 1.pdf"_s, "%PDF", false}, {u"a {b} \\c.txt"_s, {}, false},
        {u"Folder"_s, QByteArray("\3\0\0\0\0\0\0\0", 8), true}};
    QTextCursor cursor(&document);
    for (int block = random.bounded(12); block >= 0; --block) {
        cursor.setBlockFormat(randomBlockFormat(random));
        for (int run = random.bounded(4); run > 0; --run) {
            cursor.insertText(randomText(random), randomFormat(random));
        }
        if (random.bounded(4) == 0) {
            const TextAttachment& file = files[random.bounded(int(files.size()))];
            file.addTo(document);
            QTextCharFormat format = randomFormat(random);
            format.merge(TextAttachment::imageFormat(file.name, random.bounded(2) == 0 ? QSizeF(20, 10.5) : QSizeF()));
            cursor.insertText(QString(QChar::ObjectReplacementCharacter), format);
        }
        if (block > 0) {
            cursor.insertBlock();
        }
    }
}

} // namespace

class RichTextTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void readsText_data()
    {
        QTest::addColumn<QByteArray>("rtf");
        QTest::addColumn<QString>("text");

        const auto row = [](const char* name, const QByteArray& body, const QString& text) {
            QTest::newRow(name) << "{\\rtf1\\ansi\\ansicpg1252 " + body << text;
        };
        row("escaped line end is a paragraph", "a\\\nb\\\r\nc}", u"a\nb\nc"_s);
        row("raw line ends are nothing", "a\nb\r\nc}", u"abc"_s);
        row("line is a line separator", "a\\line b\\tab c\\par d}", u"a\u2028b\tc\nd"_s);
        row("symbols", "\\~\\_\\-\\\\\\{\\}\\lquote\\emdash}", u"\u00A0\u2011\u00AD\\{}\u2018\u2014"_s);
        row("western bytes", "\\'e4\x80\\'95}", u"ä€•"_s);
        row("unsigned pair", "\\uc0\\u55356 \\u56826 x}", u"\U0001F1FAx"_s);
        row("negative unicode with fallback", "\\u-3913?\\u8364\\'80 x}", u"\uF0B7€ x"_s);
        row("fallback of several items", "\\uc2\\u26085 ab\\u26412\\'93\\'fac}", u"日本c"_s);
        row("fallback ends with the group", "{\\uc3\\u26085 a}bcd}", u"日bcd"_s);
        row("lone surrogates", "\\uc0\\u55356 x\\u56826 y}", u"\uFFFDx\uFFFDy"_s);
        row("unicode out of range", "\\uc0\\u99999999 \\u-99999999 \\u0 \\u-1 x}", u"\uFFFD\uFFFD\uFFFD\uFFFDx"_s);
        row("font's own character set", "{\\fonttbl\\f0\\fcharset77 Geneva;\\f1\\fcharset204 Arial;}\\'8a\\f1\\'e4}",
            u"äд"_s);
        row("multi-byte character set", "{\\fonttbl{\\f0\\fcharset128 Osaka;}}\\f0\\'93\\'fa\\'96\\'7bA}", u"日本A"_s);
        row("multi-byte text before a paragraph's end",
            "{\\fonttbl{\\f0\\fcharset128 Osaka;}}\\f0\\'93\\'fa\\\n\\'96\\'7b}", u"日\n本"_s);
        row("Mac Roman document", "\\mac\\ansicpg10000 \\'8a\xAC}", u"ä¨"_s);
        row("unknown destination is skipped", "a{\\*\\unknown b{c}}{\\unknown d}e}", u"ade"_s);
        row("always skipped groups", "a{\\info{\\title b}}{\\stylesheet c}{\\pict 00ff}{\\xe d}e}", u"ae"_s);
        row("list text is text", "{\\*\\listtable{x}}\\ls1{\\listtext\t\\'95\t}a}", u"\t•\ta"_s);
        row("binary is skipped", "a\\bin3 }}}b}", u"ab"_s);
        row("binary longer than the text", "a\\bin2147483647 b}", u"a"_s);
        row("negative binary", "a\\bin-5 b}", u"ab"_s);
        row("link shows its result", "{\\field{\\*\\fldinst{HYPERLINK \"https://e.org\"}}{\\fldrslt shown}}}",
            u"shown"_s);
        row("what follows the last brace is nothing", "a}b}c", u"a"_s);
        row("not sign is no attachment by itself", "\xAC}", u"¬"_s);
    }

    void readsText()
    {
        QFETCH(QByteArray, rtf);
        QFETCH(QString, text);

        QTextDocument document;
        Rtf::read(rtf, {}).text.fill(document);
        QCOMPARE(textOf(document), text);
    }

    void readsFormatsOfThePlatformsEditor()
    {
        const QByteArray rtf = R"({\rtf1\ansi\ansicpg1252\cocoartf2822
\cocoatextscaling0\cocoaplatform0{\fonttbl\f0\fswiss\fcharset0 Helvetica;\f1\froman\fcharset0 Times-BoldItalic;}
{\colortbl;\red255\green255\blue255;\red0\green0\blue255;\red1\green1\blue1;}
{\*\expandedcolortbl;;\csgenericrgb\c0\c0\c100000;\csgray\c100000\cname labelColor;}
\pard\tx720\tqr\tx1440\pardeftab720\li300\fi-150\sl288\slmult1\qc\partightenfactor0

\f0\fs24 \cf0 plain \f1\b\i\fs37 \cf2 styled\
\pard\ql\cf3\plain next\up12 2})";
        QTextDocument document;
        const Rtf::ReadResult result = Rtf::read(rtf, {});
        QCOMPARE(result.warnings, QStringList());
        result.text.fill(document);

        const QTextBlock block = document.begin();
        QCOMPARE(block.blockFormat().alignment(), Qt::AlignHCenter);
        QCOMPARE(block.blockFormat().leftMargin(), 20.0);
        QCOMPARE(block.blockFormat().textIndent(), -10.0);
        QCOMPARE(block.blockFormat().lineHeight(), 120.0);
        QCOMPARE(block.blockFormat().tabPositions(),
            (QList<QTextOption::Tab>{{48, QTextOption::LeftTab}, {96, QTextOption::RightTab}}));
        auto run = block.begin();
        QCOMPARE(run.fragment().charFormat().fontFamilies().toStringList(), QStringList(u"Helvetica"_s));
        QVERIFY(!run.fragment().charFormat().hasProperty(QTextFormat::ForegroundBrush));
        const QTextCharFormat styled = (++run).fragment().charFormat();
        QCOMPARE(styled.fontFamilies().toStringList(), QStringList(u"Times"_s));
        QCOMPARE(styled.fontPointSize(), 18.5);
        QCOMPARE(styled.fontWeight(), int(QFont::Bold));
        QVERIFY(styled.fontItalic());
        QCOMPARE(styled.foreground().color(), QColor(Qt::blue));
        const QTextBlock next = block.next();
        QCOMPARE(next.blockFormat().alignment(), Qt::AlignLeft | Qt::AlignAbsolute);
        QCOMPARE(next.begin().fragment().charFormat().fontPointSize(), 12.0);
        QCOMPARE((++next.begin()).fragment().charFormat().verticalAlignment(), QTextCharFormat::AlignSuperScript);
    }

    void readsAttachments()
    {
        const QByteArray rtf =
            "{\\rtf1\\ansi a{{\\NeXTGraphic My picture.tiff \\width400 \\height200 \\noorient\n}\xAC}"
            "{{\\NeXTGraphic other.pdf}\\'acb}{{\\NeXTGraphic gone.png}\\u172 ?c}{{\\NeXTGraphic gone.png}}d}";
        QTextDocument document;
        const Rtf::ReadResult result =
            Rtf::read(rtf, {{u"My picture.tiff"_s, "bytes", false}, {u"other.pdf"_s, "pdf", false}});
        result.text.fill(document);
        QCOMPARE(textOf(document), u"a\uFFFC\uFFFCb\uFFFCc\uFFFCd"_s);
        QCOMPARE(result.warnings.size(), 1);
        QCOMPARE(TextAttachment::in(document, u"My picture.tiff"_s)->contents, "bytes");
        const Rtf::Written written = Rtf::write(document);
        QCOMPARE(written.attachments.size(), 3);
        QVERIFY(written.rtf.contains("\\NeXTGraphic My picture.tiff \\width400 \\height200"));
    }

    void readingWhatWasWrittenGivesTheSameDocument()
    {
        for (quint32 seed = 1; seed <= 200; ++seed) {
            QRandomGenerator random(seed);
            QTextDocument original;
            fill(original, random);
            const QByteArray bytes = Rtfd::write(original);

            QTextDocument copy;
            const Result<QStringList> warnings = Rtfd::read(bytes, copy);
            QCOMPARE(warnings.error(), QString());
            QCOMPARE(*warnings, QStringList());
            const QStringList copied = described(copy).split(u'\n');
            const QStringList expected = described(original).split(u'\n');
            for (qsizetype line = 0; line < std::max(copied.size(), expected.size()); ++line) {
                QCOMPARE(copied.value(line), expected.value(line));
            }
            QCOMPARE(Rtfd::write(copy), bytes);
        }
    }

    void onlyTheCharacterIsAnAttachment()
    {
        QTextDocument document;
        TextAttachment{u"p.png"_s, pngOf({2, 2}), false}.addTo(document);
        QTextCursor(&document).insertText(u"a\uFFFCbc\uFFFC"_s, TextAttachment::imageFormat(u"p.png"_s, {}));
        const QByteArray bytes = Rtfd::write(document);
        QCOMPARE(bytes.count("\\NeXTGraphic"), 2);
        QTextDocument copy;
        QVERIFY(Rtfd::read(bytes, copy));
        QCOMPARE(textOf(copy), u"a\uFFFCbc\uFFFC"_s);
    }

    void everyUnderlineIsOne()
    {
        const QByteArrayList words{
            "ul", "uldb", "ulth", "uld", "uldashd", "uldashdd", "ulhwave", "ulldash", "ulthdashdd"};
        for (const QByteArray& word : words) {
            QTextDocument document;
            Rtf::read(QByteArray("{\\rtf1\\" + word + " a\\ulc3\\ulnone\\ulc3 b}"), {}).text.fill(document);
            auto run = document.begin().begin();
            QVERIFY2(run.fragment().charFormat().fontUnderline(), word.constData());
            QVERIFY2(!(++run).fragment().charFormat().fontUnderline(), word.constData());
        }
    }

    void textFromWebPagesIsKept()
    {
        const auto image = [](const QSize& size) -> QByteArray {
            return "<img src='data:image/png;base64," + pngOf(size).toBase64() + "'/>";
        };
        QTextDocument page;
        page.setDefaultFont(QFont(u"DejaVu Sans"_s, 10));
        page.setHtml(QString::fromLatin1("<p>a<span style='font-size:20px'>b</span><big>c</big></p><p>" +
                                         image({2, 3}) + image({4, 5}) + "</p><ul><li>d</li></ul><ol><li>e</li></ol>"));
        QTextDocument copy;
        QVERIFY(Rtfd::read(Rtfd::write(page), copy));
        QList<qreal> sizes;
        for (auto it = copy.begin().begin(); !it.atEnd(); ++it) {
            sizes.append(it.fragment().charFormat().fontPointSize());
        }
        QCOMPARE(sizes, (QList<qreal>{10, 15, 12}));
        QVERIFY(textOf(copy).endsWith(u"\n\t•\td\n\t1.\te"));
        const QList<TextAttachment> files = Rtf::write(copy).attachments;
        QCOMPARE(files.size(), 2);
        QCOMPARE(TextAttachment::picture(files[0].contents).size(), QSize(2, 3));
        QCOMPARE(TextAttachment::picture(files[1].contents).size(), QSize(4, 5));
    }

    void writesTheMinimalWrapper()
    {
        // The layout of a document that the platform wrote, but for the modification time.
        const QByteArray expected =
            QByteArray::fromHex("72746664000000000300000002000000070000005458542e727466010000002e"
                                "120000002b000000010000000a0000007b5c72746631204869 7d"
                                "01000000230000000100000007000000"
                                "5458542e7274661000000000000000b60100000000000000000000");
        QCOMPARE(Rtfd::writeWrapper({{u"TXT.rtf"_s, "{\\rtf1 Hi}", false}}).toHex(), expected.toHex());
        QTextDocument document;
        QVERIFY(Rtfd::read(expected, document));
        QCOMPARE(textOf(document), u"Hi"_s);
    }

    void deepGroupsAndLongTablesEnd_data()
    {
        QTest::addColumn<QByteArray>("rtf");
        QTest::addColumn<QString>("text");

        QTest::newRow("a million groups opened") << QByteArray("{\\rtf1 ") + QByteArray(1'000'000, '{') + "x" << u"x"_s;
        QTest::newRow("a million groups")
            << QByteArray("{\\rtf1 ") + QByteArray(1'000'000, '{') + "x" + QByteArray(1'000'000, '}') + "y}" << u"xy"_s;
        QTest::newRow("a million tabs") << QByteArray("{\\rtf1 ") + QByteArray("{\\tx1}\\tx2").repeated(500'000) + "x}"
                                        << u"x"_s;
        QTest::newRow("a million fields")
            << QByteArray("{\\rtf1 ") + QByteArray("{\\field ").repeated(500'000) + "x}" << u"x"_s;
    }

    void deepGroupsAndLongTablesEnd()
    {
        QFETCH(QByteArray, rtf);
        QFETCH(QString, text);

        QTextDocument document;
        Rtf::read(rtf, {}).text.fill(document);
        QCOMPARE(textOf(document), text);
    }

    void everyTruncationShowsWhatIsThere()
    {
        QTextDocument original;
        QTextCursor cursor(&original);
        cursor.insertText(u"first"_s);
        TextAttachment{u"p.png"_s, pngOf({2, 2}), false}.addTo(original);
        cursor.insertImage(TextAttachment::imageFormat(u"p.png"_s, {}));
        cursor.insertText(u" last"_s);
        const QByteArray bytes = Rtfd::write(original);
        const qsizetype afterFirst = bytes.indexOf("first") + 5;
        for (qsizetype length = 0; length < bytes.size(); ++length) {
            QTextDocument document;
            const bool found = bool(Rtfd::read(bytes.first(length), document));
            // "\\pard" cut short is a paragraph.
            QVERIFY(textOf(original).startsWith(textOf(document).trimmed()));
            QCOMPARE(found && textOf(document).startsWith(u"first"), length >= afterFirst);
        }
    }

    void hostileNamesStayInsideTheText()
    {
        const QByteArray rtf =
            "{\\rtf1{{\\NeXTGraphic ../../etc/passwd}\xAC}{{\\NeXTGraphic ..}\xAC}{{\\NeXTGraphic TXT.rtf}\xAC}}";
        const QByteArray bytes = Rtfd::writeWrapper({{u"TXT.rtf"_s, rtf, false},
            {u"../../etc/passwd"_s, "stored", false}, {u"twice"_s, "1", false}, {u"twice"_s, "2", false}});
        const Rtfd::Contents contents = Rtfd::readWrapper(bytes);
        QCOMPARE(contents.files.size(), 3);
        QCOMPARE(contents.files[2].contents, "1");
        QTextDocument document;
        QVERIFY(Rtfd::read(bytes, document));
        const QList<TextAttachment> files = Rtf::write(document).attachments;
        QCOMPARE(files.size(), 3);
        QCOMPARE(files[0], (TextAttachment{u".._.._etc_passwd"_s, "stored", false}));
        QCOMPARE(files[1].name, u"_.."_s);
        QCOMPARE(files[2], (TextAttachment{u"_TXT.rtf"_s, {}, false}));
    }

    void pictureBombIsNotDecoded()
    {
        QByteArray bomb = pngOf({2, 2});
        // The size in a PNG's header; the checksum behind it comes too late to be asked.
        bomb.replace(16, 8, QByteArray::fromHex("0000ffff0000ffff"));
        QVERIFY(TextAttachment::picture(bomb).isNull());
        QCOMPARE(TextAttachment::picture(pngOf({3, 2})).size(), QSize(3, 2));
    }
};

QTEST_MAIN(RichTextTest)
#include "RichTextTest.moc"
