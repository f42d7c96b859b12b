// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>
#include <QStringView>

/// What an alias says about the place of its target, in the words of the machine on which it was made.
struct AliasTarget
{
    /// Absolute path with "/" between the folders; empty when the alias does not tell.
    QString path;
    /// Path from the root of the target's volume, without a leading "/"; empty when the alias does not tell.
    QString pathOnVolume;
    /// The target's own name; may be a shortened one where nothing better is known.
    QString name;

    bool operator==(const AliasTarget&) const = default;
};

namespace AliasPath {

/// True for a name that can stand between two "/": not empty, not "." or "..", without "/" and NUL.
inline bool isSafeComponent(QStringView component)
{
    return !component.isEmpty() && component != u"." && component != u".." && !component.contains(u'/') &&
           !component.contains(QChar(u'\0'));
}

} // namespace AliasPath
