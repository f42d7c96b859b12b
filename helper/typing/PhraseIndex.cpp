// SPDX-License-Identifier: MIT
#include "PhraseIndex.h"

#include <core/SharedNames.h>

#include <algorithm>
#include <iterator>
#include <utility>

using PropertyList::Dictionary;
using PropertyList::DictionaryPointer;

namespace {

QStringView textAt(const Dictionary& entry, const QString& key)
{
    const PropertyList::Value* const value = entry.find(key);
    return value ? value->stringView() : QStringView();
}

std::strong_ordering orderBackwards(QStringView text, QStringView other)
{
    return std::lexicographical_compare_three_way(text.rbegin(), text.rend(), other.rbegin(), other.rend(),
        [](QChar left, QChar right) { return left.unicode() <=> right.unicode(); });
}

/// The number of characters at the end that both have.
qsizetype commonEnd(QStringView text, QStringView other)
{
    return std::mismatch(text.rbegin(), text.rend(), other.rbegin(), other.rend()).first - text.rbegin();
}

/// Null where there is none.
const Dictionary* entryAt(const PropertyList::ArrayPointer& phrases, quint32 row)
{
    return row < phrases->size() ? phrases->at(row).dictionaryInPlace() : nullptr;
}

/// Nothing below this character combines with another.
constexpr QChar firstCombining(0x300);

} // namespace

PhraseIndex::PhraseIndex(const PropertyList::ArrayPointer& phrases)
    : m_phrases(phrases)
    , m_rows(phrases ? quint32(phrases->size()) : 0)
{
    m_nodes.reserve(m_rows);
    for (quint32 row = 0; row < m_rows; ++row) {
        const Dictionary* const entry = m_phrases->at(row).dictionaryInPlace();
        const QStringView text = entry ? textAt(*entry, PhraseKey::phrase) : QStringView();
        add(text, row);
        if (std::ranges::any_of(text, [](QChar character) { return character >= firstCombining; })) {
            const QString composed = text.toString().normalized(QString::NormalizationForm_C);
            if (composed != text) {
                m_composed.push_back({composed, row});
                add(composed, m_rows + quint32(m_composed.size()) - 1);
            }
        }
    }
    std::ranges::sort(m_nodes, [this](const Node& node, const Node& other) {
        const std::strong_ordering byPhrase = orderOfPhrases(node, other);
        return std::is_eq(byPhrase) ? rowOf(node) < rowOf(other) : std::is_lt(byPhrase);
    });
    // Of equal phrases only the first is ever found, and to pass over thousands of others would take its time.
    const auto same = std::unique(m_nodes.begin(), m_nodes.end(),
        [this](const Node& node, const Node& other) { return std::is_eq(orderOfPhrases(node, other)); });
    m_nodes.erase(same, m_nodes.end());
    m_nodes.shrink_to_fit();
}

PhraseIndex::Match PhraseIndex::longestAtEndOf(QStringView text, QStringView application) const
{
    while (!text.isEmpty()) {
        const Node sought = nodeOf(text, 0);
        const auto after = std::partition_point(m_nodes.begin(), m_nodes.end(),
            [&](const Node& candidate) { return std::is_lteq(order(candidate, sought, text)); });
        if (after == m_nodes.begin()) {
            return {};
        }
        // What the text ends with comes before it in order, and is an end of the phrase that comes just before it, too.
        const QStringView found = textOf(*std::prev(after));
        const qsizetype common = commonEnd(found, text);
        if (common > 0 && common == found.size()) {
            if (DictionaryPointer entry = countingEntry(after, found, application)) {
                return {std::move(entry), common};
            }
        }
        // It gets shorter each time, also where the document has changed and is not in order any more.
        text = text.last(std::max<qsizetype>(std::min({common, found.size() - 1, text.size() - 1}), 0));
    }
    return {};
}

size_t PhraseIndex::memory() const
{
    size_t bytes = m_nodes.capacity() * sizeof(Node) + m_composed.capacity() * sizeof(Composed);
    for (const Composed& composed : m_composed) {
        bytes += size_t(composed.text.size()) * sizeof(QChar);
    }
    return bytes;
}

PhraseIndex::Node PhraseIndex::nodeOf(QStringView text, quint32 phrase)
{
    const auto fromEnd = [text](qsizetype index) {
        return text.size() > index ? text[text.size() - 1 - index].unicode() : char16_t(0);
    };
    return {fromEnd(0), fromEnd(1), phrase};
}

void PhraseIndex::add(QStringView text, quint32 phrase)
{
    if (!text.isEmpty() && text.size() <= maximumLength) {
        m_nodes.push_back(nodeOf(text, phrase));
        m_longest = std::max(m_longest, text.size());
    }
}

quint32 PhraseIndex::rowOf(const Node& node) const
{
    return node.phrase < m_rows ? node.phrase : m_composed[node.phrase - m_rows].row;
}

/// Empty where the document has changed since.
QStringView PhraseIndex::textOf(const Node& node) const
{
    if (node.phrase >= m_rows) {
        return m_composed[node.phrase - m_rows].text;
    }
    const Dictionary* const entry = entryAt(m_phrases, node.phrase);
    return entry ? textAt(*entry, PhraseKey::phrase) : QStringView();
}

/// Of two phrases read backwards.
std::strong_ordering PhraseIndex::order(const Node& node, const Node& other, QStringView otherText) const
{
    const std::strong_ordering byCharacters =
        std::pair(node.last, node.previous) <=> std::pair(other.last, other.previous);
    return std::is_eq(byCharacters) ? orderBackwards(textOf(node), otherText) : byCharacters;
}

/// By the texts read backwards, then by the applications that the phrases are limited to.
std::strong_ordering PhraseIndex::orderOfPhrases(const Node& node, const Node& other) const
{
    const std::strong_ordering byText = order(node, other, textOf(other));
    return std::is_eq(byText) ? orderBackwards(limitOf(node), limitOf(other)) : byText;
}

/// The application that the phrase is limited to; empty for all.
QStringView PhraseIndex::limitOf(const Node& node) const
{
    const Dictionary* const entry = entryAt(m_phrases, rowOf(node));
    return entry ? textAt(*entry, PhraseKey::app) : QStringView();
}

/// Of the equal phrases @p text before @p after the one that counts in @p application; null when none does.
DictionaryPointer PhraseIndex::countingEntry(
    std::vector<Node>::const_iterator after, QStringView text, QStringView application) const
{
    DictionaryPointer entry;
    for (; after != m_nodes.begin() && textOf(*std::prev(after)) == text; --after) {
        const Node& node = *std::prev(after);
        const QStringView limit = limitOf(node);
        if (limit.isEmpty() || limit == application) {
            entry = rowOf(node) < m_phrases->size() ? m_phrases->at(rowOf(node)).dictionary() : DictionaryPointer();
        }
        if (!limit.isEmpty() && entry) {
            break;
        }
    }
    return entry;
}
