// SPDX-License-Identifier: MIT
#include <platform/desktop/LoginItemScript.h>

#include <QDir>
#include <QFile>
#include <QString>
#include <QTemporaryDir>

#include <cstddef>
#include <cstdint>

namespace {

/// Where login items are made, in a folder of its own for the process, with a file that no script may touch.
const QDir& folder()
{
    static const QTemporaryDir temporary;
    static const QDir folder = [] {
        const QDir root(temporary.path());
        qputenv("XDG_CONFIG_HOME", root.filePath(QStringLiteral("config")).toUtf8());
        return root;
    }();
    return folder;
}

} // namespace

/// A script makes and deletes login items, and reaches nothing outside their folder.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QString outside = folder().filePath(QStringLiteral("x.desktop"));
    QFile file(outside);
    if (!file.open(QIODevice::WriteOnly)) {
        qFatal("no folder to work in");
    }
    file.close();
    const auto done = LoginItemScript::execute(QString::fromUtf8(QByteArrayView(data, qsizetype(size))));
    if (!done && done.error().isEmpty()) {
        qFatal("a failure without a reason");
    }
    const QStringList entries = folder().entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden);
    if (!file.exists() || entries.size() > 2) {
        qFatal("something outside the folder was touched");
    }
    QDir(folder().filePath(QStringLiteral("config"))).removeRecursively();
    return 0;
}
