// SPDX-License-Identifier: MIT
#pragma once

#include "PropertyList.h"

#include <QByteArrayView>
#include <QString>

#include <optional>
#include <string_view>
#include <utility>

/// What the readers and writers of the three forms share; private to the property list files.
namespace PropertyList {

ReadResult readXml(QByteArrayView bytes);
ReadResult readBinary(QByteArrayView bytes);
ReadResult readText(QByteArrayView bytes);

/// Collects the one error and the warnings of a reader, each with the byte offset.
class Findings final
{
public:
    /// Notes the error (the first one counts) and answers false, for use as `return findings.fail(...)`.
    bool fail(QStringView what, qsizetype offset);
    void warn(QStringView what, qsizetype offset);

    bool failed() const noexcept { return !m_error.isEmpty(); }

    /// Whether further warnings would be dropped.
    bool isFull() const noexcept;

    /// The result of reading, with a null root after an error.
    ReadResult result(Value root) &&;

private:
    QString m_error;
    QStringList m_warnings;
};

/// Strict UTF-8, a leading U+FEFF kept; nothing where @p bytes are no valid UTF-8.
std::optional<QString> decodeUtf8(QByteArrayView bytes);

/// A number in C-locale text (decimal or exponent form, "nan", "inf", "infinity" in any case, an optional sign) at the
/// beginning of @p text: its value and length, 0 for none. What is too large for a double is infinite.
std::pair<double, size_t> parseReal(std::string_view text);

/// The XML form's spelling of a real, at most 32 characters.
QByteArray spellReal(double number, RealSpelling spelling);

} // namespace PropertyList
