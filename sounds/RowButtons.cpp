// SPDX-License-Identifier: MIT
#include "RowButtons.h"

#include <platform/controls/TemplateIcon.h>
#include <platform/desktop/Bundle.h>
#include <platform/desktop/Text.h>

using namespace Qt::StringLiterals;

const QString RowButtons::playColumn = u"Play"_s;
const QString RowButtons::revealColumn = u"Reveal"_s;
const QString RowButtons::trashColumn = u"Trash"_s;

RowButtons::Icons RowButtons::loadIcons()
{
    const QString resources = Bundle::resourcePath();
    return {
        .reveal = templateIcon(resources + u"/reveal.tif"_s),
        .play = templateIcon(resources + u"/play.tif"_s),
        .remove = templateIcon(resources + u"/removeCross.tif"_s),
        .add = templateIcon(resources + u"/addCross.tif"_s),
    };
}

QString RowButtons::toolTip(const QString& column, bool hasSound)
{
    if (column == playColumn) {
        return Text::tr("Play the sound");
    }
    if (column == revealColumn) {
        return Text::tr("Show the sound in the file manager");
    }
    if (column == trashColumn) {
        return hasSound ? Text::tr("Take the sound away") : Text::tr("Choose a sound");
    }
    return {};
}

std::vector<TableModel::Column> RowButtons::columns()
{
    using Kind = TableModel::Kind;
    return {
        {.identifier = playColumn, .title = Text::tr("Play"), .kind = Kind::Button},
        {.identifier = revealColumn, .title = Text::tr("Show in the file manager"), .kind = Kind::Button},
        {.identifier = trashColumn,
            .title = Text::tr("Choose or take away the sound"),
            .kind = Kind::Button,
            .keyEquivalent = u"a"_s},
    };
}
