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

/// What the server stores for the role, as it was last told.
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

/// Follows the stored volume. Everything here happens with the server locked.
class VolumeFollower final
{
    Q_DISABLE_COPY_MOVE(VolumeFollower)

public:
    static VolumeFollower& instance();

    AlertVolume::Reading read(SoundServer::Lock& lock);
    void set(quint32 level);

private:
    enum class State { Unknown, Known, Unavailable };

    VolumeFollower();
    ~VolumeFollower() = default;

    void follow(pa_context* context);
    void refresh();
    void receiveEntry(const pa_ext_stream_restore_info* entry, int endOfList);
    void write();

    SoundServer& m_server = SoundServer::instance();
    State m_state = State::Unknown;
    StoredVolume m_stored;
    /// What the server is telling in answer to refresh().
    StoredVolume m_incoming;
    /// A level that was set before the server had told what else belongs to the entry.
    std::optional<quint32> m_pendingLevel;
    /// The server was waited for and did not answer: it is not waited for again.
    bool m_isSilent = false;
};

void forget(pa_operation* operation)
{
    if (operation != nullptr) {
        pa_operation_unref(operation);
    }
}

VolumeFollower& VolumeFollower::instance()
{
    // Never destroyed, as the server that calls it back is not.
    static auto& follower = *new VolumeFollower;
    return follower;
}

VolumeFollower::VolumeFollower()
{
    m_server.whenConnected([this](pa_context* context) { follow(context); });
}

AlertVolume::Reading VolumeFollower::read(SoundServer::Lock& lock)
{
    m_server.connect();
    const auto isAnswered = [this] {
        return !m_server.isConnecting() && (m_server.context() == nullptr || m_state != State::Unknown);
    };
    m_isSilent = !m_server.wait(lock, m_isSilent ? std::chrono::milliseconds(0) : readTimeout, isAnswered);
    if (m_server.context() == nullptr || m_state != State::Known) {
        return {AlertVolume::noHardwareError, 0};
    }
    const quint32 level = m_stored.level();
    return {0, level | level << 16U};
}

void VolumeFollower::set(quint32 level)
{
    m_pendingLevel = level;
    m_server.connect();
    if (m_server.context() != nullptr && m_state == State::Known) {
        write();
    }
}

void VolumeFollower::follow(pa_context* context)
{
    m_state = State::Unknown;
    m_isSilent = false;
    pa_ext_stream_restore_set_subscribe_cb(
        context, [](pa_context*, void* self) { static_cast<VolumeFollower*>(self)->refresh(); }, this);
    forget(pa_ext_stream_restore_subscribe(context, 1, nullptr, nullptr));
    refresh();
}

void VolumeFollower::refresh()
{
    m_incoming = {};
    const auto receive = [](pa_context*, const pa_ext_stream_restore_info* entry, int endOfList, void* self) {
        static_cast<VolumeFollower*>(self)->receiveEntry(entry, endOfList);
    };
    forget(pa_ext_stream_restore_read(m_server.context(), receive, this));
}

void VolumeFollower::receiveEntry(const pa_ext_stream_restore_info* entry, int endOfList)
{
    if (endOfList == 0) {
        if (qstrcmp(entry->name, entryName) == 0 && pa_cvolume_valid(&entry->volume) != 0) {
            m_incoming = {entry->channel_map, entry->volume,
                entry->device != nullptr ? std::optional(QByteArray(entry->device)) : std::nullopt, entry->mute != 0};
        }
        return;
    }
    m_state = endOfList > 0 ? State::Known : State::Unavailable;
    m_stored = m_incoming;
    if (m_state == State::Known && m_pendingLevel) {
        write();
    }
    m_server.notifyWaiting();
}

void VolumeFollower::write()
{
    const quint32 level = *std::exchange(m_pendingLevel, std::nullopt);
    pa_cvolume_set(&m_stored.volume, m_stored.channels.channels, level * volumesPerLevel);
    m_stored.muted = m_stored.muted && level == 0;
    const pa_ext_stream_restore_info entry = {entryName, m_stored.channels, m_stored.volume,
        m_stored.device ? m_stored.device->constData() : nullptr, m_stored.muted ? 1 : 0};
    forget(pa_ext_stream_restore_write(m_server.context(), PA_UPDATE_REPLACE, &entry, 1, 1, nullptr, nullptr));
}

} // namespace

AlertVolume::Reading AlertVolume::getSysBeepVolume()
{
    SoundServer::Lock lock(SoundServer::instance());
    return VolumeFollower::instance().read(lock);
}

void AlertVolume::setSysBeepVolume(quint32 level)
{
    const SoundServer::Lock lock(SoundServer::instance());
    VolumeFollower::instance().set(std::min(level & levelMask, fullLevel));
}
