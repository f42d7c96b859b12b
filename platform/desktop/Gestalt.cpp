// SPDX-License-Identifier: MIT
#include "Gestalt.h"

#include <bit>

namespace Gestalt {

qint32 nativeArchitecture()
{
    return std::endian::native == std::endian::little ? intelArchitecture : bigEndianArchitecture;
}

Answer query(quint32 selector)
{
    if (selector != systemArchitecture) {
        return {undefinedSelectorError, 0};
    }
    return {0, nativeArchitecture()};
}

} // namespace Gestalt
