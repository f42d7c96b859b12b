// SPDX-License-Identifier: MIT
#include <core/Settings.h>
#include <core/SoundsDocument.h>
#include <helper/typing/TypedPhrases.h>
#include <platform/input/InputWatcher.h>
#include <platform/windows/WindowWatcher.h>

#include <QDir>
#include <QProcess>
#include <QTest>
#include <QThreadPool>

#include <DataTable.h>
#include <Files.h>
#include <ProcessMemory.h>

using namespace Qt::StringLiterals;
using PropertyList::Dictionary;

namespace {

const QString application = u"/usr/share/applications/editor.desktop"_s;

class FakeInput final : public InputWatcher
{
public:
    void forget() override {}

    void type(const QString& text)
    {
        for (const QChar character : text) {
            KeyPress press;
            press.meaning.key = KeyMeaning::Key::Character;
            press.meaning.text = KeyText(QString(character).toUtf8());
            Q_EMIT keyPressed(press);
        }
    }
};

void writeDocument(const QString& path, const QString& phrase)
{
    const auto entry = Dictionary::create({{PhraseKey::phrase, phrase}});
    const auto root = Dictionary::create({{DocumentKey::clippings, PropertyList::Array::create({entry})}});
    Files::write(path, PropertyList::write(root));
}

} // namespace

class TypedPhrasesTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init()
    {
        Settings::appsFiles.store(std::nullopt);
        Settings::file4App.store({});
        Settings::triggersSet.store(std::nullopt);
        Settings::noTriggers.store(false);
        writeDocument(m_path, u"brb"_s);
        SoundsDocument::shared().setPath(m_path);
        SoundsDocument::shared().load();
        m_phrases = std::make_unique<TypedPhrases>(&m_input, m_windows.get());
        connect(m_phrases.get(), &TypedPhrases::completed, this, [this](const CompletedPhrase& phrase) {
            m_heard << phrase.entry->value(PhraseKey::phrase).string() + phrase.trigger;
        });
        m_phrases->setPhrases(std::make_shared<const PhraseIndex>(SoundsDocument::shared().phrases()));
        m_phrases->readSettings();
        m_heard.clear();
    }

    void settingsSayWhatCompletesAPhrase()
    {
        m_input.type(u"brb\tbrb."_s);
        QCOMPARE(m_heard, QStringList{u"brb\t"_s});
        CharacterBitmap triggers;
        triggers.add(u".");
        Settings::triggersSet.store(triggers.bytes());
        m_phrases->readSettings();
        m_input.type(u"brb brb."_s);
        QCOMPARE(m_heard.takeLast(), u"brb."_s);
        Settings::noTriggers.store(true);
        m_phrases->readSettings();
        m_input.type(u"brb"_s);
        QCOMPARE(m_heard.takeLast(), u"brb"_s);
    }

    void phraseIsHeardAcrossAReading()
    {
        m_input.type(u"a br"_s);
        m_phrases->setPhrases(std::make_shared<const PhraseIndex>(SoundsDocument::shared().phrases()));
        m_input.type(u"b "_s);
        QCOMPARE(m_heard, QStringList{u"brb "_s});
    }

    void nothingIsHeardAcrossAnInterruption_data()
    {
        const DataTable<int> row("interruption");
        int number = 0;
        for (const char* const name : {"held", "locked", "click", "missed keys", "other window"}) {
            row(name, number++);
        }
    }

    void nothingIsHeardAcrossAnInterruption()
    {
        const auto [interruption] = currentRow<int>();
        const std::vector<std::function<void(bool)>> interruptions{
            [this](bool isOn) { m_phrases->hold(TypedPhrases::Holder::Pane, isOn); },
            [this](bool isOn) { m_phrases->hold(TypedPhrases::Holder::Locker, isOn); },
            [this](bool) { Q_EMIT m_input.buttonPressed({}); },
            [this](bool) { Q_EMIT m_input.interrupted(); },
            [this](bool) { Q_EMIT m_windows->activated({}); },
        };
        m_input.type(u"br"_s);
        interruptions[size_t(interruption)](true);
        m_input.type(interruption < 2 ? u"brb "_s : QString());
        interruptions[size_t(interruption)](false);
        m_input.type(u"b "_s);
        QCOMPARE(m_heard, QStringList());
        m_input.type(u"brb "_s);
        QCOMPARE(m_heard, QStringList{u"brb "_s});
    }

    void applicationHasADocumentOfItsOwn()
    {
        const QString path = QDir::tempPath() + u"/own.blipsy"_s;
        writeDocument(path, u"own"_s);
        Settings::file4App.store(Dictionary::create({{application, path}}));
        m_phrases->readSettings();
        const auto typed = [this] {
            m_heard.clear();
            m_input.type(u"brb own new "_s);
            return m_heard;
        };
        const auto enter = [this](const QString& frontmost) {
            Q_EMIT m_windows->activated(SessionWindow{.applicationPath = frontmost});
        };
        QCOMPARE(typed(), QStringList{u"brb "_s});
        enter(application);
        QTRY_COMPARE(typed(), QStringList{u"own "_s});
        Files::write(path, "broken");
        enter(application);
        QThreadPool::globalInstance()->waitForDone();
        QCoreApplication::processEvents();
        QCOMPARE(typed(), QStringList{u"own "_s});
        writeDocument(path, u"new"_s);
        QTRY_VERIFY((enter(application), typed() == QStringList{u"new "_s}));
        enter(u"/another"_s);
        QCOMPARE(typed(), QStringList{u"brb "_s});
    }

    void applicationMayHaveNone()
    {
        Settings::appsFiles.store(QStringList{application});
        m_phrases->readSettings();
        Q_EMIT m_windows->activated(SessionWindow{.applicationPath = application});
        m_input.type(u"brb "_s);
        QCOMPARE(m_heard, QStringList());
    }

    void secretIsNotInMemoryAfterThePause()
    {
        const QString secret = u"xylophonezebra"_s;
        writeDocument(m_path, QString(40, u'-'));
        QProcess probe;
        probe.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        probe.start(QStringLiteral(TYPING_PROBE), {m_path, u"8000"_s});
        QByteArray output;
        QTRY_VERIFY_WITH_TIMEOUT((output += probe.readAllStandardOutput()).contains("ready"), 60'000);
        QCOMPARE(QProcess::execute(u"xdotool"_s, {u"type"_s, u"--delay"_s, u"0"_s, secret}), 0);
        const auto remembers = [&] { return ProcessMemory::contains(probe.processId(), secret); };
        QTRY_VERIFY_WITH_TIMEOUT(remembers(), 60'000);
        QTRY_VERIFY_WITH_TIMEOUT(!remembers(), 60'000);
        QCOMPARE(probe.state(), QProcess::Running);
        probe.terminate();
        QVERIFY(probe.waitForFinished());
    }

private:
    const QString m_path = QDir::tempPath() + u"/default.blipsy"_s;
    FakeInput m_input;
    std::unique_ptr<WindowWatcher> m_windows = WindowWatcher::ofSession();
    std::unique_ptr<TypedPhrases> m_phrases;
    QStringList m_heard;
};

QTEST_GUILESS_MAIN(TypedPhrasesTest)
#include "TypedPhrasesTest.moc"
