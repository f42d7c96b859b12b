// SPDX-License-Identifier: MIT
#pragma once

#include "PTKeyCombo.h"

#include <QObject>
#include <QPointer>
#include <QString>

#include <functional>
#include <memory>
#include <optional>

/// A named binding of a key combination to an action. It is not a hot key of the system until PTHotKeyCenter registers
/// it.
class PTHotKey final
{
public:
    using Pointer = std::shared_ptr<PTHotKey>;
    /// Called with the hot key itself.
    using Action = std::function<void(PTHotKey*)>;

    /// Without an identifier, with the clear combination.
    PTHotKey() = default;
    /// A missing combination becomes the clear one.
    PTHotKey(const std::optional<QString>& identifier, const std::optional<PTKeyCombo>& keyCombo);

    /// The key under which PTHotKeyCenter finds the hot key; nothing when it has none, which
    /// an empty one is not.
    const std::optional<QString>& identifier() const { return mIdentifier; }

    void setIdentifier(const std::optional<QString>& identifier) { mIdentifier = identifier; }

    /// The name shown to the user.
    const QString& name() const { return mName; }

    void setName(const QString& name) { mName = name; }

    const PTKeyCombo& keyCombo() const { return mKeyCombo; }

    /// A missing combination becomes the clear one. A hot key that is registered stays so under its old combination.
    void setKeyCombo(const std::optional<PTKeyCombo>& keyCombo);

    /// Who receives the action; held weakly.
    QObject* target() const { return mTarget; }

    void setTarget(QObject* target) { mTarget = target; }

    const Action& action() const { return mAction; }

    void setAction(Action action) { mAction = std::move(action); }

    /// Performs the action; nothing happens without one, or when the target is gone.
    void invoke();
    /// For the log: "<PTHotKey: identifier, combination>", with "(null)" for a missing identifier.
    QString description() const;

private:
    std::optional<QString> mIdentifier;
    QString mName;
    PTKeyCombo mKeyCombo;
    QPointer<QObject> mTarget;
    Action mAction;
};
