// SPDX-License-Identifier: MIT
#include <appfiles/ApplicationsTab.h>
#include <core/BYGlobals.h>
#include <core/SharedNames.h>

#include <QApplication>
#include <QFile>
#include <QImage>
#include <QPixmapCache>
#include <QTemporaryDir>

#include <Bench.h>

using namespace Qt::StringLiterals;
using PropertyList::Array;
using PropertyList::ArrayPointer;

namespace {

constexpr int rounds = 60;
constexpr int few = 10;
constexpr int many = 1'000;

/// Desktop entries, each with a picture of its own. Their order by file name is not the one in which they are listed.
ArrayPointer installApplications(const QTemporaryDir& folder)
{
    const ArrayPointer paths = Array::create();
    QImage icon(48, 48, QImage::Format_ARGB32);
    quint32 scrambled = 1;
    for (int number = 0; number < many; ++number) {
        scrambled = scrambled * 1664525U + 1013904223U;
        const QString base = folder.filePath(u"Application %1"_s.arg(scrambled));
        icon.fill(scrambled | 0xFF00'0000U);
        QFile entry(base + u".desktop");
        if (!icon.save(base + u".png") || !entry.open(QIODevice::WriteOnly)) {
            qFatal("cannot write an application");
        }
        entry.write(u"[Desktop Entry]\nType=Application\nName=Application %1\nIcon=%2.png\nExec=true\n"_s
                        .arg(QString::number(number), base)
                        .toUtf8());
        paths->append(entry.fileName());
    }
    return paths;
}

/// The milliseconds from the set-up of the applications tab to its first picture, with no icon known yet.
double firstPaint(const ArrayPointer& paths)
{
    BYGlobals::storeSetting(paths, Settings::appsFiles.key);
    QPixmapCache::clear();
    return Bench::milliseconds(1, [] {
        ApplicationsTab tab;
        tab.resize(840, 600);
        tab.controller().awakeFromNib();
        tab.grab();
    });
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QTemporaryDir folder;
    qputenv("XDG_CONFIG_HOME", folder.path().toLocal8Bit());
    const QApplication application(argc, argv);
    const ArrayPointer all = installApplications(folder);
    const ArrayPointer first = Array::create();
    for (int number = 0; number < few; ++number) {
        first->append(all->at(number));
    }
    double ours = firstPaint(all);
    double peer = firstPaint(first);
    for (int round = 0; round < rounds; ++round) {
        ours = std::min(ours, firstPaint(all));
        peer = std::min(peer, firstPaint(first));
    }
    Bench::report("appfiles/first-paint-1000-applications", ours, peer, 2);
    return 0;
}
