// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QFile>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTest>

#include <cmath>
#include <csignal>
#include <numbers>
#include <optional>

/// The private sound server that tests/with-sound-server runs.
namespace SoundServerControl {

inline int processId()
{
    QFile file(qEnvironmentVariable("PULSE_RUNTIME_PATH") + QStringLiteral("/pid"));
    return file.open(QIODevice::ReadOnly) ? file.readAll().trimmed().toInt() : 0;
}

/// Sends a signal to the server's process; false when there is none.
inline bool signalServer(int signal)
{
    const int process = processId();
    return process > 0 && ::kill(process, signal) == 0;
}

/// What `pactl` with these arguments prints; nothing when it fails.
inline std::optional<QByteArray> control(const QStringList& arguments)
{
    QProcess process;
    process.start(QStringLiteral("pactl"), arguments);
    const bool isDone = process.waitForFinished(10000) && process.exitCode() == 0;
    return isDone ? std::optional(process.readAllStandardOutput()) : std::nullopt;
}

/// Whether anything plays, or is about to.
inline bool hasStreams()
{
    const auto streams = control({QStringLiteral("list"), QStringLiteral("short"), QStringLiteral("sink-inputs")});
    return streams && !streams->isEmpty();
}

/// Ends the server at once and returns when its successor answers.
inline bool restart()
{
    const int before = processId();
    return signalServer(SIGKILL) &&
           QTest::qWaitFor([before] { return processId() != before && control({QStringLiteral("info")}); }, 10000);
}

/// Records the monitor of an output for as long as it lives.
class Recording final
{
public:
    explicit Recording(const QString& output = QStringLiteral("speakers"))
    {
        m_process.start(QStringLiteral("parec"),
            {QStringLiteral("--raw"), QStringLiteral("--device=") + output + QStringLiteral(".monitor"),
                QStringLiteral("--rate=8000"), QStringLiteral("--channels=1"), QStringLiteral("--format=float32le"),
                QStringLiteral("--latency-msec=5")});
        // The output's first samples come when it runs at the low latency of the recording.
        m_isRunning = QTest::qWaitFor([this] { return !samples().isEmpty(); }, 10000);
    }

    ~Recording()
    {
        m_process.kill();
        m_process.waitForFinished();
    }

    bool isRunning() const { return m_isRunning; }

    /// Forgets what was recorded up to now.
    void clear()
    {
        samples();
        m_bytes.clear();
    }

    /// For how many seconds a tone was heard: blocks of 20 ms in which it is louder than @p least, a part of full
    /// scale.
    double secondsOf(double frequency, double least = 0.05)
    {
        constexpr int blockLength = 160;
        const QList<float> all = samples();
        int blocks = 0;
        for (qsizetype start = 0; start + blockLength <= all.size(); start += blockLength) {
            blocks += loudness(all.sliced(start, blockLength), frequency) > least ? 1 : 0;
        }
        return blocks * blockLength / 8000.0;
    }

private:
    Q_DISABLE_COPY_MOVE(Recording)

    QList<float> samples()
    {
        m_bytes += m_process.readAllStandardOutput();
        const auto* const first = reinterpret_cast<const float*>(m_bytes.constData());
        return {first, first + m_bytes.size() / qsizetype(sizeof(float))};
    }

    static double loudness(const QList<float>& block, double frequency)
    {
        double cosine = 0;
        double sine = 0;
        for (qsizetype at = 0; at < block.size(); ++at) {
            const double phase = 2 * std::numbers::pi * frequency * double(at) / 8000;
            cosine += double(block[at]) * std::cos(phase);
            sine += double(block[at]) * std::sin(phase);
        }
        return 2 * std::hypot(cosine, sine) / double(block.size());
    }

    QProcess m_process;
    QByteArray m_bytes;
    bool m_isRunning = false;
};

} // namespace SoundServerControl
