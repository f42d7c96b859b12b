// SPDX-License-Identifier: MIT
#include <platform/sound/SoundDecoder.h>
#include <platform/sound/SoundResource.h>

#include <QTest>

#include <ClassicFixtures.h>
#include <DataTable.h>

#include <cmath>

using namespace ClassicFixtures;
using namespace Qt::StringLiterals;

using Samples = std::vector<qint16>;

namespace {

QByteArray compressedHeader(const QByteArray& format, qint16 compression, quint32 channels, quint32 packets,
    const QByteArray& data, quint16 bits = 16)
{
    return zeros(4) + big(channels) + QByteArray::fromHex("56220000") + zeros(8) + QByteArray::fromHex("FE3C") +
           big(packets) + zeros(14) + format + zeros(12) + big(compression) + zeros(4) + big(bits) + data;
}

QByteArray command(quint16 code, quint16 param1, quint32 param2)
{
    return big(code) + big(param1) + big(param2);
}

Samples pcmOf(const QByteArray& resource)
{
    const auto decoded = SoundResource::decode(resource);
    const auto* pcm = decoded ? std::get_if<SoundResource::PcmSamples>(&decoded->content) : nullptr;
    return pcm ? pcm->samples : Samples();
}

/// What the media library decodes from a whole file.
std::vector<double> decodedByLibrary(const QByteArray& file)
{
    const auto decoder = SoundDecoder::openBytes(file);
    std::vector<double> samples;
    while (decoder) {
        const std::span<const float> next = (*decoder)->nextSamples();
        if (next.empty()) {
            break;
        }
        samples.insert(samples.end(), next.begin(), next.end());
    }
    return samples;
}

double muLaw(quint8 byte)
{
    const int inverted = ~byte & 0xFF;
    const int magnitude = (((inverted & 0x0F) << 3) + 0x84) << ((inverted >> 4) & 7);
    return ((inverted & 0x80) != 0 ? 0x84 - magnitude : magnitude - 0x84) / 32768.0;
}

} // namespace

class SoundResourceTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void plainSamplesAreExact_data()
    {
        const DataTable<QByteArray, Samples, int> row("resource", "samples", "channels");

        const QByteArray four = QByteArray::fromHex("80FF0001");
        const Samples fromUnsigned{0, 32512, -32768, -32512};
        row("standard", simpleSound(four), fromUnsigned, 1);
        QByteArray secondFormat = simpleSound(four).remove(2, 6);
        secondFormat.replace(0, 14, QByteArray::fromHex("0002 0000 0001 8050 0000 0000000E"));
        row("format 2, installed only", secondFormat, fromUnsigned, 1);
        row("offset without its flag", simpleSound(four).replace(12, 2, "\0\x51"_ba), fromUnsigned, 1);
        row("extended, 8 bits, stereo", play(extendedHeader(2, 2, 8, four)), fromUnsigned, 2);
        row("extended, 16 bits", play(extendedHeader(1, 2, 16, four)), {-32513, 1}, 1);
        row("extended, 8 channels", play(extendedHeader(8, 1, 8, four + four)),
            {0, 32512, -32768, -32512, 0, 32512, -32768, -32512}, 8);
        row("sowt", play(compressedHeader("sowt", -1, 1, 2, four)), {-128, 256}, 1);
        row("raw, 16 bits", play(compressedHeader("raw ", -1, 1, 2, four)), {255, -32767}, 1);
        row("twos, 8 bits", play(compressedHeader("twos", -1, 1, 4, four, 8)), {-32768, -256, 0, 256}, 1);
        row("NONE", play(compressedHeader("NONE", 0, 1, 4, four, 8)), fromUnsigned, 1);
        row("cut off", play(extendedHeader(2, 500, 8, four + "x")), fromUnsigned, 2);
        row("no samples", simpleSound({}), {}, 1);
        row("played twice",
            soundResource({command(0x8051, 0, 28), command(0x8051, 0, 28)}, simpleSound(four).sliced(20)),
            {0, 32512, -32768, -32512, 0, 32512, -32768, -32512}, 1);
    }

    void plainSamplesAreExact()
    {
        const auto [resource, samples, channels] = currentRow<QByteArray, Samples, int>();

        const auto decoded = SoundResource::decode(resource);
        QVERIFY2(decoded, qPrintable(decoded.error()));
        QCOMPARE(decoded->channels, channels);
        QCOMPARE(std::get<SoundResource::PcmSamples>(decoded->content).samples, samples);
    }

    void rateIsRead_data()
    {
        const DataTable<QByteArray, double> row("fixed", "rate");

        row("classic", QByteArray::fromHex("56EE8BA3"), 22254.5454);
        row("beyond 32767", QByteArray::fromHex("AC440000"), 44100.0);
        row("none", zeros(4), 22254.5454);
        row("absurdly low", QByteArray::fromHex("00000001"), 1000.0);
    }

    void rateIsRead()
    {
        const auto [fixed, rate] = currentRow<QByteArray, double>();
        const auto decoded = SoundResource::decode(simpleSound("\x80").replace(28, 4, fixed));
        QVERIFY(decoded);
        QVERIFY2(std::abs(decoded->sampleRate - rate) < 0.001, qPrintable(QString::number(decoded->sampleRate)));
    }

    void compressedSoundsDecodeInTheMediaLibrary_data()
    {
        const DataTable<QByteArray, int, qsizetype, std::vector<double>> row(
            "header", "channels", "count", "beginning");

        QByteArray bytes;
        for (int i = 0; i < 256; ++i) {
            bytes.append(char(i));
        }
        row("ulaw", compressedHeader("ulaw", -1, 1, 256, bytes), 1, 256, {muLaw(0), muLaw(1), muLaw(2), muLaw(3)});
        row("alaw, stereo", compressedHeader("alaw", -1, 2, 128, bytes), 2, 256, {-5504 / 32768.0, -5248 / 32768.0});
        row("fl32", compressedHeader("fl32", -1, 1, 2, QByteArray::fromHex("3F000000BE800000")), 1, 2, {0.5, -0.25});
        row("fl64", compressedHeader("fl64", -1, 1, 1, QByteArray::fromHex("3FE0000000000000")), 1, 1, {0.5});
        row("in24", compressedHeader("in24", -1, 1, 2, QByteArray::fromHex("400000E00000")), 1, 2, {0.5, -0.25});
        row("in32", compressedHeader("in32", -1, 1, 1, QByteArray::fromHex("40000000")), 1, 1, {0.5});
        // Predictor 0x1000, step index 10 (step 19): nibble 4 adds 2 + 19 and raises the index to 12 (step 23), nibble
        // 0 adds 2.
        const QByteArray packet = QByteArray::fromHex("100A04") + zeros(31);
        row("ima4", compressedHeader("ima4", -1, 1, 1, packet), 1, 64,
            {(0x1000 + 21) / 32768.0, (0x1000 + 23) / 32768.0});
        row("ima4, frames counted instead of packets", compressedHeader("ima4", -1, 2, 64, packet + packet), 2, 128,
            {(0x1000 + 21) / 32768.0, (0x1000 + 21) / 32768.0});
        row("MACE 3:1 by number", compressedHeader(zeros(4), 3, 1, 4, bytes.first(8)), 1, 24, std::vector<double>());
        row("MACE 6:1", compressedHeader("MAC6", -1, 1, 4, bytes.first(4)), 1, 24, std::vector<double>());
    }

    void compressedSoundsDecodeInTheMediaLibrary()
    {
        const auto [header, channels, count, beginning] = currentRow<QByteArray, int, qsizetype, std::vector<double>>();

        const auto decoded = SoundResource::decode(play(header));
        QVERIFY2(decoded, qPrintable(decoded.error()));
        QCOMPARE(decoded->channels, channels);
        QCOMPARE(decoded->sampleRate, 22050.0);
        std::vector<double> samples = decodedByLibrary(std::get<SoundResource::WrappedFile>(decoded->content).bytes);
        QCOMPARE(qsizetype(samples.size()), count);
        samples.resize(beginning.size());
        QCOMPARE(samples, beginning);
    }

    void notesPlayTheInstalledSound()
    {
        // An octave above the recorded note: every second sample. The note lasts 10 ms, the rest and the wait 1 ms
        // each.
        const QByteArray sound = simpleSound(QByteArray::fromHex("8090A0B0C0D0")).sliced(20);
        const Samples samples = pcmOf(
            soundResource({command(0x8050, 0, 44), command(40, 20, 72), command(41, 2, 0), command(10, 2, 0)}, sound));
        QCOMPARE(samples.size(), size_t(220 + 22 + 22));
        QCOMPARE(Samples(samples.begin(), samples.begin() + 4), (Samples{0, 0x2000, 0x4000, 0}));
    }

    void notesWithoutASoundAreATone()
    {
        const Samples samples = pcmOf(soundResource({command(44, 254, 0), command(40, 2000, 69)}));
        QCOMPARE(samples.size(), size_t(44100));
        int crossings = 0;
        for (size_t i = 1; i < samples.size(); ++i) {
            crossings += (samples[i - 1] < 0) != (samples[i] < 0) ? 1 : 0;
        }
        QVERIFY2(std::abs(crossings - 880) <= 2, qPrintable(QString::number(crossings)));
    }

    void endlessSequenceEndsAfterTenSeconds()
    {
        const auto decoded = SoundResource::decode(soundResource(QList<QByteArray>(1000, command(40, 0xFFFF, 60))));
        QVERIFY(decoded);
        QCOMPARE(std::get<SoundResource::PcmSamples>(decoded->content).samples.size(), size_t(441000));
    }

    void brokenResourceTellsWhere_data()
    {
        const DataTable<QByteArray, QString> row("resource", "place");

        const QByteArray sound = simpleSound("abcd");
        row("empty", {}, u"byte 0"_s);
        row("format 3", QByteArray(sound).replace(0, 2, "\0\3"_ba), u"byte 0"_s);
        row("data types", QByteArray(sound).replace(2, 2, "\xFF\xFF"), u"byte 2"_s);
        row("commands", QByteArray(sound).replace(10, 2, "\x03\xFF"), u"byte 10"_s);
        row("offset behind the end", QByteArray(sound).replace(16, 4, "\x7F\xFF\xFF\xFF"), u"byte 2147483"_s);
        row("offset into the commands", QByteArray(sound).replace(16, 4, "\0\0\0\x06"_ba), u"byte 6"_s);
        row("kind of header", QByteArray(sound).replace(40, 1, "\x7E"), u"byte 40"_s);
        row("no channels", play(extendedHeader(0, 4, 8, "abcd")), u"byte 24"_s);
        row("9 channels", play(extendedHeader(9, 4, 8, "abcd")), u"byte 24"_s);
        row("12 bits", play(extendedHeader(1, 4, 12, "abcd")), u"byte"_s);
        row("unknown compression", play(compressedHeader("WHAT", -1, 1, 1, "abcd")), u"byte"_s);
        row("cut off in the header", play(extendedHeader(1, 4, 8, {}).first(63)), u"byte 20"_s);
    }

    void brokenResourceTellsWhere()
    {
        const auto [resource, place] = currentRow<QByteArray, QString>();

        const auto decoded = SoundResource::decode(resource);
        QVERIFY(!decoded);
        QVERIFY2(decoded.error().contains(place), qPrintable(decoded.error()));
    }
};

QTEST_GUILESS_MAIN(SoundResourceTest)

#include "SoundResourceTest.moc"
