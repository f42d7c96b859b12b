// SPDX-License-Identifier: MIT
#include "NewDocument.h"

#include <core/DocumentBackups.h>
#include <core/SoundsDocument.h>
#include <platform/storage/AtomicFile.h>

#include <QFileInfo>
#include <QLoggingCategory>

using namespace Qt::StringLiterals;

namespace {

Q_LOGGING_CATEGORY(log, "blipsy.documents")

} // namespace

Result<void> NewDocument::write(const PropertyList::DictionaryPointer& document, const QString& path)
{
    keepReplaced(path);
    return AtomicFile::write(path, PropertyList::write(document));
}

bool NewDocument::keepReplaced(const QString& path)
{
    const Result<QString> kept =
        QFileInfo::exists(path) ? DocumentBackups::keep(path, SoundsDocument::maximumSize) : QString();
    if (!kept) {
        qCWarning(log).noquote() << u"no backup of %1: %2"_s.arg(path, kept.error());
    }
    return bool(kept);
}
