// SPDX-License-Identifier: MIT
#pragma once

#include <platform/plist/PropertyList.h>

#include <QStringView>

#include <array>
#include <cstddef>
#include <memory>
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
    };

    /// The first row of @p list for which @p matches (const Row&) is true, or -1. It is called in the order of the
    /// rows, and for no row behind that one. The text of @p key outlives the call.
    template <typename Predicate>
    static int firstRow(const PropertyList::Array& list, QStringView key, Predicate&& matches)
    {
        constexpr qsizetype ahead = 8;
        const qsizetype count = list.size();
        std::array<Row, ahead> rows;
        EntryScan scan(key);
        for (qsizetype next = 0; next < count + ahead; ++next) {
            Row& row = rows[size_t(next % ahead)];
            if (next >= ahead && matches(std::as_const(row))) {
                return int(next - ahead);
            }
            if (next < count) {
                row = scan.rowOf(list.at(next));
            }
            if (next + ahead < count) {
                prefetchEntries(list.at(next + ahead));
            }
            if (next + 2 * ahead < count) {
                prefetch(list.at(next + 2 * ahead).dictionaryInPlace());
            }
        }
        return -1;
    }

    /// Calls @p visit (const Row&) for every row.
    template <typename Visitor>
    static void forEachRow(const PropertyList::Array& list, QStringView key, Visitor&& visit)
    {
        firstRow(list, key, [&visit](const Row& row) {
            visit(row);
            return false;
        });
    }

private:
    explicit EntryScan(QStringView key)
        : m_key(key)
    {
    }

    /// Documents are read with one text for all equal keys, so that its address mostly tells the key without a
    /// comparison.
    Row rowOf(const PropertyList::Value& value)
    {
        Row row{&value, nullptr};
        const PropertyList::Dictionary* dictionary = value.dictionaryInPlace();
        if (dictionary == nullptr) {
            return row;
        }
        for (const auto& [name, held] : *dictionary) {
            const QStringView key(name);
            if ((key.data() == m_key.data() && key.size() == m_key.size()) || key == m_key) {
                m_key = key;
                row.value = &held;
                prefetch(held.stringView().data());
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
