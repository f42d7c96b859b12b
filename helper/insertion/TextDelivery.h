// SPDX-License-Identifier: MIT
#pragma once

#include "PasteWays.h"
#include "PhraseText.h"

#include <platform/typist/SelectionOwner.h>
#include <platform/typist/SelectionReader.h>
#include <platform/typist/Typist.h>

#include <QByteArray>
#include <QObject>
#include <QTimer>

#include <memory>
#include <utility>
#include <variant>
#include <vector>

/// Keys, or a text.
using DeliveryStep = std::variant<Typist::Stroke, TextPiece>;

/// Hands texts to the program that has the keyboard's focus, by pastes or by keys, and gives the clipboard back. Waits
/// for nobody; one delivery at a time: prepare(), ready(), send(), finished(). Why so: docs/decisions/inserted-text.md.
class TextDelivery final : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(TextDelivery)

public:
    /// Null where there is no X server that lets keys be pressed.
    static std::unique_ptr<TextDelivery> ofSession();

    /// Reads what a paste will put out of the way. Where that cannot be done the text will be typed.
    void prepare(PasteWay way);
    /// After ready(), at most once.
    void send(std::vector<DeliveryStep> steps);

    /// The window that has the focus; 0 where none has.
    quint32 focus() const { return m_typist->focus(); }

    /// Its class; empty where that is not known.
    QString focusClass() const { return m_typist->focusClass(); }

Q_SIGNALS:
    /// This key goes down next: its event is of our own making.
    void keyIsPressed(quint8 keycode);
    void ready();
    void finished();

private:
    TextDelivery(
        std::unique_ptr<Typist> typist, std::unique_ptr<SelectionReader> reader, std::unique_ptr<SelectionOwner> owner);
    void readNext();
    void keep(const std::optional<SelectionContents>& contents);
    void goOn();
    void paste(const TextPiece& piece, std::vector<Typist::Stroke> before);
    void takeRequest(quint32 requestor);
    void typeUnasked();
    void giveBack();
    void dropSteps();

    std::unique_ptr<Typist> m_typist;
    std::unique_ptr<SelectionReader> m_reader;
    std::unique_ptr<SelectionOwner> m_owner;
    PasteWay m_way = PasteWay::Typed;
    /// Selections still to be read, and what the others had.
    std::vector<QByteArray> m_unread;
    std::vector<std::pair<QByteArray, SelectionContents>> m_kept;
    std::vector<DeliveryStep> m_steps;
    size_t m_next = 0;
    quint32 m_target = 0;
    /// Until the program asks for a paste; then until it asks no more.
    QTimer m_patience;
    QTimer m_quiet;
};
