// SPDX-License-Identifier: MIT
#pragma once

#include <platform/plist/PropertyList.h>

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

/// Turns the phrase files of other text-expansion tools into sounds documents. Values in, values out: nothing here
/// touches a file or a window.
namespace Importers {

/// The tools whose files are read.
enum class Source { Typinator, TextExpander, SpellCatcher };

/// In bytes; a file of a tool that is larger is refused.
inline constexpr qint64 maximumSourceSize = 1 << 30;

/// Which tool wrote the file at @p path, told by its name; nothing for a file that is no import.
std::optional<Source> sourceOf(const QString& path);

/// What is logged when the user does not say where the imported document is to go.
QString cancelledText(Source source);

/// What the formatting of one item comes to.
struct Formatting
{
    /// Flattened RTFD; nothing when the formatting cannot be read.
    std::optional<QByteArray> rtfd;
    /// What of it was left out or looks damaged, in words that are the same for every item.
    QStringList troubles;
};

using FormattingReader = std::function<Formatting(const QByteArray& stored)>;

/// How formatting comes over: RTFD itself, archived attributed strings, and archived images as the one attachment of a
/// text.
struct Converters
{
    FormattingReader rtfd;
    FormattingReader attributedString;
    FormattingReader image;
};

/// Hears how many of all items are done; false ends the conversion.
using Progress = std::function<bool(qsizetype done, qsizetype total)>;

struct Conversion
{
    enum class Outcome { Converted, NoList, Cancelled };

    Outcome outcome = Outcome::Converted;
    /// The new document, with the single key "Clippings"; null unless converted.
    PropertyList::DictionaryPointer document = {};
    /// What was odd, in words, with the number of items that it was odd about.
    QMap<QString, int> troubles = {};
};

/// Converts the root of a tool's file. Items that are no dictionaries are left out; an item whose formatting cannot be
/// converted comes over as plain text.
Conversion convert(
    const PropertyList::Value& root, Source source, const Converters& converters, const Progress& progress);

/// A new document with one phrase, whose sound is a folder of funny noises.
PropertyList::DictionaryPointer newSoundsDocument();

} // namespace Importers
