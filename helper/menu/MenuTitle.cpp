// SPDX-License-Identifier: MIT
#include "MenuTitle.h"

#include <algorithm>

using namespace Qt::StringLiterals;

QString MenuTitle::shortened(const QString& text, qsizetype length)
{
    // A phrase may go with pages of text.
    QString line = text.first(std::min(text.size(), 4 * length));
    // What a tab divides would be shown as an item's key.
    std::ranges::replace_if(
        line, [](QChar character) { return character < u' ' || character.isSpace(); }, u' ');
    line = std::move(line).trimmed();
    if (line.size() <= length && text.size() <= 4 * length) {
        return line;
    }
    line.truncate(length - 1);
    if (!line.isEmpty() && line.back().isHighSurrogate()) {
        line.chop(1);
    }
    return line + u'…';
}

QString MenuTitle::plain(const QString& text, Drawn drawn)
{
    QString title = shortened(text);
    if (drawn == Drawn::ByToolkit) {
        return title.replace(u'&', u"&&"_s);
    }
    title.replace(u'_', u"__"_s);
    const qsizetype first = title.indexOf(u'&');
    return first < 0 || first == title.size() - 1 ? title : title.insert(first, u'&');
}
