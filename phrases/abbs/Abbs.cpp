// SPDX-License-Identifier: MIT
#include "Abbs.h"

#include <platform/bytes/FourCharCode.h>
#include <platform/bytes/MacRoman.h>
#include <platform/desktop/FrontmostProcess.h>
#include <platform/desktop/FrontmostWindow.h>

#include <QFileInfo>
#include <QWidget>

#include <cstdio>

namespace {

using ClassicFiles::FileRecord;
using ClassicFiles::Folder;

constexpr auto abbreviationType = fourCharCode("STMP");
constexpr auto programFileType = fourCharCode("FSAp");
constexpr auto configurationType = fourCharCode("cnfG");
constexpr auto defaultFileType = fourCharCode("FSSp");
constexpr qint16 configurationId = 142;
/// The reference constant of a window whose title stands for a program.
constexpr auto titledWindow = fourCharCode("XPND");

/// A length-prefixed string as the parameter of a "%s": what has not been converted is empty.
const char* characters(const QByteArray& pascalString)
{
    return pascalString.isEmpty() ? "" : pascalString.constData() + 1;
}

QByteArray nameOfProgram()
{
    const std::optional<QString> process = FrontmostProcess::name();
    if (!process) {
        std::fprintf(
            stderr, "Blipsy: GetFrontProcess in openAbbsFile error =%d.\n", FrontmostProcess::processNotFoundError);
        return {};
    }
    QByteArray name = MacRoman::encodePascalString(*process).value_or(QByteArray());
    if (name.isEmpty()) {
        std::fprintf(stderr, "Blipsy: GetFrontProcess name in openAbbsFile failed!  =%s.\n", characters(name));
    }
    return name;
}

/// The length-prefixed name under which the preferences file is searched.
QByteArray lookupName()
{
    const QWidget* window = FrontmostWindow::documentWindow();
    if (!window || FrontmostWindow::referenceConstant(window) != titledWindow) {
        return nameOfProgram();
    }
    QByteArray name = MacRoman::encodePascalString(window->windowTitle()).value_or(QByteArray());
    if (name.isEmpty()) {
        std::fprintf(stderr, "Blipsy: theFrontMostWindowRef name in openAbbsFile failed!  =%s.\n", characters(name));
    }
    return name;
}

std::optional<QByteArray> chosenRecord(const QByteArray& pascalName)
{
    if (auto record =
            ResourceFile::inCurrentFileWithName(programFileType, pascalName.sliced(pascalName.isEmpty() ? 0 : 1))) {
        return record;
    }
    const auto configuration = ResourceFile::inCurrentFileWithId(configurationType, configurationId);
    if (!configuration || configuration->size() < qsizetype(sizeof(qint16))) {
        return std::nullopt;
    }
    return ResourceFile::inCurrentFileWithId(defaultFileType, qFromBigEndian<qint16>(configuration->constData()));
}

/// The abbs file that the preferences file names; an empty record where it names none.
FileRecord chosenFile(const FileRecord& preferencesFile, const Folder& preferences, const QByteArray& name)
{
    FileRecord chosen;
    const qint16 file = ClassicFiles::openResourceFile(preferencesFile, ResourceFile::Access::ReadOnly);
    if (const qint16 error = ResourceFile::lastError(); error != ResourceFile::noErr) {
        std::fprintf(stderr, "Blipsy: thePrefsResFile = FSpOpenResFile error  = %d.\n", error);
    }
    if (file >= 1) {
        const auto record = chosenRecord(name);
        chosen = FileRecord::fromStored(record.value_or(QByteArray())).value_or(FileRecord());
        if (chosen.folder.volume == ClassicFiles::preferencesVolumePlaceholder) {
            chosen.folder.volume = preferences.volume;
        }
        ResourceFile::close(file);
    }
    if (const qint16 error = ResourceFile::lastError(); error != ResourceFile::noErr) {
        std::fprintf(stderr, "Blipsy: thePrefsResFile = FSpOpenResFile failed with ResError = %d.\n", error);
    }
    return chosen;
}

qint16 openForWriting(const FileRecord& file)
{
    const qint16 reference = ClassicFiles::openResourceFile(file, ResourceFile::Access::ReadWrite);
    const qint16 error = ResourceFile::lastError();
    if (reference > 0 && error == ResourceFile::noErr) {
        return reference;
    }
    std::fprintf(stderr, "Blipsy: openAbbsFile FSpOpenResFile ResError = %d.\n", error);
    std::fprintf(stderr, "Blipsy: cannot find abbs file called: %s.\n", qPrintable(MacRoman::decode(file.name)));
    return reference;
}

/// The text of an expansion: without its last byte, which ends it, and without the zero bytes in it.
QString expansionText(QByteArray data)
{
    data.chop(1);
    data.removeIf([](char byte) { return byte == '\0'; });
    return MacRoman::decode(data);
}

} // namespace

qint16 openAbbsFile()
{
    const QByteArray name = lookupName();
    const std::optional<Folder> preferences = ClassicFiles::findPreferencesFolder();
    if (!preferences) {
        std::fprintf(
            stderr, "Blipsy: FindFolder kPreferencesFolderType error  = %d.\n", ResourceFile::fileNotFoundError);
        return openForWriting({});
    }
    const auto [preferencesFile, error] = ClassicFiles::makeRecord(*preferences, "Blipsy Prefs");
    if (error == ResourceFile::fileNotFoundError) {
        std::fprintf(stderr, "Blipsy: Prefs file needs to be created.\n");
        return -1;
    }
    if (error != ResourceFile::noErr) {
        std::fprintf(stderr, "Blipsy: openAbbsFile FSMakeFSSpec error  = %d.\n", error);
        return -1;
    }
    return openForWriting(chosenFile(preferencesFile, *preferences, name));
}

std::optional<QString> abbExists(const QString& abb, const FileRecord* file)
{
    const auto name = MacRoman::encodePascalString(abb);
    if (!name) {
        std::fprintf(stderr, "Blipsy: CFStringGetPascalString failed. abbNameP length = %d.\n", 0);
    }
    const qint16 reference =
        file ? ClassicFiles::openResourceFile(*file, ResourceFile::Access::ReadOnly) : openAbbsFile();
    if (reference < 1) {
        return std::nullopt;
    }
    // A name that could not be converted is empty, and no resource has an empty name.
    const auto data = ResourceFile::inChainWithName(abbreviationType, name ? name->sliced(1) : QByteArray());
    ResourceFile::close(reference);
    return data ? std::optional(expansionText(*data)) : std::nullopt;
}

FileRecord& posixStringToFSSpec(FileRecord& out, const QString& path, bool isDirectory)
{
    out = {};
    if (path.isEmpty() || path.contains(QChar(u'\0'))) {
        std::fputs("Can't get URL", stdout);
        return out;
    }
    const QFileInfo file(path);
    if ((!file.exists() && !file.isSymLink()) || (isDirectory && !file.isDir())) {
        std::puts("Can't get FSRef.");
        return out;
    }
    if (const auto record = ClassicFiles::recordForPath(path)) {
        out = *record;
    } else {
        std::puts("Can't get FSSpec.");
    }
    return out;
}
