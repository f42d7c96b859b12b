// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QTimer>

#include <memory>
#include <optional>

struct DistributedNotification;

/// The helper's side of what it has agreed upon with the settings pane: the service that says that it runs, the build
/// number in the settings, and the notifications.
class HelperContract final : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HelperContract)

public:
    /// What the pane finds under "MenuBuild".
    static constexpr int build = 10012;

    HelperContract();
    ~HelperContract() override;

    /// Registers the service; begun() follows, or refused() where another helper runs or there is no session bus.
    void begin();

    /// What begun() or changed() has asked for is done.
    void concludeChange();

    /// Tells the pane that nothing that is typed can be seen.
    static void tellTypingIsUnseen();

Q_SIGNALS:
    void begun();
    void refused();
    /// The session bus is gone, and with it the session, or all that ties the helper to it.
    void lost();
    /// Settings and document have changed; once for a burst. concludeChange() is to follow.
    void changed();
    /// Phrases that are typed are to set nothing off, or to do so again: the pane edits one, and has ended or died.
    void typingHeld(bool isHeld);
    /// The pane lets the user hear an event with this code, 0 to 79 ...
    void eventRequested(int code);
    /// ... or the suitcase at an absolute path.
    void suitcaseRequested(const QString& path);

private:
    void take(const DistributedNotification& notification);
    void takeChange();
    void takeEvent(const DistributedNotification& notification);
    void holdTyping(const QString& holder);
    void releaseTyping();

    QTimer m_burst;
    /// From begun() and changed() to concludeChange().
    bool m_isChanging = true;
    /// An event that is to be played at the volume that the change under way brings.
    std::optional<int> m_eventAfterChange;
    /// Follows the program that has typing held; null while it is not held.
    std::unique_ptr<QObject> m_holder;
};
