// SPDX-License-Identifier: MIT
#pragma once

#include <platform/plist/PropertyList.h>

#include <QString>
#include <QStringList>

/// The preferences domains of the user: one property-list file per domain under
/// `$XDG_CONFIG_HOME/blipsy/preferences/`, shared with other processes. Main thread only.
///
/// A write takes the domain's lock, reads the file again, merges what this process has set, and replaces the file
/// atomically. A read parses the file only when it has changed since the last read (one `stat` otherwise). A file that
/// cannot be read or parsed changes nothing of what was read before, and is never overwritten; one log line per state
/// of the file names it and the reason. Values that could not be stored are kept, are seen by this process, and are
/// written by the next synchronize() that can; where another process held the lock for too long that happens by itself
/// soon after. What a killed process leaves half-written in the folder is removed, and its lock is free at once.
namespace Preferences {

/// Sets @p key in @p domain for the current user (a null value removes it). Kept in memory until synchronize();
/// containers are copied.
void setValue(const QString& key, const PropertyList::Value& value, const QString& domain);

/// The value of @p key in exactly @p domain, a copy; a null Value where it is not set.
PropertyList::Value copyValue(const QString& key, const QString& domain);

/// Writes what was set and reads what others wrote. False when the domain could not be stored (logged). Waits at most
/// some 40 ms for a process that holds the lock.
bool synchronize(const QString& domain);

/// The file that holds @p domain.
QString filePath(const QString& domain);

} // namespace Preferences

/// The defaults that this process reads through a search list: the host's own domain (named after the application), the
/// attached suites in the order in which they were added, then the global domain ("global"). Main thread only.
class UserDefaults final
{
public:
    static UserDefaults& standardUserDefaults();

    /// Attaches a domain to the search list; attaching it again changes nothing.
    void addSuiteNamed(const QString& domain);
    /// Refreshes every domain of the list from storage: one `stat` for each whose file has not changed.
    void synchronize();
    /// The first value found under @p key as of the last refresh; null where no domain has it. Containers are copies:
    /// changing them changes nothing in the store.
    PropertyList::Value objectForKey(const QString& key) const;
    /// The same, but what the user has set for the host or for all programs: the suites are not asked.
    static PropertyList::Value objectForKeyOutsideSuites(const QString& key);

private:
    UserDefaults() = default;

    static PropertyList::Value firstValue(const QString& key, const QStringList& domains);
    QStringList searchList() const;

    QStringList m_suites;
};
