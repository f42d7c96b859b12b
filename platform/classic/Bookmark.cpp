// SPDX-License-Identifier: MIT
#include "Bookmark.h"

#include <platform/bytes/BoundedBytes.h>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr QByteArrayView aliasFileMark("book\0\0\0\0mark\0\0\0\0", Bookmark::aliasFileMarkSize);
constexpr quint32 tableMark = 0xFFFFFFFE;
constexpr int maximumTables = 16;
constexpr quint32 maximumEntries = 4096;
constexpr quint32 maximumComponents = 1024;

constexpr quint32 ownTable = 1;
constexpr quint32 pathComponentsKey = 0x1004;
constexpr quint32 volumePathKey = 0x2002;

constexpr quint32 stringType = 0x0101;
constexpr quint32 arrayType = 0x0601;

/// The part of a bookmark in which all offsets count from the beginning.
class Records final
{
public:
    explicit Records(QByteArrayView data)
        : m_data(data)
    {
    }

    /// Where the record lies that the target's own table of contents has under @p key; 0 when there is none.
    quint32 find(quint32 key) const
    {
        auto table = m_data.little<quint32>(0);
        for (int i = 0; i < maximumTables && table >= 4 && m_data.contains(table, 20); ++i) {
            if (m_data.little<quint32>(table + 4) != tableMark) {
                return 0;
            }
            if (m_data.little<quint32>(table + 8) == ownTable) {
                return findInTable(table, key);
            }
            table = m_data.little<quint32>(table + 12);
        }
        return 0;
    }

    std::optional<QString> string(quint32 offset) const
    {
        const auto length = m_data.little<quint32>(offset);
        if (m_data.little<quint32>(quint64(offset) + 4) != stringType ||
            !m_data.contains(quint64(offset) + 8, length)) {
            return std::nullopt;
        }
        return QString::fromUtf8(m_data.slice(quint64(offset) + 8, length));
    }

    /// The strings of an array, each of which must be a file name.
    std::optional<QStringList> fileNames(quint32 offset) const
    {
        const auto length = m_data.little<quint32>(offset);
        const quint64 begin = quint64(offset) + 8;
        if (m_data.little<quint32>(quint64(offset) + 4) != arrayType || !m_data.contains(begin, length) ||
            length / 4 > maximumComponents) {
            return std::nullopt;
        }
        QStringList names;
        for (quint64 at = begin; at + 4 <= begin + length; at += 4) {
            const std::optional<QString> name = string(m_data.little<quint32>(at));
            if (!name || !AliasPath::isSafeComponent(*name)) {
                return std::nullopt;
            }
            names.append(*name);
        }
        return names;
    }

private:
    quint32 findInTable(quint64 table, quint32 key) const
    {
        const quint32 count = std::min(m_data.little<quint32>(table + 16), maximumEntries);
        for (quint64 i = 0; i < count; ++i) {
            const quint64 entry = table + 20 + i * 12;
            if (!m_data.contains(entry, 12)) {
                break;
            }
            if (m_data.little<quint32>(entry) == key) {
                return m_data.little<quint32>(entry + 4);
            }
        }
        return 0;
    }

    BoundedBytes m_data;
};

std::optional<Records> recordsOf(QByteArrayView bytes)
{
    const BoundedBytes file(bytes);
    const quint32 headerSize = Bookmark::isAliasFile(bytes)                           ? file.little<quint32>(16)
                               : bytes.startsWith("book") || bytes.startsWith("alis") ? file.little<quint32>(12)
                                                                                      : 0;
    if (headerSize < 16 || !file.contains(headerSize, 4)) {
        return std::nullopt;
    }
    return Records(file.slice(headerSize, file.size()));
}

/// How many of the components lead to the root of the volume.
qsizetype volumeDepth(const Records& records, const QStringList& components)
{
    const quint32 record = records.find(volumePathKey);
    QStringList volume = records.fileNames(record).value_or(QStringList());
    if (const std::optional<QString> path = records.string(record)) {
        volume = path->split(u'/', Qt::SkipEmptyParts);
    }
    return components.mid(0, volume.size()) == volume ? volume.size() : 0;
}

} // namespace

bool Bookmark::isAliasFile(QByteArrayView head)
{
    return head.startsWith(aliasFileMark);
}

std::optional<AliasTarget> Bookmark::parse(QByteArrayView bytes)
{
    const std::optional<Records> records = recordsOf(bytes);
    if (!records) {
        return std::nullopt;
    }
    const std::optional<QStringList> components = records->fileNames(records->find(pathComponentsKey));
    if (!components) {
        return std::nullopt;
    }
    AliasTarget target;
    target.path = u'/' + components->join(u'/');
    target.pathOnVolume = components->mid(volumeDepth(*records, *components)).join(u'/');
    target.name = components->isEmpty() ? QString() : components->last();
    return target;
}
