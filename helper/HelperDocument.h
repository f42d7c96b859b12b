// SPDX-License-Identifier: MIT
#pragma once

#include <platform/plist/PropertyList.h>

#include <QObject>

/// The sounds document that the helper works with: the last one that could be read of the path in the settings. It is
/// the SoundsDocument of the process, too; but while that has nothing, since the file is broken or gone, what was read
/// before stays in use here. Never written.
class HelperDocument final : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HelperDocument)

public:
    using QObject::QObject;

    /// Reads the document that the settings name, the bundle's own where they name none. One that cannot be read is
    /// told in the log and changes nothing.
    void reload();

    /// Null before the first document, and where it has no such list.
    const PropertyList::ArrayPointer& phrases() const { return m_phrases; }

    const PropertyList::ArrayPointer& events() const { return m_events; }

    /// The general volume, 0 to 1; 1 in a document that has none.
    float volume() const { return m_volume; }

Q_SIGNALS:
    /// The lists are others now, or their entries have changed.
    void reloaded();

private:
    PropertyList::ArrayPointer m_phrases;
    PropertyList::ArrayPointer m_events;
    float m_volume = 1;
};
