// SPDX-License-Identifier: MIT
#include "Rtfd.h"

#include "Rtf.h"

#include <platform/bytes/ByteReader.h>
#include <platform/bytes/ByteWriter.h>

#include <QSet>

#include <algorithm>
#include <vector>

using namespace Qt::StringLiterals;
using ByteWriter::appendLittle;

namespace Rtfd {

namespace {

constexpr QByteArrayView signature("rtfd\0\0\0\0", 8);
constexpr quint32 fileType = 1;
constexpr quint32 folderType = 3;
constexpr quint32 paddedLength = 0x8000'0000;
constexpr quint32 maximumFiles = 10'000;
constexpr quint32 defaultPermissions = 0666;

const QString textName = u"TXT.rtf"_s;

/// Reads a node. What is asked for beyond its end is not there, and no problem: a text that is cut short has the rest.
ByteReader readerOf(QByteArrayView bytes)
{
    return {bytes, QSysInfo::LittleEndian};
}

struct Node
{
    QString name;
    QByteArrayView bytes;
};

/// A file's bytes from the node's body.
QByteArrayView fileContents(ByteReader body)
{
    auto length = body.number<quint32>();
    if (length == paddedLength) {
        length = body.number<quint32>();
        body.upTo(body.number<quint32>());
    }
    return body.upTo(length);
}

/// The entries of a folder's body, as many as its bytes hold.
std::vector<Node> folderNodes(ByteReader body, QStringList& warnings)
{
    const auto count = body.number<quint32>();
    if (count > maximumFiles) {
        warnings.append(u"a folder of %1 entries is not believed"_s.arg(count));
        return {};
    }
    std::vector<Node> nodes;
    while (nodes.size() < count && !body.atEnd()) {
        const auto length = body.number<quint32>();
        nodes.push_back({QString::fromUtf8(body.upTo(length)), {}});
    }
    std::vector<quint32> sizes;
    while (sizes.size() < nodes.size()) {
        sizes.push_back(body.number<quint32>());
    }
    for (size_t index = 0; index < nodes.size(); ++index) {
        nodes[index].bytes = body.upTo(sizes[index]);
        if (nodes[index].bytes.size() < qsizetype(sizes[index])) {
            warnings.append(u"\"%1\" is cut short"_s.arg(nodes[index].name));
        }
    }
    return nodes;
}

/// ".." is the only file of a wrapper that is no folder.
bool isTextName(const QString& name)
{
    return name == textName || name == u"..";
}

bool isReserved(const QString& name)
{
    return name == u"." || name == u"__@PreferredName@__" || name == u"__@UTF8PreferredName@__";
}

void appendCounted(QByteArray& bytes, const QByteArray& content)
{
    appendLittle(bytes, quint32(content.size()));
    bytes.append(content);
}

QByteArray fileNode(const QByteArray& contents)
{
    QByteArray node;
    appendLittle(node, fileType);
    appendCounted(node, contents);
    return node;
}

QByteArray attributeTable(const QList<TextAttachment>& files)
{
    QByteArray table;
    appendLittle(table, quint32(files.size()));
    for (const TextAttachment& file : files) {
        appendCounted(table, file.name.toUtf8());
        QByteArray attributes;
        for (const quint32 value : {0U, defaultPermissions, 0U, 0U}) {
            appendLittle(attributes, value);
        }
        appendCounted(table, attributes);
    }
    return table;
}

} // namespace

bool isWrapper(QByteArrayView bytes)
{
    return bytes.startsWith(signature);
}

Contents readWrapper(QByteArrayView bytes)
{
    if (!isWrapper(bytes)) {
        return {{}, {}, {u"this is no flattened rich text"_s}};
    }
    Contents contents;
    ByteReader root = readerOf(bytes.sliced(signature.size()));
    const auto rootType = root.number<quint32>();
    if (rootType == fileType) {
        contents.files.append({textName, fileContents(root).toByteArray(), false});
        return contents;
    }
    if (rootType != folderType) {
        contents.warnings.append(u"the outermost entry has the unknown type %1"_s.arg(rootType));
        return contents;
    }
    QSet<QString> names;
    for (const auto& [givenName, node] : folderNodes(root, contents.warnings)) {
        const QString name = isTextName(givenName) ? textName : TextAttachment::safeName(givenName);
        if (givenName == u"__@UTF8PreferredName@__") {
            ByteReader input = readerOf(node);
            input.number<quint32>(); // its type
            contents.preferredName = TextAttachment::safeName(QString::fromUtf8(fileContents(input)));
        }
        if (isReserved(givenName) || names.contains(name)) {
            continue;
        }
        ByteReader input = readerOf(node);
        const auto type = input.number<quint32>();
        if (type == fileType) {
            contents.files.append({name, fileContents(input).toByteArray(), false});
        } else if (type == folderType) {
            contents.files.append({name, node.toByteArray(), true});
        } else {
            contents.warnings.append(u"\"%1\" has the unknown type %2"_s.arg(givenName).arg(type));
            continue;
        }
        names.insert(name);
    }
    return contents;
}

QByteArray writeWrapper(const QList<TextAttachment>& files)
{
    QList<QByteArray> names;
    QList<QByteArray> nodes;
    for (const TextAttachment& file : files) {
        names.append(file.name.toUtf8());
        nodes.append(file.isPackage ? file.contents : fileNode(file.contents));
    }
    names.append(".");
    nodes.append(fileNode(attributeTable(files)));

    QByteArray bytes = signature.toByteArray();
    appendLittle(bytes, folderType);
    appendLittle(bytes, quint32(nodes.size()));
    for (const QByteArray& name : names) {
        appendCounted(bytes, name);
    }
    for (const QByteArray& node : nodes) {
        appendLittle(bytes, quint32(node.size()));
    }
    for (const QByteArray& node : nodes) {
        bytes.append(node);
    }
    return bytes;
}

Result<QStringList> read(QByteArrayView bytes, QTextDocument& document)
{
    Contents contents;
    if (Rtf::isRtf(bytes)) {
        contents.files.append({textName, bytes.toByteArray(), false});
    } else {
        contents = readWrapper(bytes);
    }
    const auto text = std::ranges::find(contents.files, textName, &TextAttachment::name);
    if (text == contents.files.end() || !Rtf::isRtf(text->contents)) {
        return Failure{(contents.warnings + QStringList(u"there is no rich text in it"_s)).join(u"; "_s)};
    }
    const Rtf::ReadResult result = Rtf::read(text->contents, contents.files);
    result.text.fill(document);
    return contents.warnings + result.warnings;
}

QByteArray write(const QTextDocument& document)
{
    Rtf::Written written = Rtf::write(document);
    written.attachments.prepend({textName, written.rtf, false});
    return writeWrapper(written.attachments);
}

} // namespace Rtfd
