// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <optional>

/// A window of another program, or of this one, as the window manager shows it.
struct SessionWindow
{
    /// Extended Window Manager Hints, _NET_WM_WINDOW_TYPE. Menu is any kind of menu, torn off or not.
    enum class Type { Normal, Dialog, Menu, ToolTip, Notification, Other };

    /// The server's number of the window.
    quint32 id = 0;
    /// The process on this machine that has made it; 0 when that is not known.
    qint64 pid = 0;
    /// The two halves of WM_CLASS: "xterm" and "XTerm". May be empty.
    QString instanceName = {};
    QString windowClass = {};
    Type type = Type::Normal;
    /// Minimized, or hidden otherwise by the window manager's own doing.
    bool isHidden = false;
    bool demandsAttention = false;
    /// Counted from 0, 0xFFFFFFFF on all of them; nothing when that is not told.
    std::optional<quint32> desktop = {};
    /// The application that it belongs to, as users choose one: the path of its desktop entry; of its program where it
    /// has no entry; empty where that is not known, either.
    QString applicationPath = {};

    bool operator==(const SessionWindow&) const = default;
};
