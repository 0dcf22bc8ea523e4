// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/listing/screenshot_viewer.h"

#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/theme/symbols.h"
#include "ui_kit/theme/typography.h"
#include "ui_kit/widgets/artwork_images.h"
#include "ui_kit/widgets/button.h"

#include <QBoxLayout>
#include <QPainter>
#include <QShortcut>

#include <algorithm>

namespace veltrix
{

namespace
{

constexpr QSize preferredSize{900, 1400};
constexpr qreal symbolSide = 48;

} // namespace

/// The picture, whole and in its own shape, in the middle.
class ScreenshotViewer::Canvas final : public QWidget
{
public:
    explicit Canvas(ArtworkImages &images) : m_images(images)
    {
        setObjectName(QStringLiteral("screenshotLarge"));
        setAccessibleRole(this, QAccessible::Graphic);
        connect(&m_images, &ArtworkImages::ready, this, qOverload<>(&QWidget::update));
    }

    void setUrl(const Url &url)
    {
        m_url = url;
        update();
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        const QImage image = m_images.image(m_url);
        if (image.isNull()) {
            QRectF symbol(0, 0, symbolSide, symbolSide);
            symbol.moveCenter(QRectF(rect()).center());
            drawSymbol(painter, symbol, QStringLiteral("photo"), Tokens::of(this)[Token::Gray]);
            return;
        }
        QSizeF size = QSizeF(image.size()).scaled(this->size(), Qt::KeepAspectRatio);
        QRectF place(QPointF(), size);
        place.moveCenter(QRectF(rect()).center());
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        const QSize pixels = (size * devicePixelRatioF()).toSize();
        painter.drawImage(place,
                          image.scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    }

private:
    ArtworkImages &m_images;
    Url m_url;
};

ScreenshotViewer::ScreenshotViewer(const QList<Url> &urls, int index, ArtworkImages &images,
                                   const QString &nameStart, QWidget *parent)
    : SheetFrame(QStringLiteral("screenshotViewer"), tr("Screenshots"), Body::Fixed, preferredSize,
                 parent),
      m_urls(urls), m_nameStart(nameStart), m_canvas(new Canvas(images)),
      m_previous(new Button(Button::Kind::Standard, QStringLiteral("chevron.left"), QString())),
      m_next(new Button(Button::Kind::Standard, QStringLiteral("chevron.right"), QString()))
{
    nameControl(m_previous, QStringLiteral("screenshotPrevious"), tr("Previous screenshot"));
    nameControl(m_next, QStringLiteral("screenshotNext"), tr("Next screenshot"));
    addAction(m_next);
    addAction(m_previous);
    addCloseButton(QStringLiteral("screenshotDone"), QString(), tr("Done"), tr("Done"))->setFocus();
    body()->addWidget(m_canvas, 1);
    connect(m_previous, &Button::clicked, this, [this] { showPicture(m_index - 1); });
    connect(m_next, &Button::clicked, this, [this] { showPicture(m_index + 1); });
    // Buttons take the arrow keys for themselves, so plain key events would not come up here.
    const auto addKey = [this](Qt::Key key, int step) {
        auto *shortcut = new QShortcut(key, this);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        connect(shortcut, &QShortcut::activated, this,
                [this, step] { showPicture(m_index + step); });
    };
    addKey(Qt::Key_Left, -1);
    addKey(Qt::Key_Right, 1);
    showPicture(index);
}

void ScreenshotViewer::showPicture(int index)
{
    if (m_urls.isEmpty())
        return;
    m_index = std::clamp(index, 0, int(m_urls.size()) - 1);
    m_canvas->setUrl(m_urls[m_index]);
    m_canvas->setAccessibleName(m_nameStart + QString::number(m_index + 1));
    announceNameChange(m_canvas);
    setSubtitle(tr("%1 of %2").arg(QString::number(m_index + 1), QString::number(m_urls.size())));
    m_previous->setEnabled(m_index > 0);
    m_next->setEnabled(m_index + 1 < m_urls.size());
}

} // namespace veltrix
