// SPDX-License-Identifier: MIT
#pragma once

#include "PropertyList.h"

#include <QStringEncoder>

#include <algorithm>
#include <cstring>
#include <optional>
#include <string_view>
#include <utility>

/// What writes the XML form, whole or in pieces; private to the property list files.
namespace PropertyList {

inline constexpr std::string_view xmlHeader =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" \"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
    "<plist version=\"1.0\">\n";
inline constexpr std::string_view xmlFooter = "</plist>\n";

/// A growing byte array that is written through a pointer: appending to QByteArray byte by byte costs several times
/// more.
class XmlOutput final
{
public:
    void append(std::string_view bytes)
    {
        std::memcpy(reserve(bytes.size()), bytes.data(), bytes.size());
        m_size += qsizetype(bytes.size());
    }

    /// XML text; false when it holds a character that XML cannot express.
    bool appendText(QStringView text);

    void appendTabs(int count)
    {
        std::memset(reserve(size_t(count)), '\t', size_t(count));
        m_size += count;
    }

    qsizetype size() const { return m_size; }

    QByteArray take() &&
    {
        m_bytes.resize(m_size);
        return std::move(m_bytes);
    }

    /// What has been written since the last cut, in no more memory than it needs.
    QByteArray cut() { return {m_bytes.constData(), std::exchange(m_size, 0)}; }

private:
    char* reserve(size_t count)
    {
        const qsizetype needed = m_size + qsizetype(count);
        if (needed > m_bytes.size()) {
            m_bytes.resize(std::max<qsizetype>(needed, m_bytes.size() * 2));
        }
        return m_bytes.data() + m_size;
    }

    QStringEncoder m_encoder{QStringEncoder::Utf8, QStringConverter::Flag::Stateless};
    QByteArray m_bytes = QByteArray(4096, Qt::Uninitialized);
    qsizetype m_size = 0;
};

/// Writes values one after the other. Once something was false, what has been written is of no use.
class XmlWriter final
{
public:
    /// The whole form; nothing where XML cannot express @p root.
    std::optional<QByteArray> write(const Value& root);

    /// One value on lines of its own, @p indent levels deep; false when XML cannot express it.
    bool writeValue(const Value& value, int indent);
    /// The line of a dictionary's key; false when XML cannot express it.
    bool writeKey(const QString& key, int indent);

    void line(int indent, std::string_view text)
    {
        m_output.appendTabs(indent);
        m_output.append(text);
        m_output.append("\n");
    }

    XmlOutput& output() { return m_output; }

private:
    bool writeElement(std::string_view element, QStringView text);
    bool writeDate(const QDateTime& date);
    void writeData(const QByteArray& data, int indent);
    bool writeArray(const Array& array, int indent);
    bool writeDictionary(const Dictionary& dictionary, int indent);
    void writeUid(Uid uid, int indent);

    XmlOutput m_output;
};

} // namespace PropertyList
