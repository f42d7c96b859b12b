// SPDX-License-Identifier: MIT
#pragma once

#include "PropertyList.h"

#include <QByteArrayList>
#include <QDeadlineTimer>

#include <map>
#include <vector>

namespace PropertyList {

/// The XML form of a dictionary whose lists are long, in pieces that are kept from one writing to the next: entries of
/// a list that have not changed are not written again, whatever has been added, removed or moved around them. Joined,
/// the pieces are byte for byte what writeXml() gives. What was measured: docs/decisions/one-change.md.
///
/// A piece is the bytes of some hundred entries, and never changes: another thread may write it to a file while the
/// entries are edited. Entries that hold containers, and all that is in no list right under the root, are written
/// every time. The entries are kept alive until the next update. For the thread of the containers.
class XmlPieces final
{
public:
    enum class State {
        Complete,
        /// The deadline came first. What was done is kept, so that each call comes nearer to the end.
        Unfinished,
        /// XML cannot express the values (see writeXml()).
        Inexpressible
    };

    /// Writes what has changed since the last time, until @p deadline; but one piece at least, and what has not
    /// changed is looked through in any case (100,000 entries in 1 to 2 ms).
    State update(const Dictionary& root, QDeadlineTimer deadline = QDeadlineTimer::Forever);

    /// The pieces in their order, after an update that was complete.
    const QByteArrayList& pieces() const { return m_pieces; }

    /// Forgets everything, for another root.
    void clear();

private:
    struct Entry
    {
        DictionaryPointer dictionary;
        quint32 revision = 0;
    };

    struct Piece
    {
        /// None in a piece that has to be written every time.
        std::vector<Entry> entries;
        QByteArray bytes;
    };

    using List = std::vector<Piece>;

    class ListWriter;

    State updateList(List& list, const Array& items, const QDeadlineTimer& deadline);
    static qsizetype endOfUnchanged(const Piece& piece, const Array& items, qsizetype first);

    /// By the key under the root.
    std::map<QString, List> m_lists;
    QByteArrayList m_pieces;
};

} // namespace PropertyList
