// SPDX-License-Identifier: MIT
#include "PropertyListForms.h"

#include <platform/bytes/RegularFile.h>

#include <QStringDecoder>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace PropertyList {

namespace {

Result<Value> readUtf8(QByteArrayView bytes)
{
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    std::string_view text(bytes.data(), size_t(bytes.size()));
    if (text.starts_with(byteOrderMark)) {
        text.remove_prefix(byteOrderMark.size());
    }
    const QByteArrayView content(text.data(), qsizetype(text.size()));
    text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
    const bool isXml = text.starts_with("<?xml") || text.starts_with("<!") || text.starts_with("<plist");
    return isXml ? readXml(content) : readText(content);
}

} // namespace

Result<Value> read(QByteArrayView bytes)
{
    if (bytes.startsWith("bplist")) {
        return readBinary(bytes);
    }
    if (!bytes.startsWith("\xFE\xFF") && !bytes.startsWith("\xFF\xFE")) {
        return readUtf8(bytes);
    }
    QStringDecoder decoder(QStringDecoder::Utf16, QStringConverter::Flag::Stateless);
    const QString text = decoder(bytes);
    if (decoder.hasError() || !text.isValidUtf16()) {
        return Failure{u"byte 0: the text is no valid UTF-16"_s};
    }
    return readUtf8(text.toUtf8());
}

Result<DictionaryPointer> readFile(const QString& path, qint64 maximumSize)
{
    const Result<QByteArray> contents = RegularFile::read(path, maximumSize);
    if (!contents) {
        return Failure{contents.error()};
    }
    const Result<Value> root = read(*contents);
    if (!root) {
        return Failure{root.error()};
    }
    if (const DictionaryPointer dictionary = root->dictionary()) {
        return dictionary;
    }
    return Failure{u"its root is no dictionary"_s};
}

QByteArray write(const Value& root)
{
    std::optional<QByteArray> xml = writeXml(root);
    return xml ? *std::move(xml) : writeBinary(root);
}

} // namespace PropertyList
