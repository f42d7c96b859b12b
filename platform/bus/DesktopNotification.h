// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <cstdint>
#include <memory>

/// A message that the desktop shows in passing (org.freedesktop.Notifications). Each object has one place there: what
/// it shows takes the place of what it has shown before. Where nobody shows notifications nothing happens. Nothing here
/// waits.
class DesktopNotification final
{
public:
    /// @p icon is a name in the icon theme or a path; empty for none.
    explicit DesktopNotification(const QString& icon);

    /// Both are plain texts, of whoever: they are cut to a length that fits, and what would be markup is shown as it
    /// is.
    void show(const QString& title, const QString& body) const;

private:
    QString m_icon;
    /// The number by which the server knows what is shown; 0 for nothing. Shared with the bus thread, which alone looks
    /// at it.
    std::shared_ptr<uint32_t> m_place;
};
