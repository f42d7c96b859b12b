// SPDX-License-Identifier: MIT
#include <core/Settings.h>
#include <helper/insertion/TextInsertion.h>
#include <helper/typing/TypedPhrases.h>
#include <platform/bytes/CharacterBitmap.h>
#include <platform/input/InputWatcher.h>

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <DataTable.h>

using namespace Qt::StringLiterals;
using PropertyList::Array;
using PropertyList::Dictionary;

namespace {

/// Presses keys as a person does; the arguments are separated by bars.
bool act(const QString& arguments)
{
    return QProcess::execute(u"xdotool"_s, arguments.split(u'|')) == 0;
}

/// A program with a window that has the focus.
class FocusedProgram final
{
public:
    FocusedProgram(const QString& program, const QStringList& arguments, const QString& windowClass)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"QT_QPA_PLATFORM"_s, u"xcb"_s);
        m_process.setProcessEnvironment(environment);
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_process.start(program, arguments);
        const QString find = u"search|--onlyvisible|--class|"_s + windowClass;
        m_hasFocus = QTest::qWaitFor([&find] { return act(find); }, 20'000) && act(find + u"|windowfocus"_s);
    }

    ~FocusedProgram()
    {
        m_process.kill();
        m_process.waitForFinished();
    }

    bool hasFocus() const { return m_hasFocus; }

    /// The last line that it wrote.
    QString told()
    {
        m_output += m_process.readAllStandardOutput();
        const QByteArray lines = m_output.left(m_output.lastIndexOf('\n') + 1).trimmed();
        return QString::fromUtf8(m_output.endsWith('\n') ? m_output.chopped(1).split('\n').last() : lines);
    }

private:
    QProcess m_process;
    QByteArray m_output;
    bool m_hasFocus = false;
};

std::optional<SelectionContents> clipboard()
{
    const auto reader = SelectionReader::ofSession();
    std::optional<SelectionContents> result;
    bool isFinished = false;
    QObject::connect(reader.get(), &SelectionReader::finished, reader.get(), [&](const auto& contents) {
        result = contents;
        isFinished = true;
    });
    reader->read("CLIPBOARD");
    return QTest::qWaitFor([&isFinished] { return isFinished; }) ? result : std::nullopt;
}

} // namespace

class TextInsertionTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init()
    {
        m_class.clear();
        CharacterBitmap triggers;
        triggers.add(u" ?\r");
        Settings::triggersSet.set(triggers.bytes());
        Settings::pasteWays.set(Dictionary::create({{u"Keys"_s, u"Typed"_s}}));
        m_input = InputWatcher::ofSession();
        QVERIFY(m_input);
        m_insertion =
            std::make_unique<TextInsertion>(TextInsertion::Session{m_input.get(), [this] { return m_class; }, {}});
        QVERIFY(m_insertion->isAvailable());
        m_typing = std::make_unique<TypedPhrases>(m_input.get(), nullptr);
        connect(m_typing.get(), &TypedPhrases::completed, m_insertion.get(), &TextInsertion::replace);
    }

    void cleanup()
    {
        m_typing.reset();
        m_insertion.reset();
        m_input.reset();
    }

    void phraseIsReplaced_data()
    {
        const DataTable<QString, QString, QString, QString> row("text", "class", "xdotool", "told");
        row("pasted", u"be right back"_s, u""_s, u"type|a brb "_s, u"16:a be right back "_s);
        row("typed on meanwhile", u"be right back"_s, u""_s, u"type|--delay|2|brb and more"_s,
            u"22:be right back and more"_s);
        row("caret", u"Dear %|,\nhi"_s, u""_s, u"type|brb "_s, u"5:Dear ,\u2028hi "_s);
        row("swallowed trigger", u"ok%-"_s, u""_s, u"type|brb "_s, u"2:ok"_s);
        row("arrow key", u"()%<x"_s, u""_s, u"type|brb "_s, u"3:(x )"_s);
        row("held Shift", u"ok"_s, u""_s, u"key|b|r|b|keydown|shift|key|slash|sleep|0.5|key|a|keyup|shift"_s,
            u"4:ok?A"_s);
        row("Return", u"ok"_s, u""_s, u"key|b|r|b|Return"_s, u"3:ok\u2028"_s);
        row("phrase left at once", u"ok"_s, u""_s, u"key|--delay|0|b|r|b|space|Left|x"_s, u"4:brbx "_s);
        row("two phrases", u"12 34"_s, u""_s, u"type|--delay|2|brb brb "_s, u"12:12 34 12 34 "_s);
        row("keys", u"brb Äß漢字 e\u0301\n%|x"_s, u"keys"_s, u"type|brb "_s, u"12:brb Äß漢字 e\u0301\u2028x "_s);
    }

    void phraseIsReplaced()
    {
        const auto [text, windowClass, arguments, told] = currentRow<QString, QString, QString, QString>();
        m_class = windowClass;
        setText(text);
        FocusedProgram window(QStringLiteral(BLIPSY_TEXT_WINDOW), {}, u"TextWindow"_s);
        QVERIFY(window.hasFocus());
        const auto before = clipboard();
        QVERIFY(before && before->size() > 3);
        QVERIFY(act(arguments));
        QTRY_COMPARE(window.told(), told);
        QTRY_COMPARE(clipboard(), before);
    }

    void undoTakesTheTextBack()
    {
        setText(u"be right back"_s);
        FocusedProgram window(QStringLiteral(BLIPSY_TEXT_WINDOW), {}, u"TextWindow"_s);
        QVERIFY(window.hasFocus());
        QVERIFY(act(u"type|brb "_s));
        QTRY_COMPARE(window.told(), u"14:be right back "_s);
        QVERIFY(act(u"key|ctrl+z"_s));
        QTRY_COMPARE(window.told(), u"0:"_s);
    }

    void clipboardThatWasGivenUpIsOwnedAgain()
    {
        const auto owner = SelectionOwner::ofSession();
        const SelectionContents text = owner->passingText(u"be right back"_s, {});
        for (const SelectionContents& contents : {text, SelectionContents(), text}) {
            owner->own("CLIPBOARD", contents);
        }
        QTRY_COMPARE(clipboard(), text);
    }

    void chosenPhraseIsInserted()
    {
        setText(u"be right back"_s);
        FocusedProgram window(QStringLiteral(BLIPSY_TEXT_WINDOW), {}, u"TextWindow"_s);
        QVERIFY(window.hasFocus());
        m_insertion->insert(m_phrases->at(0).dictionary());
        QTRY_COMPARE(window.told(), u"13:be right back"_s);
    }

    void terminalTakesIt_data()
    {
        const DataTable<QString, QByteArray> row("class", "keys of the paste");
        row("paste", u"XTerm"_s, {});
        row("paste, known by the focus", u""_s, {});
        row("keys, since it does not ask for the paste", u"Editor"_s, "\x16");
    }

    void terminalTakesIt()
    {
        const auto [windowClass, pasteKeys] = currentRow<QString, QByteArray>();
        m_class = windowClass;
        setText(u"be right back"_s);
        const QTemporaryDir folder;
        QFile read(folder.filePath(u"read"_s));
        FocusedProgram terminal(
            u"xterm"_s, {u"-e"_s, u"sh"_s, u"-c"_s, u"stty raw; cat >"_s + read.fileName()}, u"XTerm"_s);
        QVERIFY(terminal.hasFocus());
        QTRY_VERIFY(read.exists());
        QVERIFY(read.open(QIODevice::ReadOnly));
        QVERIFY(act(u"type|brb "_s));
        QByteArray bytes;
        QTRY_COMPARE_WITH_TIMEOUT((bytes += read.readAll()).replace('\b', '\x7F'),
            "brb \x7F\x7F\x7F\x7F" + pasteKeys + "be right back ", 20'000);
    }

private:
    void setText(const QString& text)
    {
        m_phrases = Array::create({Dictionary::create({{PhraseKey::phrase, u"brb"_s}, {PhraseKey::plainText, text}})});
        m_typing->readSettings();
        m_typing->setPhrases(std::make_shared<const PhraseIndex>(m_phrases));
    }

    QString m_class;
    std::unique_ptr<InputWatcher> m_input;
    std::unique_ptr<TextInsertion> m_insertion;
    std::unique_ptr<TypedPhrases> m_typing;
    PropertyList::ArrayPointer m_phrases;
};

QTEST_MAIN(TextInsertionTest)
#include "TextInsertionTest.moc"
