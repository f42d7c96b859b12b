// SPDX-License-Identifier: MIT
#include "ResourceFork.h"

#include <platform/bytes/BoundedBytes.h>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr quint64 headerSize = 16;
constexpr quint64 mapHeaderSize = 28;
constexpr quint64 smallestMap = mapHeaderSize + 2;
constexpr quint64 typeEntrySize = 8;
constexpr quint64 referenceEntrySize = 12;
constexpr quint16 noName = 0xFFFF;
/// The classic manager's own limit is 2727; no list of 16-bit offsets reaches this many.
constexpr size_t maximumResources = 65536;

struct Header
{
    ByteRange data;
    ByteRange map;

    quint64 end() const { return std::max(data.offset + data.length, map.offset + map.length); }

    bool overlap() const { return data.offset < map.offset + map.length && map.offset < data.offset + data.length; }
};

Header readHeader(const BoundedBytes& bytes)
{
    return {{bytes.big<quint32>(0), bytes.big<quint32>(8)}, {bytes.big<quint32>(4), bytes.big<quint32>(12)}};
}

/// What is wrong with a header in a fork of @p size bytes; empty when nothing is.
QString headerError(const Header& header, quint64 size)
{
    if (header.data.offset < headerSize || header.data.offset + header.data.length > size) {
        return u"byte 0: the data (%1 bytes at %2) does not fit into %3 bytes"_s.arg(header.data.length)
            .arg(header.data.offset)
            .arg(size);
    }
    if (header.map.offset < headerSize || header.map.offset + header.map.length > size) {
        return u"byte 4: the map (%1 bytes at %2) does not fit into %3 bytes"_s.arg(header.map.length)
            .arg(header.map.offset)
            .arg(size);
    }
    if (header.map.length < smallestMap) {
        return u"byte 12: a map of %1 bytes is too short"_s.arg(header.map.length);
    }
    if (header.overlap()) {
        return u"byte 4: the map at %1 lies inside the data"_s.arg(header.map.offset);
    }
    return {};
}

/// A number of entries that is stored as one less; 0xFFFF stands for none.
quint64 countFromStored(quint16 stored)
{
    return quint16(stored + 1);
}

} // namespace

/// Walks the type list, the reference lists and the name list of one map.
class ResourceFork::MapReader final
{
public:
    MapReader(const BoundedBytes& map, quint64 dataOffset, ResourceFork& fork)
        : m_map(map)
        , m_dataOffset(dataOffset)
        , m_fork(fork)
        , m_typeList(map.big<quint16>(24))
        , m_nameList(map.big<quint16>(26))
    {
    }

    /// What is wrong with the map as a whole; empty when nothing is.
    QString read()
    {
        if (m_typeList < mapHeaderSize || !m_map.contains(m_typeList, 2)) {
            return u"byte 24 of the map: the type list cannot lie at %1"_s.arg(m_typeList);
        }
        const quint64 count = countFromStored(m_map.big<quint16>(m_typeList));
        for (quint64 i = 0; i < count; ++i) {
            const quint64 entry = m_typeList + 2 + i * typeEntrySize;
            if (!m_map.contains(entry, typeEntrySize)) {
                m_fork.m_warnings.append(u"the type list ends after %1 of %2 types"_s.arg(i).arg(count));
                break;
            }
            if (!readType(entry)) {
                break;
            }
        }
        return {};
    }

private:
    /// False when nothing more can be read.
    bool readType(quint64 entry)
    {
        const auto type = m_map.big<quint32>(entry);
        const quint64 count = countFromStored(m_map.big<quint16>(entry + 4));
        const quint64 list = m_typeList + m_map.big<quint16>(entry + 6);
        for (quint64 i = 0; i < count; ++i) {
            if (m_fork.m_resources.size() >= maximumResources) {
                m_fork.m_warnings.append(u"more than %1 resources: the others are left out"_s.arg(maximumResources));
                return false;
            }
            const quint64 reference = list + i * referenceEntrySize;
            if (!m_map.contains(reference, referenceEntrySize)) {
                m_fork.m_warnings.append(
                    u"byte %1 of the map: %2 of %3 resources are left out"_s.arg(reference).arg(count - i).arg(count));
                break;
            }
            readReference(type, reference);
        }
        return true;
    }

    void readReference(quint32 type, quint64 reference)
    {
        Resource resource;
        resource.type = type;
        resource.id = m_map.big<qint16>(reference);
        resource.name = name(m_map.big<quint16>(reference + 2));
        // The highest byte holds attributes.
        resource.offset = m_dataOffset + (m_map.big<quint32>(reference + 4) & 0x00FFFFFF);
        m_fork.m_resources.push_back(std::move(resource));
    }

    QByteArray name(quint16 offset)
    {
        if (offset == noName) {
            return {};
        }
        const quint64 at = m_nameList + offset;
        if (!m_map.contains(at, 1 + quint64(m_map.big<quint8>(at)))) {
            m_fork.m_warnings.append(u"byte %1 of the map: a name lies outside"_s.arg(at));
            return {};
        }
        return m_map.pascalString(at).toByteArray();
    }

    const BoundedBytes& m_map;
    quint64 m_dataOffset;
    ResourceFork& m_fork;
    quint64 m_typeList;
    quint64 m_nameList;
};

std::optional<quint64> ResourceFork::announcedSize(QByteArrayView head, quint64 availableSize)
{
    const BoundedBytes bytes(head);
    if (!bytes.contains(0, headerSize)) {
        return std::nullopt;
    }
    const Header header = readHeader(bytes);
    return headerError(header, availableSize).isEmpty() ? std::optional(header.end()) : std::nullopt;
}

Result<ResourceFork> ResourceFork::parse(QByteArray bytes)
{
    ResourceFork fork;
    if (bytes.isEmpty()) {
        return fork;
    }
    const BoundedBytes all(bytes);
    if (!all.contains(0, headerSize)) {
        return Failure{u"byte 0: %1 bytes are too short for a resource fork"_s.arg(bytes.size())};
    }
    const Header header = readHeader(all);
    QString error = headerError(header, all.size());
    if (error.isEmpty()) {
        const BoundedBytes map(all.slice(header.map.offset, header.map.length));
        error = MapReader(map, header.data.offset, fork).read();
    }
    if (!error.isEmpty()) {
        return Failure{error};
    }
    fork.m_dataEnd = header.data.offset + header.data.length;
    fork.m_bytes = std::move(bytes);
    return fork;
}

int ResourceFork::count(quint32 type) const
{
    return int(std::ranges::count(m_resources, type, &Resource::type));
}

template <typename Condition>
const ResourceFork::Resource* ResourceFork::find(quint32 type, Condition condition) const
{
    const auto found = std::ranges::find_if(
        m_resources, [&](const Resource& resource) { return resource.type == type && condition(resource); });
    return found == m_resources.end() ? nullptr : &*found;
}

const ResourceFork::Resource* ResourceFork::atIndex(quint32 type, int index) const
{
    int position = 0;
    return find(type, [&](const Resource&) { return ++position == index; });
}

const ResourceFork::Resource* ResourceFork::withId(quint32 type, qint16 id) const
{
    return find(type, [id](const Resource& resource) { return resource.id == id; });
}

const ResourceFork::Resource* ResourceFork::withName(quint32 type, QByteArrayView name) const
{
    return find(type, [name](const Resource& resource) { return !name.isEmpty() && resource.name == name; });
}

std::optional<QByteArray> ResourceFork::data(const Resource& resource) const
{
    const BoundedBytes data(QByteArrayView(m_bytes).first(qsizetype(m_dataEnd)));
    const auto length = data.big<quint32>(resource.offset);
    if (!data.contains(resource.offset, 4) || !data.contains(resource.offset + 4, length)) {
        return std::nullopt;
    }
    return data.slice(resource.offset + 4, length).toByteArray();
}
