// SPDX-License-Identifier: MIT
#include "SoundResource.h"

#include "AiffC.h"
#include "SampledSound.h"
#include "SoundSequence.h"

#include <platform/bytes/BoundedBytes.h>
#include <platform/bytes/Result.h>

#include <algorithm>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

constexpr quint64 mostDataTypes = 64;
constexpr quint64 mostCommands = 1024;
constexpr quint64 commandSize = 8;
constexpr quint16 dataOffsetFlag = 0x8000;
constexpr double secondsPerUnit = 0.0005;

enum CommandCode : quint16 {
    quiet = 3,
    waitFor = 10,
    freqDuration = 40,
    restFor = 41,
    freq = 42,
    amplitude = 43,
    timbre = 44,
    installSound = 80,
    playBuffer = 81,
};

struct Command
{
    quint16 code = 0;
    bool hasOffset = false;
    qint16 param1 = 0;
    quint32 param2 = 0;
};

/// Where the list of commands lies: the range of the commands alone.
struct CommandList
{
    quint64 offset = 0;
    quint64 count = 0;

    quint64 end() const { return offset + count * commandSize; }
};

Result<CommandList> findCommands(const BoundedBytes& resource)
{
    const auto format = resource.big<quint16>(0);
    if (format != 1 && format != 2) {
        return Failure{u"byte 0: unknown format %1"_s.arg(format)};
    }
    quint64 countAt = 4;
    if (format == 1) {
        const quint64 dataTypes = resource.big<quint16>(2);
        if (dataTypes > mostDataTypes) {
            return Failure{u"byte 2: %1 data types"_s.arg(dataTypes)};
        }
        countAt += dataTypes * 6;
    }
    const CommandList list{countAt + 2, resource.big<quint16>(countAt)};
    if (!resource.contains(countAt, 2) || list.count > mostCommands || list.end() > resource.size()) {
        return Failure{
            u"byte %1: %2 commands do not fit into %3 bytes"_s.arg(countAt).arg(list.count).arg(resource.size())};
    }
    return list;
}

Command commandAt(const BoundedBytes& resource, quint64 offset)
{
    const auto word = resource.big<quint16>(offset);
    return {quint16(word & ~dataOffsetFlag), (word & dataOffsetFlag) != 0, resource.big<qint16>(offset + 2),
        resource.big<quint32>(offset + 4)};
}

/// Walks the commands of one resource.
class CommandInterpreter final
{
public:
    explicit CommandInterpreter(const BoundedBytes& resource, const CommandList& list)
        : m_resource(resource)
        , m_list(list)
    {
    }

    Result<SoundResource::Decoded> run() const;

private:
    bool playsSample(const Command& command) const;
    Result<SampledSound> sampleOf(const Command& command) const;
    /// The first command that plays a sampled sound; nothing in a resource of notes alone.
    std::optional<Command> firstSample() const;
    static void perform(const Command& command, SoundSequence& sequence);
    void performSample(const Command& command, SoundSequence& sequence) const;
    SoundResource::Decoded perform(SoundSequence sequence) const;

    const BoundedBytes& m_resource;
    CommandList m_list;
};

bool CommandInterpreter::playsSample(const Command& command) const
{
    if (command.code != installSound && command.code != playBuffer) {
        return false;
    }
    // Some writers leave the flag out although the parameter is an offset.
    return command.hasOffset ||
           (command.param2 >= m_list.end() && SampledSound::isPlausible(m_resource, command.param2));
}

Result<SampledSound> CommandInterpreter::sampleOf(const Command& command) const
{
    if (command.param2 < m_list.end()) {
        return Failure{u"a sampled sound at byte %1 lies inside the commands"_s.arg(command.param2)};
    }
    return SampledSound::parse(m_resource, command.param2);
}

std::optional<Command> CommandInterpreter::firstSample() const
{
    for (quint64 at = m_list.offset; at < m_list.end(); at += commandSize) {
        const Command command = commandAt(m_resource, at);
        if (playsSample(command)) {
            return command;
        }
    }
    return std::nullopt;
}

void CommandInterpreter::performSample(const Command& command, SoundSequence& sequence) const
{
    const Result<SampledSound> sample = sampleOf(command);
    if (!sample || !sample->coding.isPlain) {
        return; // only the first one may be compressed
    }
    if (command.code == installSound) {
        sequence.install(*sample);
    } else {
        sequence.playOnce(*sample);
    }
}

void CommandInterpreter::perform(const Command& command, SoundSequence& sequence)
{
    const double seconds = quint16(command.param1) * secondsPerUnit;
    const int note = int(command.param2 & 0x7F);
    const int noteAmplitude = int(command.param2 >> 24);
    switch (command.code) {
    case quiet:
        sequence.hold(0);
        break;
    case waitFor:
        sequence.wait(seconds);
        break;
    case freqDuration:
        if (noteAmplitude != 0) {
            sequence.setAmplitude(noteAmplitude);
        }
        sequence.playNote(note, seconds);
        break;
    case restFor:
        sequence.rest(seconds);
        break;
    case freq:
        sequence.hold(note);
        break;
    case amplitude:
        sequence.setAmplitude(std::clamp<int>(command.param1, 0, 255));
        break;
    case timbre:
        sequence.setTimbre(command.param1);
        break;
    default: // a wave table, too, is replaced by the plain tone
        break;
    }
}

SoundResource::Decoded CommandInterpreter::perform(SoundSequence sequence) const
{
    for (quint64 at = m_list.offset; at < m_list.end(); at += commandSize) {
        const Command command = commandAt(m_resource, at);
        if (playsSample(command)) {
            performSample(command, sequence);
        } else {
            perform(command, sequence);
        }
    }
    SoundResource::PcmSamples samples{sequence.finish()};
    return {std::move(samples), sequence.sampleRate(), sequence.channels()};
}

Result<SoundResource::Decoded> CommandInterpreter::run() const
{
    const std::optional<Command> first = firstSample();
    if (!first) {
        return perform(SoundSequence());
    }
    const Result<SampledSound> sample = sampleOf(*first);
    if (!sample) {
        return Failure{sample.error()};
    }
    if (sample->coding.isPlain) {
        return perform(SoundSequence(*sample));
    }
    return SoundResource::Decoded{
        SoundResource::WrappedFile{AiffC::wrap(*sample)}, sample->sampleRate, sample->channels};
}

} // namespace

Result<SoundResource::Decoded> SoundResource::decode(QByteArrayView bytes)
{
    const BoundedBytes resource(bytes);
    const Result<CommandList> commands = findCommands(resource);
    return commands ? CommandInterpreter(resource, *commands).run() : Failure{commands.error()};
}
