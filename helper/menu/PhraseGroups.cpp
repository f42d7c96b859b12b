// SPDX-License-Identifier: MIT
#include "PhraseGroups.h"

#include <cmath>

using namespace Qt::StringLiterals;

std::vector<PhraseGroups::Range> PhraseGroups::evenly(Range range)
{
    int levels = 1;
    for (qsizetype room = mostItems; room < range.count; room *= mostItems) {
        ++levels;
    }
    const auto parts = qsizetype(std::ceil(std::pow(double(range.count), 1.0 / levels)));
    std::vector<Range> ranges;
    for (qsizetype part = 0; part < parts; ++part) {
        const qsizetype from = range.count * part / parts;
        const qsizetype to = range.count * (part + 1) / parts;
        ranges.push_back({range.first + from, to - from});
    }
    return ranges;
}

std::vector<PhraseGroups::Range> PhraseGroups::byInitial(Range range, const std::function<QString(qsizetype)>& textAt)
{
    std::vector<Range> ranges;
    QString initial;
    for (qsizetype place = range.first; place < range.first + range.count; ++place) {
        const QString next = initialOf(textAt(place));
        if (ranges.empty() || next != initial) {
            if (ranges.size() == size_t(mostItems)) {
                return {};
            }
            ranges.push_back({place, 0});
            initial = next;
        }
        ++ranges.back().count;
    }
    return ranges.size() > 1 ? ranges : std::vector<Range>();
}

QString PhraseGroups::initialOf(QStringView text)
{
    if (text.isEmpty()) {
        return u"#"_s;
    }
    const QChar first = text.front();
    if (first.isHighSurrogate() && text.size() > 1) {
        return text.first(2).toString();
    }
    if (first.isDigit()) {
        return u"0–9"_s;
    }
    return first.isLetter() ? QString(first.toUpper()) : u"#"_s;
}
