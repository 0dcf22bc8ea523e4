// SPDX-License-Identifier: GPL-3.0-or-later
// One App Store app in a list: rank, artwork, name, ratings, and a control of its own.
#pragma once

#include "model/itunes_app_result.h"
#include "ui_kit/widgets/pressable.h"

namespace veltrix
{

class ArtworkImages;

/// How a row looks and what it tells.
enum class AppRowLook {
    /// Everything: when it was updated, and how many ratings below the rating. Not pressed itself.
    Full,
    /// Name, seller and rating; hovering fills the row.
    Padded,
    /// The same, in line with what stands above; hovering tints the name.
    Flush,
};

/// The texts of a row, made from the record once. What is unknown is empty.
struct AppRowTexts {
    QString name;
    /// The seller; in full "Brass Lens Studio · Updated Nov 12, 2026".
    QString details;
    /// "4.7" or "No ratings".
    QString rating;
    /// "128,402 ratings"; only in full.
    QString ratingCount;
    /// All but the name in a sentence for screen readers.
    QString description;

    static AppRowTexts of(const ITunesAppResult &app, AppRowLook look, int rank = 0);
    bool operator==(const AppRowTexts &) const = default;
};

/// The sizes that a row is laid out by.
struct AppRowMetrics {
    qreal nameHeight = 0;
    qreal detailsHeight = 0;
    qreal iconSide = 0;
    /// Between icon and name.
    qreal iconGap = 0;
    /// 0 without a rank.
    qreal rankWidth = 0;
    /// Star and rating, or what is wider below them; 0 without a rating.
    qreal ratingWidth = 0;
    /// The rating stands beside the name and its count beside the details; otherwise the rating
    /// stands in the middle of the row.
    bool hasRatingCount = false;
    /// The name in full, and the badge behind it; 0 without a badge.
    qreal nameWidth = 0;
    qreal badgeWidth = 0;
    /// Room at the trailing end for a control.
    qreal trailing = 0;
    /// Free at both ends.
    qreal padding = 0;
};

/// Where the parts of a row lie. A part that is not there has an empty rectangle.
struct AppRowGeometry {
    QRectF rank;
    QRectF icon;
    QRectF name;
    QRectF badge;
    QRectF details;
    QRectF star;
    QRectF rating;
    QRectF ratingCount;
};

/// Rank, icon, name and badge over details, the rating at the end; mirrored for right-to-left
/// layouts.
AppRowGeometry layoutAppRow(const QRectF &rect, const AppRowMetrics &metrics,
                            Qt::LayoutDirection direction);

/// A row of a list of apps.
class AppRow final : public Pressable
{
    Q_OBJECT

public:
    AppRow(AppRowLook look, ArtworkImages &images, QWidget *parent = nullptr);

    /// `rank` is 1-based; 0 shows none.
    void setApp(const ITunesAppResult &app, int rank = 0);
    [[nodiscard]] const ITunesAppResult &app() const { return m_app; }
    /// Marks the user's own app with "You".
    void setOwn(bool isOwn);
    [[nodiscard]] bool isOwn() const { return m_isOwn; }
    /// What pressing the row does, with the app's name as %1: "Research %1" unless set.
    void setPurpose(const QString &purpose);
    /// A control at the end of the row, in place of the one before; it becomes its child.
    void setTrailing(QWidget *control);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    [[nodiscard]] AppRowMetrics metrics() const;
    void updateName();
    void updateDescription();
    void placeTrailing();

    AppRowLook m_look;
    ArtworkImages &m_images;
    ITunesAppResult m_app;
    int m_rank = 0;
    bool m_isOwn = false;
    AppRowTexts m_texts;
    QString m_purpose;
    QWidget *m_trailing = nullptr;
};

} // namespace veltrix
