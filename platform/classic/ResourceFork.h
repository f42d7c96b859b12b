// SPDX-License-Identifier: MIT
#pragma once

#include <platform/bytes/Result.h>

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

/// The contents of a resource fork ("Inside Macintosh: More Macintosh Toolbox", chapter 1): typed blocks of bytes,
/// found by number, name or position. Types are four-character codes, names are Mac OS Roman bytes.
///
/// An entry of the map that lies is an entry without data, or is left out; it never costs the others.
class ResourceFork final
{
public:
    struct Resource
    {
        quint32 type = 0;
        qint16 id = 0;
        /// At most 255 bytes; empty where the resource has no name.
        QByteArray name;
        /// Where the resource's length word lies in the fork, in bytes.
        quint64 offset = 0;
    };

    /// What the first bytes of a fork say about its length: the end of its map or data, whichever is later. Nothing
    /// when they cannot be the beginning of a fork that fits into @p availableSize bytes. Needs 16 bytes.
    static std::optional<quint64> announcedSize(QByteArrayView head, quint64 availableSize);

    /// Reads a whole fork. No bytes at all are a fork without resources. A failure tells the byte offset.
    static Result<ResourceFork> parse(QByteArray bytes);

    /// What was odd: the entries that were left out.
    const QStringList& warnings() const noexcept { return m_warnings; }

    /// All resources, in the order of the map.
    const std::vector<Resource>& resources() const noexcept { return m_resources; }

    int count(quint32 type) const;
    /// The resource of @p type at @p index, counted from 1; null where there is none. Like those below it stays valid
    /// as long as the fork.
    const Resource* atIndex(quint32 type, int index) const;
    /// The first resource of @p type with this number.
    const Resource* withId(quint32 type, qint16 id) const;
    /// The first resource of @p type whose name has exactly these bytes. No resource has an empty name.
    const Resource* withName(quint32 type, QByteArrayView name) const;

    /// The bytes of one of resources(); nothing when its length goes beyond the fork's data.
    std::optional<QByteArray> data(const Resource& resource) const;

private:
    class MapReader;

    template <typename Condition>
    const Resource* find(quint32 type, Condition condition) const;

    QByteArray m_bytes;
    quint64 m_dataEnd = 0;
    std::vector<Resource> m_resources;
    QStringList m_warnings;
};
