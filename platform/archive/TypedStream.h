// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <optional>
#include <variant>
#include <vector>

/// Archives of the non-keyed archiver ("typed streams"), as a tree without any knowledge of the classes in it.
///
/// The form has no published description; it was worked out from archives. It is self-delimiting: every value comes
/// after its type encoding, so that objects of unknown classes are read like any others.
namespace TypedStream {

/// The number of an entry in an archive's table.
struct Reference
{
    size_t number = 0;
};

/// One value: nil, an integer (of any width, sign-extended), a real, bytes (raw data, selectors), or an entry.
using Item = std::variant<std::monostate, qint64, double, QByteArray, Reference>;

/// Values that were written together. Those of structures and arrays stand one after the other; an array of bytes is
/// one item.
struct Group
{
    QByteArray encoding;
    std::vector<Item> items;
};

/// What has a number: an object, a class, or a C string.
struct Entry
{
    enum class Kind { Object, Class, Text };

    Kind kind = Kind::Object;
    /// The name of a class, or the bytes of a C string.
    QByteArray text;
    qint64 version = 0;
    /// An object's class, or a class's superclass.
    std::optional<size_t> parent;
    std::vector<Group> groups;
};

/// An archive. Entries may refer to each other in circles, but every reference is one to an entry of the right kind.
struct Archive
{
    std::vector<Entry> entries;
    /// The values outside of all objects: normally one group with the root object.
    std::vector<Group> groups;

    /// Whether @p entry is an object of the class @p className or of a subclass.
    bool isKindOf(const Entry& entry, QByteArrayView className) const;
    /// The object that @p item refers to; null for everything else.
    const Entry* object(const Item& item) const;
    /// The first value, when it is an object.
    const Entry* rootObject() const;
};

/// No archive and an error text that names the byte offset, or an archive; a warning where something unreadable follows
/// a complete group.
struct ReadResult
{
    std::optional<Archive> archive;
    QString error;
    QString warning;
};

/// Reads an archive of version 4, of either byte order.
ReadResult read(QByteArrayView bytes);

} // namespace TypedStream
