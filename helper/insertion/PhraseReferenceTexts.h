// SPDX-License-Identifier: MIT
#pragma once

#include <core/Phrase.h>
#include <platform/plist/PropertyList.h>

#include <QDateTime>
#include <QString>
#include <QStringView>

#include <vector>

/// The texts of the phrases that a text refers to, resolved for one insertion. Circles, and texts that grow beyond all
/// bounds, end it.
class PhraseReferenceTexts final
{
public:
    /// @p of is the phrase whose text is inserted. @p documents are the lists of phrases in which others are looked up,
    /// one after the other; any of them may be null.
    PhraseReferenceTexts(
        const Phrase& of, const std::vector<PropertyList::ArrayPointer>& documents, const QDateTime& moment);

    /// @p literal with its stamps and calendar conversions filled in. Counts what it gives.
    QString filled(QStringView literal);
    /// What a reference, with its marks, stands for.
    QString textOf(QStringView reference);

    /// Whether more has been given than an insertion may have, or more references were followed: nothing that was given
    /// is of use then.
    bool isExhausted() const { return m_unitsLeft < 0 || m_referencesLeft < 0; }

private:
    Phrase find(QStringView name) const;

    std::vector<PropertyList::ArrayPointer> m_documents;
    QDateTime m_moment;
    /// The phrases whose texts are being resolved, the outermost first.
    std::vector<Phrase> m_open;
    qsizetype m_unitsLeft;
    int m_referencesLeft;
};
