// SPDX-License-Identifier: MIT
#pragma once

#include <QChar>

/// A character to be looked for in many places without regard to letter case. Half of a surrogate pair is only itself.
class FoldedCharacter final
{
public:
    explicit FoldedCharacter(QChar character)
        : m_small(character.toCaseFolded())
        , m_capital(m_small.toUpper())
    {
    }

    /// Folding is a look-up in a table; plain letters, which most are, can do without.
    bool matches(QChar character) const
    {
        return character == m_small || character == m_capital ||
               (character.unicode() >= 0x80 && character.toCaseFolded() == m_small);
    }

private:
    QChar m_small;
    QChar m_capital;
};
