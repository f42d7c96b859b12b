// SPDX-License-Identifier: MIT
#include "AtomicFile.h"

#include "FileDescriptor.h"

#include <product/Product.h>

#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QRegularExpression>

#include <fcntl.h>
#include <linux/fs.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <span>
#include <system_error>
#include <tuple>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

/// As many links as the kernel itself follows.
constexpr int maximumLinks = 40;
constexpr int maximumNameAttempts = 16;
constexpr mode_t permissionBits = 07777;
constexpr mode_t privateMode = 0600;
constexpr mode_t newFileMode = 0666;
constexpr qint64 copyStep = 1 << 16;

/// A name that nobody else gives to a file, so that a leftover is told by it: the digits of a random number between
/// these two.
constexpr QLatin1StringView temporaryPrefix("." PRODUCT_NAME "-");
constexpr QLatin1StringView temporarySuffix(".tmp");
constexpr int temporaryDigits = 13;
constexpr int temporaryBase = 36;

std::error_code systemError()
{
    return {errno, std::generic_category()};
}

QByteArray temporaryName()
{
    const QString digits = QString::number(QRandomGenerator::global()->generate64(), temporaryBase);
    return (temporaryPrefix + digits.rightJustified(temporaryDigits, u'0') + temporarySuffix).toLatin1();
}

/// A file beside the target, removed again unless it has taken the target's place. It stays locked until then, which
/// tells removeLeftovers() that it is being written.
class TemporaryFile final
{
public:
    TemporaryFile(const QByteArray& folder, mode_t mode)
        : m_descriptor(open(folder, mode))
    {
    }

    ~TemporaryFile()
    {
        if (!m_path.isEmpty()) {
            ::unlink(m_path.constData());
        }
    }

    Q_DISABLE_COPY_MOVE(TemporaryFile)

    bool isOpen() const { return m_descriptor.get() >= 0; }

    /// All pieces in as few calls as possible: one for each takes half as long again for 30 MB.
    bool write(const QByteArrayList& pieces) const
    {
        std::vector<iovec> rest;
        rest.reserve(size_t(pieces.size()));
        for (const QByteArray& piece : pieces) {
            // The call takes what it only reads through a pointer that could write.
            rest.push_back({const_cast<char*>(piece.constData()), size_t(piece.size())});
        }
        for (std::span<iovec> unwritten(rest); !unwritten.empty();) {
            const ssize_t written =
                ::writev(m_descriptor.get(), unwritten.data(), int(std::min<size_t>(unwritten.size(), IOV_MAX)));
            if (written < 0 && errno != EINTR) {
                return false;
            }
            unwritten = after(unwritten, size_t(std::max<ssize_t>(written, 0)));
        }
        return true;
    }

    /// The blocks of @p source are shared where the file system can; otherwise its bytes are copied.
    bool copyFrom(QFile& source) const
    {
        if (::ioctl(m_descriptor.get(), FICLONE, source.handle()) == 0) {
            return true;
        }
        QByteArray bytes(copyStep, Qt::Uninitialized);
        qint64 size = source.read(bytes.data(), copyStep);
        while (size > 0 && write({QByteArray::fromRawData(bytes.constData(), size)})) {
            size = source.read(bytes.data(), copyStep);
        }
        return size == 0;
    }

    bool takeAttributesOf(const struct stat& target) const
    {
        // Only root may give a file away; a failure leaves it the user's own. The mode comes last, since a change of
        // owner clears some of its bits.
        std::ignore = ::fchown(m_descriptor.get(), target.st_uid, target.st_gid);
        return ::fchmod(m_descriptor.get(), target.st_mode & permissionBits) == 0;
    }

    /// A second descriptor is closed in time to hear of a failed write; the lock goes with the last one.
    bool sync() const
    {
        FileDescriptor second(::fcntl(m_descriptor.get(), F_DUPFD_CLOEXEC, 0));
        return ::fsync(m_descriptor.get()) == 0 && second.close();
    }

    bool replace(const QByteArray& target)
    {
        if (std::rename(m_path.constData(), target.constData()) != 0) {
            return false;
        }
        m_path.clear();
        return true;
    }

private:
    /// What is left of @p pieces once @p count bytes are written.
    static std::span<iovec> after(std::span<iovec> pieces, size_t count)
    {
        while (!pieces.empty() && count >= pieces.front().iov_len) {
            count -= pieces.front().iov_len;
            pieces = pieces.subspan(1);
        }
        if (!pieces.empty()) {
            pieces.front().iov_base = static_cast<char*>(pieces.front().iov_base) + count;
            pieces.front().iov_len -= count;
        }
        return pieces;
    }

    int open(const QByteArray& folder, mode_t mode)
    {
        for (int attempt = 0; attempt < maximumNameAttempts; ++attempt) {
            const QByteArray path = folder + '/' + temporaryName();
            const int descriptor = ::open(path.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
            if (descriptor < 0 && errno != EEXIST) {
                break;
            }
            if (descriptor >= 0 && lock(descriptor)) {
                m_path = path;
                return descriptor;
            }
            std::ignore = FileDescriptor(descriptor).close();
        }
        return -1;
    }

    /// False when somebody took the file for a leftover before it was locked. A file system without locks is none the
    /// worse: nobody removes a leftover there.
    static bool lock(int descriptor)
    {
        struct stat status = {};
        const bool isOthers = ::flock(descriptor, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
        return !isOthers && ::fstat(descriptor, &status) == 0 && status.st_nlink > 0;
    }

    QByteArray m_path;
    FileDescriptor m_descriptor;
};

/// The file that a chain of symbolic links ends at, whether it exists or not; empty when the chain has no end.
QString followLinks(QString path)
{
    for (int links = 0; links < maximumLinks; ++links) {
        const QFileInfo info(path);
        if (!info.isSymLink()) {
            return info.absoluteFilePath();
        }
        path = info.symLinkTarget();
    }
    return {};
}

std::error_code refusal(const QByteArray& target, const struct stat& existing)
{
    if (S_ISDIR(existing.st_mode)) {
        return std::make_error_code(std::errc::is_a_directory);
    }
    if (!S_ISREG(existing.st_mode)) {
        return std::make_error_code(std::errc::operation_not_permitted);
    }
    return ::access(target.constData(), W_OK) == 0 ? std::error_code() : systemError();
}

/// @p fill writes the content into the temporary file; false, with the system's error, when it could not.
template <typename Fill>
std::error_code replaceFile(const QByteArray& target, const QByteArray& folder, Fill fill)
{
    struct stat existing = {};
    const bool exists = ::stat(target.constData(), &existing) == 0;
    if (exists) {
        if (const std::error_code refused = refusal(target, existing)) {
            return refused;
        }
    } else if (errno != ENOENT) {
        return systemError();
    }

    // What only some may read stays theirs while it is being written, too.
    TemporaryFile temporary(folder, exists ? privateMode : newFileMode);
    if (!temporary.isOpen() || !fill(temporary) || (exists && !temporary.takeAttributesOf(existing)) ||
        !temporary.sync() || !temporary.replace(target)) {
        return systemError();
    }
    // The folder is not synced: a power cut right now leaves the old file, whole, and a drag of a slider saves at every
    // step.
    return {};
}

template <typename Fill>
Result<void> replace(const QString& path, Fill fill)
{
    const QString target = followLinks(path);
    const std::error_code error =
        path.isEmpty()     ? std::make_error_code(std::errc::no_such_file_or_directory)
        : target.isEmpty() ? std::make_error_code(std::errc::too_many_symbolic_link_levels)
                           : replaceFile(QFile::encodeName(target), QFile::encodeName(QFileInfo(target).path()), fill);
    if (!error) {
        return {};
    }
    return Failure{u"cannot write %1: %2"_s.arg(path, QString::fromStdString(error.message()))};
}

/// Removes the file unless a living process has it locked. Whoever has written it to the end has renamed it before
/// letting go of the lock, so that there is nothing of that name any more.
void removeUnlessLocked(const QByteArray& path)
{
    const FileDescriptor file(::open(path.constData(), O_WRONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    struct stat status = {};
    if (file.get() >= 0 && ::fstat(file.get(), &status) == 0 && S_ISREG(status.st_mode) &&
        status.st_uid == ::geteuid() && ::flock(file.get(), LOCK_EX | LOCK_NB) == 0) {
        ::unlink(path.constData());
    }
}

} // namespace

Result<void> AtomicFile::write(const QString& path, QByteArrayView bytes)
{
    return write(path, QByteArrayList{QByteArray::fromRawData(bytes.data(), bytes.size())});
}

Result<void> AtomicFile::write(const QString& path, const QByteArrayList& pieces)
{
    return replace(path, [&pieces](const TemporaryFile& file) { return file.write(pieces); });
}

Result<void> AtomicFile::copy(QFile& source, const QString& path)
{
    return replace(path, [&source](const TemporaryFile& file) { return file.copyFrom(source); });
}

void AtomicFile::removeLeftovers(const QString& path)
{
    static const QRegularExpression pattern(u"^%1[0-9a-z]{%2}%3$"_s.arg(QRegularExpression::escape(temporaryPrefix))
                                                .arg(temporaryDigits)
                                                .arg(QRegularExpression::escape(temporarySuffix)));
    QDirIterator entries(QFileInfo(followLinks(path)).path(), {temporaryPrefix + u'*'}, QDir::Files | QDir::Hidden);
    while (entries.hasNext()) {
        const QString entry = entries.next();
        if (pattern.match(entries.fileName()).hasMatch()) {
            removeUnlessLocked(QFile::encodeName(entry));
        }
    }
}
