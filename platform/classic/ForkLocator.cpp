// SPDX-License-Identifier: MIT
#include "ForkLocator.h"

#include "AppleDouble.h"
#include "FilePeek.h"
#include "MacBinary.h"

#include <product/Product.h>

#include <QDir>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QStringList>

#include <algorithm>
#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

Q_LOGGING_CATEGORY(log, PRODUCT_NAME ".forks", QtInfoMsg)

constexpr quint64 largestFork = 64 * 1024 * 1024;
constexpr qsizetype finderInfoSize = 32;
/// How far above a file the root of an unpacked archive is looked for.
constexpr int mostLevelsUp = 8;

constexpr std::array forkAttributes = {"user.com.apple.ResourceFork", "osx.com.apple.ResourceFork",
    "user.org.netatalk.ResourceFork", "user.DosStream.AFP_Resource:$DATA"};
constexpr std::array finderInfoAttributes = {"user.com.apple.FinderInfo", "osx.com.apple.FinderInfo"};
constexpr auto appleDoubleAttribute = "user.org.netatalk.Metadata";
constexpr auto serverInfoAttribute = "user.DosStream.AFP_AfpInfo:$DATA";

/// The AppleDouble files that may belong to the file at the absolute path @p path.
QStringList companions(const QString& path)
{
    const QFileInfo file(path);
    const QString folder = file.path();
    const QString dotName = u"._"_s + file.fileName();
    QStringList paths = {folder + u'/' + dotName, folder + u"/.AppleDouble/"_s + file.fileName()};
    QString root = folder;
    QString below = u"/"_s;
    for (int level = 0; level < mostLevelsUp; ++level) {
        const QString archiveFolder = root + u"/__MACOSX"_s;
        if (QFileInfo::exists(archiveFolder)) {
            paths.append(archiveFolder + below + dotName);
        }
        if (root == u"/") {
            break;
        }
        below = u'/' + QFileInfo(root).fileName() + below;
        root = QFileInfo(root).path();
    }
    return paths;
}

QStringList resourceFilesBeside(const QString& path)
{
    const QFileInfo file(path);
    return {path + u".rsrc"_s, file.path() + u"/.rsrc/"_s + file.fileName()};
}

/// What a container file says about the file that it stands for.
struct Container
{
    std::optional<ByteRange> fork;
    std::optional<FinderInfo> finderInfo;
};

std::optional<Container> containerOf(const FilePeek& file)
{
    const QByteArray head = file.read({0, AppleDouble::maximumHeaderSize});
    Container container;
    if (const auto apple = AppleDouble::parse(head, file.size())) {
        container.fork = apple->entry(AppleDouble::resourceFork);
        if (auto info = apple->entry(AppleDouble::finderInfo)) {
            info->length = std::min<quint64>(info->length, finderInfoSize);
            container.finderInfo = FinderInfo::parse(file.read(*info));
        }
        return container;
    }
    if (const auto binary = MacBinary::parse(head, file.size())) {
        container.fork = binary->resourceFork;
        container.finderInfo = binary->finderInfo;
        return container;
    }
    return std::nullopt;
}

/// One run through the places where a fork can be.
class ForkFinder final
{
public:
    explicit ForkFinder(QString path)
        : m_path(std::move(path))
    {
    }

    ForkLocator::ForkSearch run()
    {
        if (!searchEverywhere() && m_empty) {
            m_result.found = std::move(m_empty);
        }
        return std::move(m_result);
    }

private:
    bool searchEverywhere()
    {
        const auto searchNamed = [this](const QString& suffix) { return searchBare(m_path + suffix); };
        if (searchNamed(u"/..namedfork/rsrc"_s) || searchNamed(u"/rsrc"_s) || searchAttributes()) {
            return true;
        }
        const auto search = [this](const QString& path) { return searchFile(path); };
        const QStringList besides = companions(m_path);
        const QStringList resourceFiles = resourceFilesBeside(m_path);
        return std::any_of(besides.begin(), besides.end(), search) || searchFile(m_path) ||
               std::any_of(resourceFiles.begin(), resourceFiles.end(), search);
    }

    bool searchAttributes()
    {
        return std::any_of(forkAttributes.begin(), forkAttributes.end(), [this](const char* name) {
            QByteArray bytes = FilePeek::extendedAttribute(m_path, name);
            return !bytes.isEmpty() && take(std::move(bytes), m_path, QString::fromLatin1(name));
        });
    }

    bool searchFile(const QString& path)
    {
        const FilePeek file(path, path == m_path ? FilePeek::Links::Follow : FilePeek::Links::Refuse);
        if (!file.isOpen()) {
            return false;
        }
        const std::optional<Container> container = containerOf(file);
        if (!container) {
            return searchBare(path);
        }
        return container->fork && container->fork->length > 0 && container->fork->length <= largestFork &&
               take(file.read(*container->fork), path, u"byte %1"_s.arg(container->fork->offset));
    }

    /// A file that is nothing but a fork. Most files are not, so only one that looks like a fork can be damaged.
    bool searchBare(const QString& path)
    {
        const FilePeek file(path, path == m_path ? FilePeek::Links::Follow : FilePeek::Links::Refuse);
        const auto size = ResourceFork::announcedSize(file.read({0, 16}), file.size());
        return size && *size <= largestFork && take(file.read({0, *size}), path, u"byte 0"_s);
    }

    /// Keeps the fork when it can be read. True when the search is over.
    bool take(QByteArray bytes, const QString& container, const QString& place)
    {
        Result<ResourceFork> fork = ResourceFork::parse(std::move(bytes));
        if (!fork) {
            m_result.damage = u"%1: resource fork at %2: %3"_s.arg(container, place, fork.error());
            qCWarning(log).noquote() << m_result.damage;
            return false;
        }
        if (!fork->warnings().isEmpty()) {
            qCWarning(log).noquote() << u"%1: resource fork at %2: %3"_s.arg(
                container, place, fork->warnings().first());
        }
        const bool isEmpty = fork->resources().empty();
        auto& slot = isEmpty ? m_empty : m_result.found;
        if (!slot) {
            slot = {std::move(*fork), container};
        }
        return !isEmpty;
    }

    QString m_path;
    ForkLocator::ForkSearch m_result;
    std::optional<ForkLocator::LocatedFork> m_empty;
};

bool saysAnything(const std::optional<FinderInfo>& info)
{
    return info && (info->type != 0 || info->flags != 0);
}

std::optional<FinderInfo> finderInfoOfAttributes(const QString& path)
{
    for (const char* name : finderInfoAttributes) {
        const QByteArray bytes = FilePeek::extendedAttribute(path, name);
        if (!bytes.isEmpty()) {
            return FinderInfo::parse(bytes);
        }
    }
    const QByteArray header = FilePeek::extendedAttribute(path, appleDoubleAttribute);
    if (const auto apple = AppleDouble::parse(header, quint64(header.size()))) {
        if (const auto info = apple->entry(AppleDouble::finderInfo)) {
            return FinderInfo::parse(BoundedBytes(header).slice(info->offset, info->length));
        }
    }
    const QByteArray server = FilePeek::extendedAttribute(path, serverInfoAttribute);
    if (server.startsWith("AFP") && server.size() >= 16 + finderInfoSize) {
        return FinderInfo::parse(QByteArrayView(server).sliced(16));
    }
    return std::nullopt;
}

std::optional<FinderInfo> finderInfoOfContainer(const QString& path, FilePeek::Links links)
{
    const FilePeek file(path, links);
    const std::optional<Container> container = file.isOpen() ? containerOf(file) : std::nullopt;
    return container ? container->finderInfo : std::nullopt;
}

/// The regular file that @p path leads to; empty where there is none.
QString regularFile(const QString& path)
{
    const QFileInfo file(path);
    return file.isFile() ? file.canonicalFilePath() : QString();
}

} // namespace

ForkLocator::ForkSearch ForkLocator::resourceFork(const QString& path)
{
    const QString file = regularFile(path);
    return file.isEmpty() ? ForkSearch() : ForkFinder(file).run();
}

std::optional<FinderInfo> ForkLocator::finderInfo(const QString& path)
{
    const QString file = regularFile(path);
    if (file.isEmpty()) {
        return std::nullopt;
    }
    if (const auto info = finderInfoOfAttributes(file); saysAnything(info)) {
        return info;
    }
    for (const QString& companion : companions(file)) {
        if (const auto info = finderInfoOfContainer(companion, FilePeek::Links::Refuse); saysAnything(info)) {
            return info;
        }
    }
    const auto info = finderInfoOfContainer(file, FilePeek::Links::Follow);
    return saysAnything(info) ? info : std::nullopt;
}
