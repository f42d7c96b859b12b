// SPDX-License-Identifier: MIT
#include <core/BYGlobals.h>
#include <core/PhraseOrder.h>
#include <core/SharedNames.h>
#include <platform/storage/Preferences.h>

#include <QCoreApplication>
#include <QFile>

#include <Bench.h>
#include <SyntheticDocument.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstdlib>
#include <vector>

using namespace Qt::StringLiterals;
using PropertyList::ArrayPointer;
using PropertyList::Value;

namespace {

constexpr int phraseCount = 100'000;
constexpr int rounds = 7;
constexpr int settingReads = 10'000;
/// So many that reading the file again would take milliseconds.
constexpr int settingCount = 20'000;

void benchSort()
{
    const ArrayPointer phrases = SyntheticDocument::phrases(phraseCount);
    std::vector<QString> keys;
    for (const Value& phrase : *phrases) {
        keys.push_back(phrase.dictionary()->value(PhraseKey::phrase).string().toCaseFolded());
    }
    // Every round sorts a list of its own, since a sorted one is no work.
    std::vector<ArrayPointer> lists(rounds);
    for (ArrayPointer& list : lists) {
        list = PropertyList::Array::create();
        for (const Value& phrase : *phrases) {
            list->append(phrase);
        }
    }
    std::vector<std::vector<QString>> keyLists(rounds, keys);
    auto list = lists.begin();
    auto keyList = keyLists.begin();
    const auto [ours, peer] = Bench::millisecondsInTurn(
        rounds, [&] { PhraseOrder::sort(**list++, PhraseKey::phrase, PhraseOrder::Comparison::CaseInsensitiveText); },
        [&] {
            std::stable_sort(keyList->begin(), keyList->end());
            ++keyList;
        });
    Bench::report("core/sort-100k-phrases-ms", ours, peer, 1.5);
}

void benchSettings()
{
    for (int i = 0; i < settingCount; ++i) {
        Preferences::setValue(u"key %1"_s.arg(i), u"value"_s, BYGlobals::appID());
    }
    BYGlobals::storeSetting(u"0"_s, Settings::sortPref.key);
    std::vector<QByteArray> files;
    for (const QString& domain : {QCoreApplication::applicationName(), BYGlobals::appID(), u"global"_s}) {
        files.push_back(QFile::encodeName(Preferences::filePath(domain)));
    }
    struct stat status = {};
    const auto [ours, peer] = Bench::millisecondsInTurn(
        rounds,
        [] {
            for (int i = 0; i < settingReads; ++i) {
                BYGlobals::retrieveFromUserDefaults(Settings::sortPref.key);
            }
        },
        [&] {
            for (int i = 0; i < settingReads; ++i) {
                for (const QByteArray& file : files) {
                    ::stat(file.constData(), &status);
                }
            }
        });
    // The peer looks at the same three files: those of the host, of the helper and the global one.
    Bench::report("core/read-unchanged-setting-us", ours * 1000 / settingReads, peer * 1000 / settingReads, 2);
}

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    benchSort();
    benchSettings();
    return EXIT_SUCCESS;
}
