// SPDX-License-Identifier: MIT
#pragma once

#include <platform/classic/ClassicFiles.h>

#include <QString>

#include <optional>

/// Abbreviations in classic resource files ("abbs files"): one 'STMP' resource per abbreviation, named with it. The
/// resource file "Blipsy Prefs" in the Preferences folder tells which abbs file belongs to which program: a file
/// record in the 'FSAp' resource that has the program's name, else the 'FSSp' resource whose number begins the
/// resource 'cnfG' 142.
///
/// Failures are told on the standard error stream (those of posixStringToFSSpec() on the standard output stream). For
/// the main thread.

/// Opens the abbs file that belongs to the frontmost program, for reading and writing, and makes it the current
/// resource file. Answers its reference number, which the caller closes; -1 or 0 when there is none.
qint16 openAbbsFile();

/// The expansion of @p abb in @p file, or in the file that openAbbsFile() finds. Nothing when the abbreviation is not
/// there or the file does not open; no file stays open.
std::optional<QString> abbExists(const QString& abb, const ClassicFiles::FileRecord* file = nullptr);

/// Fills @p out with the file record of the file or folder at @p path and answers it. A failure leaves an empty
/// record.
ClassicFiles::FileRecord& posixStringToFSSpec(ClassicFiles::FileRecord& out, const QString& path, bool isDirectory);
