// SPDX-License-Identifier: MIT
#pragma once

#include <PTHotKeysLib/src/PTHotKey.h>

#include <QObject>
#include <QStringList>
#include <QTimer>

#include <array>

class PTHotKeyCenter;

/// The three hot keys that the settings name, reserved with the system and turned into signals. Those that another
/// program holds are stored in the setting "RefusedHotKeys", where the pane finds them. In a session whose programs
/// cannot reserve keys nothing is reserved, and nothing is refused either. Main thread only.
class HotKeys final : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HotKeys)

public:
    /// Reserves nothing before the first readSettings().
    explicit HotKeys(QObject* parent = nullptr);
    ~HotKeys() override;

    /// Reserves what the settings name now. Those that were refused before are tried again.
    void readSettings();

    /// While @p held the combinations are given back, so that the user can type them into the pane.
    void setHeld(bool held);

    /// The localized names of those that another program holds.
    const QStringList& refused() const { return m_refused; }

Q_SIGNALS:
    void addRequested();
    void editRequested();
    void pauseRequested();
    void refusedChanged();

private:
    void addHotKey(size_t index, const QString& name, void (HotKeys::*requested)());
    void reserve();
    void tellRefused(const QStringList& names);

    PTHotKeyCenter& m_center;
    std::array<PTHotKey::Pointer, 3> m_hotKeys;
    QStringList m_refused;
    /// The server tells of a new keyboard many times over.
    QTimer m_keyboardSettled;
    bool m_isHeld = false;
};
