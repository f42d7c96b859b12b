// SPDX-License-Identifier: MIT
#include "AliasRecord.h"

#include "ClassicFiles.h"

#include <platform/bytes/BoundedBytes.h>
#include <platform/bytes/MacRoman.h>

#include <QStringDecoder>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

enum Tag : qint16 {
    endOfItems = -1,
    classicPath = 2,
    unicodeName = 14,
    pathOnVolume = 18,
    mountPoint = 19,
};

/// The items of one record that lead to the target.
struct Items
{
    QString classicPath;
    QString unicodeName;
    QString pathOnVolume;
    QString mountPoint;
};

/// UTF-8 without the NUL that some writers put at the end.
QString utf8(QByteArrayView bytes)
{
    const QString text = QString::fromUtf8(bytes);
    return text.section(QChar(u'\0'), 0, 0);
}

/// A count of code units, then UTF-16.
QString countedUtf16(const BoundedBytes& item)
{
    QStringDecoder decoder(QStringDecoder::Utf16BE, QStringConverter::Flag::Stateless);
    return decoder(item.slice(2, 2 * quint64(item.big<quint16>(0))));
}

void readItem(Items& items, qint16 tag, QByteArrayView data)
{
    switch (tag) {
    case classicPath:
        items.classicPath = MacRoman::decode(data).remove(QChar(u'\0'));
        break;
    case unicodeName:
        items.unicodeName = countedUtf16(BoundedBytes(data));
        break;
    case pathOnVolume:
        items.pathOnVolume = utf8(data);
        break;
    case mountPoint:
        items.mountPoint = utf8(data);
        break;
    default:
        break;
    }
}

Items readItems(const BoundedBytes& record, quint64 begin)
{
    Items items;
    for (quint64 at = begin; record.contains(at, 4);) {
        const auto tag = record.big<qint16>(at);
        const quint64 length = record.big<quint16>(at + 2);
        if (tag == endOfItems || !record.contains(at + 4, length)) {
            break;
        }
        readItem(items, tag, record.slice(at + 4, length));
        at += 4 + length + length % 2;
    }
    return items;
}

/// "Volume:folder:name" as a path on that volume.
QString pathFromClassicPath(const QString& path)
{
    const qsizetype volumeEnd = path.indexOf(u':');
    return volumeEnd < 0 ? QString() : ClassicFiles::withSeparatorsExchanged(path.sliced(volumeEnd + 1));
}

bool isSafePath(const QString& path)
{
    const auto components = QStringView(path).split(u'/');
    return path.isEmpty() || std::all_of(components.begin(), components.end(), AliasPath::isSafeComponent);
}

QString withoutSlashes(QString path)
{
    while (path.startsWith(u'/')) {
        path.remove(0, 1);
    }
    while (path.endsWith(u'/')) {
        path.chop(1);
    }
    return path;
}

} // namespace

std::optional<AliasTarget> AliasRecord::parse(QByteArrayView bytes)
{
    const BoundedBytes header(bytes);
    const auto version = header.big<quint16>(6);
    const quint64 headerSize = version == 2 ? 150 : 58;
    if ((version != 2 && version != 3) || !header.contains(0, headerSize)) {
        return std::nullopt;
    }
    // Bytes behind the stated size belong to the program that made the record.
    const BoundedBytes record(header.slice(0, std::max<quint64>(header.big<quint16>(4), headerSize)));
    const Items items = readItems(record, headerSize);

    AliasTarget target;
    target.pathOnVolume =
        withoutSlashes(items.pathOnVolume.isEmpty() ? pathFromClassicPath(items.classicPath) : items.pathOnVolume);
    const QString mountPoint = withoutSlashes(items.mountPoint);
    if (!isSafePath(target.pathOnVolume) || !isSafePath(mountPoint)) {
        return std::nullopt;
    }
    if (!items.mountPoint.isEmpty()) {
        target.path = mountPoint.isEmpty() ? u"/"_s : u'/' + mountPoint + u'/';
        target.path += target.pathOnVolume;
    }
    target.name = items.unicodeName;
    if (target.name.isEmpty()) {
        target.name = target.pathOnVolume.section(u'/', -1);
    }
    if (target.name.isEmpty() && version == 2) {
        target.name = MacRoman::decode(record.slice(51, std::min<quint64>(record.big<quint8>(50), 63)));
    }
    return target;
}
