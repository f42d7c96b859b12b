// SPDX-License-Identifier: MIT
#include <core/SharedNames.h>
#include <core/SoundsDocument.h>
#include <platform/storage/AtomicFile.h>
#include <platform/storage/Preferences.h>

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <sys/mount.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <optional>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using PropertyList::Array;
using PropertyList::ArrayPointer;
using PropertyList::Dictionary;
using PropertyList::Value;

namespace {

/// Enough for a save that takes a while; each holds the number of the version.
constexpr int entryCount = 2'000;
constexpr qint64 pageSize = 4'096;
constexpr qint64 maximumSize = 1 << 20;
const QString domain = u"com.example.victim"_s;

ArrayPointer entriesOf(int version)
{
    return Array::create(std::vector<Value>(entryCount, QString::number(version)));
}

/// The number that all entries hold; nothing where they are not all there, or not of one version.
std::optional<int> versionOf(const ArrayPointer& entries)
{
    if (!entries || entries->size() != entryCount) {
        return std::nullopt;
    }
    const QString first = entries->at(0).string();
    const bool isOne = std::ranges::all_of(*entries, [&](const Value& value) { return value.string() == first; });
    return isOne ? std::optional(first.toInt()) : std::nullopt;
}

/// What is saved: a sounds document or the settings, as the programs write them.
struct Store
{
    QString path;
    QString key;
    std::function<bool(int version)> save;

    /// The version in the file.
    std::optional<int> stored() const
    {
        const auto root = PropertyList::readFile(path, maximumSize);
        return root ? versionOf((*root)->value(key).array()) : std::nullopt;
    }
};

Store documentIn(const QString& folder)
{
    const QString path = folder + u"/test.blipsy"_s;
    if (!QFileInfo::exists(path)) {
        const auto root = Dictionary::create({{DocumentKey::clippings, entriesOf(0)}});
        std::ignore = AtomicFile::write(path, PropertyList::write(root));
    }
    SoundsDocument& document = SoundsDocument::shared();
    document.setPath(path);
    document.load();
    return {path, DocumentKey::clippings, [&document](int version) {
                document.root()->insert(DocumentKey::clippings, entriesOf(version));
                return document.save();
            }};
}

Store settings()
{
    Store store{Preferences::filePath(domain), u"Entries"_s, [](int version) {
                    Preferences::setValue(u"Entries"_s, entriesOf(version), domain);
                    return Preferences::synchronize(domain);
                }};
    if (!QFileInfo::exists(store.path)) {
        store.save(0);
    }
    return store;
}

bool hasLeftovers(const QString& path)
{
    return !QFileInfo(path).dir().entryList({u".blipsy-*"_s}, QDir::Files | QDir::Hidden).isEmpty();
}

void tell(int version)
{
    std::printf("%d\n", version);
    std::fflush(stdout);
}

/// Tells the version that it finds, then each one that it has saved.
int saveVersions(const Store& store, int count)
{
    std::optional<int> version = store.stored();
    if (!version || hasLeftovers(store.path)) {
        std::puts(version ? "a temporary file is left" : "no whole version");
        return 1;
    }
    tell(*version);
    for (; count > 0; --count) {
        if (!store.save(*version + 1)) {
            return 1;
        }
        tell(++*version);
    }
    return 0;
}

/// One setting after the other, as another process does at the same time with others.
int saveKeys(const QString& name, int count)
{
    for (int i = 0; i < count; ++i) {
        Preferences::setValue(name + QString::number(i), i, domain);
        Preferences::synchronize(domain);
    }
    // The other process may have had the lock for long.
    const QDeadlineTimer deadline(20s);
    while (!Preferences::synchronize(domain)) {
        if (deadline.hasExpired()) {
            return 1;
        }
    }
    return 0;
}

/// Saves with every number of free pages until one is enough, then where nothing may be written.
int saveWithoutRoom(const Store& store, const QString& folder)
{
    const auto refuses = [&](int version) {
        return !store.save(version) && store.stored() == 0 && !hasLeftovers(store.path);
    };
    QFile filler(folder + u"/filler"_s);
    if (!filler.open(QIODevice::WriteOnly)) {
        return 1;
    }
    qint64 size = 0;
    while (::posix_fallocate(filler.handle(), size, pageSize) == 0) {
        size += pageSize;
    }
    int refusals = 0;
    while (refuses(1) && filler.resize(size -= pageSize)) {
        ++refusals;
    }
    filler.close();
    const qint64 needed = QFileInfo(store.path).size() / pageSize;
    if (store.stored() != 1 || refusals < needed || !store.save(0)) {
        return 1;
    }
    const bool isRefused =
        ::mount(nullptr, qPrintable(folder), nullptr, MS_REMOUNT | MS_RDONLY, nullptr) == 0 && refuses(1);
    return isRefused ? 0 : 1;
}

} // namespace

/// The process that CrashSafetyTest kills, or leaves without room: COMMAND STORE FOLDER [COUNT]
int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const QString command = arguments.value(1);
    const QString folder = arguments.value(3);
    const int count = arguments.value(4).toInt();
    if (command == u"keys") {
        return saveKeys(arguments.value(2), count);
    }
    const bool isFull = command == u"full";
    if (isFull && ::mount("none", qPrintable(folder), "tmpfs", 0, "size=512k") != 0) {
        return 1;
    }
    const Store store = arguments.value(2) == u"document" ? documentIn(folder) : settings();
    if (!isFull) {
        return saveVersions(store, count);
    }
    return store.stored() == 0 ? saveWithoutRoom(store, folder) : 1;
}
