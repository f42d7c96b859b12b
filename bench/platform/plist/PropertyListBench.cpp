// SPDX-License-Identifier: MIT
#include <Bench.h>
#include <SyntheticDocument.h>
#include <malloc.h>
#include <plist/plist.h>

#include <memory>
#include <tuple>

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

} // namespace

int main()
{
    const QByteArray xml = PropertyList::write(SyntheticDocument::root(phraseCount));
    std::printf("document: %.1f MB of XML, %d phrases\n", double(xml.size()) / 1e6, phraseCount);

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
    return 0;
}
