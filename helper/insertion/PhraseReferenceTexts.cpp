// SPDX-License-Identifier: MIT
#include "PhraseReferenceTexts.h"

#include "PhraseText.h"
#include "TextTokens.h"

#include <core/parseNSStringStamp4strftime.h>

#include <algorithm>

namespace {

/// Each is looked for in the whole document.
constexpr int maximumReferences = 200;

} // namespace

PhraseReferenceTexts::PhraseReferenceTexts(
    const Phrase& of, const std::vector<PropertyList::ArrayPointer>& documents, const QDateTime& moment)
    : m_documents(documents)
    , m_moment(moment)
    , m_open{of}
    , m_unitsLeft(PhraseText::maximumLength)
    , m_referencesLeft(maximumReferences)
{
}

QString PhraseReferenceTexts::filled(QStringView literal)
{
    QString text = literal.toString();
    parseNSStringStamp4strftime(text, m_moment);
    m_unitsLeft -= text.size();
    return text;
}

QString PhraseReferenceTexts::textOf(QStringView reference)
{
    --m_referencesLeft;
    const Phrase phrase = isExhausted() ? Phrase() : find(TextTokens::nameIn(reference));
    if (!phrase) {
        m_unitsLeft -= reference.size();
        return reference.toString();
    }
    if (std::ranges::find(m_open, phrase) != m_open.end()) {
        return {};
    }
    m_open.push_back(phrase);
    const QString stored = phrase->value(PhraseKey::plainText).textValue();
    QString text;
    for (const TextToken& token : TextTokens::of(stored)) {
        const QStringView part = QStringView(stored).sliced(token.position, token.length);
        if (token.kind == TextToken::Kind::Literal) {
            text += filled(part);
        } else if (token.kind == TextToken::Kind::Reference) {
            text += textOf(part);
        }
        if (isExhausted()) {
            break;
        }
    }
    m_open.pop_back();
    return text;
}

Phrase PhraseReferenceTexts::find(QStringView name) const
{
    const auto isWanted = [name](const PropertyList::Value& value) {
        const PropertyList::Dictionary* const entry = value.dictionaryInPlace();
        const PropertyList::Value* const phrase = entry != nullptr ? entry->find(PhraseKey::phrase) : nullptr;
        return phrase != nullptr && phrase->textValue() == name;
    };
    for (const PropertyList::ArrayPointer& phrases : m_documents) {
        if (phrases) {
            const PropertyList::Array& document = *phrases;
            if (const auto found = std::ranges::find_if(document, isWanted); found != document.end()) {
                return Phrase(found->dictionary());
            }
        }
    }
    return {};
}
