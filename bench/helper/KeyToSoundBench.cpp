// SPDX-License-Identifier: MIT
#include <core/Settings.h>
#include <core/SharedNames.h>

#include <QCoreApplication>
#include <QProcess>
#include <QTemporaryDir>

#include <Bench.h>
#include <Files.h>
#include <Listener.h>
#include <SoundFixtures.h>
#include <unistd.h>
#include <xcb/xtest.h>

#include <ctime>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using PropertyList::Array;
using PropertyList::Dictionary;

namespace {

/// In milliseconds, from the X server to the recording: both servers, and the millisecond that the recorder collects.
constexpr double wholeWayTarget = 10;
/// Of what the peer takes for the same way.
constexpr double peerShare = 0.5;
/// Percent of one core, at ten keys a second.
constexpr double workTarget = 1;
constexpr int rounds = 3;
constexpr int keysInARound = 10;
constexpr int keysAtWork = 300;
/// Recordings of real keys begin softly.
constexpr float softest = 0.01F;

/// Presses keys as a keyboard does, and is the program that they are typed into: the X server hands recorded keys,
/// which the peer listens to, on only when it also has something for another program.
class Keyboard final
{
public:
    Keyboard()
    {
        const uint32_t keys = XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_KEY_RELEASE;
        const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root;
        xcb_change_window_attributes(m_connection, root, XCB_CW_EVENT_MASK, &keys);
        xcb_flush(m_connection);
    }

    ~Keyboard() { xcb_disconnect(m_connection); }
    Q_DISABLE_COPY_MOVE(Keyboard)

    void press(uint8_t keycode) { send(XCB_KEY_PRESS, keycode); }

    void release(uint8_t keycode) { send(XCB_KEY_RELEASE, keycode); }

private:
    void send(uint8_t type, uint8_t keycode)
    {
        xcb_test_fake_input(m_connection, type, keycode, 0, XCB_NONE, 0, 0, 0);
        xcb_flush(m_connection);
        while (xcb_generic_event_t* const event = xcb_poll_for_event(m_connection)) {
            std::free(event);
        }
    }

    xcb_connection_t* m_connection = xcb_connect(nullptr, nullptr);
};

/// By their X11 keycodes: "brb" and a space.
constexpr std::array<uint8_t, 4> phraseKeys{56, 27, 56, 65};

/// A program that sounds at each key, for as long as this object lives.
class Sounder final
{
public:
    explicit Sounder(const QString& program)
    {
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_process.start(program, QStringList());
        // Both load for a while, and tell nobody when they are ready.
        std::this_thread::sleep_for(2s);
    }

    ~Sounder()
    {
        m_process.terminate();
        m_process.waitForFinished();
    }

    Q_DISABLE_COPY_MOVE(Sounder)

    /// The processor time used so far, in seconds, that of threads which have ended included.
    double secondsOfWork() const
    {
        clockid_t clock{};
        timespec time{};
        ::clock_getcpuclockid(pid_t(m_process.processId()), &clock);
        ::clock_gettime(clock, &time);
        return double(time.tv_sec) + double(time.tv_nsec) / 1e9;
    }

private:
    QProcess m_process;
};

/// The times from a key to the first sample, in milliseconds.
void measureKeys(const QString& program, Keyboard& keyboard, std::vector<double>& times)
{
    const Sounder sounder(program);
    Listener listener(softest);
    // The output has up to two seconds in store from the time before somebody listened.
    std::this_thread::sleep_for(2500ms);
    for (int key = 0; key < keysInARound; ++key) {
        times.push_back(listener.millisecondsToFirstSample([&] { keyboard.press(phraseKeys[0]); }));
        keyboard.release(phraseKeys[0]);
        std::this_thread::sleep_for(400ms);
    }
}

/// In percent of a core, with a phrase every fourth key.
double workAtTenKeysASecond(const QString& program, Keyboard& keyboard)
{
    const Sounder sounder(program);
    const double before = sounder.secondsOfWork();
    const auto start = std::chrono::steady_clock::now();
    for (int key = 0; key < keysAtWork; ++key) {
        const uint8_t keycode = phraseKeys[size_t(key) % phraseKeys.size()];
        keyboard.press(keycode);
        keyboard.release(keycode);
        std::this_thread::sleep_until(start + (key + 1) * 100ms);
    }
    return (sounder.secondsOfWork() - before) / (keysAtWork * 0.1) * 100;
}

/// Of sorted times the one that as large a part as @p part lies below.
double at(const std::vector<double>& times, double part)
{
    return times[size_t(double(times.size()) * part)];
}

/// A document in which each key, each space, the phrase and its being played sound.
void writeDocument(const QString& path, const QString& sound)
{
    auto events = Array::create();
    for (const QString& code : {u"0"_s, u"2"_s, u"22"_s}) {
        events->append(Dictionary::create({{EventKey::event, code}, {EventKey::soundFilepath, sound}}));
    }
    auto phrases =
        Array::create({Dictionary::create({{PhraseKey::phrase, u"brb"_s}, {PhraseKey::soundFilepath, sound}})});
    Files::write(path,
        PropertyList::write(Dictionary::create({{DocumentKey::clippings, phrases}, {DocumentKey::sounds, events}})));
    Settings::defaultFilePath.store(path);
}

void measure(const QTemporaryDir& folder)
{
    const QString sound = folder.filePath(u"tone.aif"_s);
    Files::write(sound, SoundFixtures::aiff(440, 0.2));
    writeDocument(folder.filePath(u"keys.blipsy"_s), sound);
    const QString helper = QStringLiteral(BLIPSY_HELPER);
    const QString bucklespring = u"/usr/games/buckle"_s;
    Keyboard keyboard;

    std::vector<double> times;
    std::vector<double> peerTimes;
    for (int round = 0; round < rounds; ++round) {
        measureKeys(helper, keyboard, times);
        measureKeys(bucklespring, keyboard, peerTimes);
    }
    std::ranges::sort(times);
    std::ranges::sort(peerTimes);
    const double middle = at(times, 0.5);
    const double peerMiddle = at(peerTimes, 0.5);
    Bench::reportAbsolute("key-to-sound/ms-p50", middle, peerMiddle, wholeWayTarget);
    Bench::reportAbsolute("key-to-sound/ms-p90", at(times, 0.9), at(peerTimes, 0.9), wholeWayTarget);
    Bench::report("key-to-sound/share-of-peer", middle, peerMiddle, peerShare);
    const double work = workAtTenKeysASecond(helper, keyboard);
    Bench::reportAbsolute(
        "key-to-sound/percent-of-a-core", work, workAtTenKeysASecond(bucklespring, keyboard), workTarget);
}

} // namespace

int main(int argc, char** argv)
{
    if (!qEnvironmentVariableIsSet("PULSE_RUNTIME_PATH")) {
        ::execl(WITH_X_SERVER, WITH_X_SERVER, WITH_SOUND_SERVER, argv[0], nullptr);
        qFatal("cannot run %s", WITH_X_SERVER);
    }
    const QCoreApplication application(argc, argv);
    const QTemporaryDir folder;
    measure(folder);
    return 0;
}
