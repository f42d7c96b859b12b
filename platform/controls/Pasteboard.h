// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <memory>
#include <optional>

class QMimeData;

/// The data of one copy or drag, by type. The types of the platform map to MIME types: plain text to "text/plain",
/// file names and URLs to "text/uri-list", every private type to "application/x-" and its name in lower case.
class Pasteboard final
{
public:
    /// The type of plain text.
    static const QString stringType;

    /// The desktop's clipboard. Declaring types takes it over; each set… then adds to what it offers.
    static Pasteboard generalPasteboard();
    /// A view of data that someone else owns, read-only.
    explicit Pasteboard(const QMimeData* data);
    /// An empty one, for a drag that begins; takeData() hands its content to the drag.
    Pasteboard();
    ~Pasteboard();
    Pasteboard(Pasteboard&&) noexcept;
    Pasteboard& operator=(Pasteboard&&) noexcept;
    Pasteboard(const Pasteboard&) = delete;
    Pasteboard& operator=(const Pasteboard&) = delete;

    /// Empties the pasteboard and announces these types.
    void declareTypes(const QStringList& types);
    void setString_forType(const QString& text, const QString& type);
    void setData_forType(const QByteArray& data, const QString& type);

    /// Whether the pasteboard offers @p type.
    bool hasType(const QString& type) const;
    /// Nothing when the pasteboard does not hold the type.
    std::optional<QString> stringForType(const QString& type) const;
    std::optional<QByteArray> dataForType(const QString& type) const;

    /// The path of the file that the first URL on the pasteboard names; nothing when there is no URL, or it is not a
    /// file's. A host is left out, since files are on this computer whatever it is called; so is a slash at the end.
    std::optional<QString> filename() const;
    /// The paths of all file URLs on the pasteboard, in the same form.
    QStringList filenames() const;

    std::unique_ptr<QMimeData> takeData();

private:
    class Content;

    std::unique_ptr<Content> m_content;
};
