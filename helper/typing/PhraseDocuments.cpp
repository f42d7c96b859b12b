// SPDX-License-Identifier: MIT
#include "PhraseDocuments.h"

#include <core/SoundsDocument.h>

#include <QFutureWatcher>
#include <QLoggingCategory>
#include <QPromise>
#include <QThreadPool>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

Q_LOGGING_CATEGORY(log, "blipsy.typing")

/// On another thread: nothing else sees what it makes before it is done.
PhraseDocuments::Index read(const QString& path)
{
    const Result<PropertyList::DictionaryPointer> root = SoundsDocument::readRoot(path);
    if (!root) {
        qCWarning(log).noquote() << u"cannot read document %1: %2"_s.arg(path, root.error());
        return {};
    }
    return std::make_shared<const PhraseIndex>(SoundsDocument::phrasesOf(*root));
}

} // namespace

PhraseDocuments::Index PhraseDocuments::phrasesOf(const QString& path)
{
    Document& document = m_documents[path];
    if (!document.isLoading) {
        const std::optional<FileStamp> stamp = FileStamp::of(path);
        if (stamp && stamp != document.stamp) {
            document.isLoading = true;
            document.stamp = stamp;
            load(path);
        }
    }
    return document.phrases;
}

void PhraseDocuments::keepOnly(const QStringList& paths)
{
    m_documents.removeIf([&paths](const auto& document) { return !paths.contains(document.key()); });
}

void PhraseDocuments::load(const QString& path)
{
    const auto promise = std::make_shared<QPromise<Index>>();
    promise->start();
    auto* const watcher = new QFutureWatcher<Index>(this);
    connect(watcher, &QFutureWatcher<Index>::finished, this, [this, watcher, path] {
        watcher->deleteLater();
        take(path, watcher->result());
    });
    watcher->setFuture(promise->future());
    QThreadPool::globalInstance()->start([promise, path] {
        promise->addResult(read(path));
        promise->finish();
    });
}

void PhraseDocuments::take(const QString& path, const Index& phrases)
{
    const auto document = m_documents.find(path);
    // It may have been dropped while it was read.
    if (document == m_documents.end()) {
        return;
    }
    document->isLoading = false;
    if (phrases) {
        document->phrases = phrases;
        Q_EMIT loaded(path);
    }
}
