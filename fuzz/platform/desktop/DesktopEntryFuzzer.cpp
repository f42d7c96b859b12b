// SPDX-License-Identifier: MIT
#include <platform/desktop/DesktopApplications.h>

#include <QString>

#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>

/// An application's desktop entry, as any program may have put it into the user's folder. What is offered has a name.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const int file = ::memfd_create("entry", MFD_CLOEXEC);
    if (file >= 0 && ::write(file, data, size) == ssize_t(size)) {
        const auto entry = DesktopApplications::read(QStringLiteral("/proc/self/fd/%1").arg(file));
        if (entry && entry->name.isEmpty() && !entry->isDeleted) {
            qFatal("an application without a name");
        }
    }
    ::close(file);
    return 0;
}
