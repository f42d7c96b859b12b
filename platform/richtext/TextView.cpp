// SPDX-License-Identifier: MIT
#include "TextView.h"

#include "ParagraphSide.h"
#include "Rtfd.h"
#include "TextAttachment.h"

#include <QFontDatabase>
#include <QSignalBlocker>
#include <QTextBlock>
#include <QTextDocument>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr qreal systemFontPoints = 12.0;

} // namespace

TextView::TextView(QWidget* parent)
    : QTextEdit(parent)
{
    setAcceptRichText(false);
    setTabChangesFocus(false);
    document()->setDefaultFont(systemFont());
    showFilesReadably();
    connect(this, &QTextEdit::textChanged, this, &TextView::textDidChange);
}

QFont TextView::systemFont()
{
    QFont font = QFontDatabase::systemFont(QFontDatabase::GeneralFont);
    font.setPointSizeF(systemFontPoints);
    return font;
}

void TextView::setRichText(bool rich)
{
    setAcceptRichText(rich);
    if (m_richText != rich) {
        m_richText = rich;
        Q_EMIT richTextChanged(rich);
    }
}

QString TextView::string() const
{
    // Unlike toPlainText() this keeps line separators and no-break spaces, which are part of what the user wrote.
    QString text = document()->toRawText();
    const auto endsParagraph = [](QChar character) {
        return character == QChar::ParagraphSeparator || character == u'\uFDD0' || character == u'\uFDD1';
    };
    std::replace_if(text.begin(), text.end(), endsParagraph, QChar(u'\n'));
    return text;
}

void TextView::setString(const QString& text)
{
    {
        const QSignalBlocker quiet(this);
        // The text would take over the format of the insertion point, which may be that of a picture.
        setTextCursor(QTextCursor(document()));
        setCurrentCharFormat({});
        setPlainText(text);
        TextAttachment::removeAllFrom(*document());
    }
    finishReplacing();
}

void TextView::insertText(const QString& text)
{
    if (isReadOnly()) {
        return;
    }
    textCursor().insertText(text, TextAttachment::textFormat(currentCharFormat()));
    ensureCursorVisible();
}

Result<QStringList> TextView::replaceAllWithRTFD(const QByteArray& rtfd)
{
    Result<QStringList> result = QStringList();
    {
        const QSignalBlocker quiet(this);
        // An insertion point that the text pushes to its end would have all of it laid out on the way back.
        QTextCursor start(document());
        start.setKeepPositionOnInsert(true);
        setTextCursor(start);
        result = Rtfd::read(rtfd, *document());
        setTextCursor(QTextCursor(document()));
        const QTextBlock first = document()->begin();
        setCurrentCharFormat(first.begin().atEnd() ? first.charFormat() : first.begin().fragment().charFormat());
    }
    finishReplacing();
    return result;
}

void TextView::finishReplacing()
{
    document()->setModified(false);
    moveCursor(QTextCursor::Start);
    // Whoever follows the cursor's formats has heard nothing while the text was replaced.
    Q_EMIT cursorPositionChanged();
}

QByteArray TextView::RTFDFromAll() const
{
    return Rtfd::write(*document());
}

void TextView::resetAttributes()
{
    const QSignalBlocker quiet(this);
    document()->setUndoRedoEnabled(false);
    document()->setDefaultFont(systemFont());
    QTextCursor all(document());
    all.select(QTextCursor::Document);
    all.setCharFormat({});
    setCurrentCharFormat({});
    document()->setUndoRedoEnabled(true);
}

void TextView::setFontOfAll(const QFont& font)
{
    QTextCharFormat format;
    format.setFontFamilies({font.family()});
    format.setFontPointSize(font.pointSizeF());
    format.setFontWeight(font.weight());
    format.setFontItalic(font.italic());
    {
        const QSignalBlocker quiet(this);
        QTextCursor all(document());
        all.select(QTextCursor::Document);
        all.mergeCharFormat(format);
        mergeCurrentCharFormat(format);
    }
    Q_EMIT currentCharFormatChanged(currentCharFormat());
}

void TextView::applyCharacterFormat(const QTextCharFormat& format)
{
    mergeCurrentCharFormat(format);
    Q_EMIT typingAttributesDidChange();
}

void TextView::applySide(Qt::Alignment side)
{
    setAlignment(ParagraphSide::alignmentTo(side));
    Q_EMIT typingAttributesDidChange();
}
