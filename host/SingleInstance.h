// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusContext>
#include <QLockFile>
#include <QObject>

#include <functional>
#include <optional>

/// Sees to it that one program runs in a session: a second one hands over what it was asked for and ends.
///
/// Two windows would overwrite each other's document. The first owns a bus name, under which the others reach it, and a
/// lock file besides, which also holds where there is no bus, or none that answers. See
/// docs/decisions/one-instance.md.
class SingleInstance final : public QObject, protected QDBusContext
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(SingleInstance)
    Q_CLASSINFO("D-Bus Interface", "com.blipsy.Settings")

public:
    struct Request
    {
        /// An absolute path; empty for the document in use.
        QString document;
        /// A tab's name; empty for the one that is shown.
        QString tab;
        /// The desktop's permission to take the keyboard, where it gives one (`XDG_ACTIVATION_TOKEN`).
        QString activationToken;
    };

    /// Carries a request out, or answers why it cannot, at once: whoever asks is waiting.
    using Handler = std::function<std::optional<QString>(const Request&)>;

    /// Without @p hasBus there is no bus that answers.
    explicit SingleInstance(bool hasBus);
    ~SingleInstance() override;

    /// Makes this the session's one instance. False when there is another.
    bool claim();
    /// After a claim that failed: asks the other one to carry @p request out. Waits up to five seconds. Nothing when it
    /// does, or else the reason in words.
    std::optional<QString> handOver(const Request& request) const;
    /// Gives the requests of later starts to @p handler. Those that have come since claim() wait for the event loop.
    void serve(Handler handler);

public Q_SLOTS:
    /// Called by a second start, through the bus.
    Q_SCRIPTABLE void Show(const QString& document, const QString& tab, const QString& activationToken);

private:
    bool m_hasBus;
    bool m_isReachable = false;
    QLockFile m_lock;
    Handler m_handler;
};
