// SPDX-License-Identifier: MIT
#include <platform/printing/PrintServerMessage.h>

#include <QtGlobal>

#include <cstddef>
#include <cstdint>

/// What whoever listens at the print server's socket has answered. What is not granted has no number.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto answer = PrintServerMessage::read({reinterpret_cast<const char*>(data), qsizetype(size)});
    if (!answer.isGranted && answer.subscription != 0) {
        qFatal("a subscription that was not granted");
    }
    return 0;
}
