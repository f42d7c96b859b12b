// SPDX-License-Identifier: MIT
#include "TextView.h"

#include "TextAttachment.h"

#include <QAbstractTextDocumentLayout>
#include <QApplication>
#include <QIcon>
#include <QMimeDatabase>
#include <QPainter>
#include <QStyle>
#include <QTextDocument>
#include <QUrl>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int fileIconSize = 32;
constexpr int fileLabelWidth = 120;

/// What a file looks like that is no picture: the icon of its kind above its name.
QImage fileImage(const TextAttachment& file, const QFont& font, const QColor& textColor, qreal scale)
{
    const QMimeType type = QMimeDatabase().mimeTypeForFileNameAndData(file.name, file.contents);
    const QIcon plain = QApplication::style()->standardIcon(file.isPackage ? QStyle::SP_DirIcon : QStyle::SP_FileIcon);
    const QIcon icon = file.isPackage ? plain : QIcon::fromTheme(type.iconName(), plain);
    const QFontMetrics metrics(font);
    const QString label = metrics.elidedText(file.name, Qt::ElideMiddle, fileLabelWidth);
    const QSize size(std::max(fileIconSize, metrics.horizontalAdvance(label)) + 8, fileIconSize + metrics.height() + 4);

    QImage image(size * scale, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    icon.paint(&painter, QRect((size.width() - fileIconSize) / 2, 0, fileIconSize, fileIconSize));
    painter.setFont(font);
    painter.setPen(textColor);
    painter.drawText(QRect(0, fileIconSize, size.width(), metrics.height() + 4), Qt::AlignCenter, label);
    return image;
}

/// Lays out a file that is no picture as large as its icon and name are here. What is stored with it is the size of
/// another program's icon, mostly 32 points, in which no name can be read.
class FileObject final : public QObject, public QTextObjectInterface
{
    Q_OBJECT
    Q_INTERFACES(QTextObjectInterface)
    Q_DISABLE_COPY_MOVE(FileObject)

public:
    /// Stands before the layout's own handler of pictures, which does the rest.
    explicit FileObject(QAbstractTextDocumentLayout& layout)
        : QObject(&layout)
        , m_pictures(*layout.handlerForObject(QTextFormat::ImageObject))
    {
        layout.registerHandler(QTextFormat::ImageObject, this);
    }

    QSizeF intrinsicSize(QTextDocument* document, int position, const QTextFormat& format) override
    {
        QTextImageFormat shown = format.toImageFormat();
        const auto name = TextAttachment::nameOf(QUrl(shown.name()));
        const auto file = name ? TextAttachment::in(*document, *name) : std::nullopt;
        if (file && !file->isPicture()) {
            shown.clearProperty(QTextFormat::ImageWidth);
            shown.clearProperty(QTextFormat::ImageHeight);
        }
        return m_pictures.intrinsicSize(document, position, shown);
    }

    void drawObject(QPainter* painter, const QRectF& rect, QTextDocument* document, int position,
        const QTextFormat& format) override
    {
        m_pictures.drawObject(painter, rect, document, position, format);
    }

private:
    QTextObjectInterface& m_pictures;
};

} // namespace

void TextView::showFilesReadably()
{
    new FileObject(*document()->documentLayout());
}

QVariant TextView::loadResource(int type, const QUrl& name)
{
    const auto fileName = TextAttachment::nameOf(name);
    if (!fileName) {
        // Text from elsewhere must not make this program open files or hosts; pictures in the text itself are data
        // URLs.
        return name.scheme() == u"data" ? QTextEdit::loadResource(type, name) : QVariant();
    }
    const auto file = TextAttachment::in(*document(), *fileName).value_or(TextAttachment{*fileName, {}, false});
    const QImage picture = file.isPackage ? QImage() : TextAttachment::picture(file.contents);
    return picture.isNull() ? fileImage(file, font(), palette().text().color(), devicePixelRatioF()) : picture;
}

#include "TextView_Files.moc"
