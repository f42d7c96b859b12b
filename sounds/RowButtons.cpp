// SPDX-License-Identifier: MIT
#include "RowButtons.h"

#include <core/SharedNames.h>
#include <platform/controls/TemplateIcon.h>
#include <platform/desktop/Bundle.h>
#include <platform/panels/InterfaceText.h>

using namespace Qt::StringLiterals;

const QString RowButtons::playColumn = u"Play"_s;
const QString RowButtons::revealColumn = u"Reveal"_s;
const QString RowButtons::trashColumn = u"Trash"_s;

RowButtons::Icons RowButtons::loadIcons()
{
    const QString resources = Bundle::bundleWithIdentifier(paneBundleIdentifier).resourcePath();
    return {
        .reveal = templateIcon(resources + u"/reveal.tif"_s),
        .play = templateIcon(resources + u"/play.tif"_s),
        .remove = templateIcon(resources + u"/removeCross.tif"_s),
        .add = templateIcon(resources + u"/addCross.tif"_s),
    };
}

QString RowButtons::toolTip(const QString& column, bool hasSound)
{
    const Bundle bundle = Bundle::bundleWithIdentifier(paneBundleIdentifier);
    if (column == playColumn) {
        return bundle.localizedString(u"Play the sound"_s);
    }
    if (column == revealColumn) {
        return bundle.localizedString(u"Show the sound in the file manager"_s);
    }
    if (column == trashColumn) {
        return hasSound ? bundle.localizedString(u"Take the sound away"_s)
                        : bundle.localizedString(u"Choose a sound"_s);
    }
    return {};
}

std::vector<TableModel::Column> RowButtons::columns()
{
    using Kind = TableModel::Kind;
    return {
        {.identifier = playColumn, .title = localizedText("Play"), .kind = Kind::Button},
        {.identifier = revealColumn, .title = localizedText("Show in the file manager"), .kind = Kind::Button},
        {.identifier = trashColumn,
            .title = localizedText("Choose or take away the sound"),
            .kind = Kind::Button,
            .keyEquivalent = u"a"_s},
    };
}
