// SPDX-License-Identifier: MIT
#include "SelectionReader.h"

#include <xcb/xcb.h>

#include <array>
#include <chrono>
#include <cstring>
#include <utility>

using namespace std::chrono_literals;

namespace {

constexpr auto patience = 300ms;

/// So many forms can be told apart at a time; nobody offers more.
constexpr qsizetype maximumTargets = 200;

constexpr const char* targetsName = "TARGETS";

/// Targets that are requests to the owner and no forms of its contents.
constexpr std::array requests{targetsName, "MULTIPLE", "TIMESTAMP", "SAVE_TARGETS", "DELETE", "INSERT_PROPERTY",
    "INSERT_SELECTION", "CLIENT_WINDOW", "OWNER_OS", "HOST_NAME", "USER"};

} // namespace

std::unique_ptr<SelectionReader> SelectionReader::ofSession()
{
    auto window = SelectionWindow::create();
    return std::unique_ptr<SelectionReader>(window ? new SelectionReader(std::move(window)) : nullptr);
}

SelectionReader::SelectionReader(std::unique_ptr<SelectionWindow> window)
    : m_window(std::move(window))
{
    m_patience.setSingleShot(true);
    connect(&m_patience, &QTimer::timeout, this, [this] { finish(m_selection == 0); });
    Xcb::whenReadable(m_window->connection(), this, [this] { readEvents(); });
}

void SelectionReader::read(const QByteArray& selection)
{
    m_secondChoice = 0;
    begin(selection, m_window->atom(targetsName));
}

/// Not by the list of what there is: programs that offer a text in whatever form offer it in one of these.
void SelectionReader::readText(const QByteArray& selection)
{
    m_secondChoice = XCB_ATOM_STRING;
    begin(selection, m_window->atom("UTF8_STRING"));
}

QString SelectionReader::textOf(const SelectionContents& contents)
{
    if (contents.empty()) {
        return {};
    }
    const SelectionFormat& format = contents.front();
    return format.target == XCB_ATOM_STRING ? QString::fromLatin1(format.bytes) : QString::fromUtf8(format.bytes);
}

void SelectionReader::begin(const QByteArray& selection, quint32 target)
{
    // Answers that come too late go to a window that is gone.
    m_window->renew();
    m_asked.clear();
    m_contents.clear();
    m_size = 0;
    const quint32 atom = m_window->atom(selection);
    m_selection = m_window->ownerOf(atom) != 0 ? atom : 0;
    if (m_selection != 0) {
        convert(target);
    }
    m_patience.start(m_selection != 0 ? patience : 0ms);
}

void SelectionReader::readEvents()
{
    while (const Xcb::Reply<xcb_generic_event_t> event{xcb_poll_for_event(m_window->server())}) {
        if ((event->response_type & 0x7F) == XCB_SELECTION_NOTIFY) {
            take(reinterpret_cast<const xcb_selection_notify_event_t&>(*event));
        }
    }
}

void SelectionReader::convert(quint32 target)
{
    const quint32 property = m_window->atom("_FORM_" + QByteArray::number(m_asked.size()));
    m_asked.insert(property, target);
    xcb_convert_selection(m_window->server(), m_window->id(), m_selection, target, property, XCB_CURRENT_TIME);
    xcb_flush(m_window->server());
}

void SelectionReader::take(const xcb_selection_notify_event_t& event)
{
    if (event.requestor != m_window->id() || m_asked.isEmpty()) {
        return;
    }
    const bool areTargets = event.target == m_window->atom(targetsName);
    if (event.property == XCB_NONE) {
        // A form that is refused after all is none.
        m_asked.removeIf([&event](const auto& asked) { return *asked == event.target; });
        if (m_asked.isEmpty() && m_secondChoice != 0) {
            convert(std::exchange(m_secondChoice, 0));
        } else if (areTargets || m_asked.isEmpty()) {
            finish(!areTargets);
        }
        return;
    }
    if (m_asked.take(event.property) != event.target) {
        return;
    }
    const auto format = takeProperty(event.property, event.target);
    if (!format) {
        finish(false);
    } else if (areTargets) {
        takeTargets(*format);
    } else if (format->unit != 0) {
        m_contents.push_back(*format);
    }
    if (m_asked.isEmpty() && m_patience.isActive()) {
        finish(true);
    }
}

void SelectionReader::takeTargets(const SelectionFormat& targets)
{
    std::vector<quint32> atoms(size_t(targets.bytes.size()) / sizeof(quint32));
    std::memcpy(atoms.data(), targets.bytes.constData(), atoms.size() * sizeof(quint32));
    for (const char* const request : requests) {
        std::erase(atoms, m_window->atom(request));
    }
    for (const quint32 target : atoms) {
        if (target != 0 && m_asked.size() < maximumTargets && m_asked.key(target, 0) == 0) {
            convert(target);
        }
    }
}

/// Nothing when it is more than may be, or only the announcement of portions (INCR).
std::optional<SelectionFormat> SelectionReader::takeProperty(quint32 property, quint32 target)
{
    const auto request = xcb_get_property(m_window->server(), 1, m_window->id(), property, XCB_GET_PROPERTY_TYPE_ANY, 0,
        quint32(maximumSize / qsizetype(sizeof(quint32))));
    const Xcb::Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(m_window->server(), request, nullptr));
    if (!reply || reply->bytes_after != 0 || reply->type == m_window->atom("INCR")) {
        return {};
    }
    const int size = xcb_get_property_value_length(reply.get());
    m_size += size;
    if (m_size > maximumSize) {
        return {};
    }
    const auto* const bytes = static_cast<const char*>(xcb_get_property_value(reply.get()));
    return SelectionFormat{target, reply->type, reply->format, QByteArray(bytes, size)};
}

void SelectionReader::finish(bool isWhole)
{
    m_patience.stop();
    m_asked.clear();
    Q_EMIT finished(isWhole ? std::optional(std::exchange(m_contents, {})) : std::nullopt);
}
