// SPDX-License-Identifier: MIT
#include "SelectionOwner.h"

#include <xcb/xcb.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

namespace {

const char* const targetsName = "TARGETS";
/// By this target clipboard managers know contents that they shall not keep.
const char* const secretName = "x-kde-passwordManagerHint";

/// To be called before it is dropped: what is offered may be what the user has typed, and the last one who has it
/// leaves nothing of it in freed memory.
void wipe(SelectionContents& contents)
{
    for (SelectionFormat& format : contents) {
        if (format.bytes.isDetached()) {
            explicit_bzero(format.bytes.data(), size_t(format.bytes.size()));
        }
    }
}

} // namespace

std::unique_ptr<SelectionOwner> SelectionOwner::ofSession()
{
    auto window = SelectionWindow::create();
    return std::unique_ptr<SelectionOwner>(window ? new SelectionOwner(std::move(window)) : nullptr);
}

SelectionOwner::SelectionOwner(std::unique_ptr<SelectionWindow> window)
    : m_window(std::move(window))
{
    Xcb::whenReadable(m_window->connection(), this, [this] { readEvents(); });
}

SelectionContents SelectionOwner::passingText(const QString& plain, const QString& html) const
{
    SelectionContents contents;
    const auto add = [&](const char* target, const char* type, QByteArray bytes) {
        contents.push_back({m_window->atom(target), m_window->atom(type), 8, std::move(bytes)});
    };
    if (!html.isEmpty()) {
        add("text/html", "text/html", html.toUtf8());
    }
    add("UTF8_STRING", "UTF8_STRING", plain.toUtf8());
    add("text/plain;charset=utf-8", "text/plain;charset=utf-8", plain.toUtf8());
    add("text/plain", "text/plain", plain.toUtf8());
    add("TEXT", "UTF8_STRING", plain.toUtf8());
    add("STRING", "STRING", plain.toLatin1());
    add(secretName, "STRING", "secret");
    return contents;
}

void SelectionOwner::own(const QByteArray& selection, const SelectionContents& contents)
{
    const quint32 atom = m_window->atom(selection);
    forget(atom);
    if (!contents.empty()) {
        m_owned.insert(atom, contents);
    }
    xcb_set_selection_owner(m_window->server(), contents.empty() ? XCB_NONE : m_window->id(), atom, XCB_CURRENT_TIME);
    // The answer comes when the server has done it: keys that are sent afterwards find the new owner.
    (void)m_window->ownerOf(atom);
}

bool SelectionOwner::owns(const QByteArray& selection) const
{
    return m_window->ownerOf(m_window->atom(selection)) == m_window->id();
}

void SelectionOwner::readEvents()
{
    while (const Xcb::Reply<xcb_generic_event_t> event{xcb_poll_for_event(m_window->server())}) {
        switch (event->response_type & 0x7F) {
        case XCB_SELECTION_REQUEST:
            answer(reinterpret_cast<const xcb_selection_request_event_t&>(*event));
            break;
        case XCB_SELECTION_CLEAR:
            drop(reinterpret_cast<const xcb_selection_clear_event_t&>(*event).selection);
            break;
        default:
            break;
        }
    }
}

/// The event may be of an earlier loss, and the selection be ours again.
void SelectionOwner::drop(quint32 selection)
{
    if (m_window->ownerOf(selection) != m_window->id()) {
        forget(selection);
    }
}

void SelectionOwner::forget(quint32 selection)
{
    SelectionContents contents = m_owned.take(selection);
    if (!contents.empty()) {
        wipe(contents);
        overwriteSent();
    }
}

/// The library's buffer of 16 KB holds what has been sent until other requests take its place: here a long one that
/// says nothing.
void SelectionOwner::overwriteSent() const
{
    static constexpr std::array<char, 16'352> nothing{};
    const quint32 property = m_window->atom(secretName);
    xcb_flush(m_window->server());
    xcb_change_property(m_window->server(), XCB_PROP_MODE_REPLACE, m_window->id(), property, XCB_ATOM_STRING, 8,
        quint32(nothing.size()), nothing.data());
    xcb_delete_property(m_window->server(), m_window->id(), property);
    xcb_flush(m_window->server());
}

void SelectionOwner::answer(const xcb_selection_request_event_t& request)
{
    // Old programs leave it to us where the contents go.
    const quint32 property = request.property != XCB_NONE ? request.property : request.target;
    const bool isGiven = give(request, property);

    // The server sends 32 bytes whatever the event; the library's structure ends before them.
    union {
        xcb_selection_notify_event_t event;
        std::array<char, 32> bytes;
    } notify{};

    notify.event.response_type = XCB_SELECTION_NOTIFY;
    notify.event.time = request.time;
    notify.event.requestor = request.requestor;
    notify.event.selection = request.selection;
    notify.event.target = request.target;
    notify.event.property = isGiven ? property : XCB_NONE;
    xcb_send_event(m_window->server(), 0, request.requestor, XCB_EVENT_MASK_NO_EVENT, notify.bytes.data());
    xcb_flush(m_window->server());
    if (isGiven && request.target != m_window->atom(targetsName)) {
        Q_EMIT given(request.requestor);
    }
}

/// Whether there is something to give.
bool SelectionOwner::give(const xcb_selection_request_event_t& request, quint32 property) const
{
    const auto owned = m_owned.constFind(request.selection);
    if (owned == m_owned.cend()) {
        return false;
    }
    const quint32 targets = m_window->atom(targetsName);
    if (request.target == targets) {
        std::vector<quint32> atoms{targets};
        std::ranges::transform(*owned, std::back_inserter(atoms), &SelectionFormat::target);
        xcb_change_property(m_window->server(), XCB_PROP_MODE_REPLACE, request.requestor, property, XCB_ATOM_ATOM, 32,
            quint32(atoms.size()), atoms.data());
        return true;
    }
    const auto format = std::ranges::find(*owned, request.target, &SelectionFormat::target);
    if (format == owned->cend()) {
        return false;
    }
    xcb_change_property(m_window->server(), XCB_PROP_MODE_REPLACE, request.requestor, property, format->type,
        format->unit, quint32(format->bytes.size() * 8 / format->unit), format->bytes.constData());
    return true;
}
