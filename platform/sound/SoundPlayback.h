// SPDX-License-Identifier: MIT
#pragma once

#include "SoundServer.h"

#include <platform/bytes/Result.h>

#include <QString>
#include <QtGlobal>

#include <chrono>
#include <memory>
#include <span>
#include <vector>

class SoundSource;
class SoundStream;
struct SoundFormat;

/// One sound on its way to the default output: a stream of its own on the sound server, for as long as the sound plays.
///
/// The server buffers two seconds of it; what is played is read just ahead of that.
class SoundPlayback final
{
    Q_DISABLE_COPY_MOVE(SoundPlayback)

public:
    enum class End {
        PlayedToTheEnd,
        Stopped,
        /// There is no server, of which the log has been told (see SoundServer::reportAbsence).
        Unheard,
    };

    /// @p gain is what the samples are multiplied by, 0 to 1.
    explicit SoundPlayback(float gain = 1)
        : m_gain(gain)
    {
    }

    ~SoundPlayback() = default;

    /// Plays @p source and returns when its last sample has been heard, when stop() is called, when there is no server,
    /// or, with the reason, when it cannot go on: the server fails or keeps silent for SoundServer::patience, or the
    /// output takes nothing more. For one thread, once.
    Result<End> run(SoundSource& source);
    /// Ends run() from another thread, or before it has begun; returns at once. Without the server's lock held.
    void stop();

private:
    using Clock = std::chrono::steady_clock;
    using Lock = SoundServer::Lock;

    std::unique_ptr<SoundStream> openStream(Lock& lock, const SoundFormat& format);
    bool writeAll(Lock& lock, SoundStream& stream, SoundSource& source);
    std::span<const float> attenuated(std::span<const float> samples);
    bool write(Lock& lock, SoundStream& stream, std::span<const float> samples);
    bool waitUntilHeard(Lock& lock, SoundStream& stream);
    template <typename Condition>
    bool waitFor(Lock& lock, SoundStream& stream, Condition condition);
    bool fail(const QString& reason);

    SoundServer& m_server = SoundServer::instance();
    const float m_gain;
    /// Samples after the gain.
    std::vector<float> m_attenuated;
    bool m_stopped = false;
    /// Why run() fails; empty while there is no server.
    QString m_error;
};
