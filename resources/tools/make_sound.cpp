// SPDX-License-Identifier: MIT
#include <QByteArray>
#include <QFile>
#include <QtEndian>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <numbers>
#include <string_view>
#include <vector>

namespace {

constexpr int sampleRate = 44'100;

/// One struck tone: a sine with overtones that dies away.
struct Note
{
    double start;
    double frequency;
    double length;
    double gain;
    /// Share of the second and third overtone.
    double brightness;
    /// The frequency moves to this multiple of itself over the note's length.
    double glide;
};

struct Recipe
{
    std::string_view name;
    std::vector<Note> notes;
};

const std::vector<Recipe>& recipes()
{
    static const std::vector<Recipe> all = {
        {"defaultPhraseSound", {{0, 880, 0.30, 0.5, 0.25, 1}, {0.07, 1318.5, 0.40, 0.45, 0.2, 1}}},
        {"Chime", {{0, 1046.5, 0.9, 0.35, 0.3, 1}, {0.12, 1318.5, 0.9, 0.3, 0.3, 1}, {0.24, 1568, 1.1, 0.3, 0.3, 1}}},
        {"Fall", {{0, 720, 0.35, 0.5, 0.1, 0.45}}},
        {"Knock", {{0, 180, 0.10, 0.8, 0.5, 0.7}, {0.14, 160, 0.12, 0.7, 0.5, 0.7}}},
        {"Pop", {{0, 420, 0.09, 0.7, 0.05, 2.2}}},
        {"Rise", {{0, 320, 0.35, 0.5, 0.1, 2.1}}},
        {"Tick", {{0, 2400, 0.03, 0.5, 0.4, 0.8}}},
    };
    return all;
}

double sampleOf(const Note& note, double time)
{
    const double t = time - note.start;
    if (t < 0 || t > note.length) {
        return 0;
    }
    const double octaves = std::log2(note.glide) / note.length;
    const double turns = octaves == 0.0 ? note.frequency * t
                                        : note.frequency * (std::exp2(octaves * t) - 1) / (octaves * std::numbers::ln2);
    const double phase = 2 * std::numbers::pi * turns;
    const double attack = std::min(1.0, t / 0.004);
    const double release = std::exp(-5 * t / note.length) * std::min(1.0, (note.length - t) / 0.01);
    const double wave = std::sin(phase) + note.brightness * (0.6 * std::sin(2 * phase) + 0.4 * std::sin(3 * phase));
    return note.gain * attack * release * wave / (1 + note.brightness);
}

template <typename Integer>
void append(QByteArray& bytes, Integer value)
{
    std::array<char, sizeof(Integer)> raw{};
    qToBigEndian(value, raw.data());
    bytes.append(raw.data(), qsizetype(raw.size()));
}

QByteArray samplesOf(const Recipe& recipe)
{
    double length = 0;
    for (const Note& note : recipe.notes) {
        length = std::max(length, note.start + note.length);
    }
    QByteArray samples;
    for (int frame = 0; frame < int(length * sampleRate); ++frame) {
        double sum = 0;
        for (const Note& note : recipe.notes) {
            sum += sampleOf(note, double(frame) / sampleRate);
        }
        append(samples, qint16(std::lround(std::clamp(sum, -1.0, 1.0) * 32'000)));
    }
    return samples;
}

/// Monaural 16-bit AIFF.
QByteArray aiffOf(const QByteArray& samples)
{
    QByteArray bytes("FORM");
    append(bytes, quint32(4 + 8 + 18 + 8 + 8 + samples.size()));
    bytes.append("AIFFCOMM");
    append(bytes, quint32(18));
    append(bytes, qint16(1));
    append(bytes, quint32(samples.size() / 2));
    append(bytes, qint16(16));
    // 44,100 as an 80-bit extended number: exponent 16383 + 15, mantissa 44,100 shifted to the top.
    append(bytes, quint16(16'383 + 15));
    append(bytes, quint64(sampleRate) << 48);
    bytes.append("SSND");
    append(bytes, quint32(8 + samples.size()));
    append(bytes, quint32(0));
    append(bytes, quint32(0));
    return bytes + samples;
}

} // namespace

/// `make_sound NAME FILE.aif`: writes one of the product's own sounds.
int main(int argc, char** argv)
{
    if (argc != 3) {
        std::fprintf(stderr, "usage: make_sound NAME FILE.aif\n");
        return 2;
    }
    const auto& all = recipes();
    const auto recipe = std::find_if(all.begin(), all.end(), [&](const Recipe& r) { return r.name == argv[1]; });
    QFile file(QString::fromLocal8Bit(argv[2]));
    if (recipe == all.end() || !file.open(QIODevice::WriteOnly)) {
        std::fprintf(stderr, "make_sound: cannot make %s\n", argv[1]);
        return 1;
    }
    const QByteArray bytes = aiffOf(samplesOf(*recipe));
    return file.write(bytes) == bytes.size() ? 0 : 1;
}
