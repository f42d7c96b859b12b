// SPDX-License-Identifier: MIT
#include <platform/keyboard/SessionKeyboard.h>

#include <QRegularExpression>
#include <QTemporaryFile>
#include <QTest>

#include <DataTable.h>
#include <wayland-server.h>
#include <xkbcommon/xkbcommon.h>

#include <cstdlib>
#include <cstring>
#include <mutex>
#include <thread>

using namespace Qt::StringLiterals;

namespace {

/// The text of a keymap as a compositor hands it out.
QByteArray keymapText(const char* layout)
{
    const xkb_rule_names names{nullptr, nullptr, layout, nullptr, nullptr};
    const Xkb::Context context(xkb_context_new(XKB_CONTEXT_NO_FLAGS));
    const Xkb::Keymap keymap(xkb_keymap_new_from_names(context.get(), &names, XKB_KEYMAP_COMPILE_NO_FLAGS));
    char* const text = xkb_keymap_get_as_string(keymap.get(), XKB_KEYMAP_FORMAT_TEXT_V1);
    const QByteArray bytes(text, qsizetype(std::strlen(text)) + 1);
    std::free(text);
    return bytes;
}

/// A compositor that offers a seat and nothing else, in a thread of its own.
class Compositor final
{
public:
    /// Without a keymap the seat has no keyboard.
    explicit Compositor(const QByteArray& keymap)
        : m_keymap(keymap)
        , m_display(wl_display_create())
    {
        qputenv("WAYLAND_DISPLAY", wl_display_add_socket_auto(m_display));
        wl_global_create(m_display, &wl_seat_interface, 1, this, bindSeat);
        m_thread = std::jthread([this](const std::stop_token& stop) { serve(stop); });
    }

    Q_DISABLE_COPY_MOVE(Compositor)

    ~Compositor()
    {
        m_thread = {};
        wl_display_destroy_clients(m_display);
        wl_display_destroy(m_display);
    }

    void changeKeymap(const QByteArray& keymap)
    {
        const std::scoped_lock lock(m_mutex);
        m_keymap = keymap;
        m_changed = true;
    }

private:
    void serve(const std::stop_token& stop)
    {
        while (!stop.stop_requested()) {
            wl_event_loop_dispatch(wl_display_get_event_loop(m_display), 10);
            const std::scoped_lock lock(m_mutex);
            if (std::exchange(m_changed, false)) {
                sendKeymap();
            }
            wl_display_flush_clients(m_display);
        }
    }

    void sendKeymap()
    {
        QTemporaryFile file;
        if (file.open() && file.write(m_keymap) == m_keymap.size() && file.flush()) {
            wl_keyboard_send_keymap(
                m_keyboard, WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1, file.handle(), quint32(m_keymap.size()));
        }
    }

    static void bindSeat(wl_client* client, void* self, quint32 /*version*/, quint32 id)
    {
        static constexpr auto getKeyboard = [](wl_client* owner, wl_resource* seat, quint32 keyboard) {
            auto* const compositor = static_cast<Compositor*>(wl_resource_get_user_data(seat));
            const std::scoped_lock lock(compositor->m_mutex);
            compositor->m_keyboard = wl_resource_create(owner, &wl_keyboard_interface, 1, keyboard);
            compositor->sendKeymap();
        };

        static const struct wl_seat_interface requests
        {
            nullptr, getKeyboard, nullptr, nullptr
        };

        wl_resource* const seat = wl_resource_create(client, &wl_seat_interface, 1, id);
        wl_resource_set_implementation(seat, &requests, self, nullptr);
        const bool hasKeyboard = !static_cast<Compositor*>(self)->m_keymap.isEmpty();
        wl_seat_send_capabilities(seat, hasKeyboard ? WL_SEAT_CAPABILITY_KEYBOARD : WL_SEAT_CAPABILITY_TOUCH);
    }

    std::mutex m_mutex;
    QByteArray m_keymap;
    bool m_changed = false;
    wl_display* m_display;
    wl_resource* m_keyboard = nullptr;
    std::jthread m_thread;
};

QString nameOfZKey(SessionKeyboard& keyboard)
{
    const KeyboardLayout::Pointer layout = keyboard.layout();
    return layout ? layout->characterOnKey(0x06) : u"no layout"_s;
}

} // namespace

class SessionKeyboardTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void cleanup() { qunsetenv("WAYLAND_DISPLAY"); }

    void layoutFollowsTheCompositor()
    {
        Compositor compositor(keymapText("de"));
        SessionKeyboard keyboard(nullptr);
        QCOMPARE(nameOfZKey(keyboard), u"y"_s);
        QCOMPARE(keyboard.layout(), keyboard.layout());
        compositor.changeKeymap(keymapText("fr"));
        QTRY_COMPARE(nameOfZKey(keyboard), u"w"_s);
    }

    void withoutItsLayoutTheDefaultOneCounts_data()
    {
        const DataTable<QByteArray> row("keymap");
        row("no keyboard", {});
        row("no keymap", "xkb_keymap {");
    }

    void withoutItsLayoutTheDefaultOneCounts()
    {
        QFETCH(QByteArray, keymap);
        const Compositor compositor(keymap);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"tells no keyboard layout"_s));
        qputenv("XKB_DEFAULT_LAYOUT", "fr");
        SessionKeyboard keyboard(nullptr);
        QCOMPARE(nameOfZKey(keyboard), u"w"_s);
        qunsetenv("XKB_DEFAULT_LAYOUT");
    }
};

QTEST_MAIN(SessionKeyboardTest)
#include "SessionKeyboardTest.moc"
