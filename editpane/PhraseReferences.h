// SPDX-License-Identifier: MIT
#pragma once

#include <platform/plist/PropertyList.h>

#include <QAbstractListModel>
#include <QDateTime>

#include <vector>

/// The phrases that a text can refer to: those of a document at one moment, in its order, entries without a phrase left
/// out. Row k is the k-th phrase.
///
/// Display role: the phrase. Tool tip role: its text as it read at that moment, stamps filled in; worked out when it is
/// asked for.
class PhraseReferences final : public QAbstractListModel
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(PhraseReferences)

public:
    PhraseReferences(const PropertyList::ArrayPointer& phrases, const QDateTime& moment, QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

    QString phrase(int row) const { return m_references[size_t(row)].phrase; }

    QString filledText(int row) const;

private:
    struct Reference
    {
        QString phrase;
        QString text;
    };

    std::vector<Reference> m_references;
    QDateTime m_moment;
};
