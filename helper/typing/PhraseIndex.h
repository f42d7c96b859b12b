// SPDX-License-Identifier: MIT
#pragma once

#include <platform/plist/PropertyList.h>

#include <QString>
#include <QStringView>

#include <compare>
#include <vector>

/// Finds the phrases of a document by what a text ends with.
///
/// The phrases are sorted by their texts read backwards, so that those which a text may end with lie close together,
/// and a binary search finds them. Beside each row number stand the phrase's last two characters, which decide most
/// steps of the search without a look at the document.
///
/// The texts stay in the document. When its list of phrases changes, the index must be made anew; until then it finds
/// what it can. Why so: docs/decisions/phrase-index.md.
class PhraseIndex final
{
public:
    /// In UTF-16 units. Longer phrases are left out: nobody types them.
    static constexpr qsizetype maximumLength = 1024;

    /// No phrase.
    PhraseIndex() = default;
    /// Entries that are no dictionaries, and empty phrases, are left out.
    explicit PhraseIndex(const PropertyList::ArrayPointer& phrases);

    /// The list that was indexed; may be null.
    const PropertyList::ArrayPointer& phrases() const { return m_phrases; }

    /// The length of the longest phrase in UTF-16 units.
    qsizetype longest() const { return m_longest; }

    /// A phrase that a text ends with.
    struct Match
    {
        /// Null when there is none.
        PropertyList::DictionaryPointer entry;
        /// The end of the text that it is, in UTF-16 units.
        qsizetype length = 0;
    };

    /// The longest phrase that @p text ends with, of those that count in @p application (the path that is
    /// stored in "App"; empty for an application without one): those limited to it, and those limited to none. Of equal
    /// phrases one limited to the application goes first, then the document's order decides. Letters must agree in
    /// case. A phrase stored with separate accents is also found in its composed form, as keyboards type it.
    /// Allocates nothing.
    Match longestAtEndOf(QStringView text, QStringView application) const;

    /// What the index takes over the document, in bytes.
    size_t memory() const;

private:
    struct Node
    {
        /// The last character of the phrase and the one before it, 0 where there is none.
        char16_t last;
        char16_t previous;
        /// A row of the document or, from the number of rows on, a composed form.
        quint32 phrase;
    };

    /// A phrase that the document holds with separate accents.
    struct Composed
    {
        QString text;
        quint32 row;
    };

    static Node nodeOf(QStringView text, quint32 phrase);
    void add(QStringView text, quint32 phrase);
    quint32 rowOf(const Node& node) const;
    QStringView textOf(const Node& node) const;
    std::strong_ordering order(const Node& node, const Node& other, QStringView otherText) const;
    std::strong_ordering orderOfPhrases(const Node& node, const Node& other) const;
    QStringView limitOf(const Node& node) const;
    PropertyList::DictionaryPointer countingEntry(
        std::vector<Node>::const_iterator after, QStringView text, QStringView application) const;

    PropertyList::ArrayPointer m_phrases;
    quint32 m_rows = 0;
    std::vector<Composed> m_composed;
    std::vector<Node> m_nodes;
    qsizetype m_longest = 0;
};
