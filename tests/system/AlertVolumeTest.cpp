#include <QElapsedTimer>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <AlertVolume.h>
#include <SoundFixtures.h>
#include <SoundServerControl.h>

using namespace Qt::StringLiterals;

/// The other side is what a desktop's sound settings see: a stream of the role "event", whose volume the server ties to
/// the alert volume both ways.
class AlertVolumeTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void cleanup();

    void levelSetHereIsTheServersVolume_data();
    void levelSetHereIsTheServersVolume();
    void volumeSetElsewhereIsReadHere();
    void mutedReadsAsSilentAndSettingUnmutes();
    void hungServerAnswersWithTheLastValue();
    void noServerGivesAnError();

private:
    QString streamProperty(const QString& pattern) const;

    QString streamIndex() const { return streamProperty(u"Sink Input #(\\d+)"_s); }

    QTemporaryDir m_folder;
    QProcess m_alert;
};

void AlertVolumeTest::initTestCase()
{
    const QString path = m_folder.filePath(u"alert.wav"_s);
    SoundFixtures::write(path, SoundFixtures::wave(440, 250));
    m_alert.start(u"paplay"_s, {u"--property=media.role=event"_s, path});
    QTRY_VERIFY(!streamIndex().isEmpty());
}

void AlertVolumeTest::cleanupTestCase()
{
    m_alert.kill();
    m_alert.waitForFinished();
}

void AlertVolumeTest::cleanup()
{
    SoundServerControl::signalServer(SIGCONT);
}

QString AlertVolumeTest::streamProperty(const QString& pattern) const
{
    const auto list = SoundServerControl::control({u"list"_s, u"sink-inputs"_s});
    return QRegularExpression(pattern).match(QString::fromUtf8(list.value_or(""))).captured(1);
}

void AlertVolumeTest::levelSetHereIsTheServersVolume_data()
{
    QTest::addColumn<quint32>("word");
    QTest::addColumn<QString>("serverVolume");
    QTest::addColumn<quint32>("read");
    QTest::newRow("half") << 0x00800080U << u"32768"_s << 0x00800080U;
    QTest::newRow("one step below full") << 0x00FF00FFU << u"65280"_s << 0x00FF00FFU;
    QTest::newRow("silent") << 0U << u"0"_s << 0U;
    QTest::newRow("full") << 0x01000100U << u"65536"_s << 0x01000100U;
    QTest::newRow("more than full, other half ignored") << 0x0000FFFFU << u"65536"_s << 0x01000100U;
}

void AlertVolumeTest::levelSetHereIsTheServersVolume()
{
    QFETCH(quint32, word);
    QFETCH(QString, serverVolume);
    QFETCH(quint32, read);
    AlertVolume::setSysBeepVolume(word);
    QTRY_COMPARE(streamProperty(u"Volume: \\S+ (\\d+) /"_s), serverVolume);
    QCOMPARE(AlertVolume::getSysBeepVolume().error, qint16(0));
    QTRY_COMPARE(AlertVolume::getSysBeepVolume().level, read);
}

void AlertVolumeTest::volumeSetElsewhereIsReadHere()
{
    QVERIFY(SoundServerControl::control({u"set-sink-input-volume"_s, streamIndex(), u"16384"_s}));
    QTRY_COMPARE(AlertVolume::getSysBeepVolume().level, 0x00400040U);
    QVERIFY(SoundServerControl::control({u"set-sink-input-volume"_s, streamIndex(), u"80000"_s}));
    QTRY_COMPARE(AlertVolume::getSysBeepVolume().level, 0x01000100U);
}

void AlertVolumeTest::mutedReadsAsSilentAndSettingUnmutes()
{
    QVERIFY(SoundServerControl::control({u"set-sink-input-mute"_s, streamIndex(), u"1"_s}));
    QTRY_COMPARE(AlertVolume::getSysBeepVolume().level, 0U);
    AlertVolume::setSysBeepVolume(0x00800080);
    QTRY_COMPARE(streamProperty(u"Mute: (\\S+)"_s), u"no"_s);
    QTRY_COMPARE(AlertVolume::getSysBeepVolume().level, 0x00800080U);
}

void AlertVolumeTest::hungServerAnswersWithTheLastValue()
{
    AlertVolume::setSysBeepVolume(0x00800080);
    QTRY_COMPARE(AlertVolume::getSysBeepVolume().level, 0x00800080U);
    QVERIFY(SoundServerControl::signalServer(SIGSTOP));
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(AlertVolume::getSysBeepVolume().level, 0x00800080U);
    AlertVolume::setSysBeepVolume(0x00C000C0);
    QVERIFY(timer.elapsed() < 100);
}

void AlertVolumeTest::noServerGivesAnError()
{
    // The server lives on, out of reach: its connections end with the module, before pactl has its answer.
    SoundServerControl::control({u"unload-module"_s, u"module-native-protocol-unix"_s});
    QTRY_COMPARE(AlertVolume::getSysBeepVolume().error, AlertVolume::noHardwareError);
    QVERIFY(SoundServerControl::restart());
}

QTEST_GUILESS_MAIN(AlertVolumeTest)

#include "AlertVolumeTest.moc"
