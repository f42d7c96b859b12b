// SPDX-License-Identifier: MIT
#include "DecodedSounds.h"

#include <QCache>

#include <algorithm>
#include <mutex>
#include <optional>
#include <utility>

namespace {

constexpr int highestRate = 48'000;
constexpr qsizetype mostBytes = qsizetype(8) * 1024 * 1024;

struct Remembered
{
    FileStamp stamp;
    std::shared_ptr<const DecodedSound> sound;
};

struct Memory
{
    std::mutex mutex;
    /// By path; those that have not been asked for the longest make room.
    QCache<QString, Remembered> sounds{mostBytes};
};

Memory& memory()
{
    // Never destroyed: threads that play sounds outlive main().
    static auto& memory = *new Memory;
    return memory;
}

void remember(const QString& path, const FileStamp& stamp, DecodedSound sound)
{
    sound.samples.shrink_to_fit();
    const auto bytes = qsizetype(sound.samples.size()) * qsizetype(sizeof(float));
    auto remembered =
        std::make_unique<Remembered>(Remembered{stamp, std::make_shared<const DecodedSound>(std::move(sound))});
    const std::lock_guard lock(memory().mutex);
    memory().sounds.insert(path, remembered.release(), bytes);
}

/// Keeps what it hands out, as long as that is short.
class RememberingSource final : public SoundSource
{
public:
    RememberingSource(std::unique_ptr<SoundSource> source, QString path, const FileStamp& stamp)
        : m_source(std::move(source))
        , m_path(std::move(path))
        , m_stamp(stamp)
        , m_sound(DecodedSound{m_source->format(), {}})
    {
    }

    SoundFormat format() const override { return m_source->format(); }

    std::span<const float> nextSamples() override
    {
        const std::span<const float> samples = m_source->nextSamples();
        if (m_sound && samples.empty()) {
            remember(m_path, m_stamp, std::move(*m_sound));
            m_sound.reset();
        } else if (m_sound) {
            keep(samples);
        }
        return samples;
    }

private:
    void keep(std::span<const float> samples)
    {
        const auto most =
            size_t(m_sound->format.rate) * size_t(m_sound->format.channels) * size_t(DecodedSounds::longest.count());
        if (m_sound->samples.size() + samples.size() > most) {
            m_sound.reset();
        } else {
            m_sound->samples.insert(m_sound->samples.end(), samples.begin(), samples.end());
        }
    }

    std::unique_ptr<SoundSource> m_source;
    QString m_path;
    FileStamp m_stamp;
    /// Nothing once it is too long, or remembered.
    std::optional<DecodedSound> m_sound;
};

} // namespace

std::shared_ptr<const DecodedSound> DecodedSounds::find(const QString& path)
{
    const std::optional<FileStamp> stamp = FileStamp::of(path);
    const std::lock_guard lock(memory().mutex);
    const Remembered* const remembered = memory().sounds.object(path);
    return remembered && stamp == remembered->stamp ? remembered->sound : nullptr;
}

std::unique_ptr<SoundSource> DecodedSounds::remembering(
    std::unique_ptr<SoundSource> source, const QString& path, const std::optional<FileStamp>& stamp)
{
    if (!stamp || source->format().rate > highestRate) {
        return source;
    }
    return std::make_unique<RememberingSource>(std::move(source), path, *stamp);
}
