// SPDX-License-Identifier: MIT
#include <platform/plist/PropertyListXmlPieces.h>

#include <Bench.h>
#include <SyntheticDocument.h>
#include <malloc.h>
#include <plist/plist.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <limits>
#include <memory>
#include <numeric>
#include <optional>
#include <pugixml.hpp>
#include <random>
#include <tuple>
#include <type_traits>

using namespace Qt::StringLiterals;

namespace {

constexpr int phraseCount = 100'000;
constexpr int rounds = 5;

using Peer = std::unique_ptr<void, decltype(&plist_free)>;

Peer parsedByPeer(const QByteArray& xml)
{
    plist_t root = nullptr;
    plist_from_xml(xml.constData(), quint32(xml.size()), &root);
    return {root, &plist_free};
}

using PugiTree = std::unique_ptr<pugi::xml_document>;

/// The fastest reader at hand, into a tree of elements and texts that nobody has looked at yet.
PugiTree parsedByPugi(const QByteArray& xml)
{
    auto tree = std::make_unique<pugi::xml_document>();
    tree->load_buffer(xml.constData(), size_t(xml.size()));
    return tree;
}

double usedMegabytes()
{
    const struct mallinfo2 info = mallinfo2();
    return double(info.uordblks + info.hblkhd) / (1024 * 1024);
}

/// The memory that what @p make makes occupies while it lives, in MB.
template <typename Make>
double megabytesOf(Make&& make)
{
    const double before = usedMegabytes();
    const auto made = make();
    return usedMegabytes() - before;
}

/// What one call of @p make takes in a process of its own, in ms: a document is read when a program starts, in memory
/// that it has to get first. What was made is not freed. Infinite where there is no process to be had.
template <typename Make>
double firstMilliseconds(Make&& make)
{
    std::array<int, 2> ends{};
    double elapsed = std::numeric_limits<double>::infinity();
    const bool hasPipe = pipe(ends.data()) == 0;
    const pid_t child = hasPipe ? fork() : -1;
    if (child == 0) {
        std::optional<std::invoke_result_t<Make>> made;
        elapsed = Bench::milliseconds(1, [&] { made.emplace(make()); });
        _exit(write(ends[1], &elapsed, sizeof(elapsed)) == sizeof(elapsed) ? 0 : 1);
    }
    if (child > 0) {
        std::ignore = read(ends[0], &elapsed, sizeof(elapsed));
        waitpid(child, nullptr, 0);
    }
    if (hasPipe) {
        close(ends[0]);
        close(ends[1]);
    }
    return elapsed;
}

/// From bytes to model, beside a tree of the same bytes.
void benchReading(const QByteArray& xml)
{
    // What has been freed until here would be memory at hand.
    malloc_trim(0);
    double ours = std::numeric_limits<double>::infinity();
    double peer = ours;
    for (int round = 0; round < rounds; ++round) {
        ours = std::min(ours, firstMilliseconds([&xml] { return PropertyList::read(xml); }));
        peer = std::min(peer, firstMilliseconds([&xml] { return parsedByPugi(xml); }));
    }
    Bench::report("property-list-first-read-ms", ours, peer, 1.0);
}

/// One entry of a shuffled list changed, and the whole form ready to be written: in pieces, and at once.
void benchOneChange()
{
    const PropertyList::ArrayPointer phrases = SyntheticDocument::phrases(phraseCount);
    std::vector<size_t> order(phraseCount);
    std::iota(order.begin(), order.end(), 0U);
    std::ranges::shuffle(order, std::mt19937());
    phrases->reorder(order);
    const auto root = PropertyList::Dictionary::create({{u"Clippings"_s, phrases}});
    PropertyList::XmlPieces pieces;
    pieces.update(*root);
    int row = 0;
    const auto [ours, peer] = Bench::millisecondsInTurn(
        rounds,
        [&] {
            phrases->at(++row * 997).dictionary()->insert(u"SoundFilepath"_s, u"/changed"_s);
            pieces.update(*root);
        },
        [&root] { PropertyList::write(root); });
    constexpr double quarterOfFrame = 4;
    Bench::reportAbsolute("property-list-one-change-ms", ours, peer, quarterOfFrame);
}

} // namespace

int main()
{
    const QByteArray xml = PropertyList::write(SyntheticDocument::root(phraseCount));
    std::printf("document: %.1f MB of XML, %d phrases\n", double(xml.size()) / 1e6, phraseCount);

    benchReading(xml);
    const auto [loadOurs, loadPeer] = Bench::millisecondsInTurn(
        rounds, [&xml] { std::ignore = PropertyList::read(xml); }, [&xml] { parsedByPeer(xml); });
    Bench::report("property-list-load", loadOurs, loadPeer, 1.0);

    const double memoryOurs = megabytesOf([&xml] { return PropertyList::read(xml); });
    const double memoryPeer = megabytesOf([&xml] { return parsedByPeer(xml); });
    Bench::report("property-list-memory-mb", memoryOurs, memoryPeer, 1.0);

    const Result<PropertyList::Value> ours = PropertyList::read(xml);
    const Peer peer = parsedByPeer(xml);
    const auto writeByPeer = [&peer] {
        char* bytes = nullptr;
        quint32 length = 0;
        plist_to_xml(peer.get(), &bytes, &length);
        plist_to_xml_free(bytes);
    };
    const auto [writeOurs, writePeer] = Bench::millisecondsInTurn(
        rounds, [&ours] { PropertyList::write(*ours); }, writeByPeer);
    Bench::report("property-list-write", writeOurs, writePeer, 1.0);
    benchOneChange();
    return 0;
}
