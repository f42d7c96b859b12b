// SPDX-License-Identifier: MIT
#include "CommandLine.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFileInfo>
#include <QTextStream>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

struct Parser
{
    Parser()
    {
        parser.setApplicationDescription(
            u"Settings of Blipsy, which plays short sounds when you type a phrase and when something happens on the desktop."_s);
        parser.addOptions({document, screenshot, tab, check, exported, import, save, text, json});
    }

    DocumentTask::Form form() const
    {
        if (parser.isSet(json)) {
            return DocumentTask::Form::Json;
        }
        return parser.isSet(text) ? DocumentTask::Form::Text : DocumentTask::Form::Usual;
    }

    QCommandLineParser parser;
    QCommandLineOption help = parser.addHelpOption();
    QCommandLineOption version = parser.addVersionOption();
    QCommandLineOption document{u"document"_s, u"Use the sounds document FILE."_s, u"FILE"_s};
    QCommandLineOption screenshot{u"screenshot"_s, u"Save a picture of every tab in DIR and exit."_s, u"DIR"_s};
    QCommandLineOption check{
        u"check"_s, u"Tell what in the sounds document FILE is unknown, missing or cannot be played."_s, u"FILE"_s};
    QCommandLineOption exported{u"export"_s, u"Write the phrases of the sounds document FILE as CSV."_s, u"FILE"_s};
    QCommandLineOption import{
        u"import"_s, u"Convert the phrase list FILE of another tool; --save says where to."_s, u"FILE"_s};
    QCommandLineOption save{u"save"_s, u"Write what is imported or exported to FILE."_s, u"FILE"_s};
    QCommandLineOption text{u"text"_s, u"Export plain text instead of CSV."_s};
    QCommandLineOption json{u"json"_s, u"Write JSON."_s};
    QCommandLineOption tab{u"tab"_s, u"Show the tab NAME: Phrases, Events, Applications or Options."_s, u"NAME"_s};
};

QString absolute(const QString& path)
{
    return path.isEmpty() ? path : QFileInfo(path).absoluteFilePath();
}

[[noreturn]] void refuse(const QString& reason)
{
    QTextStream(stderr) << "blipsy-settings: " << reason << Qt::endl;
    std::exit(EXIT_FAILURE);
}

} // namespace

void CommandLine::answerQuestions(const QCoreApplication& application)
{
    Parser line;
    // The toolkit's own options are unknown as yet; whoever gives them gets the answer from parse().
    if (line.parser.parse(QCoreApplication::arguments()) &&
        (line.parser.isSet(line.help) || line.parser.isSet(line.version))) {
        line.parser.process(application);
    }
}

std::optional<DocumentTask> CommandLine::task()
{
    Parser line;
    // As above.
    if (!line.parser.parse(QCoreApplication::arguments())) {
        return {};
    }
    using Kind = DocumentTask::Kind;
    const std::array kinds{std::pair(&line.check, Kind::Check), std::pair(&line.exported, Kind::Export),
        std::pair(&line.import, Kind::Import)};
    const auto isAsked = [&line](const auto& kind) { return line.parser.isSet(*kind.first); };
    const auto asked = std::ranges::count_if(kinds, isAsked);
    const bool savesNothing = !line.parser.isSet(line.save);
    if (asked == 0 && savesNothing && !line.parser.isSet(line.text) && !line.parser.isSet(line.json)) {
        return {};
    }
    const auto* const kind = std::ranges::find_if(kinds, isAsked);
    if (asked != 1) {
        refuse(u"one of --check, --export and --import is needed"_s);
    }
    if (kind->second == Kind::Import && savesNothing) {
        refuse(u"--import needs --save FILE"_s);
    }
    if (kind->second == Kind::Check && !savesNothing) {
        refuse(u"--check saves nothing"_s);
    }
    return DocumentTask{.kind = kind->second,
        .source = absolute(line.parser.value(*kind->first)),
        .destination = absolute(line.parser.value(line.save)),
        .form = line.form()};
}

CommandLine::Options CommandLine::parse(const QCoreApplication& application)
{
    Parser line;
    line.parser.process(application);
    return {.document = absolute(line.parser.value(line.document)),
        .tab = line.parser.value(line.tab),
        .screenshotFolder = line.parser.value(line.screenshot)};
}
