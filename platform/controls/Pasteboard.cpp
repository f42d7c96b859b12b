// SPDX-License-Identifier: MIT
#include "Pasteboard.h"

#include <platform/bytes/PathNames.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QUrl>

using namespace Qt::StringLiterals;

const QString Pasteboard::stringType = u"NSStringPboardType"_s;

namespace {

QString mimeType(const QString& type)
{
    return type == Pasteboard::stringType ? u"text/plain"_s : u"application/x-"_s + type.toLower();
}

std::unique_ptr<QMimeData> copyOf(const QMimeData& data)
{
    auto copy = std::make_unique<QMimeData>();
    for (const QString& format : data.formats()) {
        copy->setData(format, data.data(format));
    }
    return copy;
}

} // namespace

/// Where the data is: on the clipboard, in somebody else's hands, or our own.
class Pasteboard::Content
{
public:
    const QMimeData* data() const
    {
        if (isClipboard) {
            return QGuiApplication::clipboard()->mimeData();
        }
        return foreign ? foreign : own.get();
    }

    /// Hands a clipboard's content to the desktop anew: a clipboard's data must not change once it is offered.
    void publish() const
    {
        if (isClipboard) {
            QGuiApplication::clipboard()->setMimeData(copyOf(*own).release());
        }
    }

    std::unique_ptr<QMimeData> own;
    const QMimeData* foreign = nullptr;
    bool isClipboard = false;
};

Pasteboard Pasteboard::generalPasteboard()
{
    Pasteboard pasteboard;
    pasteboard.m_content->isClipboard = true;
    return pasteboard;
}

Pasteboard::Pasteboard(const QMimeData* data)
    : m_content(std::make_unique<Content>())
{
    m_content->foreign = data;
}

Pasteboard::Pasteboard()
    : m_content(std::make_unique<Content>())
{
    m_content->own = std::make_unique<QMimeData>();
}

Pasteboard::~Pasteboard() = default;
Pasteboard::Pasteboard(Pasteboard&&) noexcept = default;
Pasteboard& Pasteboard::operator=(Pasteboard&&) noexcept = default;

void Pasteboard::declareTypes(const QStringList& types)
{
    m_content->own = std::make_unique<QMimeData>();
    for (const QString& type : types) {
        m_content->own->setData(mimeType(type), {});
    }
    m_content->publish();
}

void Pasteboard::setString_forType(const QString& text, const QString& type)
{
    setData_forType(text.toUtf8(), type);
}

void Pasteboard::setData_forType(const QByteArray& data, const QString& type)
{
    m_content->own->setData(mimeType(type), data);
    m_content->publish();
}

bool Pasteboard::hasType(const QString& type) const
{
    const QMimeData* const data = m_content->data();
    return data && data->hasFormat(mimeType(type));
}

std::optional<QString> Pasteboard::stringForType(const QString& type) const
{
    const std::optional<QByteArray> data = dataForType(type);
    if (!data) {
        return std::nullopt;
    }
    // QMimeData knows the encodings in which other programs offer plain text.
    return type == stringType ? m_content->data()->text() : QString::fromUtf8(*data);
}

std::optional<QByteArray> Pasteboard::dataForType(const QString& type) const
{
    if (!hasType(type)) {
        return std::nullopt;
    }
    return m_content->data()->data(mimeType(type));
}

std::optional<QString> Pasteboard::filename() const
{
    const QMimeData* const data = m_content->data();
    const QList<QUrl> urls = data ? data->urls() : QList<QUrl>();
    const QString path = urls.isEmpty() ? QString() : pathOfFileUrl(urls.first());
    return path.isEmpty() ? std::nullopt : std::optional(path);
}

QStringList Pasteboard::filenames() const
{
    const QMimeData* const data = m_content->data();
    QStringList names;
    for (const QUrl& url : data ? data->urls() : QList<QUrl>()) {
        if (const QString path = pathOfFileUrl(url); !path.isEmpty()) {
            names.append(path);
        }
    }
    return names;
}

std::unique_ptr<QMimeData> Pasteboard::takeData()
{
    return std::exchange(m_content->own, std::make_unique<QMimeData>());
}
