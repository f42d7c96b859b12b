// SPDX-License-Identifier: MIT
#include <platform/input/DeviceStream.h>

#include <QCoreApplication>

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

/// Streams of input devices, in two pieces, the first as long as the first byte says: each key that is told to go down
/// is told to come up again, at the end of the stream at the latest.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static int argumentCount = 0;
    static const QCoreApplication application(argumentCount, nullptr);
    std::array<int, 2> ends{};
    constexpr std::size_t roomInPipe = 65'536;
    if (size == 0 || size > roomInPipe || pipe2(ends.data(), O_NONBLOCK | O_CLOEXEC) != 0) {
        return 0;
    }
    bool ended = false;
    DeviceStream::Keys told;
    DeviceStream stream(ends[0], nullptr);
    QObject::connect(&stream, &DeviceStream::ended, &stream, [&ended] { ended = true; });
    QObject::connect(
        &stream, &DeviceStream::keyChanged, &stream, [&told](quint16 code, DeviceStream::KeyChange change) {
            told.set(code, change != DeviceStream::KeyChange::Release);
        });
    const std::size_t first = std::min<std::size_t>(data[0], size - 1);
    const bool isWritten = write(ends[1], data + 1, first) == ssize_t(first);
    QCoreApplication::processEvents();
    const bool isRestWritten = write(ends[1], data + 1 + first, size - 1 - first) == ssize_t(size - 1 - first);
    close(ends[1]);
    while (!ended) {
        QCoreApplication::processEvents();
    }
    if (!isWritten || !isRestWritten || told.any() || stream.heldKeys().any()) {
        qFatal("a key stays down");
    }
    return 0;
}
