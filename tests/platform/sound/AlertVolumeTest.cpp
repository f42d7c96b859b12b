// SPDX-License-Identifier: MIT
#include <platform/sound/AlertVolume.h>
#include <platform/sound/SoundServer.h>

#include <QElapsedTimer>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <DataTable.h>
#include <Files.h>
#include <SoundFixtures.h>
#include <SoundServerControl.h>
#include <pulse/context.h>
#include <pulse/ext-stream-restore.h>
#include <pulse/operation.h>

using namespace Qt::StringLiterals;

/// The other side is what a desktop's sound settings see: a stream of the role "event", whose volume the server ties to
/// the alert volume both ways.
class AlertVolumeTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void initTestCase()
    {
        const QString path = m_folder.filePath(u"alert.wav"_s);
        Files::write(path, SoundFixtures::wave(440, 250));
        m_alert.start(u"paplay"_s, {u"--property=media.role=event"_s, path});
        QTRY_VERIFY(!streamIndex().isEmpty());
    }

    void cleanupTestCase()
    {
        m_alert.kill();
        m_alert.waitForFinished();
    }

    void cleanup() { SoundServerControl::signalServer(SIGCONT); }

    void levelSetHereIsTheServersVolume_data()
    {
        const DataTable<quint32, QString, quint32> row("word", "serverVolume", "read");
        row("half", 0x00800080U, u"32768"_s, 0x00800080U);
        row("one step below full", 0x00FF00FFU, u"65280"_s, 0x00FF00FFU);
        row("silent", 0U, u"0"_s, 0U);
        row("full", 0x01000100U, u"65536"_s, 0x01000100U);
        row("more than full, other half ignored", 0x0000FFFFU, u"65536"_s, 0x01000100U);
    }

    void levelSetHereIsTheServersVolume()
    {
        const auto [word, serverVolume, read] = currentRow<quint32, QString, quint32>();
        AlertVolume::setSysBeepVolume(word);
        QTRY_COMPARE(streamProperty(u"Volume: \\S+ (\\d+) /"_s), serverVolume);
        QCOMPARE(AlertVolume::getSysBeepVolume().error, qint16(0));
        QTRY_COMPARE(AlertVolume::getSysBeepVolume().level, read);
    }

    void volumeSetElsewhereIsReadHere()
    {
        const auto setElsewhere = [this](const QString& volume) {
            // No notice from the server is heard meanwhile, as there is none from some servers.
            const SoundServer::Lock lock(SoundServer::instance());
            QVERIFY(SoundServerControl::control({u"set-sink-input-volume"_s, streamIndex(), volume}));
        };
        setElsewhere(u"16384"_s);
        QCOMPARE(AlertVolume::getSysBeepVolume().level, 0x00400040U);
        setElsewhere(u"80000"_s);
        QCOMPARE(AlertVolume::getSysBeepVolume().level, 0x01000100U);
    }

    void mutedReadsAsSilentAndSettingUnmutes()
    {
        QVERIFY(SoundServerControl::control({u"set-sink-input-mute"_s, streamIndex(), u"1"_s}));
        QTRY_COMPARE(AlertVolume::getSysBeepVolume().level, 0U);
        AlertVolume::setSysBeepVolume(0x00800080);
        QTRY_COMPARE(streamProperty(u"Mute: (\\S+)"_s), u"no"_s);
        QTRY_COMPARE(AlertVolume::getSysBeepVolume().level, 0x00800080U);
    }

    void settingKeepsWhatElseTheEntryHolds_data()
    {
        const DataTable<quint32, QByteArray> row("level", "entry");
        row("silent", 0U, "headphones, 0, muted");
        row("half", 0x80U, "headphones, 32768");
    }

    /// The entry holds no volume at first.
    void settingKeepsWhatElseTheEntryHolds()
    {
        QFETCH(quint32, level);
        // A stream would store its own volume.
        cleanupTestCase();
        SoundServer& server = SoundServer::instance();
        SoundServer::Lock lock(server);
        pa_context* const context = server.waitForContext(lock, SoundServer::patience);
        QVERIFY(context != nullptr);
        const pa_ext_stream_restore_info stored = {"sink-input-by-media-role:event", {}, {}, "headphones", 1};
        pa_operation_unref(pa_ext_stream_restore_write(context, PA_UPDATE_REPLACE, &stored, 1, 1, nullptr, nullptr));
        lock.unlock();
        QCOMPARE(AlertVolume::getSysBeepVolume().level, 0U);
        AlertVolume::setSysBeepVolume(level);
        QCOMPARE(AlertVolume::getSysBeepVolume().level, level | level << 16U);

        lock.lock();
        QByteArray entry;
        const auto note = [](pa_context*, const pa_ext_stream_restore_info* told, int /*endOfList*/, void* text) {
            if (told != nullptr && qstrcmp(told->name, "sink-input-by-media-role:event") == 0) {
                *static_cast<QByteArray*>(text) = QByteArray(told->device) + ", " +
                                                  QByteArray::number(told->volume.values[0]) +
                                                  (told->mute != 0 ? ", muted" : "");
            }
        };
        pa_operation_unref(pa_ext_stream_restore_read(context, note, &entry));
        lock.unlock();
        // Its own question is answered after that one.
        AlertVolume::getSysBeepVolume();
        QTEST(entry, "entry");
    }

    void hungServerAnswersWithTheLastValue()
    {
        AlertVolume::setSysBeepVolume(0x00800080);
        QTRY_COMPARE(AlertVolume::getSysBeepVolume().level, 0x00800080U);
        QVERIFY(SoundServerControl::signalServer(SIGSTOP));
        QElapsedTimer timer;
        timer.start();
        // The first one waits.
        for (int i = 0; i < 5; ++i) {
            QCOMPARE(AlertVolume::getSysBeepVolume().level, 0x00800080U);
            AlertVolume::setSysBeepVolume(0x00C000C0);
        }
        QCOMPARE_LT(timer.elapsed(), 200);
        QVERIFY(SoundServerControl::signalServer(SIGCONT));
        QTRY_COMPARE(AlertVolume::getSysBeepVolume().level, 0x00C000C0U);
    }

    void noServerGivesAnError()
    {
        // The server lives on, out of reach: its connections end with the module, before pactl has its answer.
        SoundServerControl::control({u"unload-module"_s, u"module-native-protocol-unix"_s});
        QTRY_COMPARE(AlertVolume::getSysBeepVolume().error, AlertVolume::noHardwareError);
        QVERIFY(SoundServerControl::restart());
    }

private:
    QString streamProperty(const QString& pattern) const
    {
        const auto list = SoundServerControl::control({u"list"_s, u"sink-inputs"_s});
        return QRegularExpression(pattern).match(QString::fromUtf8(list.value_or(""))).captured(1);
    }

    QString streamIndex() const { return streamProperty(u"Sink Input #(\\d+)"_s); }

    QTemporaryDir m_folder;
    QProcess m_alert;
};

QTEST_GUILESS_MAIN(AlertVolumeTest)

#include "AlertVolumeTest.moc"
