// SPDX-License-Identifier: MIT
#include "TextDelivery.h"

#include <QLoggingCategory>

#include <chrono>
#include <utility>

using namespace std::chrono_literals;

namespace {

Q_LOGGING_CATEGORY(log, "blipsy.insertion")

/// A program that has not asked for the clipboard by now takes no pastes.
constexpr auto patience = 2s;

/// Some programs ask for one form after the other.
constexpr auto quiet = 100ms;

const QByteArray clipboard = QByteArrayLiteral("CLIPBOARD");
const QByteArray primary = QByteArrayLiteral("PRIMARY");

Typist::Stroke keysOf(PasteWay way)
{
    if (way == PasteWay::ShiftInsert) {
        return {.key = Typist::Key::Insert, .withShift = true};
    }
    return {.key = Typist::Key::V, .withShift = way == PasteWay::ControlShiftV, .withControl = true};
}

} // namespace

std::unique_ptr<TextDelivery> TextDelivery::ofSession()
{
    // An X server beside a Wayland compositor reaches only programs of its own.
    if (qEnvironmentVariableIsSet("WAYLAND_DISPLAY")) {
        return nullptr;
    }
    auto typist = Typist::ofSession();
    auto reader = SelectionReader::ofSession();
    auto owner = SelectionOwner::ofSession();
    if (!typist || !reader || !owner) {
        return nullptr;
    }
    return std::unique_ptr<TextDelivery>(new TextDelivery(std::move(typist), std::move(reader), std::move(owner)));
}

TextDelivery::TextDelivery(
    std::unique_ptr<Typist> typist, std::unique_ptr<SelectionReader> reader, std::unique_ptr<SelectionOwner> owner)
    : m_typist(std::move(typist))
    , m_reader(std::move(reader))
    , m_owner(std::move(owner))
{
    m_patience.setSingleShot(true);
    m_patience.setInterval(patience);
    m_quiet.setSingleShot(true);
    m_quiet.setInterval(quiet);
    connect(m_typist.get(), &Typist::keyIsPressed, this, &TextDelivery::keyIsPressed);
    connect(m_typist.get(), &Typist::typed, this, &TextDelivery::goOn);
    connect(m_reader.get(), &SelectionReader::finished, this, &TextDelivery::keep);
    connect(m_owner.get(), &SelectionOwner::given, this, &TextDelivery::takeRequest);
    connect(&m_patience, &QTimer::timeout, this, &TextDelivery::typeUnasked);
    connect(&m_quiet, &QTimer::timeout, this, &TextDelivery::goOn);
}

void TextDelivery::prepare(PasteWay way)
{
    m_way = way;
    m_kept.clear();
    m_unread.clear();
    if (way != PasteWay::Typed) {
        m_unread.push_back(clipboard);
    }
    if (way == PasteWay::ShiftInsert) {
        m_unread.push_back(primary);
    }
    QMetaObject::invokeMethod(this, &TextDelivery::readNext, Qt::QueuedConnection);
}

void TextDelivery::readNext()
{
    if (m_unread.empty()) {
        Q_EMIT ready();
    } else {
        m_reader->read(m_unread.back());
    }
}

void TextDelivery::keep(const std::optional<SelectionContents>& contents)
{
    if (contents) {
        m_kept.emplace_back(m_unread.back(), *contents);
        m_unread.pop_back();
    } else {
        qCInfo(log, "the clipboard cannot be kept for the time of a paste: the text is typed instead");
        m_way = PasteWay::Typed;
        m_unread.clear();
    }
    readNext();
}

void TextDelivery::send(std::vector<DeliveryStep> steps)
{
    m_steps = std::move(steps);
    m_next = 0;
    m_target = m_typist->focus();
    goOn();
}

/// Keys before a paste are sent together with those of the paste, so that nothing of the user's comes in between.
void TextDelivery::goOn()
{
    m_patience.stop();
    std::vector<Typist::Stroke> strokes;
    while (m_next < m_steps.size()) {
        const DeliveryStep& step = m_steps[m_next++];
        if (const auto* const stroke = std::get_if<Typist::Stroke>(&step)) {
            strokes.push_back(*stroke);
        } else if (m_way != PasteWay::Typed) {
            paste(std::get<TextPiece>(step), std::move(strokes));
            return;
        } else {
            m_typist->strike(strokes);
            m_typist->type(std::get<TextPiece>(step).plain);
            return;
        }
    }
    m_typist->strike(strokes);
    giveBack();
    dropSteps();
    Q_EMIT finished();
}

void TextDelivery::paste(const TextPiece& piece, std::vector<Typist::Stroke> before)
{
    const SelectionContents contents = m_owner->passingText(piece.plain, piece.html);
    for (const auto& kept : m_kept) {
        m_owner->own(kept.first, contents);
    }
    before.push_back(keysOf(m_way));
    m_typist->strike(before);
    m_patience.start();
}

/// Others may ask as well: clipboard managers look at everything.
void TextDelivery::takeRequest(quint32 requestor)
{
    const bool isWaiting = m_patience.isActive() || m_quiet.isActive();
    if (isWaiting && (m_target == 0 || m_typist->areOfOneProgram(requestor, m_target))) {
        m_patience.stop();
        m_quiet.start();
    }
}

void TextDelivery::typeUnasked()
{
    qCWarning(log, "the program in front has not asked for a paste: the text is typed instead");
    m_way = PasteWay::Typed;
    giveBack();
    --m_next;
    goOn();
}

void TextDelivery::giveBack()
{
    for (const auto& [selection, contents] : std::exchange(m_kept, {})) {
        if (m_owner->owns(selection)) {
            m_owner->own(selection, contents);
        }
    }
}

/// With the text goes what the user has typed meanwhile: nothing of it stays in memory.
void TextDelivery::dropSteps()
{
    for (DeliveryStep& step : m_steps) {
        if (auto* const piece = std::get_if<TextPiece>(&step)) {
            piece->plain.fill(QChar::Null);
            piece->html.fill(QChar::Null);
        }
    }
    m_steps.clear();
}
