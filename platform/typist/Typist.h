// SPDX-License-Identifier: MIT
#pragma once

#include "KeyStrokes.h"

#include <platform/keyboard/ServerKeyboard.h>
#include <platform/keyboard/XcbHandles.h>

#include <QHash>
#include <QList>
#include <QObject>
#include <QSet>
#include <QString>
#include <QTimer>

#include <memory>
#include <optional>
#include <vector>

/// Presses keys in the program that has the keyboard's focus, as if the user did (the X server's XTEST extension).
///
/// Modifiers that the user holds are lifted for as long as it takes, and put back. What the current layout can only
/// give with more than Shift, or not at all, is typed with keycodes that the layout leaves free. Why so:
/// docs/decisions/inserted-text.md.
class Typist final : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(Typist)

public:
    enum class Key { BackSpace, Return, Tab, Left, Up, Right, Down, Insert, V };

    struct Stroke
    {
        Key key = Key::BackSpace;
        qsizetype times = 1;
        bool withShift = false;
        bool withControl = false;
    };

    /// Null where there is no X server, or one without XTEST or the keyboard extension.
    static std::unique_ptr<Typist> ofSession();

    ~Typist() override;

    /// Strikes the keys one after the other; the server has them all when this returns.
    void strike(const std::vector<Stroke>& strokes);

    /// Types @p text, line ends as Return, and tells typed() in the end, never before this returns. Not while it is
    /// typing. Characters that no key can be given are left out.
    void type(const QString& text);

    /// The window that has the focus; 0 where none has.
    quint32 focus() const;
    /// The class (see WindowClass) of the window that has the focus; empty where none has.
    QString focusClass() const;
    /// Whether both windows belong to one program.
    bool areOfOneProgram(quint32 window, quint32 other) const;

Q_SIGNALS:
    /// This key goes down next: its event is of our own making.
    void keyIsPressed(quint8 keycode);
    void typed();

private:
    /// A key with its modifiers, which are keys as well.
    struct Chord
    {
        quint8 keycode = 0;
        std::vector<quint8> modifiers;
        qsizetype times = 1;
    };

    Typist(Xcb::Connection connection, ServerKeyboard keyboard);
    void readEvents();
    std::optional<Chord> chordOf(const Stroke& stroke) const;
    std::optional<Chord> chordOfSymbol(quint32 symbol);
    void send(const std::vector<Chord>& chords);
    void sendKey(quint8 keycode, bool isDown);
    std::vector<quint8> heldModifiers() const;
    void typeNextPart();
    void giveMeaning(quint8 keycode, quint32 symbol);
    void takeMeaningsBack();

    Xcb::Connection m_connection;
    ServerKeyboard m_keyboard;
    KeyStrokes m_strokes;
    /// The symbols still to be typed.
    QList<quint32> m_symbols;
    /// What the spare keycodes mean in the part that is typed, and all that mean something since the text began.
    QHash<quint32, quint8> m_given;
    QSet<quint8> m_lent;
    QTimer m_rest;
};
