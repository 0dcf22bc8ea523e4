// SPDX-License-Identifier: GPL-3.0-or-later
// Screenshots side by side, and one of them large.
#pragma once

#include "model/url.h"
#include "ui_kit/widgets/pressable.h"

#include <QList>
#include <QScrollArea>

namespace veltrix
{

class ArtworkImages;

/// One screenshot as a button.
class ScreenshotThumb final : public Pressable
{
    Q_OBJECT

public:
    ScreenshotThumb(const Url &url, ArtworkImages &images, const QString &accessibleName,
                    QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;

private:
    Url m_url;
    ArtworkImages &m_images;
};

/// A row of screenshots that scrolls sideways; each opens large.
class ScreenshotStrip final : public QScrollArea
{
    Q_OBJECT

public:
    /// `nameStart` begins the accessible names: "Screenshot " gives "Screenshot 1".
    ScreenshotStrip(const QList<Url> &urls, ArtworkImages &images, const QString &nameStart,
                    QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void wheelEvent(QWheelEvent *event) override;

private:
    void openLarge(int number);

    QList<Url> m_urls;
    ArtworkImages &m_images;
    QString m_nameStart;
};

} // namespace veltrix
