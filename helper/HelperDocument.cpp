// SPDX-License-Identifier: MIT
#include "HelperDocument.h"

#include "HelperSounds.h"

#include <core/BYGlobals.h>
#include <platform/desktop/Bundle.h>

#include <utility>

using namespace Qt::StringLiterals;

HelperDocument::HelperDocument() = default;
HelperDocument::~HelperDocument() = default;

void HelperDocument::reload()
{
    if (m_reading.valid()) {
        m_isAskedAgain = true;
        return;
    }
    const Request request = requestOfSettings();
    if (m_contents.index && request == m_contents.request) {
        Q_EMIT settled();
        return;
    }
    m_reading = std::async(std::launch::async, [this, request] {
        Contents contents = read(request);
        QMetaObject::invokeMethod(this, &HelperDocument::take, Qt::QueuedConnection);
        return contents;
    });
}

HelperDocument::Request HelperDocument::requestOfSettings()
{
    BYGlobals::init();
    if (BYGlobals::defaultFilePath().isEmpty()) {
        // The pane names it when it is opened for the first time.
        BYGlobals::setDefaultFilePath(Bundle::resourcePath() + u"/default.blipsy"_s);
    }
    const QString path = BYGlobals::defaultFilePath();
    return {path, FileStamp::of(path), Settings::sortPref.value(), Settings::menuPref.value()};
}

/// On another thread.
HelperDocument::Contents HelperDocument::read(const Request& request)
{
    Contents contents{request, SoundsDocument::read(request.path, request.order), nullptr, nullptr};
    if (contents.document.root) {
        const PropertyList::ArrayPointer phrases = SoundsDocument::phrasesOf(*contents.document.root);
        contents.index = std::make_shared<const PhraseIndex>(phrases);
        contents.listing = std::make_shared<const PhraseListing>(phrases, request.show, request.order);
    }
    return contents;
}

void HelperDocument::take()
{
    Contents contents = m_reading.get();
    SoundsDocument& document = SoundsDocument::shared();
    PropertyList::DictionaryPointer rootBefore = document.root();
    // Another path may have been asked for meanwhile.
    const bool isWanted = contents.request.path == document.path();
    if (isWanted) {
        document.take(contents.document);
    }
    if (isWanted && contents.index) {
        std::swap(m_contents, contents);
        m_phrases = document.phrases();
        m_events = document.events();
        m_volume = HelperSounds::volumeFrom(document.root()->value(DocumentKey::setVolume));
        Q_EMIT reloaded();
    }
    // To free 100,000 phrases takes longer than a key may wait.
    m_freeing = std::async(std::launch::async, [root = std::move(rootBefore), old = std::move(contents)]() mutable {
        root = {};
        old = {};
    });
    if (std::exchange(m_isAskedAgain, false)) {
        reload();
    } else {
        Q_EMIT settled();
    }
}
