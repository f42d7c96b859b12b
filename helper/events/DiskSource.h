// SPDX-License-Identifier: MIT
#pragma once

#include "EventSource.h"

#include <platform/bus/MessageBus.h>

#include <QHash>

/// Disks: a file system that can be taken out comes, is unmounted, is mounted again, goes. Built-in disks are none.
///
/// Listens to UDisks2 (public source: its D-Bus interface, org.freedesktop.UDisks2.Block and .Filesystem).
class DiskSource final : public EventSource
{
    Q_OBJECT

public:
    using EventSource::EventSource;

    void start() override;

private:
    void findDisks();
    void add(const QString& object, const PropertyList::Value& interfaces, bool isNews);
    void remove(const QString& object, const PropertyList::Value& interfaces);
    void setInserted(const QString& object, bool isInserted, bool isNews);

    /// The block devices that can be taken out by their objects' paths, and whether each counts as inserted.
    QHash<QString, bool> m_disks;
};
