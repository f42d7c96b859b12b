// SPDX-License-Identifier: MIT
#include "PhraseReferences.h"

#include "PlainToolTip.h"

#include <core/EntryScan.h>
#include <core/SharedNames.h>
#include <core/parseNSStringStamp4strftime.h>

using namespace Qt::StringLiterals;

PhraseReferences::PhraseReferences(const PropertyList::ArrayPointer& phrases, const QDateTime& moment, QObject* parent)
    : QAbstractListModel(parent)
    , m_moment(moment)
{
    if (!phrases) {
        return;
    }
    m_references.resize(size_t(phrases->size()));
    EntryScan::forEachRow(*phrases, PhraseKey::phrase, [this](qsizetype index, const EntryScan::Row& row) {
        if (row.value != nullptr) {
            const QString phrase = row.value->textValue();
            const PropertyList::Value* text = row.entry->dictionaryInPlace()->find(PhraseKey::plainText);
            m_references[size_t(index)] = {
                phrase.isNull() ? u""_s : phrase, text != nullptr ? text->string() : QString()};
        }
    });
    std::erase_if(m_references, [](const Reference& reference) { return reference.phrase.isNull(); });
}

int PhraseReferences::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_references.size());
}

QVariant PhraseReferences::data(const QModelIndex& index, int role) const
{
    switch (role) {
    case Qt::DisplayRole:
        return phrase(index.row());
    case Qt::ToolTipRole:
        return PlainToolTip::shown(filledText(index.row()));
    default:
        return {};
    }
}

QString PhraseReferences::filledText(int row) const
{
    QString text = m_references[size_t(row)].text;
    parseNSStringStamp4strftime(text, m_moment);
    return text;
}
