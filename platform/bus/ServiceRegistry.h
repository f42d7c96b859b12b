// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <functional>

class QObject;

/// The services that programs of this session register under well-known names on the session bus.
namespace ServiceRegistry {

/// Registers the service @p name for this process, for as long as it runs and the bus stands, and hands to @p answered,
/// on the thread of @p context, whether that is done. The answer is no where another program has registered it, where
/// there is no bus, or where it does not answer within two seconds. Returns at once.
void registerService(const QString& name, QObject* context, const std::function<void(bool)>& answered);

/// Asks whether a program has registered the service @p name, and hands the answer to @p answered on the thread of
/// @p context, unless that has been destroyed by then. Returns at once. Where there is no bus, or it does not answer
/// within half a second, the answer is no.
void isRegistered(const QString& name, QObject* context, const std::function<void(bool)>& answered);

} // namespace ServiceRegistry
