// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class QCoreApplication;

/// What the program is called with.
namespace CommandLine {

struct Options
{
    /// An absolute path, or empty.
    QString document;
    /// One of the pane's tab names, unchecked, or empty.
    QString tab;
    QString screenshotFolder;
};

/// Prints what `--help` and `--version` ask for and ends the program; returns when neither is asked for. Needs no
/// display.
void answerQuestions(const QCoreApplication& application);

/// The options. Ends the program with a message when they are wrong.
Options parse(const QCoreApplication& application);

} // namespace CommandLine
