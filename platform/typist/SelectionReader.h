// SPDX-License-Identifier: MIT
#pragma once

#include "SelectionContents.h"
#include "SelectionWindow.h"

#include <QByteArray>
#include <QHash>
#include <QObject>
#include <QTimer>

#include <memory>
#include <optional>

struct xcb_selection_notify_event_t;

/// Asks the owner of a selection for all that it offers, or for its text, without waiting for it.
class SelectionReader final : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(SelectionReader)

public:
    /// In bytes, all forms together. More is not read, nor is a form that comes in portions.
    static constexpr qsizetype maximumSize = qsizetype(1024) * 1024;

    /// Null where there is no X server.
    static std::unique_ptr<SelectionReader> ofSession();

    /// Begins to read the selection of this name ("CLIPBOARD"). An earlier reading ends, and is not told.
    void read(const QByteArray& selection);
    /// Begins to read only the text of a selection: a form, or none of one that has no text.
    void readText(const QByteArray& selection);

    /// What readText() has read.
    static QString textOf(const SelectionContents& contents);

Q_SIGNALS:
    /// Nothing when the owner has not answered within 300 ms, or has more than could be read. Never before read()
    /// returns.
    void finished(const std::optional<SelectionContents>& contents);

private:
    explicit SelectionReader(std::unique_ptr<SelectionWindow> window);
    void begin(const QByteArray& selection, quint32 target);
    void readEvents();
    void convert(quint32 target);
    void take(const xcb_selection_notify_event_t& event);
    void takeTargets(const SelectionFormat& targets);
    std::optional<SelectionFormat> takeProperty(quint32 property, quint32 target);
    void finish(bool isWhole);

    std::unique_ptr<SelectionWindow> m_window;
    quint32 m_selection = 0;
    /// What is asked for when the owner has nothing else; 0 for nothing.
    quint32 m_secondChoice = 0;
    /// What has been asked for, by the property that it is to come in.
    QHash<quint32, quint32> m_asked;
    SelectionContents m_contents;
    qsizetype m_size = 0;
    QTimer m_patience;
};
