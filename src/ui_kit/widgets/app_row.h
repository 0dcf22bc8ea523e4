// SPDX-License-Identifier: GPL-3.0-or-later
// One App Store app in a list: rank, artwork, name, seller, ratings, and a button to track it.
#pragma once

#include "model/itunes_app_result.h"

#include <QWidget>

namespace veltrix
{

class ArtworkImages;
class Button;

/// The texts of a row, made from the record once.
struct AppRowTexts {
    QString name;
    QString seller;
    /// "4.7"; empty without ratings.
    QString rating;
    /// "128,402 ratings"; empty when unknown.
    QString ratingCount;
    /// "Updated Nov 12, 2026"; empty when unknown.
    QString updated;

    static AppRowTexts of(const ITunesAppResult &result);
    bool operator==(const AppRowTexts &) const = default;
};

struct AppRowGeometry {
    QRectF rank;
    QRectF icon;
    QRectF name;
    QRectF details;
    QRectF star;
    QRectF rating;
    QRectF ratingCount;
};

/// Places the parts in a row; `trailing` pixels at the end are left to the button.
/// `ratingWidth` is the room for the rating column.
AppRowGeometry layoutAppRow(const QRectF &rect, qreal nameHeight, qreal detailHeight,
                            qreal rankWidth, qreal ratingWidth, qreal trailing);

/// A row of app search results.
class AppSearchRowView final : public QWidget
{
    Q_OBJECT

public:
    struct Content {
        int rank = 0;
        ITunesAppResult result;
        bool isTracked = false;
        bool canTrack = true;
        /// Name of the add button, "Track Lumen".
        QString actionLabel;
    };

    AppSearchRowView(const Content &content, ArtworkImages &images, QWidget *parent = nullptr);

    void setTracked(bool isTracked);
    /// Makes the row itself open details: "View details for Lumen".
    void setOpens(bool opens);
    [[nodiscard]] const ITunesAppResult &result() const { return m_content.result; }
    [[nodiscard]] QSize sizeHint() const override;

Q_SIGNALS:
    void opened();
    void addRequested();

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    void updateButton();
    void placeButton();

    Content m_content;
    AppRowTexts m_texts;
    ArtworkImages &m_images;
    Button *m_add;
    bool m_opens = false;
};

} // namespace veltrix
