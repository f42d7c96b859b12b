// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

#include <unistd.h>

#include <tuple>
#include <utility>

/// Owns a descriptor of the system, or a negative number where none could be had.
class FileDescriptor final
{
public:
    explicit FileDescriptor(int descriptor)
        : m_descriptor(descriptor)
    {
    }

    ~FileDescriptor() { std::ignore = close(); }

    Q_DISABLE_COPY_MOVE(FileDescriptor)

    int get() const { return m_descriptor; }

    /// Some file systems report a failed write only here. The descriptor is gone even then.
    bool close() { return m_descriptor < 0 || ::close(std::exchange(m_descriptor, -1)) == 0; }

private:
    int m_descriptor;
};
