// SPDX-License-Identifier: MIT
#include "ArchivedText.h"

#include "TypedStreamObjects.h"

#include <platform/richtext/RtfTables.h>
#include <platform/richtext/Rtfd.h>

#include <QHash>
#include <QUrl>

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

using TypedStream::Archive;
using TypedStream::Entry;
using TypedStream::Item;
using TypedStream::Items;

using Attributes = AttributedText::Attributes;

// Objects may be shared, so that a small archive can refer to a large part of itself very often.
constexpr qsizetype maximumVisits = 1'000'000;

/// The indices of the styles that one dictionary of attributes gives.
struct Styles
{
    qsizetype text = 0;
    /// For the characters that stand for an attached file.
    qsizetype attachment = 0;
};

/// Reads the objects of one archive as text attributes. What is shared in the archive is read once and stays shared.
class Interpreter final
{
public:
    explicit Interpreter(const Archive& archive)
        : m_archive(archive)
    {
    }

    Result<ArchivedText> read(const Entry& root);

private:
    bool readRuns(Items& items);
    void appendRun(qsizetype end, Styles styles);
    Styles stylesOf(const Entry& dictionary);
    void apply(QByteArrayView name, const Entry* value, Attributes& attributes);
    void applyFont(const Entry& font, Attributes& attributes);
    QString textOf(const Entry& entry);
    QString linkOf(const Entry& entry, int depth);
    std::optional<TextAttachment> attachmentOf(const Entry& entry);
    const Entry* fileDataBelow(const Entry& entry);

    void warn(const QString& what)
    {
        if (!m_warnings.contains(what)) {
            m_warnings.append(what);
        }
    }

    const Archive& m_archive;
    AttributedText m_text;
    /// Up to where the runs reach.
    qsizetype m_position = 0;
    QStringList m_warnings;
    QHash<const Entry*, Styles> m_styles;
    QHash<const Entry*, QString> m_texts;
    QHash<const Entry*, TextAttachment> m_files;
    qsizetype m_visits = 0;
};

Result<ArchivedText> Interpreter::read(const Entry& root)
{
    Items items(m_archive, root);
    const Entry* string = items.nextObject();
    if (string == nullptr || !m_archive.isKindOf(*string, "NSString")) {
        return Failure{u"the attributed string has no text"_s};
    }
    m_text.text = textOf(*string);
    if (!readRuns(items)) {
        return Failure{u"the runs do not match the text"_s};
    }
    if (m_archive.endsEarly) {
        warn(u"something unreadable follows the text"_s);
    }
    return ArchivedText{std::move(m_text), std::move(m_warnings)};
}

/// Pairs of a run's number (from 1) and length; where a number comes first, its dictionary follows.
bool Interpreter::readRuns(Items& items)
{
    std::vector<const Entry*> dictionaries;
    while (m_position < m_text.text.size()) {
        const std::optional<qint64> number = items.nextInteger();
        const std::optional<qint64> length = number ? items.nextInteger() : std::nullopt;
        const qsizetype rest = m_text.text.size() - m_position;
        if (!length || *number < 1 || *length < 0 || *length > rest || quint64(*number) > dictionaries.size() + 1) {
            return false;
        }
        if (quint64(*number) > dictionaries.size()) {
            dictionaries.push_back(items.nextObject());
        }
        const Entry* dictionary = dictionaries[size_t(*number - 1)];
        if (dictionary == nullptr || !m_archive.isKindOf(*dictionary, "NSDictionary")) {
            return false;
        }
        appendRun(m_position + *length, stylesOf(*dictionary));
    }
    return true;
}

/// The characters that stand for an attached file show it; whatever else has the file as its attribute stays text.
void Interpreter::appendRun(qsizetype end, Styles styles)
{
    for (; m_position < end; ++m_position) {
        const bool isAttachment = m_text.text[m_position] == QChar::ObjectReplacementCharacter;
        const qsizetype style = isAttachment ? styles.attachment : styles.text;
        if (m_text.runs.isEmpty() || m_text.runs.constLast().style != style) {
            m_text.runs.append({0, style});
        }
        ++m_text.runs.last().length;
    }
}

Styles Interpreter::stylesOf(const Entry& dictionary)
{
    const auto known = m_styles.constFind(&dictionary);
    if (known != m_styles.cend()) {
        return *known;
    }
    Attributes attributes;
    Items items(m_archive, dictionary);
    const qint64 count = items.nextInteger().value_or(0);
    for (qint64 i = 0; i < count && !items.atEnd(); ++i) {
        const Entry* key = items.nextObject();
        apply(key != nullptr ? TypedStream::stringBytes(m_archive, *key) : QByteArrayView(), items.nextObject(),
            attributes);
    }
    // The attributes of characters are not for what is no character.
    Attributes attached;
    attached.paragraph = attributes.paragraph;
    attached.attachment = std::exchange(attributes.attachment, std::nullopt);
    Styles styles{m_text.styles.size(), m_text.styles.size()};
    m_text.styles.append(attributes);
    if (attached.attachment) {
        styles.attachment = m_text.styles.size();
        m_text.styles.append(attached);
    }
    return *m_styles.insert(&dictionary, styles);
}

void Interpreter::apply(QByteArrayView name, const Entry* value, Attributes& attributes)
{
    if (value == nullptr) {
        return;
    }
    if (name == "NSFont") {
        applyFont(*value, attributes);
    } else if (name == "NSColor") {
        attributes.color = TypedStream::color(m_archive, *value);
    } else if (name == "NSBackgroundColor") {
        attributes.backgroundColor = TypedStream::color(m_archive, *value);
    } else if (name == "NSUnderline") {
        attributes.isUnderlined = TypedStream::number(m_archive, *value) != 0;
    } else if (name == "NSStrikethrough") {
        attributes.isStruckOut = TypedStream::number(m_archive, *value) != 0;
    } else if (name == "NSSuperScript") {
        attributes.superscript = int(std::clamp(TypedStream::number(m_archive, *value), -100.0, 100.0));
    } else if (name == "NSParagraphStyle") {
        // The layout of the rest is not known for sure; the first byte is common to all versions.
        constexpr std::array sides{Qt::AlignLeft, Qt::AlignRight, Qt::AlignHCenter, Qt::AlignJustify};
        const auto index = size_t(Items(m_archive, *value).nextInteger().value_or(4) & 0x0F);
        attributes.paragraph.side = index < sides.size() ? sides[index] : Qt::Alignment();
    } else if (name == "NSLink") {
        attributes.link = linkOf(*value, 0);
    } else if (name == "NSAttachment") {
        attributes.attachment = attachmentOf(*value);
    }
}

void Interpreter::applyFont(const Entry& font, Attributes& attributes)
{
    const std::optional<TypedStream::Font> read = TypedStream::font(m_archive, font);
    if (!read) {
        warn(u"a font could not be read"_s);
        return;
    }
    const Rtf::Font parts = Rtf::Font::fromName(read->name);
    attributes.fontFamily = parts.family;
    attributes.isBold = parts.bold;
    attributes.isItalic = parts.italic;
    attributes.fontSize = read->size;
}

QString Interpreter::textOf(const Entry& entry)
{
    const auto known = m_texts.constFind(&entry);
    if (known != m_texts.cend()) {
        return *known;
    }
    return *m_texts.insert(&entry, QString::fromUtf8(TypedStream::stringBytes(m_archive, entry)));
}

QString Interpreter::linkOf(const Entry& entry, int depth)
{
    constexpr int deepestBase = 8;
    if (!m_archive.isKindOf(entry, "NSURL") || depth > deepestBase) {
        return textOf(entry);
    }
    Items items(m_archive, entry);
    const bool isRelative = items.nextInteger().value_or(0) != 0;
    const Entry* base = isRelative ? items.nextObject() : nullptr;
    const Entry* string = items.nextObject();
    const QString text = string != nullptr ? textOf(*string) : QString();
    return base == nullptr ? text : QUrl(linkOf(*base, depth + 1)).resolved(QUrl(text)).toString();
}

std::optional<TextAttachment> Interpreter::attachmentOf(const Entry& entry)
{
    const Entry* data = fileDataBelow(entry);
    if (data == nullptr) {
        warn(u"an attached file could not be read"_s);
        return std::nullopt;
    }
    const auto known = m_files.constFind(data);
    if (known != m_files.cend()) {
        return *known;
    }
    const QByteArray bytes = TypedStream::dataBytes(m_archive, *data);
    TextAttachment file{QString(), bytes, false};
    if (Rtfd::isWrapper(bytes)) {
        Rtfd::Contents contents = Rtfd::readWrapper(bytes);
        if (contents.files.isEmpty()) {
            warn(u"an attached file could not be read"_s);
            return std::nullopt;
        }
        file = std::move(contents.files.first());
        file.name = contents.preferredName;
    }
    return *m_files.insert(data, file);
}

/// The first data object that the attachment leads to and that is a file wrapper or a picture; null where there is
/// none.
const Entry* Interpreter::fileDataBelow(const Entry& entry)
{
    std::vector<const Entry*> waiting{&entry};
    QHash<const Entry*, bool> seen;
    while (!waiting.empty()) {
        const Entry* next = waiting.back();
        waiting.pop_back();
        if (std::exchange(seen[next], true)) {
            continue;
        }
        if (m_archive.isKindOf(*next, "NSData")) {
            const QByteArray bytes = TypedStream::dataBytes(m_archive, *next);
            if (Rtfd::isWrapper(bytes) || TypedStream::isPictureFile(bytes)) {
                return next;
            }
        }
        std::vector<const Entry*> below;
        for (Items items(m_archive, *next); !items.atEnd();) {
            if (++m_visits > maximumVisits) {
                return nullptr;
            }
            if (const Entry* object = items.nextObject()) {
                below.push_back(object);
            }
        }
        waiting.insert(waiting.end(), below.rbegin(), below.rend());
    }
    return nullptr;
}

} // namespace

Result<ArchivedText> unarchivedText(QByteArrayView bytes)
{
    const Result<Archive> archive = TypedStream::read(bytes);
    if (!archive) {
        return Failure{archive.error()};
    }
    const Entry* root = archive->rootObject();
    if (root == nullptr || !archive->isKindOf(*root, "NSAttributedString")) {
        return Failure{u"the archive holds no attributed string"_s};
    }
    return Interpreter(*archive).read(*root);
}

std::optional<QByteArray> unarchivedImageFile(QByteArrayView bytes)
{
    const Result<Archive> archived = TypedStream::read(bytes);
    if (!archived) {
        return std::nullopt;
    }
    const Archive& archive = *archived;
    const auto isBitmap = [&archive](const Entry& entry) {
        return entry.kind == Entry::Kind::Object && archive.isKindOf(entry, "NSBitmapImageRep");
    };
    const auto found = std::ranges::find_if(archive.entries, isBitmap);
    if (found == archive.entries.end()) {
        return std::nullopt;
    }
    QByteArray file = TypedStream::dataBytes(archive, *found);
    return TypedStream::isTiffFile(file) ? std::optional(std::move(file)) : std::nullopt;
}
