// SPDX-License-Identifier: MIT
#pragma once

class Pasteboard;

/// What a drop will do; the values are those of the drag protocol.
enum class DragOperation { None = 0, Copy = 1, Link = 2 };

/// Where a drop lands: on a row, or between it and the one above.
enum class DropOperation { On, Above };

/// What is being dragged.
class DraggingInfo final
{
public:
    DraggingInfo(const Pasteboard& pasteboard, bool isLocal)
        : m_pasteboard(pasteboard)
        , m_isLocal(isLocal)
    {
    }

    const Pasteboard& draggingPasteboard() const { return m_pasteboard; }

    /// The drag began in this process.
    bool isLocal() const { return m_isLocal; }

private:
    const Pasteboard& m_pasteboard;
    bool m_isLocal;
};
