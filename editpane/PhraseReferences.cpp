// SPDX-License-Identifier: MIT
#include "PhraseReferences.h"

#include "PlainToolTip.h"

#include <core/SharedNames.h>
#include <core/parseNSStringStamp4strftime.h>

PhraseReferences::PhraseReferences(const PropertyList::ArrayPointer& phrases, const QDateTime& moment, QObject* parent)
    : QAbstractListModel(parent)
    , m_moment(moment)
{
    if (!phrases) {
        return;
    }
    for (const PropertyList::Value& value : *phrases) {
        const PropertyList::Dictionary* entry = value.dictionaryInPlace();
        if (const PropertyList::Value* phrase = entry ? entry->find(PhraseKey::phrase) : nullptr) {
            m_references.push_back({phrase->textValue(), entry->value(PhraseKey::plainText).string()});
        }
    }
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
