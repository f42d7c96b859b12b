// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

/// What other processes have in memory.
namespace ProcessMemory {

/// Whether @p text, in UTF-8 or UTF-16, is anywhere in @p memory.
inline bool holds(QByteArrayView memory, const QString& text)
{
    const QByteArrayView wide(reinterpret_cast<const char*>(text.utf16()), text.size() * 2);
    return memory.contains(wide) || memory.contains(text.toUtf8());
}

/// Whether @p text is anywhere in the memory that the process has written to: what a core dump of it would hold.
inline bool contains(qint64 process, const QString& text)
{
    const QString folder = QStringLiteral("/proc/%1/").arg(process);
    QFile maps(folder + QStringLiteral("maps"));
    QFile memory(folder + QStringLiteral("mem"));
    if (!maps.open(QIODevice::ReadOnly) || !memory.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        return false;
    }
    const QList<QByteArray> lines = maps.readAll().split('\n');
    for (const QByteArray& line : lines) {
        const QList<QByteArray> range = line.split(' ').value(0).split('-');
        const qint64 begin = range.first().toLongLong(nullptr, 16);
        const qint64 size = range.last().toLongLong(nullptr, 16) - begin;
        // Larger ones are the sanitizers' maps of the rest.
        constexpr qint64 largest = 1 << 30;
        if (line.contains(" rw") && size < largest && memory.seek(begin) && holds(memory.read(size), text)) {
            return true;
        }
    }
    return false;
}

/// In bytes, as much as the machine keeps of it.
inline qint64 residentSize(qint64 process)
{
    QFile status(QStringLiteral("/proc/%1/status").arg(process));
    const QByteArray text = status.open(QIODevice::ReadOnly) ? status.readAll() : QByteArray();
    const qsizetype line = text.indexOf("VmRSS:");
    return line < 0 ? 0 : text.sliced(line + 6).trimmed().split(' ').first().toLongLong() * 1024;
}

} // namespace ProcessMemory
