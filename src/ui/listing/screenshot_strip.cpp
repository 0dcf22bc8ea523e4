// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/listing/screenshot_strip.h"

#include "ui/listing/screenshot_viewer.h"
#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/theme/painting.h"
#include "ui_kit/theme/symbols.h"
#include "ui_kit/theme/typography.h"
#include "ui_kit/widgets/artwork_images.h"
#include "ui_kit/widgets/layouts.h"

#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>
#include <QScrollBar>
#include <QWheelEvent>

namespace veltrix
{

namespace
{

constexpr int thumbHeight = 200;
/// Width for a height of one, until the picture is there.
constexpr double placeholderShape = 0.46;
constexpr int widestThumb = 360;
constexpr int thumbGap = 10;
constexpr qreal symbolSide = 28;

} // namespace

ScreenshotThumb::ScreenshotThumb(const Url &url, ArtworkImages &images,
                                 const QString &accessibleName, QWidget *parent)
    : Pressable(parent), m_url(url), m_images(images)
{
    setAccessibleName(accessibleName);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    connect(&m_images, &ArtworkImages::ready, this, [this](const QString &ready) {
        if (ready != m_url.text())
            return;
        updateGeometry();
        QWidget::update();
    });
}

QSize ScreenshotThumb::sizeHint() const
{
    const QImage image = m_images.image(m_url);
    if (image.isNull())
        return {int(thumbHeight * placeholderShape), thumbHeight};
    const int width = thumbHeight * image.width() / image.height();
    return {std::clamp(width, thumbHeight / 4, widestThumb), thumbHeight};
}

void ScreenshotThumb::paintEvent(QPaintEvent *)
{
    const Tokens tokens = Tokens::of(this);
    const QImage image = m_images.image(m_url);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    if (image.isNull()) {
        drawRoundedRect(painter, rect(), radius::card, tokens[Token::Hover],
                        tokens[Token::Hairline]);
        QRectF symbol(0, 0, symbolSide, symbolSide);
        symbol.moveCenter(QRectF(rect()).center());
        drawSymbol(painter, symbol, QStringLiteral("photo"), tokens[Token::Gray]);
    } else {
        QPainterPath shape;
        shape.addRoundedRect(rect(), radius::card, radius::card);
        const QSize pixels = size() * devicePixelRatioF();
        QBrush brush(image.scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
        brush.setTransform(QTransform::fromScale(double(width()) / pixels.width(),
                                                 double(height()) / pixels.height()));
        painter.fillPath(shape, brush);
    }
    if (isHovered() && !showsFocusRing())
        drawRoundedRect(painter, rect(), radius::card, Qt::transparent, tokens[Token::Accent]);
    paintFocusRing(painter, radius::card);
}

void ScreenshotThumb::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Right)
        focusNextChild();
    else if (event->key() == Qt::Key_Left)
        focusPreviousChild();
    else
        Pressable::keyPressEvent(event);
}

void ScreenshotThumb::focusInEvent(QFocusEvent *event)
{
    Pressable::focusInEvent(event);
    for (QWidget *widget = parentWidget(); widget; widget = widget->parentWidget()) {
        if (auto *strip = qobject_cast<ScreenshotStrip *>(widget)) {
            strip->ensureWidgetVisible(this, thumbGap, 0);
            break;
        }
    }
    update();
}

ScreenshotStrip::ScreenshotStrip(const QList<Url> &urls, ArtworkImages &images,
                                 const QString &nameStart, QWidget *parent)
    : QScrollArea(parent), m_urls(urls), m_images(images), m_nameStart(nameStart)
{
    nameControl(this, QStringLiteral("screenshots"), tr("Screenshots"));
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setWidgetResizable(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    auto *row = new QWidget;
    auto *layout = makeRow(thumbGap, row);
    int number = 0;
    for (const Url &url : m_urls) {
        const int index = number++;
        auto *thumb = new ScreenshotThumb(url, m_images, m_nameStart + QString::number(number));
        thumb->setObjectName(QStringLiteral("screenshot%1").arg(number));
        layout->addWidget(thumb, 0, Qt::AlignTop);
        connect(thumb, &ScreenshotThumb::clicked, this, [this, index] { openLarge(index); });
    }
    layout->addStretch(1);
    setWidget(row);
    viewport()->setAutoFillBackground(false);
    row->setAutoFillBackground(false);
}

QSize ScreenshotStrip::sizeHint() const
{
    return {400, thumbHeight + horizontalScrollBar()->sizeHint().height() + 2};
}

QSize ScreenshotStrip::minimumSizeHint() const
{
    return {120, sizeHint().height()};
}

void ScreenshotStrip::wheelEvent(QWheelEvent *event)
{
    // Only a sideways turn is meant for the strip; the page below it scrolls up and down.
    if (std::abs(event->angleDelta().x()) > std::abs(event->angleDelta().y()))
        QScrollArea::wheelEvent(event);
    else
        event->ignore();
}

void ScreenshotStrip::openLarge(int index)
{
    openSheet(this, new ScreenshotViewer(m_urls, index, m_images, m_nameStart));
}

} // namespace veltrix
