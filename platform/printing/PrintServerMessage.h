// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <chrono>

/// What is said to a print server about a subscription to the events of all its printers, as HTTP/1.0 over the server's
/// socket (public sources: Internet Printing Protocol, RFC 8010, RFC 8011 and RFC 3995; CUPS for "dbus://" and for the
/// way in which a user of the same machine is known).
namespace PrintServerMessage {

/// Asks that the server tells the system bus about the jobs' states, for as long as @p lease. @p user is the login name
/// of the user who asks.
QByteArray subscribe(const QByteArray& user, std::chrono::seconds lease);

/// Asks for another @p lease from now on.
QByteArray renew(const QByteArray& user, qint32 subscription, std::chrono::seconds lease);

struct Answer
{
    bool isGranted = false;
    /// 0 where the answer names none.
    qint32 subscription = 0;
};

/// Reads all that the server has sent. What is not well-formed grants nothing.
Answer read(QByteArrayView answer);

} // namespace PrintServerMessage
