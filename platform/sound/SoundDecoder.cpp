// SPDX-License-Identifier: MIT
#include "SoundDecoder.h"

#include <platform/bytes/RegularFile.h>
#include <product/Product.h>

#include <QBuffer>
#include <QLoggingCategory>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/channel_layout.h>
#include <libavutil/log.h>
#include <libavutil/mem.h>
#include <libswresample/swresample.h>
}

#include <algorithm>
#include <array>
#include <limits>
#include <mutex>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

Q_LOGGING_CATEGORY(log, PRODUCT_NAME ".sound.decoder", QtWarningMsg)

/// The library's names of the formats that are opened; whatever else it knows stays closed.
constexpr const char* acceptedFormats = "aiff,wav,mov,mp3";
constexpr int largestStreamCount = 64;
constexpr int ioBufferSize = 32 * 1024;
constexpr qint64 probeSize = 1024 * 1024;
constexpr qint64 openingReadLimit = 32 * 1024 * 1024;
/// No block that the library allocates is larger: enough for the sample table of a day of sound, and not for what
/// a hostile length asks for.
constexpr size_t largestAllocation = 128 * 1024 * 1024;
constexpr int lowestRate = 1000;
constexpr int highestRate = 384000;
/// The library's score for "nothing speaks against it", which it also gives to noise with the right file name.
constexpr int guessScore = 1;

struct Deleter
{
    void operator()(AVFormatContext* context) const { avformat_close_input(&context); }

    void operator()(AVCodecContext* context) const { avcodec_free_context(&context); }

    void operator()(SwrContext* context) const { swr_free(&context); }

    void operator()(AVPacket* packet) const { av_packet_free(&packet); }

    void operator()(AVFrame* frame) const { av_frame_free(&frame); }

    void operator()(AVIOContext* context) const
    {
        av_freep(&context->buffer);
        avio_context_free(&context);
    }
};

template <typename Type>
using Handle = std::unique_ptr<Type, Deleter>;

void forwardLog(void* /*context*/, int level, const char* format, va_list arguments)
{
    if (level <= AV_LOG_WARNING && log().isDebugEnabled()) {
        qCDebug(log).noquote() << QString::vasprintf(format, arguments).trimmed();
    }
}

void prepareLibrary()
{
    static std::once_flag once;
    std::call_once(once, [] {
        av_log_set_callback(forwardLog);
        av_max_alloc(largestAllocation);
    });
}

QString errorText(int code)
{
    std::array<char, AV_ERROR_MAX_STRING_SIZE> text = {};
    av_strerror(code, text.data(), text.size());
    return QString::fromUtf8(text.data());
}

int refuseOtherFile(AVFormatContext*, AVIOContext**, const char*, int, AVDictionary**)
{
    return AVERROR(EACCES);
}

} // namespace

/// The library's objects for one file. They are destroyed in the reverse order, the input last.
class SoundDecoder::Codec final
{
public:
    explicit Codec(std::unique_ptr<QIODevice> input)
        : m_input(std::move(input))
    {
    }

    /// Everything up to the first samples; an error code of the library, 0 when there are samples.
    int open(const QByteArray& name);
    /// Decodes until there are samples. An error code of the library, AVERROR_EOF at the end.
    int decode();

    SoundFormat format() const { return m_format; }

    std::span<const float> samples() const { return m_samples; }

private:
    static int read(void* codec, uint8_t* buffer, int size);
    static int64_t seek(void* codec, int64_t offset, int whence);
    int openContainer(const QByteArray& name);
    int openStream();
    int receiveFrame();
    int convertFrame();
    int prepareConverter();

    std::unique_ptr<QIODevice> m_input;
    /// How many bytes may be read before every read finds the end.
    qint64 m_readLimit = openingReadLimit;
    Handle<AVIOContext> m_io;
    Handle<AVFormatContext> m_container;
    Handle<AVCodecContext> m_decoder;
    Handle<SwrContext> m_converter;
    Handle<AVPacket> m_packet;
    Handle<AVFrame> m_frame;
    int m_streamIndex = -1;
    /// What the converter was made for.
    int m_frameRate = 0;
    int m_frameFormat = -1;
    int m_frameChannels = 0;
    SoundFormat m_format;
    std::vector<float> m_samples;
};

int SoundDecoder::Codec::open(const QByteArray& name)
{
    m_packet.reset(av_packet_alloc());
    m_frame.reset(av_frame_alloc());
    if (!m_packet || !m_frame) {
        return AVERROR(ENOMEM);
    }
    int result = openContainer(name);
    if (result >= 0) {
        result = openStream();
    }
    if (result >= 0) {
        result = decode();
    }
    m_readLimit = std::numeric_limits<qint64>::max();
    return result;
}

int SoundDecoder::Codec::read(void* codec, uint8_t* buffer, int size)
{
    auto* self = static_cast<Codec*>(codec);
    const qint64 count =
        self->m_input->read(reinterpret_cast<char*>(buffer), std::min<qint64>(size, self->m_readLimit));
    if (count < 0) {
        return AVERROR(EIO);
    }
    self->m_readLimit -= count;
    return count == 0 ? AVERROR_EOF : int(count);
}

int64_t SoundDecoder::Codec::seek(void* codec, int64_t offset, int whence)
{
    QIODevice& input = *static_cast<Codec*>(codec)->m_input;
    if (whence == AVSEEK_SIZE) {
        return input.size();
    }
    const int64_t base = whence == SEEK_CUR ? input.pos() : whence == SEEK_END ? input.size() : 0;
    const int64_t position = std::min<int64_t>(base + offset, input.size());
    return position >= 0 && input.seek(position) ? position : AVERROR(EINVAL);
}

int SoundDecoder::Codec::openContainer(const QByteArray& name)
{
    auto* buffer = static_cast<unsigned char*>(av_malloc(ioBufferSize));
    m_io.reset(avio_alloc_context(buffer, ioBufferSize, 0, this, read, nullptr, seek));
    AVFormatContext* container = avformat_alloc_context();
    if (buffer == nullptr || !m_io || container == nullptr) {
        avformat_free_context(container);
        return AVERROR(ENOMEM);
    }
    container->pb = m_io.get();
    container->io_open = refuseOtherFile;
    container->format_whitelist = av_strdup(acceptedFormats);
    container->max_streams = largestStreamCount;
    container->probesize = probeSize;
    // Whether plain samples hide another codec would be looked for in 2500 packets, at 10 ms of work.
    container->max_probe_packets = 1;
    // On failure the library frees the context itself.
    const int result = avformat_open_input(&container, name.constData(), nullptr, nullptr);
    if (result < 0) {
        return result;
    }
    m_container.reset(container);
    return m_container->probe_score > guessScore ? 0 : AVERROR_INVALIDDATA;
}

int SoundDecoder::Codec::openStream()
{
    const std::span streams(m_container->streams, m_container->nb_streams);
    for (AVStream* stream : streams) {
        if (m_streamIndex < 0 && stream->codecpar->codec_type == AVMEDIA_TYPE_AUDIO) {
            m_streamIndex = stream->index;
        } else {
            stream->discard = AVDISCARD_ALL;
        }
    }
    if (m_streamIndex < 0) {
        return AVERROR_STREAM_NOT_FOUND;
    }
    const AVCodecParameters* parameters = streams[size_t(m_streamIndex)]->codecpar;
    const AVCodec* codec = avcodec_find_decoder(parameters->codec_id);
    if (codec == nullptr) {
        return AVERROR_DECODER_NOT_FOUND;
    }
    m_decoder.reset(avcodec_alloc_context3(codec));
    if (!m_decoder) {
        return AVERROR(ENOMEM);
    }
    const int result = avcodec_parameters_to_context(m_decoder.get(), parameters);
    m_decoder->thread_count = 1;
    m_decoder->pkt_timebase = streams[size_t(m_streamIndex)]->time_base;
    return result < 0 ? result : avcodec_open2(m_decoder.get(), codec, nullptr);
}

int SoundDecoder::Codec::decode()
{
    m_samples.clear();
    while (m_samples.empty()) {
        int result = receiveFrame();
        if (result >= 0) {
            result = convertFrame();
        }
        if (result < 0) {
            return result;
        }
    }
    return 0;
}

int SoundDecoder::Codec::receiveFrame()
{
    for (;;) {
        const int received = avcodec_receive_frame(m_decoder.get(), m_frame.get());
        if (received >= 0 || received == AVERROR_EOF) {
            return received;
        }
        // It wants another packet; or the last one was broken, which costs that packet only.
        const int read = av_read_frame(m_container.get(), m_packet.get());
        if (read < 0) {
            // The end, or nothing more that can be read: the decoder gives out what it still holds.
            avcodec_send_packet(m_decoder.get(), nullptr);
        } else {
            if (m_packet->stream_index == m_streamIndex) {
                avcodec_send_packet(m_decoder.get(), m_packet.get());
            }
            av_packet_unref(m_packet.get());
        }
    }
}

int SoundDecoder::Codec::convertFrame()
{
    const AVFrame& frame = *m_frame;
    if (frame.sample_rate != m_frameRate || frame.format != m_frameFormat ||
        frame.ch_layout.nb_channels != m_frameChannels) {
        const int result = prepareConverter();
        if (result < 0) {
            return result;
        }
    }
    const int room = swr_get_out_samples(m_converter.get(), frame.nb_samples);
    if (room < 0) {
        return room;
    }
    m_samples.resize(size_t(room) * size_t(m_format.channels));
    std::array output = {reinterpret_cast<uint8_t*>(m_samples.data())};
    auto** input = const_cast<const uint8_t**>(frame.extended_data);
    const int count = swr_convert(m_converter.get(), output.data(), room, input, frame.nb_samples);
    m_samples.resize(size_t(std::max(count, 0)) * size_t(m_format.channels));
    av_frame_unref(m_frame.get());
    return count;
}

int SoundDecoder::Codec::prepareConverter()
{
    const AVFrame& frame = *m_frame;
    if (frame.sample_rate < lowestRate || frame.sample_rate > highestRate || frame.ch_layout.nb_channels < 1) {
        return AVERROR_INVALIDDATA;
    }
    if (m_format.rate == 0) {
        m_format = {frame.sample_rate, std::min(frame.ch_layout.nb_channels, 2)};
    }
    AVChannelLayout from = {};
    if (frame.ch_layout.order == AV_CHANNEL_ORDER_UNSPEC) {
        av_channel_layout_default(&from, frame.ch_layout.nb_channels);
    } else {
        av_channel_layout_copy(&from, &frame.ch_layout);
    }
    AVChannelLayout to = {};
    av_channel_layout_default(&to, m_format.channels);
    SwrContext* converter = nullptr;
    int result = swr_alloc_set_opts2(&converter, &to, AV_SAMPLE_FMT_FLT, m_format.rate, &from,
        AVSampleFormat(frame.format), frame.sample_rate, 0, nullptr);
    av_channel_layout_uninit(&from);
    m_converter.reset(converter);
    if (result >= 0) {
        result = swr_init(m_converter.get());
    }
    m_frameRate = frame.sample_rate;
    m_frameFormat = frame.format;
    m_frameChannels = frame.ch_layout.nb_channels;
    return result;
}

SoundDecoder::SoundDecoder(std::unique_ptr<Codec> codec)
    : m_codec(std::move(codec))
{
}

SoundDecoder::~SoundDecoder() = default;

SoundDecoder::OpenResult SoundDecoder::openFile(const QString& path)
{
    auto file = RegularFile::open(path);
    return file ? open(std::move(*file), path) : Failure{file.error()};
}

SoundDecoder::OpenResult SoundDecoder::openBytes(const QByteArray& bytes)
{
    auto buffer = std::make_unique<QBuffer>();
    buffer->setData(bytes);
    buffer->open(QIODevice::ReadOnly);
    return open(std::move(buffer), {});
}

SoundDecoder::OpenResult SoundDecoder::open(std::unique_ptr<QIODevice> input, const QString& name)
{
    prepareLibrary();
    auto codec = std::make_unique<Codec>(std::move(input));
    const int result = codec->open(QFile::encodeName(name));
    if (result < 0) {
        return Failure{result == AVERROR_EOF ? u"no audio in it"_s : errorText(result)};
    }
    return std::unique_ptr<SoundDecoder>(new SoundDecoder(std::move(codec)));
}

SoundFormat SoundDecoder::format() const
{
    return m_codec->format();
}

std::span<const float> SoundDecoder::nextSamples()
{
    if (m_firstSamplesPending) {
        m_firstSamplesPending = false;
        return m_codec->samples();
    }
    return m_codec->decode() >= 0 ? m_codec->samples() : std::span<const float>();
}
