// SPDX-License-Identifier: MIT
#pragma once

#include "XcbHandles.h"

#include <QObject>

#include <map>
#include <optional>
#include <vector>

/// A key combination reserved with the system. Never 0.
enum class HotKeyReference : quintptr {};

/// Reserves key combinations for this process, whatever program is in front: key grabs on the X server, made through a
/// connection of its own. Main thread only. Grabs end with unregisterHotKey(), or with the object.
class HotKeyGrabs final : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HotKeyGrabs)

public:
    explicit HotKeyGrabs(QObject* parent = nullptr);
    ~HotKeyGrabs() override = default;

    /// Whether this session lets programs reserve combinations: it has an X server that can be reached.
    static bool arePossible();

    /// Reserves the key @p virtualKeyCode with a mask of the classic modifier bits (command 0x100 is Super, shift
    /// 0x200, option 0x800 is Alt, control 0x1000; other bits are not looked at), whether Num Lock and Caps Lock are on
    /// or off. Where several keys have the code (F13 and Print), each that is free is reserved, since the code does not
    /// tell which was pressed when it was recorded. Nothing when it is refused: another program, or this one, holds the
    /// combination, the keyboard lacks the key or a modifier, or the session has no X server (logged).
    std::optional<HotKeyReference> registerHotKey(int virtualKeyCode, int modifiers);

    /// Gives a combination back; nothing happens for one that is not held.
    void unregisterHotKey(HotKeyReference reference);

Q_SIGNALS:
    /// The keys of a combination that is held have been pressed; once, however long they stay down.
    void pressed(HotKeyReference reference);
    /// The server's keyboard has been mapped anew: a combination may have other modifier bits now, and counts under the
    /// old ones until it is registered again. Comes several times for one change.
    void keyboardChanged();

private:
    struct Grab
    {
        int virtualKeyCode = -1;
        /// Those of the keys with that code that have been granted.
        std::vector<quint8> keycodes;
        /// A grab holds for exactly its modifiers, and to the server the locks are modifiers too: one mask for each
        /// state of the locks.
        std::vector<quint16> modifierMasks;
    };

    bool connectToServer();
    std::optional<std::vector<quint16>> modifierMasks(int modifiers) const;
    bool grabKey(quint8 keycode, const std::vector<quint16>& modifierMasks);
    void ungrabKey(quint8 keycode, const std::vector<quint16>& modifierMasks);
    void takeEvents();
    void takeKeyPress(quint8 keycode, quint16 state, quint32 time);

    /// Null until the first registration, and without an X server.
    Xcb::Connection m_connection;
    quint32 m_rootWindow = 0;
    std::map<HotKeyReference, Grab> m_grabs;
    quintptr m_lastReference = 0;
    /// The last key that was let go, and when. The server repeats a key that is held down by letting it go and pressing
    /// it again in the same millisecond.
    quint8 m_releasedKey = 0;
    quint32 m_releaseTime = 0;
};
