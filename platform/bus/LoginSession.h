// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

#include <functional>

class QObject;

/// The session that this process belongs to, as the login manager of the machine has it (public source:
/// org.freedesktop.login1).
namespace LoginSession {

inline constexpr auto service = "org.freedesktop.login1";
inline constexpr auto managerPath = "/org/freedesktop/login1";
inline constexpr auto managerInterface = "org.freedesktop.login1.Manager";
inline constexpr auto interface = "org.freedesktop.login1.Session";

/// Hands the path of the session's object to @p found, on the thread of @p context: as soon as it is known, and again
/// when the login manager is started anew. Never where there is no login manager, or no session.
void find(QObject* context, const std::function<void(const QByteArray& path)>& found);

/// Calls @p changed, on the thread of @p context and until that is destroyed, when the machine is about to sleep (true)
/// and when it is awake again (false).
void followSleep(QObject* context, const std::function<void(bool isAsleep)>& changed);

} // namespace LoginSession
