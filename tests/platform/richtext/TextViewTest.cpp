// SPDX-License-Identifier: MIT
#include <platform/richtext/Rtfd.h>
#include <platform/richtext/TextAttachment.h>
#include <platform/richtext/TextView.h>

#include <QClipboard>
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QMimeData>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBlock>

#include <tuple>

using namespace Qt::StringLiterals;

class TextViewTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { m_view = std::make_unique<TextView>(); }

    void cleanup() { m_view.reset(); }

    void stringKeepsWhatTheUserWrote()
    {
        const QString written = u"a\u2028b\u00A0c\n\n\td \U0001F600\n"_s;
        m_view->setString(written);
        QCOMPARE(m_view->string(), written);
        QVERIFY(!m_view->document()->isUndoAvailable());
    }

    void picturesArePastedOnlyIntoRichText()
    {
        QTemporaryDir folder;
        QFile file(folder.filePath(u"note.txt"_s));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write("content") > 0);
        file.close();
        auto* const urls = new QMimeData;
        urls->setUrls({QUrl::fromLocalFile(file.fileName())});
        QGuiApplication::clipboard()->setMimeData(urls);
        m_view->setString({});
        m_view->paste();
        QVERIFY(m_view->string().endsWith(u"note.txt"));

        setRich();
        m_view->setString({});
        m_view->paste();
        m_view->paste();
        QCOMPARE(m_view->string(), u"\uFFFC\uFFFC"_s);
        QCOMPARE(TextAttachment::in(*m_view->document(), u"note.txt"_s)->contents, "content");
        QVERIFY(TextAttachment::in(*m_view->document(), u"note 1.txt"_s).has_value());
    }

    void copiedRichTextBringsItsFilesAlong()
    {
        setRich();
        pastePicture();
        m_view->selectAll();
        m_view->copy();
        m_view->setString(u"next "_s);
        m_view->moveCursor(QTextCursor::End);
        m_view->paste();
        QCOMPARE(m_view->string(), u"next \uFFFC"_s);
        const auto file = TextAttachment::in(*m_view->document(), u"Pasted Graphic.png"_s);
        QVERIFY(file.has_value());
        QCOMPARE(TextAttachment::picture(file->contents).size(), QSize(6, 4));
    }

    void textBesideAPictureIsText()
    {
        setRich();
        pastePicture();
        m_view->insertText(u"b"_s);
        m_view->moveCursor(QTextCursor::Start);
        QGuiApplication::clipboard()->setText(u"a\n"_s);
        m_view->paste();
        QCOMPARE(m_view->string(), u"a\n\uFFFCb"_s);
        m_view->selectAll();
        m_view->copy();
        QCOMPARE(QGuiApplication::clipboard()->mimeData()->html().count(u"<img"), 1);
        m_view->setString(u"next"_s);
        QVERIFY(!m_view->document()->begin().begin().fragment().charFormat().isImageFormat());
    }

    void textThatIsNotEditableTakesNothing()
    {
        setRich();
        m_view->setReadOnly(true);
        m_view->insertText(u"a"_s);
        pastePicture();
        QCOMPARE(m_view->string(), QString());
    }

    void fileIsAsWideAsItsName()
    {
        setRich();
        m_view->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_view.get()));
        pastePicture();
        const auto png = TextAttachment::in(*m_view->document(), u"Pasted Graphic.png"_s);
        const QString name = u"read this.txt"_s;
        const QByteArray rtf = "{\\rtf1{{\\NeXTGraphic read this.txt \\width640 \\height640}\xAC}"
                               "{{\\NeXTGraphic p.png \\width640 \\height640}\xAC}}";
        std::ignore = m_view->replaceAllWithRTFD(Rtfd::writeWrapper(
            {{u"TXT.rtf"_s, rtf, false}, {name, "text", false}, {u"p.png"_s, png->contents, false}}));
        const auto edgeAt = [this](int position) {
            QTextCursor cursor(m_view->document());
            cursor.setPosition(position);
            return m_view->cursorRect(cursor).left();
        };
        QVERIFY(edgeAt(1) - edgeAt(0) >= QFontMetrics(m_view->font()).horizontalAdvance(name));
        QCOMPARE(edgeAt(2) - edgeAt(1), 32);
        QCOMPARE(m_view->RTFDFromAll().count("\\width640 \\height640"), 2);
    }

    void oneTextsFilesDoNotStayForTheNext()
    {
        const QByteArray rtf = "{\\rtf1{{\\NeXTGraphic p.png}\xAC}}";
        TextAttachment{u"p.png"_s, "other phrase", false}.addTo(*m_view->document());
        QVERIFY(!m_view->replaceAllWithRTFD("rtfd, but broken"));
        QVERIFY(TextAttachment::in(*m_view->document(), u"p.png"_s).has_value());
        QVERIFY(m_view->replaceAllWithRTFD(rtf));
        QCOMPARE(TextAttachment::in(*m_view->document(), u"p.png"_s)->contents, QByteArray());
        m_view->setString({});
        QVERIFY(!TextAttachment::in(*m_view->document(), u"p.png"_s));
    }

private:
    void setRich()
    {
        m_view->setRichText(true);
        m_view->setImportsGraphics(true);
    }

    void pastePicture()
    {
        QImage picture(6, 4, QImage::Format_RGB32);
        picture.fill(Qt::blue);
        QGuiApplication::clipboard()->setImage(picture);
        m_view->paste();
    }

    std::unique_ptr<TextView> m_view;
};

QTEST_MAIN(TextViewTest)
#include "TextViewTest.moc"
