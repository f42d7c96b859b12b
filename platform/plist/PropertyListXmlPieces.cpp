// SPDX-License-Identifier: MIT
#include "PropertyListXmlPieces.h"

#include "PropertyListXmlWriter.h"

#include <QHash>

#include <algorithm>
#include <iterator>
#include <utility>

namespace PropertyList {

namespace {

/// In bytes, of a piece: to write one again takes a fraction of a millisecond, and 30 MB are some 500 of them.
constexpr qsizetype pieceSize = 1 << 16;

/// Of an entry in a list right under the root.
constexpr int entryIndent = 2;

/// The index of the first item from @p index on that is written.
qsizetype writtenFrom(const Array& items, qsizetype index)
{
    while (index < items.size() && items.at(index).isNull()) {
        ++index;
    }
    return index;
}

/// Whether a change of anything in @p item makes another revision of it.
bool isFlat(const Value& item)
{
    const Dictionary* dictionary = item.dictionaryInPlace();
    return dictionary && std::ranges::none_of(*dictionary, [](const Dictionary::Entry& entry) {
        const Type type = entry.value.type();
        return type == Type::Array || type == Type::Dictionary;
    });
}

} // namespace

/// Writes one list anew, with the pieces of the last time where they still hold.
class XmlPieces::ListWriter final
{
public:
    ListWriter(List old, const Array& items)
        : m_old(std::move(old))
        , m_items(items)
    {
        m_heads.reserve(qsizetype(m_old.size()));
        for (size_t number = 0; number < m_old.size(); ++number) {
            if (!m_old[number].entries.empty()) {
                m_heads.insert(m_old[number].entries.front().dictionary.constData(), number);
            }
        }
    }

    State run(const QDeadlineTimer& deadline)
    {
        qsizetype index = writtenFrom(m_items, 0);
        while (index < m_items.size()) {
            if (const qsizetype end = takeUnchanged(index); end > index) {
                index = end;
                continue;
            }
            if (!append(m_items.at(index))) {
                return State::Inexpressible;
            }
            index = writtenFrom(m_items, index + 1);
            // What is written every time cannot be put off.
            const bool isLasting = !m_piece.entries.empty();
            if (m_writer.output().size() >= pieceSize) {
                finishPiece();
                if (isLasting && index < m_items.size() && deadline.hasExpired()) {
                    return State::Unfinished;
                }
            }
        }
        finishPiece();
        m_old.clear();
        return State::Complete;
    }

    /// The pieces, and of an update that is not complete also the old ones that the next may still use.
    List take() &&
    {
        std::ranges::copy_if(std::make_move_iterator(m_old.begin()), std::make_move_iterator(m_old.end()),
            std::back_inserter(m_done), [](const Piece& piece) { return !piece.entries.empty(); });
        return std::move(m_done);
    }

private:
    /// Takes over the old piece that begins with the item at @p index, or drops it when it holds no longer. The index
    /// after it, or @p index.
    qsizetype takeUnchanged(qsizetype index)
    {
        const auto head = m_heads.constFind(m_items.at(index).dictionaryInPlace());
        if (head == m_heads.cend()) {
            return index;
        }
        Piece old = std::exchange(m_old[*head], {});
        m_heads.erase(head);
        const qsizetype end = endOfUnchanged(old, m_items, index);
        if (end > index) {
            finishPiece();
            m_done.push_back(std::move(old));
        }
        return end;
    }

    bool append(const Value& item)
    {
        const bool isLasting = isFlat(item);
        if (isLasting == m_piece.entries.empty()) {
            finishPiece();
        }
        if (isLasting) {
            m_piece.entries.push_back({item.dictionary(), item.dictionaryInPlace()->revision()});
        }
        return m_writer.writeValue(item, entryIndent);
    }

    void finishPiece()
    {
        if (m_writer.output().size() > 0) {
            m_piece.bytes = m_writer.output().cut();
            m_piece.entries.shrink_to_fit();
            m_done.push_back(std::exchange(m_piece, {}));
        }
    }

    List m_old;
    const Array& m_items;
    /// Old pieces by their first entries.
    QHash<const Dictionary*, size_t> m_heads;
    List m_done;
    Piece m_piece;
    XmlWriter m_writer;
};

/// The index after the items that @p piece holds, from @p first on; @p first when they are not those any more.
qsizetype XmlPieces::endOfUnchanged(const Piece& piece, const Array& items, qsizetype first)
{
    // The entries are all over the memory: each is asked for some entries earlier (docs/decisions/prefetching-scan.md).
    constexpr qsizetype ahead = 16;
    qsizetype index = first;
    for (const Entry& entry : piece.entries) {
        index = writtenFrom(items, index);
        if (index + ahead < items.size()) {
            __builtin_prefetch(items.at(index + ahead).dictionaryInPlace());
        }
        if (index >= items.size() || items.at(index).dictionaryInPlace() != entry.dictionary.constData() ||
            entry.dictionary->revision() != entry.revision) {
            return first;
        }
        ++index;
    }
    return writtenFrom(items, index);
}

XmlPieces::State XmlPieces::update(const Dictionary& root, QDeadlineTimer deadline)
{
    std::erase_if(m_lists, [&root](const auto& list) { return !root.contains(list.first); });
    m_pieces.clear();
    XmlWriter writer;
    writer.output().append(xmlHeader);
    writer.line(0, root.isEmpty() ? "<dict/>" : "<dict>");
    for (const auto& [key, value] : root) {
        const ArrayPointer items = value.array();
        const bool isList = items && writtenFrom(*items, 0) < items->size();
        if (!writer.writeKey(key, 1) || (!isList && !writer.writeValue(value, 1))) {
            return State::Inexpressible;
        }
        if (isList) {
            writer.line(1, "<array>");
            m_pieces.append(writer.output().cut());
            if (const State state = updateList(m_lists[key], *items, deadline); state != State::Complete) {
                return state;
            }
            writer.line(1, "</array>");
        }
    }
    if (!root.isEmpty()) {
        writer.line(0, "</dict>");
    }
    writer.output().append(xmlFooter);
    m_pieces.append(writer.output().cut());
    return State::Complete;
}

XmlPieces::State XmlPieces::updateList(List& list, const Array& items, const QDeadlineTimer& deadline)
{
    ListWriter writer(std::move(list), items);
    const State state = writer.run(deadline);
    list = std::move(writer).take();
    if (state == State::Complete) {
        std::ranges::transform(list, std::back_inserter(m_pieces), &Piece::bytes);
    }
    return state;
}

void XmlPieces::clear()
{
    m_lists.clear();
    m_pieces.clear();
}

} // namespace PropertyList
