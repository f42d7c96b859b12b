// SPDX-License-Identifier: MIT
#include "TypingBuffer.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace {

/// Not left out by the compiler, unlike an assignment to memory that is not read any more.
void wipe(QChar* begin, qsizetype count)
{
    if (count > 0) {
        explicit_bzero(begin, size_t(count) * sizeof(QChar));
    }
}

} // namespace

TypingBuffer::TypingBuffer(qsizetype capacity)
    : m_units(size_t(capacity))
{
}

TypingBuffer::~TypingBuffer()
{
    clear();
}

void TypingBuffer::setCapacity(qsizetype capacity)
{
    std::vector<QChar> units(static_cast<size_t>(capacity));
    const QStringView kept = text().last(std::min(m_size, capacity));
    const qsizetype size = kept.size();
    std::ranges::copy(kept, units.begin());
    clear();
    m_units = std::move(units);
    m_size = size;
}

void TypingBuffer::append(QStringView text)
{
    const auto capacity = qsizetype(m_units.size());
    const QStringView kept = text.last(std::min(text.size(), capacity));
    const qsizetype dropped = std::max<qsizetype>(m_size + kept.size() - capacity, 0);
    std::copy(m_units.begin() + dropped, m_units.begin() + m_size, m_units.begin());
    std::ranges::copy(kept, m_units.begin() + m_size - dropped);
    m_size += kept.size() - dropped;
}

void TypingBuffer::removeLast()
{
    const qsizetype count =
        m_size >= 2 && text().last(1).front().isLowSurrogate() && text().sliced(m_size - 2).front().isHighSurrogate()
            ? 2
            : std::min<qsizetype>(m_size, 1);
    m_size -= count;
    wipe(m_units.data() + m_size, count);
}

void TypingBuffer::clear()
{
    wipe(m_units.data(), m_size);
    m_size = 0;
}
