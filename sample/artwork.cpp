// SPDX-License-Identifier: GPL-3.0-or-later
// Icons and screenshots of the made-up apps.
#include "sample/artwork.h"

#include "sample/dice.h"

#include <QBuffer>
#include <QColor>
#include <QFile>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <stdexcept>

namespace veltrix::sample
{

namespace
{

int mixed(int from, int to, double share)
{
    return from + static_cast<int>((to - from) * share);
}

/// The hue's gradient from the top left to the bottom right corner. Written pixel by pixel: the
/// painter would hand larger areas to a thread pool and differ between versions of Qt.
QImage gradientImage(int hue, const QSize &size)
{
    const auto &[name, top, bottom] = hues()[static_cast<std::size_t>(hue)];
    QImage image(size, QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y) {
        auto *line = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = 0; x < size.width(); ++x) {
            const double share =
                (static_cast<double>(x) / size.width() + static_cast<double>(y) / size.height()) /
                2;
            line[x] = qRgb(mixed(qRed(top), qRed(bottom), share),
                           mixed(qGreen(top), qGreen(bottom), share),
                           mixed(qBlue(top), qBlue(bottom), share));
        }
    }
    return image;
}

QByteArray pngOf(const QImage &image)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

QColor white(double opacity)
{
    return QColor::fromRgbF(1, 1, 1, static_cast<float>(opacity));
}

/// Apps of one theme have several drawings, so that they differ.
const QString &glyphOf(const SampleApp &app)
{
    return app.theme->glyphs[app.trackId % app.theme->glyphs.size()];
}

/// Draws a symbol in white; its file has it in black.
void paintGlyph(QPainter &painter, const QString &name, const QRectF &box)
{
    QFile file(QStringLiteral(":/sample/glyphs/%1.svg").arg(name));
    QSvgRenderer glyph(file.open(QIODevice::ReadOnly) ? file.readAll().replace("#000", "#fff")
                                                      : QByteArray());
    if (!glyph.isValid())
        throw std::runtime_error("There is no glyph " + name.toStdString());
    glyph.render(&painter, box);
}

/// A heading and rows of cards, as nearly every app has them.
void paintCards(QPainter &painter, const QSizeF &size, Dice &dice)
{
    painter.setPen(Qt::NoPen);
    const double margin = size.width() * 0.08;
    double y = size.height() * 0.09;
    painter.setBrush(white(0.92));
    painter.drawRoundedRect(QRectF(margin, y, size.width() * dice.between(0.4, 0.7), margin * 0.7),
                            margin * 0.2, margin * 0.2);
    y += margin * 1.6;
    while (y < size.height() * 0.86) {
        const int columns = 1 + dice.below(3);
        const double width = (size.width() - margin * (columns + 1.0)) / columns;
        // The painter would give taller translucent areas to a thread pool.
        const double height = dice.between(44, 90);
        painter.setBrush(white(dice.between(0.16, 0.34)));
        for (int column = 0; column < columns; ++column)
            painter.drawRoundedRect(QRectF(margin + column * (width + margin), y, width, height),
                                    margin * 0.35, margin * 0.35);
        y += height + margin * 0.6;
    }
}

} // namespace

QByteArray iconPng(const SampleApp &app, int size)
{
    QImage image = gradientImage(app.hue, QSize(size, size));
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    const double margin = 0.2 * size;
    paintGlyph(painter, glyphOf(app),
               QRectF(image.rect()).adjusted(margin, margin, -margin, -margin));
    painter.end();
    return pngOf(image);
}

QByteArray screenshotPng(const SampleApp &app, Screen screen, int number)
{
    const QSize size = screen == Screen::Phone ? QSize(392, 696) : QSize(576, 768);
    const int hue = (app.hue + (number - 1) * 3) % static_cast<int>(hues().size());
    Dice dice(stableHash(app.trackId, screen, number));
    QImage image = gradientImage(hue, size);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    paintCards(painter, size, dice);
    painter.end();
    return pngOf(image);
}

} // namespace veltrix::sample
