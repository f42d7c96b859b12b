// SPDX-License-Identifier: MIT
#include "TypedStreamInput.h"

using namespace Qt::StringLiterals;

namespace TypedStream {

namespace {

constexpr unsigned char shortFollows = 0x81;
constexpr unsigned char longFollows = 0x82;
constexpr unsigned char realFollows = 0x83;
constexpr unsigned char longLongFollows = 0x87;
constexpr unsigned char firstReserved = 0x80;
constexpr unsigned char lastReserved = 0x91;
constexpr qint64 firstReference = -110;

} // namespace

bool Input::fail(QStringView what)
{
    if (m_error.isEmpty()) {
        m_error = u"byte %1: %2"_s.arg(m_at).arg(what);
    }
    return false;
}

bool Input::take(Mark mark)
{
    const bool isNext = hasByte() && head() == static_cast<unsigned char>(mark);
    m_at += isNext ? 1 : 0;
    return isNext;
}

bool Input::readHeader()
{
    constexpr qsizetype signatureSize = 13;
    const bool isLittle = m_bytes.startsWith("\x04\x0Bstreamtyped");
    if (!isLittle && !m_bytes.startsWith("\x04\x0Btypedstream")) {
        return fail(u"no typed stream of version 4");
    }
    m_isLittleEndian = isLittle;
    m_at = signatureSize;
    qint64 systemVersion = 0;
    return readInteger(systemVersion);
}

bool Input::readInteger(qint64& number)
{
    const auto readWide = [this, &number](auto wide) {
        ++m_at;
        const bool isRead = readFixed(wide);
        number = wide;
        return isRead;
    };
    switch (head()) {
    case shortFollows:
        return readWide(qint16());
    case longFollows:
        return readWide(qint32());
    case longLongFollows:
        return readWide(qint64());
    default:
        break;
    }
    if (head() >= firstReserved && head() <= lastReserved) {
        return fail(u"no integer where one should be");
    }
    // One byte in two's complement.
    quint8 small = 0;
    const bool isRead = readFixed(small);
    number = small < 0x80 ? qint64{small} : qint64{small} - 0x100;
    return isRead;
}

bool Input::readReal(char type, double& number)
{
    if (head() != realFollows) {
        qint64 integer = 0;
        const bool isRead = readInteger(integer);
        number = double(integer);
        return isRead;
    }
    ++m_at;
    if (type == 'd') {
        return readFixed(number);
    }
    float narrow = 0;
    const bool isRead = readFixed(narrow);
    number = double(narrow);
    return isRead;
}

bool Input::readReference(size_t tableSize, size_t& number)
{
    qint64 reference = 0;
    if (!readInteger(reference)) {
        return false;
    }
    // Unsigned, since the distance of two numbers may be more than the largest of them.
    number = size_t(reference) - size_t(firstReference);
    return (reference >= firstReference && number < tableSize) || fail(u"a reference to nothing");
}

bool Input::readRaw(qint64 length, QByteArray& bytes)
{
    if (length < 0 || length > remaining()) {
        return fail(u"a length beyond the end");
    }
    bytes = m_bytes.sliced(m_at, length).toByteArray();
    m_at += length;
    return true;
}

bool Input::readUnsharedString(std::optional<QByteArray>& text)
{
    qint64 length = 0;
    if (take(Mark::Nil)) {
        return true;
    }
    return readInteger(length) && readRaw(length, text.emplace());
}

bool Input::readSharedString(std::optional<QByteArray>& text)
{
    if (take(Mark::Nil)) {
        return true;
    }
    if (take(Mark::New)) {
        if (!readUnsharedString(text)) {
            return false;
        }
        m_strings.push_back(text.value_or(QByteArray()));
        return true;
    }
    size_t number = 0;
    if (!readReference(m_strings.size(), number)) {
        return false;
    }
    text = m_strings[number];
    return true;
}

} // namespace TypedStream
