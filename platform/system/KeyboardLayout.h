#pragma once

#include <QString>

#include <memory>
#include <optional>

struct xkb_keymap;
struct xkb_state;

/// A keyboard layout: what character each key of the keyboard gives. Immutable; main thread only.
class KeyboardLayout final
{
public:
    using Pointer = std::shared_ptr<const KeyboardLayout>;

    /// What kind of key map describes the layout.
    enum class Kind { Classic = 1, Unicode = 2 };

    /// The layout that the session uses now: the X server's, group switches included, where there is one; otherwise the
    /// one that the XKB_DEFAULT_* environment variables or the system's default name. The same object as the last time
    /// as long as the layout has not changed, so that a cache can be keyed by it; asking costs next to nothing then.
    /// Changes are noticed when the event loop delivers the server's word of them. Null when there is no layout to be
    /// had (logged).
    static Pointer current();

    /// Keeps references to @p keymap. @p group counts the layouts of the keymap from 0.
    KeyboardLayout(xkb_keymap* keymap, quint32 group);
    ~KeyboardLayout();
    KeyboardLayout(const KeyboardLayout&) = delete;
    KeyboardLayout& operator=(const KeyboardLayout&) = delete;
    KeyboardLayout(KeyboardLayout&&) = delete;
    KeyboardLayout& operator=(KeyboardLayout&&) = delete;

    /// Every layout of this desktop has a Unicode key map.
    static constexpr Kind kind() { return Kind::Unicode; }

    /// The name of the layout, for instance "German".
    QString localizedName() const;

    /// The one character (UTF-16 unit) that the cap of the key @p virtualKeyCode shows: what the key types without
    /// modifiers, of a keypad key the digit, of a dead key its accent standing alone. Empty for a key without one.
    QString characterOnKey(int virtualKeyCode) const;

    /// The virtual key code of the first key whose cap shows @p character, upper and lower case being the same; nothing
    /// when none does.
    std::optional<int> keyWithCharacter(QChar character) const;

private:
    struct Release
    {
        void operator()(xkb_keymap* keymap) const;
        void operator()(xkb_state* state) const;
    };

    std::unique_ptr<xkb_keymap, Release> m_keymap;
    std::unique_ptr<xkb_state, Release> m_state;
    quint32 m_group;
};
