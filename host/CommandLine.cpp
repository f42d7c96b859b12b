// SPDX-License-Identifier: MIT
#include "CommandLine.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {

struct Parser
{
    Parser()
    {
        parser.setApplicationDescription(
            u"Settings of Blipsy, which plays short sounds when you type a phrase and when something happens on the desktop."_s);
        parser.addOptions({document, screenshot, tab});
    }

    QCommandLineParser parser;
    QCommandLineOption help = parser.addHelpOption();
    QCommandLineOption version = parser.addVersionOption();
    QCommandLineOption document{u"document"_s, u"Use the sounds document FILE."_s, u"FILE"_s};
    QCommandLineOption screenshot{u"screenshot"_s, u"Save a picture of every tab in DIR and exit."_s, u"DIR"_s};
    QCommandLineOption tab{u"tab"_s, u"Show the tab NAME: Phrases, Events, Applications or Options."_s, u"NAME"_s};
};

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

CommandLine::Options CommandLine::parse(const QCoreApplication& application)
{
    Parser line;
    line.parser.process(application);
    const QString document = line.parser.value(line.document);
    return {.document = document.isEmpty() ? document : QFileInfo(document).absoluteFilePath(),
        .tab = line.parser.value(line.tab),
        .screenshotFolder = line.parser.value(line.screenshot)};
}
