// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArrayView>
#include <QString>
#include <QSysInfo>
#include <QtEndian>

#include <algorithm>

/// The first problem that a reader of bytes has met, and the byte at which it lies: "byte 12: a tag has no end".
class FirstProblem final
{
public:
    /// Notes the problem unless there is one already; answers false, for use as `return problem.note(...)`.
    bool note(QStringView what, qsizetype offset)
    {
        if (m_text.isEmpty()) {
            m_text = QStringLiteral("byte %1: %2").arg(offset).arg(what);
        }
        return false;
    }

    bool isNoted() const noexcept { return !m_text.isEmpty(); }

    /// Empty where there is none.
    const QString& text() const noexcept { return m_text; }

private:
    QString m_text;
};

/// Bytes of unknown origin that are read from the beginning to the end.
///
/// What is not there is a problem, and so is what the caller calls one. After the first, nothing more is there: numbers
/// read as 0, stretches are empty, and the reader is at its end. So a caller that only asks at the end whether there
/// was a problem reads nothing wrong, and every loop up to the end ends.
class ByteReader final
{
public:
    /// Reads @p bytes, which must outlive this object, with numbers in the order @p order.
    ByteReader(QByteArrayView bytes, QSysInfo::Endian order)
        : m_bytes(bytes)
        , m_isLittleEndian(order == QSysInfo::LittleEndian)
    {
    }

    bool atEnd() const noexcept { return remaining() == 0; }

    /// The number of bytes not read yet.
    qsizetype remaining() const noexcept { return m_bytes.size() - m_position; }

    /// The next byte, which stays the next one; 0 at the end.
    quint8 peek() const noexcept { return atEnd() ? quint8(0) : quint8(m_bytes[m_position]); }

    /// The next number, of the width of its type.
    template <typename Number>
    Number number()
    {
        const QByteArrayView bytes = take(sizeof(Number));
        if (bytes.isEmpty()) {
            return Number(0);
        }
        return m_isLittleEndian ? qFromLittleEndian<Number>(bytes.data()) : qFromBigEndian<Number>(bytes.data());
    }

    /// The next @p length bytes. Fewer are a problem.
    QByteArrayView take(qint64 length)
    {
        if (length < 0 || length > remaining()) {
            fail(u"a length beyond the end");
            return {};
        }
        return upTo(length);
    }

    /// The next @p length bytes, which must not be negative, or as many as there are.
    QByteArrayView upTo(qint64 length)
    {
        const QByteArrayView taken = m_bytes.sliced(m_position, std::min<qsizetype>(length, remaining()));
        m_position += taken.size();
        return taken;
    }

    /// Notes a problem at the next byte and goes to the end.
    void fail(QStringView what)
    {
        m_problem.note(what, m_position);
        m_position = m_bytes.size();
    }

    const FirstProblem& problem() const noexcept { return m_problem; }

private:
    QByteArrayView m_bytes;
    qsizetype m_position = 0;
    bool m_isLittleEndian;
    FirstProblem m_problem;
};
