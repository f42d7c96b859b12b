// SPDX-License-Identifier: MIT
#include <core/BYGlobals.h>
#include <core/SharedNames.h>
#include <events/EventsTab.h>
#include <platform/controls/Slider.h>
#include <platform/table/TableView.h>
#include <sounds/SoundPanelAccessory.h>

#include <QApplication>
#include <QLineEdit>
#include <QSaveFile>
#include <QTemporaryDir>
#include <QTimer>

#include <Bench.h>
#include <SyntheticDocument.h>

#include <algorithm>
#include <chrono>
#include <vector>

using namespace Qt::StringLiterals;
using PropertyList::Array;
using PropertyList::ArrayPointer;
using PropertyList::Dictionary;
using PropertyList::DictionaryPointer;

namespace {

constexpr int manyEvents = 100'000;
constexpr int catalogue = 80;
constexpr int rounds = 15;
constexpr int smallWrites = 201;
constexpr int largeWrites = 21;
constexpr int manyPhrases = 100'000;
constexpr double frameMilliseconds = 16;

DictionaryPointer documentOf(int count)
{
    const ArrayPointer events = Array::create();
    for (int i = 0; i < count; ++i) {
        events->append(Dictionary::create({{EventKey::event, QString::number(i % catalogue)},
            {EventKey::eventName, QString(u"Something happens, number %1"_s.arg(i))},
            {EventKey::eventCatName, u"Desktop"_s}, {EventKey::volume, u"0.5"_s},
            {EventKey::soundFilepath, QString(u"/usr/share/sounds/stereo/sound-%1.wav"_s.arg(i))}}));
    }
    return Dictionary::create({{DocumentKey::sounds, events}, {DocumentKey::setVolume, u"0.5"_s}});
}

void writeWithPeer(const QString& path, const QByteArray& bytes)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) < 0 || !file.commit()) {
        qFatal("cannot write the document");
    }
}

void load(const QTemporaryDir& folder, const DictionaryPointer& document)
{
    const QString path = folder.filePath(u"bench.blipsy"_s);
    writeWithPeer(path, PropertyList::write(document));
    BYGlobals::setDefaultFilePath(path);
    BYGlobals::fillArray();
}

/// The tab as in the pane, set up and shown.
struct ShownTab
{
    ShownTab()
    {
        controller.awakeFromNib();
        tab.resize(800, 600);
        tab.show();
        QCoreApplication::processEvents();
    }

    SoundPanelAccessory soundPanel;
    EventsTab tab{soundPanel};
    SoundEventsController& controller = tab.controller();
    QLineEdit& search = *controller.mySearchField;
    TableView& table = *controller.mySoundEventsTable;
    Slider& slider = *controller.myVolumeSlider;
};

/// Everything that the filter searches.
std::vector<QString> searchedTexts()
{
    std::vector<QString> texts;
    for (const PropertyList::Value& event : *BYGlobals::soundsPrefsArray()) {
        for (const QString& key : {EventKey::eventName, EventKey::soundFilepath, EventKey::eventCatName}) {
            texts.push_back(event.dictionary()->value(key).string());
        }
    }
    return texts;
}

/// The key press that completes @p text in the search field, until the table has been painted.
void benchKeystroke(const char* name, const QString& text, ShownTab& tab, const std::vector<QString>& texts)
{
    // Volatile: the comparison is a pure function, and a result that nobody reads would take it along.
    volatile int found = 0;
    double ours = 0;
    double peer = 0;
    for (int round = 0; round < rounds; ++round) {
        tab.search.setText(text.chopped(1));
        tab.table.viewport()->repaint();
        const double timeOurs = Bench::milliseconds(1, [&] {
            tab.search.insert(text.last(1));
            tab.table.viewport()->repaint();
        });
        const double timePeer = Bench::milliseconds(1, [&] {
            for (const QString& searched : texts) {
                found = found + (QStringView(searched).contains(text, Qt::CaseInsensitive) ? 1 : 0);
            }
        });
        ours = round == 0 ? timeOurs : std::min(ours, timeOurs);
        peer = round == 0 ? timePeer : std::min(peer, timePeer);
    }
    Bench::report(qPrintable(u"events/filter-100000-%1"_s.arg(QLatin1String(name))), ours, peer, 2);
    Bench::reportAbsolute(qPrintable(u"events/filter-100000-%1-ms"_s.arg(QLatin1String(name))), ours, peer, 16);
}

void benchFilter(const QTemporaryDir& folder)
{
    load(folder, documentOf(manyEvents));
    ShownTab tab;
    const std::vector<QString> texts = searchedTexts();
    benchKeystroke("all-match", u"s"_s, tab, texts);
    benchKeystroke("some-match", u"sound-99"_s, tab, texts);
    benchKeystroke("none-match", u"sound-x"_s, tab, texts);
}

/// One step of the slider, until the document is written and others are told of it. Answers the longest time for which
/// nothing else was handled, in milliseconds.
double step(ShownTab& tab)
{
    using Clock = std::chrono::steady_clock;
    std::chrono::duration<double, std::milli> longest{};
    auto last = Clock::now();
    QTimer beat;
    QObject::connect(&beat, &QTimer::timeout, &beat, [&] {
        const auto now = Clock::now();
        longest = std::max<decltype(longest)>(longest, now - last);
        last = now;
    });
    beat.start(1);
    tab.controller.volumeSliderAction(&tab.slider);
    bool isTold = false;
    SoundsDocument::shared().afterSaving([&isTold] { isTold = true; });
    while (!isTold) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return longest.count();
}

/// The first step, before which no bytes of the document have been made, is not counted.
void benchSlider(const QTemporaryDir& folder, const char* name, int phrases, int steps, double target)
{
    const DictionaryPointer document = documentOf(catalogue);
    document->insert(DocumentKey::clippings, SyntheticDocument::phrases(phrases));
    load(folder, document);
    ShownTab tab;
    tab.table.selectRow_byExtendingSelection(1, false);
    tab.slider.setFloatValue(0.25F);
    const double firstHold = step(tab);
    const QByteArray bytes = PropertyList::write(BYGlobals::clippingsDictionary());
    const QString other = folder.filePath(u"peer.blipsy"_s);
    std::vector<double> holds;
    const auto [ours, peer] = Bench::medianMillisecondsInTurn(
        steps, [&] { holds.push_back(step(tab)); }, [&] { writeWithPeer(other, bytes); });
    const QString measure = u"events/slider-step-%1"_s.arg(QLatin1String(name));
    Bench::report(qPrintable(measure + u"-written-ms"_s), ours, peer, target);
    const auto middle = holds.begin() + std::ptrdiff_t(holds.size() / 2);
    std::nth_element(holds.begin(), middle, holds.end());
    Bench::reportAbsolute(qPrintable(measure + u"-hold-ms"_s), *middle, 0, frameMilliseconds);
    Bench::reportAbsolute(qPrintable(measure + u"-first-hold-ms"_s), firstHold, 0, frameMilliseconds);
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    BYGlobals::init();
    const QTemporaryDir folder;
    benchFilter(folder);
    benchSlider(folder, "small", 0, smallWrites, 1.5);
    benchSlider(folder, "100000-phrases", manyPhrases, largeWrites, 1.2);
    return 0;
}
