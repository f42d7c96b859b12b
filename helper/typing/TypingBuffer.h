// SPDX-License-Identifier: MIT
#pragma once

#include <QStringView>

#include <vector>

/// The end of what has been typed: the one place where it is kept. Never more than the capacity, and overwritten with
/// zeros as soon as it is dropped.
class TypingBuffer final
{
public:
    /// @p capacity in UTF-16 units.
    explicit TypingBuffer(qsizetype capacity = 0);
    ~TypingBuffer();
    Q_DISABLE_COPY_MOVE(TypingBuffer)

    /// Keeps as much of the end as it can.
    void setCapacity(qsizetype capacity);

    void append(QStringView text);
    /// Takes the last character back, both halves of a surrogate pair. A combining mark is a character of its own, as
    /// it is to the BackSpace key in most programs.
    void removeLast();
    void clear();

    /// Valid until the next change.
    QStringView text() const { return {m_units.data(), m_size}; }

private:
    std::vector<QChar> m_units;
    qsizetype m_size = 0;
};
