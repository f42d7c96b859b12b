// SPDX-License-Identifier: MIT
#include "FileLock.h"

#include <QDeadlineTimer>
#include <QFile>

#include <fcntl.h>
#include <sys/file.h>

#include <cerrno>
#include <thread>

using namespace std::chrono_literals;

namespace {

constexpr auto pauseBetweenTries = 1ms;
constexpr mode_t privateMode = 0600;

} // namespace

FileLock::FileLock(const QString& path)
    : m_path(QFile::encodeName(path))
{
}

std::error_code FileLock::lockWithin(std::chrono::milliseconds timeout)
{
    const QDeadlineTimer deadline(timeout);
    std::error_code error = lock();
    while (error == std::errc::resource_unavailable_try_again && !deadline.hasExpired()) {
        std::this_thread::sleep_for(pauseBetweenTries);
        error = lock();
    }
    return error;
}

std::error_code FileLock::lock()
{
    if (!m_file) {
        m_file.emplace(::open(m_path.constData(), O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC, privateMode));
    }
    if (m_file->get() < 0) {
        const int error = errno;
        m_file.reset();
        return {error, std::generic_category()};
    }
    const bool isOthers = ::flock(m_file->get(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
    return isOthers ? std::make_error_code(std::errc::resource_unavailable_try_again) : std::error_code();
}
