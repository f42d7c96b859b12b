#pragma once

#include <QByteArray>
#include <QString>

/// Reading of whole files whose path comes from elsewhere, and so may name anything.
namespace RegularFile {

struct Contents
{
    QByteArray bytes;
    /// Why the file could not be read, in words without the path; empty on success.
    QString error;
};

/// Reads the ordinary file at @p path, links followed. A folder, a pipe or a device (which might block for ever) and a
/// file of more than @p maximumSize bytes are refused.
Contents read(const QString& path, qint64 maximumSize);

} // namespace RegularFile
