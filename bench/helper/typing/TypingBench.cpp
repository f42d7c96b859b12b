// SPDX-License-Identifier: MIT
#include <core/Settings.h>
#include <core/SharedNames.h>
#include <helper/typing/TypedPhrases.h>
#include <platform/input/InputWatcher.h>

#include <QCoreApplication>
#include <QSet>

#include <Bench.h>

#include <algorithm>
#include <cstdlib>
#include <vector>

using namespace Qt::StringLiterals;

using PropertyList::Array;
using PropertyList::ArrayPointer;
using PropertyList::Dictionary;

namespace {

/// How often memory was asked for.
size_t allocations = 0;

} // namespace

// The C library's own names for what is counted here.
extern "C" void* __libc_malloc(size_t size); // NOLINT(*-reserved-identifier)

extern "C" void* __libc_realloc(void* ptr, size_t size); // NOLINT(*-reserved-identifier)

extern "C" void* malloc(size_t size)
{
    ++allocations;
    return __libc_malloc(size);
}

extern "C" void* realloc(void* ptr, size_t size)
{
    ++allocations;
    return __libc_realloc(ptr, size);
}

namespace {

constexpr int phraseCount = 100'000;
constexpr int keyCount = 1'000'000;

class Random final
{
public:
    int below(int limit)
    {
        m_state = m_state * 6364136223846793005U + 1442695040888963407U;
        return int((m_state >> 33) % quint64(limit));
    }

    /// Two to eight letters, the frequent ones more often.
    QString word()
    {
        constexpr QStringView letters = u"eeeetttaaaooiinnsshhrrdlcumwfgypbvkjxqz";
        QString text;
        for (int left = 2 + below(7); left > 0; --left) {
            text += letters[below(int(letters.size()))];
        }
        return text;
    }

private:
    quint64 m_state = 1;
};

/// Entries with all that an imported document has, so that they lie as far apart as there.
ArrayPointer phrases(Random& random)
{
    const ArrayPointer list = Array::create();
    for (int row = 0; row < phraseCount; ++row) {
        list->append(Dictionary::create({{PhraseKey::option, u""_s}, {PhraseKey::phrase, random.word()},
            {PhraseKey::plainText, u"A text that stands for phrase number %1"_s.arg(row)}, {PhraseKey::service, u""_s},
            {PhraseKey::sortOrder, QString::number(row)}, {PhraseKey::soundFilepath, u"/usr/share/sounds/a.aiff"_s}}));
    }
    return list;
}

/// Tells of keys that nobody has pressed.
class Keys final : public InputWatcher
{
public:
    void forget() override {}
};

/// The plain way: all ends of what was typed, the longest first, looked up in a set.
qsizetype lookUpEnds(const QSet<QStringView>& set, QStringView typed)
{
    for (; !typed.isEmpty(); typed = typed.sliced(1)) {
        if (set.contains(typed)) {
            break;
        }
    }
    return typed.size();
}

double percentile(std::vector<double>& times, double part)
{
    const auto place = times.begin() + std::ptrdiff_t(double(times.size()) * part);
    std::ranges::nth_element(times, place);
    return *place;
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    Random random;
    const ArrayPointer list = phrases(random);
    qsizetype characters = 0;
    QSet<QStringView> set;
    for (const PropertyList::Value& entry : std::as_const(*list)) {
        const QStringView text = entry.dictionaryInPlace()->find(PhraseKey::phrase)->stringView();
        characters += text.size();
        set.insert(text);
    }
    std::vector<KeyPress> keys(keyCount / 100);
    for (size_t index = 0; index < keys.size();) {
        const QString text = random.word() + u' ';
        for (qsizetype place = 0; place < text.size() && index < keys.size(); ++place) {
            keys[index].meaning.key = KeyMeaning::Key::Character;
            keys[index++].meaning.text = KeyText(text.mid(place, 1).toUtf8());
        }
    }
    const PhraseIndex index(list);
    Bench::reportAbsolute("typing/memory-bytes-a-character", double(index.memory()) / double(characters), 0, 2);

    // Without triggers every key is looked up, which is the most that there is to do.
    Settings::noTriggers.store(true);
    Keys input;
    TypedPhrases phrasesTyped(&input, nullptr);
    qsizetype found = 0;
    QObject::connect(&phrasesTyped, &TypedPhrases::completed, &input, [&found] { ++found; });
    phrasesTyped.readSettings();
    phrasesTyped.setPhrases(std::make_shared<const PhraseIndex>(list));
    // The first key after a pause starts a timer.
    Q_EMIT input.keyPressed(keys.front());
    TypingBuffer typed(index.longest());
    std::vector<double> ours;
    std::vector<double> peer;
    ours.reserve(keyCount);
    peer.reserve(keyCount);
    size_t allocated = 0;
    qsizetype foundByPeer = 0;
    for (size_t number = 0; number < keyCount; ++number) {
        const KeyPress& key = keys[number % keys.size()];
        const size_t before = allocations;
        ours.push_back(1000 * Bench::milliseconds(1, [&] { Q_EMIT input.keyPressed(key); }));
        allocated += allocations - before;
        typed.append(key.meaning.text.view());
        peer.push_back(1000 * Bench::milliseconds(1, [&] { foundByPeer += lookUpEnds(set, typed.text()); }));
    }
    if (found == 0 || foundByPeer == 0 || allocations == 0) {
        qFatal("nothing was found or counted");
    }
    Bench::reportAbsolute("typing/key-us-p50", percentile(ours, 0.5), percentile(peer, 0.5), 5);
    Bench::reportAbsolute("typing/key-us-p99", percentile(ours, 0.99), percentile(peer, 0.99), 5);
    Bench::reportAbsolute("typing/allocations", double(allocated), 0, 0);
    return 0;
}
