// SPDX-License-Identifier: MIT
#include "WaylandKeyboard.h"

#include <product/Product.h>

#include <QByteArray>
#include <QDeadlineTimer>
#include <QLoggingCategory>
#include <QSocketNotifier>

#include <poll.h>
#include <unistd.h>
#include <wayland-client.h>
#include <xkbcommon/xkbcommon.h>

#include <cstring>

using namespace std::chrono_literals;

namespace {

Q_LOGGING_CATEGORY(log, PRODUCT_NAME ".keyboard")

constexpr auto patienceAtStart = 500ms;
/// Keymaps take some 70 kB; a compositor that announces more than this is not believed.
constexpr quint32 longestKeymap = 4U << 20;

/// The text in the first @p size bytes of a file that may be shared, whose read position is nobody's; empty when there
/// is less. Closes the file.
QByteArray takeText(int file, quint32 size)
{
    QByteArray text(qsizetype(size), '\0');
    qsizetype done = 0;
    ssize_t count = 1;
    while (done < text.size() && count > 0) {
        count = pread(file, text.data() + done, size_t(text.size() - done), done);
        done += qMax<ssize_t>(count, 0);
    }
    close(file);
    return done == text.size() ? text : QByteArray();
}

void noteAnswer(void* answered, wl_callback* /*callback*/, quint32 /*data*/)
{
    *static_cast<bool*>(answered) = true;
}

constexpr wl_callback_listener answerListener{noteAnswer};

} // namespace

/// Bound in their first version, seat and keyboard send none of the events that a listener leaves null here.
struct WaylandKeyboard::Listeners
{
    static void global(void* self, wl_registry* globals, quint32 name, const char* interface, quint32 /*version*/)
    {
        auto* const keyboard = static_cast<WaylandKeyboard*>(self);
        if (!keyboard->m_seat && std::strcmp(interface, wl_seat_interface.name) == 0) {
            keyboard->m_seat.reset(static_cast<wl_seat*>(wl_registry_bind(globals, name, &wl_seat_interface, 1)));
            wl_seat_add_listener(keyboard->m_seat.get(), &seat, self);
        }
    }

    static void globalRemove(void* /*self*/, wl_registry* /*registry*/, quint32 /*name*/) {}

    static void capabilities(void* self, wl_seat* source, quint32 capabilities)
    {
        auto* const keyboard = static_cast<WaylandKeyboard*>(self);
        if ((capabilities & WL_SEAT_CAPABILITY_KEYBOARD) == 0) {
            keyboard->m_keyboard.reset();
        } else if (!keyboard->m_keyboard) {
            keyboard->m_keyboard.reset(wl_seat_get_keyboard(source));
            wl_keyboard_add_listener(keyboard->m_keyboard.get(), &keys, self);
        }
    }

    static void keymap(void* self, wl_keyboard* /*source*/, quint32 format, int file, quint32 size)
    {
        static_cast<WaylandKeyboard*>(self)->takeKeymap(format, file, size);
    }

    // These come with the focus, which only a window can have.
    static void enter(void* /*self*/, wl_keyboard* /*source*/, quint32 /*serial*/, wl_surface*, wl_array*) {}

    static void leave(void* /*self*/, wl_keyboard* /*source*/, quint32 /*serial*/, wl_surface*) {}

    static void key(void* /*self*/, wl_keyboard* /*source*/, quint32, quint32, quint32, quint32) {}

    static void modifiers(void* /*self*/, wl_keyboard* /*source*/, quint32, quint32, quint32, quint32, quint32) {}

    static constexpr wl_registry_listener registry{global, globalRemove};
    static constexpr wl_seat_listener seat{capabilities, nullptr};
    static constexpr wl_keyboard_listener keys{keymap, enter, leave, key, modifiers, nullptr};
};

void WaylandKeyboard::Release::operator()(wl_display* display) const
{
    wl_display_disconnect(display);
}

void WaylandKeyboard::Release::operator()(wl_registry* registry) const
{
    wl_registry_destroy(registry);
}

void WaylandKeyboard::Release::operator()(wl_seat* seat) const
{
    wl_seat_destroy(seat);
}

void WaylandKeyboard::Release::operator()(wl_keyboard* keyboard) const
{
    wl_keyboard_destroy(keyboard);
}

WaylandKeyboard::WaylandKeyboard(QObject* parent)
    : QObject(parent)
    , m_display(wl_display_connect(nullptr))
{
    if (m_display) {
        connectToCompositor();
    }
    if (!m_layout) {
        qCWarning(log).noquote() << "The Wayland compositor tells no keyboard layout; the default one stands for it";
    }
}

void WaylandKeyboard::connectToCompositor()
{
    m_registry.reset(wl_display_get_registry(m_display.get()));
    wl_registry_add_listener(m_registry.get(), &Listeners::registry, this);
    // The seats, then the seat's keyboard, then its keymap.
    const QDeadlineTimer deadline(patienceAtStart);
    for (int step = 0; step < 3 && roundTrip(deadline); ++step) {
    }
    auto* const notifier = new QSocketNotifier(wl_display_get_fd(m_display.get()), QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this, notifier] {
        readEvents(0ms);
        notifier->setEnabled(wl_display_get_error(m_display.get()) == 0);
    });
}

/// Waits until the compositor has answered everything asked so far. False when the time runs out or the connection
/// breaks.
bool WaylandKeyboard::roundTrip(const QDeadlineTimer& deadline)
{
    bool answered = false;
    const std::unique_ptr<wl_callback, void (*)(wl_callback*)> answer(
        wl_display_sync(m_display.get()), wl_callback_destroy);
    wl_callback_add_listener(answer.get(), &answerListener, &answered);
    while (!answered) {
        if (!readEvents(std::chrono::ceil<std::chrono::milliseconds>(deadline.remainingTimeAsDuration()))) {
            return false;
        }
    }
    return true;
}

/// Deals with the events that are there, or come within @p patience. False when none does, or the connection is broken.
bool WaylandKeyboard::readEvents(std::chrono::milliseconds patience)
{
    wl_display* const display = m_display.get();
    while (wl_display_prepare_read(display) != 0) {
        if (wl_display_dispatch_pending(display) < 0) {
            return false;
        }
    }
    wl_display_flush(display);
    pollfd readable{wl_display_get_fd(display), POLLIN, 0};
    if (poll(&readable, 1, int(patience.count())) <= 0) {
        wl_display_cancel_read(display);
        return false;
    }
    return wl_display_read_events(display) == 0 && wl_display_dispatch_pending(display) >= 0;
}

void WaylandKeyboard::takeKeymap(quint32 format, int file, quint32 size)
{
    const QByteArray text = takeText(file, qMin(size, longestKeymap));
    const Xkb::Context context = Xkb::contextWithoutFiles();
    const Xkb::Keymap keymap(context && format == WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1 && size <= longestKeymap
                                 ? xkb_keymap_new_from_buffer(context.get(), text.constData(),
                                       qstrnlen(text.constData(), size_t(text.size())), XKB_KEYMAP_FORMAT_TEXT_V1,
                                       XKB_KEYMAP_COMPILE_NO_FLAGS)
                                 : nullptr);
    if (!keymap) {
        qCWarning(log).noquote() << "The Wayland compositor's keyboard layout cannot be read";
        return;
    }
    m_layout = std::make_shared<const KeyboardLayout>(keymap.get(), 0);
    Q_EMIT layoutChanged();
}
