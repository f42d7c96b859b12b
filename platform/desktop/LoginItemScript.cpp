// SPDX-License-Identifier: MIT
#include "LoginItemScript.h"

#include <platform/storage/AtomicFile.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QRegularExpression>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace {

QString autostartFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + u"/autostart"_s;
}

QString entryPath(const QString& itemName)
{
    return autostartFolder() + u'/' + itemName + u".desktop"_s;
}

/// A word of an Exec line: between quotation marks, and then written as any text of a desktop entry, which doubles the
/// backslashes; % begins a field code.
QString execWord(QString word)
{
    static const QRegularExpression reserved(u"([\"`$\\\\])"_s);
    word.replace(reserved, u"\\\\1"_s).replace(u'%', u"%%"_s);
    return u'"' + word.replace(u'\\', u"\\\\"_s).replace(u'\n', u"\\n"_s) + u'"';
}

QString unescaped(QString text)
{
    static const QRegularExpression escape(u"\\\\(.)"_s);
    return text.replace(escape, u"\\1"_s);
}

Result<void> makeLoginItem(const QString& bundlePath)
{
    const QString name = QFileInfo(bundlePath).completeBaseName();
    const QString program = bundlePath + u"/Contents/MacOS/"_s + name;
    const QString entry =
        u"[Desktop Entry]\nType=Application\nName=%1\nExec=%2\nTerminal=false\n"_s.arg(name, execWord(program));
    if (!QDir().mkpath(autostartFolder())) {
        return Failure{u"cannot make the folder %1"_s.arg(autostartFolder())};
    }
    return AtomicFile::write(entryPath(name), entry.toUtf8());
}

Result<void> deleteLoginItem(const QString& name)
{
    // A name, not a way to files elsewhere.
    if (!name.contains(u'/') && QFile::remove(entryPath(name))) {
        return {};
    }
    return Failure{u"cannot delete login item \"%1\""_s.arg(name)};
}

/// One run of a script: what its variables hold, and whom it is talking to.
class Run final
{
public:
    Result<void> execute(const QString& statement)
    {
        static const QString text = u"\"((?:[^\"\\\\]|\\\\.)*)\""_s;
        static const QRegularExpression assignment(u"^set (\\w+) to %1$"_s.arg(text));
        static const QRegularExpression tell(u"^tell application %1$"_s.arg(text));
        static const QRegularExpression make(
            u"^make login item at end with properties \\{path:(\\w+), hidden:false\\}$"_s);
        static const QRegularExpression remove(u"^delete login item %1$"_s.arg(text));

        if (const auto match = assignment.match(statement); match.hasMatch()) {
            m_variables.insert(match.captured(1), unescaped(match.captured(2)));
            return {};
        }
        if (const auto match = tell.match(statement); match.hasMatch()) {
            m_application = unescaped(match.captured(1));
            return {};
        }
        if (statement == u"end tell") {
            m_application.clear();
            return {};
        }
        const auto making = make.match(statement);
        const auto removing = remove.match(statement);
        if (m_application == u"System Events" && making.hasMatch() && m_variables.contains(making.captured(1))) {
            return makeLoginItem(m_variables.value(making.captured(1)));
        }
        if (m_application == u"System Events" && removing.hasMatch()) {
            return deleteLoginItem(unescaped(removing.captured(1)));
        }
        return Failure{u"cannot run \"%1\""_s.arg(statement)};
    }

private:
    QHash<QString, QString> m_variables;
    QString m_application;
};

} // namespace

Result<void> LoginItemScript::execute(const QString& source)
{
    Run run;
    for (const QString& line : source.split(u'\n', Qt::SkipEmptyParts)) {
        if (Result<void> done = run.execute(line.trimmed()); !done) {
            return done;
        }
    }
    return {};
}

QString LoginItemScript::escaped(const QString& text)
{
    QString result = text;
    return result.replace(u'\\', u"\\\\"_s).replace(u'"', u"\\\""_s);
}
