// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QtGlobal>

#include <chrono>
#include <functional>
#include <memory>

struct sd_event;
struct sd_event_source;

/// Waits for a bus that has gone: says when it is worth trying to connect again. That is a few times, at growing
/// distances, after it has gone and after something has appeared in the folder of its socket; in between nothing
/// wakes up. For the bus thread alone.
class BusReturn final
{
public:
    /// @p address is a bus address; where it names no socket in a folder only the tries after the loss are made.
    BusReturn(sd_event* loop, const QByteArray& address, std::function<void()> attempt);
    ~BusReturn();
    Q_DISABLE_COPY_MOVE(BusReturn)

    /// The bus has gone, or an attempt has failed: waits for the next.
    void wait();
    /// The bus has answered: the next loss begins with the short distances again.
    void end();

private:
    struct Release
    {
        void operator()(sd_event_source* source) const;
    };

    using Source = std::unique_ptr<sd_event_source, Release>;

    void arm(std::chrono::milliseconds delay);

    sd_event* m_loop;
    std::function<void()> m_attempt;
    QByteArray m_folder;
    int m_tries = 0;
    Source m_timer;
    Source m_watch;
};
