// SPDX-License-Identifier: MIT
#pragma once

#include "ResourceFork.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <optional>
#include <vector>

/// The resource files that this process has open: a chain, newest first, with one current file.
///
/// A resource fork is found as a named fork, extended attribute, AppleDouble companion, AppleSingle or MacBinary
/// file, or a plain file that is a resource fork itself. Reference numbers are positive; errors are the classic
/// negative result codes and are also kept for lastError(), which every operation sets.
///
/// The bytes that the look-ups answer are detached: a copy of the caller's own, which outlives the file. Names are
/// compared byte by byte in Mac OS Roman; of two resources with the same name or number the first one counts. For
/// the main thread.
namespace ResourceFile {

enum class Access { ReadOnly, ReadWrite };

constexpr qint16 noErr = 0;
constexpr qint16 fileNotFoundError = -43;
constexpr qint16 endOfFileError = -39;
constexpr qint16 tooManyFilesError = -42;
constexpr qint16 permissionError = -54;
constexpr qint16 resourceNotFoundError = -192;
constexpr qint16 resourceFileNotFoundError = -193;
constexpr qint16 badMapError = -199;

/// Opens the resource fork of the file at @p path and makes it the current file. Answers its reference number, or -1
/// when it has none or cannot be read. Opening changes no byte of the file. Opening a file again gives a reference of
/// its own.
qint16 open(const QString& path, Access access = Access::ReadOnly);
/// Closes the file; when it was current, the next older one in the chain becomes current, or the newest where it was
/// the oldest.
void close(qint16 reference);

/// The reference number of the current file; 0 when none is open.
qint16 current();
void setCurrent(qint16 reference);
qint16 lastError();

/// What the current file holds, in the order of its map.
std::vector<ResourceFork::Resource> resourcesOfCurrentFile();

/// The number of resources of @p type (a four-character code) in the current file alone.
int countInCurrentFile(quint32 type);
/// The resource of @p type at @p index, counted from 1, in the current file alone.
std::optional<QByteArray> inCurrentFileAtIndex(quint32 type, int index);
/// The same by number and by name.
std::optional<QByteArray> inCurrentFileWithId(quint32 type, qint16 id);
std::optional<QByteArray> inCurrentFileWithName(quint32 type, QByteArrayView name);

/// The same in the current file and, when it is not there, in the older ones of the chain.
std::optional<QByteArray> inChainWithName(quint32 type, QByteArrayView name);

} // namespace ResourceFile
