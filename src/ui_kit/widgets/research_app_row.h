// SPDX-License-Identifier: GPL-3.0-or-later
// An App Store app as a row that opens something.
#pragma once

#include "model/itunes_app_result.h"

#include <QWidget>

namespace veltrix
{

class ArtworkImages;

struct ResearchRowGeometry {
    /// Empty without a rank.
    QRectF rank;
    QRectF icon;
    QRectF name;
    QRectF seller;
    QRectF star;
    QRectF rating;
};

/// Sizes that a row is laid out by, from its fonts.
struct ResearchRowMetrics {
    qreal nameHeight = 0;
    qreal sellerHeight = 0;
    /// 0 without a rank.
    qreal rankWidth = 0;
    /// 0 without a rating.
    qreal ratingWidth = 0;
    /// Room at the trailing end for controls.
    qreal trailing = 0;
    /// Free at both ends.
    qreal padding = 8;
};

/// Rank, icon, name over seller, and the rating at the end; mirrored for right-to-left layouts.
ResearchRowGeometry layoutResearchRow(const QRectF &rect, const ResearchRowMetrics &metrics,
                                      Qt::LayoutDirection direction);

/// Icon, name, seller and rating; optionally a rank in front and a control behind. The row is one
/// control: it is clicked, or opened with Enter or Space.
class ResearchAppRow : public QWidget
{
    Q_OBJECT

public:
    ResearchAppRow(const ITunesAppResult &app, ArtworkImages &images, QWidget *parent = nullptr);

    void setApp(const ITunesAppResult &app);
    [[nodiscard]] const ITunesAppResult &app() const { return m_app; }
    /// 1-based; 0 shows none.
    void setRank(int rank);
    [[nodiscard]] int rank() const { return m_rank; }
    enum class Ends {
        /// Content starts a little inside, and hovering fills the row.
        Padded,
        /// Content is in line with what stands above, and hovering tints the name.
        Flush,
    };
    void setEnds(Ends ends);
    /// A control at the end of the row, which becomes its child.
    void setTrailing(QWidget *control);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

Q_SIGNALS:
    void opened();

protected:
    /// What the row is to a screen reader; "Research Lumen" unless a subclass says otherwise.
    [[nodiscard]] virtual QString openText() const;
    void updateAccessibleTexts();

    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    [[nodiscard]] ResearchRowMetrics metrics() const;
    void placeTrailing();

    ITunesAppResult m_app;
    ArtworkImages &m_images;
    int m_rank = 0;
    Ends m_ends = Ends::Padded;
    bool m_isPressed = false;
    QWidget *m_trailing = nullptr;
};

} // namespace veltrix
