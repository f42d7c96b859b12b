// SPDX-License-Identifier: MIT
#include "ResourceFile.h"

#include "ForkLocator.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <limits>
#include <memory>

namespace {

struct OpenFile
{
    qint16 reference = 0;
    ResourceFork fork;
    /// Kept open with the access that was asked for.
    std::unique_ptr<QFile> container;
};

struct Chain
{
    /// Oldest first.
    std::vector<OpenFile> files;
    qint16 current = 0;
    qint16 lastError = ResourceFile::noErr;

    auto find(qint16 reference)
    {
        return std::find_if(
            files.begin(), files.end(), [reference](const OpenFile& file) { return file.reference == reference; });
    }

    /// The smallest number that is not in use; 0 when all are.
    qint16 freeReference()
    {
        qint16 reference = 1;
        while (find(reference) != files.end()) {
            if (reference == std::numeric_limits<qint16>::max()) {
                return 0;
            }
            ++reference;
        }
        return reference;
    }
};

Chain& chain()
{
    static Chain chain;
    return chain;
}

/// Why the file at @p path does not open, as far as the file itself tells.
qint16 accessError(const QString& path, ResourceFile::Access access)
{
    const QFileInfo file(path);
    if (!file.isFile()) {
        return ResourceFile::fileNotFoundError;
    }
    if (!file.isReadable() || (access == ResourceFile::Access::ReadWrite && !file.isWritable())) {
        return ResourceFile::permissionError;
    }
    return ResourceFile::noErr;
}

qint16 failed(qint16 error)
{
    chain().lastError = error;
    return -1;
}

const ResourceFork* currentFork()
{
    const auto file = chain().find(chain().current);
    return file == chain().files.end() ? nullptr : &file->fork;
}

/// The bytes of a resource that was looked for; sets the result code.
std::optional<QByteArray> answer(const ResourceFork* fork, const ResourceFork::Resource* resource)
{
    auto data = resource ? fork->data(*resource) : std::nullopt;
    chain().lastError = data ? ResourceFile::noErr : ResourceFile::resourceNotFoundError;
    return data;
}

} // namespace

qint16 ResourceFile::open(const QString& path, Access access)
{
    if (const qint16 error = accessError(path, access); error != noErr) {
        return failed(error);
    }
    ForkLocator::ForkSearch search = ForkLocator::resourceFork(path);
    if (!search.found) {
        return failed(search.damage.isEmpty() ? endOfFileError : badMapError);
    }
    const qint16 reference = chain().freeReference();
    if (reference == 0) {
        return failed(tooManyFilesError);
    }
    const auto mode = access == Access::ReadWrite ? QIODevice::ReadWrite : QIODevice::ReadOnly;
    auto container = std::make_unique<QFile>(search.found->container);
    if (!container->open(mode | QIODevice::ExistingOnly)) {
        return failed(permissionError);
    }
    chain().files.push_back({reference, std::move(search.found->fork), std::move(container)});
    chain().current = reference;
    chain().lastError = noErr;
    return reference;
}

void ResourceFile::close(qint16 reference)
{
    auto& [files, current, lastError] = chain();
    const auto file = chain().find(reference);
    if (file == files.end()) {
        lastError = resourceFileNotFoundError;
        return;
    }
    const auto next = files.erase(file);
    if (current == reference) {
        current = files.empty() ? qint16(0) : next == files.begin() ? files.back().reference : (next - 1)->reference;
    }
    lastError = noErr;
}

qint16 ResourceFile::current()
{
    return chain().current;
}

void ResourceFile::setCurrent(qint16 reference)
{
    const bool isOpen = reference == 0 || chain().find(reference) != chain().files.end();
    chain().lastError = isOpen ? noErr : resourceFileNotFoundError;
    if (isOpen) {
        chain().current = reference;
    }
}

qint16 ResourceFile::lastError()
{
    return chain().lastError;
}

std::vector<ResourceFork::Resource> ResourceFile::resourcesOfCurrentFile()
{
    const ResourceFork* fork = currentFork();
    chain().lastError = noErr;
    return fork ? fork->resources() : std::vector<ResourceFork::Resource>();
}

int ResourceFile::countInCurrentFile(quint32 type)
{
    const ResourceFork* fork = currentFork();
    chain().lastError = noErr;
    return fork ? fork->count(type) : 0;
}

std::optional<QByteArray> ResourceFile::inCurrentFileAtIndex(quint32 type, int index)
{
    const ResourceFork* fork = currentFork();
    return answer(fork, fork ? fork->atIndex(type, index) : nullptr);
}

std::optional<QByteArray> ResourceFile::inCurrentFileWithId(quint32 type, qint16 id)
{
    const ResourceFork* fork = currentFork();
    return answer(fork, fork ? fork->withId(type, id) : nullptr);
}

std::optional<QByteArray> ResourceFile::inCurrentFileWithName(quint32 type, QByteArrayView name)
{
    const ResourceFork* fork = currentFork();
    return answer(fork, fork ? fork->withName(type, name) : nullptr);
}

std::optional<QByteArray> ResourceFile::inChainWithName(quint32 type, QByteArrayView name)
{
    const auto current = chain().find(chain().current);
    if (current == chain().files.end()) {
        return answer(nullptr, nullptr);
    }
    for (auto file = std::make_reverse_iterator(current + 1); file != chain().files.rend(); ++file) {
        if (const ResourceFork::Resource* resource = file->fork.withName(type, name)) {
            return answer(&file->fork, resource);
        }
    }
    return answer(nullptr, nullptr);
}
