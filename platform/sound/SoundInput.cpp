// SPDX-License-Identifier: MIT
#include "SoundInput.h"

#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 unlimited = std::numeric_limits<qint64>::max();

} // namespace

SoundInput::SoundInput(int descriptor, qint64 size)
    : m_descriptor(descriptor)
    , m_size(size)
    , m_readLimit(unlimited)
{
}

SoundInput::~SoundInput()
{
    if (m_descriptor >= 0) {
        ::close(m_descriptor);
    }
}

Result<std::unique_ptr<SoundInput>> SoundInput::file(const QString& path)
{
    // Without O_NONBLOCK the opening of a FIFO would wait for somebody to write into it.
    const int descriptor = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY);
    if (descriptor < 0) {
        return Failure{QString::fromLocal8Bit(std::strerror(errno))};
    }
    struct stat status = {};
    if (::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) {
        ::close(descriptor);
        return Failure{u"not a regular file"_s};
    }
    return std::unique_ptr<SoundInput>(new SoundInput(descriptor, status.st_size));
}

std::unique_ptr<SoundInput> SoundInput::memory(QByteArray bytes)
{
    auto input = std::unique_ptr<SoundInput>(new SoundInput(-1, bytes.size()));
    input->m_bytes = std::move(bytes);
    return input;
}

bool SoundInput::seek(qint64 position)
{
    if (position < 0) {
        return false;
    }
    m_position = std::min(position, m_size);
    return true;
}

void SoundInput::removeReadLimit()
{
    m_readLimit = unlimited;
}

int SoundInput::read(std::span<quint8> target)
{
    const qint64 wanted =
        std::min({qint64(target.size()), m_size - m_position, m_readLimit, qint64(std::numeric_limits<int>::max())});
    if (wanted <= 0) {
        return 0;
    }
    qint64 count = wanted;
    if (m_descriptor >= 0) {
        do {
            count = ::pread(m_descriptor, target.data(), size_t(wanted), m_position);
        } while (count < 0 && errno == EINTR);
    } else {
        std::memcpy(target.data(), m_bytes.constData() + m_position, size_t(wanted));
    }
    if (count > 0) {
        m_position += count;
        m_readLimit -= count;
    }
    return int(count);
}
