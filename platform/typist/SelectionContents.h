// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QtGlobal>

#include <vector>

/// One of the forms in which the owner of a selection (the clipboard is one) offers its contents. Targets and types are
/// atoms of the X server. Public source: "Inter-Client Communication Conventions Manual", section 2.
struct SelectionFormat
{
    quint32 target = 0;
    quint32 type = 0;
    /// Bits to a unit: 8, 16 or 32. The bytes are in the order of this machine.
    quint8 unit = 8;
    QByteArray bytes;

    bool operator==(const SelectionFormat&) const = default;
};

/// All its forms; none of a selection that nobody owns.
using SelectionContents = std::vector<SelectionFormat>;
