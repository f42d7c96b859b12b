// SPDX-License-Identifier: MIT
#include "AlertVolume.h"

#include "SoundServer.h"

#include <QByteArray>

#include <pulse/context.h>
#include <pulse/ext-stream-restore.h>
#include <pulse/operation.h>

#include <algorithm>
#include <chrono>
#include <optional>
#include <utility>

namespace {

constexpr const char* entryName = "sink-input-by-media-role:event";
constexpr quint32 fullLevel = 0x0100;
constexpr quint32 levelMask = 0xFFFF;
/// The server's volumes per level: exact, since the server's full volume is a multiple of ours.
constexpr quint32 volumesPerLevel = PA_VOLUME_NORM / fullLevel;
constexpr std::chrono::milliseconds readTimeout{100};

/// What the server stores for the role. An entry need not hold a volume: it is full then.
struct StoredVolume
{
    pa_channel_map channels = {.channels = 1, .map = {PA_CHANNEL_POSITION_MONO}};
    pa_cvolume volume = {.channels = 1, .values = {PA_VOLUME_NORM}};
    std::optional<QByteArray> device;
    bool muted = false;

    quint32 level() const
    {
        return muted ? 0 : std::min((pa_cvolume_max(&volume) + volumesPerLevel / 2) / volumesPerLevel, fullLevel);
    }
};

StoredVolume storedIn(const pa_ext_stream_restore_info& entry)
{
    StoredVolume stored;
    stored.muted = entry.mute != 0;
    if (entry.device != nullptr) {
        stored.device = entry.device;
    }
    if (pa_cvolume_valid(&entry.volume) != 0) {
        stored.channels = entry.channel_map;
        stored.volume = entry.volume;
    }
    return stored;
}

/// The server's entry for the role: asked for at every use, since not every server tells when another program changes
/// it. Everything here happens with the server locked.
class AlertVolumeEntry final
{
    Q_DISABLE_COPY_MOVE(AlertVolumeEntry)

public:
    static AlertVolumeEntry& instance();

    AlertVolume::Reading read(SoundServer::Lock& lock);
    void set(quint32 level);

private:
    AlertVolumeEntry();
    ~AlertVolumeEntry() = default;

    void ask();
    void receive(const pa_ext_stream_restore_info* entry, int endOfList);
    void write();

    SoundServer& m_server = SoundServer::instance();
    /// What the server told last; nothing before it has, or where it stores no volumes.
    std::optional<StoredVolume> m_stored;
    /// A question is under way, and what has been told in answer to it.
    bool m_isAsking = false;
    StoredVolume m_incoming;
    /// A level to be set, once the server has told what else belongs to the entry.
    std::optional<quint32> m_pendingLevel;
    /// The server was waited for and did not answer: it is not waited for again until it does.
    bool m_isSilent = false;
};

void forget(pa_operation* operation)
{
    if (operation != nullptr) {
        pa_operation_unref(operation);
    }
}

AlertVolumeEntry& AlertVolumeEntry::instance()
{
    // Never destroyed, as the server that calls it back is not.
    static auto& entry = *new AlertVolumeEntry;
    return entry;
}

AlertVolumeEntry::AlertVolumeEntry()
{
    m_server.whenConnected([this](pa_context* /*context*/) {
        m_stored.reset();
        m_isAsking = false;
        m_isSilent = false;
        ask();
    });
}

AlertVolume::Reading AlertVolumeEntry::read(SoundServer::Lock& lock)
{
    m_server.connect();
    ask();
    const auto isAnswered = [this] {
        return !m_server.isConnecting() && (m_server.context() == nullptr || !m_isAsking);
    };
    m_isSilent = !m_server.wait(lock, m_isSilent ? std::chrono::milliseconds(0) : readTimeout, isAnswered);
    if (m_server.context() == nullptr || !m_stored) {
        return {AlertVolume::noHardwareError, 0};
    }
    const quint32 level = m_stored->level();
    return {0, level | level << 16U};
}

void AlertVolumeEntry::set(quint32 level)
{
    m_pendingLevel = level;
    m_server.connect();
    ask();
}

void AlertVolumeEntry::ask()
{
    if (m_server.context() == nullptr || m_isAsking) {
        return;
    }
    m_incoming = {};
    const auto receive = [](pa_context*, const pa_ext_stream_restore_info* entry, int endOfList, void* self) {
        static_cast<AlertVolumeEntry*>(self)->receive(entry, endOfList);
    };
    pa_operation* const question = pa_ext_stream_restore_read(m_server.context(), receive, this);
    m_isAsking = question != nullptr;
    forget(question);
}

void AlertVolumeEntry::receive(const pa_ext_stream_restore_info* entry, int endOfList)
{
    if (endOfList == 0) {
        if (qstrcmp(entry->name, entryName) == 0) {
            m_incoming = storedIn(*entry);
        }
        return;
    }
    m_isAsking = false;
    m_isSilent = false;
    m_stored = endOfList > 0 ? std::optional(m_incoming) : std::nullopt;
    if (m_stored && m_pendingLevel) {
        write();
    }
    m_server.notifyWaiting();
}

void AlertVolumeEntry::write()
{
    const quint32 level = *std::exchange(m_pendingLevel, std::nullopt);
    pa_cvolume_set(&m_stored->volume, m_stored->channels.channels, level * volumesPerLevel);
    m_stored->muted = m_stored->muted && level == 0;
    const pa_ext_stream_restore_info entry = {entryName, m_stored->channels, m_stored->volume,
        m_stored->device ? m_stored->device->constData() : nullptr, m_stored->muted ? 1 : 0};
    forget(pa_ext_stream_restore_write(m_server.context(), PA_UPDATE_REPLACE, &entry, 1, 1, nullptr, nullptr));
}

} // namespace

AlertVolume::Reading AlertVolume::getSysBeepVolume()
{
    SoundServer::Lock lock(SoundServer::instance());
    return AlertVolumeEntry::instance().read(lock);
}

void AlertVolume::setSysBeepVolume(quint32 level)
{
    const SoundServer::Lock lock(SoundServer::instance());
    AlertVolumeEntry::instance().set(std::min(level & levelMask, fullLevel));
}
