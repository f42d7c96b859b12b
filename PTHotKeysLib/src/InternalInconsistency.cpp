// SPDX-License-Identifier: MIT
#include "InternalInconsistency.h"

using namespace Qt::StringLiterals;

InternalInconsistency::InternalInconsistency(const QString& source, const QString& description)
    : std::logic_error(QString(source + u": "_s + description).toStdString())
    , m_description(description)
{
}
