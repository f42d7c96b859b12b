// SPDX-License-Identifier: MIT
#pragma once

#include <pane/interface/PreferencePane.h>

#include <QString>

#include <optional>

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

/// What is to be done instead of showing the pane; nothing where that is not asked for. Ends the program with a message
/// when it is asked for in a wrong way. Needs no display.
std::optional<DocumentTask> task();

/// The options. Ends the program with a message when they are wrong.
Options parse(const QCoreApplication& application);

} // namespace CommandLine
