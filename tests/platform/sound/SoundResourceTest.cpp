#include <platform/sound/SoundResource.h>

#include <QTemporaryDir>
#include <QTest>

#include <ClassicFixtures.h>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
}

#include <cmath>
#include <memory>

using namespace ClassicFixtures;
using namespace Qt::StringLiterals;

using Samples = std::vector<qint16>;

namespace {

/// A sound header that plays once, behind the one command of soundResource().
QByteArray play(const QByteArray& header)
{
    return soundResource({QByteArray::fromHex("8051 0000 00000014")}, header);
}

QByteArray extendedHeader(quint32 channels, quint32 frames, quint16 bits, const QByteArray& samples)
{
    return zeros(4) + big(channels) + QByteArray::fromHex("AC440000") + zeros(8) + QByteArray::fromHex("FF3C") +
           big(frames) + zeros(22) + big(bits) + zeros(14) + samples;
}

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

/// What the media library decodes from a whole file, every sample as a floating-point number of full scale 1.
std::vector<double> decodedByLibrary(const QByteArray& file)
{
    QTemporaryDir folder;
    const QString path = folder.filePath(u"wrapped.aifc"_s);
    AVFormatContext* opened = nullptr;
    if (!writeFile(path, file) || avformat_open_input(&opened, path.toUtf8().constData(), nullptr, nullptr) < 0) {
        return {};
    }
    const std::unique_ptr<AVFormatContext, void (*)(AVFormatContext*)> format(
        opened, [](AVFormatContext* context) { avformat_close_input(&context); });
    const AVCodecParameters* parameters = format->streams[0]->codecpar;
    const std::unique_ptr<AVCodecContext, void (*)(AVCodecContext*)> codec(
        avcodec_alloc_context3(avcodec_find_decoder(parameters->codec_id)),
        [](AVCodecContext* context) { avcodec_free_context(&context); });
    avcodec_parameters_to_context(codec.get(), parameters);
    avcodec_open2(codec.get(), nullptr, nullptr);
    const std::unique_ptr<AVPacket, void (*)(AVPacket*)> packet(
        av_packet_alloc(), [](AVPacket* p) { av_packet_free(&p); });
    const std::unique_ptr<AVFrame, void (*)(AVFrame*)> frame(av_frame_alloc(), [](AVFrame* f) { av_frame_free(&f); });
    std::vector<double> samples;
    while (av_read_frame(format.get(), packet.get()) >= 0) {
        avcodec_send_packet(codec.get(), packet.get());
        while (avcodec_receive_frame(codec.get(), frame.get()) >= 0) {
            const int channels = codec->ch_layout.nb_channels;
            const bool planar = av_sample_fmt_is_planar(codec->sample_fmt) != 0;
            for (int i = 0; i < frame->nb_samples * channels; ++i) {
                const uint8_t* plane = frame->extended_data[planar ? i % channels : 0];
                const int at = planar ? i / channels : i;
                switch (av_get_packed_sample_fmt(codec->sample_fmt)) {
                case AV_SAMPLE_FMT_S16:
                    samples.push_back(reinterpret_cast<const qint16*>(plane)[at] / 32768.0);
                    break;
                case AV_SAMPLE_FMT_S32:
                    samples.push_back(reinterpret_cast<const qint32*>(plane)[at] / 2147483648.0);
                    break;
                case AV_SAMPLE_FMT_FLT:
                    samples.push_back(double(reinterpret_cast<const float*>(plane)[at]));
                    break;
                default:
                    samples.push_back(reinterpret_cast<const double*>(plane)[at]);
                }
            }
        }
        av_packet_unref(packet.get());
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
    void plainSamplesAreExact_data();
    void plainSamplesAreExact();
    void rateIsRead_data();
    void rateIsRead();
    void compressedSoundsDecodeInTheMediaLibrary_data();
    void compressedSoundsDecodeInTheMediaLibrary();
    void notesPlayTheInstalledSound();
    void notesWithoutASoundAreATone();
    void endlessSequenceEndsAfterTenSeconds();
    void brokenResourceTellsWhere_data();
    void brokenResourceTellsWhere();
};

void SoundResourceTest::plainSamplesAreExact_data()
{
    QTest::addColumn<QByteArray>("resource");
    QTest::addColumn<Samples>("samples");
    QTest::addColumn<int>("channels");

    const QByteArray four = QByteArray::fromHex("80FF0001");
    const Samples fromUnsigned{0, 32512, -32768, -32512};
    QTest::newRow("standard") << simpleSound(four) << fromUnsigned << 1;
    QByteArray secondFormat = simpleSound(four).remove(2, 6);
    secondFormat.replace(0, 14, QByteArray::fromHex("0002 0000 0001 8050 0000 0000000E"));
    QTest::newRow("format 2, installed only") << secondFormat << fromUnsigned << 1;
    QTest::newRow("offset without its flag") << simpleSound(four).replace(12, 2, "\0\x51"_ba) << fromUnsigned << 1;
    QTest::newRow("extended, 8 bits, stereo") << play(extendedHeader(2, 2, 8, four)) << fromUnsigned << 2;
    QTest::newRow("extended, 16 bits") << play(extendedHeader(1, 2, 16, four)) << Samples{-32513, 1} << 1;
    QTest::newRow("extended, 8 channels") << play(extendedHeader(8, 1, 8, four + four))
                                          << Samples{0, 32512, -32768, -32512, 0, 32512, -32768, -32512} << 8;
    QTest::newRow("sowt") << play(compressedHeader("sowt", -1, 1, 2, four)) << Samples{-128, 256} << 1;
    QTest::newRow("raw, 16 bits") << play(compressedHeader("raw ", -1, 1, 2, four)) << Samples{255, -32767} << 1;
    QTest::newRow("twos, 8 bits") << play(compressedHeader("twos", -1, 1, 4, four, 8)) << Samples{-32768, -256, 0, 256}
                                  << 1;
    QTest::newRow("NONE") << play(compressedHeader("NONE", 0, 1, 4, four, 8)) << fromUnsigned << 1;
    QTest::newRow("cut off") << play(extendedHeader(2, 500, 8, four + "x")) << fromUnsigned << 2;
    QTest::newRow("no samples") << simpleSound({}) << Samples() << 1;
    QTest::newRow("played twice") << soundResource(
                                         {command(0x8051, 0, 28), command(0x8051, 0, 28)}, simpleSound(four).sliced(20))
                                  << Samples{0, 32512, -32768, -32512, 0, 32512, -32768, -32512} << 1;
}

void SoundResourceTest::plainSamplesAreExact()
{
    QFETCH(QByteArray, resource);
    QFETCH(Samples, samples);
    QFETCH(int, channels);

    const auto decoded = SoundResource::decode(resource);
    QVERIFY2(decoded, qPrintable(decoded.error()));
    QCOMPARE(decoded->channels, channels);
    QCOMPARE(std::get<SoundResource::PcmSamples>(decoded->content).samples, samples);
}

void SoundResourceTest::rateIsRead_data()
{
    QTest::addColumn<QByteArray>("fixed");
    QTest::addColumn<double>("rate");

    QTest::newRow("classic") << QByteArray::fromHex("56EE8BA3") << 22254.5454;
    QTest::newRow("beyond 32767") << QByteArray::fromHex("AC440000") << 44100.0;
    QTest::newRow("none") << zeros(4) << 22254.5454;
    QTest::newRow("absurdly low") << QByteArray::fromHex("00000001") << 1000.0;
}

void SoundResourceTest::rateIsRead()
{
    QFETCH(QByteArray, fixed);
    QFETCH(double, rate);
    const auto decoded = SoundResource::decode(simpleSound("\x80").replace(28, 4, fixed));
    QVERIFY(decoded);
    QVERIFY2(std::abs(decoded->sampleRate - rate) < 0.001, qPrintable(QString::number(decoded->sampleRate)));
}

void SoundResourceTest::compressedSoundsDecodeInTheMediaLibrary_data()
{
    QTest::addColumn<QByteArray>("header");
    QTest::addColumn<int>("channels");
    QTest::addColumn<qsizetype>("count");
    QTest::addColumn<std::vector<double>>("beginning");

    QByteArray bytes;
    for (int i = 0; i < 256; ++i) {
        bytes.append(char(i));
    }
    QTest::newRow("ulaw") << compressedHeader("ulaw", -1, 1, 256, bytes) << 1 << qsizetype(256)
                          << std::vector{muLaw(0), muLaw(1), muLaw(2), muLaw(3)};
    QTest::newRow("alaw, stereo") << compressedHeader("alaw", -1, 2, 128, bytes) << 2 << qsizetype(256)
                                  << std::vector{-5504 / 32768.0, -5248 / 32768.0};
    QTest::newRow("fl32") << compressedHeader("fl32", -1, 1, 2, QByteArray::fromHex("3F000000BE800000")) << 1
                          << qsizetype(2) << std::vector{0.5, -0.25};
    QTest::newRow("fl64") << compressedHeader("fl64", -1, 1, 1, QByteArray::fromHex("3FE0000000000000")) << 1
                          << qsizetype(1) << std::vector{0.5};
    QTest::newRow("in24") << compressedHeader("in24", -1, 1, 2, QByteArray::fromHex("400000E00000")) << 1
                          << qsizetype(2) << std::vector{0.5, -0.25};
    QTest::newRow("in32") << compressedHeader("in32", -1, 1, 1, QByteArray::fromHex("40000000")) << 1 << qsizetype(1)
                          << std::vector{0.5};
    // Predictor 0x1000, step index 10 (step 19): nibble 4 adds 2 + 19 and raises the index to 12 (step 23), nibble 0
    // adds 2.
    const QByteArray packet = QByteArray::fromHex("100A04") + zeros(31);
    QTest::newRow("ima4") << compressedHeader("ima4", -1, 1, 1, packet) << 1 << qsizetype(64)
                          << std::vector{(0x1000 + 21) / 32768.0, (0x1000 + 23) / 32768.0};
    QTest::newRow("ima4, frames counted instead of packets")
        << compressedHeader("ima4", -1, 2, 64, packet + packet) << 2 << qsizetype(128)
        << std::vector{(0x1000 + 21) / 32768.0, (0x1000 + 21) / 32768.0};
    QTest::newRow("MACE 3:1 by number") << compressedHeader(zeros(4), 3, 1, 4, bytes.first(8)) << 1 << qsizetype(24)
                                        << std::vector<double>();
    QTest::newRow("MACE 6:1") << compressedHeader("MAC6", -1, 1, 4, bytes.first(4)) << 1 << qsizetype(24)
                              << std::vector<double>();
}

void SoundResourceTest::compressedSoundsDecodeInTheMediaLibrary()
{
    QFETCH(QByteArray, header);
    QFETCH(int, channels);
    QFETCH(qsizetype, count);
    QFETCH(std::vector<double>, beginning);

    const auto decoded = SoundResource::decode(play(header));
    QVERIFY2(decoded, qPrintable(decoded.error()));
    QCOMPARE(decoded->channels, channels);
    QCOMPARE(decoded->sampleRate, 22050.0);
    std::vector<double> samples = decodedByLibrary(std::get<SoundResource::WrappedFile>(decoded->content).bytes);
    QCOMPARE(qsizetype(samples.size()), count);
    samples.resize(beginning.size());
    QCOMPARE(samples, beginning);
}

void SoundResourceTest::notesPlayTheInstalledSound()
{
    // An octave above the recorded note: every second sample. The note lasts 10 ms, the rest and the wait 1 ms each.
    const QByteArray sound = simpleSound(QByteArray::fromHex("8090A0B0C0D0")).sliced(20);
    const Samples samples = pcmOf(
        soundResource({command(0x8050, 0, 44), command(40, 20, 72), command(41, 2, 0), command(10, 2, 0)}, sound));
    QCOMPARE(samples.size(), size_t(220 + 22 + 22));
    QCOMPARE(Samples(samples.begin(), samples.begin() + 4), (Samples{0, 0x2000, 0x4000, 0}));
}

void SoundResourceTest::notesWithoutASoundAreATone()
{
    const Samples samples = pcmOf(soundResource({command(44, 254, 0), command(40, 2000, 69)}));
    QCOMPARE(samples.size(), size_t(44100));
    int crossings = 0;
    for (size_t i = 1; i < samples.size(); ++i) {
        crossings += (samples[i - 1] < 0) != (samples[i] < 0) ? 1 : 0;
    }
    QVERIFY2(std::abs(crossings - 880) <= 2, qPrintable(QString::number(crossings)));
}

void SoundResourceTest::endlessSequenceEndsAfterTenSeconds()
{
    const auto decoded = SoundResource::decode(soundResource(QList<QByteArray>(1000, command(40, 0xFFFF, 60))));
    QVERIFY(decoded);
    QCOMPARE(std::get<SoundResource::PcmSamples>(decoded->content).samples.size(), size_t(441000));
    QCOMPARE(decoded->warnings.size(), 1);
}

void SoundResourceTest::brokenResourceTellsWhere_data()
{
    QTest::addColumn<QByteArray>("resource");
    QTest::addColumn<QString>("place");

    const QByteArray sound = simpleSound("abcd");
    QTest::newRow("empty") << QByteArray() << u"byte 0"_s;
    QTest::newRow("format 3") << QByteArray(sound).replace(0, 2, "\0\3"_ba) << u"byte 0"_s;
    QTest::newRow("data types") << QByteArray(sound).replace(2, 2, "\xFF\xFF") << u"byte 2"_s;
    QTest::newRow("commands") << QByteArray(sound).replace(10, 2, "\x03\xFF") << u"byte 10"_s;
    QTest::newRow("offset behind the end") << QByteArray(sound).replace(16, 4, "\x7F\xFF\xFF\xFF") << u"byte 2147483"_s;
    QTest::newRow("offset into the commands") << QByteArray(sound).replace(16, 4, "\0\0\0\x06"_ba) << u"byte 6"_s;
    QTest::newRow("kind of header") << QByteArray(sound).replace(40, 1, "\x7E") << u"byte 40"_s;
    QTest::newRow("no channels") << play(extendedHeader(0, 4, 8, "abcd")) << u"byte 24"_s;
    QTest::newRow("9 channels") << play(extendedHeader(9, 4, 8, "abcd")) << u"byte 24"_s;
    QTest::newRow("12 bits") << play(extendedHeader(1, 4, 12, "abcd")) << u"byte"_s;
    QTest::newRow("unknown compression") << play(compressedHeader("WHAT", -1, 1, 1, "abcd")) << u"byte"_s;
    QTest::newRow("cut off in the header") << play(extendedHeader(1, 4, 8, {}).first(63)) << u"byte 20"_s;
}

void SoundResourceTest::brokenResourceTellsWhere()
{
    QFETCH(QByteArray, resource);
    QFETCH(QString, place);

    const auto decoded = SoundResource::decode(resource);
    QVERIFY(!decoded);
    QVERIFY2(decoded.error().contains(place), qPrintable(decoded.error()));
}

QTEST_GUILESS_MAIN(SoundResourceTest)

#include "SoundResourceTest.moc"
