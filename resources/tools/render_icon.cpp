// SPDX-License-Identifier: MIT
#include <QGuiApplication>
#include <QImage>
#include <QImageWriter>
#include <QPainter>
#include <QSvgRenderer>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

/// Renders a drawing to a square TIFF with transparency.
bool render(QSvgRenderer& renderer, int pixels, const QString& path)
{
    QImage image(pixels, pixels, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    renderer.render(&painter);
    painter.end();
    QImageWriter writer(path, "tiff");
    writer.setCompression(1);
    if (!writer.write(image)) {
        std::fprintf(stderr, "render_icon: %s: %s\n", qPrintable(path), qPrintable(writer.errorString()));
        return false;
    }
    return true;
}

} // namespace

/// `render_icon DRAWING.svg NAME.tif`: writes NAME.tif at 16 pixels and NAME@2x.tif at 32.
int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "minimal");
    const QGuiApplication application(argc, argv);
    if (argc != 3) {
        std::fprintf(stderr, "usage: render_icon DRAWING.svg NAME.tif\n");
        return 2;
    }
    QSvgRenderer renderer(QString::fromLocal8Bit(argv[1]));
    const QString path = QString::fromLocal8Bit(argv[2]);
    if (!renderer.isValid() || !path.endsWith(u".tif"_s)) {
        std::fprintf(stderr, "render_icon: %s is no drawing\n", argv[1]);
        return 1;
    }
    const QString doubled = path.chopped(4) + u"@2x.tif"_s;
    return render(renderer, 16, path) && render(renderer, 32, doubled) ? 0 : 1;
}
