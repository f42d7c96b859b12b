// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QString>

#include <optional>

class QIcon;

/// The applications that are installed for this user, as the desktop's application folders list them. Why not by GIO:
/// docs/decisions/desktop-entries.md.
namespace DesktopApplications {

/// An application's desktop entry (freedesktop.org Desktop Entry Specification).
struct Entry
{
    /// Absolute path of the `.desktop` file.
    QString path = {};
    /// In the user's language.
    QString name = {};
    /// Name in the icon theme, or an absolute path; may be empty.
    QString icon = {};
    QString exec = {};
    /// What its windows have as one half of their WM_CLASS ("StartupWMClass"); mostly empty.
    QString windowClass = {};
    /// Not to be offered to the user: "NoDisplay", or meant for other desktops.
    bool isHidden = false;
    /// Deleted by the user: as if neither it nor the entries of its identifier in later folders were there. Without a
    /// name.
    bool isDeleted = false;
};

/// The entry in the file at @p path; nothing when it cannot be read or describes no application.
std::optional<Entry> read(const QString& path);

/// The applications to offer, by name: those of `$XDG_DATA_HOME/applications` and `$XDG_DATA_DIRS`, where an entry
/// hides those of the same identifier in later folders.
QList<Entry> installed();

/// The icon of @p entry; null when it names none that exists.
QIcon iconOf(const Entry& entry);

} // namespace DesktopApplications
