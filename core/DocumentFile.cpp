// SPDX-License-Identifier: MIT
#include "DocumentFile.h"

#include "DocumentBackups.h"

#include <platform/storage/AtomicFile.h>

#include <QCoreApplication>
#include <QLoggingCategory>

#include <chrono>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using PropertyList::DictionaryPointer;
using State = PropertyList::XmlPieces::State;

namespace {

Q_LOGGING_CATEGORY(log, "blipsy.document")

/// Half of what a frame takes: the other half is for what the user does meanwhile.
constexpr auto turnLength = 8ms;
/// Between two turns, so that an endless stream of events does not keep the document from being written.
constexpr auto turnPause = 1ms;
/// After a document was read, until the tables have been painted.
constexpr auto preparationDelay = 1s;

} // namespace

DocumentFile::DocumentFile()
{
    m_turn.setSingleShot(true);
    connect(&m_turn, &QTimer::timeout, this, &DocumentFile::takeTurn);
    if (const auto* application = QCoreApplication::instance()) {
        connect(application, &QCoreApplication::aboutToQuit, this, &DocumentFile::finish);
    }
}

// Whom others would be told through may be gone.
DocumentFile::~DocumentFile()
{
    m_afterRunning.clear();
    m_afterAsked.clear();
    finish();
}

void DocumentFile::setVersion(const QString& path, const std::optional<FileStamp>& stamp)
{
    finish();
    m_pieces.clear();
    m_prepared = {};
    if (path != m_safe.path) {
        AtomicFile::removeLeftovers(path);
    }
    m_safe = {.path = path, .stamp = stamp};
}

bool DocumentFile::isUpToDate(const QString& path) const
{
    return m_safe.stamp && path == m_safe.path && m_safe.stamp == FileStamp::of(path);
}

bool DocumentFile::write(const QString& path, const DictionaryPointer& root)
{
    finish();
    const Outcome outcome = writeBytes(m_safe, path, {PropertyList::write(root)});
    conclude(outcome);
    return outcome.isWritten;
}

void DocumentFile::writeSoon(const QString& path, const DictionaryPointer& root)
{
    m_asked = root;
    m_path = path;
    if (!m_running.valid()) {
        // After what is there already: the changes of a burst are written together.
        m_turn.start(0);
    }
}

void DocumentFile::prepare(const DictionaryPointer& root)
{
    m_prepared = root;
    m_turn.start(preparationDelay);
}

void DocumentFile::afterwards(Continuation continuation)
{
    if (m_asked) {
        m_afterAsked.push_back(std::move(continuation));
    } else if (m_running.valid()) {
        m_afterRunning.push_back(std::move(continuation));
    } else {
        continuation();
    }
}

void DocumentFile::finish()
{
    if (m_running.valid()) {
        concludeWriting(m_number);
    }
    if (m_asked) {
        m_turn.stop();
        const std::optional<QByteArrayList> bytes = makeBytes(QDeadlineTimer::Forever);
        m_asked = {};
        m_afterRunning = std::exchange(m_afterAsked, {});
        conclude(writeBytes(m_safe, m_path, *bytes));
    }
}

void DocumentFile::takeTurn()
{
    if (m_running.valid()) {
        return;
    }
    bool isUnfinished = false;
    if (m_asked) {
        const std::optional<QByteArrayList> bytes = makeBytes(QDeadlineTimer(turnLength));
        isUnfinished = !bytes;
        if (bytes) {
            startWriting(*bytes);
        }
    } else if (m_prepared) {
        isUnfinished = m_pieces.update(*m_prepared, QDeadlineTimer(turnLength)) == State::Unfinished;
    }
    if (isUnfinished) {
        m_turn.start(turnPause);
    } else {
        m_prepared = {};
    }
}

/// The bytes of what has been asked for; nothing when the deadline came first.
std::optional<QByteArrayList> DocumentFile::makeBytes(const QDeadlineTimer& deadline)
{
    switch (m_pieces.update(*m_asked, deadline)) {
    case State::Complete:
        return m_pieces.pieces();
    case State::Inexpressible:
        return QByteArrayList{PropertyList::writeBinary(m_asked)};
    case State::Unfinished:
        break;
    }
    return std::nullopt;
}

void DocumentFile::startWriting(const QByteArrayList& pieces)
{
    m_asked = {};
    m_afterRunning = std::exchange(m_afterAsked, {});
    m_running = std::async(std::launch::async, [this, number = ++m_number, safe = m_safe, path = m_path, pieces] {
        Outcome outcome = writeBytes(safe, path, pieces);
        QMetaObject::invokeMethod(
            this, [this, number] { concludeWriting(number); }, Qt::QueuedConnection);
        return outcome;
    });
}

/// Waits for the writing of that number, unless somebody has done so before.
void DocumentFile::concludeWriting(int number)
{
    if (number == m_number && m_running.valid()) {
        conclude(m_running.get());
        if (m_asked) {
            m_turn.start(0);
        }
    }
}

void DocumentFile::conclude(const Outcome& outcome)
{
    m_safe = outcome.safe;
    for (const QString& problem : outcome.problems) {
        qCWarning(log).noquote() << problem;
    }
    for (const Continuation& continuation : std::exchange(m_afterRunning, {})) {
        continuation();
    }
}

/// On any thread, as what it calls.
DocumentFile::Outcome DocumentFile::writeBytes(const Version& safe, const QString& path, const QByteArrayList& pieces)
{
    Outcome outcome{.isWritten = false, .safe = safe, .problems = {}};
    if (!keepVersionOfOthers(outcome, path)) {
        return outcome;
    }
    DocumentBackups::keepBeforeFirstWrite(path, maximumSize);
    if (const auto written = AtomicFile::write(path, pieces); !written) {
        outcome.problems.append(written.error());
        return outcome;
    }
    outcome.isWritten = true;
    outcome.safe = {.path = path, .stamp = FileStamp::of(path)};
    return outcome;
}

/// Keeps the version that another program has put in the place of the one that was read. False when it could not be
/// kept.
bool DocumentFile::keepVersionOfOthers(Outcome& outcome, const QString& path)
{
    const std::optional<FileStamp> stamp = FileStamp::of(path);
    if (!stamp || (path == outcome.safe.path && stamp == outcome.safe.stamp)) {
        return true;
    }
    const Result<QString> copy = DocumentBackups::keep(path, maximumSize);
    if (!copy) {
        outcome.problems.append(
            u"document %1, changed by another program, is not overwritten: %2"_s.arg(path, copy.error()));
        return false;
    }
    outcome.safe = {.path = path, .stamp = stamp};
    outcome.problems.append(
        u"document %1 was changed by another program; that version is kept as %2"_s.arg(path, *copy));
    return true;
}
