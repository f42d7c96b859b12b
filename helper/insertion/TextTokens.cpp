// SPDX-License-Identifier: MIT
#include "TextTokens.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace {

using Kind = TextToken::Kind;

constexpr qsizetype markerLength = 2;

std::optional<Kind> markerAt(QStringView text, qsizetype at)
{
    static constexpr std::array<std::pair<char16_t, Kind>, 7> markers{
        {{u'|', Kind::Caret}, {u'<', Kind::Left}, {u'^', Kind::Up}, {u'>', Kind::Right}, {u'v', Kind::Down},
            {u'+', Kind::KeepTrigger}, {u'-', Kind::DropTrigger}}};
    if (at + 1 >= text.size()) {
        return {};
    }
    const auto* const found = std::ranges::find(markers, text[at + 1].unicode(), &std::pair<char16_t, Kind>::first);
    return found == markers.end() ? std::nullopt : std::optional(found->second);
}

/// A part that is no plain text and begins at @p at.
std::optional<TextToken> specialAt(QStringView text, qsizetype at)
{
    if (text[at] == u'%') {
        const auto marker = markerAt(text, at);
        return marker ? std::optional(TextToken{*marker, at, markerLength}) : std::nullopt;
    }
    if (text[at] == TextTokens::referenceMark) {
        const qsizetype end = text.indexOf(TextTokens::referenceMark, at + 1);
        return end > at + 1 ? std::optional(TextToken{Kind::Reference, at, end + 1 - at}) : std::nullopt;
    }
    return {};
}

} // namespace

std::vector<TextToken> TextTokens::of(QStringView text)
{
    std::vector<TextToken> tokens;
    qsizetype begin = 0;
    const auto endLiteral = [&](qsizetype end) {
        if (end > begin) {
            tokens.push_back({Kind::Literal, begin, end - begin});
        }
    };
    for (qsizetype at = 0; at < text.size();) {
        if (const auto special = specialAt(text, at)) {
            endLiteral(at);
            tokens.push_back(*special);
            at += special->length;
            begin = at;
        } else {
            at += text.sliced(at).startsWith(u"%%") ? markerLength : 1;
        }
    }
    endLiteral(text.size());
    return tokens;
}

QStringView TextTokens::nameIn(QStringView reference)
{
    return reference.sliced(1, reference.size() - 2);
}
