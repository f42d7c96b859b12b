// SPDX-License-Identifier: MIT
#include "PhraseText.h"

#include "PhraseReferenceTexts.h"
#include "RichPhraseText.h"
#include "TextTokens.h"

#include <QDateTime>
#include <QTextBoundaryFinder>

namespace {

using Kind = TextToken::Kind;

/// Puts the steps of a plain text together.
class PlainSteps final
{
public:
    void append(const QString& text)
    {
        if (!std::holds_alternative<TextPiece>(m_result.steps.back())) {
            m_result.steps.emplace_back(TextPiece{});
        }
        std::get<TextPiece>(m_result.steps.back()).plain += text;
        m_afterCaret += text;
    }

    void take(Kind marker)
    {
        if (const auto move = RichPhraseText::moveOf(marker)) {
            m_result.steps.emplace_back(*move);
        } else if (marker == Kind::Caret) {
            m_hasCaret = true;
            m_afterCaret.clear();
        } else {
            m_result.keepsTrigger = marker == Kind::KeepTrigger;
        }
    }

    PhraseText result() &&
    {
        if (m_hasCaret) {
            m_result.charactersAfterCaret = caretStepsIn(m_afterCaret);
        }
        return std::move(m_result);
    }

private:
    PhraseText m_result{{TextPiece{}}, {}, {}};
    bool m_hasCaret = false;
    QString m_afterCaret;
};

PhraseText plainSteps(const QString& stored, PhraseReferenceTexts& references)
{
    PlainSteps steps;
    for (const TextToken& token : TextTokens::of(stored)) {
        const QStringView part = QStringView(stored).sliced(token.position, token.length);
        switch (token.kind) {
        case Kind::Literal:
            steps.append(references.filled(part));
            break;
        case Kind::Reference:
            steps.append(references.textOf(part));
            break;
        default:
            steps.take(token.kind);
        }
        if (references.isExhausted()) {
            break;
        }
    }
    return std::move(steps).result();
}

} // namespace

bool PhraseText::isIn(const Phrase& phrase)
{
    return phrase.rtfd() || !phrase->value(PhraseKey::plainText).textValue().isEmpty();
}

std::optional<PhraseText> PhraseText::of(
    const Phrase& phrase, const std::vector<PropertyList::ArrayPointer>& documents, const QDateTime& moment)
{
    if (!isIn(phrase)) {
        return {};
    }
    PhraseReferenceTexts references(phrase, documents, moment);
    const std::optional<QByteArray> rtfd = phrase.rtfd();
    std::optional<PhraseText> result = rtfd ? RichPhraseText::of(*rtfd, references) : std::nullopt;
    if (!result) {
        result = plainSteps(phrase->value(PhraseKey::plainText).textValue(), references);
    }
    return references.isExhausted() ? std::nullopt : result;
}

qsizetype caretStepsIn(QStringView text)
{
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    qsizetype steps = 0;
    while (finder.toNextBoundary() >= 0) {
        ++steps;
    }
    return steps;
}
