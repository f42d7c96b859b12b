// SPDX-License-Identifier: MIT
#include "DesktopApplications.h"

#include <platform/bytes/RegularFile.h>

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QHash>
#include <QIcon>
#include <QLocale>
#include <QSet>
#include <QStandardPaths>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// Desktop entries have a few kilobytes; what is larger is something else.
constexpr qint64 maximumSize = 1 << 20;

using Keys = QHash<QString, QString>;

QString unescaped(QStringView value)
{
    static constexpr QStringView letters = u"sntr";
    static constexpr QStringView meanings = u" \n\t\r";
    QString result;
    result.reserve(value.size());
    for (qsizetype i = 0; i < value.size(); ++i) {
        const bool isEscape = value[i] == u'\\' && i + 1 < value.size();
        const qsizetype letter = isEscape ? letters.indexOf(value[++i]) : -1;
        result += letter >= 0 ? meanings[letter] : value[i];
    }
    return result;
}

/// The keys of the group "Desktop Entry", localized ones with their bracket ("Name[de]").
Keys readKeys(const QString& path)
{
    const Result<QByteArray> contents = RegularFile::read(path, maximumSize);
    const QString text = contents ? QString::fromUtf8(*contents) : QString();
    Keys keys;
    bool inGroup = false;
    for (const QStringView line : QStringView(text).split(u'\n')) {
        const QStringView trimmed = line.trimmed();
        if (trimmed.startsWith(u'[')) {
            inGroup = trimmed == u"[Desktop Entry]";
            continue;
        }
        const qsizetype separator = trimmed.indexOf(u'=');
        if (inGroup && separator > 0 && !trimmed.startsWith(u'#')) {
            keys.insert(
                trimmed.first(separator).trimmed().toString(), unescaped(trimmed.sliced(separator + 1).trimmed()));
        }
    }
    return keys;
}

QString localized(const Keys& keys, const QString& key)
{
    const QString locale = QLocale().name();
    for (const QString& language : {locale, locale.section(u'_', 0, 0)}) {
        if (const QString value = keys.value(key + u'[' + language + u']'); !value.isEmpty()) {
            return value;
        }
    }
    return keys.value(key);
}

bool isTrue(const Keys& keys, const QString& key)
{
    return keys.value(key) == u"true";
}

bool isForThisDesktop(const Keys& keys)
{
    const QStringList desktops = qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(u':', Qt::SkipEmptyParts);
    const auto names = [&](const QString& key) {
        const QStringList listed = keys.value(key).split(u';', Qt::SkipEmptyParts);
        return std::ranges::any_of(desktops, [&](const QString& desktop) { return listed.contains(desktop); });
    };
    return !names(u"NotShowIn"_s) && (!keys.contains(u"OnlyShowIn"_s) || names(u"OnlyShowIn"_s));
}

} // namespace

std::optional<DesktopApplications::Entry> DesktopApplications::read(const QString& path)
{
    const Keys keys = readKeys(path);
    if (isTrue(keys, u"Hidden"_s)) {
        return Entry{.path = path, .isDeleted = true};
    }
    const QString name = localized(keys, u"Name"_s);
    if (keys.value(u"Type"_s) != u"Application" || name.isEmpty()) {
        return std::nullopt;
    }
    return Entry{.path = path,
        .name = name,
        .icon = localized(keys, u"Icon"_s),
        .exec = keys.value(u"Exec"_s),
        .windowClass = keys.value(u"StartupWMClass"_s),
        .isHidden = isTrue(keys, u"NoDisplay"_s) || !isForThisDesktop(keys)};
}

QList<DesktopApplications::Entry> DesktopApplications::installed()
{
    QList<Entry> entries;
    QSet<QString> seen;
    for (const QString& folder : QStandardPaths::standardLocations(QStandardPaths::ApplicationsLocation)) {
        const QDir root(folder);
        QDirIterator files(folder, {u"*.desktop"_s}, QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            const QString path = files.next();
            const QString identifier = root.relativeFilePath(path).replace(u'/', u'-');
            const std::optional<Entry> entry = seen.contains(identifier) ? std::nullopt : read(path);
            if (!entry) {
                continue;
            }
            seen.insert(identifier);
            if (!entry->isHidden && !entry->isDeleted) {
                entries.append(*entry);
            }
        }
    }
    std::ranges::sort(entries,
        [](const Entry& left, const Entry& right) { return QString::localeAwareCompare(left.name, right.name) < 0; });
    return entries;
}

QIcon DesktopApplications::iconOf(const Entry& entry)
{
    if (entry.icon.startsWith(u'/')) {
        return QFile::exists(entry.icon) ? QIcon(entry.icon) : QIcon();
    }
    return QIcon::fromTheme(entry.icon);
}
