// SPDX-License-Identifier: MIT
#include <platform/bus/BusValues.h>

#include <sys/socket.h>
#include <systemd/sd-bus.h>
#include <unistd.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

/// What a bus answers to a client that introduces itself.
constexpr std::string_view welcome = "DATA\r\nOK 00000000000000000000000000000000\r\n";

int readArguments(sd_bus_message* message, void* /*userData*/, sd_bus_error* /*error*/)
{
    if (BusValues::readAll(message).size() > 16) {
        qFatal("too many arguments");
    }
    return 1;
}

} // namespace

/// The bytes that come from a bus after the introduction, whatever they are: every message that the library takes is
/// read to its end.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    constexpr std::size_t roomInSocket = 65'536;
    std::array<int, 2> ends{};
    if (size > roomInSocket || socketpair(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0, ends.data()) != 0) {
        return 0;
    }
    sd_bus* bus = nullptr;
    sd_bus_new(&bus);
    sd_bus_set_fd(bus, ends[0], ends[0]);
    sd_bus_negotiate_fds(bus, 0);
    sd_bus_add_filter(bus, nullptr, readArguments, nullptr);
    const bool isWritten = write(ends[1], welcome.data(), welcome.size()) == ssize_t(welcome.size()) &&
                           write(ends[1], data, size) == ssize_t(size);
    if (isWritten && sd_bus_start(bus) >= 0) {
        while (sd_bus_process(bus, nullptr) > 0) {
        }
    }
    sd_bus_close_unref(bus);
    close(ends[1]);
    return 0;
}
