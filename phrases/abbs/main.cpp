// SPDX-License-Identifier: MIT
#include "Abbs.h"

#include <platform/bytes/FourCharCode.h>
#include <platform/bytes/MacRoman.h>

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QTextStream>

#include <optional>

using namespace Qt::StringLiterals;

namespace {

enum ExitCode { found = 0, notFound = 1, wrongUsage = 2 };

void printEntries()
{
    QTextStream out(stdout);
    for (const auto& [type, id, name, offset] : ResourceFile::resourcesOfCurrentFile()) {
        out << MacRoman::decode(fourCharBytes(type)) << '\t' << id << '\t' << MacRoman::decode(name) << '\n';
    }
}

using OptionalFile = std::optional<ClassicFiles::FileRecord>;

/// Tells why the file that was asked for is not open; what chooses one by itself tells by itself.
int notOpened()
{
    QTextStream(stderr) << "blipsy-abbs: the file cannot be opened (error " << ResourceFile::lastError() << ")\n";
    return notFound;
}

int list(const OptionalFile& file)
{
    const qint16 reference =
        file ? ClassicFiles::openResourceFile(*file, ResourceFile::Access::ReadOnly) : openAbbsFile();
    if (reference < 1) {
        return file ? notOpened() : notFound;
    }
    printEntries();
    ResourceFile::close(reference);
    return found;
}

int lookUp(const QString& abbreviation, const OptionalFile& file)
{
    const std::optional<QString> expansion = abbExists(abbreviation, file ? &*file : nullptr);
    if (expansion) {
        QTextStream(stdout) << *expansion << '\n';
        return found;
    }
    return file && ResourceFile::lastError() != ResourceFile::noErr ? notOpened() : notFound;
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(u"blipsy-abbs"_s);
    QCoreApplication::setApplicationVersion(QLatin1String(BLIPSY_VERSION));

    QCommandLineParser parser;
    parser.setApplicationDescription(u"Looks abbreviations up in classic abbreviation resource files."_s);
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption fileOption(
        {u"f"_s, u"file"_s}, u"Use FILE instead of the frontmost program's."_s, u"FILE"_s);
    const QCommandLineOption listOption({u"l"_s, u"list"_s}, u"List type, number and name of every resource."_s);
    parser.addOptions({fileOption, listOption});
    parser.addPositionalArgument(u"abbreviation"_s, u"The abbreviation to expand."_s);
    parser.process(application);

    const QStringList abbreviations = parser.positionalArguments();
    if (abbreviations.size() != (parser.isSet(listOption) ? 0 : 1)) {
        QTextStream(stderr) << parser.helpText();
        return wrongUsage;
    }
    OptionalFile file;
    if (parser.isSet(fileOption)) {
        const QString path = parser.value(fileOption);
        file = ClassicFiles::recordForPath(path);
        if (!file) {
            // Not by posixStringToFSSpec(), whose diagnostics stand among the results on the standard output stream.
            QTextStream(stderr) << "blipsy-abbs: " << path << ": no such file\n";
            return notFound;
        }
    }
    return parser.isSet(listOption) ? list(file) : lookUp(abbreviations.first(), file);
}
