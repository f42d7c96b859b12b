// SPDX-License-Identifier: MIT
#include <platform/richtext/ParagraphSide.h>
#include <platform/richtext/Rtfd.h>

#include <QTest>
#include <QTextBlock>
#include <QTextDocument>

using namespace Qt::StringLiterals;

class ParagraphSideTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void sidesAreThoseThatAReaderSees_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<Qt::Alignment>("alignment");
        QTest::addColumn<QByteArray>("word");

        const auto row = [](const char* name, const QString& text, Qt::Alignment alignment, const QByteArray& word) {
            QTest::newRow(name) << text << alignment << word;
        };
        const QString hebrew = u"\u05E9\u05DC\u05D5\u05DD"_s;
        row("right", u"a"_s, Qt::AlignRight, "\\qr ");
        row("absolute right, as in web pages", u"a"_s, Qt::AlignRight | Qt::AlignAbsolute, "\\qr ");
        row("absolute left", u"a"_s, Qt::AlignLeft | Qt::AlignAbsolute, "\\ql ");
        row("leading side of Hebrew", hebrew, Qt::AlignLeft, "\\qr ");
        row("trailing side of Hebrew", hebrew, Qt::AlignRight, "\\ql ");
        row("absolute right of Hebrew", hebrew, Qt::AlignRight | Qt::AlignAbsolute, "\\qr ");
        row("absolute left of Hebrew", hebrew, Qt::AlignLeft | Qt::AlignAbsolute, "\\ql ");
        row("middle of Hebrew", hebrew, Qt::AlignHCenter, "\\qc ");
        row("natural side of Hebrew", hebrew, {}, "\\qnatural ");
    }

    void sidesAreThoseThatAReaderSees()
    {
        QFETCH(QString, text);
        QFETCH(Qt::Alignment, alignment);
        QFETCH(QByteArray, word);

        QTextDocument document;
        QTextCursor cursor(&document);
        cursor.insertText(text);
        if (alignment) {
            QTextBlockFormat format;
            format.setAlignment(alignment);
            cursor.setBlockFormat(format);
        }
        const QByteArray bytes = Rtfd::write(document);
        QVERIFY(bytes.contains(word));
        QTextDocument copy;
        QVERIFY(Rtfd::read(bytes, copy));
        QCOMPARE(ParagraphSide::of(copy.begin()), ParagraphSide::of(document.begin()));
    }
};

QTEST_MAIN(ParagraphSideTest)
#include "ParagraphSideTest.moc"
