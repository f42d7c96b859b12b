// SPDX-License-Identifier: MIT
#pragma once

#include <core/SoundsDocument.h>
#include <helper/menu/PhraseListing.h>
#include <helper/typing/PhraseIndex.h>
#include <platform/plist/PropertyList.h>

#include <QObject>

#include <future>
#include <memory>
#include <optional>

/// The sounds document that the helper works with: the last one that could be read of the path in the settings, with
/// what is made of it to find phrases and to show them. It is the SoundsDocument of the process, too; but while that
/// has nothing, since the file is broken or gone, what was read before stays in use here. Never written.
///
/// A large one takes a moment to be read. That happens on another thread, which sees nothing of the document in use;
/// nor does anybody see the new one before it is taken, all at once. Why so: docs/decisions/helper-reload.md.
class HelperDocument final : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HelperDocument)

public:
    HelperDocument();
    /// Waits for what is being read.
    ~HelperDocument() override;

    /// Reads the document that the settings name, the bundle's own where they name none, unless it is the one in use.
    /// One that cannot be read is told in the log and changes nothing. What is asked for meanwhile is done together
    /// afterwards.
    void reload();

    /// Null before the first document, and where it has no such list.
    const PropertyList::ArrayPointer& phrases() const { return m_phrases; }

    const PropertyList::ArrayPointer& events() const { return m_events; }

    /// The general volume, 0 to 1; 1 in a document that has none.
    float volume() const { return m_volume; }

    /// Of phrases(); null before the first document.
    const std::shared_ptr<const PhraseIndex>& index() const { return m_contents.index; }

    /// Of phrases(), as the settings say; null before the first document.
    const std::shared_ptr<const PhraseListing>& listing() const { return m_contents.listing; }

Q_SIGNALS:
    /// Another document is in use now, or another version, order or listing of it.
    void reloaded();
    /// Everything that was asked for has been read, or could not be.
    void settled();

private:
    /// What is to be read: equal ones give the same, unless the document in use has been changed.
    struct Request
    {
        QString path;
        std::optional<FileStamp> stamp;
        int order = 0;
        int show = 0;

        bool operator==(const Request&) const = default;
    };

    struct Contents
    {
        Request request;
        SoundsDocument::Contents document;
        std::shared_ptr<const PhraseIndex> index;
        std::shared_ptr<const PhraseListing> listing;
    };

    static Request requestOfSettings();
    static Contents read(const Request& request);
    void take();

    PropertyList::ArrayPointer m_phrases;
    PropertyList::ArrayPointer m_events;
    float m_volume = 1;
    Contents m_contents;
    bool m_isAskedAgain = false;
    std::future<Contents> m_reading;
    /// What was in use before, being freed.
    std::future<void> m_freeing;
};
