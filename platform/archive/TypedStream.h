// SPDX-License-Identifier: MIT
#pragma once

#include <platform/bytes/Result.h>

#include <QByteArray>
#include <QByteArrayView>

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

/// What has a number: an object, a class, or a C string.
struct Entry
{
    enum class Kind { Object, Class, Text };

    Kind kind = Kind::Object;
    /// The name of a class, or the bytes of a C string.
    QByteArray text;
    /// An object's class, or a class's superclass.
    std::optional<size_t> parent;
    /// An object's values in order. Those of structures and arrays stand one after the other; an array of bytes is one
    /// item.
    std::vector<Item> items;
};

/// An archive. Entries may refer to each other in circles, but every reference is one to an entry of the right kind.
struct Archive
{
    std::vector<Entry> entries;
    /// The values outside of all objects: normally the root object alone.
    std::vector<Item> items;
    /// Something unreadable follows them.
    bool endsEarly = false;

    /// Whether @p entry is an object of the class @p className or of a subclass.
    bool isKindOf(const Entry& entry, QByteArrayView className) const;
    /// The object that @p item refers to; null for everything else.
    const Entry* object(const Item& item) const;
    /// The first value, when it is an object.
    const Entry* rootObject() const;
};

/// Reads an archive of version 4, of either byte order. A failure names the byte offset.
Result<Archive> read(QByteArrayView bytes);

} // namespace TypedStream
