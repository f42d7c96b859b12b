// SPDX-License-Identifier: MIT
#include "ControlTitle.h"

using namespace Qt::StringLiterals;

QString titleWithoutMnemonic(const QString& text)
{
    QString title;
    title.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] == u'&' && ++i == text.size()) {
            break;
        }
        title += text[i];
    }
    return title;
}

QString textForTitle(QString title)
{
    return title.replace(u'&', u"&&"_s);
}
