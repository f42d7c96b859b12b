// SPDX-License-Identifier: MIT
#include "RichPhraseText.h"

#include "PhraseReferenceTexts.h"

#include <platform/richtext/Rtfd.h>
#include <platform/richtext/TextAttachment.h>

#include <QMimeDatabase>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextDocumentFragment>
#include <QUrl>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

using Kind = TextToken::Kind;

QTextCursor selected(QTextDocument& document, int begin, int end)
{
    QTextCursor cursor(&document);
    cursor.setPosition(begin);
    cursor.setPosition(end, QTextCursor::KeepAnchor);
    return cursor;
}

int endOf(const QTextDocument& document)
{
    return document.characterCount() - 1;
}

/// @p text of a document as programs take it.
QString plain(QString text)
{
    text.replace(QChar::ParagraphSeparator, u'\n').replace(QChar::LineSeparator, u'\n');
    return text.remove(QChar::ObjectReplacementCharacter);
}

/// A stretch of text with one format.
struct Run
{
    int begin;
    int end;
    QTextCharFormat format;
};

/// The last first, so that changes of one do not move those that follow.
std::vector<Run> runsOf(const QTextDocument& document)
{
    std::vector<Run> runs;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextFragment fragment = it.fragment();
            runs.push_back({fragment.position(), fragment.position() + fragment.length(), fragment.charFormat()});
        }
    }
    std::ranges::reverse(runs);
    return runs;
}

/// Puts the pictures into the names under which they are shown, so that another program has them too; other files
/// cannot be handed on and go.
void embedPictures(QTextDocument& document)
{
    for (const Run& run : runsOf(document)) {
        QTextImageFormat format = run.format.toImageFormat();
        const auto name = format.isImageFormat() ? TextAttachment::nameOf(QUrl(format.name())) : std::nullopt;
        if (!name) {
            continue;
        }
        QTextCursor cursor = selected(document, run.begin, run.end);
        const auto file = TextAttachment::in(document, *name);
        if (!file || !file->isPicture()) {
            cursor.removeSelectedText();
            continue;
        }
        const QString type = QMimeDatabase().mimeTypeForData(file->contents).name();
        format.setName(u"data:"_s + type + u";base64,"_s + QString::fromLatin1(file->contents.toBase64()));
        cursor.setCharFormat(format);
    }
}

/// Resolves a document from its end to its start, so that positions not reached yet stay right.
class RichSteps final
{
public:
    RichSteps(QTextDocument& document, PhraseReferenceTexts& references)
        : m_document(document)
        , m_references(references)
        , m_runs(runsOf(document))
    {
    }

    PhraseText result()
    {
        const QString text = m_document.toRawText();
        std::vector<TextToken> tokens = TextTokens::of(text);
        std::ranges::reverse(tokens);
        for (const TextToken& token : tokens) {
            resolve(token, QStringView(text).sliced(token.position, token.length));
            if (m_references.isExhausted()) {
                return {};
            }
        }
        if (m_caretFromEnd) {
            const QTextCursor rest = selected(m_document, endOf(m_document) - *m_caretFromEnd, endOf(m_document));
            m_result.charactersAfterCaret = caretStepsIn(rest.selectedText());
        }
        embedPictures(m_document);
        cutAtMoves();
        return std::move(m_result);
    }

private:
    struct Move
    {
        int fromEnd;
        CaretMove direction;
    };

    void resolve(const TextToken& token, QStringView part)
    {
        const auto begin = int(token.position);
        const int end = begin + int(token.length);
        if (token.kind == Kind::Literal) {
            fill(begin, end, part);
            return;
        }
        QTextCursor cursor = selected(m_document, begin, end);
        if (token.kind == Kind::Reference) {
            cursor.insertText(m_references.textOf(part));
            return;
        }
        cursor.removeSelectedText();
        const int fromEnd = endOf(m_document) - begin;
        if (const auto move = RichPhraseText::moveOf(token.kind)) {
            m_moves.push_back({fromEnd, *move});
        } else if (token.kind == Kind::Caret) {
            m_caretFromEnd = m_caretFromEnd.value_or(fromEnd);
        } else {
            m_result.keepsTrigger = m_result.keepsTrigger.value_or(token.kind == Kind::KeepTrigger);
        }
    }

    /// Fills in each run by itself, so that it keeps its format.
    void fill(int begin, int end, QStringView literal)
    {
        for (const Run& run : m_runs) {
            const int from = std::max(run.begin, begin);
            const int to = std::min(run.end, end);
            if (from >= to) {
                continue;
            }
            const QStringView before = literal.sliced(from - begin, to - from);
            if (const QString after = m_references.filled(before); after != before) {
                selected(m_document, from, to).insertText(after, run.format);
            }
        }
    }

    /// Pictures that were left out may have shortened the text: then the keys are pressed where it ends.
    void cutAtMoves()
    {
        int begin = 0;
        std::ranges::reverse(m_moves);
        for (const Move& move : m_moves) {
            const int end = std::max(begin, endOf(m_document) - move.fromEnd);
            addPiece(begin, end);
            m_result.steps.emplace_back(move.direction);
            begin = end;
        }
        addPiece(begin, endOf(m_document));
    }

    void addPiece(int begin, int end)
    {
        if (begin < end) {
            const QTextCursor cursor = selected(m_document, begin, end);
            m_result.steps.emplace_back(TextPiece{plain(cursor.selectedText()), cursor.selection().toHtml()});
        }
    }

    QTextDocument& m_document;
    PhraseReferenceTexts& m_references;
    std::vector<Run> m_runs;
    /// The last first.
    std::vector<Move> m_moves;
    std::optional<int> m_caretFromEnd;
    PhraseText m_result;
};

} // namespace

std::optional<PhraseText> RichPhraseText::of(const QByteArray& rtfd, PhraseReferenceTexts& references)
{
    QTextDocument document;
    document.setUndoRedoEnabled(false);
    if (!Rtfd::read(rtfd, document) || document.isEmpty()) {
        return {};
    }
    return RichSteps(document, references).result();
}

QString RichPhraseText::appended(const QString& html, const QString& text)
{
    QTextDocument document;
    document.setHtml(html);
    QTextCursor cursor(&document);
    cursor.movePosition(QTextCursor::End);
    cursor.insertText(text);
    return document.toHtml();
}

std::optional<CaretMove> RichPhraseText::moveOf(Kind marker)
{
    switch (marker) {
    case Kind::Left:
        return CaretMove::Left;
    case Kind::Up:
        return CaretMove::Up;
    case Kind::Right:
        return CaretMove::Right;
    case Kind::Down:
        return CaretMove::Down;
    default:
        return {};
    }
}
