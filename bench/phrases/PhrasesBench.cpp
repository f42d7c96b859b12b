// SPDX-License-Identifier: MIT
#include "Bench.h"

#include <core/BYGlobals.h>
#include <core/PhraseList.h>
#include <core/SharedNames.h>
#include <phrases/PhrasesTab.h>
#include <platform/plist/PropertyList.h>
#include <platform/storage/AtomicFile.h>
#include <sounds/SoundPanelAccessory.h>

#include <QApplication>
#include <QKeyEvent>
#include <QTemporaryDir>

#include <cstdlib>
#include <random>
#include <vector>

using namespace Qt::StringLiterals;

using PropertyList::Array;
using PropertyList::ArrayPointer;
using PropertyList::Dictionary;
using PropertyList::DictionaryPointer;

namespace {

constexpr int phraseCount = 100'000;
constexpr int rounds = 7;
// A scan takes a few milliseconds, which any other program's use of the cache doubles.
constexpr int scanRounds = 25;
constexpr double frameMilliseconds = 16;

/// Phrases as people have them, in no order, some of which begin as the typed text does.
QString phraseText(std::mt19937& random)
{
    static const QString letters = u"abcdefghijklmnopqrstuvwxyz"_s;
    QString text;
    const auto length = 4 + random() % 12;
    for (unsigned position = 0; position < length; ++position) {
        text += letters.at(qsizetype(random() % 26));
    }
    return text;
}

DictionaryPointer rootWithList(const QString& key, const std::function<void(Dictionary&, int)>& fill)
{
    const ArrayPointer list = Array::create();
    for (int number = 0; number < phraseCount; ++number) {
        const DictionaryPointer item = Dictionary::create();
        fill(*item, number);
        list->append(item);
    }
    const DictionaryPointer root = Dictionary::create();
    root->insert(key, list);
    return root;
}

void fillPhrase(Dictionary& entry, int number)
{
    static std::mt19937 random;
    entry.insert(PhraseKey::phrase, phraseText(random));
    entry.insert(PhraseKey::soundFilepath, u"/usr/share/sounds/freedesktop/stereo/sound-%1.oga"_s.arg(number));
    entry.insert(
        PhraseKey::plainText, u"The text that stands for phrase number %1, as long as such texts are."_s.arg(number));
}

void save(const DictionaryPointer& root, const QString& path)
{
    if (!AtomicFile::write(path, PropertyList::write(root))) {
        std::abort();
    }
}

void benchTypeAhead(BYTableView& table)
{
    const ArrayPointer phrases = BYGlobals::clippingsArray();
    std::vector<QString> texts;
    for (const PropertyList::Value& value : std::as_const(*phrases)) {
        texts.push_back(value.dictionary()->value(PhraseKey::phrase).string());
    }
    const QString typed = u"zzzzzz"_s;
    // Volatile: the comparison is a pure function, and a result that nobody reads would take it along.
    volatile int found = 0;
    const auto [ours, peer] = Bench::millisecondsInTurn(
        scanRounds, [&] { found = found + PhraseList::rowOfPhraseStartingWith(phrases, typed); },
        [&] {
            const auto match = std::find_if(texts.cbegin(), texts.cend(),
                [&typed](QStringView text) { return text.startsWith(typed, Qt::CaseInsensitive); });
            found = found + (match == texts.cend() ? -1 : 1);
        });
    Bench::report("phrases/type-ahead-scan", ours, peer, 1.5);

    QKeyEvent key(QEvent::KeyPress, Qt::Key_Exclam, Qt::NoModifier, u"!"_s);
    const double wholeKey = Bench::milliseconds(rounds, [&] { table.keyDown(&key); });
    Bench::reportAbsolute("phrases/type-ahead-key-ms", wholeKey, peer, frameMilliseconds);
}

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    const QTemporaryDir folder;
    qputenv("XDG_CONFIG_HOME", folder.path().toLocal8Bit());
    const QApplication application(argc, argv);
    const QString path = folder.filePath(u"large.blipsy"_s);
    save(rootWithList(DocumentKey::clippings, fillPhrase), path);
    BYGlobals::storeSetting(path, Settings::defaultFilePath.key);

    SoundPanelAccessory soundPanel;
    PhrasesTab tab(soundPanel);
    tab.table().awakeFromNib();
    tab.resize(700, 500);
    tab.show();
    // Nothing is painted before the window has been exposed.
    QCoreApplication::processEvents();

    benchTypeAhead(tab.table());
    return 0;
}
