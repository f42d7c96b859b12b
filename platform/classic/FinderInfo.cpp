// SPDX-License-Identifier: MIT
#include "FinderInfo.h"

#include <platform/bytes/BoundedBytes.h>

FinderInfo FinderInfo::parse(QByteArrayView bytes)
{
    const BoundedBytes block(bytes);
    return {block.big<quint32>(0), block.big<quint32>(4), block.big<quint16>(8)};
}
