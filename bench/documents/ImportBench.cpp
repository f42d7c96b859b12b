// SPDX-License-Identifier: MIT
#include <documents/FormattedText.h>
#include <documents/Importers.h>
#include <platform/archive/ArchivedText.h>
#include <platform/richtext/Rtfd.h>
#include <platform/storage/AtomicFile.h>

#include <QApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QTextDocument>

#include <Bench.h>
#include <TypedStreamArchiver.h>

#include <vector>

using namespace Qt::StringLiterals;

using Importers::Source;
using PropertyList::Array;
using PropertyList::ArrayPointer;
using PropertyList::Dictionary;
using PropertyList::DictionaryPointer;

namespace {

constexpr int plainItems = 100'000;
constexpr int formattedItems = 10'000;
constexpr int rounds = 5;

void save(const DictionaryPointer& root, const QString& path)
{
    if (!AtomicFile::write(path, PropertyList::write(root))) {
        qFatal("cannot write the document");
    }
}

DictionaryPointer load(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? PropertyList::read(file.readAll())->dictionary() : DictionaryPointer();
}

void import(const QString& source, Source kind, const QString& document)
{
    const auto conversion =
        Importers::convert(load(source), kind, FormattedText::converters(), [](qsizetype, qsizetype) { return true; });
    save(conversion.document, document);
}

void benchPlainItems(const QTemporaryDir& folder)
{
    const ArrayPointer items = Array::create();
    for (int number = 0; number < plainItems; ++number) {
        items->append(Dictionary::create({{u"abbr"_s, QString(u"phrase %1"_s.arg(number))},
            {u"exp"_s, QString(u"The text that stands for phrase number %1."_s.arg(number))}}));
    }
    const QString source = folder.filePath(u"words.xml"_s);
    const QString document = folder.filePath(u"words.blipsy"_s);
    save(Dictionary::create({{u"entries"_s, items}}), source);
    import(source, Source::SpellCatcher, document);
    const auto [ours, peer] = Bench::millisecondsInTurn(
        rounds, [&] { import(source, Source::SpellCatcher, document); }, [&] { save(load(document), document); });
    Bench::report("phrases/import-100000-plain", ours, peer, 1.5);
}

/// Three sentences in two fonts, one of them colored and underlined, as people format what they send.
QByteArray formattedText(int number)
{
    const Archiver archiver;
    const QByteArray red = archiver.object({"NSColor", "NSObject"},
        archiver.group("c", "\x01") + archiver.group("ffff", archiver.real(1) + QByteArray("\0\0\1", 3)));
    const auto dictionary = [&archiver](const QString& font, const QList<QPair<QByteArray, QByteArray>>& more) {
        return archiver.group(
            "@", archiver.dictionary(QList<QPair<QByteArray, QByteArray>>{{"NSFont", archiver.font(font, 12)}} + more));
    };
    const QByteArray first = "Dear customer number " + QByteArray::number(100'000 + number) + ",\n\n";
    const QByteArray second = "thank you very much for your letter. ";
    const QByteArray third = "It will be answered soon.\n";
    return archiver.attributedString(first + second + third,
        archiver.run(1, first.size()) + dictionary(u"Helvetica"_s, {}) + archiver.run(2, second.size()) +
            dictionary(u"Times-Bold"_s, {{"NSColor", red}, {"NSUnderline", archiver.number(1)}}) +
            archiver.run(1, third.size()));
}

/// The peer decodes each archive and writes each text once, and reads and writes the two files, but has the texts laid
/// out in documents already.
void benchFormattedItems(const QTemporaryDir& folder)
{
    const ArrayPointer items = Array::create();
    std::vector<std::unique_ptr<QTextDocument>> texts;
    for (int number = 0; number < formattedItems; ++number) {
        const QByteArray archive = formattedText(number);
        items->append(Dictionary::create({{u"Plain Text"_s, u"plain"_s}, {u"Formatted Text"_s, archive}}));
        texts.push_back(std::make_unique<QTextDocument>());
        unarchivedText(archive)->text.fill(*texts.back());
    }
    const QString source = folder.filePath(u"words.textexpander"_s);
    const QString document = folder.filePath(u"words.blipsy"_s);
    save(Dictionary::create({{u"Snippets"_s, items}}), source);
    import(source, Source::TextExpander, document);
    const DictionaryPointer converted = load(document);
    const auto decodeAndWrite = [&] {
        const ArrayPointer archives = load(source)->value(u"Snippets").array();
        qsizetype size = 0;
        for (int number = 0; number < formattedItems; ++number) {
            const QByteArray archive = archives->at(number).dictionary()->value(u"Formatted Text").data();
            size += unarchivedText(archive)->text.text.size();
            size += Rtfd::write(*texts[size_t(number)]).size();
        }
        if (size == 0) {
            qFatal("nothing was written");
        }
        save(converted, document);
    };
    const auto [ours, peer] = Bench::millisecondsInTurn(
        rounds, [&] { import(source, Source::TextExpander, document); }, decodeAndWrite);
    Bench::report("phrases/import-10000-formatted", ours, peer, 2);
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QTemporaryDir folder;
    const QApplication application(argc, argv);
    benchPlainItems(folder);
    benchFormattedItems(folder);
    return 0;
}
