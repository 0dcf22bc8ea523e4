// SPDX-License-Identifier: GPL-3.0-or-later
// The ranking chart: days to the right, rank 1 at the top.
#pragma once

#include "ui/history/day_span.h"
#include "ui/history/rank_chart_layout.h"

#include <QPixmap>
#include <QWidget>

namespace veltrix
{

/// Draws a history, beside those of others, and lets one day of it be inspected, by pointer and by
/// keys: Left and Right move by a day, with Ctrl to the next saved check, Home and End go to the
/// ends, Escape lets go. N and a double click ask for a note on a day.
///
/// Its days can be narrowed: by the wheel with Ctrl around the pointer, by a drag over the days
/// that are meant, by + and − around the inspected day. The wheel sideways, PageUp and PageDown and
/// steps over the edge move on; 0 and Escape show all days again.
class RankChart final : public QWidget
{
    Q_OBJECT

public:
    explicit RankChart(QWidget *parent = nullptr);

    /// The days of the range. Those that are shown stay shown and the inspected one inspected,
    /// where they are still there.
    void setData(ComparedChart data);
    /// What is shown: all of it, or the days it is narrowed to.
    [[nodiscard]] const ComparedChart &compared() const { return isNarrowed() ? m_part : m_whole; }
    /// Of that, the own line.
    [[nodiscard]] const RankChartData &data() const { return compared().own.data; }
    /// Dims all lines but one while that one is meant.
    void emphasize(std::optional<std::int64_t> line);

    [[nodiscard]] bool isNarrowed() const { return m_shown != wholeRange(m_whole.days().size()); }
    /// The days that are shown, indices into those of the range.
    [[nodiscard]] const DaySpan &shownDays() const { return m_shown; }
    void showDays(const DaySpan &days);
    void showWholeRange() { showDays(wholeRange(m_whole.days().size())); }

    /// The inspected day, an index into data().days.
    [[nodiscard]] std::optional<size_t> selectedDay() const { return m_selected; }
    void setSelectedDay(std::optional<size_t> day);

    /// Where days and ranks lie in the coordinates of this widget.
    [[nodiscard]] const RankPlot &plot() const { return geometryNow().plot; }
    /// Notes and changes, which are controls of whoever shows this: where they stand.
    [[nodiscard]] const std::vector<PlacedMark> &marks() const { return geometryNow().marks; }
    /// Days on which a line has a check, ranked or not, oldest first: what a screen reader walks
    /// through.
    [[nodiscard]] const std::vector<size_t> &checkedDays() const { return m_checked; }
    /// Where the mark of a checked day lies, in the coordinates of this widget.
    [[nodiscard]] QRectF markOf(size_t day) const;

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

Q_SIGNALS:
    void selectedDayChanged(std::optional<size_t> day);
    /// Other days are shown.
    void shownDaysChanged();
    /// marks() are others, or stand elsewhere.
    void marksMoved();
    /// The user wants to write a note on that day, an index into data().days.
    void noteRequested(size_t day);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    /// A drag over days, in coordinates of this widget.
    struct Drag {
        qreal from = 0;
        qreal to = 0;
        /// Far enough to be meant.
        bool isMeant = false;
    };

    /// Laid out for the widget as it is now.
    [[nodiscard]] const RankChartGeometry &geometryNow() const;
    void setShown(const DaySpan &days, std::optional<Date> inspected);
    void paintLines(QPainter &painter, const Tokens &tokens);
    void requestNote(std::optional<size_t> day);
    [[nodiscard]] std::optional<Date> inspectedDate() const;
    void inspect(const QPointF &position);
    void announceSelection();
    void zoom(double factor, std::optional<size_t> around);
    bool stepByKey(const QKeyEvent &event);
    bool narrowByKey(const QKeyEvent &event);
    bool letGo();
    void step(DayStep step);

    /// Lines as they were painted last: many of them cost more than a step of the crosshair may.
    struct Layer {
        QPixmap picture;
        ColorScheme scheme;
        std::optional<std::int64_t> emphasized;
    };

    ComparedChart m_whole;
    /// The part of it that is shown while it is narrowed.
    ComparedChart m_part;
    std::optional<std::int64_t> m_emphasized;
    DaySpan m_shown;
    std::vector<size_t> m_checked;
    std::optional<size_t> m_selected;
    std::optional<Drag> m_drag;
    /// Of turns of the wheel, what has not yet made a step.
    int m_turned = 0;
    int m_turnedAside = 0;
    /// Made when it is asked for; dropped when data or font change.
    mutable std::optional<RankChartGeometry> m_geometry;
    /// Dropped with it.
    mutable std::optional<Layer> m_layer;
};

} // namespace veltrix
