// SPDX-License-Identifier: MIT
#include "Workspace.h"

#include "DesktopApplications.h"

#include <platform/bus/MessageBus.h>
#include <platform/plist/PropertyList.h>

#include <QCoreApplication>
#include <QDesktopServices>
#include <QFileIconProvider>
#include <QFileInfo>
#include <QPainter>
#include <QUrl>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const MessageBus::Method showItems{
    "org.freedesktop.FileManager1", "/org/freedesktop/FileManager1", "org.freedesktop.FileManager1", "ShowItems"};
/// A file manager that is not running yet is started by the call.
constexpr auto showItemsTimeout = 5s;
constexpr qint64 maximumInfoSize = 1 << 20;

bool isDesktopEntry(const QFileInfo& file)
{
    return file.suffix() == u"desktop" && file.isFile();
}

bool isApplicationBundle(const QFileInfo& file)
{
    return file.suffix() == u"app" && file.isDir();
}

QIcon iconOfBundle(const QString& bundlePath)
{
    const QString contents = bundlePath + u"/Contents/"_s;
    const auto keys = PropertyList::readFile(contents + u"Info.plist"_s, maximumInfoSize);
    const QString name = keys ? (*keys)->value(u"CFBundleIconFile").string() : QString();
    for (const QString& suffix : {u""_s, u".icns"_s, u".png"_s, u".svg"_s}) {
        const QString path = contents + u"Resources/"_s + name + suffix;
        if (!name.isEmpty() && QFileInfo(path).isFile()) {
            return QIcon(path);
        }
    }
    return {};
}

QIcon iconOfDesktopEntry(const QString& path)
{
    const auto entry = DesktopApplications::read(path);
    return entry ? DesktopApplications::iconOf(*entry) : QIcon();
}

/// A window with a title bar, in the manner of the usual themes.
QPixmap drawnApplicationIcon(int size)
{
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(size / 16.0, size / 16.0);
    painter.setPen(QPen(QColor(0x5b, 0x63, 0x70), 1));
    painter.setBrush(QColor(0xf4, 0xf5, 0xf7));
    painter.drawRoundedRect(QRectF(1.5, 2.5, 13, 11), 1.5, 1.5);
    painter.fillRect(QRectF(2, 3, 12, 2.5), QColor(0x7f, 0x8c, 0x9f));
    return pixmap;
}

} // namespace

void Workspace::selectFile(const QString& path)
{
    if (path.isEmpty()) {
        return;
    }
    const auto uris = PropertyList::Array::create({QString::fromLatin1(QUrl::fromLocalFile(path).toEncoded())});
    MessageBus::session().ask(
        showItems, {uris, u""_s}, showItemsTimeout, [](const MessageBus::Arguments* reply) { return reply != nullptr; },
        QCoreApplication::instance(),
        [path](bool shown) {
            if (!shown) {
                QDesktopServices::openUrl(QUrl::fromLocalFile(QFileInfo(path).path()));
            }
        });
}

QIcon Workspace::iconForFile(const QString& path)
{
    const QFileInfo file(path);
    if (isDesktopEntry(file) || isApplicationBundle(file)) {
        const QIcon icon = file.isDir() ? iconOfBundle(path) : iconOfDesktopEntry(path);
        return icon.isNull() ? genericApplicationIcon() : icon;
    }
    const QFileIconProvider provider;
    return file.exists() ? provider.icon(file) : provider.icon(QFileIconProvider::File);
}

QIcon Workspace::genericApplicationIcon()
{
    const QIcon themed = QIcon::fromTheme(u"application-x-executable"_s);
    if (!themed.isNull()) {
        return themed;
    }
    QIcon drawn;
    for (const int size : {16, 32, 64}) {
        drawn.addPixmap(drawnApplicationIcon(size));
    }
    return drawn;
}

QString Workspace::displayNameAtPath(const QString& path)
{
    const QFileInfo file(path);
    const auto entry = isDesktopEntry(file) ? DesktopApplications::read(path) : std::nullopt;
    return entry && !entry->name.isEmpty() ? entry->name : file.fileName();
}
