// SPDX-License-Identifier: MIT
#pragma once

#include <platform/plist/PropertyList.h>

#include <QStringView>

#include <array>
#include <cstddef>
#include <future>
#include <memory>
#include <system_error>
#include <utility>

/// Looks at what the entries of a long list hold under one key.
///
/// An entry is three places in memory, and each costs more time to come from there than to look at. So what a row needs
/// is asked for some rows earlier: first its dictionary, then the dictionary's entries, then the text. What that gains:
/// docs/decisions/prefetching-scan.md.
class EntryScan final
{
public:
    /// What is in one row. Views the list.
    struct Row
    {
        const PropertyList::Value* entry = nullptr;
        /// What the entry holds under the key; null where it holds nothing, or is no dictionary.
        const PropertyList::Value* value = nullptr;
        /// Of that value; null where it is no text.
        QStringView text = {};
    };

    /// The first row of @p list for which @p matches (const Row&) is true, or -1. It is called in the order of the
    /// rows, and for no row behind that one. The text of @p key outlives the call.
    template <typename Predicate>
    static int firstRow(const PropertyList::Array& list, QStringView key, Predicate&& matches)
    {
        return EntryScan(key).firstRow(list, 0, list.size(), matches);
    }

    /// Calls @p visit (qsizetype, const Row&) with the index of every row and what is in it: at one time on this thread
    /// for the first half of a long list, and on another for the second, each in order. Returns when both are done.
    template <typename Visitor>
    static void forEachRow(const PropertyList::Array& list, QStringView key, const Visitor& visit)
    {
        // Below this, starting a thread costs more than it saves.
        constexpr qsizetype shortest = 10'000;
        const auto scan = [&list, key, &visit](qsizetype begin, qsizetype end) {
            EntryScan(key).firstRow(list, begin, end, [&visit, row = begin](const Row& entry) mutable {
                visit(row++, entry);
                return false;
            });
        };
        qsizetype middle = list.size();
        std::future<void> secondHalf;
        if (middle >= shortest) {
            try {
                secondHalf = std::async(std::launch::async, scan, middle / 2, middle);
                middle /= 2;
            } catch (const std::system_error&) {
                // Without a thread to be had, this one does everything.
            }
        }
        scan(0, middle);
        if (secondHalf.valid()) {
            secondHalf.get();
        }
    }

private:
    explicit EntryScan(QStringView key)
        : m_key(key)
    {
    }

    /// Inlined, so that what @p matches compares with stays in registers: called, typing ahead takes a quarter longer.
    template <typename Predicate>
    [[gnu::always_inline]] int firstRow(
        const PropertyList::Array& list, qsizetype begin, qsizetype end, Predicate&& matches)
    {
        constexpr qsizetype ahead = 8;
        std::array<Row, ahead> rows;
        for (qsizetype next = begin; next < end + ahead; ++next) {
            Row& row = rows[size_t(next % ahead)];
            if (next >= begin + ahead && matches(std::as_const(row))) {
                return int(next - ahead);
            }
            if (next < end) {
                row = rowOf(list.at(next));
            }
            if (next + ahead < end) {
                prefetchEntries(list.at(next + ahead));
            }
            if (next + 2 * ahead < end) {
                prefetch(list.at(next + 2 * ahead).dictionaryInPlace());
            }
        }
        return -1;
    }

    /// Documents are read with one text for all equal keys, so that its address mostly tells the key without a
    /// comparison.
    Row rowOf(const PropertyList::Value& value)
    {
        Row row{.entry = &value};
        const PropertyList::Dictionary* dictionary = value.dictionaryInPlace();
        if (dictionary == nullptr) {
            return row;
        }
        for (const auto& [name, held] : *dictionary) {
            const QStringView key(name);
            if ((key.data() == m_key.data() && key.size() == m_key.size()) || key == m_key) {
                m_key = key;
                row.value = &held;
                row.text = held.stringView();
                prefetch(row.text.data());
                break;
            }
        }
        return row;
    }

    /// Tells the processor that @p size bytes are going to be read soon. They need not be readable.
    static void prefetch(const void* memory, size_t size = 1)
    {
        constexpr size_t cacheLine = 64;
        for (size_t offset = 0; offset < size; offset += cacheLine) {
            __builtin_prefetch(static_cast<const char*>(memory) + offset);
        }
    }

    static void prefetchEntries(const PropertyList::Value& value)
    {
        // In order of their keys at most two come before the phrase.
        constexpr size_t entriesSize = 3 * sizeof(PropertyList::Dictionary::Entry);
        if (const PropertyList::Dictionary* entry = value.dictionaryInPlace()) {
            prefetch(std::to_address(entry->begin()), entriesSize);
        }
    }

    QStringView m_key;
};
