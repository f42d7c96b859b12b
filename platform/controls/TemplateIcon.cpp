// SPDX-License-Identifier: MIT
#include "TemplateIcon.h"

#include <QFileInfo>
#include <QGuiApplication>
#include <QIconEngine>
#include <QImage>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

QColor tint(QIcon::Mode mode)
{
    const QPalette palette = QGuiApplication::palette();
    switch (mode) {
    case QIcon::Selected:
        return palette.color(QPalette::Active, QPalette::HighlightedText);
    case QIcon::Disabled:
        return palette.color(QPalette::Disabled, QPalette::Text);
    case QIcon::Normal:
    case QIcon::Active:
        break;
    }
    return palette.color(QPalette::Active, QPalette::Text);
}

/// Draws a shape in the colour that the palette has at the moment of drawing.
class TemplateIconEngine final : public QIconEngine
{
public:
    TemplateIconEngine(QImage shape, QImage doubleShape)
        : m_shape(std::move(shape))
        , m_doubleShape(std::move(doubleShape))
    {
    }

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override
    {
        const qreal scale = painter->device()->devicePixelRatio();
        painter->drawPixmap(rect, scaledPixmap(rect.size() * scale, mode, state, scale));
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override
    {
        return scaledPixmap(size, mode, state, 1);
    }

    QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State /*state*/, qreal scale) override
    {
        const QColor color = tint(mode);
        const QString key = u"template-%1-%2x%3-%4-%5"_s.arg(m_shape.cacheKey())
                                .arg(size.width())
                                .arg(size.height())
                                .arg(color.rgba())
                                .arg(scale);
        QPixmap pixmap;
        if (!QPixmapCache::find(key, &pixmap)) {
            pixmap = QPixmap::fromImage(tinted(size, color));
            pixmap.setDevicePixelRatio(scale);
            QPixmapCache::insert(key, pixmap);
        }
        return pixmap;
    }

    QSize actualSize(const QSize& size, QIcon::Mode /*mode*/, QIcon::State /*state*/) override
    {
        return m_shape.size().scaled(size, Qt::KeepAspectRatio);
    }

    QList<QSize> availableSizes(QIcon::Mode /*mode*/, QIcon::State /*state*/) override
    {
        return m_doubleShape.isNull() ? QList{m_shape.size()} : QList{m_shape.size(), m_doubleShape.size()};
    }

    bool isNull() override { return m_shape.isNull(); }

    QIconEngine* clone() const override { return new TemplateIconEngine(*this); }

private:
    QImage tinted(const QSize& size, const QColor& color) const
    {
        const bool needsDouble = !m_doubleShape.isNull() && size.width() > m_shape.width();
        const QImage& shape = needsDouble ? m_doubleShape : m_shape;
        QImage image(size, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        QRect target(QPoint(), shape.size().scaled(size, Qt::KeepAspectRatio));
        target.moveCenter(image.rect().center());
        painter.drawImage(target, shape);
        painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
        painter.fillRect(image.rect(), color);
        return image;
    }

    QImage m_shape;
    QImage m_doubleShape;
};

} // namespace

QIcon templateIcon(const QString& path)
{
    const QImage shape(path);
    if (shape.isNull()) {
        return {};
    }
    const QFileInfo file(path);
    const QImage doubleShape(u"%1/%2@2x.%3"_s.arg(file.path(), file.completeBaseName(), file.suffix()));
    // The icon takes the engine over.
    QIcon icon(new TemplateIconEngine(shape, doubleShape));
    icon.setIsMask(true);
    return icon;
}
