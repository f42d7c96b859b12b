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

#include <Bench.h>

#include <algorithm>
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
constexpr int writes = 201;

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

void load(const QTemporaryDir& folder, int count)
{
    const QString path = folder.filePath(u"bench.blipsy"_s);
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(PropertyList::write(documentOf(count))) < 0 || !file.commit()) {
        qFatal("cannot write the document");
    }
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
    load(folder, manyEvents);
    ShownTab tab;
    const std::vector<QString> texts = searchedTexts();
    benchKeystroke("all-match", u"s"_s, tab, texts);
    benchKeystroke("some-match", u"sound-99"_s, tab, texts);
    benchKeystroke("none-match", u"sound-x"_s, tab, texts);
}

void benchSlider(const QTemporaryDir& folder)
{
    load(folder, catalogue);
    ShownTab tab;
    tab.table.selectRow_byExtendingSelection(1, false);
    tab.slider.setFloatValue(0.25F);
    const QByteArray bytes = PropertyList::write(BYGlobals::clippingsDictionary());
    const QString other = folder.filePath(u"peer.blipsy"_s);
    const auto [ours, peer] = Bench::medianMillisecondsInTurn(
        writes, [&] { tab.controller.volumeSliderAction(&tab.slider); },
        [&] {
            QSaveFile file(other);
            if (!file.open(QIODevice::WriteOnly) || file.write(bytes) < 0 || !file.commit()) {
                qFatal("cannot write the document");
            }
        });
    Bench::report("events/slider-step-ms", ours, peer, 1.5);
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    BYGlobals::init();
    const QTemporaryDir folder;
    benchFilter(folder);
    benchSlider(folder);
    return 0;
}
