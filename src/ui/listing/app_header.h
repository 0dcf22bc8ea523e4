// SPDX-License-Identifier: GPL-3.0-or-later
// The head of a page about one app, and its artwork.
#pragma once

#include "model/url.h"

#include <QWidget>

#include <optional>

class QHBoxLayout;

namespace veltrix
{

class ArtworkImages;
class BadgeView;
class ElidedLabel;
struct ITunesAppResult;

/// Artwork in a rounded square of a fixed size.
class ArtworkView final : public QWidget
{
    Q_OBJECT

public:
    /// `side` is the size in pixels at the standard font.
    ArtworkView(ArtworkImages &images, int side, const QString &placeholder,
                QWidget *parent = nullptr);

    void setUrl(const std::optional<Url> &url);
    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    ArtworkImages &m_images;
    int m_side;
    QString m_placeholder;
    std::optional<Url> m_url;
};

/// Icon, name and byline at one end, actions at the other.
class AppHeader final : public QWidget
{
    Q_OBJECT

public:
    explicit AppHeader(ArtworkImages &images, QWidget *parent = nullptr);

    void setApp(const ITunesAppResult &app);
    /// Marks the user's own app with "You".
    void setOwn(bool isOwn);
    void addAction(QWidget *control);

private:
    ArtworkView *m_icon;
    ElidedLabel *m_name;
    BadgeView *m_own;
    ElidedLabel *m_byline;
    QHBoxLayout *m_actions;
};

} // namespace veltrix
