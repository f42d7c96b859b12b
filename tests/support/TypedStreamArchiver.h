// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <bit>

/// Writes archives: every string and class anew, without references, which readers accept as well.
class Archiver final
{
public:
    explicit Archiver(bool isLittleEndian = true)
        : m_isLittleEndian(isLittleEndian)
    {
    }

    QByteArray integer(qint64 number) const
    {
        if (number >= -110 && number <= 127) {
            return QByteArray(1, char(number));
        }
        return "\x82" + fixed(quint64(number), 4);
    }

    QByteArray real(double number) const { return "\x83" + fixed(std::bit_cast<quint32>(float(number)), 4); }

    QByteArray text(const QByteArray& bytes) const { return integer(bytes.size()) + bytes; }

    QByteArray group(const QByteArray& encoding, const QByteArray& values) const
    {
        return "\x84" + text(encoding) + values;
    }

    /// An object whose class chain is @p classes, subclass first.
    QByteArray object(const QList<QByteArray>& classes, const QByteArray& groups) const
    {
        QByteArray bytes = "\x84";
        for (const QByteArray& name : classes) {
            bytes += "\x84\x84" + text(name) + integer(0);
        }
        return bytes + "\x85" + groups + "\x86";
    }

    QByteArray string(const QByteArray& utf8) const { return object({"NSString", "NSObject"}, group("+", text(utf8))); }

    QByteArray data(const QByteArray& bytes) const { return object({"NSData", "NSObject"}, counted(bytes)); }

    QByteArray number(qint64 value) const
    {
        return object(
            {"NSNumber", "NSValue", "NSObject"}, group("*", "\x84\x84" + text("i")) + group("i", integer(value)));
    }

    QByteArray font(const QString& name, double size) const
    {
        QByteArray serialized("\6\0\0\0", 4);
        serialized += char(name.size() * 2 + 2) + QByteArray(3, '\0') + (m_isLittleEndian ? "\xFF\xFE" : "\xFE\xFF");
        for (const QChar c : name) {
            serialized += fixed(c.unicode(), 2);
        }
        return object({"NSFont", "NSObject"}, counted(serialized) + group("f", real(size)));
    }

    QByteArray dictionary(const QList<QPair<QByteArray, QByteArray>>& pairs) const
    {
        QByteArray groups = group("i", integer(pairs.size()));
        for (const auto& [key, value] : pairs) {
            groups += group("@", string(key)) + group("@", value);
        }
        return object({"NSDictionary", "NSObject"}, groups);
    }

    /// An image with one bitmap, whose representation holds @p file.
    QByteArray image(const QByteArray& file) const
    {
        const QByteArray bitmap = object({"NSBitmapImageRep", "NSImageRep", "NSObject"}, counted(file));
        return root(object({"NSImage", "NSObject"}, group("@", "\x85") + group("@", bitmap)));
    }

    /// A text attachment whose file is given as a flattened wrapper.
    QByteArray attachment(const QByteArray& wrapper) const
    {
        const QByteArray fileWrapper = object({"NSFileWrapper", "NSObject"}, group("@", data(wrapper)));
        return object({"NSTextAttachment", "NSObject"}, group("i@", integer(0) + fileWrapper));
    }

    QByteArray run(qint64 number, qint64 length) const { return group("iI", integer(number) + integer(length)); }

    QByteArray attributedString(const QByteArray& utf8, const QByteArray& runs) const
    {
        return root(
            object({"NSMutableAttributedString", "NSAttributedString", "NSObject"}, group("@", string(utf8)) + runs));
    }

    QByteArray header() const
    {
        return (m_isLittleEndian ? "\x04\x0Bstreamtyped" : "\x04\x0Btypedstream") + ("\x81" + fixed(1000, 2));
    }

    QByteArray root(const QByteArray& value) const { return header() + group("@", value); }

private:
    /// The length of @p bytes, and they themselves.
    QByteArray counted(const QByteArray& bytes) const
    {
        const QByteArray encoding = "[" + QByteArray::number(bytes.size()) + "c]";
        return group("i", integer(bytes.size())) + group(encoding, bytes);
    }

    QByteArray fixed(quint64 number, int width) const
    {
        QByteArray bytes;
        for (int i = 0; i < width; ++i) {
            bytes.append(char(number >> (8 * (m_isLittleEndian ? i : width - 1 - i))));
        }
        return bytes;
    }

    bool m_isLittleEndian;
};
