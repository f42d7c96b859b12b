// SPDX-License-Identifier: MIT
#pragma once

#include "PropertyList.h"

#include <platform/bytes/ByteReader.h>

#include <QByteArrayView>
#include <QString>

#include <optional>
#include <string_view>
#include <utility>

/// What the readers and writers of the three forms share; private to the property list files.
namespace PropertyList {

Result<Value> readXml(QByteArrayView bytes);
Result<Value> readBinary(QByteArrayView bytes);
Result<Value> readText(QByteArrayView bytes);

/// What a reader answers that has read @p root.
inline Result<Value> resultOf(Value root, const FirstProblem& problem)
{
    return problem.isNoted() ? Result<Value>(Failure{problem.text()}) : Result<Value>(std::move(root));
}

/// Strict UTF-8, a leading U+FEFF kept; nothing where @p bytes are no valid UTF-8.
std::optional<QString> decodeUtf8(QByteArrayView bytes);

/// A number in C-locale text (decimal or exponent form, "nan", "inf", "infinity" in any case, an optional sign) at the
/// beginning of @p text: its value and length, 0 for none. What is too large for a double is infinite.
std::pair<double, size_t> parseReal(std::string_view text);

/// The XML form's spelling of a real, at most 32 characters.
QByteArray spellReal(double number, RealSpelling spelling);

} // namespace PropertyList
