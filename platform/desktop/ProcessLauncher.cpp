// SPDX-License-Identifier: MIT
#include "ProcessLauncher.h"

#include <product/Product.h>

#include <QDir>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QProcess>

using namespace Qt::StringLiterals;

namespace {

Q_LOGGING_CATEGORY(log, PRODUCT_NAME ".process")

QString reasonNotToStart(const QString& path, const QProcess& process)
{
    const QFileInfo program(path);
    if (!program.exists()) {
        return u"there is no such file"_s;
    }
    return program.isFile() && program.isExecutable() ? process.errorString() : u"it is not executable"_s;
}

} // namespace

bool ProcessLauncher::launch(const QString& path, const QStringList& arguments)
{
    QProcess process;
    process.setProgram(path);
    process.setArguments(arguments);
    // A folder that does not exist would stop the program.
    process.setWorkingDirectory(QDir::home().exists() ? QDir::homePath() : QDir::rootPath());
    process.setStandardInputFile(QProcess::nullDevice());
    // A program that outlives this one must not write into its terminal.
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    if (process.startDetached()) {
        return true;
    }
    qCWarning(log).noquote() << u"cannot start %1: %2"_s.arg(path, reasonNotToStart(path, process));
    return false;
}
