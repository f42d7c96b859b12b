// SPDX-License-Identifier: MIT
#pragma once

#include "SelectionContents.h"
#include "SelectionWindow.h"

#include <QByteArray>
#include <QHash>
#include <QObject>
#include <QString>

#include <memory>

struct xcb_selection_request_event_t;

/// Offers contents as the owner of selections, by a window of its own, so that it is known who asks for them.
class SelectionOwner final : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(SelectionOwner)

public:
    /// Null where there is no X server.
    static std::unique_ptr<SelectionOwner> ofSession();

    /// A text in the forms in which programs take it; with @p html unless that is empty. Marked as nothing that
    /// clipboard managers should keep.
    SelectionContents passingText(const QString& plain, const QString& html) const;

    /// Takes the selection of this name ("CLIPBOARD") over to offer @p contents; with none it has no owner afterwards.
    void own(const QByteArray& selection, const SelectionContents& contents);

    /// Whether the selection is ours, and nobody has taken it since.
    bool owns(const QByteArray& selection) const;

Q_SIGNALS:
    /// Contents, and not only what there is, were asked for and given to this window of another program.
    void given(quint32 requestor);

private:
    explicit SelectionOwner(std::unique_ptr<SelectionWindow> window);
    void readEvents();
    void drop(quint32 selection);
    void forget(quint32 selection);
    void overwriteSent() const;
    void answer(const xcb_selection_request_event_t& request);
    bool give(const xcb_selection_request_event_t& request, quint32 property) const;

    std::unique_ptr<SelectionWindow> m_window;
    QHash<quint32, SelectionContents> m_owned;
};
