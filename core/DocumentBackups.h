// SPDX-License-Identifier: MIT
#pragma once

#include <platform/bytes/Result.h>

#include <QDateTime>
#include <QString>
#include <QStringList>

/// Copies of sounds documents, in `$XDG_STATE_HOME/blipsy/backups/` (by default in `~/.local/state`), which only the
/// user may enter. Each is a document like any other, under a name of its own that begins with the document's name,
/// tells documents of one name apart, and ends with the moment: the copies of one document sort by age. The newest ten
/// of each document stay. In a file system that can share blocks a copy takes no room of its own.
///
/// How the user goes back to one: docs/decisions/backups.md.
namespace DocumentBackups {

/// Where they are. The folder is there once something has been kept.
QString folder();

/// Copies the file at @p documentPath as it is now. A file that is no ordinary one, or of more than @p maximumSize
/// bytes, is not copied. Answers the path of the copy; a failure names the file concerned. May be called on any thread.
Result<QString> keep(const QString& documentPath, qint64 maximumSize);

/// To be called before each write of a document, on any thread. The first time that this program asks about
/// @p documentPath it copies the file, if there is one, unless keep() has done so before; a failure is one log line.
///
/// The main thread does not wait for the copy: the file is held open, so that what is copied is the version of this
/// moment, whatever takes its place meanwhile, and the end of the program waits for it. On another thread the copy is
/// made when this returns.
void keepBeforeFirstWrite(const QString& documentPath, qint64 maximumSize);

/// Whether the file at @p path is one of the copies.
bool contains(const QString& path);

/// The name of the document, without extension, that the copy at @p path is of.
QString documentName(const QString& path);

/// When the copy at @p path was made, in UTC; an invalid moment where the name does not say.
QDateTime moment(const QString& path);

/// The first of these documents' paths that the copy at @p path is of; empty where it is of none.
QString documentAmong(const QStringList& documentPaths, const QString& path);

} // namespace DocumentBackups
