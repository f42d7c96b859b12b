#pragma once

#include <QByteArray>
#include <QString>

#include <memory>
#include <optional>

class ResourceFork;

/// The resource files that this process has open: a chain, newest first, with one current file.
///
/// A resource fork is found as a named fork, extended attribute, AppleDouble companion, AppleSingle or MacBinary
/// file, or a plain file that is a resource fork itself. Reference numbers are positive; errors are the classic
/// negative result codes and are also kept for lastError().
namespace ResourceFile {

enum class Access { ReadOnly, ReadWrite };

constexpr qint16 noErr = 0;
constexpr qint16 fileNotFoundError = -43;
constexpr qint16 endOfFileError = -39;
constexpr qint16 resourceNotFoundError = -192;

/// Opens the resource fork of the file at @p path and makes it the current file. Answers its reference number, or -1 when
/// it has none or cannot be read. Opening changes no byte of the file.
qint16 open(const QString& path, Access access = Access::ReadOnly);
/// Closes the file; when it was current, the next newer one in the chain becomes current.
void close(qint16 reference);

qint16 current();
void setCurrent(qint16 reference);
qint16 lastError();

/// The number of resources of @p type (a four-character code) in the current file alone.
int countInCurrentFile(quint32 type);
/// The resource of @p type at @p index, counted from 1, in the current file alone.
std::optional<QByteArray> inCurrentFileAtIndex(quint32 type, int index);

} // namespace ResourceFile
